#pragma once

/// A document with one of everything that has an address.
///
/// Its text, in the order of its blocks (and places, which count the dead slot behind the 'a'):
///     0  a paragraph of the run "ab" and a tabulator     0 tag, 1 run, 2 'a', 3 dead, 4 'b', 5 tabulator, 6 mark
///     1  a table of 3 rows and 2 columns; row 1 is dead  7
///     2  a section tag                                   8
///     3  a shape with an empty paragraph                 9
///     4  a field block                                   10
///     the end                                            11
/// The cell at live row 1 and column 0 has the text "x"; no other cell stands. The table has two frames with a dead one
/// between them, and one conditional format behind a dead one.

#include "DClb_AddressNotation.h"

#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_Runs.h"

#include <memory>

namespace Zem::DOMCollaboration
{

inline std::unique_ptr<DOM::Paragraph> makeSampleParagraph(const std::string& text)
{
    auto paragraph = std::make_unique<DOM::Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<DOM::TextRun>(text));
    return paragraph;
}

inline CollaborationUtils::TombstonesStorage makeSampleTombstone(unsigned long place)
{
    using CollaborationUtils::IndexIncludingTombstones;
    return CollaborationUtils::TombstonesStorage(
        {{IndexIncludingTombstones(place), IndexIncludingTombstones(place + 1)}});
}

inline std::unique_ptr<DOM::Table> makeSampleTable()
{
    auto table = std::make_unique<DOM::Table>(3, 2);
    table->replaceRowWithTombstone(CollaborationUtils::IndexIncludingTombstones(1));
    table->getOrCreateCell(RowIndex(1), ColumnIndex(0))
        .getTextWithTombstones()
        .getBlocks()
        .push_back(makeSampleParagraph("x"));
    table->getFrames().getElements().push_back(std::make_unique<DOM::Frame>());
    table->getFrames().getElements().push_back(std::make_unique<DOM::Frame>());
    table->getFrames().getTombstones() = makeSampleTombstone(1);
    table->getConditionalFormats().getElements().push_back(std::make_unique<DOM::ConditionalFormat>());
    table->getConditionalFormats().getTombstones() = makeSampleTombstone(0);
    return table;
}

inline DOM::TextWithTombstones makeSampleText()
{
    DOM::TextWithTombstones text;
    auto paragraph = makeSampleParagraph("ab");
    paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::Paragraph>());
    text.getBlocks().push_back(std::move(paragraph));
    text.getBlocks().push_back(makeSampleTable());
    text.getBlocks().push_back(std::make_unique<DOM::SectionTag>());
    text.getBlocks().push_back(std::move(shape));
    text.getBlocks().push_back(std::make_unique<DOM::FieldBlock>());
    text.getTombstones() = makeSampleTombstone(3);
    return text;
}

struct SampleDocument
{
    SampleDocument()
    {
        _document.getTextWithTombstones() = makeSampleText();
        DOM::Comment comment;
        DOM::Note note;
        DOM::NamedTextStyle textStyle;
        DOM::NamedTableStyle tableStyle;
        DOM::HeaderFooterPair pair;
        _comment = comment.getUUID();
        _note = note.getUUID();
        _textStyle = textStyle.getUUID();
        _tableStyle = tableStyle.getUUID();
        _pair = pair.getUUID();
        pair.getHeader().getBlocks().push_back(makeSampleParagraph("h"));
        _document.getComments().insert(std::move(comment));
        _document.getNotes().insert(std::move(note));
        _document.getStyles().getTextStyles().insert(std::move(textStyle));
        _document.getStyles().getTableStyles().insert(std::move(tableStyle));
        _document.getHeadersFooters().insert(std::move(pair));
        _document.getScripts().insertScript("script", "text");
    }

    DOM::Table& getTable()
    {
        return dynamic_cast<DOM::Table&>(*_document.getTextWithTombstones().getBlocks().at(1));
    }

    DOM::Document _document;
    UUID _comment;
    UUID _note;
    UUID _textStyle;
    UUID _tableStyle;
    UUID _pair;
};

} // namespace Zem::DOMCollaboration

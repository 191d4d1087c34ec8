#include "Comparison.h"

#include "StartDocument.h"

#include "DOM_Blocks.h"
#include "DOM_RunProps.h"
#include "DOM_RunStyle.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <limits>

namespace ZemFarm
{

namespace
{

using Zem::CollaborationSession::DocumentKind;
using Zem::CollaborationSession::Selection;
using Zem::CollaborationSession::Selections;
using Zem::CollaborationUtils::IndexIncludingTombstones;
using Zem::CollaborationUtils::TombstonesStorage;
using Zem::DOMCollaboration::SelectionMode;
namespace DOM = Zem::DOM;

void addTextRun(DOM::Paragraph& paragraph, const std::string& text)
{
    paragraph.getRuns().push_back(std::make_unique<DOM::TextRun>(text));
}

std::unique_ptr<DOM::Paragraph> makeParagraph(const std::string& text)
{
    auto paragraph = std::make_unique<DOM::Paragraph>();
    addTextRun(*paragraph, text);
    return paragraph;
}

DOM::Document makeDocumentAnew()
{
    DOM::Document document;
    auto& blocks = document.getTextWithTombstones().getBlocks();
    blocks.push_back(makeParagraph("ab"));
    blocks.push_back(makeParagraph("cd"));
    auto table = std::make_unique<DOM::Table>(2, 2);
    auto& cell = table->getOrCreateCell(Zem::RowIndex(1), Zem::ColumnIndex(0));
    cell.getTextWithTombstones().getBlocks().push_back(makeParagraph("cell"));
    blocks.push_back(std::move(table));
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones().getBlocks().push_back(makeParagraph("shape"));
    blocks.push_back(std::move(shape));
    return document;
}

/// Two paragraphs, a table with a text in a cell, and a shape with one. The table is always the same one.
DOM::Document makeDocument()
{
    static const DOM::Document document = makeDocumentAnew();
    return document;
}

TombstonesStorage makeTombstones(unsigned long begin, unsigned long end)
{
    return TombstonesStorage({{IndexIncludingTombstones(begin), IndexIncludingTombstones(end)}});
}

DOM::Paragraph& getParagraph(DOM::TextWithTombstones& text, std::size_t index)
{
    return Zem::cast<DOM::Paragraph>(*text.getBlocks()[index]);
}

DOM::Run& getRun(DOM::Document& document, std::size_t paragraphIndex)
{
    return *getParagraph(document.getTextWithTombstones(), paragraphIndex).getRuns().front();
}

DOM::TextWithTombstones& getCellText(DOM::Document& document)
{
    auto& table = Zem::cast<DOM::Table>(*document.getTextWithTombstones().getBlocks()[2]);
    return table.getCell(Zem::RowIndex(1), Zem::ColumnIndex(0))->getTextWithTombstones();
}

DOM::TextWithTombstones& getShapeText(DOM::Document& document)
{
    return Zem::cast<DOM::Shape>(*document.getTextWithTombstones().getBlocks()[3]).getTextWithTombstones();
}

std::string findDifferenceInText(const DOM::Document& actual)
{
    return findDifference(DocumentKind::Text, makeDocument(), actual);
}

DOM::RunStyle makeStyle(float fontSize)
{
    auto props = std::make_shared<DOM::RunProps>();
    props->_fontSize = fontSize;
    DOM::RunStyle style;
    style.setRunProps(std::move(props));
    return style;
}

DOM::SharedStyleConstIPtr<DOM::RunStyle> makeUnsharedStyle(float fontSize)
{
    return DOM::SharedStyleConstIPtr<DOM::RunStyle>(new DOM::SharedStyle<DOM::RunStyle>(makeStyle(fontSize)));
}

TEST(ComparisonOfDocuments, FindsNothingInEqualOnes)
{
    EXPECT_EQ("", findDifferenceInText(makeDocument()));
    for (const DocumentKind kind : {DocumentKind::Text, DocumentKind::Workbook, DocumentKind::Presentation})
    {
        ZemFarm::Setup setup;
        setup._kind = kind;
        setup._documentSize = 6;
        const DOM::Document document = makeStartDocument(setup);
        EXPECT_EQ("", findDifference(kind, document, DOM::Document(document)));
    }
}

TEST(ComparisonOfDocuments, FindsAChangedByte)
{
    DOM::Document document = makeDocument();
    Zem::cast<DOM::TextRun>(getRun(document, 0)).setText("aB");
    EXPECT_EQ("text [n34]: {|aB}{|cd}TS in place of {|ab}{|cd}TS", findDifferenceInText(document));
}

TEST(ComparisonOfDocuments, FindsAChangedByteInACellAndInAShape)
{
    DOM::Document document = makeDocument();
    Zem::cast<DOM::TextRun>(*getParagraph(getCellText(document), 0).getRuns().front()).setText("cel");
    EXPECT_EQ("text [n34 10 n12 1/0 n34]: {|cel} in place of {|cell}", findDifferenceInText(document));

    document = makeDocument();
    Zem::cast<DOM::TextRun>(*getParagraph(getShapeText(document), 0).getRuns().front()).setText("shapes");
    EXPECT_EQ("text [n34 11 n34]: {|shapes} in place of {|shape}", findDifferenceInText(document));
}

TEST(ComparisonOfDocuments, FindsAChangedTombstone)
{
    DOM::Document document = makeDocument();
    document.getTextWithTombstones().getTombstones() = makeTombstones(2, 3);
    EXPECT_EQ("text [n34]: {|.ab}{|cd}TS in place of {|ab}{|cd}TS", findDifferenceInText(document));

    const DOM::Document other = document;
    document.getTextWithTombstones().getTombstones() = makeTombstones(3, 4);
    EXPECT_EQ("text [n34]: {|a.b}{|cd}TS in place of {|.ab}{|cd}TS",
              findDifference(DocumentKind::Text, other, document));
}

TEST(ComparisonOfDocuments, FindsAChangedTombstoneInACell)
{
    DOM::Document document = makeDocument();
    getCellText(document).getTombstones() = makeTombstones(7, 8);
    EXPECT_EQ("text [n34 10 n12 1/0 n34]: {|cell}. in place of {|cell}", findDifferenceInText(document));
}

TEST(ComparisonOfDocuments, FindsADeadRowOfATable)
{
    DOM::Document document = makeDocument();
    Zem::cast<DOM::Table>(*document.getTextWithTombstones().getBlocks()[2])
        .replaceRowWithTombstone(IndexIncludingTombstones(0));
    EXPECT_NE("", findDifferenceInText(document));
}

TEST(ComparisonOfDocuments, FindsAChangedStyle)
{
    DOM::Document document = makeDocument();
    getRun(document, 1).getSharedStyle() = document.getSharedObjectFactory().create(makeStyle(10));
    const DOM::Document other = document;
    EXPECT_EQ(0U, findDifferenceInText(document).find("JSON at byte "));

    getRun(document, 1).getSharedStyle() = document.getSharedObjectFactory().create(makeStyle(11));
    EXPECT_EQ(0U, findDifference(DocumentKind::Text, other, document).find("JSON at byte "));
}

TEST(ComparisonOfDocuments, FindsAStyleThatStandsElsewhere)
{
    DOM::Document expected = makeDocument();
    getRun(expected, 0).getSharedStyle() = makeUnsharedStyle(10);
    DOM::Document actual = makeDocument();
    getRun(actual, 1).getSharedStyle() = makeUnsharedStyle(10);
    EXPECT_NE("", findDifference(DocumentKind::Text, expected, actual));
}

TEST(ComparisonOfDocuments, FindsAnotherScriptAndAnotherProperty)
{
    DOM::Document document = makeDocument();
    document.getScripts().insertScript("a", "start");
    EXPECT_EQ(0U, findDifferenceInText(document).find("JSON at byte "));

    document = makeDocument();
    document.setChangesTrackingEnabled(true);
    EXPECT_EQ(0U, findDifferenceInText(document).find("JSON at byte "));
}

TEST(ComparisonOfDocuments, QuotesWholeCharacters)
{
    const auto makeDocument = [](const std::string& front, const std::string& script)
    {
        DOM::Document document;
        document.getScripts().insertScript(front, script + "\xE2\x82\xAC");
        return document;
    };
    const std::string euros =
        "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC";
    for (std::size_t length = 0; length < 6; ++length)
    {
        const std::string front = euros + euros + euros + euros + std::string(length, 'x');
        const std::string back = euros + euros + euros + euros;
        const std::string difference =
            findDifference(DocumentKind::Text, makeDocument(front, "a" + back), makeDocument(front, "b" + back));
        // The quotation begins and ends in the midst of the signs.
        for (const char* end : {"...\xE2\x82\xAC", "\xE2\x82\xAC..."})
        {
            EXPECT_NE(std::string::npos, difference.find(end)) << difference;
            EXPECT_NE(difference.find(end), difference.rfind(end)) << difference;
        }
    }
}

TEST(ComparisonOfDocuments, TakesStylesThatAreSharedOtherwiseForEqual)
{
    DOM::Document shared = makeDocument();
    getRun(shared, 0).getSharedStyle() = shared.getSharedObjectFactory().create(makeStyle(10));
    getRun(shared, 1).getSharedStyle() = shared.getSharedObjectFactory().create(makeStyle(10));
    DOM::Document apart = makeDocument();
    getRun(apart, 0).getSharedStyle() = makeUnsharedStyle(10);
    getRun(apart, 1).getSharedStyle() = makeUnsharedStyle(10);

    ASSERT_NE(getRun(apart, 0).getSharedStyle(), getRun(apart, 1).getSharedStyle());
    EXPECT_EQ("", findDifference(DocumentKind::Text, shared, apart));
    EXPECT_EQ("", findDifference(DocumentKind::Text, apart, shared));
    getRun(apart, 1).getSharedStyle() = makeUnsharedStyle(11);
    EXPECT_NE("", findDifference(DocumentKind::Text, shared, apart));
}

TEST(ComparisonOfDocuments, FindsWhatIsWrongWithOne)
{
    DOM::Document document = makeDocument();
    EXPECT_EQ("", findFault(document));
    document.getTextWithTombstones().getTombstones() = makeTombstones(100, 101);
    EXPECT_NE("", findFault(document));
}

TEST(ComparisonOfDocuments, FindsAStyleThatNoJsonCanHold)
{
    DOM::Document document = makeDocument();
    EXPECT_EQ("", findFaultOfJson(document));
    getRun(document, 0).getSharedStyle() = makeUnsharedStyle(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(0U, findFaultOfJson(document).find("its JSON can't be written and read: "));
}

Selection makeSelection(unsigned long begin, unsigned long end, bool sticks = false,
                        SelectionMode mode = SelectionMode::Text)
{
    const auto makePosition = [](unsigned long slot)
    { return Selection::SelectionPosition({Zem::NodeAddressing::AddressInList(slot)}); };
    Selection::SelectionPosition beginPosition = makePosition(begin);
    beginPosition.setStickToPrevious(sticks);
    return Selection(mode, beginPosition, makePosition(end));
}

TEST(ComparisonOfSelections, FindsNothingInEqualOnes)
{
    EXPECT_EQ("", findDifference(Selections(), Selections()));
    const Selections selections = {{1, makeSelection(2, 3)}, {7, makeSelection(0, 0, true)}};
    EXPECT_EQ("", findDifference(selections, selections));
}

TEST(ComparisonOfSelections, FindsAChangedEndStickingOrMode)
{
    const Selections expected = {{1, makeSelection(2, 3)}};
    EXPECT_EQ("the selection of the server's client 1 ([2] to [4] in mode 0 in place of [2] to [3] in mode 0)",
              findDifference(expected, {{1, makeSelection(2, 4)}}));
    EXPECT_EQ("the selection of the server's client 1 ([1] to [3] in mode 0 in place of [2] to [3] in mode 0)",
              findDifference(expected, {{1, makeSelection(1, 3)}}));
    EXPECT_EQ("the selection of the server's client 1 ([2]< to [3] in mode 0 in place of [2] to [3] in mode 0)",
              findDifference(expected, {{1, makeSelection(2, 3, true)}}));
    EXPECT_EQ("the selection of the server's client 1 ([2] to [3] in mode 1 in place of [2] to [3] in mode 0)",
              findDifference(expected, {{1, makeSelection(2, 3, false, SelectionMode::Cells)}}));
}

TEST(ComparisonOfSelections, FindsOneTooManyAndOneTooFew)
{
    const Selections one = {{1, makeSelection(2, 3)}};
    const Selections two = {{1, makeSelection(2, 3)}, {2, makeSelection(5, 5)}};
    EXPECT_EQ("the selection of the server's client 2 ([5] to [5] in mode 0 in place of none)",
              findDifference(one, two));
    EXPECT_EQ("the selection of the server's client 2 (none in place of [5] to [5] in mode 0)",
              findDifference(two, one));
}

} // namespace

} // namespace ZemFarm

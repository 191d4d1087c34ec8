#pragma once

/// Random texts and documents, small ones, with everything in them that has an address.

#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_Runs.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace Zem::DOMCollaboration::RandomDocuments
{

class Generator
{
public:
    explicit Generator(unsigned long seed)
        : _random(seed)
    {
    }

    unsigned long below(unsigned long bound)
    {
        return std::uniform_int_distribution<unsigned long>(0, bound - 1)(_random);
    }

    DOM::TextWithTombstones makeText(unsigned long depth)
    {
        DOM::TextWithTombstones text;
        unsigned long size = 0;
        for (unsigned long count = below(6); count > 0; --count)
        {
            text.getBlocks().push_back(makeBlock(depth, size));
        }
        text.getTombstones() = makeTombstones(size);
        return text;
    }

    DOM::TextWithTombstones makeWorksheets()
    {
        DOM::TextWithTombstones worksheets;
        const unsigned long count = 1 + below(3);
        for (unsigned long index = 0; index < count; ++index)
        {
            worksheets.getBlocks().push_back(makeTable(2));
        }
        worksheets.getTombstones() = makeTombstones(count);
        return worksheets;
    }

    DOM::Document makeDocument(bool isWorkbook)
    {
        DOM::Document document;
        document.getTextWithTombstones() = isWorkbook ? makeWorksheets() : makeText(2);
        for (unsigned long count = below(3); count > 0; --count)
        {
            document.getComments().insert(DOM::Comment());
            document.getNotes().insert(DOM::Note());
            document.getStyles().getTextStyles().insert(DOM::NamedTextStyle());
            document.getStyles().getTableStyles().insert(DOM::NamedTableStyle());
            DOM::HeaderFooterPair pair;
            pair.getHeader() = makeText(1);
            pair.getFooter() = makeText(1);
            document.getHeadersFooters().insert(std::move(pair));
        }
        return document;
    }

private:
    CollaborationUtils::TombstonesStorage makeTombstones(unsigned long liveCount)
    {
        using CollaborationUtils::IndexIncludingTombstones;
        std::vector<CollaborationUtils::TombstonesStorage::PlacesRange> ranges;
        unsigned long place = 0;
        for (unsigned long live = 0; live <= liveCount; ++live, ++place)
        {
            if (below(3) == 0)
            {
                const unsigned long begin = place;
                place += 1 + below(3);
                ranges.emplace_back(IndexIncludingTombstones(begin), IndexIncludingTombstones(place));
            }
        }
        return CollaborationUtils::TombstonesStorage(ranges);
    }

    std::unique_ptr<DOM::Block> makeBlock(unsigned long depth, unsigned long& size)
    {
        switch (depth == 0 ? below(3) : below(6))
        {
        case 0:
            size += 1;
            return std::make_unique<DOM::FieldBlock>();
        case 3:
            size += 1;
            return std::make_unique<DOM::SectionTag>();
        case 4:
            size += 1;
            return makeTable(depth - 1);
        case 5:
        {
            size += 1;
            auto shape = std::make_unique<DOM::Shape>();
            shape->getTextWithTombstones() = makeText(depth - 1);
            return shape;
        }
        default:
            return makeParagraph(size);
        }
    }

    std::unique_ptr<DOM::Block> makeParagraph(unsigned long& size)
    {
        auto paragraph = std::make_unique<DOM::Paragraph>();
        size += 2;
        for (unsigned long count = below(4); count > 0; --count)
        {
            size += 1;
            if (below(3) == 0)
            {
                paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
                continue;
            }
            const std::string text(below(4), 'a');
            size += text.size();
            paragraph->getRuns().push_back(std::make_unique<DOM::TextRun>(text));
        }
        return paragraph;
    }

    std::unique_ptr<DOM::Block> makeTable(unsigned long depth)
    {
        using CollaborationUtils::IndexIncludingTombstones;
        const unsigned long rows = 1 + below(4);
        const unsigned long columns = 1 + below(4);
        auto table = std::make_unique<DOM::Table>(rows, columns);
        for (unsigned long place = 0; place < rows; ++place)
        {
            if (table->getLiveRowsCount().get() > 1 && below(3) == 0)
            {
                table->replaceRowWithTombstone(IndexIncludingTombstones(place));
            }
        }
        for (unsigned long place = 0; place < columns; ++place)
        {
            if (table->getLiveColsCount().get() > 1 && below(3) == 0)
            {
                table->replaceColWithTombstone(IndexIncludingTombstones(place));
            }
        }
        for (unsigned long count = below(3); count > 0; --count)
        {
            const RowIndex row(below(table->getLiveRowsCount().get()));
            const ColumnIndex column(below(table->getLiveColsCount().get()));
            table->getOrCreateCell(row, column).getTextWithTombstones() = makeText(depth == 0 ? 0 : depth - 1);
        }
        for (unsigned long count = below(3); count > 0; --count)
        {
            table->getFrames().getElements().push_back(std::make_unique<DOM::Frame>());
        }
        table->getFrames().getTombstones() = makeTombstones(table->getFrames().getElements().size());
        for (unsigned long count = below(3); count > 0; --count)
        {
            table->getConditionalFormats().getElements().push_back(std::make_unique<DOM::ConditionalFormat>());
        }
        table->getConditionalFormats().getTombstones() =
            makeTombstones(table->getConditionalFormats().getElements().size());
        return table;
    }

    std::mt19937_64 _random;
};

} // namespace Zem::DOMCollaboration::RandomDocuments

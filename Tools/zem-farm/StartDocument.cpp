#include "StartDocument.h"

#include "Texts.h"
#include "Values.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include <algorithm>

namespace ZemFarm
{

namespace DOM = Zem::DOM;
using Zem::CollaborationUtils::IndexIncludingTombstones;
using Zem::CollaborationUtils::TombstonesStorage;

namespace
{

/// How deep texts lie in each other at most.
constexpr unsigned long maxDepth = 2;

/// Makes the parts of a document.
class Builder
{
public:
    Builder(const Setup& setup, const DOM::SharedObjectFactory& factory, Random& random)
        : _setup(setup)
        , _factory(factory)
        , _random(random)
    {
    }

    DOM::TextWithTombstones makeText(unsigned long blocksCount, unsigned long depth)
    {
        DOM::TextWithTombstones text;
        for (; blocksCount > 0; --blocksCount)
        {
            text.getBlocks().push_back(_random.isOnceIn(3) ? makeAtomicBlock(depth) : makeParagraph());
        }
        text.getTombstones() = makeTombstones(FlatText(text)._slotsCount);
        return text;
    }

    DOM::TextWithTombstones makeParagraphs(unsigned long count,
                                           const std::function<std::string(const std::string&)>& replace)
    {
        DOM::TextWithTombstones text;
        for (; count > 0; --count)
        {
            auto paragraph = std::make_unique<DOM::Paragraph>();
            for (unsigned long runsCount = _random.pick(3); runsCount > 0; --runsCount)
            {
                paragraph->getRuns().push_back(std::make_unique<DOM::TextRun>(replace(makeWords(_random, 8))));
                setStyle(*paragraph->getRuns().back());
            }
            setStyle(*paragraph);
            text.getBlocks().push_back(std::move(paragraph));
        }
        text.getTombstones() = makeTombstones(FlatText(text)._slotsCount);
        return text;
    }

    DOM::TextWithTombstones makeWorksheets(unsigned long count)
    {
        DOM::TextWithTombstones worksheets;
        for (; count > 0; --count)
        {
            worksheets.getBlocks().push_back(makeTable(2 + _random.pick(5), 2 + _random.pick(5), 0));
        }
        return worksheets;
    }

    std::unique_ptr<DOM::Block> makeAtomicBlock(unsigned long depth)
    {
        const bool isPresentation = _setup._kind == DocumentKind::Presentation;
        const bool isShape = isPresentation ? !_random.isOnceIn(4) : _random.isOnceIn(3);
        if (isShape)
        {
            auto shape = std::make_unique<DOM::Shape>();
            if (depth < maxDepth)
            {
                shape->getTextWithTombstones() = makeText(1 + _random.pick(2), depth + 1);
            }
            return shape;
        }
        switch (_random.pick(3))
        {
        case 0:
            return makeTable(1 + _random.pick(3), 1 + _random.pick(3), depth);
        case 1:
            return makeSectionTag();
        default:
            return std::make_unique<DOM::FieldBlock>(makeContentsInfo(_random));
        }
    }

    std::unique_ptr<DOM::Run> makeAtomicRun()
    {
        std::unique_ptr<DOM::Run> run;
        switch (_random.pick(5))
        {
        case 0:
            run = std::make_unique<DOM::BreakRun>();
            break;
        case 1:
            run = std::make_unique<DOM::DrawingRun>();
            break;
        case 2:
            run = std::make_unique<DOM::BookmarkRun>("mark", DOM::BookmarkEdge::Begin);
            break;
        case 3:
            run = std::make_unique<DOM::FieldRun>(DOM::FieldType::PagesCount, "");
            break;
        default:
            run = std::make_unique<DOM::TabRun>();
        }
        setStyle(*run);
        return run;
    }

private:
    std::unique_ptr<DOM::Block> makeSectionTag()
    {
        auto tag = std::make_unique<DOM::SectionTag>();
        tag->getSectionProps() = makeSectionProps(_random);
        return tag;
    }

    std::unique_ptr<DOM::Block> makeParagraph()
    {
        auto paragraph = std::make_unique<DOM::Paragraph>();
        for (unsigned long count = _random.pick(3); count > 0; --count)
        {
            if (_random.isOnceIn(4))
            {
                paragraph->getRuns().push_back(makeAtomicRun());
                continue;
            }
            paragraph->getRuns().push_back(std::make_unique<DOM::TextRun>(makeWords(_random, 8)));
            setStyle(*paragraph->getRuns().back());
        }
        setStyle(*paragraph);
        return paragraph;
    }

    void setStyle(DOM::Paragraph& paragraph)
    {
        if (_random.isOnceIn(3))
        {
            paragraph.getSharedStyle() = _factory.create(makeParagraphStyle(_random));
        }
    }

    void setStyle(DOM::Run& run)
    {
        if (_random.isOnceIn(3))
        {
            run.getSharedStyle() = _factory.create(makeRunStyle(_random));
        }
    }

    std::unique_ptr<DOM::Block> makeTable(unsigned long rowsCount, unsigned long columnsCount, unsigned long depth)
    {
        auto table = std::make_unique<DOM::Table>(rowsCount, columnsCount);
        if (rowsCount > 2 && _random.isOnceIn(2))
        {
            table->replaceRowWithTombstone(IndexIncludingTombstones(_random.pick(rowsCount)));
        }
        if (columnsCount > 2 && _random.isOnceIn(2))
        {
            table->replaceColWithTombstone(IndexIncludingTombstones(_random.pick(columnsCount)));
        }
        rowsCount = table->getLiveRowsCount().get();
        columnsCount = table->getLiveColsCount().get();
        const bool hasMerge = rowsCount > 1 && columnsCount > 1 && _random.isOnceIn(3);
        if (hasMerge)
        {
            table->setMergeProps(Zem::RowIndex(0), Zem::ColumnIndex(0), 1, 1);
        }
        for (unsigned long count = _random.pick(4); count > 0; --count)
        {
            const Zem::RowIndex row(_random.pick(rowsCount));
            const Zem::ColumnIndex column(_random.pick(columnsCount));
            // A marking in a cell that is captured is done, but can't be taken back.
            if (depth < maxDepth && !table->getMergedCellRoot(row, column))
            {
                table->getOrCreateCell(row, column).getTextWithTombstones() = makeCellText(depth + 1);
            }
        }
        return table;
    }

    DOM::TextWithTombstones makeCellText(unsigned long depth)
    {
        if (!_random.isOnceIn(3))
        {
            return makeText(1 + _random.pick(2), depth);
        }
        DOM::TextWithTombstones text;
        text.getBlocks().push_back(std::make_unique<DOM::FieldBlock>(makeCellInfo(_random)));
        return text;
    }

    TombstonesStorage makeTombstones(unsigned long liveCount)
    {
        std::vector<TombstonesStorage::PlacesRange> ranges;
        unsigned long place = 0;
        for (unsigned long live = 0; live <= liveCount; ++live, ++place)
        {
            if (_random.isOnceIn(12))
            {
                const unsigned long begin = place;
                place += 1 + _random.pick(3);
                ranges.emplace_back(IndexIncludingTombstones(begin), IndexIncludingTombstones(place));
            }
        }
        return TombstonesStorage(ranges);
    }

    const Setup& _setup;
    const DOM::SharedObjectFactory& _factory;
    Random& _random;
};

} // namespace

DOM::Document makeStartDocument(const Setup& setup)
{
    DOM::Document document;
    Random random(setup._documentSeed);
    Builder builder(setup, document.getSharedObjectFactory(), random);
    document.getTextWithTombstones() = setup._kind == DocumentKind::Workbook
                                           ? builder.makeWorksheets(setup._documentSize)
                                           : builder.makeText(setup._documentSize, 0);
    if (setup._kind == DocumentKind::Text && random.isOnceIn(2))
    {
        Zem::UUID::Bytes bytes{};
        bytes.front() = 1;
        DOM::HeaderFooterPair pair{Zem::UUID(bytes)};
        pair.getHeader() = builder.makeText(1, 1);
        document.getHeadersFooters().insert(std::move(pair));
    }
    if (random.isOnceIn(2))
    {
        document.getScripts().insertScript("a", "start");
    }
    return document;
}

DOM::Document makeJudgedDocument(const Setup& setup, const std::function<std::string(const std::string&)>& replace)
{
    DOM::Document document;
    Random random(setup._documentSeed);
    document.getTextWithTombstones() = Builder(setup, document.getSharedObjectFactory(), random)
                                           .makeParagraphs(std::max(1UL, setup._documentSize), replace);
    return document;
}

std::unique_ptr<DOM::Block> makeAtomicBlock(const Setup& setup, const DOM::SharedObjectFactory& factory, Random& random,
                                            unsigned long depth)
{
    return Builder(setup, factory, random).makeAtomicBlock(depth);
}

std::unique_ptr<DOM::Run> makeAtomicRun(const DOM::SharedObjectFactory& factory, Random& random)
{
    return Builder(Setup(), factory, random).makeAtomicRun();
}

} // namespace ZemFarm

#include "DOM_CheckInvariants.h"
#include "DOM_Blocks.h"
#include "DOM_TextLimits.h"

#include "Util_Assert.h"

#include <numeric>
#include <utility>

namespace Zem::DOM
{

namespace
{

using Problems = std::vector<std::string>;

void addAll(Problems& problems, const std::string& where, const Problems& further)
{
    for (const std::string& problem : further)
    {
        problems.push_back(where + ": " + problem);
    }
}

Problems checkParagraph(const Paragraph& paragraph)
{
    Problems problems;
    for (unsigned long index = 0; index < paragraph.getRuns().size(); ++index)
    {
        if (!paragraph.getRuns()[index])
        {
            problems.push_back("Run " + std::to_string(index) + " is null.");
        }
    }
    return problems;
}

Problems checkCellTexts(const Table& table)
{
    Problems problems;
    const RowIndex rowsCount(table.getLiveRowsCount().get());
    const ColumnIndex colsCount(table.getLiveColsCount().get());
    if (rowsCount == RowIndex(0) || colsCount == ColumnIndex(0))
    {
        return problems;
    }
    auto [cell, end] = table.getRangeIterators(TableRange(RowIndex(0), ColumnIndex(0), rowsCount, colsCount));
    for (; cell != end; ++cell)
    {
        addAll(problems,
               "Cell " + std::to_string(cell.getRowIndex().get()) + ", " + std::to_string(cell.getColIndex().get()),
               checkInvariants((*cell)->getTextWithTombstones()));
    }
    return problems;
}

Problems checkTable(const Table& table)
{
    Problems problems = checkInvariants(table);
    return problems.empty() ? checkCellTexts(table) : problems;
}

Problems checkBlock(const Block& block)
{
    return visitBlock(
        block, [](const Paragraph& paragraph) { return checkParagraph(paragraph); },
        [](const Table& table) { return checkTable(table); },
        [](const Shape& shape) { return checkInvariants(shape.getTextWithTombstones()); },
        [](const SectionTag&) { return Problems(); }, [](const FieldBlock&) { return Problems(); });
}

Problems checkBlocks(const Blocks& blocks)
{
    Problems problems;
    for (unsigned long index = 0; index < blocks.size(); ++index)
    {
        const std::string where = "Block " + std::to_string(index);
        if (!blocks[index])
        {
            problems.push_back(where + " is null.");
            continue;
        }
        addAll(problems, where, checkBlock(*blocks[index]));
    }
    return problems;
}

/// Requires: the blocks are sound.
Problems checkTombstones(const TextWithTombstones& text)
{
    try
    {
        text.getTombstones().checkInvariants();
    }
    catch (const AssertionFailure& failure)
    {
        return {"The record of the tombstones is broken: " + std::string(failure.what()) + "."};
    }
    const unsigned long needed = TextLimits::getSlotsBeforeLastTombstone(text.getTombstones());
    const unsigned long count =
        std::accumulate(text.getBlocks().begin(), text.getBlocks().end(), 0UL,
                        [](unsigned long sum, const auto& block) { return sum + TextLimits::getSlotsCount(*block); });
    if (count < needed)
    {
        return {"The last tombstone stands behind " + std::to_string(needed) + " live slots, but there are " +
                std::to_string(count) + "."};
    }
    return {};
}

template<class T>
void checkContainer(Problems& problems, const std::string& where, const UUIDContainer<T>& container)
{
    if (!container.areElementsUnderTheirUUIDs())
    {
        problems.push_back(where + ": An element doesn't lie under its own UUID.");
    }
}

template<class T>
void checkBlocksOf(Problems& problems, const std::string& where, const UUIDContainer<T>& container)
{
    checkContainer(problems, where, container);
    for (const T& element : container)
    {
        addAll(problems, where + " " + element.getUUID().toString(), checkBlocks(element.getBlocks()));
    }
}

} // namespace

std::vector<std::string> checkInvariants(const TextWithTombstones& text)
{
    Problems problems = checkBlocks(text.getBlocks());
    return problems.empty() ? checkTombstones(text) : problems;
}

std::vector<std::string> checkInvariants(const Document& document)
{
    Problems problems;
    addAll(problems, "Main text", checkInvariants(document.getTextWithTombstones()));
    checkContainer(problems, "Headers and footers", document.getHeadersFooters());
    for (const HeaderFooterPair& pair : document.getHeadersFooters())
    {
        addAll(problems, "Header " + pair.getUUID().toString(), checkInvariants(pair.getHeader()));
        addAll(problems, "Footer " + pair.getUUID().toString(), checkInvariants(pair.getFooter()));
    }
    checkBlocksOf(problems, "Comment", document.getComments());
    checkBlocksOf(problems, "Note", document.getNotes());
    checkContainer(problems, "Numbered lists", document.getNumLists());
    checkContainer(problems, "Text styles", document.getStyles().getTextStyles());
    checkContainer(problems, "Table styles", document.getStyles().getTableStyles());
    return problems;
}

} // namespace Zem::DOM

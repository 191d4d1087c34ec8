#include "DOM_CheckInvariants.h"
#include "DOM_Blocks.h"
#include "DOM_PivotTable.h"
#include "DOM_PlaneSize.h"
#include "DOM_TombstonesLimits.h"

#include "Util_Assert.h"

#include <utility>

namespace Zem::DOM
{

namespace
{

using Problems = std::vector<std::string>;

Problems checkBlocks(const Blocks& blocks);

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

Problems checkPivotTable(const PivotTable& pivotTable)
{
    Problems problems;
    const auto check = [&](const std::string& where, const std::vector<PivotTableValue>& values)
    {
        for (unsigned long index = 0; index < values.size(); ++index)
        {
            addAll(problems, where + " " + std::to_string(index), checkBlocks(values[index].getBlocks()));
        }
    };
    for (const auto& [field, values] : pivotTable.getFieldCache().getFieldValueCache())
    {
        check("Value of field " + std::to_string(field.get()), values);
    }
    check("Calculated value", pivotTable.getCalculatedValues());
    return problems;
}

Problems checkCell(const Cell& cell)
{
    Problems problems = checkInvariants(cell.getTextWithTombstones());
    if (const auto pivotTable = cell.getPivotTable())
    {
        addAll(problems, "Pivot table", checkPivotTable(*pivotTable));
    }
    return problems;
}

Problems checkCells(const Table& table)
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
               checkCell(**cell));
    }
    return problems;
}

Problems checkTable(const Table& table)
{
    Problems problems = checkInvariants(table);
    return problems.empty() ? checkCells(table) : problems;
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
    const auto misfit = TombstonesLimits::findMisfit(text.getTombstones(), PlaneSize::of(text.getBlocks()));
    return misfit ? Problems{*misfit} : Problems();
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

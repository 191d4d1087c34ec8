#include "DOM_TextNesting.h"
#include "DOM_Blocks.h"
#include "DOM_PivotTable.h"

#include <algorithm>

namespace Zem::DOM
{

namespace
{

/// Of a text with these blocks, which is one itself. Null blocks have none.
unsigned long getNestingOfText(const Blocks& blocks)
{
    unsigned long inside = 0;
    for (const std::unique_ptr<Block>& block : blocks)
    {
        inside = std::max(inside, block ? getTextNesting(*block) : 0);
    }
    return 1 + inside;
}

unsigned long getNesting(const std::vector<PivotTableValue>& values)
{
    unsigned long nesting = 0;
    for (const PivotTableValue& value : values)
    {
        nesting = std::max(nesting, getNestingOfText(value.getBlocks()));
    }
    return nesting;
}

unsigned long getNesting(const PivotTable& pivotTable)
{
    unsigned long nesting = getNesting(pivotTable.getCalculatedValues());
    for (const auto& [field, values] : pivotTable.getFieldCache().getFieldValueCache())
    {
        nesting = std::max(nesting, getNesting(values));
    }
    return nesting;
}

unsigned long getNesting(const Table& table)
{
    unsigned long nesting = 0;
    const RowIndex rowsCount(table.getLiveRowsCount().get());
    const ColumnIndex colsCount(table.getLiveColsCount().get());
    if (rowsCount == RowIndex(0) || colsCount == ColumnIndex(0))
    {
        return nesting;
    }
    auto [cell, end] = table.getRangeIterators(TableRange(RowIndex(0), ColumnIndex(0), rowsCount, colsCount));
    for (; cell != end; ++cell)
    {
        nesting = std::max(nesting, getNestingOfText((*cell)->getTextWithTombstones().getBlocks()));
        if (const auto pivotTable = (*cell)->getPivotTable())
        {
            nesting = std::max(nesting, getNesting(*pivotTable));
        }
    }
    return nesting;
}

} // namespace

unsigned long getTextNesting(const Block& block)
{
    return visitBlock(
        block, [](const Table& table) { return getNesting(table); },
        [](const Shape& shape) { return getNestingOfText(shape.getTextWithTombstones().getBlocks()); },
        [](const auto&) { return 0UL; });
}

} // namespace Zem::DOM

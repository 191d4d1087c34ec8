#include "DClb_TableActionsValidator.h"

#include "DClb_TableLines.h"

#include "Util_Assert.h"

#include <boost/variant.hpp>

namespace Zem::DOMCollaboration::TableActionsValidator
{

namespace
{

template<class Lines>
bool canInsertInArray(const DOM::Cell& cell)
{
    const DOM::ArrayFormulaShift* shift = cell.getArrayFormulaShift();
    return !shift || Lines::getShiftCount(*shift) == 0;
}

/// The lines [begin, end) with all that crosses them.
template<class Lines>
TableRange makeRangeOfLines(const DOM::Table& table, typename Lines::Index begin, typename Lines::Index end)
{
    using CrossingIndex = typename Lines::CrossingIndex;
    return Lines::makeRange(begin, end, CrossingIndex(0), CrossingIndex(CrossingLines<Lines>::getLiveCount(table)));
}

template<class Lines>
bool canInsert(const DOM::Table& table, typename Lines::Index line)
{
    if (Lines::canInsert(table, line))
    {
        return false; // The table answers whether something stands in the way.
    }
    const auto range = table.getRangeIterators(makeRangeOfLines<Lines>(table, line, line + 1));
    for (auto cell = range.first; cell != range.second; ++cell)
    {
        if (!canInsertInArray<Lines>(derefPtr(*cell)))
        {
            return false;
        }
    }
    return true;
}

/// `end - currentIndex` lines are left for an array formula whose root stands in the line `currentIndex`.
template<class Lines>
bool canRemoveFormula(const DOM::Formula& formula, typename Lines::Index currentIndex, typename Lines::Index end)
{
    if (!formula.getArrayFormulaSize())
    {
        return true;
    }
    ZEM_ASSERT_MESSAGE(end >= currentIndex,
                       Lines::isColumns ? "boundaryColumn >= currentColIndex" : "boundaryRow >= currentRowIndex");
    return Lines::getArrayCount(*formula.getArrayFormulaSize()) <= (end - currentIndex).get();
}

template<class Lines>
bool canRemoveShift(const DOM::ArrayFormulaShift& shift, typename Lines::Index currentIndex,
                    typename Lines::Index begin, typename Lines::Index end)
{
    const unsigned long count = Lines::getShiftCount(shift);
    return count <= currentIndex.get() && begin <= currentIndex - count && currentIndex - count <= end;
}

template<class Lines>
bool canRemove(const DOM::Table& table, typename Lines::Index begin, unsigned long count)
{
    const typename Lines::Index end = begin + count;
    const TableRange tableRange = makeRangeOfLines<Lines>(table, begin, end);
    if (table.isPivotTablesInRange(tableRange))
    {
        return false;
    }
    const auto range = table.getRangeIterators(tableRange);
    for (auto cell = range.first; cell != range.second; ++cell)
    {
        if (!*cell)
        {
            continue;
        }
        const DOM::CellData data = (*cell)->getCellData();
        const auto* const* formula = boost::get<const DOM::Formula*>(&data);
        if (formula && !canRemoveFormula<Lines>(**formula, Lines::getIndex(cell), end))
        {
            return false;
        }
        const auto* const* shift = boost::get<const DOM::ArrayFormulaShift*>(&data);
        if (shift && !canRemoveShift<Lines>(**shift, Lines::getIndex(cell), begin, end))
        {
            return false;
        }
    }
    return true;
}

} // namespace

bool canInsertRowsOrColumns(const DOM::Cell& cell, bool isColumns)
{
    return isColumns ? canInsertInArray<TableColumns>(cell) : canInsertInArray<TableRows>(cell);
}

bool canInsertRows(const DOM::Table& table, RowIndex row)
{
    return canInsert<TableRows>(table, row);
}

bool canInsertColumns(const DOM::Table& table, ColumnIndex column)
{
    return canInsert<TableColumns>(table, column);
}

bool canRemoveRows(const DOM::Table& table, RowIndex firstRow, unsigned long count)
{
    return canRemove<TableRows>(table, firstRow, count);
}

bool canRemoveColumns(const DOM::Table& table, ColumnIndex firstColumn, unsigned long count)
{
    return canRemove<TableColumns>(table, firstColumn, count);
}

} // namespace Zem::DOMCollaboration::TableActionsValidator

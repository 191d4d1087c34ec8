#include "DClb_Utils.h"

#include "DClb_TableLines.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::DOMCollaboration::Utils
{

namespace
{

bool isMergedCell(const DOM::Cell& cell)
{
    return !(cell.getMergeProps() == DOM::CellMergeProps());
}

void recordMergedCell(MergedCells& mergedCells, const DOM::Cell* cell, const CellIndex& indices)
{
    const bool isNew = mergedCells.emplace(cell, indices).second;
    ZEM_ASSERT_MESSAGE(isNew || mergedCells.at(cell) == indices, "mergedCells.at(cell) == indices");
}

/// Records the root of the merge that captures a place from the side, and returns where it stands.
template<class Lines>
boost::optional<CellIndex> recordCapturingRoot(MergedCells& mergedCells, const DOM::Table& table,
                                               const CellIndex& place)
{
    const boost::optional<CellIndex> root = table.getMergedCellRoot(place.rowIndex, place.colIndex);
    if (root)
    {
        const DOM::Cell* mergedRootCell = table.getCell(root->rowIndex, root->colIndex);
        ZEM_ASSERT(isMergedCell(derefPtr(mergedRootCell)));
        if constexpr (Lines::isColumns)
        {
            ZEM_ASSERT(0 < mergedRootCell->getMergeProps().getCapturedColsCount());
        }
        recordMergedCell(mergedCells, mergedRootCell, *root);
    }
    return root;
}

/// Walks along one row or column, over the crossing lines [begin, end), and records the roots of the merges there.
/// `singleLinesIgnored` leaves out the merges that don't reach beyond this line.
template<class Lines>
void walkLine(MergedCells& mergedCells, const DOM::Table& table, typename Lines::Index line,
              typename Lines::CrossingIndex begin, typename Lines::CrossingIndex end, bool singleLinesIgnored)
{
    using Crossing = CrossingLines<Lines>;
    for (typename Lines::CrossingIndex crossing = begin; crossing < end;)
    {
        const CellIndex place = Lines::makeCellIndex(line, crossing);
        const DOM::Cell* cell = table.getCell(place.rowIndex, place.colIndex);
        if (cell && isMergedCell(*cell))
        {
            const bool isSingle = Lines::getCapturedCount(cell->getMergeProps()) == 0;
            if (!isSingle || !singleLinesIgnored)
            {
                recordMergedCell(mergedCells, cell, place);
            }
            crossing = crossing + Crossing::getCapturedCount(cell->getMergeProps()) + 1;
        }
        else if (const auto root = recordCapturingRoot<Lines>(mergedCells, table, place))
        {
            // A column is walked from its top, and so meets a merge where it begins.
            const DOM::Cell& rootCell = derefPtr(table.getCell(root->rowIndex, root->colIndex));
            const auto start = Lines::isColumns ? crossing : Lines::getCrossing(*root);
            crossing = start + Crossing::getCapturedCount(rootCell.getMergeProps()) + 1;
        }
        else
        {
            ++crossing;
        }
    }
}

/// The end of `count` lines from `first` on, or of the table: what lies outside has no merges.
template<class Lines>
typename Lines::Index getEndOfLines(const DOM::Table& table, typename Lines::Index first, unsigned long count)
{
    const unsigned long liveCount = Lines::getLiveCount(table);
    return first.get() < liveCount ? first + std::min(count, liveCount - first.get()) : first;
}

void walkRow(MergedCells& mergedCells, const DOM::Table& table, RowIndex row, ColumnIndex startColIndex,
             unsigned long colsCount, bool singleRowsIgnored)
{
    walkLine<TableRows>(mergedCells, table, row, startColIndex, startColIndex + colsCount, singleRowsIgnored);
}

void requireColumns(const DOM::Table& table, ColumnIndex startColIndex, unsigned long colsCount)
{
    const unsigned long liveCount = table.getLiveColsCount().get();
    ZEM_ASSERT_MESSAGE(colsCount <= liveCount && startColIndex.get() <= liveCount - colsCount,
                       "(startColIndex + colsCount).get() <= table.getLiveColsCount().get()");
}

} // namespace

void getMergedCellsInRow(MergedCells& mergedCells, const DOM::Table& table, RowIndex row)
{
    walkRow(mergedCells, table, row, ColumnIndex(0), table.getLiveColsCount().get(), true);
}

void getMergedCellsInRows(MergedCells& mergedCells, const DOM::Table& table, RowIndex first, unsigned long count)
{
    const RowIndex end = getEndOfLines<TableRows>(table, first, count);
    for (RowIndex row = first; row < end; ++row)
    {
        getMergedCellsInRow(mergedCells, table, row);
    }
}

void getMergedCellsInColumn(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex column)
{
    walkLine<TableColumns>(mergedCells, table, column, RowIndex(0), RowIndex(table.getLiveRowsCount().get()), true);
}

void getMergedCellsInCols(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex first, unsigned long count)
{
    const ColumnIndex end = getEndOfLines<TableColumns>(table, first, count);
    for (ColumnIndex column = first; column < end; ++column)
    {
        getMergedCellsInColumn(mergedCells, table, column);
    }
}

void getMergedCellsInRect(MergedCells& mergedCells, const DOM::Table& table, RowIndex row, unsigned long rowsCount,
                          ColumnIndex column, unsigned long colsCount)
{
    if (rowsCount == 0)
    {
        return;
    }
    requireColumns(table, column, colsCount);
    const RowIndex end = getEndOfLines<TableRows>(table, row, rowsCount);
    for (RowIndex current = row; current < end; ++current)
    {
        walkRow(mergedCells, table, current, column, colsCount, false);
    }
}

} // namespace Zem::DOMCollaboration::Utils

#include "DClb_Utils.h"

#include "DClb_TableLines.h"

#include "Util_Assert.h"

#include <algorithm>
#include <limits>
#include <set>
#include <vector>

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

/// The place behind `begin` and the `captured` ones that follow on it; not more than can be counted.
template<class Index>
Index getEndOfMerge(Index begin, unsigned long captured)
{
    constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();
    return captured < highest - begin.get() ? begin + captured + 1 : Index(highest);
}

/// Records the root of the merge at a place of a line, and returns where the merge ends along the line; empty if there
/// is none. `singleLinesIgnored` leaves out the merges that don't reach beyond this line.
template<class Lines>
boost::optional<typename Lines::CrossingIndex> recordMergeAt(MergedCells& mergedCells, const DOM::Table& table,
                                                             const CellIndex& place, bool singleLinesIgnored)
{
    using Crossing = CrossingLines<Lines>;
    const DOM::Cell* cell = table.getCell(place.rowIndex, place.colIndex);
    if (cell && isMergedCell(*cell))
    {
        const bool isSingle = Lines::getCapturedCount(cell->getMergeProps()) == 0;
        if (!isSingle || !singleLinesIgnored)
        {
            recordMergedCell(mergedCells, cell, place);
        }
        return getEndOfMerge(Lines::getCrossing(place), Crossing::getCapturedCount(cell->getMergeProps()));
    }
    const boost::optional<CellIndex> root = recordCapturingRoot<Lines>(mergedCells, table, place);
    if (!root)
    {
        return boost::none;
    }
    // A column is walked from its top, and so meets a merge where it begins.
    const DOM::Cell& rootCell = derefPtr(table.getCell(root->rowIndex, root->colIndex));
    const auto start = Lines::isColumns ? Lines::getCrossing(place) : Lines::getCrossing(*root);
    return getEndOfMerge(start, Crossing::getCapturedCount(rootCell.getMergeProps()));
}

/// A stretch of neighbouring lines, and of the lines that cross them; it may be empty.
template<class Lines>
struct Stretch
{
    using Index = typename Lines::Index;
    using CrossingIndex = typename Lines::CrossingIndex;

    /// The ranges of the merges that have a place in it.
    std::vector<TableRange> findMerges(const DOM::Table& table) const
    {
        const bool isEmpty = _begin >= _end || _crossingBegin >= _crossingEnd;
        return isEmpty ? std::vector<TableRange>()
                       : table.getMergedRangesInRange(Lines::makeRange(_begin, _end, _crossingBegin, _crossingEnd));
    }

    Index _begin;
    Index _end;
    CrossingIndex _crossingBegin;
    CrossingIndex _crossingEnd;
};

/// Walks along the one line of a stretch and records the roots of the merges there. A merge is stepped over as a whole,
/// and so is what lies between two merges: how many places there are says nothing of how many are looked at.
template<class Lines>
void walkLine(MergedCells& mergedCells, const DOM::Table& table, const Stretch<Lines>& line, bool singleLinesIgnored)
{
    using CrossingIndex = typename Lines::CrossingIndex;
    std::vector<CrossingIndex> begins;
    for (const TableRange& merge : line.findMerges(table))
    {
        const CellIndex root(merge._beginRow, merge._beginColumn);
        begins.push_back(std::max(line._crossingBegin, Lines::getCrossing(root)));
    }
    std::sort(begins.begin(), begins.end());
    auto next = begins.begin();
    while (next != begins.end())
    {
        boost::optional<CrossingIndex> behind = *next;
        CrossingIndex crossing = *next;
        while (behind && *behind < line._crossingEnd)
        {
            crossing = *behind;
            const CellIndex place = Lines::makeCellIndex(line._begin, crossing);
            behind = recordMergeAt<Lines>(mergedCells, table, place, singleLinesIgnored);
        }
        next = std::upper_bound(next, begins.end(), behind.value_or(crossing));
    }
}

/// The same for each line of a stretch. Of lines that the same merges cross, the first will do: the lines where a merge
/// begins, the ones behind these and those where a merge has ended are looked at.
template<class Lines>
void walkLines(MergedCells& mergedCells, const DOM::Table& table, const Stretch<Lines>& lines, bool singleLinesIgnored)
{
    using Index = typename Lines::Index;
    std::set<Index> changes{lines._begin};
    for (const TableRange& merge : lines.findMerges(table))
    {
        const Index begin = CrossingLines<Lines>::getCrossing(CellIndex(merge._beginRow, merge._beginColumn));
        const Index end = CrossingLines<Lines>::getCrossing(CellIndex(merge._endRow, merge._endColumn));
        changes.insert({begin, begin + 1, end});
    }
    const auto last = changes.lower_bound(lines._end);
    for (auto line = changes.lower_bound(lines._begin); line != last; ++line)
    {
        walkLine<Lines>(mergedCells, table, {*line, *line + 1, lines._crossingBegin, lines._crossingEnd},
                        singleLinesIgnored);
    }
}

/// One line, which may lie outside the table: a merge may reach out of it.
template<class Lines>
Stretch<Lines> makeStretchOfLine(const DOM::Table& table, typename Lines::Index line)
{
    using CrossingIndex = typename Lines::CrossingIndex;
    return {line, getEndOfMerge(line, 0), CrossingIndex(0), CrossingIndex(CrossingLines<Lines>::getLiveCount(table))};
}

/// The end of `count` lines from `first` on, or of the table: what lies outside has no merges.
template<class Lines>
typename Lines::Index getEndOfLines(const DOM::Table& table, typename Lines::Index first, unsigned long count)
{
    const unsigned long liveCount = Lines::getLiveCount(table);
    return first.get() < liveCount ? first + std::min(count, liveCount - first.get()) : first;
}

/// `count` lines from `first` on, as far as they lie inside the table.
template<class Lines>
Stretch<Lines> makeStretchOfLines(const DOM::Table& table, typename Lines::Index first, unsigned long count)
{
    using CrossingIndex = typename Lines::CrossingIndex;
    return {first, getEndOfLines<Lines>(table, first, count), CrossingIndex(0),
            CrossingIndex(CrossingLines<Lines>::getLiveCount(table))};
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
    walkLine(mergedCells, table, makeStretchOfLine<TableRows>(table, row), true);
}

void getMergedCellsInRows(MergedCells& mergedCells, const DOM::Table& table, RowIndex first, unsigned long count)
{
    walkLines(mergedCells, table, makeStretchOfLines<TableRows>(table, first, count), true);
}

void getMergedCellsInColumn(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex column)
{
    walkLine(mergedCells, table, makeStretchOfLine<TableColumns>(table, column), true);
}

void getMergedCellsInCols(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex first, unsigned long count)
{
    walkLines(mergedCells, table, makeStretchOfLines<TableColumns>(table, first, count), true);
}

void getMergedCellsInRect(MergedCells& mergedCells, const DOM::Table& table, RowIndex row, unsigned long rowsCount,
                          ColumnIndex column, unsigned long colsCount)
{
    if (rowsCount == 0)
    {
        return;
    }
    requireColumns(table, column, colsCount);
    const Stretch<TableRows> rect{row, getEndOfLines<TableRows>(table, row, rowsCount), column, column + colsCount};
    walkLines(mergedCells, table, rect, false);
}

} // namespace Zem::DOMCollaboration::Utils

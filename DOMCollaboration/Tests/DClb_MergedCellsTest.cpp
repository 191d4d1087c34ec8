#include "DClb_Utils.h"

#include "TS_Assertions.h"

#include "DOM_Table.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <set>

namespace Zem::DOMCollaboration
{

namespace
{

using Utils::MergedCells;
using Places = std::set<std::pair<unsigned long, unsigned long>>;

RowIndex row(unsigned long index)
{
    return RowIndex(index);
}

ColumnIndex column(unsigned long index)
{
    return ColumnIndex(index);
}

/// Where the roots stand; each must be the cell of its place.
Places getPlaces(const DOM::Table& table, const MergedCells& mergedCells)
{
    Places places;
    for (const auto& [cell, place] : mergedCells)
    {
        EXPECT_EQ(table.getCell(place.rowIndex, place.colIndex), cell);
        places.emplace(place.rowIndex.get(), place.colIndex.get());
    }
    return places;
}

Places findInRow(const DOM::Table& table, unsigned long index)
{
    MergedCells mergedCells;
    Utils::getMergedCellsInRow(mergedCells, table, row(index));
    return getPlaces(table, mergedCells);
}

Places findInColumn(const DOM::Table& table, unsigned long index)
{
    MergedCells mergedCells;
    Utils::getMergedCellsInColumn(mergedCells, table, column(index));
    return getPlaces(table, mergedCells);
}

Places findInRect(const DOM::Table& table, unsigned long r, unsigned long rows, unsigned long c, unsigned long columns)
{
    MergedCells mergedCells;
    Utils::getMergedCellsInRect(mergedCells, table, row(r), rows, column(c), columns);
    return getPlaces(table, mergedCells);
}

/// A wide merge at (0,1) to (0,3), a high one at (1,0) to (3,0), a block at (2,2) to (3,4).
DOM::Table makeTable()
{
    DOM::Table table(5, 6);
    table.setMergeProps(row(0), column(1), 0, 2);
    table.setMergeProps(row(1), column(0), 2, 0);
    table.setMergeProps(row(2), column(2), 1, 2);
    return table;
}

/// By the definition: the roots of the merges that have a position in the range and pass the filter.
template<class Filter>
Places findNaively(const DOM::Table& table, const TableRange& range, Filter filter)
{
    Places places;
    for (RowIndex r = range._beginRow; r < range._endRow; ++r)
    {
        for (ColumnIndex c = range._beginColumn; c < range._endColumn; ++c)
        {
            const TableRange* merged = table.getMergedRange(r, c);
            if (merged && filter(*merged))
            {
                places.emplace(merged->_beginRow.get(), merged->_beginColumn.get());
            }
        }
    }
    return places;
}

/// The walk along a row that looks at every place; merges may overlap.
Places walkNaively(const DOM::Table& table, unsigned long r, unsigned long begin, unsigned long end)
{
    Places places;
    for (unsigned long c = begin; c < end;)
    {
        const DOM::Cell* cell = table.getCell(row(r), column(c));
        CellIndex root(row(r), column(c));
        if (!cell || cell->getMergeProps() == DOM::CellMergeProps())
        {
            const auto capturing = table.getMergedCellRoot(row(r), column(c));
            if (!capturing)
            {
                ++c;
                continue;
            }
            root = *capturing;
            cell = table.getCell(root.rowIndex, root.colIndex);
        }
        places.emplace(root.rowIndex.get(), root.colIndex.get());
        c = root.colIndex.get() + cell->getMergeProps().getCapturedColsCount() + 1;
    }
    return places;
}

} // namespace

TEST(MergedCells, ARowScanIgnoresMergesOfOneRow)
{
    const DOM::Table table = makeTable();
    EXPECT_EQ(Places(), findInRow(table, 0));
    EXPECT_EQ((Places{{1, 0}}), findInRow(table, 1));
    EXPECT_EQ((Places{{1, 0}, {2, 2}}), findInRow(table, 2));
    EXPECT_EQ((Places{{1, 0}, {2, 2}}), findInRow(table, 3)) << "reached through their roots";
    EXPECT_EQ(Places(), findInRow(table, 4));
}

TEST(MergedCells, ARectangleFindsMergesOfOneRowToo)
{
    const DOM::Table table = makeTable();
    EXPECT_EQ((Places{{0, 1}}), findInRect(table, 0, 1, 0, 6));
    EXPECT_EQ((Places{{0, 1}, {1, 0}, {2, 2}}), findInRect(table, 0, 5, 0, 6));
    EXPECT_EQ((Places{{2, 2}}), findInRect(table, 3, 1, 3, 1)) << "inside the merge, without its root";
    EXPECT_EQ(Places(), findInRect(table, 4, 1, 0, 6));
}

TEST(MergedCells, ARectangleThatBeginsInsideAMergeGoesOnRightBehindIt)
{
    DOM::Table table(3, 6);
    table.setMergeProps(row(0), column(0), 1, 3);
    table.setMergeProps(row(1), column(4), 1, 0);
    EXPECT_EQ((Places{{0, 0}, {1, 4}}), findInRect(table, 1, 1, 2, 4));
    EXPECT_EQ((Places{{0, 0}, {1, 4}}), findInRect(table, 1, 1, 3, 3));
}

TEST(MergedCells, AColumnScanIgnoresMergesOfOneColumn)
{
    const DOM::Table table = makeTable();
    EXPECT_EQ(Places(), findInColumn(table, 0));
    EXPECT_EQ((Places{{0, 1}}), findInColumn(table, 1));
    EXPECT_EQ((Places{{0, 1}, {2, 2}}), findInColumn(table, 2));
    EXPECT_EQ((Places{{0, 1}, {2, 2}}), findInColumn(table, 3)) << "reached from the side";
    EXPECT_EQ((Places{{2, 2}}), findInColumn(table, 4));
    EXPECT_EQ(Places(), findInColumn(table, 5));
}

TEST(MergedCells, SeveralLinesAreScannedOneAfterTheOther)
{
    const DOM::Table table = makeTable();
    MergedCells inRows;
    Utils::getMergedCellsInRows(inRows, table, row(0), 2);
    EXPECT_EQ((Places{{1, 0}}), getPlaces(table, inRows));
    MergedCells inColumns;
    Utils::getMergedCellsInCols(inColumns, table, column(3), 3);
    EXPECT_EQ((Places{{0, 1}, {2, 2}}), getPlaces(table, inColumns));
}

TEST(MergedCells, CountsBeyondTheTableFindWhatIsInsideIt)
{
    constexpr unsigned long huge = std::numeric_limits<unsigned long>::max();
    const DOM::Table table = makeTable();
    MergedCells inRows;
    Utils::getMergedCellsInRows(inRows, table, row(1), huge);
    EXPECT_EQ((Places{{1, 0}, {2, 2}}), getPlaces(table, inRows));
    MergedCells inColumns;
    Utils::getMergedCellsInCols(inColumns, table, column(3), huge);
    EXPECT_EQ((Places{{0, 1}, {2, 2}}), getPlaces(table, inColumns));
    EXPECT_EQ((Places{{1, 0}, {2, 2}}), findInRect(table, 1, huge, 0, 6));
    EXPECT_EQ(Places(), findInRect(table, 5, huge, 0, 6));
    EXPECT_EQ(Places(), findInRect(table, 0, 0, 0, huge)) << "no rows at all";
}

TEST(MergedCells, MergesThatReachFurtherThanCanBeCountedAreScanned)
{
    constexpr unsigned long huge = std::numeric_limits<unsigned long>::max();
    DOM::Table table(5, 5);
    table.setMergeProps(row(1), column(1), huge, huge);
    for (const unsigned long index : {1UL, 3UL, 4UL})
    {
        EXPECT_EQ((Places{{1, 1}}), findInRow(table, index));
        EXPECT_EQ((Places{{1, 1}}), findInColumn(table, index));
    }
    EXPECT_EQ((Places{{1, 1}}), findInRect(table, 2, 2, 2, 3));
}

TEST(MergedCells, AColumnReachesAMergeOfOneColumnThroughItsRootOnlyWhereMergesOverlap)
{
    DOM::Table table(8, 2);
    table.setMergeProps(row(0), column(0), 2, 0);
    table.setMergeProps(row(2), column(0), 3, 0);
    EXPECT_ASSERTION(findInColumn(table, 0), "0 < mergedRootCell->getMergeProps().getCapturedColsCount()");
}

TEST(MergedCells, TablesWithoutRowsOrColumnsHaveNone)
{
    EXPECT_EQ(Places(), findInColumn(DOM::Table(0, 3), 1));
    EXPECT_EQ(Places(), findInRow(DOM::Table(3, 0), 1));
}

TEST(MergedCells, ACellStandsAtOnePlaceOnly)
{
    const DOM::Table table = makeTable();
    MergedCells mergedCells;
    mergedCells.emplace(table.getCell(row(2), column(2)), CellIndex(row(0), column(0)));
    EXPECT_ASSERTION(Utils::getMergedCellsInRow(mergedCells, table, row(2)), "mergedCells.at(cell) == indices");
    EXPECT_ASSERTION(Utils::getMergedCellsInColumn(mergedCells, table, column(3)), "mergedCells.at(cell) == indices");
}

TEST(MergedCells, ARectangleBeyondTheColumnsFails)
{
    const char* const message = "(startColIndex + colsCount).get() <= table.getLiveColsCount().get()";
    EXPECT_ASSERTION(findInRect(makeTable(), 0, 1, 3, 4), message);
    EXPECT_ASSERTION(findInRect(makeTable(), 0, 1, 3, std::numeric_limits<unsigned long>::max()), message);
}

TEST(MergedCells, CountsThatCannotBeCountedEnd)
{
    constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();
    DOM::Table table(5, 5);
    table.setMergeProps(row(1), column(1), highest, highest);
    const Places root{{1, 1}};
    for (unsigned long index = 0; index < 5; ++index)
    {
        EXPECT_EQ(index < 1 ? Places() : root, findInRow(table, index)) << index;
        EXPECT_EQ(index < 1 ? Places() : root, findInColumn(table, index)) << index;
    }
    EXPECT_EQ(root, findInRect(table, 0, highest, 0, 5));
    EXPECT_EQ(Places(), findInRow(table, highest));
    EXPECT_EQ(Places(), findInColumn(table, highest));
    DOM::Table flat(1, 2);
    flat.setMergeProps(row(0), column(0), 0, highest);
    EXPECT_EQ(Places(), findInRow(flat, 0)) << "of one row";
}

TEST(MergedCells, LinesBetweenMergesAreNotCounted)
{
    constexpr unsigned long huge = 1UL << 60;
    DOM::Table table(huge, huge);
    table.setMergeProps(row(7), column(huge / 2), huge, 1);
    table.setMergeProps(row(huge - 2), column(3), 1, 2);
    const Places both{{7, huge / 2}, {huge - 2, 3}};
    MergedCells inRows;
    Utils::getMergedCellsInRows(inRows, table, row(0), huge);
    EXPECT_EQ(both, getPlaces(table, inRows));
    MergedCells inColumns;
    Utils::getMergedCellsInCols(inColumns, table, column(0), huge);
    EXPECT_EQ(both, getPlaces(table, inColumns));
    EXPECT_EQ(both, findInRect(table, 0, huge, 0, huge));
    EXPECT_EQ((Places{{7, huge / 2}}), findInRect(table, 100, huge, 5 + huge / 4, huge / 2));
    EXPECT_EQ((Places{{huge - 2, 3}}), findInColumn(table, 5));
    EXPECT_EQ((Places{{7, huge / 2}}), findInRow(table, huge - 3));
}

TEST(MergedCells, OverlappingMergesAreScannedAsPlaceByPlace)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    const auto below = [&](unsigned long limit) { return random() % limit; };
    constexpr unsigned long size = 7;
    for (int round = 0; round < 200; ++round)
    {
        DOM::Table table(size, size);
        for (int count = 0; count < 5; ++count)
        {
            table.setMergeProps(row(below(size)), column(below(size)), below(4), below(4));
        }
        const unsigned long firstRow = below(size);
        const unsigned long firstColumn = below(size);
        Places expected;
        for (unsigned long index = firstRow; index < size; ++index)
        {
            const Places inLine = walkNaively(table, index, firstColumn, size);
            expected.insert(inLine.begin(), inLine.end());
        }
        EXPECT_EQ(expected, findInRect(table, firstRow, size, firstColumn, size - firstColumn));
    }
}

TEST(MergedCells, AColumnOfOverlappingMergesOfOneColumnFails)
{
    DOM::Table table(8, 2);
    table.setMergeProps(row(0), column(0), 2, 0);
    table.setMergeProps(row(2), column(0), 3, 0);
    EXPECT_ASSERTION(findInColumn(table, 0), "0 < mergedRootCell->getMergeProps().getCapturedColsCount()");
}

TEST(MergedCells, RandomTablesAreScannedAsTheDefinitionSays)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    const auto below = [&](unsigned long limit)
    { return std::uniform_int_distribution<unsigned long>(0, limit - 1)(random); };
    constexpr unsigned long size = 8;
    for (int round = 0; round < 25; ++round)
    {
        DOM::Table table(size, size);
        for (int attempt = 0; attempt < 8; ++attempt)
        {
            const unsigned long r = below(size);
            const unsigned long c = below(size);
            const TableRange range(row(r), column(c), row(r + 1 + below(size - r)), column(c + 1 + below(size - c)));
            if (table.getMergedRangesInRange(range).empty())
            {
                table.setMergeProps(row(r), column(c), (range._endRow - range._beginRow).get() - 1,
                                    (range._endColumn - range._beginColumn).get() - 1);
            }
        }
        for (unsigned long index = 0; index < size; ++index)
        {
            const TableRange rowRange(row(index), column(0), row(index + 1), column(size));
            EXPECT_EQ(findNaively(table, rowRange,
                                  [](const TableRange& merged) { return merged._endRow - merged._beginRow > row(1); }),
                      findInRow(table, index));
            const TableRange columnRange(row(0), column(index), row(size), column(index + 1));
            EXPECT_EQ(findNaively(table, columnRange,
                                  [](const TableRange& merged)
                                  { return merged._endColumn - merged._beginColumn > column(1); }),
                      findInColumn(table, index));
            EXPECT_EQ(findNaively(table, rowRange, [](const TableRange&) { return true; }),
                      findInRect(table, index, 1, 0, size));
        }
    }
}

} // namespace Zem::DOMCollaboration

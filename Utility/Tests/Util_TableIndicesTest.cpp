#include "Util_TableIndices.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <type_traits>

using namespace Zem;

namespace
{

TableRange range(unsigned long beginRow, unsigned long beginColumn, unsigned long endRow, unsigned long endColumn)
{
    return {RowIndex{beginRow}, ColumnIndex{beginColumn}, RowIndex{endRow}, ColumnIndex{endColumn}};
}

CellIndex cell(unsigned long row, unsigned long column)
{
    return {RowIndex{row}, ColumnIndex{column}};
}

} // namespace

TEST(TableIndices, RowsAndColumnsDoNotMix)
{
    static_assert(!std::is_constructible_v<RowIndex, ColumnIndex>);
    static_assert(!std::is_constructible_v<CellIndex, ColumnIndex, RowIndex>);
    static_assert(RowTag::Value == 0 && ColumnTag::Value == 1);
}

TEST(TableIndices, ACellIsOrderedByRowThenColumn)
{
    EXPECT_EQ(cell(0, 0), CellIndex());
    EXPECT_EQ(cell(1, 2), cell(1, 2));
    EXPECT_NE(cell(1, 2), cell(2, 1));
    EXPECT_LT(cell(1, 2), cell(2, 1));
    EXPECT_LT(cell(1, 2), cell(1, 3));
}

TEST(TableRange, IsNeverEmpty)
{
    EXPECT_ASSERTION(range(3, 1, 3, 2), "_beginRow < _endRow");
    EXPECT_ASSERTION(range(4, 1, 3, 2), "_beginRow < _endRow");
    EXPECT_ASSERTION(range(1, 3, 2, 3), "_beginColumn < _endColumn");
    EXPECT_ASSERTION(range(1, 4, 2, 3), "_beginColumn < _endColumn");
    EXPECT_EQ(range(0, 0, 1, 1), TableRange());
}

TEST(TableRange, HoldsItsBeginsButNotItsEnds)
{
    const TableRange table = range(1, 2, 3, 5);
    EXPECT_TRUE(table.contains(cell(1, 2)));
    EXPECT_TRUE(table.contains(cell(2, 4)));
    EXPECT_FALSE(table.contains(cell(0, 2)));
    EXPECT_FALSE(table.contains(cell(3, 2)));
    EXPECT_FALSE(table.contains(cell(1, 1)));
    EXPECT_FALSE(table.contains(cell(1, 5)));
}

TEST(TableRange, ContainsWhatLiesWhollyInside)
{
    const TableRange table = range(1, 1, 4, 4);
    EXPECT_TRUE(table.contains(table));
    EXPECT_TRUE(table.contains(range(2, 2, 3, 3)));
    EXPECT_FALSE(table.contains(range(0, 2, 3, 3)));
    EXPECT_FALSE(table.contains(range(2, 0, 3, 3)));
    EXPECT_FALSE(table.contains(range(2, 2, 5, 3)));
    EXPECT_FALSE(table.contains(range(2, 2, 3, 5)));
}

TEST(TableRange, IntersectsWhatSharesACell)
{
    const TableRange table = range(1, 1, 4, 4);
    EXPECT_TRUE(table.intersects(range(3, 3, 9, 9)));
    EXPECT_TRUE(table.intersects(range(0, 0, 2, 2)));
    EXPECT_FALSE(table.intersects(range(4, 1, 5, 4)));
    EXPECT_FALSE(table.intersects(range(0, 1, 1, 4)));
    EXPECT_FALSE(table.intersects(range(1, 4, 4, 5)));
    EXPECT_FALSE(table.intersects(range(1, 0, 4, 1)));
}

TEST(Size2D, IsWidthThenHeight)
{
    const Size2D<float> size{1, 2};
    EXPECT_EQ(1, size._width);
    EXPECT_EQ(2, size._height);
    EXPECT_NE(size, (Size2D<float>{2, 1}));
    EXPECT_EQ(0U, Size2D<unsigned>()._height);
}

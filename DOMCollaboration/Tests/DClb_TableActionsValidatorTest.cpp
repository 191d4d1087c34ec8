#include "DClb_TableActionsValidator.h"

#include "TS_Assertions.h"

#include "DOM_FieldBlock.h"
#include "DOM_Table.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zem::DOMCollaboration
{

using namespace TableActionsValidator;

namespace
{

constexpr unsigned long size = 8;
constexpr unsigned long arrayBegin = 2;
constexpr unsigned long arraySize = 3;

void setFieldInfo(DOM::Table& table, unsigned long row, unsigned long column, DOM::FieldBlock::FieldInfo info)
{
    DOM::Cell& cell = table.getOrCreateCell(RowIndex(row), ColumnIndex(column));
    cell.getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::FieldBlock>(std::move(info)));
}

/// 8 x 8, with an array formula over rows and columns 2 to 4.
DOM::Table makeTableWithArray()
{
    DOM::Table table(size, size);
    DOM::Formula formula("A1:C3");
    formula.setArrayFormulaSize(Size2D<unsigned long>{arraySize, arraySize});
    for (unsigned long row = 0; row < arraySize; ++row)
    {
        for (unsigned long column = 0; column < arraySize; ++column)
        {
            if (row == 0 && column == 0)
            {
                setFieldInfo(table, arrayBegin, arrayBegin, formula);
            }
            else
            {
                setFieldInfo(table, arrayBegin + row, arrayBegin + column, DOM::ArrayFormulaShift(row, column));
            }
        }
    }
    return table;
}

/// The functions for rows and columns alike.
struct Rows
{
    static bool canInsert(const DOM::Table& table, unsigned long index)
    {
        return canInsertRows(table, RowIndex(index));
    }

    static bool canRemove(const DOM::Table& table, unsigned long first, unsigned long count)
    {
        return canRemoveRows(table, RowIndex(first), count);
    }

    static DOM::Table makeTable(unsigned long count, unsigned long crossingCount)
    {
        return DOM::Table(count, crossingCount);
    }

    static constexpr const char* emptyMessage = "_beginRow < _endRow";
    static constexpr const char* emptyCrossingMessage = "_beginColumn < _endColumn";
};

struct Columns
{
    static bool canInsert(const DOM::Table& table, unsigned long index)
    {
        return canInsertColumns(table, ColumnIndex(index));
    }

    static bool canRemove(const DOM::Table& table, unsigned long first, unsigned long count)
    {
        return canRemoveColumns(table, ColumnIndex(first), count);
    }

    static DOM::Table makeTable(unsigned long count, unsigned long crossingCount)
    {
        return DOM::Table(crossingCount, count);
    }

    static constexpr const char* emptyMessage = "_beginColumn < _endColumn";
    static constexpr const char* emptyCrossingMessage = "_beginRow < _endRow";
};

template<class Lines>
class TableActionsValidatorTest : public testing::Test
{
};

using BothLines = testing::Types<Rows, Columns>;
TYPED_TEST_SUITE(TableActionsValidatorTest, BothLines);

} // namespace

TYPED_TEST(TableActionsValidatorTest, TheFirstLineOfAnArrayAdmitsAnInsertionAndTheOthersDoNot)
{
    const DOM::Table table = makeTableWithArray();
    for (unsigned long index = 0; index < size; ++index)
    {
        const bool isInside = index > arrayBegin && index < arrayBegin + arraySize;
        EXPECT_EQ(!isInside, TypeParam::canInsert(table, index)) << index;
    }
}

TYPED_TEST(TableActionsValidatorTest, ThePivotTableRefusesAnInsertionThatCutsIt)
{
    DOM::Table table(size, size);
    table.setPivotTable(RowIndex(2), ColumnIndex(2), std::make_unique<DOM::PivotTable>(Size2D<unsigned>{2, 2}));
    EXPECT_EQ(!table.canInsertRow(RowIndex(3)), canInsertRows(table, RowIndex(3)));
    EXPECT_FALSE(TypeParam::canInsert(table, 3));
    EXPECT_TRUE(TypeParam::canInsert(table, 5));
}

TYPED_TEST(TableActionsValidatorTest, AnArrayGoesAsAWholeOrNotAtAll)
{
    const DOM::Table table = makeTableWithArray();
    EXPECT_TRUE(TypeParam::canRemove(table, arrayBegin, arraySize)) << "exactly the array";
    EXPECT_TRUE(TypeParam::canRemove(table, 1, 6)) << "more than the array";
    EXPECT_FALSE(TypeParam::canRemove(table, arrayBegin, arraySize - 1)) << "all but the last line";
    EXPECT_FALSE(TypeParam::canRemove(table, arrayBegin + arraySize - 1, 1)) << "the last line alone";
    EXPECT_FALSE(TypeParam::canRemove(table, arrayBegin + 1, 4)) << "all but the first line";
    EXPECT_TRUE(TypeParam::canRemove(table, 0, arrayBegin)) << "in front of the array";
    EXPECT_TRUE(TypeParam::canRemove(table, arrayBegin + arraySize, 3)) << "behind the array";
}

TYPED_TEST(TableActionsValidatorTest, APartWhoseRootWouldStandInFrontOfTheTableStays)
{
    DOM::Table table(size, size);
    setFieldInfo(table, 1, 1, DOM::ArrayFormulaShift(2, 2));
    EXPECT_FALSE(TypeParam::canRemove(table, 0, size));
    EXPECT_TRUE(TypeParam::canRemove(table, arrayBegin, size));
}

TYPED_TEST(TableActionsValidatorTest, EachLineOfAnArrayAloneIsRefused)
{
    const DOM::Table table = makeTableWithArray();
    for (unsigned long index = arrayBegin; index < arrayBegin + arraySize; ++index)
    {
        EXPECT_FALSE(TypeParam::canRemove(table, index, 1)) << index;
    }
}

TYPED_TEST(TableActionsValidatorTest, APivotTableInTheRangeRefusesARemoval)
{
    DOM::Table table(size, size);
    table.setPivotTable(RowIndex(2), ColumnIndex(2), std::make_unique<DOM::PivotTable>(Size2D<unsigned>{2, 2}));
    EXPECT_FALSE(TypeParam::canRemove(table, 2, 1));
    EXPECT_FALSE(TypeParam::canRemove(table, 3, 1)) << "not at its root";
    EXPECT_FALSE(TypeParam::canRemove(table, 2, 2)) << "as a whole neither";
    EXPECT_TRUE(TypeParam::canRemove(table, 4, 2));
}

TYPED_TEST(TableActionsValidatorTest, AnOrdinaryFormulaOrValueIsNoObstacle)
{
    DOM::Table table(size, size);
    setFieldInfo(table, 2, 2, DOM::Formula("A1"));
    setFieldInfo(table, 3, 3, DOM::BlockValue<bool>(true));
    table.getOrCreateCell(RowIndex(4), ColumnIndex(4));
    for (unsigned long index = 0; index < size; ++index)
    {
        EXPECT_TRUE(TypeParam::canInsert(table, index)) << index;
        EXPECT_TRUE(TypeParam::canRemove(table, index, 1)) << index;
    }
}

TYPED_TEST(TableActionsValidatorTest, TombstonesDoNotCount)
{
    DOM::Table table = makeTableWithArray();
    table.replaceRowWithTombstone(DOM::Table::IndexIncludingTombstones(0));
    table.replaceColWithTombstone(DOM::Table::IndexIncludingTombstones(0));
    EXPECT_TRUE(TypeParam::canInsert(table, arrayBegin - 1));
    EXPECT_FALSE(TypeParam::canInsert(table, arrayBegin));
    EXPECT_TRUE(TypeParam::canRemove(table, arrayBegin - 1, arraySize));
}

TYPED_TEST(TableActionsValidatorTest, NothingToRemoveFails)
{
    const DOM::Table table(size, size);
    EXPECT_ASSERTION(TypeParam::canRemove(table, 1, 0), TypeParam::emptyMessage);
}

TYPED_TEST(TableActionsValidatorTest, CountsBeyondTheTableAskForWhatIsInsideIt)
{
    constexpr unsigned long huge = std::numeric_limits<unsigned long>::max();
    const DOM::Table table = makeTableWithArray();
    EXPECT_TRUE(TypeParam::canRemove(table, 0, huge));
    EXPECT_TRUE(TypeParam::canRemove(table, arrayBegin, huge - arrayBegin));
    EXPECT_FALSE(TypeParam::canRemove(table, arrayBegin + 1, huge - arrayBegin - 1));
    EXPECT_ASSERTION(TypeParam::canRemove(table, 1, huge), TypeParam::emptyMessage);
}

TYPED_TEST(TableActionsValidatorTest, ATableWithoutCrossingLinesFails)
{
    const DOM::Table table = TypeParam::makeTable(size, 0);
    EXPECT_ASSERTION(TypeParam::canInsert(table, 1), TypeParam::emptyCrossingMessage);
    EXPECT_ASSERTION(TypeParam::canRemove(table, 1, 1), TypeParam::emptyCrossingMessage);
}

TEST(TableActionsValidator, ACellIsAskedByDirection)
{
    const DOM::Table table = makeTableWithArray();
    const auto canInsertAt = [&](unsigned long row, unsigned long column, bool isColumns)
    {
        return canInsertRowsOrColumns(*table.getCell(RowIndex(arrayBegin + row), ColumnIndex(arrayBegin + column)),
                                      isColumns);
    };
    EXPECT_TRUE(canInsertAt(0, 0, false));
    EXPECT_TRUE(canInsertAt(0, 0, true));
    EXPECT_FALSE(canInsertAt(1, 0, false));
    EXPECT_TRUE(canInsertAt(1, 0, true));
    EXPECT_TRUE(canInsertAt(0, 1, false));
    EXPECT_FALSE(canInsertAt(0, 1, true));
    EXPECT_TRUE(canInsertRowsOrColumns(DOM::Cell(), false));
    EXPECT_TRUE(canInsertRowsOrColumns(DOM::Cell(), true));
}

TEST(TableActionsValidator, AShiftBeyondTheFirstLineHasItsRootInNoRange)
{
    constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();
    DOM::Table table(size, size);
    setFieldInfo(table, 2, 2, DOM::ArrayFormulaShift(highest, highest));
    EXPECT_FALSE(canRemoveRows(table, RowIndex(2), 1));
    EXPECT_FALSE(canRemoveColumns(table, ColumnIndex(2), 1));
}

} // namespace Zem::DOMCollaboration

#include "DOM_BusinessLogicChecks.h"
#include "DOM_Table.h"

#include <gtest/gtest.h>

namespace Zem::DOM::Tests
{

namespace
{

TableRange makeRange(unsigned long beginRow, unsigned long beginColumn, unsigned long endRow, unsigned long endColumn)
{
    return TableRange(RowIndex(beginRow), ColumnIndex(beginColumn), RowIndex(endRow), ColumnIndex(endColumn));
}

} // namespace

TEST(BusinessLogicChecks, TellsCutRangesFromContainedOnes)
{
    const TableRange first = makeRange(2, 2, 6, 6);
    EXPECT_FALSE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(0, 0, 2, 6)));
    EXPECT_FALSE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(2, 2, 6, 6)));
    EXPECT_FALSE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(3, 3, 4, 4)));
    EXPECT_TRUE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(0, 0, 3, 3)));
    EXPECT_TRUE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(0, 0, 10, 10)));
    EXPECT_FALSE(BusinessLogicChecks::isIntersectedAndNotContained(first, makeRange(6, 2, 7, 6)));
}

TEST(BusinessLogicChecks, FindsMergesThatReachOutOfARange)
{
    Table table(10, 10);
    table.setMergeProps(RowIndex(2), ColumnIndex(2), 2, 2);
    const auto isCut = [&](const TableRange& range)
    { return BusinessLogicChecks::isMergedRangeIntersectedAndOutOfRangeExists(table, range); };
    EXPECT_TRUE(isCut(makeRange(4, 0, 5, 10)));
    EXPECT_TRUE(isCut(makeRange(0, 0, 3, 10)));
    EXPECT_FALSE(isCut(makeRange(5, 0, 6, 10)));
    EXPECT_FALSE(isCut(makeRange(2, 2, 5, 5)));
    EXPECT_TRUE(isCut(makeRange(2, 2, 5, 4)));
}

} // namespace Zem::DOM::Tests

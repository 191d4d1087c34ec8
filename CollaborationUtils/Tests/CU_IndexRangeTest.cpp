#include "CU_IndexRange.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

using namespace Zem::CollaborationUtils;

namespace
{

using PlainRange = IndexRange<unsigned long>;
using PlacesRange = IndexRange<IndexIncludingTombstones>;

} // namespace

TEST(IndexRange, HoldsItsBeginButNotItsEnd)
{
    const PlainRange range(2, 5);
    EXPECT_EQ(2UL, range.getBegin());
    EXPECT_EQ(5UL, range.getEnd());
    EXPECT_EQ(3UL, range.getCount());
    EXPECT_FALSE(range.contains(1));
    EXPECT_TRUE(range.contains(2));
    EXPECT_TRUE(range.contains(4));
    EXPECT_FALSE(range.contains(5));
}

TEST(IndexRange, IsMadeFromACount)
{
    const PlacesRange range = PlacesRange::fromCount(IndexIncludingTombstones{2}, IndexIncludingTombstones{3});
    EXPECT_EQ(PlacesRange(IndexIncludingTombstones{2}, IndexIncludingTombstones{5}), range);
    EXPECT_EQ(IndexIncludingTombstones{3}, range.getCount());
}

TEST(IndexRange, IsNeverEmpty)
{
    EXPECT_ASSERTION(PlainRange(3, 3), "_begin < _end");
    EXPECT_ASSERTION(PlainRange(4, 3), "_begin < _end");
    EXPECT_ASSERTION(PlacesRange(IndexIncludingTombstones{3}, IndexIncludingTombstones{3}), "_begin < _end");
    EXPECT_ASSERTION(PlainRange::fromCount(3, 0), "count > UnsignedIndex{0}");
    EXPECT_ASSERTION(PlacesRange::fromCount(IndexIncludingTombstones{3}, IndexIncludingTombstones{0}),
                     "count > UnsignedIndex{0}");
    EXPECT_ASSERTION(PlainRange::fromCount(~0UL, 2), "_begin < _end");
    EXPECT_EQ(PlainRange(0, 1), PlainRange());
}

TEST(IndexRange, ComparesBothEnds)
{
    EXPECT_EQ(PlainRange(1, 2), PlainRange(1, 2));
    EXPECT_NE(PlainRange(1, 2), PlainRange(1, 3));
    EXPECT_NE(PlainRange(0, 2), PlainRange(1, 2));
}

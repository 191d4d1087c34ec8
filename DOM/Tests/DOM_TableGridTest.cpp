#include "DOM_TableGrid.h"

#include "DOM_Block.h"
#include "DOM_Table.h"

#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <new>
#include <unordered_map>
#include <utility>

namespace Zem::DOM::Tests
{

namespace
{

using Place = TableGrid::Place;

/// A block that counts its copies and, from the second copy on, can't be copied for want of memory.
class CountedBlock final : public BlockImpl<CountedBlock, BlockKind::SectionTag>
{
public:
    CountedBlock()
    {
        ++_liveCount;
    }

    CountedBlock(const CountedBlock& other)
        : BlockImpl(other)
    {
        if (++_copiesCount > 1)
        {
            throw std::bad_alloc();
        }
        ++_liveCount;
    }

    CountedBlock& operator=(const CountedBlock&) = delete;

    ~CountedBlock() override
    {
        --_liveCount;
    }

    friend bool operator==(const CountedBlock&, const CountedBlock&)
    {
        return true;
    }

    static inline int _liveCount = 0;
    static inline int _copiesCount = 0;
};

} // namespace

TEST(TableGrid, IdsThatWereChosenForOneBucketCostNoMoreThanOthers)
{
    constexpr unsigned long count = 30000;
    const SharedRowStyleConstIPtr sharedStyle(new SharedStyle<RowStyle>(RowStyle()));
    const auto measure = [&](unsigned long step)
    {
        const std::clock_t begin = std::clock();
        Table table;
        for (unsigned long index = 0; index < count; ++index)
        {
            SparseRowData row;
            row._id = (index + 1) * step;
            row._style = sharedStyle;
            table.insertRow(std::move(row), Place(index));
        }
        EXPECT_TRUE(checkInvariants(table).empty());
        return std::clock() - begin;
    };
    std::unordered_map<unsigned long, Table> sameGrowth;
    for (unsigned long id = 0; id < count; ++id)
    {
        sameGrowth.try_emplace(id);
    }
    EXPECT_LT(measure(sameGrowth.bucket_count()), 4 * measure(2) + CLOCKS_PER_SEC / 10);
}

TEST(TableGrid, ACopyThatFailsHalfwayLeavesNothingBehind)
{
    {
        Table table(3, 1);
        for (unsigned long row = 0; row < 3; ++row)
        {
            table.getOrCreateCell(RowIndex(row), ColumnIndex(0))
                .getTextWithTombstones()
                .getBlocks()
                .push_back(std::make_unique<CountedBlock>());
        }
        EXPECT_THROW(Table(std::as_const(table)), std::bad_alloc);
        EXPECT_EQ(2, CountedBlock::_copiesCount);
        EXPECT_EQ(3, CountedBlock::_liveCount);
        EXPECT_EQ(3u, table.getCellsCount());
    }
    EXPECT_EQ(0, CountedBlock::_liveCount);
}

} // namespace Zem::DOM::Tests

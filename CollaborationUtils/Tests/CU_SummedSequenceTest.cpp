#include "CU_SummedSequence.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

using namespace Zem::CollaborationUtils;

namespace
{

/// A stretch of text, as an index of characters would hold it.
struct Stretch
{
    struct Summary
    {
        Summary& operator+=(const Summary& other)
        {
            _bytes += other._bytes;
            _characters += other._characters;
            return *this;
        }

        Summary& operator-=(const Summary& other)
        {
            _bytes -= other._bytes;
            _characters -= other._characters;
            return *this;
        }

        friend bool operator==(const Summary&, const Summary&) = default;

        unsigned long _bytes = 0;
        unsigned long _characters = 0;
    };

    Summary getSummary() const
    {
        return {_bytes, _characters};
    }

    friend bool operator==(const Stretch&, const Stretch&) = default;

    unsigned _bytes = 0;
    unsigned _characters = 0;
};

using Sequence = SummedSequence<Stretch>;
using Summary = Stretch::Summary;

constexpr std::size_t fanout = SummedSequenceDetails::fanout;

unsigned long bytesOf(const Summary& summary)
{
    return summary._bytes;
}

unsigned long charactersOf(const Summary& summary)
{
    return summary._characters;
}

Summary sumOfFirst(const std::vector<Stretch>& items, std::size_t count)
{
    Summary sum;
    for (std::size_t i = 0; i < count; ++i)
    {
        sum += items[i].getSummary();
    }
    return sum;
}

/// The first item whose end lies behind `target`, found by walking.
template<class Projection>
std::size_t findByWalking(const std::vector<Stretch>& items, Projection projection, unsigned long target)
{
    unsigned long sum = 0;
    std::size_t ordinal = 0;
    for (; ordinal < items.size(); ++ordinal)
    {
        sum += projection(items[ordinal].getSummary());
        if (sum > target)
        {
            break;
        }
    }
    return ordinal;
}

std::vector<Stretch> makeItems(std::size_t count)
{
    std::vector<Stretch> items;
    for (std::size_t i = 0; i < count; ++i)
    {
        const auto bytes = static_cast<unsigned>(i % 7);
        items.push_back({bytes, std::min(bytes, static_cast<unsigned>(i % 3))});
    }
    return items;
}

void expectSame(const std::vector<Stretch>& items, const Sequence& sequence)
{
    sequence.checkInvariants();
    ASSERT_EQ(items.size(), sequence.size());
    EXPECT_EQ(items.empty(), sequence.empty());
    EXPECT_EQ(items, sequence.getItems());
    EXPECT_EQ(sumOfFirst(items, items.size()), sequence.getTotal());
}

} // namespace

TEST(SummedSequence, IsEmptyAndCostsNothingAtFirst)
{
    const Sequence sequence;
    expectSame({}, sequence);
    EXPECT_EQ(0U, sequence.getMemoryUsage());
    EXPECT_EQ(sizeof(void*), sizeof(Sequence));
    EXPECT_EQ(0U, sequence.find(bytesOf, 0).getOrdinal());
    EXPECT_EQ(0U, sequence.getPlace(0).getOrdinal());
}

TEST(SummedSequence, FindsTheItemInWhichAPrefixEnds)
{
    const Sequence sequence({{3, 3}, {12, 6}, {6, 6}, {9, 3}, {10, 10}, {8, 8}, {2, 1}, {7, 7}, {8, 4}});

    const Sequence::Place byBytes = sequence.find(bytesOf, 46);
    EXPECT_EQ(5U, byBytes.getOrdinal());
    EXPECT_EQ((Summary{40, 28}), byBytes.getBefore());
    EXPECT_EQ((Stretch{8, 8}), sequence.get(byBytes));

    EXPECT_EQ(0U, sequence.find(bytesOf, 2).getOrdinal());
    EXPECT_EQ(1U, sequence.find(bytesOf, 3).getOrdinal());
    EXPECT_EQ(1U, sequence.find(charactersOf, 8).getOrdinal());
    EXPECT_EQ(2U, sequence.find(charactersOf, 9).getOrdinal());
}

TEST(SummedSequence, SkipsItemsThatAddNothing)
{
    const Sequence sequence({{0, 0}, {0, 0}, {4, 0}, {0, 0}, {1, 1}});
    EXPECT_EQ(2U, sequence.find(bytesOf, 0).getOrdinal());
    EXPECT_EQ(4U, sequence.find(bytesOf, 4).getOrdinal());
    EXPECT_EQ(4U, sequence.find(charactersOf, 0).getOrdinal());
}

TEST(SummedSequence, FindsTheEndForATargetBehindAll)
{
    for (const std::size_t size : {std::size_t{1}, fanout, fanout * fanout + 1})
    {
        const std::vector<Stretch> items = makeItems(size);
        const Sequence sequence(items);
        const Summary total = sumOfFirst(items, size);
        for (const unsigned long target : {total._bytes, total._bytes + 1, ~0UL})
        {
            const Sequence::Place place = sequence.find(bytesOf, target);
            EXPECT_EQ(size, place.getOrdinal());
            EXPECT_EQ(total, place.getBefore());
        }
    }
}

TEST(SummedSequence, AgreesWithAVectorAtAllSizesAroundTheFanout)
{
    for (const std::size_t size : {std::size_t{1}, std::size_t{2}, fanout - 1, fanout, fanout + 1, 2 * fanout,
                                   2 * fanout + 1, fanout * fanout - 1, fanout * fanout, fanout * fanout + 1})
    {
        const std::vector<Stretch> items = makeItems(size);
        const Sequence built(items);
        expectSame(items, built);

        Sequence appended;
        Sequence prepended;
        for (std::size_t i = 0; i < size; ++i)
        {
            appended.append(items[i]);
            prepended.insert(0, items[size - 1 - i]);
        }
        expectSame(items, appended);
        expectSame(items, prepended);
        EXPECT_EQ(built, appended);
        EXPECT_EQ(appended, prepended);
    }
}

TEST(SummedSequence, GivesEveryItemWithTheSumBeforeIt)
{
    const std::vector<Stretch> items = makeItems(3 * fanout * fanout);
    const Sequence sequence(items);
    Summary before;
    for (std::size_t ordinal = 0; ordinal < items.size(); ++ordinal)
    {
        const Sequence::Place place = sequence.getPlace(ordinal);
        ASSERT_EQ(ordinal, place.getOrdinal());
        ASSERT_EQ(before, place.getBefore());
        ASSERT_EQ(items[ordinal], sequence.get(ordinal));
        before += items[ordinal].getSummary();
    }
    EXPECT_EQ(before, sequence.getPlace(items.size()).getBefore());
}

TEST(SummedSequence, WalksFromPlaceToPlaceInBothDirections)
{
    const std::vector<Stretch> items = makeItems(3 * fanout * fanout);
    const Sequence sequence(items);
    Sequence::Place place = sequence.getPlace(0);
    for (std::size_t ordinal = 0; ordinal < items.size(); ++ordinal)
    {
        ASSERT_EQ(items[ordinal], sequence.get(place));
        place = sequence.getNext(place);
        ASSERT_EQ(ordinal + 1, place.getOrdinal());
    }
    EXPECT_EQ(sequence.getTotal(), place.getBefore());
    for (std::size_t ordinal = items.size(); ordinal > 0; --ordinal)
    {
        place = sequence.getPrevious(place);
        ASSERT_EQ(ordinal - 1, place.getOrdinal());
        ASSERT_EQ(items[ordinal - 1], sequence.get(place));
    }
    EXPECT_EQ(Summary{}, place.getBefore());
}

TEST(SummedSequence, ErasesDownToNothingFromBothEndsAndTheMiddle)
{
    const std::vector<Stretch> items = makeItems(fanout * fanout + fanout);
    for (const std::size_t numerator : {0U, 1U, 2U})
    {
        std::vector<Stretch> expected = items;
        Sequence sequence(items);
        while (!expected.empty())
        {
            const std::size_t ordinal = (expected.size() - 1) * numerator / 2;
            expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(ordinal));
            sequence.erase(ordinal);
            if (expected.size() % 29 == 0 || expected.size() < 3)
            {
                expectSame(expected, sequence);
            }
        }
        EXPECT_EQ(0U, sequence.getMemoryUsage());
    }
}

TEST(SummedSequence, UpdatesAnItemAndAllSumsAboveIt)
{
    std::vector<Stretch> items = makeItems(fanout * fanout);
    Sequence sequence(items);
    for (std::size_t ordinal = 0; ordinal < items.size(); ordinal += 5)
    {
        items[ordinal] = {1000, 1};
        const Sequence::Place place = sequence.getPlace(ordinal);
        sequence.update(place, {2000, 2});
        sequence.update(place, {1000, 1});
    }
    expectSame(items, sequence);
}

TEST(SummedSequence, InsertsAndErasesManyAtOnceAsOneByOne)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, fanout, 40 * fanout})
    {
        for (const std::size_t count : {std::size_t{0}, std::size_t{1}, fanout, 40 * fanout})
        {
            for (const std::size_t ordinal : {std::size_t{0}, size / 2, size})
            {
                std::vector<Stretch> expected = makeItems(size);
                const std::vector<Stretch> inserted(count, Stretch{5, 2});
                Sequence sequence(expected);
                const Sequence before = sequence;
                const auto at = static_cast<std::ptrdiff_t>(ordinal);
                expected.insert(expected.begin() + at, inserted.begin(), inserted.end());
                sequence.insert(ordinal, inserted);
                expectSame(expected, sequence);

                sequence.erase(ordinal, count);
                sequence.checkInvariants();
                EXPECT_EQ(before, sequence);
            }
        }
    }
}

TEST(SummedSequence, VisitsFromAnyItemAndStopsWhenTold)
{
    const std::vector<Stretch> items = makeItems(5 * fanout);
    const Sequence sequence(items);
    for (const std::size_t begin : {std::size_t{0}, fanout, 3 * fanout + 1, items.size()})
    {
        for (const std::size_t wanted : {std::size_t{1}, fanout, items.size()})
        {
            std::vector<Stretch> visited;
            sequence.forEach(begin,
                             [&](const Stretch& item)
                             {
                                 visited.push_back(item);
                                 return visited.size() < wanted;
                             });
            const std::size_t count = std::min(wanted, items.size() - begin);
            const auto first = items.begin() + static_cast<std::ptrdiff_t>(begin);
            EXPECT_EQ(std::vector<Stretch>(first, first + static_cast<std::ptrdiff_t>(count)), visited);
        }
    }
}

TEST(SummedSequence, CopiesAreIndependentAndMovedFromIsEmpty)
{
    const std::vector<Stretch> items = makeItems(3 * fanout);
    Sequence original(items);
    Sequence copy = original;
    copy.update(7, {99, 9});
    copy.erase(0);
    expectSame(items, original);
    EXPECT_NE(original, copy);

    const Sequence moved = std::move(original);
    expectSame(items, moved);
    expectSame({}, original);
    original = moved;
    EXPECT_EQ(moved, original);
    copy = Sequence();
    expectSame({}, copy);
}

TEST(SummedSequence, ComparesItemsNotTrees)
{
    const std::vector<Stretch> items = makeItems(10 * fanout);
    const Sequence packed(items);
    Sequence ragged;
    for (const Stretch& item : items)
    {
        ragged.append(item);
    }
    EXPECT_EQ(packed, ragged);

    ragged.update(3, items[4]);
    ragged.update(4, items[3]);
    ASSERT_EQ(packed.getTotal(), ragged.getTotal());
    EXPECT_NE(packed, ragged);
    EXPECT_NE(packed, Sequence());
    EXPECT_NE(Sequence(), packed);
}

TEST(SummedSequence, InsertsAnItemOfItsOwn)
{
    Sequence sequence(makeItems(fanout));
    for (std::size_t i = 0; i < 3 * fanout; ++i)
    {
        const Stretch expected = sequence.get(5);
        sequence.insert(5, sequence.get(5));
        EXPECT_EQ(expected, sequence.get(5));
        EXPECT_EQ(expected, sequence.get(6));
    }
    sequence.checkInvariants();
}

TEST(SummedSequence, AssertsOrdinalsBehindTheEnd)
{
    Sequence sequence(makeItems(3));
    EXPECT_ASSERTION(sequence.get(3), "ordinal < size()");
    EXPECT_ASSERTION(sequence.get(sequence.getPlace(3)), "place.getOrdinal() < size()");
    EXPECT_ASSERTION(sequence.getPlace(4), "ordinal <= size()");
    EXPECT_ASSERTION(sequence.getNext(sequence.getPlace(3)), "place.getOrdinal() < size()");
    EXPECT_ASSERTION(sequence.getPrevious(sequence.getPlace(0)), "place.getOrdinal() > 0");
    EXPECT_ASSERTION(sequence.insert(4, Stretch{}), "ordinal <= size()");
    EXPECT_ASSERTION(sequence.insert(4, std::vector<Stretch>(2)), "ordinal <= size()");
    EXPECT_ASSERTION(sequence.erase(3), "ordinal < size()");
    EXPECT_ASSERTION(sequence.erase(sequence.getPlace(3)), "place.getOrdinal() < size()");
    EXPECT_ASSERTION(sequence.erase(1, 3), "ordinal <= size() && count <= size() - ordinal");
    EXPECT_ASSERTION(sequence.update(3, Stretch{}), "ordinal < size()");
    EXPECT_ASSERTION(sequence.update(sequence.getPlace(3), Stretch{}), "place.getOrdinal() < size()");
    EXPECT_ASSERTION(Sequence().get(0), "ordinal < size()");
    expectSame(makeItems(3), sequence);
}

TEST(SummedSequence, AgreesWithAVectorThroughRandomOperations)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    const auto makeItem = [&] {
        return Stretch{static_cast<unsigned>(random() % 5), static_cast<unsigned>(random() % 3)};
    };
    for (const std::size_t size : {std::size_t{0}, 30 * fanout * fanout})
    {
        std::vector<Stretch> expected = makeItems(size);
        Sequence sequence(expected);
        for (unsigned step = 0; step < 60000 && !testing::Test::HasFailure(); ++step)
        {
            // Phases of growth and of shrinking, so that nodes split and join at every height.
            const bool grows = step / 6000 % 2 == 0;
            const std::size_t ordinal = random() % (expected.size() + 1);
            const auto at = expected.begin() + static_cast<std::ptrdiff_t>(ordinal);
            const auto choice = static_cast<unsigned>(random() % 8);
            if (choice < (grows ? 4U : 2U))
            {
                const Stretch item = makeItem();
                expected.insert(at, item);
                sequence.insert(ordinal, item);
            }
            else if (choice < 6 && ordinal < expected.size())
            {
                expected.erase(at);
                sequence.erase(ordinal);
            }
            else if (ordinal < expected.size())
            {
                *at = makeItem();
                sequence.update(ordinal, *at);
            }
            if (step % 500 == 0)
            {
                expectSame(expected, sequence);
                const unsigned long bytes = random() % (sequence.getTotal()._bytes + 2);
                const Sequence::Place place = sequence.find(bytesOf, bytes);
                EXPECT_EQ(findByWalking(expected, bytesOf, bytes), place.getOrdinal());
                EXPECT_EQ(sumOfFirst(expected, place.getOrdinal()), place.getBefore());
            }
        }
        expectSame(expected, sequence);
    }
}

TEST(SummedSequence, ShrinksFromAGreatHeight)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    std::vector<Stretch> expected = makeItems(fanout * fanout * fanout);
    Sequence sequence(expected);
    while (!expected.empty())
    {
        const std::size_t ordinal = random() % expected.size();
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(ordinal));
        sequence.erase(ordinal);
        if (expected.size() % 4096 == 0)
        {
            expectSame(expected, sequence);
        }
    }
}

TEST(SummedSequence, HoldsAHundredThousandItems)
{
    constexpr std::size_t size = 100000;
    const std::vector<Stretch> items(size, Stretch{3, 1});
    Sequence sequence(items);
    sequence.checkInvariants();
    EXPECT_LT(sequence.getMemoryUsage(), size * sizeof(Stretch) * 3);
    for (const std::size_t ordinal : {std::size_t{0}, size / 3, size - 1})
    {
        const Sequence::Place place = sequence.find(charactersOf, ordinal);
        EXPECT_EQ(ordinal, place.getOrdinal());
        EXPECT_EQ(3 * ordinal, place.getBefore()._bytes);
    }
    for (std::size_t i = 0; i < size / 2; ++i)
    {
        sequence.erase(i);
    }
    sequence.checkInvariants();
    EXPECT_EQ(size / 2, sequence.size());
}

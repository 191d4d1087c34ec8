#include "DOM_TombstonesWithIDsStorage.h"

#include "TS_Assertions.h"

#include "Util_BaseRuntimeError.h"
#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <random>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

using Place = TombstonesWithIDsStorage::Place;
using LiveIndex = TombstonesWithIDsStorage::LiveIndex;
using Run = TombstonesWithIDsStorage::Run;
using Runs = std::vector<Run>;

constexpr unsigned long firstFreshID = TombstonesWithIDsStorage::firstFreshID;

/// The same, place by place.
struct NaiveStorage
{
    struct Element
    {
        unsigned long _id;
        bool _isLive;
    };

    unsigned long countLive(unsigned long end) const
    {
        return static_cast<unsigned long>(std::count_if(_places.begin(), _places.begin() + static_cast<long>(end),
                                                        [](const Element& place) { return place._isLive; }));
    }

    unsigned long countLive() const
    {
        return countLive(_places.size());
    }

    bool hasID(unsigned long id) const
    {
        return std::any_of(_places.begin(), _places.end(), [&](const Element& place) { return place._id == id; });
    }

    std::vector<Element> _places;
};

NaiveStorage makeNaive(unsigned long count)
{
    NaiveStorage naive;
    for (unsigned long id = 0; id < count; ++id)
    {
        naive._places.push_back({id, true});
    }
    return naive;
}

void expectPlacesEqual(const TombstonesWithIDsStorage& storage, const NaiveStorage& naive)
{
    unsigned long live = 0;
    for (unsigned long place = 0; place < naive._places.size(); ++place)
    {
        const auto [id, isLive] = naive._places[place];
        EXPECT_EQ(id, storage.getID(Place(place)));
        EXPECT_EQ(Place(place), storage.findID(id));
        EXPECT_EQ(LiveIndex(live), storage.getIndexToInsertTo(Place(place)));
        EXPECT_EQ(isLive, storage.convertIndex(Place(place)).has_value());
        if (isLive)
        {
            EXPECT_EQ(LiveIndex(live), storage.convertIndex(Place(place)));
            EXPECT_EQ(Place(place), storage.convertIndex(LiveIndex(live)));
            EXPECT_EQ(LiveIndex(live), storage.getLiveIndex(id));
            ++live;
        }
    }
}

void expectEqual(const TombstonesWithIDsStorage& storage, const NaiveStorage& naive)
{
    EXPECT_EQ(std::vector<std::string>(), storage.checkInvariants());
    ASSERT_EQ(Place(naive._places.size()), storage.getAllCount());
    ASSERT_EQ(LiveIndex(naive.countLive()), storage.getLiveCount());
    expectPlacesEqual(storage, naive);
    EXPECT_EQ(storage.getRunsCount(), storage.getRuns().size());
    EXPECT_TRUE(TombstonesWithIDsStorage(storage.getRuns()) == storage);
}

/// Does the same random change to both.
class RandomChange
{
public:
    explicit RandomChange(std::mt19937_64& random)
        : _random(random)
    {
    }

    void operator()(TombstonesWithIDsStorage& storage, NaiveStorage& naive)
    {
        const unsigned long count = naive._places.size();
        const unsigned long place = choose(count + 1);
        const auto element = naive._places.begin() + static_cast<long>(place);
        const unsigned long kind = choose(3);
        if (place == count || kind == 0)
        {
            const unsigned long id = chooseFreeID(naive);
            EXPECT_EQ(LiveIndex(naive.countLive(place)), storage.insertElement(Place(place), id));
            naive._places.insert(element, {id, true});
        }
        else if (!element->_isLive)
        {
            EXPECT_EQ(LiveIndex(naive.countLive(place)), storage.restoreElement(Place(place)));
            element->_isLive = true;
        }
        else if (kind == 1)
        {
            EXPECT_EQ(LiveIndex(naive.countLive(place)), storage.replaceWithTombstone(Place(place)));
            element->_isLive = false;
        }
        else
        {
            EXPECT_EQ(LiveIndex(naive.countLive(place)), storage.removeElement(Place(place)));
            naive._places.erase(element);
        }
    }

private:
    unsigned long choose(unsigned long bound)
    {
        return _random() % bound;
    }

    /// Small ids, so that runs grow together now and then.
    unsigned long chooseFreeID(const NaiveStorage& naive)
    {
        unsigned long id = choose(200);
        while (naive.hasID(id))
        {
            id = choose(200);
        }
        return id;
    }

    std::mt19937_64& _random;
};

} // namespace

TEST(TombstonesWithIDsStorage, GivesIDsFromZeroOn)
{
    const TombstonesWithIDsStorage storage(5);
    EXPECT_EQ((Runs{{0, 5, true}}), storage.getRuns());
    EXPECT_EQ(3u, storage.getID(Place(3)));
}

TEST(TombstonesWithIDsStorage, CountsOnBehindTheLastPlace)
{
    TombstonesWithIDsStorage storage(4);
    storage.replaceWithTombstone(Place(3));
    EXPECT_EQ(LiveIndex(3), storage.convertIndex(Place(4)));
    EXPECT_EQ(LiveIndex(5), storage.convertIndex(Place(6)));
    EXPECT_EQ(LiveIndex(5), storage.getIndexToInsertTo(Place(6)));
    EXPECT_EQ(Place(4), storage.convertIndex(LiveIndex(3)));
    EXPECT_EQ(Place(6), storage.convertIndex(LiveIndex(5)));
}

TEST(TombstonesWithIDsStorage, InsertsAtATombstoneInFrontOfTheNextLivePlace)
{
    TombstonesWithIDsStorage storage(4);
    storage.replaceWithTombstone(Place(1));
    storage.replaceWithTombstone(Place(2));
    EXPECT_EQ(LiveIndex(1), storage.getIndexToInsertTo(Place(1)));
    EXPECT_EQ(LiveIndex(1), storage.getIndexToInsertTo(Place(2)));
    EXPECT_FALSE(storage.convertIndex(Place(2)));
    EXPECT_EQ(LiveIndex(1), storage.insertElement(Place(2), 77));
    EXPECT_EQ((Runs{{0, 1, true}, {1, 1, false}, {77, 1, true}, {2, 1, false}, {3, 1, true}}), storage.getRuns());
}

TEST(TombstonesWithIDsStorage, ForgetsWhereItWasCutOnceAllIsAsBefore)
{
    TombstonesWithIDsStorage storage(100);
    const TombstonesWithIDsStorage before = storage;
    storage.replaceWithTombstone(Place(40));
    storage.replaceWithTombstone(Place(42));
    storage.insertElement(Place(60), 1000);
    EXPECT_FALSE(storage == before);
    storage.removeElement(Place(60));
    storage.restoreElement(Place(42));
    storage.restoreElement(Place(40));
    EXPECT_TRUE(storage == before);
    EXPECT_EQ(1u, storage.getRunsCount());
}

TEST(TombstonesWithIDsStorage, FindsTheHighestIDs)
{
    TombstonesWithIDsStorage storage;
    const unsigned long highest = ~0UL;
    storage.insertElement(Place(0), highest);
    storage.insertElement(Place(1), 0);
    storage.insertElement(Place(0), highest - 1);
    EXPECT_EQ((Runs{{highest - 1, 2, true}, {0, 1, true}}), storage.getRuns());
    EXPECT_EQ(Place(1), storage.findID(highest));
    EXPECT_EQ(Place(2), storage.findID(0));
    EXPECT_FALSE(storage.findID(1));
    EXPECT_EQ(std::vector<std::string>(), storage.checkInvariants());
}

TEST(TombstonesWithIDsStorage, DoesAsANaiveOneDoes)
{
    for (unsigned seed = 1; seed <= 30; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 random(seed);
        TombstonesWithIDsStorage storage(10);
        NaiveStorage naive = makeNaive(10);
        RandomChange change(random);
        for (int step = 0; step < 150; ++step)
        {
            change(storage, naive);
            expectEqual(storage, naive);
            if (HasFailure())
            {
                return;
            }
        }
    }
}

TEST(TombstonesWithIDsStorage, StaysBalancedWithManyRuns)
{
    std::mt19937_64 random(5);
    TombstonesWithIDsStorage storage(200000);
    for (unsigned long place = 0; place < 200000; place += 2)
    {
        storage.replaceWithTombstone(Place(place));
    }
    EXPECT_EQ(200000u, storage.getRunsCount());
    for (int step = 0; step < 200000; ++step)
    {
        const unsigned long id = random() % 200000;
        ASSERT_EQ(Place(id), storage.findID(id));
    }
    EXPECT_EQ(std::vector<std::string>(), storage.checkInvariants());
}

TEST(TombstonesWithIDsStorage, CopiesAreIndependent)
{
    TombstonesWithIDsStorage storage(10);
    storage.replaceWithTombstone(Place(5));
    TombstonesWithIDsStorage copy = storage;
    copy.insertElement(Place(3), 500);
    EXPECT_EQ(Place(10), storage.getAllCount());
    EXPECT_FALSE(storage.findID(500));
    EXPECT_EQ(Place(3), copy.findID(500));
    EXPECT_FALSE(storage == copy);
}

TEST(TombstonesWithIDsStorage, IsUnequalByIDsAndByTombstones)
{
    EXPECT_FALSE(TombstonesWithIDsStorage(Runs{{0, 3, true}}) == TombstonesWithIDsStorage(Runs{{1, 3, true}}));
    EXPECT_FALSE(TombstonesWithIDsStorage(Runs{{0, 3, true}}) == TombstonesWithIDsStorage(Runs{{0, 3, false}}));
    EXPECT_FALSE(TombstonesWithIDsStorage(3) == TombstonesWithIDsStorage(4));
}

TEST(TombstonesWithIDsStorage, GrowsAndShrinksBackToTheSame)
{
    TombstonesWithIDsStorage storage(5);
    storage.replaceWithTombstone(Place(4));
    const TombstonesWithIDsStorage before = storage;
    storage.grow(10);
    EXPECT_EQ((Runs{{0, 4, true}, {4, 1, false}, {5, 6, true}}), storage.getRuns());
    const TombstonesWithIDsStorage grown = storage;
    storage.shrink(4);
    EXPECT_TRUE(storage == before);
    storage.grow(10);
    EXPECT_TRUE(storage == grown);
}

TEST(TombstonesWithIDsStorage, StopsShrinkingAtWhatGrowingWouldNotBringBack)
{
    TombstonesWithIDsStorage withTombstone(5);
    withTombstone.replaceWithTombstone(Place(3));
    withTombstone.shrink(0);
    EXPECT_EQ((Runs{{0, 3, true}, {3, 1, false}}), withTombstone.getRuns());

    TombstonesWithIDsStorage withInserted(5);
    withInserted.insertElement(Place(3), firstFreshID + 7);
    withInserted.shrink(0);
    EXPECT_EQ((Runs{{0, 3, true}, {firstFreshID + 7, 1, true}}), withInserted.getRuns());

    TombstonesWithIDsStorage withGap(Runs{{0, 5, true}, {100, 3, true}});
    withGap.shrink(0);
    EXPECT_EQ((Runs{{0, 5, true}, {100, 1, true}}), withGap.getRuns());

    TombstonesWithIDsStorage outOfOrder(Runs{{3, 3, true}, {0, 3, true}});
    outOfOrder.shrink(0);
    EXPECT_EQ(LiveIndex(6), outOfOrder.getLiveCount());

    TombstonesWithIDsStorage plain(5);
    plain.shrink(0);
    EXPECT_EQ(Place(0), plain.getAllCount());
}

TEST(TombstonesWithIDsStorage, AlwaysRegrowsWhatItShrank)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 random(seed);
        TombstonesWithIDsStorage storage(10);
        NaiveStorage naive = makeNaive(10);
        RandomChange change(random);
        for (int step = 0; step < 20; ++step)
        {
            change(storage, naive);
        }
        storage.grow(naive.countLive() + random() % 5);
        const TombstonesWithIDsStorage before = storage;
        storage.shrink(random() % (before.getLiveCount().get() + 1));
        EXPECT_EQ(std::vector<std::string>(), storage.checkInvariants());
        storage.grow(before.getLiveCount().get());
        EXPECT_TRUE(storage == before);
    }
}

TEST(TombstonesWithIDsStorage, GrowsAsFarAsThereAreIDsAndRoom)
{
    TombstonesWithIDsStorage fewIDs(Runs{{firstFreshID - 3, 1, true}});
    fewIDs.grow(10);
    EXPECT_EQ((Runs{{firstFreshID - 3, 3, true}}), fewIDs.getRuns());
    TombstonesWithIDsStorage big(TombstonesWithIDsStorage::maximalCount - 1);
    big.grow(TombstonesWithIDsStorage::maximalCount + 5);
    EXPECT_EQ(TombstonesWithIDsStorage::maximalCount, big.getAllCount().get());
    EXPECT_ASSERTION(big.insertElement(Place(0), firstFreshID), "getAllCount().get() < maximalCount");
}

TEST(TombstonesWithIDsStorage, DrawsFreshIDsFromTheUpperHalf)
{
    TombstonesWithIDsStorage storage(5);
    for (unsigned long place = 0; place < 100; ++place)
    {
        const unsigned long id = storage.makeFreshID();
        EXPECT_GE(id, firstFreshID);
        EXPECT_FALSE(storage.findID(id));
        storage.insertElement(Place(place), id);
    }
    storage.grow(110);
    EXPECT_EQ(9u, storage.getID(Place(109)));
}

TEST(TombstonesWithIDsStorage, HoldsAFreshSheetInBytes)
{
    const TombstonesWithIDsStorage rows(1048576);
    EXPECT_EQ(1u, rows.getRunsCount());
    EXPECT_LT(rows.getMemoryUsage(), 512u);
}

TEST(TombstonesWithIDsStorage, AssertsItsRequirements)
{
    TombstonesWithIDsStorage storage(3);
    storage.replaceWithTombstone(Place(1));
    const TombstonesWithIDsStorage before = storage;
    EXPECT_ASSERTION(storage.getID(Place(3)), "place < getAllCount()");
    EXPECT_ASSERTION(storage.getLiveIndex(1), "opt");
    EXPECT_ASSERTION(storage.getLiveIndex(9), "opt");
    EXPECT_ASSERTION(storage.insertElement(Place(4), 9), "place <= getAllCount()");
    EXPECT_ASSERTION(storage.insertElement(Place(0), 1), "!findID(id)");
    EXPECT_ASSERTION(storage.removeElement(Place(1)), "isLive(place)");
    EXPECT_ASSERTION(storage.removeElement(Place(3)), "isLive(place)");
    EXPECT_ASSERTION(storage.replaceWithTombstone(Place(1)), "isLive(place)");
    EXPECT_ASSERTION(storage.restoreElement(Place(0)), "isTombstone(place)");
    EXPECT_ASSERTION(storage.restoreElement(Place(3)), "isTombstone(place)");
    EXPECT_ASSERTION(TombstonesWithIDsStorage(TombstonesWithIDsStorage::maximalCount + 1), "count <= maximalCount");
    EXPECT_TRUE(storage == before);
}

TEST(TombstonesWithIDsStorage, RefusesRunsThatBreakItsRules)
{
    const unsigned long highest = ~0UL;
    for (const Runs& runs :
         {Runs{{0, 0, true}}, Runs{{0, 3, true}, {2, 3, false}}, Runs{{5, 3, true}, {0, 100, true}},
          Runs{{highest, 2, true}}, Runs{{0, TombstonesWithIDsStorage::maximalCount + 1, true}},
          Runs{{0, TombstonesWithIDsStorage::maximalCount, true}, {TombstonesWithIDsStorage::maximalCount, 1, true}}})
    {
        EXPECT_THROW(TombstonesWithIDsStorage{runs}, BaseRuntimeError) << runs.front()._firstID;
    }
    EXPECT_EQ((Runs{{0, 5, true}}), TombstonesWithIDsStorage(Runs{{0, 2, true}, {2, 3, true}}).getRuns());
}

TEST(TombstonesWithIDsStorage, TravelsAsRuns)
{
    TombstonesWithIDsStorage storage(1048576);
    storage.replaceWithTombstone(Place(7));
    const std::string text = toJson(storage);
    EXPECT_EQ(R"({"_runs":[{"_firstID":0,"_count":7,"_isLive":true},{"_firstID":7,"_count":1,"_isLive":false},)"
              R"({"_firstID":8,"_count":1048568,"_isLive":true}]})",
              text);
    EXPECT_TRUE(fromJson<TombstonesWithIDsStorage>(text) == storage);
    const auto huge =
        fromJson<TombstonesWithIDsStorage>(R"({"_runs":[{"_firstID":0,"_count":1152921504606846976,"_isLive":true}]})");
    EXPECT_EQ(1UL << 60, huge.getLiveCount().get());
    EXPECT_LT(huge.getMemoryUsage(), 512u);
    EXPECT_THROW(fromJson<TombstonesWithIDsStorage>(R"({"_runs":[{"_firstID":0,"_count":0,"_isLive":true}]})"),
                 BaseRuntimeError);
}

namespace
{

/// A well-known mixing of a number's bits.
std::uint64_t mixBits(std::uint64_t number)
{
    std::uint64_t mixed = (number + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
}

/// Where each of `count` lines is inserted so that, in the end, they stand in the order of `getRank`.
template<class GetRank>
std::vector<unsigned long> makePlaces(unsigned long count, GetRank getRank)
{
    std::vector<unsigned long> places;
    std::vector<std::uint64_t> ranks;
    for (unsigned long index = 0; index < count; ++index)
    {
        const std::uint64_t rank = getRank(index);
        const auto position = std::lower_bound(ranks.begin(), ranks.end(), rank);
        places.push_back(static_cast<unsigned long>(position - ranks.begin()));
        ranks.insert(position, rank);
    }
    return places;
}

/// How long it takes to insert lines at these places, and to look each of them up.
std::clock_t measureInsertions(const std::vector<unsigned long>& places)
{
    const std::clock_t begin = std::clock();
    TombstonesWithIDsStorage storage;
    for (unsigned long index = 0; index < places.size(); ++index)
    {
        storage.insertElement(Place(places[index]), 2 * index);
    }
    for (unsigned long index = 0; index < places.size(); ++index)
    {
        EXPECT_LT(storage.getLiveIndex(2 * index), storage.getLiveCount());
    }
    EXPECT_TRUE(storage.checkInvariants().empty());
    return std::clock() - begin;
}

} // namespace

TEST(TombstonesWithIDsStorage, PlacesThatWereChosenByTheOrderOfTheNodesCostNoMoreThanOthers)
{
    constexpr unsigned long count = 12000;
    std::mt19937_64 random(1);
    const std::clock_t ordinary = measureInsertions(makePlaces(count, [&](unsigned long) { return random(); }));
    const std::clock_t limit = 10 * ordinary + CLOCKS_PER_SEC / 10;
    EXPECT_LT(measureInsertions(makePlaces(count, mixBits)), limit);
    EXPECT_LT(measureInsertions(makePlaces(count, [](unsigned long index) { return ~mixBits(index); })), limit);
}

} // namespace Zem::DOM::Tests

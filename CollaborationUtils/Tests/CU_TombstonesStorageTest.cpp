#include "CU_TombstonesStorage.h"

#include "Util_Cast.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

using namespace Zem;
using namespace Zem::CollaborationUtils;

namespace
{

using Place = TombstonesStorage::Place;
using LiveIndex = TombstonesStorage::LiveIndex;
using PlacesRange = TombstonesStorage::PlacesRange;

PlacesRange range(unsigned long begin, unsigned long end)
{
    return {Place{begin}, Place{end}};
}

/// A storage drawn as its places: a letter is live, a dot is dead.
TombstonesStorage draw(const std::string& places)
{
    std::vector<PlacesRange> ranges;
    for (unsigned long i = 0; i < places.size(); ++i)
    {
        if (places[i] == '.')
        {
            ranges.push_back(range(i, i + 1));
        }
    }
    return TombstonesStorage(ranges);
}

void expectDrawn(const std::string& places, const TombstonesStorage& storage)
{
    storage.checkInvariants();
    EXPECT_EQ(draw(places), storage);
}

} // namespace

TEST(TombstonesStorage, WithoutTombstonesBothIndicesAreOne)
{
    const TombstonesStorage storage;
    EXPECT_EQ(LiveIndex{5}, storage.convertIndex(Place{5}));
    EXPECT_EQ(Place{5}, storage.convertIndex(LiveIndex{5}));
    EXPECT_EQ(LiveIndex{5}, storage.getIndexToInsertTo(Place{5}));
    EXPECT_EQ(0U, storage.getTombstonesCount());
    EXPECT_EQ(0U, storage.getMemoryUsage());
    EXPECT_EQ(sizeof(void*), sizeof(TombstonesStorage));
}

TEST(TombstonesStorage, ConvertsPlacesToLiveIndices)
{
    const TombstonesStorage storage = draw("ab..c.def");
    EXPECT_EQ(LiveIndex{0}, storage.convertIndex(Place{0}));
    EXPECT_EQ(LiveIndex{1}, storage.convertIndex(Place{1}));
    EXPECT_EQ(LiveIndex{2}, storage.convertIndex(Place{4}));
    EXPECT_EQ(LiveIndex{3}, storage.convertIndex(Place{6}));
    EXPECT_EQ(LiveIndex{97}, storage.convertIndex(Place{100}));
}

TEST(TombstonesStorage, ConvertsATombstoneToNothing)
{
    const TombstonesStorage storage = draw("ab..c.def");
    EXPECT_EQ(std::nullopt, storage.convertIndex(Place{2}));
    EXPECT_EQ(std::nullopt, storage.convertIndex(Place{3}));
    EXPECT_EQ(std::nullopt, storage.convertIndex(Place{5}));
}

TEST(TombstonesStorage, ConvertsLiveIndicesToPlacesAndTheLiveCountToThePlaceBehindAll)
{
    const TombstonesStorage storage = draw("ab..c.");
    EXPECT_EQ(Place{0}, storage.convertIndex(LiveIndex{0}));
    EXPECT_EQ(Place{1}, storage.convertIndex(LiveIndex{1}));
    EXPECT_EQ(Place{4}, storage.convertIndex(LiveIndex{2}));
    EXPECT_EQ(Place{6}, storage.convertIndex(LiveIndex{3}));
    EXPECT_EQ(Place{2}, draw("..").convertIndex(LiveIndex{0}));
}

TEST(TombstonesStorage, InsertsAtATombstoneInFrontOfTheNextLiveElement)
{
    const TombstonesStorage storage = draw("ab..c.def");
    EXPECT_EQ(LiveIndex{1}, storage.getIndexToInsertTo(Place{1}));
    EXPECT_EQ(LiveIndex{2}, storage.getIndexToInsertTo(Place{2}));
    EXPECT_EQ(LiveIndex{2}, storage.getIndexToInsertTo(Place{3}));
    EXPECT_EQ(LiveIndex{2}, storage.getIndexToInsertTo(Place{4}));
    EXPECT_EQ(LiveIndex{3}, storage.getIndexToInsertTo(Place{5}));
    EXPECT_EQ(LiveIndex{3}, storage.getIndexToInsertTo(Place{6}));
}

TEST(TombstonesStorage, AnInsertionInsideADeadRangeSplitsIt)
{
    TombstonesStorage storage = draw("a...b");
    EXPECT_EQ(LiveIndex{1}, storage.insertElement(Place{2}));
    expectDrawn("a.x..b", storage);
    EXPECT_EQ(2U, storage.getRangesCount());
}

TEST(TombstonesStorage, AnInsertionAtADeadRangesFirstPlaceStandsInFrontOfIt)
{
    TombstonesStorage storage = draw("a..b");
    EXPECT_EQ(LiveIndex{1}, storage.insertElement(Place{1}));
    expectDrawn("ax..b", storage);
}

TEST(TombstonesStorage, AnInsertionDirectlyBehindADeadRangeStandsBehindIt)
{
    TombstonesStorage storage = draw("a..b.");
    EXPECT_EQ(LiveIndex{1}, storage.insertElement(Place{3}));
    expectDrawn("a..xb.", storage);
}

TEST(TombstonesStorage, AnInsertionBehindAllTombstonesIsNotStored)
{
    TombstonesStorage storage = draw("a.");
    EXPECT_EQ(LiveIndex{1}, storage.insertElement(Place{2}));
    EXPECT_EQ(LiveIndex{7}, storage.insertElement(Place{8}));
    expectDrawn("a.", storage);
}

TEST(TombstonesStorage, RemovingALivePlaceClosesTheGap)
{
    TombstonesStorage storage = draw("ab.c.d.");
    EXPECT_EQ(LiveIndex{0}, storage.removeElement(Place{0}));
    expectDrawn("b.c.d.", storage);
    EXPECT_EQ(LiveIndex{1}, storage.removeElement(Place{2}));
    expectDrawn("b..d.", storage);
    EXPECT_EQ(LiveIndex{7}, storage.removeElement(Place{10}));
    expectDrawn("b..d.", storage);
    EXPECT_EQ(2U, storage.getRangesCount());
}

TEST(TombstonesStorage, MarkingKeepsPlacesAndJoinsNeighbours)
{
    TombstonesStorage storage;
    EXPECT_EQ(LiveIndex{2}, storage.replaceWithTombstone(Place{2}));
    EXPECT_EQ(LiveIndex{3}, storage.replaceWithTombstone(Place{4}));
    expectDrawn("ab.c.", storage);
    EXPECT_EQ(LiveIndex{2}, storage.replaceWithTombstone(Place{3}));
    expectDrawn("ab...", storage);
    EXPECT_EQ(1U, storage.getRangesCount());
    EXPECT_EQ(LiveIndex{2}, storage.replaceWithTombstone(Place{5}));
    expectDrawn("ab....", storage);
    EXPECT_EQ(LiveIndex{0}, storage.replaceWithTombstone(Place{0}));
    expectDrawn(".a....", storage);
}

TEST(TombstonesStorage, RestoringSplitsADeadRange)
{
    TombstonesStorage storage = draw("a...b.");
    EXPECT_EQ(LiveIndex{1}, storage.restoreElement(Place{2}));
    expectDrawn("a.x.b.", storage);
    EXPECT_EQ(LiveIndex{1}, storage.restoreElement(Place{1}));
    EXPECT_EQ(LiveIndex{3}, storage.restoreElement(Place{3}));
    expectDrawn("axxxb.", storage);
    EXPECT_EQ(LiveIndex{5}, storage.restoreElement(Place{5}));
    EXPECT_EQ(TombstonesStorage(), storage);
    EXPECT_EQ(0U, storage.getMemoryUsage());
}

TEST(TombstonesStorage, OnlyALivePlaceCanBeRemovedOrMarked)
{
    TombstonesStorage storage = draw("a.b");
    EXPECT_ASSERTION(storage.removeElement(Place{1}), "opt");
    EXPECT_ASSERTION(storage.replaceWithTombstone(Place{1}), "opt");
    expectDrawn("a.b", storage);
}

TEST(TombstonesStorage, OnlyATombstoneCanBeRestored)
{
    TombstonesStorage storage = draw("a.b.");
    EXPECT_ASSERTION(storage.restoreElement(Place{0}), "opt");
    EXPECT_ASSERTION(storage.restoreElement(Place{2}), "opt");
    EXPECT_ASSERTION(storage.restoreElement(Place{4}), "opt");
    EXPECT_ASSERTION(TombstonesStorage().restoreElement(Place{0}), "opt");
    expectDrawn("a.b.", storage);
}

TEST(TombstonesStorage, AStretchMustBeOfOneKindFromEndToEnd)
{
    TombstonesStorage storage = draw("ab..c.");
    EXPECT_ASSERTION(storage.removeElements(Place{1}, 2), "opt");
    EXPECT_ASSERTION(storage.replaceWithTombstones(Place{0}, 3), "opt");
    EXPECT_ASSERTION(storage.restoreElements(Place{3}, 2), "opt");
    EXPECT_ASSERTION(storage.restoreElements(Place{5}, 2), "opt");
    expectDrawn("ab..c.", storage);
}

TEST(TombstonesStorage, AStretchOfNothingChangesNothing)
{
    TombstonesStorage storage = draw("a.b");
    for (const unsigned long index : {0UL, 1UL, 2UL, 5UL})
    {
        const LiveIndex expected = storage.getIndexToInsertTo(Place{index});
        EXPECT_EQ(expected, storage.insertElements(Place{index}, 0));
        EXPECT_EQ(expected, storage.removeElements(Place{index}, 0));
        EXPECT_EQ(expected, storage.replaceWithTombstones(Place{index}, 0));
        EXPECT_EQ(expected, storage.restoreElements(Place{index}, 0));
    }
    expectDrawn("a.b", storage);
}

TEST(TombstonesStorage, MovesALivePlaceAndTellsItsLiveIndices)
{
    TombstonesStorage storage = draw("ab..c.d");
    using Move = TombstonesStorage::LiveMove;
    EXPECT_EQ(Move(LiveIndex{0}, LiveIndex{2}), storage.moveElement(Place{0}, SignedIndexIncludingTombstones{4}));
    expectDrawn("b..ca.d", storage);
    EXPECT_EQ(Move(LiveIndex{2}, LiveIndex{0}), storage.moveElement(Place{4}, SignedIndexIncludingTombstones{-4}));
    expectDrawn("ab..c.d", storage);
    EXPECT_EQ(Move(LiveIndex{2}, LiveIndex{2}), storage.moveElement(Place{4}, SignedIndexIncludingTombstones{-1}));
    expectDrawn("ab.c..d", storage);
    EXPECT_EQ(Move(LiveIndex{1}, LiveIndex{1}), storage.moveElement(Place{1}, SignedIndexIncludingTombstones{0}));
    expectDrawn("ab.c..d", storage);
}

TEST(TombstonesStorage, MovingATombstoneChangesTheIndexSpaceOnly)
{
    TombstonesStorage storage = draw("a.bc..");
    EXPECT_EQ(std::nullopt, storage.moveElement(Place{1}, SignedIndexIncludingTombstones{2}));
    expectDrawn("abc...", storage);
    EXPECT_EQ(std::nullopt, storage.moveElement(Place{4}, SignedIndexIncludingTombstones{-4}));
    expectDrawn(".abc..", storage);
    EXPECT_EQ(std::nullopt, storage.moveElement(Place{5}, SignedIndexIncludingTombstones{3}));
    expectDrawn(".abc.def.", storage);
    EXPECT_EQ(3U, storage.getTombstonesCount());
}

TEST(TombstonesStorage, AMoveOutOfTheIndexSpaceIsABadNumber)
{
    TombstonesStorage storage = draw("a.b");
    constexpr long maximum = std::numeric_limits<long>::max();
    EXPECT_THROW(storage.moveElement(Place{2}, SignedIndexIncludingTombstones{-3}), BadNumCastError);
    EXPECT_THROW(storage.moveElement(Place{2}, SignedIndexIncludingTombstones{maximum}), BadNumCastError);
    EXPECT_THROW(storage.moveElement(Place{~0UL}, SignedIndexIncludingTombstones{0}), BadNumCastError);
    expectDrawn("a.b", storage);
}

TEST(TombstonesStorage, RefusesMorePlacesThanCanBeCounted)
{
    TombstonesStorage storage({range(~0UL - 2, ~0UL - 1)});
    EXPECT_ASSERTION(storage.insertElements(Place{0}, 2), "count <= maximalPlace - _runs.getTotal().getPlaces()");
    EXPECT_ASSERTION(storage.replaceWithTombstones(Place{~0UL - 1}, 2), "count <= maximalPlace - begin.get()");
    EXPECT_EQ(Place{~0UL}, storage.convertIndex(LiveIndex{~0UL - 1}));
    EXPECT_ASSERTION(storage.convertIndex(LiveIndex{~0UL}), "index.get() <= maximalPlace - total._dead");
    EXPECT_EQ(LiveIndex{0}, storage.insertElement(Place{0}));
    EXPECT_EQ((std::vector<PlacesRange>{range(~0UL - 1, ~0UL)}), storage.getRanges());
    storage.checkInvariants();
}

TEST(TombstonesStorage, TellsItsRangesApartAndAscending)
{
    const TombstonesStorage storage = draw(".ab..c.d");
    EXPECT_EQ((std::vector<PlacesRange>{range(0, 1), range(3, 5), range(6, 7)}), storage.getRanges());
    EXPECT_EQ(3U, storage.getRangesCount());
    EXPECT_EQ(4U, storage.getTombstonesCount());
    EXPECT_EQ(storage, TombstonesStorage(storage.getRanges()));
}

TEST(TombstonesStorage, JoinsRangesThatTouchWhenItIsMade)
{
    const TombstonesStorage storage({range(1, 2), range(2, 4), range(6, 7)});
    EXPECT_EQ((std::vector<PlacesRange>{range(1, 4), range(6, 7)}), storage.getRanges());
    storage.checkInvariants();
}

TEST(TombstonesStorage, RefusesRangesThatOverlapOrDescend)
{
    const std::string message = "lastEnd <= range.getBegin()";
    EXPECT_ASSERTION(TombstonesStorage({range(1, 4), range(3, 5)}), message);
    EXPECT_ASSERTION(TombstonesStorage({range(5, 6), range(1, 2)}), message);
    EXPECT_ASSERTION(TombstonesStorage({range(1, 2), range(1, 2)}), message);
}

TEST(TombstonesStorage, ListsTheLiveStretchesOfAStretch)
{
    const auto liveRanges = [](const TombstonesStorage& storage, const PlacesRange& stretch)
    {
        std::vector<PlacesRange> ranges;
        storage.forEachLiveRange(stretch, [&](const PlacesRange& live) { ranges.push_back(live); });
        return ranges;
    };
    const TombstonesStorage storage = draw("abc..d..ef");
    using Ranges = std::vector<PlacesRange>;
    EXPECT_EQ((Ranges{range(0, 3), range(5, 6), range(8, 10)}), liveRanges(storage, range(0, 10)));
    EXPECT_EQ((Ranges{range(1, 3), range(5, 6)}), liveRanges(storage, range(1, 7)));
    EXPECT_EQ((Ranges{range(1, 2)}), liveRanges(storage, range(1, 2)));
    EXPECT_EQ((Ranges{}), liveRanges(storage, range(3, 5)));
    EXPECT_EQ((Ranges{range(5, 6)}), liveRanges(storage, range(4, 6)));
    EXPECT_EQ((Ranges{range(20, 30)}), liveRanges(storage, range(20, 30)));
    EXPECT_EQ((Ranges{range(8, 30)}), liveRanges(storage, range(6, 30)));
    EXPECT_EQ((Ranges{range(2, 3)}), liveRanges(TombstonesStorage(), range(2, 3)));
}

TEST(TombstonesStorage, ComparesByContent)
{
    TombstonesStorage marked;
    marked.replaceWithTombstones(Place{2}, 2);
    TombstonesStorage carved;
    carved.replaceWithTombstones(Place{0}, 6);
    carved.restoreElements(Place{0}, 2);
    carved.restoreElements(Place{4}, 2);
    EXPECT_EQ(marked, carved);
    carved.insertElement(Place{0});
    EXPECT_NE(marked, carved);
}

TEST(TombstonesStorage, ACopyIsIndependent)
{
    const TombstonesStorage original = draw("a.b");
    TombstonesStorage copy = original;
    copy.restoreElement(Place{1});
    expectDrawn("a.b", original);
    expectDrawn("", copy);
}

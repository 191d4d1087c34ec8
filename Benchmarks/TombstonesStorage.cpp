/// What does a keystroke cost in a list with many tombstones? Each operation, on lists of a thousand to a million
/// places with up to a hundred thousand ranges of tombstones; each answer is compared with one worked out beforehand.
///
/// The operations that change the storage come with the one that takes them back, so that a round is two of them and
/// the storage is the same before each. `items_per_second` counts single operations.

#include "CU_TombstonesStorage.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

using namespace Zem::CollaborationUtils;

namespace
{

using Place = TombstonesStorage::Place;
using LiveIndex = TombstonesStorage::LiveIndex;
using PlacesRange = TombstonesStorage::PlacesRange;

/// Each range of tombstones lies behind as many live places, at three to seven.
struct Scene
{
    /// A live place with live ones on both sides, and a dead place with dead ones on both sides.
    struct Spot
    {
        Place _live;
        LiveIndex _liveIndex;
        Place _dead;
        LiveIndex _indexBehindDead;
    };

    explicit Scene(std::size_t rangesCount)
    {
        std::mt19937_64 random(rangesCount);
        std::vector<PlacesRange> ranges;
        std::vector<Spot> spots;
        unsigned long live = 0;
        Place end{0};
        for (std::size_t i = 0; i < rangesCount; ++i)
        {
            const unsigned long liveCount = 3 + random() % 5;
            const unsigned long deadCount = 3 + random() % 5;
            const Place begin = end + liveCount;
            spots.push_back({end + 1UL, LiveIndex(live + 1), begin + 1UL, LiveIndex(live + liveCount)});
            end = begin + deadCount;
            live += liveCount;
            ranges.emplace_back(begin, end);
        }
        _storage = TombstonesStorage(ranges);
        _spots.reserve(spotsCount);
        for (std::size_t i = 0; i < spotsCount; ++i)
        {
            _spots.push_back(spots[random() % spots.size()]);
        }
    }

    static constexpr std::size_t spotsCount = 1 << 14;

    TombstonesStorage _storage;
    std::vector<Spot> _spots;
};

/// Calls `operation` with the storage and one spot after the other; it says whether its answers were right.
template<class Operation>
void run(benchmark::State& state, int operationsPerRound, Operation operation)
{
    Scene scene(static_cast<std::size_t>(state.range(0)));
    const TombstonesStorage before = scene._storage;
    std::size_t spotNumber = 0;
    for (auto _ : state)
    {
        const Scene::Spot& spot = scene._spots[spotNumber++ % Scene::spotsCount];
        if (!operation(scene._storage, spot))
        {
            state.SkipWithError("wrong answer");
            return;
        }
    }
    if (!(scene._storage == before))
    {
        state.SkipWithError("the storage was changed");
    }
    scene._storage.checkInvariants();
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * operationsPerRound);
    state.SetComplexityN(state.range(0));
    state.counters["bytes"] = static_cast<double>(scene._storage.getMemoryUsage());
}

void convertPlace(benchmark::State& state)
{
    run(state, 2,
        [](const TombstonesStorage& storage, const Scene::Spot& spot)
        { return storage.convertIndex(spot._live) == spot._liveIndex && !storage.convertIndex(spot._dead); });
}

void convertLiveIndex(benchmark::State& state)
{
    run(state, 1,
        [](const TombstonesStorage& storage, const Scene::Spot& spot)
        { return storage.convertIndex(spot._liveIndex) == spot._live; });
}

void getIndexToInsertTo(benchmark::State& state)
{
    run(state, 1,
        [](const TombstonesStorage& storage, const Scene::Spot& spot)
        { return storage.getIndexToInsertTo(spot._dead) == spot._indexBehindDead; });
}

/// Typing a letter among live ones, and taking it back.
void insertAmongLiveAndRemove(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            return storage.insertElement(spot._live) == spot._liveIndex &&
                   storage.removeElement(spot._live) == spot._liveIndex;
        });
}

/// Typing a letter among tombstones, which splits their range, and taking it back.
void insertAmongDeadAndRemove(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            return storage.insertElement(spot._dead) == spot._indexBehindDead &&
                   storage.removeElement(spot._dead) == spot._indexBehindDead;
        });
}

/// Deleting a letter among live ones, which makes a new range, and undoing that.
void markAndRestore(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            return storage.replaceWithTombstone(spot._live) == spot._liveIndex &&
                   storage.restoreElement(spot._live) == spot._liveIndex;
        });
}

/// Restoring a letter inside a range of tombstones, and deleting it again.
void restoreAndMark(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            return storage.restoreElement(spot._dead) == spot._indexBehindDead &&
                   storage.replaceWithTombstone(spot._dead) == spot._indexBehindDead;
        });
}

void moveThereAndBack(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            const long distance = static_cast<long>(spot._dead.get() - spot._live.get());
            const auto there = storage.moveElement(spot._live, SignedIndexIncludingTombstones{distance});
            const auto back = storage.moveElement(spot._dead, SignedIndexIncludingTombstones{-distance});
            return there && back && there->first == spot._liveIndex && *back == std::pair(there->second, there->first);
        });
}

/// A paste of a thousand letters, and taking it back.
void insertManyAndRemove(benchmark::State& state)
{
    run(state, 2,
        [](TombstonesStorage& storage, const Scene::Spot& spot)
        {
            return storage.insertElements(spot._dead, 1000) == spot._indexBehindDead &&
                   storage.removeElements(spot._dead, 1000) == spot._indexBehindDead;
        });
}

void findLiveStretches(benchmark::State& state)
{
    run(state, 1,
        [](const TombstonesStorage& storage, const Scene::Spot& spot)
        {
            unsigned long live = 0;
            storage.forEachLiveRange(PlacesRange(spot._live, spot._dead),
                                     [&](const PlacesRange& range) { live += range.getCount().get(); });
            return spot._liveIndex + live == spot._indexBehindDead;
        });
}

} // namespace

#define ZEM_BENCHMARK(function) BENCHMARK(function)->Arg(100)->Arg(1000)->Arg(20000)->Arg(100000)->Complexity()

ZEM_BENCHMARK(convertPlace);
ZEM_BENCHMARK(convertLiveIndex);
ZEM_BENCHMARK(getIndexToInsertTo);
ZEM_BENCHMARK(insertAmongLiveAndRemove);
ZEM_BENCHMARK(insertAmongDeadAndRemove);
ZEM_BENCHMARK(markAndRestore);
ZEM_BENCHMARK(restoreAndMark);
ZEM_BENCHMARK(moveThereAndBack);
ZEM_BENCHMARK(insertManyAndRemove);
ZEM_BENCHMARK(findLiveStretches);

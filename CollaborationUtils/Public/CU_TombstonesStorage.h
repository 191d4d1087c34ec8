#pragma once

/// The record of live and dead places of one list.
///
/// A list of live elements lies elsewhere; this says where tombstones stand among them. It is kept as runs, each some
/// live places and then some dead ones. Live places behind the last tombstone are not stored, so the storage doesn't
/// know how long its list is, and a list without tombstones costs one null pointer:
///
///     places      a b . . c . d e f …        a letter is a live place, a dot is a tombstone
///     including   0 1 2 3 4 5 6 7 8
///     excluding   0 1     2   3 4 5
///     runs        {2 live, 2 dead} {1 live, 1 dead}, and the unbounded live tail
///
///     1. Every run has dead places.
///     2. Every run but the first has live places, so neighbouring ranges of dead places are one.
///
/// Equal contents therefore have equal runs. Every operation takes time logarithmic in the number of runs.

#include "CU_Index.h"
#include "CU_IndexRange.h"
#include "CU_SummedSequence.h"

#include "Util_CallableRef.h"
#include "Util_Export.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace Zem::CollaborationUtils
{

namespace TombstonesStorageDetails
{

struct RunSummary
{
    unsigned long getPlaces() const
    {
        return _live + _dead;
    }

    RunSummary& operator+=(const RunSummary& other)
    {
        _live += other._live;
        _dead += other._dead;
        return *this;
    }

    RunSummary& operator-=(const RunSummary& other)
    {
        _live -= other._live;
        _dead -= other._dead;
        return *this;
    }

    friend bool operator==(const RunSummary&, const RunSummary&) = default;

    unsigned long _live = 0;
    unsigned long _dead = 0;
};

/// `_live` live places, then `_dead` dead ones.
struct Run : RunSummary
{
    using Summary = RunSummary;

    const Summary& getSummary() const
    {
        return *this;
    }

    friend bool operator==(const Run&, const Run&) = default;
};

} // namespace TombstonesStorageDetails

class ZEM_EXPORT TombstonesStorage
{
public:
    using Place = IndexIncludingTombstones;
    using LiveIndex = IndexExcludingTombstones;
    using PlacesRange = IndexRange<IndexIncludingTombstones>;

    /// Old live index, then new.
    using LiveMove = std::pair<LiveIndex, LiveIndex>;

    TombstonesStorage() = default;

    /// The storage whose dead places are those of `ranges`, which ascend; ranges that touch are joined. Linear.
    /// Fails: "lastEnd <= range.getBegin()" when ranges overlap or descend.
    explicit TombstonesStorage(const std::vector<PlacesRange>& ranges);

    /// The live index of a place; empty if the place is a tombstone.
    std::optional<LiveIndex> convertIndex(Place place) const;

    /// The place of the live element `index`, counting the unbounded tail: for the number of live elements of the list
    /// it is the place behind all its places.
    Place convertIndex(LiveIndex index) const;

    /// The live index at which an element at `place` stands or would stand: for a tombstone, that of the next live one.
    LiveIndex getIndexToInsertTo(Place place) const;

    /// Records a new live element at `place`; that place and all behind it move up. Returns the element's live index.
    /// Inside a dead range the range is split; at its first place the element stands in front of it.
    LiveIndex insertElement(Place place);

    /// Forgets a live place; all places behind it move down. Returns the live index that it had.
    /// Fails: "opt" for a tombstone.
    LiveIndex removeElement(Place place);

    /// Turns a live place into a tombstone; places stay. Returns the live index that it had.
    /// Fails: "opt" for a tombstone.
    LiveIndex replaceWithTombstone(Place place);

    /// Turns a tombstone into a live place; places stay. Returns its live index.
    /// Fails: "opt" for a live place.
    LiveIndex restoreElement(Place place);

    /// Moves a place, live or dead, by `diff`: it is taken out and put in again at `place` + `diff`. Empty for a
    /// tombstone. Fails: `BadNumCastError` when the target isn't an index.
    std::optional<LiveMove> moveElement(Place place, SignedIndexIncludingTombstones diff);

    /// As `insertElement` for each place of [begin, begin + count), ascending. Returns the live index of the first.
    LiveIndex insertElements(Place begin, unsigned long count);

    /// As `removeElement(begin)`, `count` times. Returns the live index that the first had.
    /// Fails: "opt" if a place of [begin, begin + count) is a tombstone, before anything is changed.
    LiveIndex removeElements(Place begin, unsigned long count);

    /// As `replaceWithTombstone` for each place of [begin, begin + count). Returns the live index that the first had.
    /// Fails: "opt" if one of them is a tombstone, before anything is changed.
    LiveIndex replaceWithTombstones(Place begin, unsigned long count);

    /// As `restoreElement` for each place of [begin, begin + count). Returns the live index of the first.
    /// Fails: "opt" if one of them is live, before anything is changed.
    LiveIndex restoreElements(Place begin, unsigned long count);

    /// How many tombstones there are. Constant time.
    unsigned long getTombstonesCount() const;

    /// How many ranges of neighbouring tombstones there are. Constant time.
    unsigned long getRangesCount() const;

    /// The ranges of tombstones, ascending and apart from each other.
    std::vector<PlacesRange> getRanges() const;

    /// Calls `callable` with each maximal stretch of live places inside `range`, ascending. Logarithmic, and linear in
    /// the stretches. The storage must not be changed meanwhile.
    void forEachLiveRange(const PlacesRange& range, CallableRef<void(const PlacesRange&)> callable) const;

    /// Asserts the invariants above by their numbers, and those of the sequence below.
    void checkInvariants() const;

    /// Bytes on the heap.
    std::size_t getMemoryUsage() const;

    friend bool operator==(const TombstonesStorage&, const TombstonesStorage&) = default;

    template<class Archive>
    void save(Archive& archive) const;

    /// Fails: "_begin < _end" on a range that doesn't increase; `cereal::Exception` when ranges overlap or descend.
    template<class Archive>
    void load(Archive& archive);

private:
    using Run = TombstonesStorageDetails::Run;
    using Runs = SummedSequence<Run>;

    struct Spot;

    bool isInTail(Place place) const;
    LiveIndex getLiveIndexInTail(Place place) const;
    Spot find(Place place) const;

    std::optional<LiveIndex> forgetPlace(Place place);
    void insertTombstone(Place place);
    void appendTombstones(Place begin, unsigned long count);

    void replaceRun(const Runs::Place& place, Run first, Run second);
    void writeRuns(const Runs::Place& place, const Run& first, const Run& second);
    void addToRun(const Runs::Place& place, const TombstonesStorageDetails::RunSummary& added);

    Runs _runs;
};

} // namespace Zem::CollaborationUtils

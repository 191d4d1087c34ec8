#pragma once

/// The record of a table's rows, or of its columns: which places are live and which are tombstones, and the id of each.
///
/// Unlike a `TombstonesStorage`, it knows how many places there are. It keeps runs, so that a fresh sheet of a million
/// rows is one run. Every function takes time logarithmic in the number of runs where nothing else is said.
///
///     1. No run is empty.
///     2. No two neighbouring runs could be one: they differ in kind, or their ids don't follow on each other.
///     3. No id stands twice.
///     4. There are at most `maximalCount` places.
///
/// Equal contents therefore have equal runs.
///
/// Ids come from two ranges. Those below `firstFreshID` are given to the lines that a list is born with or grows by,
/// one after the other, so that all who make a list grow from the same state give the same ids. Those from there on are
/// for lines that are inserted one by one: `makeFreshID` draws them at random, so that two users hardly ever draw the
/// same.

#include "DOM_IDRunsTree.h"

#include "CU_Index.h"

#include "Util_Export.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Zem::DOM
{

class ZEM_EXPORT TombstonesWithIDsStorage
{
public:
    using Place = CollaborationUtils::IndexIncludingTombstones;
    using LiveIndex = CollaborationUtils::IndexExcludingTombstones;
    using Run = IDRunsDetails::Run;

    static constexpr unsigned long firstFreshID = 1UL << 63;
    static constexpr unsigned long maximalCount = 1UL << 62;

    TombstonesWithIDsStorage() = default;

    /// `count` live places with the ids from 0 on. Fails: "count <= maximalCount".
    explicit TombstonesWithIDsStorage(unsigned long count);

    /// Linear. Fails: `BaseRuntimeError` for an empty run, an id that stands twice, or too many places.
    explicit TombstonesWithIDsStorage(const std::vector<Run>& runs);

    /// Constant time, as is the next.
    LiveIndex getLiveCount() const
    {
        return LiveIndex(_runs.getTotal()._live);
    }

    Place getAllCount() const
    {
        return Place(_runs.getTotal()._all);
    }

    /// The live index of a place; empty if the place is a tombstone. Places behind the last are counted on, as though
    /// live ones stood there.
    std::optional<LiveIndex> convertIndex(Place place) const;

    /// The place of a live index. For the number of live places it is the place behind all places, and from there on
    /// they are counted on.
    Place convertIndex(LiveIndex index) const;

    /// The live index at which something at `place` stands or would stand: for a tombstone, that of the next live
    /// place.
    LiveIndex getIndexToInsertTo(Place place) const;

    /// Fails: "place < getAllCount()".
    unsigned long getID(Place place) const;

    /// The place of an id, live or dead; empty if none has it.
    std::optional<Place> findID(unsigned long id) const;

    /// The live index of the live place with this id. Fails: "opt" if no live place has it.
    LiveIndex getLiveIndex(unsigned long id) const;

    /// A random id that no place has.
    unsigned long makeFreshID() const;

    /// Records a new live place with the id; that place and all behind it move up. Returns its live index.
    /// Fails: "place <= getAllCount()", "!findID(id)", "getAllCount().get() < maximalCount".
    LiveIndex insertElement(Place place, unsigned long id);

    /// Forgets a live place and its id; all places behind it move down. Returns the live index that it had.
    /// Fails: "isLive(place)".
    LiveIndex removeElement(Place place);

    /// Turns a live place into a tombstone, which keeps the id. Returns the live index that it had.
    /// Fails: "isLive(place)".
    LiveIndex replaceWithTombstone(Place place);

    /// Turns a tombstone into a live place. Returns its live index. Fails: "isTombstone(place)".
    LiveIndex restoreElement(Place place);

    /// Appends live places until there are `liveCount`, with the ids that follow on the highest below `firstFreshID`;
    /// or as many as there are such ids, and room.
    void grow(unsigned long liveCount);

    /// Removes live places from the end until there are `liveCount`, as long as growing would bring the same back: it
    /// stops at a tombstone, and at an id that growing wouldn't give. Linear in the runs removed.
    void shrink(unsigned long liveCount);

    /// In order. Linear.
    std::vector<Run> getRuns() const;

    /// Constant time.
    std::size_t getRunsCount() const
    {
        return _runs.getRunsCount();
    }

    /// A line for each rule above that is broken, by its number, and for those of the tree below. Linear.
    std::vector<std::string> checkInvariants() const;

    /// Bytes on the heap, as far as they are known. Constant time.
    std::size_t getMemoryUsage() const
    {
        return _runs.getMemoryUsage();
    }

    /// Linear.
    friend ZEM_EXPORT bool operator==(const TombstonesWithIDsStorage& left, const TombstonesWithIDsStorage& right);

    template<class Archive>
    void save(Archive& archive) const;

    /// Fails: `BaseRuntimeError` as the constructor does.
    template<class Archive>
    void load(Archive& archive);

private:
    bool isLive(Place place) const;
    bool isTombstone(Place place) const;
    /// The ids that growing would give begin here.
    unsigned long getNextGrownID() const;
    void append(const Run& run);
    LiveIndex setLive(Place place, bool isLive);
    void joinWithNext(IDRunsDetails::NodeNumber node);

    IDRunsDetails::IDRunsTree _runs;
};

} // namespace Zem::DOM

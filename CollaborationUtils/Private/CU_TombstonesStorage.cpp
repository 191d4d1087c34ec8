#include "CU_TombstonesStorage.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <limits>

namespace Zem::CollaborationUtils
{

using TombstonesStorageDetails::Run;
using TombstonesStorageDetails::RunSummary;

namespace
{

constexpr unsigned long maximalPlace = std::numeric_limits<unsigned long>::max();

constexpr auto placesOf = [](const RunSummary& summary) { return summary.getPlaces(); };
constexpr auto liveOf = [](const RunSummary& summary) { return summary._live; };

} // namespace

TombstonesStorage::TombstonesStorage(const std::vector<PlacesRange>& ranges)
{
    std::vector<Run> runs;
    runs.reserve(ranges.size());
    Place lastEnd{0};
    for (const PlacesRange& range : ranges)
    {
        ZEM_ASSERT(lastEnd <= range.getBegin());
        const unsigned long live = (range.getBegin() - lastEnd).get();
        if (live == 0 && !runs.empty())
        {
            runs.back()._dead += range.getCount().get();
        }
        else
        {
            runs.push_back(Run{{live, range.getCount().get()}});
        }
        lastEnd = range.getEnd();
    }
    _runs.assign(runs);
}

/// A place in front of the unbounded tail: its run, and how many places of the run stand before it.
struct TombstonesStorage::Spot
{
    Spot(const Runs& runs, Place place)
        : _runPlace(runs.find(placesOf, place.get()))
        , _run(runs.get(_runPlace))
        , _offset(place.get() - _runPlace.getBefore().getPlaces())
    {
    }

    bool isLive() const
    {
        return _offset < _run._live;
    }

    /// Whether `count` places from here on lie in this run and are all live, or all dead.
    bool isLive(unsigned long count) const
    {
        return isLive() && count <= _run._live - _offset;
    }

    bool isDead(unsigned long count) const
    {
        return !isLive() && count <= _run.getPlaces() - _offset;
    }

    /// The live index of this place, or of the next live one.
    LiveIndex getLiveIndex() const
    {
        return LiveIndex(_runPlace.getBefore()._live + std::min(_offset, _run._live));
    }

    std::optional<LiveIndex> getLiveIndexIf(bool condition) const
    {
        return condition ? std::optional(getLiveIndex()) : std::nullopt;
    }

    Runs::Place _runPlace;
    Run _run;
    unsigned long _offset;
};

TombstonesStorage::Spot TombstonesStorage::find(Place place) const
{
    return Spot(_runs, place);
}

bool TombstonesStorage::isInTail(Place place) const
{
    return place.get() >= _runs.getTotal().getPlaces();
}

TombstonesStorage::LiveIndex TombstonesStorage::getLiveIndexInTail(Place place) const
{
    return LiveIndex(place.get() - getTombstonesCount());
}

std::optional<TombstonesStorage::LiveIndex> TombstonesStorage::convertIndex(Place place) const
{
    if (isInTail(place))
    {
        return getLiveIndexInTail(place);
    }
    const Spot spot = find(place);
    return spot.getLiveIndexIf(spot.isLive());
}

TombstonesStorage::Place TombstonesStorage::convertIndex(LiveIndex index) const
{
    const RunSummary total = _runs.getTotal();
    if (index.get() >= total._live)
    {
        ZEM_ASSERT(index.get() <= maximalPlace - total._dead);
        return Place(index.get() + total._dead);
    }
    return Place(index.get() + _runs.find(liveOf, index.get()).getBefore()._dead);
}

TombstonesStorage::LiveIndex TombstonesStorage::getIndexToInsertTo(Place place) const
{
    return isInTail(place) ? getLiveIndexInTail(place) : find(place).getLiveIndex();
}

TombstonesStorage::LiveIndex TombstonesStorage::insertElement(Place place)
{
    return insertElements(place, 1);
}

TombstonesStorage::LiveIndex TombstonesStorage::removeElement(Place place)
{
    return removeElements(place, 1);
}

TombstonesStorage::LiveIndex TombstonesStorage::replaceWithTombstone(Place place)
{
    return replaceWithTombstones(place, 1);
}

TombstonesStorage::LiveIndex TombstonesStorage::restoreElement(Place place)
{
    return restoreElements(place, 1);
}

std::optional<TombstonesStorage::LiveMove> TombstonesStorage::moveElement(Place place,
                                                                          SignedIndexIncludingTombstones diff)
{
    long signedTarget = 0;
    if (__builtin_add_overflow(numCast<long>(place.get()), diff.get(), &signedTarget))
    {
        throw BadNumCastError();
    }
    const Place target(numCast<unsigned long>(signedTarget));
    if (const std::optional<LiveIndex> oldIndex = forgetPlace(place))
    {
        return LiveMove(*oldIndex, insertElement(target));
    }
    insertTombstone(target);
    return std::nullopt;
}

/// Forgets a place, live or dead. Returns the live index that it had; empty if it was a tombstone.
std::optional<TombstonesStorage::LiveIndex> TombstonesStorage::forgetPlace(Place place)
{
    if (isInTail(place))
    {
        return getLiveIndexInTail(place);
    }
    const Spot spot = find(place);
    const unsigned long liveCount = spot.isLive() ? 1 : 0;
    replaceRun(spot._runPlace, {{spot._run._live - liveCount, spot._run._dead - (1 - liveCount)}}, {});
    return spot.getLiveIndexIf(spot.isLive());
}

TombstonesStorage::LiveIndex TombstonesStorage::insertElements(Place begin, unsigned long count)
{
    ZEM_ASSERT(count <= maximalPlace - _runs.getTotal().getPlaces());
    if (isInTail(begin))
    {
        return getLiveIndexInTail(begin);
    }
    const Spot spot = find(begin);
    const unsigned long deadBefore = spot._offset - std::min(spot._offset, spot._run._live);
    replaceRun(spot._runPlace, {{spot._run._live, deadBefore}}, {{count, spot._run._dead - deadBefore}});
    return spot.getLiveIndex();
}

TombstonesStorage::LiveIndex TombstonesStorage::removeElements(Place begin, unsigned long count)
{
    if (count == 0 || isInTail(begin))
    {
        return getIndexToInsertTo(begin);
    }
    const Spot spot = find(begin);
    const std::optional<LiveIndex> opt = spot.getLiveIndexIf(spot.isLive(count));
    ZEM_ASSERT(opt);
    replaceRun(spot._runPlace, {{spot._run._live - count, spot._run._dead}}, {});
    return *opt;
}

TombstonesStorage::LiveIndex TombstonesStorage::replaceWithTombstones(Place begin, unsigned long count)
{
    if (count == 0)
    {
        return getIndexToInsertTo(begin);
    }
    if (isInTail(begin))
    {
        const LiveIndex index = getLiveIndexInTail(begin);
        appendTombstones(begin, count);
        return index;
    }
    const Spot spot = find(begin);
    const std::optional<LiveIndex> opt = spot.getLiveIndexIf(spot.isLive(count));
    ZEM_ASSERT(opt);
    const unsigned long liveBehind = spot._run._live - spot._offset - count;
    replaceRun(spot._runPlace, {{spot._offset, count}}, {{liveBehind, spot._run._dead}});
    return *opt;
}

TombstonesStorage::LiveIndex TombstonesStorage::restoreElements(Place begin, unsigned long count)
{
    if (count == 0)
    {
        return getIndexToInsertTo(begin);
    }
    ZEM_ASSERT_MESSAGE(!isInTail(begin), "opt");
    const Spot spot = find(begin);
    const std::optional<LiveIndex> opt = spot.getLiveIndexIf(spot.isDead(count));
    ZEM_ASSERT(opt);
    const unsigned long deadBefore = spot._offset - spot._run._live;
    const unsigned long deadBehind = spot._run._dead - deadBefore - count;
    replaceRun(spot._runPlace, {{spot._run._live, deadBefore}}, {{count, deadBehind}});
    return *opt;
}

void TombstonesStorage::insertTombstone(Place place)
{
    ZEM_ASSERT(_runs.getTotal().getPlaces() < maximalPlace);
    if (isInTail(place))
    {
        appendTombstones(place, 1);
        return;
    }
    const Spot spot = find(place);
    const unsigned long liveBefore = std::min(spot._offset, spot._run._live);
    replaceRun(spot._runPlace, {{liveBefore, 1}}, {{spot._run._live - liveBefore, spot._run._dead}});
}

/// Makes `count` dead places of those from `begin` on. Requires: `begin` lies in the tail.
void TombstonesStorage::appendTombstones(Place begin, unsigned long count)
{
    ZEM_ASSERT(count <= maximalPlace - begin.get());
    const unsigned long live = begin.get() - _runs.getTotal().getPlaces();
    if (live == 0 && !_runs.empty())
    {
        addToRun(_runs.getPlace(_runs.size() - 1), {0, count});
    }
    else
    {
        _runs.append({{live, count}});
    }
}

/// Puts `first` and then `second` in place of a run. Either may lack live or dead places, or both: what is left joins
/// its neighbours, so that the invariants hold.
void TombstonesStorage::replaceRun(const Runs::Place& place, Run first, Run second)
{
    if (second._live == 0)
    {
        first._dead += second._dead;
        second = {};
    }
    else if (first._dead == 0)
    {
        first = {{first._live + second._live, second._dead}};
        second = {};
    }
    Run& last = second._live > 0 ? second : first;
    if (last._dead == 0)
    {
        if (place.getOrdinal() + 1 < _runs.size())
        {
            addToRun(_runs.getNext(place), last);
        }
        last = {};
    }
    if (first._live == 0 && first._dead > 0 && place.getOrdinal() > 0)
    {
        addToRun(_runs.getPrevious(place), first);
        first = second;
        second = {};
    }
    writeRuns(place, first, second);
}

/// Writes none, one or two runs in place of one. Requires: `second` is empty, if `first` is.
void TombstonesStorage::writeRuns(const Runs::Place& place, const Run& first, const Run& second)
{
    if (first._dead == 0)
    {
        _runs.erase(place);
    }
    else if (second._dead == 0)
    {
        _runs.update(place, first);
    }
    else
    {
        _runs.update(place, second);
        _runs.insert(place, first);
    }
}

void TombstonesStorage::addToRun(const Runs::Place& place, const RunSummary& added)
{
    Run run = _runs.get(place);
    run += added;
    _runs.update(place, run);
}

unsigned long TombstonesStorage::getTombstonesCount() const
{
    return _runs.getTotal()._dead;
}

unsigned long TombstonesStorage::getRangesCount() const
{
    return _runs.size();
}

std::vector<TombstonesStorage::PlacesRange> TombstonesStorage::getRanges() const
{
    std::vector<PlacesRange> ranges;
    ranges.reserve(_runs.size());
    Place end{0};
    _runs.forEach(0,
                  [&](const Run& run)
                  {
                      const Place begin = end + run._live;
                      end = begin + run._dead;
                      ranges.emplace_back(begin, end);
                      return true;
                  });
    return ranges;
}

void TombstonesStorage::forEachLiveRange(const PlacesRange& range, CallableRef<void(const PlacesRange&)> callable) const
{
    const auto report = [&](Place stretchBegin, Place stretchEnd)
    {
        const Place begin = std::max(stretchBegin, range.getBegin());
        const Place end = std::min(stretchEnd, range.getEnd());
        if (begin < end)
        {
            callable(PlacesRange(begin, end));
        }
    };
    const Runs::Place found = _runs.find(placesOf, range.getBegin().get());
    Place position(found.getBefore().getPlaces());
    _runs.forEach(found,
                  [&](const Run& run)
                  {
                      report(position, position + run._live);
                      position += Place(run.getPlaces());
                      return position < range.getEnd();
                  });
    report(position, range.getEnd());
}

void TombstonesStorage::checkInvariants() const
{
    _runs.checkInvariants();
    bool isFirst = true;
    _runs.forEach(0,
                  [&](const Run& run)
                  {
                      ZEM_ASSERT_MESSAGE(run._dead > 0, "TombstonesStorage: invariant 1");
                      ZEM_ASSERT_MESSAGE(run._live > 0 || isFirst, "TombstonesStorage: invariant 2");
                      isFirst = false;
                      return true;
                  });
}

std::size_t TombstonesStorage::getMemoryUsage() const
{
    return _runs.getMemoryUsage();
}

} // namespace Zem::CollaborationUtils

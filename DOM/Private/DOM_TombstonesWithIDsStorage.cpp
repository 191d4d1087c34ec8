#include "DOM_TombstonesWithIDsStorage.h"

#include "Util_Assert.h"
#include "Util_BaseRuntimeError.h"
#include "Util_UUID.h"

#include <algorithm>
#include <map>

namespace Zem::DOM
{

using IDRunsDetails::IDRunsTree;
using IDRunsDetails::NodeNumber;
using IDRunsDetails::noNode;

namespace
{

bool canBeJoined(const TombstonesWithIDsStorage::Run& left, const TombstonesWithIDsStorage::Run& right)
{
    return left._isLive == right._isLive && left.getLastID() < right._firstID && left.getLastID() + 1 == right._firstID;
}

std::string quote(const TombstonesWithIDsStorage::Run& run)
{
    return "{" + std::to_string(run._firstID) + ", " + std::to_string(run._count) + "}";
}

/// Sees to it that a run begins at `place`, and returns the run before it, `noNode` for place 0.
/// Requires: there is such a place, or it is the one behind all.
NodeNumber splitAt(IDRunsTree& runs, unsigned long place)
{
    if (place == 0)
    {
        return noNode;
    }
    const IDRunsTree::Position position = runs.findPlace(place - 1);
    const TombstonesWithIDsStorage::Run run = runs.getRun(position._node);
    const unsigned long leftCount = place - position._before._all;
    if (leftCount < run._count)
    {
        runs.replace(position._node, {run._firstID, leftCount, run._isLive});
        runs.insertAfter(position._node, {run._firstID + leftCount, run._count - leftCount, run._isLive});
    }
    return position._node;
}

/// Makes one place a run of its own.
NodeNumber isolate(IDRunsTree& runs, unsigned long place)
{
    splitAt(runs, place);
    return splitAt(runs, place + 1);
}

} // namespace

TombstonesWithIDsStorage::TombstonesWithIDsStorage(unsigned long count)
{
    ZEM_ASSERT(count <= maximalCount);
    grow(count);
}

TombstonesWithIDsStorage::TombstonesWithIDsStorage(const std::vector<Run>& runs)
{
    for (const Run& run : runs)
    {
        if (run._count == 0 || run._count > maximalCount - getAllCount().get())
        {
            throw BaseRuntimeError("A run of rows or columns is empty or too long: " + quote(run));
        }
        if (run.getLastID() < run._firstID || _runs.isAnyIDHeld(run))
        {
            throw BaseRuntimeError("The ids of a run of rows or columns aren't unique: " + quote(run));
        }
        append(run);
    }
}

std::optional<TombstonesWithIDsStorage::LiveIndex> TombstonesWithIDsStorage::convertIndex(Place place) const
{
    const IDRunsTree::Position position = _runs.findPlace(place.get());
    if (position._node != noNode && !_runs.getRun(position._node)._isLive)
    {
        return std::nullopt;
    }
    return LiveIndex(position._before._live + (place.get() - position._before._all));
}

TombstonesWithIDsStorage::Place TombstonesWithIDsStorage::convertIndex(LiveIndex index) const
{
    const IDRunsTree::Position position = _runs.findLive(index.get());
    return Place(position._before._all + (index.get() - position._before._live));
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::getIndexToInsertTo(Place place) const
{
    const IDRunsTree::Position position = _runs.findPlace(place.get());
    const bool isDead = position._node != noNode && !_runs.getRun(position._node)._isLive;
    return LiveIndex(position._before._live + (isDead ? 0 : place.get() - position._before._all));
}

unsigned long TombstonesWithIDsStorage::getID(Place place) const
{
    ZEM_ASSERT(place < getAllCount());
    const IDRunsTree::Position position = _runs.findPlace(place.get());
    return _runs.getRun(position._node)._firstID + (place.get() - position._before._all);
}

std::optional<TombstonesWithIDsStorage::Place> TombstonesWithIDsStorage::findID(unsigned long id) const
{
    const std::optional<NodeNumber> node = _runs.findID(id);
    if (!node)
    {
        return std::nullopt;
    }
    return Place(_runs.countBefore(*node)._all + (id - _runs.getRun(*node)._firstID));
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::getLiveIndex(unsigned long id) const
{
    const std::optional<NodeNumber> opt = _runs.findID(id);
    ZEM_ASSERT_MESSAGE(opt && _runs.getRun(*opt)._isLive, "opt");
    return LiveIndex(_runs.countBefore(*opt)._live + (id - _runs.getRun(*opt)._firstID));
}

unsigned long TombstonesWithIDsStorage::makeFreshID() const
{
    unsigned long id = 0;
    do
    {
        const UUID::Bytes bytes = UUID::generate().getBytes();
        id = 0;
        // The first byte of the second half is partly fixed by the form of a UUID, those of its end aren't.
        for (auto byte = bytes.rbegin(); byte != bytes.rbegin() + 7; ++byte)
        {
            id = (id << 8) | *byte;
        }
        id = (id << 8 | bytes.front()) | firstFreshID;
    } while (_runs.findID(id));
    return id;
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::insertElement(Place place, unsigned long id)
{
    ZEM_ASSERT(place <= getAllCount());
    ZEM_ASSERT(!findID(id));
    ZEM_ASSERT(getAllCount().get() < maximalCount);
    const NodeNumber previous = splitAt(_runs, place.get());
    const NodeNumber node = _runs.insertAfter(previous, {id, 1, true});
    joinWithNext(node);
    if (previous != noNode)
    {
        joinWithNext(previous);
    }
    return getLiveIndex(id);
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::removeElement(Place place)
{
    ZEM_ASSERT(isLive(place));
    const NodeNumber node = isolate(_runs, place.get());
    const LiveIndex index(_runs.countBefore(node)._live);
    const NodeNumber previous = _runs.getPrevious(node);
    _runs.erase(node);
    if (previous != noNode)
    {
        joinWithNext(previous);
    }
    return index;
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::replaceWithTombstone(Place place)
{
    ZEM_ASSERT(isLive(place));
    return setLive(place, false);
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::restoreElement(Place place)
{
    ZEM_ASSERT(isTombstone(place));
    return setLive(place, true);
}

TombstonesWithIDsStorage::LiveIndex TombstonesWithIDsStorage::setLive(Place place, bool isLive)
{
    const NodeNumber node = isolate(_runs, place.get());
    const LiveIndex index(_runs.countBefore(node)._live);
    _runs.replace(node, {_runs.getRun(node)._firstID, 1, isLive});
    const NodeNumber previous = _runs.getPrevious(node);
    joinWithNext(node);
    if (previous != noNode)
    {
        joinWithNext(previous);
    }
    return index;
}

void TombstonesWithIDsStorage::grow(unsigned long liveCount)
{
    const unsigned long nextID = getNextGrownID();
    const unsigned long wanted = liveCount - std::min(liveCount, getLiveCount().get());
    const unsigned long count = std::min({wanted, firstFreshID - nextID, maximalCount - getAllCount().get()});
    if (count > 0)
    {
        append({nextID, count, true});
    }
}

void TombstonesWithIDsStorage::shrink(unsigned long liveCount)
{
    while (liveCount < getLiveCount().get())
    {
        const NodeNumber last = _runs.getLast();
        const Run run = _runs.getRun(last);
        if (!run._isLive || run.getLastID() >= firstFreshID || run.getLastID() + 1 != getNextGrownID())
        {
            return;
        }
        // Growing follows on the highest id that is left, which must be the one before those that go.
        const bool isFirstRegrown = run._firstID == 0 || _runs.findID(run._firstID - 1);
        const unsigned long removable = isFirstRegrown ? run._count : run._count - 1;
        const unsigned long count = std::min(getLiveCount().get() - liveCount, removable);
        if (count == run._count)
        {
            _runs.erase(last);
            continue;
        }
        _runs.replace(last, {run._firstID, run._count - count, true});
        return;
    }
}

std::vector<TombstonesWithIDsStorage::Run> TombstonesWithIDsStorage::getRuns() const
{
    std::vector<Run> runs;
    runs.reserve(getRunsCount());
    for (NodeNumber node = _runs.getFirst(); node != noNode; node = _runs.getNext(node))
    {
        runs.push_back(_runs.getRun(node));
    }
    return runs;
}

std::vector<std::string> TombstonesWithIDsStorage::checkInvariants() const
{
    std::vector<std::string> broken;
    const std::vector<Run> runs = getRuns();
    std::map<unsigned long, unsigned long> lastIDs;
    for (auto run = runs.begin(); run != runs.end(); ++run)
    {
        if (run->_count == 0)
        {
            broken.push_back("1: Run " + quote(*run) + " is empty.");
        }
        if (run + 1 != runs.end() && canBeJoined(*run, run[1]))
        {
            broken.push_back("2: Runs " + quote(*run) + " and " + quote(run[1]) + " could be one.");
        }
        if (!lastIDs.emplace(run->_firstID, run->getLastID()).second)
        {
            broken.push_back("3: Run " + quote(*run) + " has an id of another.");
        }
    }
    for (auto entry = lastIDs.begin(); entry != lastIDs.end() && std::next(entry) != lastIDs.end(); ++entry)
    {
        if (entry->second >= std::next(entry)->first)
        {
            broken.push_back("3: The run from " + std::to_string(entry->first) + " on has an id of another.");
        }
    }
    if (getAllCount().get() > maximalCount)
    {
        broken.push_back("4: There are too many places.");
    }
    _runs.checkInvariants(broken);
    return broken;
}

bool operator==(const TombstonesWithIDsStorage& left, const TombstonesWithIDsStorage& right)
{
    return left.getAllCount() == right.getAllCount() && left.getRunsCount() == right.getRunsCount() &&
           left.getRuns() == right.getRuns();
}

bool TombstonesWithIDsStorage::isLive(Place place) const
{
    return place < getAllCount() && convertIndex(place);
}

bool TombstonesWithIDsStorage::isTombstone(Place place) const
{
    return place < getAllCount() && !convertIndex(place);
}

unsigned long TombstonesWithIDsStorage::getNextGrownID() const
{
    const std::optional<unsigned long> highest = _runs.findHighestID(firstFreshID - 1);
    return highest ? *highest + 1 : 0;
}

void TombstonesWithIDsStorage::append(const Run& run)
{
    const NodeNumber last = _runs.getLast();
    _runs.insertAfter(last, run);
    if (last != noNode)
    {
        joinWithNext(last);
    }
}

void TombstonesWithIDsStorage::joinWithNext(NodeNumber node)
{
    const NodeNumber next = _runs.getNext(node);
    if (next == noNode || !canBeJoined(_runs.getRun(node), _runs.getRun(next)))
    {
        return;
    }
    const Run run = _runs.getRun(node);
    const unsigned long count = run._count + _runs.getRun(next)._count;
    _runs.erase(next);
    _runs.replace(node, {run._firstID, count, run._isLive});
}

} // namespace Zem::DOM

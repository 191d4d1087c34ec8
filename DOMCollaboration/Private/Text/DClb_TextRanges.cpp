#include "Text/DClb_TextRanges.h"

#include "Text/DClb_TextContents.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <iterator>
#include <limits>

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;
using CollaborationUtils::IndexIncludingTombstones;
using CollaborationUtils::TombstonesStorage;

namespace
{

/// Requires that the nested operations stand from high to low and don't overlap; those of an insertion that is still to
/// be made (`canShareGap`) may share a gap.
template<class Operation>
void requireDescendingOrder(const std::vector<Operation>& nestedOperations, bool canShareGap)
{
    for (std::size_t index = 1; index < nestedOperations.size(); ++index)
    {
        const IndexRange<unsigned long>& higher = nestedOperations[index - 1].getRange();
        const IndexRange<unsigned long>& lower = nestedOperations[index].getRange();
        const bool isDescending =
            canShareGap ? lower.getBegin() <= higher.getBegin() : lower.getEnd() <= higher.getBegin();
        ZEM_ASSERT(isDescending);
    }
}

/// Joins neighbours that `meet` each other. Cost: linear.
template<class Meet>
RangeInfos mergeRanges(RangeInfos ranges, Meet meet)
{
    RangeInfos merged;
    for (auto highest = ranges.begin(); highest != ranges.end();)
    {
        auto lowest = highest;
        while (std::next(lowest) != ranges.end() && meet(*lowest, *std::next(lowest)))
        {
            ++lowest;
        }
        RangeInfo joined = std::move(*lowest);
        for (auto higher = lowest; higher != highest;)
        {
            joined.append(std::move(*--higher));
        }
        merged.push_back(std::move(joined));
        highest = std::next(lowest);
    }
    return merged;
}

/// Requires that each range, moved behind all the places that those after it take up, still has indices.
void requireCountable(const std::vector<ListModificationOperation<InsertTag>>& nestedOperations)
{
    unsigned long nextRangesTotal = 0;
    for (auto nestedOperation = nestedOperations.rbegin(); nestedOperation != nestedOperations.rend();
         ++nestedOperation)
    {
        const IndexRange<unsigned long>& range = nestedOperation->getRange();
        const bool isCountable = range.getEnd() <= std::numeric_limits<unsigned long>::max() - nextRangesTotal;
        ZEM_ASSERT(isCountable);
        nextRangesTotal += range.getCount();
    }
}

/// Requires that all slots of the range are live, and gives the plane index of the first.
IndexExcludingTombstones requireLive(const TombstonesStorage& tombstones, const IndexRange<unsigned long>& range)
{
    const auto convert = [&](unsigned long slot)
    {
        const auto opt = tombstones.convertIndex(IndexIncludingTombstones(slot));
        ZEM_ASSERT(opt);
        return *opt;
    };
    const IndexExcludingTombstones first = convert(range.getBegin());
    const IndexExcludingTombstones last = convert(range.getEnd() - 1);
    const bool opt = (last - first).get() + 1 == range.getCount();
    ZEM_ASSERT(opt);
    return first;
}

TextWithTombstonesElementVector takeLast(TextWithTombstonesElementVector& textElements, unsigned long count)
{
    ZEM_ASSERT(count <= textElements.size());
    if (count == textElements.size())
    {
        return std::exchange(textElements, {});
    }
    const auto first = textElements.end() - static_cast<std::ptrdiff_t>(count);
    TextWithTombstonesElementVector taken(std::make_move_iterator(first), std::make_move_iterator(textElements.end()));
    textElements.erase(first, textElements.end());
    return taken;
}

} // namespace

void RangeInfo::append(RangeInfo&& higher)
{
    _size += higher._size;
    _data.insert(_data.end(), std::make_move_iterator(higher._data.begin()),
                 std::make_move_iterator(higher._data.end()));
    _operations.insert(_operations.end(), higher._operations.begin(), higher._operations.end());
}

template<class Operation>
RangeInfos makeRangesToFill(ListMultirangeOperationImpl<Operation>& operation, const TombstonesStorage& tombstones)
{
    requireDescendingOrder(operation.getNestedOperations(),
                           std::is_same_v<Operation, ListModificationOperation<InsertTag>>);
    RangeInfos ranges;
    for (Operation& nestedOperation : operation.getNestedOperations())
    {
        const TextWithTombstonesElementVector& elements = getElements(nestedOperation);
        ZEM_ASSERT_MESSAGE(elements.size() == nestedOperation.getRange().getCount(), "Index is outside range");
        RangeInfo range(tombstones.getIndexToInsertTo(IndexIncludingTombstones(nestedOperation.getRange().getBegin())),
                        elements.size(), nestedOperation);
        range._data = elements;
        ranges.push_back(std::move(range));
    }
    return mergeRanges(std::move(ranges), [](const RangeInfo& higher, const RangeInfo& lower)
                       { return higher.getStartIndex() == lower.getStartIndex(); });
}

template<class Operation>
RangeInfos makeRangesToEmpty(ListMultirangeOperationImpl<Operation>& operation, const TombstonesStorage& tombstones)
{
    requireDescendingOrder(operation.getNestedOperations(), false);
    RangeInfos ranges;
    for (Operation& nestedOperation : operation.getNestedOperations())
    {
        ranges.emplace_back(requireLive(tombstones, nestedOperation.getRange()), nestedOperation.getRange().getCount(),
                            nestedOperation);
    }
    return mergeRanges(std::move(ranges), [](const RangeInfo& higher, const RangeInfo& lower)
                       { return lower.getEndIndex() == higher.getStartIndex(); });
}

void findPlaces(RangeInfos& ranges, const DOM::Blocks& blocks)
{
    for (std::size_t lower = ranges.size(); lower-- > 1;)
    {
        ranges[lower - 1].getAnchor().settleBehind(blocks, ranges[lower].getAnchor());
    }
}

void shiftNestedRanges(ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>& operation, bool add)
{
    if (add)
    {
        requireCountable(operation.getNestedOperations());
    }
    unsigned long nextRangesTotal = 0;
    auto& nestedOperations = operation.getNestedOperations();
    for (auto nestedOperation = nestedOperations.rbegin(); nestedOperation != nestedOperations.rend();
         ++nestedOperation)
    {
        const unsigned long newBegin = nestedOperation->getRange().getBegin();
        if (add)
        {
            nestedOperation->setBeginIndex(newBegin + nextRangesTotal);
        }
        else
        {
            ZEM_ASSERT(newBegin >= nextRangesTotal);
            nestedOperation->setBeginIndex(newBegin - nextRangesTotal);
        }
        nextRangesTotal += nestedOperation->getRange().getCount();
    }
}

void requireTombstones(const RangeInfos& ranges, const TombstonesStorage& tombstones)
{
    for (const RangeInfo& range : ranges)
    {
        for (const ListOperation* operation : range.getOperations())
        {
            const IndexIncludingTombstones begin(operation->getRange().getBegin());
            const IndexIncludingTombstones end(operation->getRange().getEnd());
            bool isTombstone = true;
            tombstones.forEachLiveRange(CollaborationUtils::IndexRange<IndexIncludingTombstones>(begin, end),
                                        [&](const auto&) { isTombstone = false; });
            ZEM_ASSERT(isTombstone);
        }
    }
}

void changeSlots(TombstonesStorage& tombstones, const RangeInfo& range, SlotsChange change)
{
    // From the highest to the lowest, so that the places of the lower ones hold: insertions and removals of slots move
    // those behind them. An insertion gives each operation the slots that it names, in the coordinates in which those
    // in front of it aren't there yet; the other way round, the slots of the higher ones would be off by the lower.
    const RangeInfo::Operations& operations = range.getOperations();
    for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
    {
        const IndexIncludingTombstones begin((*operation)->getRange().getBegin());
        const unsigned long count = (*operation)->getRange().getCount();
        switch (change)
        {
        case SlotsChange::Insert:
            tombstones.insertElements(begin, count);
            break;
        case SlotsChange::Restore:
            tombstones.restoreElements(begin, count);
            break;
        case SlotsChange::Remove:
            tombstones.removeElements(begin, count);
            break;
        case SlotsChange::MarkAsRemoved:
            tombstones.replaceWithTombstones(begin, count);
            break;
        }
    }
}

template<class Tag>
void giveDataBack(RangeInfos ranges)
{
    for (RangeInfo& range : ranges)
    {
        TextWithTombstonesElementVector& textElements = range._data;
        ZEM_ASSERT_MESSAGE(!textElements.empty(), "!_data.empty()");
        const RangeInfo::Operations& operations = range.getOperations();
        for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
        {
            cast<ListModificationOperation<Tag>>(**operation)
                .setData(makeSharedConst<TextWithTombstonesItems>(
                    takeLast(textElements, (*operation)->getRange().getCount())));
        }
        ZEM_ASSERT(textElements.empty());
    }
}

template RangeInfos makeRangesToFill(ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>&,
                                     const TombstonesStorage&);
template RangeInfos makeRangesToFill(ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>&,
                                     const TombstonesStorage&);
template RangeInfos makeRangesToFill(ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>&,
                                     const TombstonesStorage&);
template RangeInfos makeRangesToEmpty(ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>&,
                                      const TombstonesStorage&);
template RangeInfos makeRangesToEmpty(ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>&,
                                      const TombstonesStorage&);
template RangeInfos makeRangesToEmpty(ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>&,
                                      const TombstonesStorage&);
template void giveDataBack<InsertTag>(RangeInfos);
template void giveDataBack<MarkAsRemovedTag>(RangeInfos);
template void giveDataBack<RestoreTag>(RangeInfos);

} // namespace Zem::DOMCollaboration

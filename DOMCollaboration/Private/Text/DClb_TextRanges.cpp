#include "Text/DClb_TextRanges.h"

#include "Text/DClb_TextContents.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <iterator>

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;
using CollaborationUtils::IndexIncludingTombstones;
using CollaborationUtils::TombstonesStorage;

namespace
{

/// Requires that the nested operations stand from high to low and don't overlap; insertions may share a gap.
template<class Operation>
void requireDescendingOrder(const std::vector<Operation>& nestedOperations)
{
    for (std::size_t index = 1; index < nestedOperations.size(); ++index)
    {
        const IndexRange<unsigned long>& higher = nestedOperations[index - 1].getRange();
        const IndexRange<unsigned long>& lower = nestedOperations[index].getRange();
        const bool isInsertion = std::is_same_v<Operation, ListModificationOperation<InsertTag>>;
        const bool isDescending =
            isInsertion ? lower.getBegin() <= higher.getBegin() : lower.getEnd() <= higher.getBegin();
        ZEM_ASSERT(isDescending);
    }
}

/// Adds a range that lies in front of all those that are there, joined with the last of them where they meet.
template<class Meet>
void addRange(RangeInfos& ranges, RangeInfo range, Meet meet)
{
    if (!ranges.empty() && meet(ranges.back(), range))
    {
        ranges.back().joinWithLower(std::move(range));
        return;
    }
    ranges.push_back(std::move(range));
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

void RangeInfo::joinWithLower(RangeInfo&& lower)
{
    setStartIndex(lower._startIndex);
    _size += lower._size;
    lower._data.insert(lower._data.end(), std::make_move_iterator(_data.begin()), std::make_move_iterator(_data.end()));
    _data = std::move(lower._data);
    _operations.insert(_operations.begin(), lower._operations.begin(), lower._operations.end());
}

template<class Operation>
RangeInfos makeRangesToFill(ListMultirangeOperationImpl<Operation>& operation, const TombstonesStorage& tombstones)
{
    requireDescendingOrder(operation.getNestedOperations());
    RangeInfos ranges;
    for (Operation& nestedOperation : operation.getNestedOperations())
    {
        const TextWithTombstonesElementVector& elements = getElements(nestedOperation);
        ZEM_ASSERT_MESSAGE(elements.size() == nestedOperation.getRange().getCount(), "Index is outside range");
        RangeInfo range(tombstones.getIndexToInsertTo(IndexIncludingTombstones(nestedOperation.getRange().getBegin())),
                        elements.size(), nestedOperation);
        range._data = elements;
        addRange(ranges, std::move(range),
                 [](const RangeInfo& higher, const RangeInfo& lower)
                 { return higher.getStartIndex() == lower.getStartIndex(); });
    }
    return ranges;
}

template<class Operation>
RangeInfos makeRangesToEmpty(ListMultirangeOperationImpl<Operation>& operation, const TombstonesStorage& tombstones)
{
    requireDescendingOrder(operation.getNestedOperations());
    RangeInfos ranges;
    for (Operation& nestedOperation : operation.getNestedOperations())
    {
        RangeInfo range(requireLive(tombstones, nestedOperation.getRange()), nestedOperation.getRange().getCount(),
                        nestedOperation);
        addRange(ranges, std::move(range),
                 [](const RangeInfo& higher, const RangeInfo& lower)
                 { return lower.getEndIndex() == higher.getStartIndex(); });
    }
    return ranges;
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
    // those behind them.
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

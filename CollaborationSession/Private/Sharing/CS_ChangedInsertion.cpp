#include "Sharing/CS_ChangedInsertion.h"

#include "Sharing/CS_CopyRange.h"
#include "Sharing/CS_MatchElements.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

using Gaps = std::vector<unsigned long>;

Gaps listGaps(const ChangedInsertion::Insertion& insertion)
{
    Gaps gaps;
    const auto& nestedOperations = insertion.getNestedOperations();
    for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
    {
        gaps.insert(gaps.end(), nested->getRange().getCount(), nested->getRange().getBegin());
    }
    return gaps;
}

/// How many elements of an insertion stand in front of a slot or gap of the state behind it. Their slots ascend, since
/// each stands at least one slot behind the one before.
std::size_t countInFront(const Gaps& gaps, unsigned long slot)
{
    std::size_t begin = 0;
    std::size_t end = gaps.size();
    while (begin < end)
    {
        const std::size_t middle = begin + (end - begin) / 2;
        if (gaps[middle] + middle < slot)
        {
            begin = middle + 1;
        }
        else
        {
            end = middle;
        }
    }
    return begin;
}

/// Null for an operation of several parts, or none.
const HierarchicalOperation* findOnNode(const Operation& operation)
{
    if (const auto* shadowed = cast<ShadowedOperation>(&operation))
    {
        return shadowed->getOriginal().getIfHierarchical();
    }
    return cast<HierarchicalOperation>(&operation);
}

template<class Nested>
void sortDescending(std::vector<Nested>& nestedOperations)
{
    std::stable_sort(nestedOperations.begin(), nestedOperations.end(),
                     [](const Nested& left, const Nested& right)
                     { return left.getRange().getBegin() > right.getRange().getBegin(); });
}

} // namespace

ChangedInsertion::ChangedInsertion(const Insertion& planned, const Insertion& happened)
    : _onNode(cloneOperation(planned))
    , _nodeAddress(planned.getNodeAddress())
    , _planned(listGaps(planned))
    , _happened(listGaps(happened))
    , _identities(matchElements(planned, happened))
{
    std::replace(_identities.begin(), _identities.end(), noMatch, nowhere);
}

OperationUPtr ChangedInsertion::cross(const Operation& operation, const BaseOperationTransformer& transformer)
{
    if (cast<CompositeOperation>(&operation) == nullptr)
    {
        followAncestors(operation, transformer);
    }
    if (_isOver)
    {
        return cloneOperation(operation);
    }
    OperationUPtr crossed = visitWith<OperationUPtr>(
        operation,
        [&](const AtomicOperation& atomic)
        {
            std::unique_ptr<AtomicOperation> copy;
            atomic.cloneTo(copy);
            return crossSingle(std::move(copy));
        },
        [&](const CompositeOperation& composite) -> OperationUPtr
        {
            std::vector<OperationUPtr> parts;
            for (const OperationUPtr& part : composite.getParts())
            {
                parts.push_back(cross(*part, transformer));
            }
            return std::make_unique<CompositeOperation>(std::move(parts), composite.getKind());
        },
        [](const EmptyOperation& empty) { return cloneOperation(empty); },
        [&](const ShadowedOperation& shadowed) -> OperationUPtr
        {
            std::unique_ptr<AtomicOperation> original;
            shadowed.getOriginal().cloneTo(original);
            // It does nothing, so that nothing changes behind it.
            OperationUPtr crossedOriginal = ChangedInsertion(*this).crossSingle(std::move(original));
            auto* atomic = cast<AtomicOperation>(crossedOriginal.get());
            if (!atomic)
            {
                return crossedOriginal;
            }
            crossedOriginal.release();
            return std::make_unique<ShadowedOperation>(std::unique_ptr<AtomicOperation>(atomic), shadowed.getShadows());
        });
    crossed->inheritIDIfPossibleImpl(operation);
    return crossed;
}

/// The node's address follows what an operation does above it.
void ChangedInsertion::followAncestors(const Operation& operation, const BaseOperationTransformer& transformer)
{
    const HierarchicalOperation* above = findOnNode(operation);
    if (!above || above->getNodeAddress().getSize() >= _nodeAddress.getSize() ||
        !above->getNodeAddress().isPrefixOf(_nodeAddress))
    {
        return;
    }
    const bool wasDead = isDead();
    _onNode = transformer.include(*_onNode, operation, TieResolveCondition::SecondWins);
    _nodeAddress = derefPtr(findOnNode(*_onNode)).getNodeAddress();
    _isOver = _isOver || (wasDead && !isDead());
}

bool ChangedInsertion::isDead() const
{
    return cast<ShadowedOperation>(_onNode.get()) != nullptr;
}

void ChangedInsertion::follow(NodeAddressWithTransformationData& position) const
{
    const unsigned long depth = _nodeAddress.getSize();
    if (!isBelow(position.getAddress()))
    {
        return;
    }
    if (auto* chunk = boost::get<NodeAddressing::AddressInList>(&position.getAddress().getItem(depth)))
    {
        const auto slot = mapOwn(chunk->getIndex());
        *chunk = NodeAddressing::AddressInList(slot ? *slot : mapGap(chunk->getIndex()));
    }
}

bool ChangedInsertion::isBelow(const OperationNodeAddress& address) const
{
    return address.getSize() > _nodeAddress.getSize() && _nodeAddress.isPrefixOf(address);
}

/// Where an inserted element that both have stands now; nothing for any other slot.
boost::optional<unsigned long> ChangedInsertion::mapOwn(unsigned long slot) const
{
    const std::size_t element = countInFront(_planned, slot);
    if (element == _planned.size() || _planned[element] + element != slot || _identities[element] == nowhere)
    {
        return boost::none;
    }
    return _happened[_identities[element]] + _identities[element];
}

/// Where a slot stands now; nothing if it is gone.
boost::optional<unsigned long> ChangedInsertion::mapSlot(unsigned long slot) const
{
    const std::size_t inFront = countInFront(_planned, slot);
    if (inFront < _planned.size() && _planned[inFront] + inFront == slot)
    {
        return mapOwn(slot);
    }
    const unsigned long slotBefore = slot - inFront;
    const auto behind = std::upper_bound(_happened.begin(), _happened.end(), slotBefore);
    return slotBefore + static_cast<unsigned long>(behind - _happened.begin());
}

/// A gap stays behind the element in front of it, or in front of the one behind it, if that was inserted; else it is
/// behind all that came in where it was.
unsigned long ChangedInsertion::mapGap(unsigned long gap) const
{
    if (const auto left = gap > 0 ? mapOwn(gap - 1) : boost::none)
    {
        return *left + 1;
    }
    if (const auto right = mapOwn(gap))
    {
        return *right;
    }
    const unsigned long gapBefore = gap - countInFront(_planned, gap);
    const auto behind = std::upper_bound(_happened.begin(), _happened.end(), gapBefore);
    return gapBefore + static_cast<unsigned long>(behind - _happened.begin());
}

/// Elements that came in at a gap of both states, the same on both sides.
void ChangedInsertion::takeIn(unsigned long plannedGap, unsigned long happenedGap, unsigned long count)
{
    const std::size_t plannedIndex = countInFront(_planned, plannedGap);
    const std::size_t happenedIndex = countInFront(_happened, happenedGap);
    for (std::size_t& identity : _identities)
    {
        if (identity != nowhere && identity >= happenedIndex)
        {
            identity += count;
        }
    }
    const auto place = [](auto& vector, std::size_t index)
    { return vector.begin() + static_cast<std::ptrdiff_t>(index); };
    _planned.insert(place(_planned, plannedIndex), count, plannedGap - plannedIndex);
    _happened.insert(place(_happened, happenedIndex), count, happenedGap - happenedIndex);
    const auto added = _identities.insert(place(_identities, plannedIndex), count, nowhere);
    for (std::size_t element = 0; element < count; ++element)
    {
        added[static_cast<std::ptrdiff_t>(element)] = happenedIndex + element;
    }
}

OperationUPtr ChangedInsertion::crossSingle(std::unique_ptr<AtomicOperation> operation)
{
    auto& onNode = cast<HierarchicalOperation>(*operation);
    OperationNodeAddress address = onNode.getNodeAddress();
    if (address == _nodeAddress)
    {
        auto* onText = cast<ListMultirangeOperation>(operation.get());
        return onText ? crossOnNode(*onText) : std::move(operation);
    }
    if (!isBelow(address))
    {
        return operation;
    }
    if (auto* chunk = boost::get<NodeAddressing::AddressInList>(&address.getItem(_nodeAddress.getSize())))
    {
        const auto slot = mapSlot(chunk->getIndex());
        if (!slot)
        {
            return std::make_unique<ShadowedOperation>(std::move(operation));
        }
        *chunk = NodeAddressing::AddressInList(*slot);
        onNode.setNodeAddress(std::move(address));
    }
    return operation;
}

OperationUPtr ChangedInsertion::crossOnNode(ListMultirangeOperation& operation)
{
    if (auto* insertion = cast<Insertion>(&operation))
    {
        return crossInsertion(*insertion);
    }
    return visitWith<OperationUPtr>(operation, [&](const auto& ranges) { return crossRanges(ranges); });
}

OperationUPtr ChangedInsertion::crossInsertion(Insertion& insertion)
{
    auto nestedOperations = insertion.getNestedOperations();
    std::vector<std::pair<unsigned long, unsigned long>> gaps;
    for (auto& nested : nestedOperations)
    {
        const unsigned long gap = nested.getRange().getBegin();
        gaps.emplace_back(gap, mapGap(gap));
        nested.setBeginIndex(gaps.back().second);
    }
    // From the highest planned gap down, none of the planned gaps that follow moves; those that happened do.
    for (std::size_t index = 0; index < gaps.size(); ++index)
    {
        const unsigned long count = nestedOperations[index].getRange().getCount();
        const unsigned long happenedGap = gaps[index].second;
        takeIn(gaps[index].first, happenedGap, count);
        for (std::size_t later = index + 1; later < gaps.size(); ++later)
        {
            gaps[later].second += gaps[later].second > happenedGap ? count : 0;
        }
    }
    sortDescending(nestedOperations);
    return std::make_unique<Insertion>(std::move(nestedOperations));
}

template<class Nested>
OperationUPtr ChangedInsertion::crossRanges(const ListMultirangeOperationImpl<Nested>& operation) const
{
    std::vector<Nested> nestedOperations;
    for (const Nested& nested : operation.getNestedOperations())
    {
        const IndexRange<unsigned long>& range = nested.getRange();
        boost::optional<CopiedRange> mapped;
        for (unsigned long slot = range.getBegin(); slot < range.getEnd(); ++slot)
        {
            const auto place = mapSlot(slot);
            const bool isContinued = place && mapped && mapped->_begin + mapped->_count == *place;
            if (mapped && !isContinued)
            {
                nestedOperations.push_back(copyRange(nested, *mapped));
                mapped = boost::none;
            }
            if (isContinued)
            {
                ++mapped->_count;
            }
            else if (place)
            {
                mapped = CopiedRange{*place, slot - range.getBegin(), 1};
            }
        }
        if (mapped)
        {
            nestedOperations.push_back(copyRange(nested, *mapped));
        }
    }
    if (nestedOperations.empty())
    {
        return std::make_unique<EmptyOperation>();
    }
    sortDescending(nestedOperations);
    return std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(nestedOperations));
}

} // namespace Zem::CollaborationSession

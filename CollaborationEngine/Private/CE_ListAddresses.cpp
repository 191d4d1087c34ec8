#include "CE_ListAddresses.h"

#include "CE_SlotMapping.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

using NodeAddressing::AddressInList;
using RevertedInsertions = std::deque<RevertedInsertOperationInfo>;

/// Whether the chunks from `depth` on mean nothing, because an element above them was taken back.
bool isBelowRevertedInsertion(const RevertedInsertions& reverted, unsigned long depth)
{
    return std::any_of(reverted.begin(), reverted.end(),
                       [&](const RevertedInsertOperationInfo& info) { return info._chunkIndex < depth; });
}

bool isRevertedAt(const RevertedInsertions& reverted, unsigned long depth)
{
    return std::any_of(reverted.begin(), reverted.end(),
                       [&](const RevertedInsertOperationInfo& info) { return info._chunkIndex == depth; });
}

unsigned long shiftPastInsertion(unsigned long index, const SlotPieces& insertions, bool sticksToPrevious)
{
    unsigned long result = index;
    for (const SlotPiece& piece : insertions)
    {
        const bool isInFront = piece._begin < index || (piece._begin == index && !sticksToPrevious);
        result += isInFront ? piece._count : 0;
    }
    return result;
}

/// The place of an item of an insertion after it. A position that sticks to the item in front of it may stand behind
/// the last one of a piece.
boost::optional<unsigned long> findInsertedItem(unsigned long offset, const SlotPieces& insertions,
                                                bool sticksToPrevious)
{
    unsigned long itemsInFront = 0;
    for (const SlotPiece& piece : insertions)
    {
        const unsigned long offsetInPiece = offset - itemsInFront;
        if (offsetInPiece < piece._count || (sticksToPrevious && offsetInPiece == piece._count))
        {
            return piece._begin + itemsInFront + offsetInPiece;
        }
        itemsInFront += piece._count;
    }
    return boost::none;
}

/// If the insertion is one that was taken back while the position lay in it, that place; the insertions that were taken
/// back after it are forgotten with it.
boost::optional<unsigned long> returnIntoInsertion(RevertedInsertions& reverted, const HierarchicalOperation& operation,
                                                   const SlotPieces& insertions, bool sticksToPrevious)
{
    const auto id = operation.getID();
    if (!id)
    {
        return boost::none;
    }
    const auto info =
        std::find_if(reverted.rbegin(), reverted.rend(),
                     [&](const RevertedInsertOperationInfo& candidate)
                     { return candidate._operationID == *id && candidate._container == operation.getNodeAddress(); });
    if (info == reverted.rend())
    {
        return boost::none;
    }
    const auto place = findInsertedItem(info->_indexOfItemInCollection, insertions, sticksToPrevious);
    if (place)
    {
        reverted.erase(std::prev(info.base()), reverted.end());
    }
    return place;
}

/// Where a position falls when slots go for good. If it lay in them, that is remembered.
unsigned long fallOutOfRemoval(unsigned long index, NodeAddressWithTransformationData& position,
                               const HierarchicalOperation& operation, const SlotPieces& removed, bool sticksToPrevious)
{
    const bool isAtBeginning = sticksToPrevious && index == 0;
    const SlotPiece* piece = isAtBeginning ? nullptr : findPiece(index - (sticksToPrevious ? 1 : 0), removed);
    if (!piece)
    {
        return mapGapPastRemoval(index, removed);
    }
    const unsigned long fallenTo = mapGapPastRemoval(piece->_begin, removed);
    if (const auto id = operation.getID())
    {
        RevertedInsertOperationInfo info;
        info._container = operation.getNodeAddress();
        info._operationID = *id;
        info._chunkIndex = operation.getNodeAddress().getSize();
        info._indexOfItemInCollection = index - fallenTo;
        position.getRevertedInsertOperations().push_back(std::move(info));
    }
    return fallenTo;
}

} // namespace

AddressChange changeElement(unsigned long& slot, const SlotOperation& slots, const DeadPlace& deadPlace)
{
    switch (slots._action)
    {
    case SlotAction::Marking:
    case SlotAction::Restoring:
        if (findPiece(slot, slots._pieces))
        {
            const bool dies = slots._action == SlotAction::Marking;
            return AddressChange{dies ? AddressChange::Kind::Dies : AddressChange::Kind::ComesBack, deadPlace};
        }
        return AddressChange{};
    case SlotAction::Leaving:
    case SlotAction::Releasing:
        return AddressChange{};
    case SlotAction::Insertion:
    case SlotAction::Removal:
    case SlotAction::Move:
        break;
    }
    const auto newSlot = mapSlot(slot, slots);
    if (!newSlot)
    {
        return AddressChange{AddressChange::Kind::IsGone};
    }
    slot = *newSlot;
    return AddressChange{};
}

AddressChange includeInListAddress(OperationNodeAddress& address, unsigned long chunkIndex, const SlotOperation& slots)
{
    auto* chunk = boost::get<AddressInList>(&address.getItem(chunkIndex));
    if (!chunk)
    {
        return AddressChange{};
    }
    unsigned long slot = chunk->getIndex();
    DeadPlace deadPlace;
    deadPlace._chunkIndex = chunkIndex;
    const AddressChange change = changeElement(slot, slots, deadPlace);
    chunk->setIndex(slot);
    return change;
}

SlotOperation reverseSlots(const SlotOperation& slots)
{
    SlotOperation reversed = slots;
    switch (slots._action)
    {
    case SlotAction::Insertion:
    {
        reversed._action = SlotAction::Removal;
        unsigned long shift = 0;
        for (SlotPiece& piece : reversed._pieces)
        {
            piece._begin += shift;
            shift += piece._count;
        }
        break;
    }
    case SlotAction::Removal:
    {
        reversed._action = SlotAction::Insertion;
        RemovalWalk walk(slots._pieces);
        for (SlotPiece& piece : reversed._pieces)
        {
            piece._begin = walk.mapGap(piece._begin);
        }
        break;
    }
    case SlotAction::Move:
        std::swap(reversed._target, reversed._pieces.front()._begin);
        break;
    case SlotAction::Marking:
        reversed._action = SlotAction::Restoring;
        break;
    case SlotAction::Restoring:
        reversed._action = SlotAction::Marking;
        break;
    case SlotAction::Leaving:
        reversed._action = SlotAction::Releasing;
        break;
    case SlotAction::Releasing:
        reversed._action = SlotAction::Leaving;
        break;
    }
    return reversed;
}

boost::optional<unsigned long> movePosition(unsigned long index, NodeAddressWithTransformationData& position,
                                            const HierarchicalOperation& operation, const SlotOperation& slots)
{
    const unsigned long depth = operation.getNodeAddress().getSize();
    RevertedInsertions& reverted = position.getRevertedInsertOperations();
    if (isBelowRevertedInsertion(reverted, depth))
    {
        return boost::none;
    }
    const bool endsHere = depth + 1 == position.getAddress().getSize() || isRevertedAt(reverted, depth);
    const bool sticksToPrevious = endsHere && position.sticksToPrevious();
    switch (slots._action)
    {
    case SlotAction::Insertion:
    {
        const auto place = returnIntoInsertion(reverted, operation, slots._pieces, sticksToPrevious);
        return place ? *place : shiftPastInsertion(index, slots._pieces, sticksToPrevious);
    }
    case SlotAction::Removal:
        return fallOutOfRemoval(index, position, operation, slots._pieces, sticksToPrevious);
    case SlotAction::Move:
        if (sticksToPrevious)
        {
            return index == 0 ? 0 : *mapSlot(index - 1, slots) + 1;
        }
        return mapSlot(index, slots);
    case SlotAction::Marking:
    case SlotAction::Restoring:
    case SlotAction::Leaving:
    case SlotAction::Releasing:
        break;
    }
    return index;
}

void followInContainers(NodeAddressWithTransformationData& position, unsigned long chunkIndex)
{
    for (RevertedInsertOperationInfo& info : position.getRevertedInsertOperations())
    {
        if (chunkIndex < info._container.getSize())
        {
            info._container.getItem(chunkIndex) = position.getAddress().getItem(chunkIndex);
        }
    }
}

void includeInListPosition(NodeAddressWithTransformationData& position, const HierarchicalOperation& operation,
                           const SlotOperation& slots)
{
    const unsigned long chunkIndex = operation.getNodeAddress().getSize();
    auto* chunk = boost::get<AddressInList>(&position.getAddress().getItem(chunkIndex));
    if (!chunk)
    {
        return;
    }
    if (const auto index = movePosition(chunk->getIndex(), position, operation, slots))
    {
        chunk->setIndex(*index);
        followInContainers(position, chunkIndex);
    }
}

} // namespace Zem::CollaborationEngine

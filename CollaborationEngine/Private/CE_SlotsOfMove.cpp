// Moves are thought of in the list without the moved slot: the target is a gap of that list.

#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

unsigned long withoutSlot(unsigned long index, unsigned long slot)
{
    return index - (slot < index ? 1 : 0);
}

void addMove(SlotOperations& result, const SlotPiece& piece, unsigned long slot, unsigned long target)
{
    SlotOperation move;
    move._action = SlotAction::Move;
    move._pieces.push_back(piece);
    move._pieces.front()._begin = slot;
    move._target = target;
    result.push_back(std::move(move));
}

} // namespace

/// An insertion at the gap of the target goes in front of the moved slot.
void includeMovePastInsertion(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                              SlotOperations& result)
{
    const SlotPiece& piece = first._pieces.front();
    unsigned long slot = piece._begin;
    unsigned long target = first._target;
    for (const SlotPiece& inserted : second._pieces)
    {
        slot += inserted._begin <= piece._begin ? inserted._count : 0;
        target += withoutSlot(inserted._begin, piece._begin) <= first._target ? inserted._count : 0;
    }
    addMove(result, piece, slot, target);
}

void includeMovePastRemoval(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                            SlotOperations& result)
{
    const SlotPiece& piece = first._pieces.front();
    if (findPiece(piece._begin, second._pieces))
    {
        return;
    }
    SlotPieces removedOfOthers = second._pieces;
    for (SlotPiece& removed : removedOfOthers)
    {
        removed._begin = withoutSlot(removed._begin, piece._begin);
    }
    addMove(result, piece, mapGapPastRemoval(piece._begin, second._pieces),
            mapGapPastRemoval(first._target, removedOfOthers));
}

void includeMovePastMove(const SlotOperation& first, const SlotOperation& second,
                         TieResolveCondition tieResolveCondition, SlotOperations& result)
{
    const SlotPiece& piece = first._pieces.front();
    const unsigned long slot = piece._begin;
    const unsigned long otherSlot = second._pieces.front()._begin;
    if (slot == otherSlot)
    {
        if (tieResolveCondition == TieResolveCondition::FirstWins)
        {
            addMove(result, piece, second._target, first._target);
        }
        return;
    }
    const unsigned long gap = withoutSlot(first._target, withoutSlot(otherSlot, slot));
    const unsigned long otherGap = withoutSlot(second._target, withoutSlot(slot, otherSlot));
    const bool isBehindOther =
        otherGap < gap || (otherGap == gap && tieResolveCondition == TieResolveCondition::SecondWins);
    const unsigned long slotWithoutOther = withoutSlot(slot, otherSlot);
    addMove(result, piece, slotWithoutOther + (second._target <= slotWithoutOther ? 1 : 0),
            gap + (isBehindOther ? 1 : 0));
}

} // namespace Zem::CollaborationEngine

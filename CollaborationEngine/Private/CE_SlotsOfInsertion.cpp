#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

void includeInsertionPastInsertion(const SlotOperation& first, const SlotOperation& second,
                                   TieResolveCondition tieResolveCondition, SlotOperations& result)
{
    const bool staysInFront = tieResolveCondition == TieResolveCondition::FirstWins;
    SlotPieces pieces = first._pieces;
    auto other = second._pieces.begin();
    unsigned long shift = 0;
    for (SlotPiece& piece : pieces)
    {
        const auto isInFront = [&](const SlotPiece& inserted)
        { return inserted._begin < piece._begin || (inserted._begin == piece._begin && !staysInFront); };
        for (; other != second._pieces.end() && isInFront(*other); ++other)
        {
            shift += other->_count;
        }
        piece._begin += shift;
    }
    addSlotOperation(result, SlotAction::Insertion, std::move(pieces));
}

void includeInsertionPastRemoval(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result)
{
    SlotPieces pieces = first._pieces;
    RemovalWalk walk(second._pieces);
    for (SlotPiece& piece : pieces)
    {
        piece._begin = walk.mapGap(piece._begin);
    }
    addSlotOperation(result, SlotAction::Insertion, std::move(pieces));
}

/// The gap stays between its neighbours. At the moved slot's new place it is the gap in front of that slot.
void includeInsertionPastMove(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                              SlotOperations& result)
{
    const unsigned long moved = second._pieces.front()._begin;
    SlotPieces pieces = first._pieces;
    for (SlotPiece& piece : pieces)
    {
        const unsigned long withoutMoved = piece._begin - (moved < piece._begin ? 1 : 0);
        piece._begin = withoutMoved + (second._target < withoutMoved ? 1 : 0);
    }
    addSlotOperation(result, SlotAction::Insertion, std::move(pieces));
}

} // namespace Zem::CollaborationEngine

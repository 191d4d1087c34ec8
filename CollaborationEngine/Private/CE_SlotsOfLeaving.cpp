#include "CE_Holders.h"
#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

/// The deletion that did nothing, since the slots were dead already, takes effect now.
void includeLeavingPastRestoring(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result)
{
    SlotPieces left;
    SlotPieces marked;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* restoring)
                   {
                       if (!restoring || part._holdersCount == 0)
                       {
                           appendPiece(left, part);
                           return;
                       }
                       part._holdersCount = 0;
                       appendPiece(marked, part);
                   });
    addSlotOperation(result, SlotAction::Leaving, std::move(left));
    addSlotOperation(result, SlotAction::Marking, std::move(marked));
}

void includeLeavingPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                               SlotOperations& result)
{
    SlotPieces left;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* leaving)
                   {
                       if (leaving)
                       {
                           part._holdersCount = countHoldersPastLeaving(part._holdersCount, leaving->_holdersCount);
                       }
                       appendPiece(left, part);
                   });
    addSlotOperation(result, SlotAction::Leaving, std::move(left));
}

void includeLeavingPastReleasing(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result)
{
    SlotPieces left;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* releasing)
                   {
                       if (releasing && part._holdersCount > 0)
                       {
                           part._holdersCount = releasing->_holdersCount;
                       }
                       appendPiece(left, part);
                   });
    addSlotOperation(result, SlotAction::Leaving, std::move(left));
}

} // namespace Zem::CollaborationEngine

#include "CE_Holders.h"
#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

/// Slots that are alive again need nothing more. This serves the left operand of a releasing too.
void includeRestoringPastRestoring(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                   SlotOperations& result)
{
    SlotPieces restored;
    forEachOverlap(first._pieces, second._pieces,
                   [&](const SlotPiece& part, const SlotPiece* restoring)
                   {
                       if (!restoring)
                       {
                           appendPiece(restored, part);
                       }
                   });
    addSlotOperation(result, first._action, std::move(restored));
}

/// What another deletion holds down stays dead; the restoring only lets go.
void includeRestoringPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result)
{
    SlotPieces restored;
    SlotPieces released;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* leaving)
                   {
                       if (!leaving || leaving->_holdersCount == 0)
                       {
                           appendPiece(restored, part);
                           return;
                       }
                       part.setHolds(makeHoldsPastLeaving());
                       appendPiece(released, part);
                   });
    addSlotOperation(result, SlotAction::Restoring, std::move(restored));
    addSlotOperation(result, SlotAction::Releasing, std::move(released));
}

} // namespace Zem::CollaborationEngine

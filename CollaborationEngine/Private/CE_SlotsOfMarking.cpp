#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// A deletion of slots that `marking` deleted first. It keeps the items that `marking` captured, where it did.
SlotPiece makeLeavingPiece(const SlotPiece& part, const SlotPiece& marking)
{
    SlotPiece leaving = part;
    leaving._holdersCount = 1;
    if (marking._items && *marking._items)
    {
        leaving._items = marking._items;
        leaving._offset = marking._offset + (part._begin - marking._begin);
    }
    return leaving;
}

} // namespace

void includeMarkingPastMarking(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                               SlotOperations& result)
{
    SlotPieces marked;
    SlotPieces left;
    forEachOverlap(first._pieces, second._pieces,
                   [&](const SlotPiece& part, const SlotPiece* marking)
                   {
                       if (marking)
                       {
                           appendPiece(left, makeLeavingPiece(part, *marking));
                           return;
                       }
                       appendPiece(marked, part);
                   });
    addSlotOperation(result, SlotAction::Marking, std::move(marked));
    addSlotOperation(result, SlotAction::Leaving, std::move(left));
}

} // namespace Zem::CollaborationEngine

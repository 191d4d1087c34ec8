#include "CE_Holders.h"
#include "CE_SlotMapping.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

boost::optional<unsigned long> countHoldersPastReleasing(const Shadows& first, const Shadows& second)
{
    if (first._releasesAll && second._releasesAll)
    {
        return boost::make_optional(first._holdersCount < second._holdersCount, first._holdersCount);
    }
    const Shadows& leavesFewer = second._releasesAll ? second : first;
    return leavesFewer._holdersCount - 1;
}

void includeReleasingPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result)
{
    SlotPieces released;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* leaving)
                   {
                       if (leaving && leaving->_holdersCount > 0)
                       {
                           ++part._holdersCount;
                       }
                       appendPiece(released, part);
                   });
    addSlotOperation(result, SlotAction::Releasing, std::move(released));
}

/// Each lets go a deletion of its own. Once nothing holds the slots any more, they come back.
void includeReleasingPastReleasing(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                   SlotOperations& result)
{
    SlotPieces released;
    SlotPieces restored;
    forEachOverlap(first._pieces, second._pieces,
                   [&](SlotPiece part, const SlotPiece* releasing)
                   {
                       const auto holdersCount = releasing
                                                     ? countHoldersPastReleasing(part.getHolds(), releasing->getHolds())
                                                     : boost::make_optional(part._holdersCount);
                       if (!holdersCount)
                       {
                           return;
                       }
                       part._holdersCount = *holdersCount;
                       appendPiece(*holdersCount == 0 ? restored : released, part);
                   });
    addSlotOperation(result, SlotAction::Releasing, std::move(released));
    addSlotOperation(result, SlotAction::Restoring, std::move(restored));
}

} // namespace Zem::CollaborationEngine

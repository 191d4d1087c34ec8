#include "CE_SlotMatrix.h"

#include "CE_SlotMapping.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// The left operand needs nothing of what the right one does.
constexpr SlotPairRule asItIs = nullptr;

/// The slots of the left operand are live and those of the right one dead, or the other way round: they can't overlap.
constexpr SlotPairRule disjoint = nullptr;

constexpr SlotPairRule followSlots = &includeSlotsPastChangeOfIndices;

// clang-format off
constexpr SlotPairRule slotMatrix[slotActionsCount][slotActionsCount] = {
/* first \ second   insertion                       removal                       marking                     restoring                       leaving                       releasing                       move */
/* insertion */   { &includeInsertionPastInsertion, &includeInsertionPastRemoval, asItIs,                     asItIs,                         asItIs,                       asItIs,                         &includeInsertionPastMove },
/* removal   */   { followSlots,                    followSlots,                  asItIs,                     asItIs,                         asItIs,                       asItIs,                         followSlots },
/* marking   */   { followSlots,                    followSlots,                  &includeMarkingPastMarking, disjoint,                       disjoint,                     disjoint,                       followSlots },
/* restoring */   { followSlots,                    followSlots,                  disjoint,                   &includeRestoringPastRestoring, &includeRestoringPastLeaving, asItIs,                         followSlots },
/* leaving   */   { followSlots,                    followSlots,                  disjoint,                   &includeLeavingPastRestoring,   &includeLeavingPastLeaving,   &includeLeavingPastReleasing,   followSlots },
/* releasing */   { followSlots,                    followSlots,                  disjoint,                   &includeRestoringPastRestoring, &includeReleasingPastLeaving, &includeReleasingPastReleasing, followSlots },
/* move      */   { &includeMovePastInsertion,      &includeMovePastRemoval,      asItIs,                     asItIs,                         asItIs,                       asItIs,                         &includeMovePastMove },
};
// clang-format on

} // namespace

SlotPairRule getSlotPairRule(SlotAction first, SlotAction second)
{
    return slotMatrix[static_cast<unsigned long>(first)][static_cast<unsigned long>(second)];
}

void includeSlotsPastChangeOfIndices(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                     SlotOperations& result)
{
    addSlotOperation(result, first._action, mapSlots(first._pieces, second));
}

} // namespace Zem::CollaborationEngine

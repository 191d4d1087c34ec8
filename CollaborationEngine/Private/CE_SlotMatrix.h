#pragma once

/// The matrix of pairs: what becomes of an operation on a list (the left operand) past another one on the same list
/// (the right operand). One source file for each left operand holds its rules; `Docs/Engine.md` tells why they hold.

#include "CE_Slots.h"
#include "CE_TieResolveCondition.h"

namespace Zem::CollaborationEngine
{

using SlotPairRule = void (*)(const SlotOperation& first, const SlotOperation& second,
                              TieResolveCondition tieResolveCondition, SlotOperations& result);

/// The rule of a pair; null where the left operand stays as it is. `SlotMatrix` in the tests names each of these pairs.
SlotPairRule getSlotPairRule(SlotAction first, SlotAction second);

/// Adds what is left of an operation, if anything is.
inline void addSlotOperation(SlotOperations& result, SlotAction action, SlotPieces pieces)
{
    if (!pieces.empty())
    {
        result.push_back(SlotOperation{action, std::move(pieces)});
    }
}

/// Any operation on slots past one that changes indices: the slots are followed one by one.
void includeSlotsPastChangeOfIndices(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                     SlotOperations& result);

void includeInsertionPastInsertion(const SlotOperation& first, const SlotOperation& second,
                                   TieResolveCondition tieResolveCondition, SlotOperations& result);
void includeInsertionPastRemoval(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result);
void includeInsertionPastMove(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                              SlotOperations& result);

void includeMarkingPastMarking(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                               SlotOperations& result);

void includeRestoringPastRestoring(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                   SlotOperations& result);
void includeRestoringPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result);

void includeLeavingPastRestoring(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result);
void includeLeavingPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                               SlotOperations& result);
void includeLeavingPastReleasing(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result);

void includeReleasingPastLeaving(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                 SlotOperations& result);
void includeReleasingPastReleasing(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                                   SlotOperations& result);

void includeMovePastInsertion(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                              SlotOperations& result);
void includeMovePastRemoval(const SlotOperation& first, const SlotOperation& second, TieResolveCondition,
                            SlotOperations& result);
void includeMovePastMove(const SlotOperation& first, const SlotOperation& second,
                         TieResolveCondition tieResolveCondition, SlotOperations& result);

} // namespace Zem::CollaborationEngine

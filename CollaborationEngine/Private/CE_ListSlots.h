#pragma once

/// Between the classes of list operations and what they do to slots.

#include "CE_ListMultirangeOperation.h"
#include "CE_NodeOperands.h"
#include "CE_SlotMatrix.h"

namespace Zem::CollaborationEngine
{

/// What a list operation does, with what lies on it; `shadows` may be null. The pieces refer to the operation's items.
/// Fails: "range.getCount() == 1u" for a move of several slots, "isTargetInRange" for one to a place in front of the
/// first.
SlotOperation describeSlots(const ListOperation& operation, const Shadows* shadows);

/// Fails: "areRangesDescending" when the nested ranges don't stand from the highest to the lowest, or overlap.
SlotOperation describeSlots(const ListMultirangeOperation& operation, const Shadows* shadows);

/// The list operations that do `slots`, on the node of `model`. What touches is joined. They have no id.
OperationUPtr makeOperationsOnSlots(const ListOperation& model, const SlotOperations& slots);
OperationUPtr makeOperationsOnSlots(const ListMultirangeOperation& model, const SlotOperations& slots);

/// The matrix applied to two operations of the list family `Root`. Fails: `std::bad_cast` for one of another family.
template<class Root>
OperationUPtr includeListOperation(const NodeOperand& first, const NodeOperand& second,
                                   TieResolveCondition tieResolveCondition)
{
    const Root& firstOperation = castToFamily<Root>(first._operation);
    const SlotOperation firstSlots = describeSlots(firstOperation, first._shadows);
    const SlotOperation secondSlots = describeSlots(castToFamily<Root>(second._operation), second._shadows);
    const SlotPairRule rule = getSlotPairRule(firstSlots._action, secondSlots._action);
    if (!rule)
    {
        return cloneWithoutShadowsAbove(first);
    }
    SlotOperations result;
    rule(firstSlots, secondSlots, tieResolveCondition, result);
    OperationUPtr operation = makeOperationsOnSlots(firstOperation, result);
    operation->inheritIDIfPossibleImpl(firstOperation);
    return operation;
}

} // namespace Zem::CollaborationEngine

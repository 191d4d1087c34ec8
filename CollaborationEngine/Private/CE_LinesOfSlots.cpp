#include "CE_SlotMatrix.h"
#include "CE_TableMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// What travels with the operation that `first` becomes. A leaving keeps what the marking that it met has captured.
SharedConstPtr<RowOrColumn> chooseRowOrColumn(const TableOperand& first, const TableOperand& second,
                                              SlotAction resultAction)
{
    if (getTableAction(first) == TableAction::Marking && resultAction == SlotAction::Leaving)
    {
        if (SharedConstPtr<RowOrColumn> captured = getRowOrColumn(second._nestedOperation))
        {
            return captured;
        }
    }
    return getRowOrColumn(first._nestedOperation);
}

} // namespace

OperationUPtr includeLineSlotsPastSlots(const TableOperand& first, const TableOperand& second,
                                        const SetPropertyDataMerger&, TieResolveCondition tieResolveCondition)
{
    const auto firstSlots = describeSlots(first);
    const auto secondSlots = describeSlots(second);
    const SlotPairRule rule = getSlotPairRule(firstSlots->_action, secondSlots->_action);
    if (!rule)
    {
        return cloneWithoutShadowsAbove(first._operand);
    }
    SlotOperations result;
    rule(*firstSlots, *secondSlots, tieResolveCondition, result);
    if (result.empty())
    {
        return makeNothing(first._operand);
    }
    const SlotOperation& slots = result.front();
    const bool isReleasing = slots._action == SlotAction::Releasing;
    return applyShadows(
        makeTableOperation(first, makeNestedOperation(slots, chooseRowOrColumn(first, second, slots._action))),
        isReleasing ? slots._pieces.front().getHolds() : Shadows{});
}

} // namespace Zem::CollaborationEngine

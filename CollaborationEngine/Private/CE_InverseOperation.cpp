#include "CE_InverseOperation.h"

#include "CE_Keys.h"
#include "CE_ListAddresses.h"
#include "CE_ListSlots.h"
#include "CE_OperationKinds.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableSlots.h"
#include "CE_UndoOfParts.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

/// What becomes of inserted elements when the insertion is inverted.
enum class InsertedElements
{
    GoForGood,
    AreMarked
};

/// A deletion that holds nothing down has nothing to let go.
void dropIdleLeavings(SlotOperation& slots)
{
    if (slots._action == SlotAction::Leaving)
    {
        slots._pieces.erase(std::remove_if(slots._pieces.begin(), slots._pieces.end(),
                                           [](const SlotPiece& piece) { return piece._holdersCount == 0; }),
                            slots._pieces.end());
    }
}

SlotOperation invertSlots(SlotOperation slots, InsertedElements insertedElements)
{
    dropIdleLeavings(slots);
    SlotOperation inverse = reverseSlots(slots);
    if (inverse._action == SlotAction::Removal && insertedElements == InsertedElements::AreMarked)
    {
        inverse._action = SlotAction::Marking;
    }
    return inverse;
}

template<class Root>
OperationUPtr invertList(const Root& operation, const Shadows* shadows, InsertedElements insertedElements)
{
    SlotOperations slots;
    slots.push_back(invertSlots(describeSlots(operation, shadows), insertedElements));
    return makeOperationsOnSlots(operation, slots);
}

OperationUPtr invertMap(const MapOperation& operation, const Shadows* shadows)
{
    const auto make = [&](auto typed, const SharedConstPtr<DataValue>& value, auto... holdersCount) -> OperationUPtr
    {
        using Made = typename decltype(typed)::element_type;
        return std::make_unique<Made>(operation.getNodeAddress(), operation.getOperandType(), operation.getKey(), value,
                                      holdersCount...);
    };
    const unsigned long heldBy = shadows ? shadows->_holdersCount : 0;
    return visitWith<OperationUPtr>(
        operation,
        [&](const MapInsert& insert)
        {
            return heldBy == 0 ? make(std::unique_ptr<MapRemove>(), insert.getData())
                               : make(std::unique_ptr<MapLeaveRemovedOperation>(), insert.getData(), heldBy);
        },
        [&](const MapRemove& remove) { return make(std::unique_ptr<MapInsert>(), remove.getData()); },
        [&](const MapLeaveRemovedOperation& leave) -> OperationUPtr
        {
            if (leave.getHoldersCount() == 0)
            {
                return std::make_unique<EmptyOperation>();
            }
            Shadows shadowsOfInsertion;
            shadowsOfInsertion._holdersCount = leave.getHoldersCount();
            return std::make_unique<ShadowedOperation>(std::make_unique<MapInsert>(leave.getNodeAddress(),
                                                                                   leave.getOperandType(),
                                                                                   leave.getKey(), leave.getData()),
                                                       shadowsOfInsertion);
        });
}

NestedTableOperation invertSetting(const SetRowOrColumnPropertyOperation& setting)
{
    return SetRowOrColumnPropertyOperation(setting.getIndex(), setting.getPropertyID(), setting.getSharedNewValue(),
                                           setting.getSharedOldValue());
}

template<class Tag>
OperationUPtr invertTable(const TableRowOrColumnOperation<Tag>& operation, const NodeOperand& operand,
                          InsertedElements insertedElements)
{
    const NestedTableOperation& nested = operation.getNestedOperation();
    const auto make = [&](NestedTableOperation inverse, Shadows shadows)
    {
        return applyShadows(std::make_unique<TableRowOrColumnOperation<Tag>>(
                                operation.getNodeAddress(), operation.getOperandType(), std::move(inverse)),
                            std::move(shadows));
    };
    const auto slots = describeSlots(nested, operand._shadows);
    if (!slots)
    {
        return make(invertSetting(boost::get<SetRowOrColumnPropertyOperation>(nested)), takeOwnShadows(operand));
    }
    const SlotOperation inverse = invertSlots(*slots, insertedElements);
    if (inverse._pieces.empty())
    {
        return std::make_unique<EmptyOperation>();
    }
    const bool isReleasing = inverse._action == SlotAction::Releasing;
    return make(makeNestedOperation(inverse, getRowOrColumn(nested)),
                isReleasing ? inverse._pieces.front().getHolds() : Shadows{});
}

OperationUPtr invertSetProperty(const SetPropertyOperation& operation)
{
    return std::make_unique<SetPropertyOperation>(operation.getNodeAddress(), operation.getOperandType(),
                                                  operation.getPropertyID(), operation.getSharedNewValue(),
                                                  operation.getSharedOldValue());
}

OperationUPtr invertOnNode(const NodeOperand& operand, InsertedElements insertedElements)
{
    const HierarchicalOperation& operation = operand._operation;
    switch (operation.getFamily())
    {
    case HierarchicalOperation::Family::List:
        return invertList(castToFamily<ListOperation>(operation), operand._shadows, insertedElements);
    case HierarchicalOperation::Family::ListMultirange:
        return invertList(castToFamily<ListMultirangeOperation>(operation), operand._shadows, insertedElements);
    case HierarchicalOperation::Family::Map:
        return invertMap(castToFamily<MapOperation>(operation), operand._shadows);
    case HierarchicalOperation::Family::SetProperty:
        return invertSetProperty(castToFamily<SetPropertyOperation>(operation));
    case HierarchicalOperation::Family::Table:
        return visitWith<OperationUPtr>(castToFamily<TableOperation>(operation), [&](const auto& typed)
                                        { return invertTable(typed, operand, insertedElements); });
    }
    ZEM_FAIL("The operation is of no family.");
}

OperationUPtr invertOperand(const NodeOperand& operand, InsertedElements insertedElements)
{
    if (operand._shadows && operand._shadows->areForGood())
    {
        return std::make_unique<EmptyOperation>();
    }
    OperationUPtr inverse = invertOnNode(operand, insertedElements);
    if (operand._shadows)
    {
        const unsigned long nodeDepth = operand._operation.getNodeAddress().getSize();
        std::vector<DeadPlace> deadPlacesAbove = operand._shadows->_deadPlaces;
        std::erase_if(deadPlacesAbove, [&](const DeadPlace& deadPlace) { return deadPlace._chunkIndex >= nodeDepth; });
        inverse = addDeadPlaces(std::move(inverse), deadPlacesAbove);
    }
    return inverse;
}

/// Whatever isn't composite.
OperationUPtr invertSingle(const Operation& operation, InsertedElements insertedElements)
{
    if (getIf<EmptyOperation>(operation))
    {
        return std::make_unique<EmptyOperation>();
    }
    return invertOperand(makeNodeOperand(operation), insertedElements);
}

OperationUPtr reverseParts(const CompositeOperation& composite)
{
    const std::vector<OperationUPtr>& parts = composite.getParts();
    std::vector<OperationUPtr> reversals;
    reversals.reserve(parts.size());
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
    {
        reversals.push_back(makeReversal(**part));
    }
    return makeOperationFromParts(std::move(reversals));
}

} // namespace

OperationUPtr makeReversal(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    OperationUPtr reversal =
        composite ? reverseParts(*composite) : invertSingle(operation, InsertedElements::GoForGood);
    return withIDOf(operation, std::move(reversal));
}

OperationUPtr makeUndo(const Operation& operation, const BaseOperationTransformer& transformer)
{
    if (const auto* composite = getIf<CompositeOperation>(operation))
    {
        return makeOperationFromParts(undoParts(composite->getParts(), transformer));
    }
    return invertSingle(operation, InsertedElements::AreMarked);
}

} // namespace Zem::CollaborationEngine

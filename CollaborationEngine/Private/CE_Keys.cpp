#include "CE_Keys.h"

#include "Util_Cast.h"

namespace Zem::CollaborationEngine
{

namespace
{

template<class T, class... Arguments>
std::unique_ptr<T> makeLike(const NodeOperand& operand, const SharedConstPtr<DataValue>& value, Arguments... arguments)
{
    const auto& model = castToFamily<MapOperation>(operand._operation);
    auto operation =
        std::make_unique<T>(model.getNodeAddress(), model.getOperandType(), model.getKey(), value, arguments...);
    operation->inheritIDIfPossibleImpl(model);
    return operation;
}

} // namespace

MapAction getMapAction(const NodeOperand& operand)
{
    return visitWith<MapAction>(
        castToFamily<MapOperation>(operand._operation),
        [&](const MapInsert&) { return isHeldDown(operand) ? MapAction::Releasing : MapAction::Insertion; },
        [](const MapRemove&) { return MapAction::Removal; },
        [](const MapLeaveRemovedOperation&) { return MapAction::Leaving; });
}

const SharedConstPtr<DataValue>& getInsertedValue(const NodeOperand& operand)
{
    return cast<MapInsert>(operand._operation).getData();
}

const SharedConstPtr<DataValue>& getRemovedValue(const NodeOperand& operand)
{
    return cast<MapRemove>(operand._operation).getData();
}

const SharedConstPtr<DataValue>& getLeftValue(const NodeOperand& operand)
{
    return cast<MapLeaveRemovedOperation>(operand._operation).getData();
}

unsigned long getKeyHoldersCount(const NodeOperand& operand)
{
    return cast<MapLeaveRemovedOperation>(operand._operation).getHoldersCount();
}

std::unique_ptr<MapInsert> makeKeyInsertion(const NodeOperand& operand, const SharedConstPtr<DataValue>& value)
{
    return makeLike<MapInsert>(operand, value);
}

std::unique_ptr<MapRemove> makeKeyRemoval(const NodeOperand& operand, const SharedConstPtr<DataValue>& value)
{
    return makeLike<MapRemove>(operand, value);
}

OperationUPtr makeKeyLeaving(const NodeOperand& operand, const SharedConstPtr<DataValue>& value,
                             unsigned long holdersCount)
{
    return makeLike<MapLeaveRemovedOperation>(operand, value, holdersCount);
}

} // namespace Zem::CollaborationEngine

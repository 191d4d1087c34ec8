#include "CE_MapTransformers.h"

#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

using NodeAddressing::AddressInMap;

AddressChange changeEntry(AddressChange::Kind kind, unsigned long chunkIndex, const SharedConstPtr<DataValue>& value)
{
    DeadPlace deadPlace;
    deadPlace._chunkIndex = chunkIndex;
    deadPlace._removedValue = value;
    return AddressChange{kind, deadPlace};
}

} // namespace

OperationUPtr MapSameNodeTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                              TieResolveCondition tieResolveCondition) const
{
    const auto& firstOperation = castToFamily<MapOperation>(first._operation);
    const auto& secondOperation = castToFamily<MapOperation>(second._operation);
    if (!(derefPtr(firstOperation.getKey()) == derefPtr(secondOperation.getKey())))
    {
        return cloneWithoutShadowsAbove(first);
    }
    const MapPairRule rule = getMapPairRule(getMapAction(first), getMapAction(second));
    return rule ? rule(first, second, tieResolveCondition) : cloneWithoutShadowsAbove(first);
}

AddressChange AncestorMapModificationTransformer::include(OperationNodeAddress& address,
                                                          const HierarchicalOperation& modification) const
{
    const unsigned long chunkIndex = modification.getNodeAddress().getSize();
    const auto& operation = castToFamily<MapOperation>(modification);
    const auto* chunk = boost::get<AddressInMap>(&address.getItem(chunkIndex));
    if (!chunk || !(*chunk == AddressInMap(operation.getKey())))
    {
        return AddressChange{};
    }
    return visitWith<AddressChange>(
        operation,
        [&](const MapInsert& insert)
        { return changeEntry(AddressChange::Kind::ComesBack, chunkIndex, insert.getData()); },
        [&](const MapRemove& remove) { return changeEntry(AddressChange::Kind::Dies, chunkIndex, remove.getData()); },
        [](const MapLeaveRemovedOperation&) { return AddressChange{}; });
}

/// A position keeps its key, whether the map holds it or not.
void MapNodePositionTransformer::include(const HierarchicalOperation&, NodeAddressWithTransformationData&) const
{
}

void MapNodePositionTransformer::exclude(const HierarchicalOperation&, NodeAddressWithTransformationData&) const
{
}

} // namespace Zem::CollaborationEngine

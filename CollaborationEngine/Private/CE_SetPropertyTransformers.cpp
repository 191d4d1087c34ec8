#include "CE_SetPropertyTransformers.h"

#include "CE_MergeProperties.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

SetPropertyOperationTransformer::SetPropertyOperationTransformer(std::shared_ptr<SetPropertyDataMerger> merger)
    : _merger(std::move(merger))
{
    derefPtr(_merger);
}

OperationUPtr SetPropertyOperationTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                                       TieResolveCondition tieResolveCondition) const
{
    const auto& firstOperation = castToFamily<SetPropertyOperation>(first._operation);
    const auto& secondOperation = castToFamily<SetPropertyOperation>(second._operation);
    if (firstOperation.getPropertyID() != secondOperation.getPropertyID())
    {
        return cloneOperation(firstOperation);
    }
    auto merged = std::make_unique<SetPropertyOperation>(
        firstOperation.getNodeAddress(), firstOperation.getOperandType(), firstOperation.getPropertyID(),
        secondOperation.getSharedNewValue(),
        mergeProperties(*_merger, firstOperation, secondOperation, tieResolveCondition));
    merged->inheritIDIfPossibleImpl(firstOperation);
    return merged;
}

namespace
{

/// Whether a property stands for the child below as a whole, and replaces it: its number is that of the child's type.
bool replacesChild(const SetPropertyOperation& operation, const OperationNodeAddress& address)
{
    using Child = OperationNodeAddress::FixedChunk;
    const auto* child = boost::get<Child>(&address.getItem(operation.getNodeAddress().getSize()));
    return child && child->getNodeType() == operation.getPropertyID();
}

/// A position inside a child that is replaced goes to the child's beginning.
void leaveReplacedChild(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position)
{
    OperationNodeAddress& address = position.getAddress();
    const unsigned long childIndex = operation.getNodeAddress().getSize();
    if (childIndex + 1 == address.getSize() || !replacesChild(castToFamily<SetPropertyOperation>(operation), address))
    {
        return;
    }
    address.trimAtEnd(address.getSize() - childIndex - 1);
    address.appendItems(NodeAddressing::AddressInList(0));
    std::erase_if(position.getRevertedInsertOperations(),
                  [&](const RevertedInsertOperationInfo& info) { return info._chunkIndex > childIndex; });
}

} // namespace

AddressChange AncestorSetPropertyModificationTransformer::include(OperationNodeAddress& address,
                                                                  const HierarchicalOperation& modification) const
{
    const bool isReplaced = replacesChild(castToFamily<SetPropertyOperation>(modification), address);
    return AddressChange{isReplaced ? AddressChange::Kind::IsGone : AddressChange::Kind::Follows};
}

void SetPropertyPositionTransformer::include(const HierarchicalOperation& operation,
                                             NodeAddressWithTransformationData& position) const
{
    leaveReplacedChild(operation, position);
}

void SetPropertyPositionTransformer::exclude(const HierarchicalOperation& operation,
                                             NodeAddressWithTransformationData& position) const
{
    leaveReplacedChild(operation, position);
}

} // namespace Zem::CollaborationEngine

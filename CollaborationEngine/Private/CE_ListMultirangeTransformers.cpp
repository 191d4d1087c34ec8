#include "CE_ListMultirangeTransformers.h"

#include "CE_ListAddresses.h"
#include "CE_ListSlots.h"

namespace Zem::CollaborationEngine
{

OperationUPtr ListMultirangeSameNodeTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                                         TieResolveCondition tieResolveCondition) const
{
    return includeListOperation<ListMultirangeOperation>(first, second, tieResolveCondition);
}

AddressChange AncestorListMultirangeModificationTransformer::include(OperationNodeAddress& address,
                                                                     const HierarchicalOperation& modification) const
{
    return includeInListAddress(address, modification.getNodeAddress().getSize(),
                                describeSlots(castToFamily<ListMultirangeOperation>(modification), nullptr));
}

void ListMultirangeNodePositionTransformer::include(const HierarchicalOperation& operation,
                                                    NodeAddressWithTransformationData& position) const
{
    includeInListPosition(position, operation,
                          describeSlots(castToFamily<ListMultirangeOperation>(operation), nullptr));
}

void ListMultirangeNodePositionTransformer::exclude(const HierarchicalOperation& operation,
                                                    NodeAddressWithTransformationData& position) const
{
    includeInListPosition(position, operation,
                          reverseSlots(describeSlots(castToFamily<ListMultirangeOperation>(operation), nullptr)));
}

} // namespace Zem::CollaborationEngine

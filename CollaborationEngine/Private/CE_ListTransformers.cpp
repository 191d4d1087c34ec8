#include "CE_ListTransformers.h"

#include "CE_ListAddresses.h"
#include "CE_ListSlots.h"

namespace Zem::CollaborationEngine
{

OperationUPtr ListSameNodeTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                               TieResolveCondition tieResolveCondition) const
{
    return includeListOperation<ListOperation>(first, second, tieResolveCondition);
}

AddressChange AncestorListModificationTransformer::include(OperationNodeAddress& address,
                                                           const HierarchicalOperation& modification) const
{
    return includeInListAddress(address, modification.getNodeAddress().getSize(),
                                describeSlots(castToFamily<ListOperation>(modification), nullptr));
}

void ListNodePositionTransformer::include(const HierarchicalOperation& operation,
                                          NodeAddressWithTransformationData& position) const
{
    includeInListPosition(position, operation, describeSlots(castToFamily<ListOperation>(operation), nullptr));
}

void ListNodePositionTransformer::exclude(const HierarchicalOperation& operation,
                                          NodeAddressWithTransformationData& position) const
{
    includeInListPosition(position, operation,
                          reverseSlots(describeSlots(castToFamily<ListOperation>(operation), nullptr)));
}

} // namespace Zem::CollaborationEngine

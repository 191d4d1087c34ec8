#pragma once

/// The transformers of lists that are changed by multirange operations: of text.

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_NodePositionTransformer.h"
#include "CE_SameNodeTransformer.h"

namespace Zem::CollaborationEngine
{

/// Transforms operations on a list that is changed by multirange operations against each other.
class ZEM_EXPORT ListMultirangeSameNodeTransformer final : public SameNodeTransformer
{
public:
    OperationUPtr include(const NodeOperand& first, const NodeOperand& second,
                          TieResolveCondition tieResolveCondition) const override;
};

/// Transforms addresses below a list that is changed by multirange operations against operations on it.
class ZEM_EXPORT AncestorListMultirangeModificationTransformer final : public AncestorCollectionModificationTransformer
{
public:
    AddressChange include(OperationNodeAddress& address, const HierarchicalOperation& modification) const override;
};

/// Moves positions across operations on a list that is changed by multirange operations.
class ZEM_EXPORT ListMultirangeNodePositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
    void exclude(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
};

} // namespace Zem::CollaborationEngine

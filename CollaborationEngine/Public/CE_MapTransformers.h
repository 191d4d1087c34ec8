#pragma once

/// The transformers of nodes that are maps.

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_NodePositionTransformer.h"
#include "CE_SameNodeTransformer.h"

namespace Zem::CollaborationEngine
{

/// Transforms operations on a map against each other.
class ZEM_EXPORT MapSameNodeTransformer final : public SameNodeTransformer
{
public:
    OperationUPtr include(const NodeOperand& first, const NodeOperand& second,
                          TieResolveCondition tieResolveCondition) const override;
};

/// Transforms addresses below a map against operations on it.
class ZEM_EXPORT AncestorMapModificationTransformer final : public AncestorCollectionModificationTransformer
{
public:
    AddressChange include(OperationNodeAddress& address, const HierarchicalOperation& modification) const override;
};

/// Moves positions across operations on a map.
class ZEM_EXPORT MapNodePositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
    void exclude(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
};

} // namespace Zem::CollaborationEngine

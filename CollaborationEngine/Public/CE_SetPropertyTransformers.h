#pragma once

/// The transformers of nodes that have properties alone.

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_NodePositionTransformer.h"
#include "CE_SameNodeTransformer.h"
#include "CE_SetPropertyDataMerger.h"

#include <memory>

namespace Zem::CollaborationEngine
{

/// Transforms operations on the properties of a node against each other.
class ZEM_EXPORT SetPropertyOperationTransformer final : public SameNodeTransformer
{
public:
    /// Fails: "plainPtr" for null.
    explicit SetPropertyOperationTransformer(std::shared_ptr<SetPropertyDataMerger> merger);

    OperationUPtr include(const NodeOperand& first, const NodeOperand& second,
                          TieResolveCondition tieResolveCondition) const override;

    const SetPropertyDataMerger& getMerger() const
    {
        return *_merger;
    }

private:
    std::shared_ptr<SetPropertyDataMerger> _merger;
};

/// Transforms addresses below a node against operations on its properties.
class ZEM_EXPORT AncestorSetPropertyModificationTransformer final : public AncestorCollectionModificationTransformer
{
public:
    AddressChange include(OperationNodeAddress& address, const HierarchicalOperation& modification) const override;
};

/// Moves positions across operations on the properties of a node.
class ZEM_EXPORT SetPropertyPositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
    void exclude(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
};

} // namespace Zem::CollaborationEngine

#pragma once

/// The transformers of cell collections.

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_NodePositionTransformer.h"
#include "CE_SameNodeTransformer.h"
#include "CE_SetPropertyDataMerger.h"

#include <memory>

namespace Zem::CollaborationEngine
{

/// Transforms operations on a table's rows and columns against each other.
class ZEM_EXPORT TableSameNodeTransformer final : public SameNodeTransformer
{
public:
    /// Fails: "plainPtr" for null.
    explicit TableSameNodeTransformer(std::shared_ptr<SetPropertyDataMerger> merger);

    OperationUPtr include(const NodeOperand& first, const NodeOperand& second,
                          TieResolveCondition tieResolveCondition) const override;

    const SetPropertyDataMerger& getMerger() const
    {
        return *_merger;
    }

private:
    std::shared_ptr<SetPropertyDataMerger> _merger;
};

/// Transforms addresses below a table against operations on its rows and columns.
class ZEM_EXPORT AncestorTableModificationTransformer final : public AncestorCollectionModificationTransformer
{
public:
    AddressChange include(OperationNodeAddress& address, const HierarchicalOperation& modification) const override;
};

/// Moves positions across operations on a table's rows and columns.
class ZEM_EXPORT TableNodePositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
    void exclude(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const override;
};

} // namespace Zem::CollaborationEngine

#pragma once

#include "CE_HierarchicalOperation.h"
#include "CE_Shadows.h"
#include "CE_TieResolveCondition.h"

namespace Zem::CollaborationEngine
{

/// One of two operations on one node, and what lies on it, if anything does.
struct NodeOperand
{
    const HierarchicalOperation& _operation;
    const Shadows* _shadows = nullptr;
};

/// Transforms operations on a node against others on the same node. One serves all nodes of a type.
class ZEM_EXPORT SameNodeTransformer
{
public:
    virtual ~SameNodeTransformer();

    /// `first` as it has to be if `second` ran before it. Shadows on elements above the node stay out of the result;
    /// the caller puts them back.
    virtual OperationUPtr include(const NodeOperand& first, const NodeOperand& second,
                                  TieResolveCondition tieResolveCondition) const = 0;
};

} // namespace Zem::CollaborationEngine

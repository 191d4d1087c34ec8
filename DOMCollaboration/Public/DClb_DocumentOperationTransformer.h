#pragma once

#include "CE_HierarchicalOperationTransformer.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Brings an operation on a document past a concurrent one. Read-only once built, so that several threads may use it.
class ZEM_EXPORT DocumentOperationTransformer final : public CollaborationEngine::HierarchicalOperationTransformer
{
public:
    /// Registers what the node factories make for each type of node.
    DocumentOperationTransformer();
    ~DocumentOperationTransformer() override;

    /// As in the base class; neighbouring pieces of a multirange result are joined.
    CollaborationEngine::OperationUPtr
    include(const CollaborationEngine::Operation& first, const CollaborationEngine::Operation& second,
            CollaborationEngine::TieResolveCondition tieResolveCondition) const override;
};

} // namespace Zem::DOMCollaboration

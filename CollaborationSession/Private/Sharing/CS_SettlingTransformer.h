#pragma once

#include "CE_BaseOperationTransformer.h"
#include "CE_SetPropertyOperation.h"

#include <memory>

namespace Zem::CollaborationSession
{

/// Whether two operations each bring a value for one thing, so that one of the values stands.
bool areSettingsOfOneThing(const CollaborationEngine::Operation& first, const CollaborationEngine::Operation& second);

/// Transforms as documents do, and two settings of one section, which documents don't bring past each other: the
/// winner's value stands as a whole, and a setting finds what the other one left.
class SettlingTransformer final : public CollaborationEngine::BaseOperationTransformer
{
public:
    SettlingTransformer();
    ~SettlingTransformer() override;

    /// Neighbouring pieces of a multirange result are joined, as a document's transformer does.
    CollaborationEngine::OperationUPtr
    include(const CollaborationEngine::Operation& first, const CollaborationEngine::Operation& second,
            CollaborationEngine::TieResolveCondition tieResolveCondition) const override;

    CollaborationEngine::OperationUPtr
    includeImpl(const CollaborationEngine::AtomicOperation& first, const CollaborationEngine::AtomicOperation& second,
                CollaborationEngine::TieResolveCondition tieResolveCondition) const override;
    CollaborationEngine::OperationUPtr
    includeImpl(const CollaborationEngine::ShadowedOperation& first, const CollaborationEngine::AtomicOperation& second,
                CollaborationEngine::TieResolveCondition tieResolveCondition) const override;
    CollaborationEngine::OperationUPtr
    includeImpl(const CollaborationEngine::Operation& first, const CollaborationEngine::ShadowedOperation& second,
                CollaborationEngine::TieResolveCondition tieResolveCondition) const override;

private:
    std::unique_ptr<CollaborationEngine::BaseOperationTransformer> _documentTransformer;
};

} // namespace Zem::CollaborationSession

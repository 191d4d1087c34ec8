#pragma once

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_BaseOperationTransformer.h"
#include "CE_SameNodeTransformer.h"

#include <boost/container/flat_map.hpp>

#include <memory>

namespace Zem::CollaborationEngine
{

/// Transforms operations on nodes against each other by what is registered for the node types: a `SameNodeTransformer`
/// where both are aimed at one node, an `AncestorCollectionModificationTransformer` where one is aimed at an ancestor
/// of the other's node. Operations on nodes of which neither contains the other don't touch each other.
class ZEM_EXPORT HierarchicalOperationTransformer : public BaseOperationTransformer
{
public:
    /// Fails: "isNew" when the node type has one already; "plainPtr" for null.
    void registerSameNodeTransformer(unsigned long nodeType, std::shared_ptr<SameNodeTransformer> transformer);
    void registerAdressModifierTransformer(unsigned long nodeType,
                                           std::shared_ptr<AncestorCollectionModificationTransformer> transformer);

    /// What is registered for a node type; null if nothing is.
    const SameNodeTransformer* findSameNodeTransformer(unsigned long nodeType) const;
    const AncestorCollectionModificationTransformer* findAdressModifierTransformer(unsigned long nodeType) const;

    /// All three fail with `std::bad_cast` for an atomic operation that isn't hierarchical, and with
    /// "transformerIt != _sameNodeTransformers.end()" or "transformerIt != _adressModifierTransformers.end()" where
    /// they need what isn't registered.
    OperationUPtr includeImpl(const AtomicOperation& first, const AtomicOperation& second,
                              TieResolveCondition tieResolveCondition) const override;
    OperationUPtr includeImpl(const ShadowedOperation& first, const AtomicOperation& second,
                              TieResolveCondition tieResolveCondition) const override;
    OperationUPtr includeImpl(const Operation& first, const ShadowedOperation& second,
                              TieResolveCondition tieResolveCondition) const override;

private:
    OperationUPtr includeOperand(const NodeOperand& first, const NodeOperand& second,
                                 TieResolveCondition tieResolveCondition) const;
    OperationUPtr includeSameNode(const NodeOperand& first, const NodeOperand& second,
                                  TieResolveCondition tieResolveCondition) const;
    OperationUPtr includeAncestor(const NodeOperand& first, const HierarchicalOperation& ancestorsChange) const;
    OperationUPtr bringAlong(OperationUPtr restoring, const NodeOperand& first, const NodeOperand& second,
                             TieResolveCondition tieResolveCondition) const;

    boost::container::flat_map<unsigned long, std::shared_ptr<SameNodeTransformer>> _sameNodeTransformers;
    boost::container::flat_map<unsigned long, std::shared_ptr<AncestorCollectionModificationTransformer>>
        _adressModifierTransformers;
};

} // namespace Zem::CollaborationEngine

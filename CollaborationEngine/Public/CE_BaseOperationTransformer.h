#pragma once

#include "CE_Operation.h"
#include "CE_TieResolveCondition.h"

namespace Zem::CollaborationEngine
{

/// Transforms operations against concurrent ones. This class unpacks: empty operations are neutral, composite ones are
/// transformed against each other part by part. What two single operations mean to each other its sub-classes know.
///
/// Thread-safe: a transformer is read-only once it is filled.
class ZEM_EXPORT BaseOperationTransformer
{
public:
    BaseOperationTransformer() = default;
    BaseOperationTransformer(const BaseOperationTransformer&) = delete;
    BaseOperationTransformer& operator=(const BaseOperationTransformer&) = delete;
    virtual ~BaseOperationTransformer();

    /// `first` as it has to be if `second` ran before it. Requires: both were made in one state. The result bears the
    /// id of `first`; where nothing is left of it, it is an `EmptyOperation`. Fails: what the `includeImpl` of the
    /// sub-class fails with.
    /// Cost: one transformation for each pair of their parts.
    virtual OperationUPtr include(const Operation& first, const Operation& second,
                                  TieResolveCondition tieResolveCondition) const;

    virtual OperationUPtr includeImpl(const AtomicOperation& first, const AtomicOperation& second,
                                      TieResolveCondition tieResolveCondition) const = 0;
    virtual OperationUPtr includeImpl(const ShadowedOperation& first, const AtomicOperation& second,
                                      TieResolveCondition tieResolveCondition) const = 0;

    /// `first` is atomic or shadowed.
    virtual OperationUPtr includeImpl(const Operation& first, const ShadowedOperation& second,
                                      TieResolveCondition tieResolveCondition) const = 0;
};

} // namespace Zem::CollaborationEngine

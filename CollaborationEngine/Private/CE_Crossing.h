#pragma once

/// How composite operations are transformed against each other.

#include "CE_BaseOperationTransformer.h"
#include "CE_OperationParts.h"

#include <boost/optional.hpp>

#include <span>

namespace Zem::CollaborationEngine
{

/// Transforms two sequences of operations against each other, part by part:
///
///          b1      b2
///        o------o------o
///     a1 |      |      |        each cell transforms the operation on its left and the one above it
///        o------o------o        against each other; what leaves on the right is the first sequence
///     a2 |      |      |        transformed against the second, what leaves below is the second
///        o------o------o        transformed against the first
///
/// A part is an atomic or a shadowed operation, or a composite that brings shadowed operations along. Only a part that
/// splits is taken through a grid of its own, so that the depth of the calls depends on the splits and not on the
/// length.
class Crossing
{
public:
    using Parts = OperationParts;

    explicit Crossing(const BaseOperationTransformer& transformer)
        : _transformer(transformer)
    {
    }

    /// Transforms `first` against `second`, and `second` against `first` if `isSecondNeeded`; else that is left in no
    /// particular state.
    void cross(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;

    /// One atomic or shadowed operation, transformed against another one.
    OperationUPtr includeSingle(const Operation& first, const Operation& second,
                                TieResolveCondition tieResolveCondition) const;

private:
    void crossOne(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;
    void crossCell(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;
    void crossUnits(Parts& first, Parts& second, TieResolveCondition tieResolveCondition) const;
    void dropPartsOfRestored(Parts& unit, const Parts& reversals) const;
    bool isKilled(const Operation& part, const Operation& reversal) const;
    bool joinRestoring(Parts& restoring, Parts& shadowed, TieResolveCondition tieResolveCondition) const;
    boost::optional<Parts> endShadows(const Operation& shadowed, std::span<const OperationUPtr> restoring,
                                      TieResolveCondition tieResolveCondition) const;
    void transformAgainstChange(Parts& unshadowed, ChangeOfRestoring& change,
                                TieResolveCondition tieResolveCondition) const;

    const BaseOperationTransformer& _transformer;
};

} // namespace Zem::CollaborationEngine

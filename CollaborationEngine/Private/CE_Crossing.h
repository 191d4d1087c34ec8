#pragma once

/// How composite operations are brought past each other.

#include "CE_BaseOperationTransformer.h"
#include "CE_OperationParts.h"

#include <boost/optional.hpp>

#include <span>

namespace Zem::CollaborationEngine
{

/// Brings two sequences of operations past each other, part by part:
///
///          b1      b2
///        o------o------o
///     a1 |      |      |        each cell brings the operation on its left and the one above it past each other;
///        o------o------o        what leaves on the right is the first sequence past the second, what leaves below
///     a2 |      |      |        is the second past the first
///        o------o------o
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

    /// Brings `first` past `second`, and `second` past `first` if `isSecondNeeded`; otherwise that is left in no
    /// particular state.
    void cross(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;

    /// One atomic or shadowed operation past another one.
    OperationUPtr includeSingle(const Operation& first, const Operation& second,
                                TieResolveCondition tieResolveCondition) const;

private:
    void crossOne(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;
    void crossCell(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const;
    void crossUnits(Parts& first, Parts& second, TieResolveCondition tieResolveCondition) const;
    void dropPartsOfRestored(Parts& unit, const Parts& reversals) const;
    bool isKilled(const Operation& part, const Operation& reversal) const;
    bool joinRestoring(Parts& restoring, Parts& shadowed, TieResolveCondition tieResolveCondition) const;
    boost::optional<Parts> awaken(const Operation& shadowed, std::span<const OperationUPtr> restoring,
                                  TieResolveCondition tieResolveCondition) const;
    void goTheWay(Parts& awakened, ChangeOfRestoring& change, TieResolveCondition tieResolveCondition) const;

    const BaseOperationTransformer& _transformer;
};

} // namespace Zem::CollaborationEngine

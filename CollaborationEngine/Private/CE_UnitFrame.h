#pragma once

#include "CE_BaseOperationTransformer.h"
#include "CE_OperationParts.h"

namespace Zem::CollaborationEngine
{

/// What holds the parts of a unit together.
class UnitFrame
{
public:
    explicit UnitFrame(const Operation& operation);

    bool isUnit() const
    {
        return _kind != CompositeKind::Plain;
    }

    /// Transforms what the unit was to be against `other`, too, which runs in the same state.
    void crossChange(const Operation& other, const BaseOperationTransformer& transformer,
                     TieResolveCondition tieResolveCondition);

    /// Makes the parts one unit again, if they were one.
    OperationParts putAround(OperationParts parts) &&;

private:
    CompositeKind _kind;
    ChangeOfRestoring _change;
    EmptyOperation _id;
};

} // namespace Zem::CollaborationEngine

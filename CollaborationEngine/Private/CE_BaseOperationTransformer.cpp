#include "CE_BaseOperationTransformer.h"

#include "CE_Crossing.h"
#include "CE_OperationKinds.h"

namespace Zem::CollaborationEngine
{

BaseOperationTransformer::~BaseOperationTransformer() = default;

OperationUPtr BaseOperationTransformer::include(const Operation& first, const Operation& second,
                                                TieResolveCondition tieResolveCondition) const
{
    if (getIf<EmptyOperation>(first) || getIf<EmptyOperation>(second))
    {
        return cloneOperation(first);
    }
    const Crossing crossing(*this);
    OperationUPtr result;
    if (getIf<CompositeOperation>(first) || getIf<CompositeOperation>(second))
    {
        Crossing::Parts firstParts = takeParts(first);
        Crossing::Parts secondParts = takeParts(second);
        crossing.cross(firstParts, secondParts, tieResolveCondition, false);
        result = makeOperationFromParts(std::move(firstParts));
    }
    else
    {
        result = crossing.includeSingle(first, second, tieResolveCondition);
    }
    return withIDOf(first, std::move(result));
}

} // namespace Zem::CollaborationEngine

#include "CE_Holders.h"
#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

/// The removal that did nothing, since the value was gone already, takes effect now.
OperationUPtr includeKeyLeavingPastInsertion(const NodeOperand& first, const NodeOperand&, TieResolveCondition)
{
    if (getKeyHoldersCount(first) == 0)
    {
        return cloneWithoutShadowsAbove(first);
    }
    return makeKeyRemoval(first, getLeftValue(first));
}

OperationUPtr includeKeyLeavingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return makeKeyLeaving(first, getLeftValue(first),
                          countHoldersPastLeaving(getKeyHoldersCount(first), getKeyHoldersCount(second)));
}

OperationUPtr includeKeyLeavingPastReleasing(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return makeKeyLeaving(first, getLeftValue(first),
                          getKeyHoldersCount(first) == 0 ? 0 : second._shadows->_holdersCount);
}

} // namespace Zem::CollaborationEngine

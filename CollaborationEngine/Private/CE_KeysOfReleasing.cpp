#include "CE_Holders.h"
#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

/// A key that is in the map again needs nothing more.
OperationUPtr includeKeyReleasingPastInsertion(const NodeOperand& first, const NodeOperand&, TieResolveCondition)
{
    return makeNothing(first);
}

OperationUPtr includeKeyReleasingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    Shadows shadows = makeHolds(*first._shadows);
    shadows._holdersCount += getKeyHoldersCount(second) == 0 ? 0 : 1;
    return applyShadows(makeKeyInsertion(first, getInsertedValue(first)), shadows);
}

/// Once nothing holds the key out any more, the value of an insertion comes in that the removals held back, and not one
/// that undoing a removal would bring back.
OperationUPtr includeKeyReleasingPastReleasing(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    Shadows shadows = makeHolds(*first._shadows);
    const auto holdersCount = countHoldersPastReleasing(shadows, *second._shadows);
    if (!holdersCount)
    {
        return makeNothing(first);
    }
    const bool isOtherAnInsertion = second._shadows->_releasesAll && !shadows._releasesAll;
    shadows._holdersCount = *holdersCount;
    const NodeOperand& source = isOtherAnInsertion && *holdersCount == 0 ? second : first;
    return applyShadows(makeKeyInsertion(first, getInsertedValue(source)), shadows);
}

} // namespace Zem::CollaborationEngine

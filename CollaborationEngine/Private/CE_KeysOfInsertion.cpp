#include "CE_Holders.h"
#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

/// The winner's value stands.
OperationUPtr includeKeyInsertionPastInsertion(const NodeOperand& first, const NodeOperand& second,
                                               TieResolveCondition tieResolveCondition)
{
    if (tieResolveCondition == TieResolveCondition::SecondWins)
    {
        return makeNothing(first);
    }
    std::vector<OperationUPtr> parts;
    parts.push_back(makeKeyRemoval(first, getInsertedValue(second)));
    parts.push_back(makeKeyInsertion(first, getInsertedValue(first)));
    auto replacement = std::make_unique<CompositeOperation>(std::move(parts));
    replacement->inheritIDIfPossibleImpl(first._operation);
    return replacement;
}

/// What another removal holds out stays out; the insertion only lets go.
OperationUPtr includeKeyInsertionPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return applyShadows(makeKeyInsertion(first, getInsertedValue(first)),
                        getKeyHoldersCount(second) == 0 ? Shadows{} : makeHoldsPastLeaving());
}

} // namespace Zem::CollaborationEngine

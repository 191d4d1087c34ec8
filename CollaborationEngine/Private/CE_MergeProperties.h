#pragma once

#include "CE_SetPropertyDataMerger.h"
#include "CE_TieResolveCondition.h"

namespace Zem::CollaborationEngine
{

/// The value of a property that two operations set, which are told by their property id, old and new values. It is the
/// same for both, so that it doesn't matter which is brought past the other: the winner's new value, filled up with
/// what the loser changed and the winner didn't.
template<class PropertyOperation>
std::unique_ptr<DataValue> mergeProperties(const SetPropertyDataMerger& merger, const PropertyOperation& first,
                                           const PropertyOperation& second, TieResolveCondition tieResolveCondition)
{
    const bool isFirstWinner = tieResolveCondition == TieResolveCondition::FirstWins;
    const PropertyOperation& winner = isFirstWinner ? first : second;
    const PropertyOperation& loser = isFirstWinner ? second : first;
    return merger.getMergedValue(winner.getPropertyID(), winner.getNewValue(), loser.getNewValue(),
                                 winner.getOldValue(), winner.getNewValue());
}

} // namespace Zem::CollaborationEngine

#include "Sharing/CS_MoveSelections.h"

#include "Sharing/CS_MatchElements.h"

#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

template<class Move>
void moveOrDrop(const Operation& operation, Selections& selections, const Move& move)
{
    for (auto owned = selections.begin(); owned != selections.end();)
    {
        try
        {
            move(owned->second);
            ++owned;
        }
        catch (const std::exception&)
        {
            // Some nodes move no position at all, and say so; their properties leave every position where it is.
            owned = cast<SetPropertyOperation>(&operation) ? std::next(owned) : selections.erase(owned);
        }
    }
}

using Insertion = ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;

/// `matches` gives for each element of `planned` its number among those that happened.
void followChangedInsertion(const Insertion& planned, const std::vector<std::size_t>& matches,
                            NodeAddressWithTransformationData& position)
{
    // One that sticks to the element in front of it remembers the offset behind that.
    const unsigned long offset = position.sticksToPrevious() ? 1 : 0;
    const auto isGone = [&](RevertedInsertOperationInfo& info)
    {
        const bool isPlanned =
            planned.getID() && info._operationID == *planned.getID() && info._container == planned.getNodeAddress();
        if (!isPlanned)
        {
            return false;
        }
        const unsigned long element = info._indexOfItemInCollection - offset;
        const bool isThere = element < matches.size() && matches[element] != noMatch;
        info._indexOfItemInCollection = isThere ? matches[element] + offset : 0;
        return !isThere;
    };
    auto& reverted = position.getRevertedInsertOperations();
    reverted.erase(std::remove_if(reverted.begin(), reverted.end(), isGone), reverted.end());
}

} // namespace

void includeInSelections(BaseClientEditingStateTransformer& transformer, const Operation& operation,
                         Selections& selections)
{
    if (selections.empty())
    {
        return;
    }
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        for (const OperationUPtr& part : composite->getParts())
        {
            includeInSelections(transformer, *part, selections);
        }
        return;
    }
    moveOrDrop(operation, selections, [&](Selection& selection) { transformer.include(operation, selection); });
}

void excludeFromSelections(BaseClientEditingStateTransformer& transformer, const Operation& operation,
                           Selections& selections)
{
    if (selections.empty())
    {
        return;
    }
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        const auto& parts = composite->getParts();
        for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        {
            excludeFromSelections(transformer, **part, selections);
        }
        return;
    }
    moveOrDrop(operation, selections, [&](Selection& selection) { transformer.exclude(operation, selection); });
}

void followChangedInsertion(const Operation& planned, const Operation& happened, Selections& selections)
{
    const auto* plannedInsertion = cast<Insertion>(&planned);
    const auto* happenedInsertion = cast<Insertion>(&happened);
    if (!plannedInsertion || !happenedInsertion || selections.empty())
    {
        return;
    }
    const std::vector<std::size_t> matches = matchElements(*plannedInsertion, *happenedInsertion);
    for (auto& [owner, selection] : selections)
    {
        followChangedInsertion(*plannedInsertion, matches, selection.getSelectionBegin());
        followChangedInsertion(*plannedInsertion, matches, selection.getSelectionEnd());
    }
}

} // namespace Zem::CollaborationSession

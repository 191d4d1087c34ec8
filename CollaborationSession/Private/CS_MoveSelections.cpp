#include "CS_MoveSelections.h"

#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

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

} // namespace

void includeInSelections(BaseClientEditingStateTransformer& transformer, const Operation& operation,
                         Selections& selections)
{
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

} // namespace Zem::CollaborationSession

#include "CS_MoveSelections.h"

#include <exception>

namespace Zem::CollaborationSession
{

namespace
{

template<class Move>
void moveOrDrop(Selections& selections, const Move& move)
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
            owned = selections.erase(owned);
        }
    }
}

} // namespace

void includeInSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                         const CollaborationEngine::Operation& operation, Selections& selections)
{
    moveOrDrop(selections, [&](Selection& selection) { transformer.include(operation, selection); });
}

void excludeFromSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                           const CollaborationEngine::Operation& operation, Selections& selections)
{
    moveOrDrop(selections, [&](Selection& selection) { transformer.exclude(operation, selection); });
}

} // namespace Zem::CollaborationSession

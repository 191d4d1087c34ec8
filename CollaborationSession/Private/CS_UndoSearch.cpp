#include "CS_UndoSearch.h"

#include "CE_InverseOperation.h"

#include "Util_Cast.h"

#include <exception>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

void UndoSearch::pass(const Operation& operation, bool isOwn)
{
    if (!_undone)
    {
        _undone = isOwn && operation.getID() == _id ? cloneOperation(operation) : nullptr;
        return;
    }
    std::vector<OperationUPtr> pieces;
    OperationPtrs behind;
    splitAtPieces(operation, pieces, behind);
    if (pieces.empty())
    {
        _later.push_back(cloneOperation(operation));
        return;
    }
    _undone = makeOperationFromParts(std::move(pieces));
    _later = std::move(behind);
}

/// If `operation` brings the one that is looked for along, copies of its pieces go into `pieces`, and of all that comes
/// behind them into `behind`.
void UndoSearch::splitAtPieces(const Operation& operation, std::vector<OperationUPtr>& pieces,
                               OperationPtrs& behind) const
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite || !composite->bringsShadowedAlong())
    {
        return;
    }
    for (const OperationUPtr& part : composite->getParts())
    {
        if (part->getID() == _id && behind.empty())
        {
            pieces.push_back(cloneOperation(*part));
        }
        else if (!pieces.empty())
        {
            behind.push_back(cloneOperation(*part));
        }
        else
        {
            splitAtPieces(*part, pieces, behind);
        }
    }
}

OperationUPtr UndoSearch::makeUndo() const
{
    if (!_undone)
    {
        return nullptr;
    }
    Bridge later(_transformer);
    for (const auto& operation : _later)
    {
        later.append(operation);
    }
    try
    {
        return later.cross(*CollaborationEngine::makeUndo(*_undone, _transformer));
    }
    catch (const std::exception&)
    {
        // Some nodes take only one setting at a time: theirs can't be brought past another.
        return nullptr;
    }
}

} // namespace Zem::CollaborationSession

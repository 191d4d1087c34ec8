#include "Sharing/CS_UndoSearch.h"

#include "CE_InverseOperation.h"

#include "Util_Cast.h"

#include <exception>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// Hands over what isn't composite, whatever the nesting.
template<class Consume>
void forEachSingle(const Operation& operation, const Consume& consume)
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite)
    {
        consume(operation);
        return;
    }
    for (const OperationUPtr& part : composite->getParts())
    {
        forEachSingle(*part, consume);
    }
}

/// The ids of all that isn't composite; none if something has no id.
std::set<Operation::Id> getIDs(const Operation& operation)
{
    std::set<Operation::Id> ids;
    bool haveAllIDs = true;
    forEachSingle(operation,
                  [&](const Operation& single)
                  {
                      const auto id = single.getID();
                      haveAllIDs &= id.has_value();
                      ids.insert(id.value_or(0));
                  });
    return haveAllIDs ? ids : std::set<Operation::Id>();
}

bool isWhollyShadowed(const Operation& operation)
{
    bool isShadowed = true;
    forEachSingle(operation,
                  [&](const Operation& single) { isShadowed &= cast<ShadowedOperation>(&single) != nullptr; });
    return isShadowed;
}

} // namespace

UndoSearch::UndoSearch(const BaseOperationTransformer& transformer, OperationPtr undone)
    : _transformer(transformer)
{
    beginAt(std::move(undone), {});
}

void UndoSearch::pass(OperationPtr operation)
{
    if (_dormantIDs.empty())
    {
        _later.push_back(std::move(operation));
        return;
    }
    std::vector<OperationUPtr> pieces;
    OperationPtrs behind;
    splitAtPieces(*operation, pieces, behind);
    OperationUPtr broughtAlong = makeOperationFromParts(std::move(pieces));
    if (getIDs(*broughtAlong) == _dormantIDs)
    {
        beginAt(std::move(broughtAlong), std::move(behind));
        return;
    }
    _later.push_back(std::move(operation));
}

void UndoSearch::beginAt(OperationPtr undone, OperationPtrs later)
{
    _dormantIDs = isWhollyShadowed(*undone) ? getIDs(*undone) : std::set<Operation::Id>();
    _undone = std::move(undone);
    _later = std::move(later);
}

bool UndoSearch::isDormant(const Operation& operation) const
{
    const auto id = operation.getID();
    return id && _dormantIDs.contains(*id);
}

/// If `operation` brings the one that is looked for along, copies of its pieces go into `pieces`, and of all that comes
/// behind them into `behind`.
void UndoSearch::splitAtPieces(const Operation& operation, std::vector<OperationUPtr>& pieces,
                               OperationPtrs& behind) const
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite)
    {
        return;
    }
    for (const OperationUPtr& part : composite->getParts())
    {
        if (composite->bringsShadowedAlong() && behind.empty() && isDormant(*part))
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

UndoSearch::OperationPtr UndoSearch::makeUndo() const
{
    Bridge later(_transformer);
    for (const OperationPtr& operation : _later)
    {
        later.append(operation);
    }
    try
    {
        return later.cross(*CollaborationEngine::makeUndo(*_undone, _transformer), Bridge::Values::Yields);
    }
    catch (const std::exception&)
    {
        return std::make_shared<EmptyOperation>();
    }
}

} // namespace Zem::CollaborationSession

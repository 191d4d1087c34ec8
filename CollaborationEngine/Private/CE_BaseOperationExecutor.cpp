#include "CE_BaseOperationExecutor.h"

#include "CE_AfterDocumentActionSignal.h"
#include "CE_BaseOperationTransformer.h"
#include "CE_InverseOperation.h"
#include "CE_NodeOperands.h"
#include "CE_OperationKinds.h"
#include "CE_OperationParts.h"

#include "Util_Assert.h"

#include <iterator>

namespace Zem::CollaborationEngine
{

namespace
{

/// What became of `planned`, with what leads on to it.
ChangeOfRestoring makeChange(const CompositeOperation& planned, std::vector<OperationUPtr> changes)
{
    if (planned.getKind() == CompositeKind::Restoring)
    {
        return {cloneOperation(planned), makeOperationFromParts(std::move(changes))};
    }
    ChangeOfRestoring change = planned.getChange();
    if (change.isKnown())
    {
        changes.insert(changes.begin(), std::move(change._difference));
        change._difference = makeOperationFromParts(std::move(changes));
    }
    return change;
}

} // namespace

OperationExecutor::~OperationExecutor() = default;

AtomicOperationExecutor::~AtomicOperationExecutor() = default;

ChangedOperationExecutor::~ChangedOperationExecutor() = default;

BaseOperationExecutor::BaseOperationExecutor(std::unique_ptr<AtomicOperationExecutor> atomicExecutor,
                                             std::shared_ptr<BaseOperationTransformer> transformer)
    : _atomicExecutor(std::move(atomicExecutor))
    , _transformer(std::move(transformer))
    , _signal(std::make_unique<AfterDocumentActionSignal>())
{
    ZEM_ASSERT(_atomicExecutor);
}

BaseOperationExecutor::~BaseOperationExecutor() = default;

bool BaseOperationExecutor::executeAndChangeIfNeeded(Operation& operation, OperationUPtr& changedOp)
{
    ZEM_ASSERT(!changedOp);
    const bool isChanged = run(operation, changedOp);
    raiseSignal();
    return isChanged;
}

void BaseOperationExecutor::reverse(Operation& operation)
{
    takeBack(operation);
    raiseSignal();
}

AfterDocumentActionSignal& BaseOperationExecutor::getAfterDocumentActionSignal()
{
    return *_signal;
}

bool BaseOperationExecutor::executeAndChangeIfNeededChangedOp(Operation& operation, OperationUPtr& changedOp)
{
    if (executeAndChangeIfNeeded(operation, changedOp))
    {
        return true;
    }
    changedOp = cloneOperation(operation);
    return false;
}

bool BaseOperationExecutor::run(Operation& operation, OperationUPtr& changedOp)
{
    return visitWith<bool>(
        operation,
        [&](AtomicOperation& atomic)
        {
            const bool isChanged = _atomicExecutor->executeAndChangeIfNeeded(atomic, changedOp);
            ZEM_ASSERT(isChanged == static_cast<bool>(changedOp));
            if (isChanged)
            {
                changedOp->inheritIDIfPossibleImpl(atomic);
            }
            return isChanged;
        },
        [&](CompositeOperation& composite) { return runParts(composite, changedOp); },
        [](EmptyOperation&) { return false; }, [](ShadowedOperation&) { return false; });
}

bool BaseOperationExecutor::runParts(CompositeOperation& composite, OperationUPtr& changedOp)
{
    bool isChanged = false;
    std::vector<OperationUPtr> happened;
    std::vector<OperationUPtr> changes;
    happened.reserve(composite.getParts().size());
    for (const OperationUPtr& part : composite.getParts())
    {
        // A part behind a changed one was made for what that was to be.
        OperationUPtr followed = changes.empty() ? nullptr : transformAgainst(changes, *part);
        Operation& planned = followed ? *followed : *part;
        OperationUPtr changedPart;
        if (run(planned, changedPart))
        {
            isChanged = true;
            changes.push_back(makeReversal(planned));
            if (!getIf<EmptyOperation>(*changedPart))
            {
                changes.push_back(cloneOperation(*changedPart));
            }
        }
        if (followed && composite.bringsShadowedAlong() && countDeadPlaces(*followed) > countDeadPlaces(*part))
        {
            // What was to end the shadow didn't happen. The operation stays shadowed where it always stood.
            followed = std::make_unique<EmptyOperation>();
        }
        happened.push_back(changedPart ? std::move(changedPart) : std::move(followed));
    }
    if (!isChanged)
    {
        return false;
    }
    for (std::size_t index = 0; index < happened.size(); ++index)
    {
        if (!happened[index])
        {
            happened[index] = cloneOperation(*composite.getParts()[index]);
        }
    }
    OperationUPtr whatHappened = makeOperationFromParts(std::move(happened));
    if (composite.bringsShadowedAlong() && !cast<EmptyOperation>(whatHappened.get()))
    {
        // Even a restoring that brings nothing along any more tells that something was changed.
        whatHappened = std::make_unique<CompositeOperation>(splitResult(std::move(whatHappened)),
                                                            makeChange(composite, std::move(changes)));
    }
    changedOp = withIDOf(composite, std::move(whatHappened));
    return true;
}

/// Gives `part` transformed against the changes of the parts before it, and transforms these against `part`.
OperationUPtr BaseOperationExecutor::transformAgainst(std::vector<OperationUPtr>& changes, const Operation& part) const
{
    ZEM_ASSERT(_transformer);
    OperationUPtr followed = cloneOperation(part);
    for (OperationUPtr& change : changes)
    {
        if (!touches(*followed, *change) && !touches(*change, *followed))
        {
            continue;
        }
        OperationUPtr next = _transformer->include(*followed, *change, TieResolveCondition::SecondWins);
        change = _transformer->include(*change, *followed, TieResolveCondition::FirstWins);
        followed = std::move(next);
    }
    return followed;
}

void BaseOperationExecutor::takeBack(Operation& operation)
{
    visitWith(
        operation, [&](AtomicOperation& atomic) { _atomicExecutor->reverse(atomic); },
        [&](CompositeOperation& composite)
        {
            std::vector<OperationUPtr>& parts = composite.getParts();
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
            {
                takeBack(**part);
            }
        },
        [](EmptyOperation&) {}, [](ShadowedOperation&) {});
}

void BaseOperationExecutor::raiseSignal()
{
    if (_silentGuardsCount == 0 && !_signal->empty())
    {
        (*_signal)();
    }
}

BaseOperationExecutor::SetSilentModeGuard::SetSilentModeGuard(BaseOperationExecutor& executor)
    : _executor(executor)
{
    ++_executor._silentGuardsCount;
}

BaseOperationExecutor::SetSilentModeGuard::~SetSilentModeGuard()
{
    --_executor._silentGuardsCount;
}

BaseOperationExecutor::SetSilentModeGuard BaseOperationExecutor::getSetSilentModeGuard()
{
    return SetSilentModeGuard(*this);
}

} // namespace Zem::CollaborationEngine

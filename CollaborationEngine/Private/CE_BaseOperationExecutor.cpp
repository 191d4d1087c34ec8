#include "CE_BaseOperationExecutor.h"

#include "CE_AfterDocumentActionSignal.h"

#include "Util_Assert.h"

#include <iterator>

namespace Zem::CollaborationEngine
{

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
    std::vector<OperationUPtr> changedParts(composite.getParts().size());
    for (std::size_t index = 0; index < changedParts.size(); ++index)
    {
        isChanged |= run(*composite.getParts()[index], changedParts[index]);
    }
    if (!isChanged)
    {
        return false;
    }
    for (std::size_t index = 0; index < changedParts.size(); ++index)
    {
        if (!changedParts[index])
        {
            changedParts[index] = cloneOperation(*composite.getParts()[index]);
        }
    }
    OperationUPtr whatHappened = makeOperationFromParts(std::move(changedParts));
    if (composite.bringsShadowedAlong())
    {
        if (auto* changedComposite = cast<CompositeOperation>(whatHappened.get()))
        {
            whatHappened = std::make_unique<CompositeOperation>(std::move(changedComposite->getParts()), true);
        }
    }
    changedOp = std::move(whatHappened);
    changedOp->inheritIDIfPossibleImpl(composite);
    return true;
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

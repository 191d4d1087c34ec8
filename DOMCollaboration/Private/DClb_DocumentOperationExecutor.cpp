#include "DClb_DocumentOperationExecutor.h"

#include "DClb_NodeFactories.h"
#include "DClb_NodeOperationExecutor.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <iterator>
#include <map>
#include <utility>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::AtomicOperation;
using CollaborationEngine::HierarchicalOperation;
using CollaborationEngine::Operation;
using CollaborationEngine::OperationUPtr;

namespace
{

/// Routes each atomic operation to the executor of the type of node that it names.
class DocumentAtomicOperationExecutor final : public CollaborationEngine::AtomicOperationExecutor
{
public:
    DocumentAtomicOperationExecutor(std::shared_ptr<DocumentAdapterWithNodeAdapter> dom,
                                    CollaborationEngine::OperationExecutor& proxy,
                                    std::weak_ptr<ExecutorNotificationObserver> observer)
        : _dom(std::move(dom))
    {
        ZEM_ASSERT(_dom);
        forAllNodeOperationExecutors(
            [&](const NodeOperationExecutorsFactory& factory)
            {
                std::shared_ptr<NodeOperationExecutor> executor =
                    factory.createNodeOperationExecutor(proxy, _dom, observer);
                const unsigned long nodeType = executor->getNodeType();
                ZEM_ASSERT(_DOMCollaborationMap.find(nodeType) == std::end(_DOMCollaborationMap));
                _DOMCollaborationMap.emplace(nodeType, std::move(executor));
            });
    }

    bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) override
    {
        auto& hierarchicalOperation = cast<HierarchicalOperation>(operation);
        return findNodeExecutor(hierarchicalOperation).executeAndChangeIfNeeded(hierarchicalOperation, changedOp);
    }

    void reverse(AtomicOperation& operation) override
    {
        auto& hierarchicalOperation = cast<HierarchicalOperation>(operation);
        findNodeExecutor(hierarchicalOperation).reverse(hierarchicalOperation);
    }

private:
    NodeOperationExecutor& findNodeExecutor(const HierarchicalOperation& operation) const
    {
        const auto nodeExecutorIt = _DOMCollaborationMap.find(operation.getOperandType());
        ZEM_ASSERT(nodeExecutorIt != _DOMCollaborationMap.end());
        return *nodeExecutorIt->second;
    }

    std::shared_ptr<DocumentAdapterWithNodeAdapter> _dom;
    std::map<unsigned long, std::shared_ptr<NodeOperationExecutor>> _DOMCollaborationMap;
};

} // namespace

DocumentOperationExecutor::DocumentOperationExecutor(
    std::shared_ptr<DocumentAdapterWithNodeAdapter> dom,
    std::shared_ptr<CollaborationEngine::BaseOperationTransformer> transformer,
    std::weak_ptr<ExecutorNotificationObserver> observer)
    : ProxyHolder(static_cast<BaseOperationExecutor&>(*this))
    , BaseOperationExecutor(std::make_unique<DocumentAtomicOperationExecutor>(dom, _proxy, std::move(observer)),
                            std::move(transformer))
    , _dom(std::move(dom))
{
    ZEM_ASSERT(_dom);
}

DocumentOperationExecutor::~DocumentOperationExecutor() = default;

ProxyOperationExecutor::ProxyOperationExecutor(CollaborationEngine::BaseOperationExecutor& owner)
    : _owner(owner)
{
}

ProxyOperationExecutor::~ProxyOperationExecutor() = default;

bool ProxyOperationExecutor::executeAndChangeIfNeeded(Operation& operation, OperationUPtr& changedOp)
{
    const auto silence = _owner.getSetSilentModeGuard();
    return _owner.executeAndChangeIfNeeded(operation, changedOp);
}

void ProxyOperationExecutor::reverse(Operation& operation)
{
    _owner.reverse(operation);
}

CollaborationEngine::AfterDocumentActionSignal& ProxyOperationExecutor::getAfterDocumentActionSignal()
{
    ZEM_FAIL("Proxy executor isn't supposed to have subcribers.");
}

} // namespace Zem::DOMCollaboration

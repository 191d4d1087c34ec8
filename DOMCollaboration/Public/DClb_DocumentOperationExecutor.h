#pragma once

#include "CE_BaseOperationExecutor.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::DOMCollaboration
{

class DocumentAdapterWithNodeAdapter;
class ExecutorNotificationObserver;

/// Runs a further operation on the same document from within the execution of another one. It goes the whole road,
/// but is no action of the document of its own: no after-document-action signal is raised for it.
class ZEM_EXPORT ProxyOperationExecutor : public CollaborationEngine::OperationExecutor
{
public:
    /// Requires: `owner` outlives this.
    explicit ProxyOperationExecutor(CollaborationEngine::BaseOperationExecutor& owner);
    ~ProxyOperationExecutor() override;

    bool executeAndChangeIfNeeded(CollaborationEngine::Operation& operation,
                                  CollaborationEngine::OperationUPtr& changedOp) override;

    /// Unlike an execution, a reverse isn't silent.
    void reverse(CollaborationEngine::Operation& operation) override;

    /// Fails: "Proxy executor isn't supposed to have subcribers.", for they would wait in vain.
    CollaborationEngine::AfterDocumentActionSignal& getAfterDocumentActionSignal() override;

private:
    CollaborationEngine::BaseOperationExecutor& _owner;
};

/// Holds the proxy of a `DocumentOperationExecutor`. As a base class it lives before the node executors, which are made
/// for the other base class and keep the proxy, and longer than they.
class ZEM_EXPORT ProxyHolder
{
protected:
    explicit ProxyHolder(CollaborationEngine::BaseOperationExecutor& owner)
        : _proxy(owner)
    {
    }

    ProxyOperationExecutor _proxy;
};

/// The one object through which operations change a document. The engine's base class owns the flow of an operation;
/// this class supplies what knows the document: one `NodeOperationExecutor` for each type of node, found by the operand
/// type of the operation.
///
/// It is used by one thread at a time. Exceptions of a node executor pass through, and nothing is rolled back.
///
/// Fails while executing and reversing: "nodeExecutorIt != _DOMCollaborationMap.end()" for an operand type that isn't
/// one of the `OperationDOMNodeType`; `std::bad_cast` for an atomic operation that isn't aimed at a node.
class ZEM_EXPORT DocumentOperationExecutor : protected ProxyHolder, public CollaborationEngine::BaseOperationExecutor
{
public:
    using ProxyOperationExecutor = DOMCollaboration::ProxyOperationExecutor;

    /// `dom` is the document that all operations act on. `transformer` is shared with whoever made it. `observer` is
    /// told of what changed; it isn't kept alive, and callers with no interest pass one of
    /// `makeEmptyExecutorNotificationObserver` and keep that.
    /// Fails: "_dom" when `dom` is null.
    DocumentOperationExecutor(std::shared_ptr<DocumentAdapterWithNodeAdapter> dom,
                              std::shared_ptr<CollaborationEngine::BaseOperationTransformer> transformer,
                              std::weak_ptr<ExecutorNotificationObserver> observer);
    ~DocumentOperationExecutor() override;

private:
    std::shared_ptr<DocumentAdapterWithNodeAdapter> _dom;
};

} // namespace Zem::DOMCollaboration

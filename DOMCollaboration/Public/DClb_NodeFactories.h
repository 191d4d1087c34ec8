#pragma once

/// What is made for each type of node: three transformers for the engine, and the executor of its operations. There is
/// one factory for each `OperationDOMNodeType`. They are made when the library is loaded, so no static object of
/// another source file may ask for them while it is built; they are read-only afterwards, from any thread.

#include "Util_CallableRef.h"
#include "Util_Export.h"

#include <memory>

namespace Zem::CollaborationEngine
{

class AncestorCollectionModificationTransformer;
class NodePositionTransformer;
class OperationExecutor;
class SameNodeTransformer;

} // namespace Zem::CollaborationEngine

namespace Zem::DOMCollaboration
{

class DocumentAdapterWithNodeAdapter;
class ExecutorNotificationObserver;
class NodeOperationExecutor;

/// Makes what brings a position past an operation.
class ZEM_EXPORT NodePositionTransformersFactory
{
public:
    virtual ~NodePositionTransformersFactory() = default;

    virtual std::shared_ptr<CollaborationEngine::NodePositionTransformer> createNodePositionTransformer() const = 0;

    /// The number of the `OperationDOMNodeType` that this serves.
    virtual unsigned long getNodeType() const = 0;
};

/// Makes what brings an operation past another one, on the same node or on an ancestor of its node.
class ZEM_EXPORT SameNodePositionTransformersFactory
{
public:
    virtual ~SameNodePositionTransformersFactory() = default;

    virtual std::shared_ptr<CollaborationEngine::SameNodeTransformer> createSameNodeTransformer() const = 0;
    virtual std::shared_ptr<CollaborationEngine::AncestorCollectionModificationTransformer>
    createAncestorTransformer() const = 0;

    virtual unsigned long getNodeType() const = 0;
};

/// Makes what changes a document.
class ZEM_EXPORT NodeOperationExecutorsFactory
{
public:
    virtual ~NodeOperationExecutorsFactory() = default;

    /// An executor for the document `dom`, which tells `observer`, if that is alive now and for as long as it is.
    /// Requires: `proxy` outlives the executor. It isn't called here.
    virtual std::shared_ptr<NodeOperationExecutor>
    createNodeOperationExecutor(CollaborationEngine::OperationExecutor& proxy,
                                const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
                                std::weak_ptr<ExecutorNotificationObserver> observer) const = 0;

    virtual unsigned long getNodeType() const = 0;
};

/// Each of the three calls `callable` once for every type of node, in ascending order of their numbers.
ZEM_EXPORT void
forAllNodePositionTransformers(const CallableRef<void(const NodePositionTransformersFactory&)>& callable);
ZEM_EXPORT void
forAllSameNodePositionTransformers(const CallableRef<void(const SameNodePositionTransformersFactory&)>& callable);
ZEM_EXPORT void forAllNodeOperationExecutors(const CallableRef<void(const NodeOperationExecutorsFactory&)>& callable);

} // namespace Zem::DOMCollaboration

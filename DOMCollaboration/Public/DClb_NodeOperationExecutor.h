#pragma once

#include "CE_HierarchicalOperation.h"

#include "Util_Assert.h"
#include "Util_Export.h"

#include <memory>
#include <utility>

namespace Zem::DOMCollaboration
{

class DocumentAdapterWithNodeAdapter;

/// Executes and takes back the operations on the nodes of one type. One is made for a document, once; it holds no state
/// between operations.
class ZEM_EXPORT NodeOperationExecutor
{
public:
    explicit NodeOperationExecutor(std::shared_ptr<DocumentAdapterWithNodeAdapter> dom)
        : _dom(std::move(dom))
    {
    }

    /// Fails: "plainPtr" when there is no document.
    const DocumentAdapterWithNodeAdapter& getDomAdapter() const
    {
        return derefPtr(_dom);
    }

    DocumentAdapterWithNodeAdapter& getDomAdapter()
    {
        return derefPtr(_dom);
    }

    virtual ~NodeOperationExecutor();

    /// The number of the `OperationDOMNodeType` that this executor serves.
    virtual unsigned long getNodeType() const = 0;

    /// Applies `operation` to the document, and tells the observer. If something else had to be done, leaves in
    /// `changedOp` the operation that describes it and returns true; otherwise leaves `changedOp` empty and returns
    /// false. `operation` may be given the data that a later reverse needs. Requires: `changedOp` is empty.
    virtual bool executeAndChangeIfNeeded(CollaborationEngine::HierarchicalOperation& operation,
                                          CollaborationEngine::OperationUPtr& changedOp) = 0;

    /// Takes `operation` back exactly; it is never changed by this.
    virtual void reverse(CollaborationEngine::HierarchicalOperation& operation) = 0;

    NodeOperationExecutor(const NodeOperationExecutor&) = delete;
    NodeOperationExecutor& operator=(const NodeOperationExecutor&) = delete;

protected:
    /// Fails: "operation.getOperandType() == convertOperationNodeType(getNodeType())".
    void requireOwnOperandType(const CollaborationEngine::HierarchicalOperation& operation) const;

private:
    std::shared_ptr<DocumentAdapterWithNodeAdapter> _dom;
};

} // namespace Zem::DOMCollaboration

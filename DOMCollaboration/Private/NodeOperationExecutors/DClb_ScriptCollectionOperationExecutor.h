#pragma once

#include "DClb_NodeOperationExecutor.h"
#include "Notifications/DClb_ScriptCollectionChangedObserver.h"

#include "CE_MapOperation.h"
#include "CE_OperationExecutor.h"

#include <memory>

namespace Zem::DOM
{

class Scripts;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Inserts and removes scripts, by name. No operation is ever changed: a name that is taken is a fault of the caller.
///
/// Fails: `std::bad_cast` for an operation on anything but a map, and for a key that isn't a name; "plainPtr" when key,
/// data or observer is missing, and for data that isn't a text; "!scripts.getScript(key.getValue()).is_initialized()"
/// when a script to be inserted is there; "script.is_initialized()" when one to be removed isn't.
class ScriptCollectionOperationExecutor final : public NodeOperationExecutor
{
public:
    /// The proxy isn't needed; all executors of maps are made alike.
    ScriptCollectionOperationExecutor(CollaborationEngine::OperationExecutor& proxy,
                                      const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
                                      std::weak_ptr<ScriptCollectionChangedObserver> observer);

    unsigned long getNodeType() const override;
    bool executeAndChangeIfNeeded(CollaborationEngine::HierarchicalOperation& operation,
                                  CollaborationEngine::OperationUPtr& changedOp) override;
    void reverse(CollaborationEngine::HierarchicalOperation& operation) override;

private:
    template<class Tag>
    void insert(const CollaborationEngine::MapInsertOrRemoveOperation<Tag>& operation);

    /// Leaves the removed text in the operation, so that it can be inserted again.
    template<class Tag>
    void remove(CollaborationEngine::MapInsertOrRemoveOperation<Tag>& operation);

    DOM::Scripts& getScripts(const CollaborationEngine::MapOperation& operation);

    std::weak_ptr<ScriptCollectionChangedObserver> _observer;
};

} // namespace Zem::DOMCollaboration

#include "NodeOperationExecutors/DClb_ScriptCollectionOperationExecutor.h"

#include "DClb_ElementPathUtils.h"
#include "DClb_NodeTypes.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"

#include "DOM_Scripts.h"

#include "Util_Cast.h"

#include <boost/optional.hpp>

#include <string>
#include <utility>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::HierarchicalOperation;
using CollaborationEngine::MapInsertOrRemoveOperation;
using CollaborationEngine::MapInsertTag;
using CollaborationEngine::MapLeaveRemovedOperation;
using CollaborationEngine::MapOperation;
using CollaborationEngine::MapRemoveTag;

namespace
{

using ScriptKey = NodeAddressing::SimpleValueMapKey<std::string>;
using ScriptText = CollaborationEngine::SimpleDataValue<std::string>;

} // namespace

ScriptCollectionOperationExecutor::ScriptCollectionOperationExecutor(
    CollaborationEngine::OperationExecutor&, const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
    std::weak_ptr<ScriptCollectionChangedObserver> observer)
    : NodeOperationExecutor(dom)
    , _observer(std::move(observer))
{
}

unsigned long ScriptCollectionOperationExecutor::getNodeType() const
{
    return convertOperationNodeType(OperationDOMNodeType::ScriptCollection);
}

bool ScriptCollectionOperationExecutor::executeAndChangeIfNeeded(HierarchicalOperation& operation,
                                                                 CollaborationEngine::OperationUPtr&)
{
    visitWith(
        cast<MapOperation>(operation),
        [this](MapInsertOrRemoveOperation<MapInsertTag>& insertion) { insert(insertion); },
        [this](MapInsertOrRemoveOperation<MapRemoveTag>& removal) { remove(removal); },
        [](MapLeaveRemovedOperation&) {});
    return false;
}

void ScriptCollectionOperationExecutor::reverse(HierarchicalOperation& operation)
{
    visitWith(
        cast<MapOperation>(operation),
        [this](MapInsertOrRemoveOperation<MapInsertTag>& insertion) { remove(insertion); },
        [this](MapInsertOrRemoveOperation<MapRemoveTag>& removal) { insert(removal); },
        [](MapLeaveRemovedOperation&) {});
}

template<class Tag>
void ScriptCollectionOperationExecutor::insert(const MapInsertOrRemoveOperation<Tag>& operation)
{
    DOM::Scripts& scripts = getScripts(operation);
    const auto& key = cast<ScriptKey>(derefPtr(operation.getKey()));
    ZEM_ASSERT(!scripts.getScript(key.getValue()).is_initialized());
    const std::string& text = derefPtr(cast<ScriptText>(&derefPtr(operation.getData()))).getValue();
    scripts.insertScript(key.getValue(), text);
    derefPtr(_observer.lock()).onScriptInserted(key.getValue());
}

template<class Tag>
void ScriptCollectionOperationExecutor::remove(MapInsertOrRemoveOperation<Tag>& operation)
{
    DOM::Scripts& scripts = getScripts(operation);
    const auto& key = cast<ScriptKey>(derefPtr(operation.getKey()));
    boost::optional<std::string> script = scripts.getScript(key.getValue());
    ZEM_ASSERT(script.is_initialized());
    scripts.removeScript(key.getValue());
    operation.setData(std::make_shared<ScriptText>(std::move(*script)));
    derefPtr(_observer.lock()).onScriptRemoved(key.getValue());
}

DOM::Scripts& ScriptCollectionOperationExecutor::getScripts(const MapOperation& operation)
{
    using Adapter = GenericScriptCollectionNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, false>;
    const DOM::NativeNodeAddress address =
        ElementPathUtils::convertNodeAddress(std::as_const(getDomAdapter()), operation.getNodeAddress());
    return ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), address)->getScripts();
}

} // namespace Zem::DOMCollaboration

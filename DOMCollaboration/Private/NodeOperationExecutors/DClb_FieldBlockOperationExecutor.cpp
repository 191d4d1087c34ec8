#include "NodeOperationExecutors/DClb_FieldBlockOperationExecutor.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_FieldBlock.h"

namespace Zem::DOMCollaboration
{

namespace
{

constexpr auto fieldBlockProperties = std::make_tuple(
    property<PropertyId::HyperlinkId>([](const DOM::FieldBlock& block) { return block.getHyperlink(); },
                                      [](DOM::FieldBlock& block, const DOM::HyperlinkConstPtr& hyperlink)
                                      { block.setHyperlink(hyperlink); }),
    property<PropertyId::CommentUUIDsId>([](const DOM::FieldBlock& block) { return block.getCommentUUIDs(); },
                                         [](DOM::FieldBlock& block, const std::vector<UUID>& uuids)
                                         { block.getCommentUUIDs() = uuids; }),
    property<PropertyId::FieldValueId>([](const DOM::FieldBlock& block) { return block.getFieldInfo(); },
                                       [](DOM::FieldBlock& block, const DOM::FieldBlock::FieldInfo& fieldInfo)
                                       { block.getFieldInfo() = fieldInfo; }));

} // namespace

void FieldBlockOperationExecutor::apply(const DOM::NativeNodeAddress& address,
                                        CollaborationEngine::SetPropertyOperation& operation, bool isReverse)
{
    using Adapter = GenericAtomicBlockNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, DOM::FieldBlock, false>;
    const auto adapter = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), address);
    applySetting(fieldBlockProperties, adapter->getBlock(), operation, isReverse, "Unsupported property id");
    derefPtr(lockObserver()).onFieldBlockPropsChanged(address, operation.getPropertyID());
}

} // namespace Zem::DOMCollaboration

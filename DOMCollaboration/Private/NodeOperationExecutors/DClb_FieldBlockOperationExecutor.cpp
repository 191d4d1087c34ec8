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
    property<PropertyId::HyperlinkId>([](DOM::FieldBlock& block, const DOM::HyperlinkConstPtr& hyperlink)
                                      { block.setHyperlink(hyperlink); }),
    property<PropertyId::CommentUUIDsId>([](DOM::FieldBlock& block, const std::vector<UUID>& uuids)
                                         { block.getCommentUUIDs() = uuids; }),
    property<PropertyId::FieldValueId>([](DOM::FieldBlock& block, const DOM::FieldBlock::FieldInfo& fieldInfo)
                                       { block.getFieldInfo() = fieldInfo; }));

} // namespace

void FieldBlockOperationExecutor::apply(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                        const CollaborationEngine::DataValue& value)
{
    using Adapter = GenericAtomicBlockNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, DOM::FieldBlock, false>;
    const auto adapter = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), address);
    setProperty(fieldBlockProperties, adapter->getBlock(), propertyId, value, "Unsupported property id");
    derefPtr(lockObserver()).onFieldBlockPropsChanged(address, propertyId);
}

} // namespace Zem::DOMCollaboration

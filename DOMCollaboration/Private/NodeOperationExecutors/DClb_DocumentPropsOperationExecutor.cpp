#include "NodeOperationExecutors/DClb_DocumentPropsOperationExecutor.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_Document.h"

namespace Zem::DOMCollaboration
{

namespace
{

constexpr auto documentProperties =
    std::make_tuple(property<PropertyId::ChangesTrackingEnabledId>([](DOM::Document& document, bool isEnabled)
                                                                   { document.setChangesTrackingEnabled(isEnabled); }),
                    property<PropertyId::SectionPropsId>([](DOM::Document& document, const DOM::SectionProps& props)
                                                         { document.getDefaultSectionProps() = props; }),
                    property<PropertyId::DocumentTimeZoneId>([](DOM::Document& document, const DOM::TimeZone& timeZone)
                                                             { document.setTimeZone(timeZone); }));

} // namespace

void DocumentPropsOperationExecutor::applyValue(CollaborationEngine::HierarchicalOperation& operation, bool useOldValue)
{
    using Adapter = GenericDocumentPropsNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, false>;
    ZEM_ASSERT(operation.getOperandType() == convertOperationNodeType(OperationDOMNodeType::DocumentProps));
    const auto adapter = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), convertAddress(operation));
    const auto& setPropertyOperation = cast<CollaborationEngine::SetPropertyOperation>(operation);
    setProperty(documentProperties, adapter->getDocument(), setPropertyOperation.getPropertyID(),
                chooseValue(setPropertyOperation, useOldValue), "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onDocumentPropsChanged(setPropertyOperation.getPropertyID());
}

} // namespace Zem::DOMCollaboration

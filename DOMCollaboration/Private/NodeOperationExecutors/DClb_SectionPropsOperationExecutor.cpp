#include "NodeOperationExecutors/DClb_SectionPropsOperationExecutor.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_SectionTag.h"

namespace Zem::DOMCollaboration
{

namespace
{

constexpr auto sectionProperties = std::make_tuple(property<PropertyId::SectionPropsId>(
    [](DOM::SectionTag& tag, const DOM::SectionProps& props) { tag.getSectionProps() = props; }));

} // namespace

void SectionPropsOperationExecutor::apply(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                          const CollaborationEngine::DataValue& value)
{
    using Adapter = GenericSectionTagNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, false>;
    const auto adapter = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), address);
    setProperty(sectionProperties, adapter->getSectionTag(), propertyId, value, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onSectionPropsChanged(address, propertyId);
}

} // namespace Zem::DOMCollaboration

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
    [](const DOM::SectionTag& tag) { return tag.getSectionProps(); },
    [](DOM::SectionTag& tag, const DOM::SectionProps& props) { tag.getSectionProps() = props; }));

} // namespace

void SectionPropsOperationExecutor::apply(const DOM::NativeNodeAddress& address,
                                          CollaborationEngine::SetPropertyOperation& operation, bool isReverse)
{
    using Adapter = GenericSectionTagNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, false>;
    const auto adapter = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(getDomAdapter(), address);
    applySetting(sectionProperties, adapter->getSectionTag(), operation, isReverse, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onSectionPropsChanged(address, operation.getPropertyID());
}

} // namespace Zem::DOMCollaboration

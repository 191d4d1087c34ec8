#include "NodeOperationExecutors/DClb_RunOperationExecutor.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_Runs.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct RunInfo
{
    const DOM::SharedObjectFactory& _factory;
    DOM::Run& _run;
};

constexpr auto getRunStyle = [](RunInfo& target) {
    return SharedStyleReference<DOM::RunStyle>{target._factory, target._run.getSharedStyle()};
};

/// Fails: `std::bad_cast` for a run that draws nothing.
DOM::Frame& getFrame(RunInfo& target)
{
    return cast<DOM::DrawingRun>(target._run).getFrame();
}

constexpr auto runProperties = std::make_tuple(
    styleProperty<PropertyId::RunPropertyId>(getRunStyle, &DOM::RunStyle::setRunProps),
    styleProperty<PropertyId::RunTrackedPropsId>(getRunStyle, &DOM::RunStyle::setTrackedRunProps),
    styleProperty<PropertyId::TrackedActionId>(getRunStyle, &DOM::RunStyle::setTrackedAction),
    styleProperty<PropertyId::ParentStyleId>(getRunStyle, &DOM::RunStyle::setParentUUID),
    styleProperty<PropertyId::TrackedParentStyleId>(getRunStyle, &DOM::RunStyle::setTrackedParent),
    styleProperty<PropertyId::HyperlinkId>(getRunStyle, &DOM::RunStyle::setHyperlink),
    styleProperty<PropertyId::CommentUUIDsId>(getRunStyle, [](DOM::RunStyle& style, const std::vector<UUID>& uuids)
                                              { style.getCommentUUIDs() = uuids; }),
    property<PropertyId::ExtentId>([](RunInfo& target, const boost::optional<Size2D<float>>& extent)
                                   { getFrame(target).setExtent(extent); }),
    property<PropertyId::AnchorId>([](RunInfo& target, const DOM::Anchor& anchor)
                                   { getFrame(target).setAnchor(anchor); }));

RunInfo getRunInfo(DocumentAdapterWithNodeAdapter& dom, const DOM::NativeNodeAddress& address)
{
    const auto adapter = ElementPathUtils::createDOMNodeAdapter(dom, address);
    DOM::Run* result = visitWith<DOM::Run*>(
        *adapter, [](GenericTextRunNodeAdapter<false>& textRun) -> DOM::Run* { return &textRun.getRun(); },
        [](GenericRunNodeAdapter<false>& run) -> DOM::Run* { return &run.getRun(); },
        [](auto&) -> DOM::Run* { return nullptr; });
    ZEM_ASSERT(result);
    return {dom.getSharedObjectFactory(), *result};
}

} // namespace

void RunOperationExecutor::apply(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                 const CollaborationEngine::DataValue& value)
{
    RunInfo runInfo = getRunInfo(getDomAdapter(), address);
    setProperty(runProperties, runInfo, propertyId, value, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onRunPropsChanged(address, propertyId);
}

} // namespace Zem::DOMCollaboration

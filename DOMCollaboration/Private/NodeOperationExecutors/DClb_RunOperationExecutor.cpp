#include "NodeOperationExecutors/DClb_RunOperationExecutor.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_Runs.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct RunTarget
{
    const DOM::SharedObjectFactory& _factory;
    DOM::Run& _run;
};

constexpr auto getRunStyle = [](RunTarget& target) {
    return SharedStyleReference<DOM::RunStyle>{target._factory, target._run.getSharedStyle()};
};

/// Fails: `std::bad_cast` for a run that draws nothing.
DOM::Frame& getFrame(RunTarget& target)
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
    property<PropertyId::ExtentId>([](RunTarget& target, const boost::optional<Size2D<float>>& extent)
                                   { getFrame(target).setExtent(extent); }),
    property<PropertyId::AnchorId>([](RunTarget& target, const DOM::Anchor& anchor)
                                   { getFrame(target).setAnchor(anchor); }));

DOM::Run& getRun(DocumentAdapterWithNodeAdapter& dom, const DOM::NativeNodeAddress& address)
{
    const auto adapter = ElementPathUtils::createDOMNodeAdapter(dom, address);
    DOM::Run* result = visitWith<DOM::Run*>(
        *adapter, [](GenericTextRunNodeAdapter<false>& textRun) -> DOM::Run* { return &textRun.getRun(); },
        [](GenericRunNodeAdapter<false>& run) -> DOM::Run* { return &run.getRun(); },
        [](auto&) -> DOM::Run* { return nullptr; });
    ZEM_ASSERT(result);
    return *result;
}

} // namespace

void RunOperationExecutor::apply(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                 const CollaborationEngine::DataValue& value)
{
    RunTarget target{getDomAdapter().getSharedObjectFactory(), getRun(getDomAdapter(), address)};
    setProperty(runProperties, target, propertyId, value, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onRunPropsChanged(address, propertyId);
}

} // namespace Zem::DOMCollaboration

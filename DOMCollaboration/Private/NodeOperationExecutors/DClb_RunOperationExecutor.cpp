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

const std::vector<UUID>& getComments(const DOM::RunStyle& style)
{
    return style.getCommentUUIDs();
}

constexpr auto getRunStyle = [](const RunInfo& target) {
    return SharedStyleReference<DOM::RunStyle>{target._factory, target._run.getSharedStyle()};
};

/// Fails: `std::bad_cast` for a run that draws nothing.
DOM::Frame& getFrame(const RunInfo& target)
{
    return cast<DOM::DrawingRun>(target._run).getFrame();
}

constexpr auto runProperties = std::make_tuple(
    styleProperty<PropertyId::RunPropertyId>(getRunStyle, &DOM::RunStyle::getRunProps, &DOM::RunStyle::setRunProps),
    styleProperty<PropertyId::RunTrackedPropsId>(getRunStyle, &DOM::RunStyle::getTrackedRunProps,
                                                 &DOM::RunStyle::setTrackedRunProps),
    styleProperty<PropertyId::TrackedActionId>(getRunStyle, &DOM::RunStyle::getTrackedAction,
                                               &DOM::RunStyle::setTrackedAction),
    styleProperty<PropertyId::ParentStyleId>(getRunStyle, &DOM::RunStyle::getParentUUID, &DOM::RunStyle::setParentUUID),
    styleProperty<PropertyId::TrackedParentStyleId>(getRunStyle, &DOM::RunStyle::getTrackedParent,
                                                    &DOM::RunStyle::setTrackedParent),
    styleProperty<PropertyId::HyperlinkId>(getRunStyle, &DOM::RunStyle::getHyperlink, &DOM::RunStyle::setHyperlink),
    styleProperty<PropertyId::CommentUUIDsId>(getRunStyle, &getComments,
                                              [](DOM::RunStyle& style, const std::vector<UUID>& uuids)
                                              { style.getCommentUUIDs() = uuids; }),
    property<PropertyId::ExtentId>([](const RunInfo& target) { return getFrame(target).getExtent(); },
                                   [](RunInfo& target, const boost::optional<Size2D<float>>& extent)
                                   { getFrame(target).setExtent(extent); }),
    property<PropertyId::AnchorId>([](const RunInfo& target) { return getFrame(target).getAnchor(); },
                                   [](RunInfo& target, const DOM::Anchor& anchor)
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

void RunOperationExecutor::apply(const DOM::NativeNodeAddress& address,
                                 CollaborationEngine::SetPropertyOperation& operation, bool isReverse)
{
    RunInfo runInfo = getRunInfo(getDomAdapter(), address);
    applySetting(runProperties, runInfo, operation, isReverse, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onRunPropsChanged(address, operation.getPropertyID());
}

} // namespace Zem::DOMCollaboration

#include "NodeOperationExecutors/DClb_ParagraphOperationExecutor.h"

#include "DClb_Utils.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "NodeOperationExecutors/DClb_PropertyTable.h"

#include "DOM_Paragraph.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct ParagraphTarget
{
    const DOM::SharedObjectFactory& _factory;
    DOM::Paragraph& _paragraph;
};

const std::vector<UUID>& getComments(const DOM::RunStyle& style)
{
    return style.getCommentUUIDs();
}

constexpr auto getMarkStyle = [](const ParagraphTarget& target) {
    return SharedStyleReference<DOM::RunStyle>{target._factory, target._paragraph.getSharedParaMarkStyle()};
};

constexpr auto getParagraphStyle = [](const ParagraphTarget& target) {
    return SharedStyleReference<DOM::ParagraphStyle>{target._factory, target._paragraph.getSharedStyle()};
};

boost::optional<DOM::NumberingRef> getNumberingRef(const ParagraphTarget& target)
{
    const auto& numRef = target._paragraph.getNumRef();
    return boost::make_optional(numRef != nullptr, numRef ? *numRef : DOM::NumberingRef());
}

constexpr auto paragraphProperties = std::make_tuple(
    styleProperty<PropertyId::RunPropertyId>(getMarkStyle, &DOM::RunStyle::getRunProps, &DOM::RunStyle::setRunProps),
    styleProperty<PropertyId::RunTrackedPropsId>(getMarkStyle, &DOM::RunStyle::getTrackedRunProps,
                                                 &DOM::RunStyle::setTrackedRunProps),
    styleProperty<PropertyId::TrackedActionId>(getMarkStyle, &DOM::RunStyle::getTrackedAction,
                                               &DOM::RunStyle::setTrackedAction),
    styleProperty<PropertyId::HyperlinkId>(getMarkStyle, &DOM::RunStyle::getHyperlink, &DOM::RunStyle::setHyperlink),
    styleProperty<PropertyId::CommentUUIDsId>(getMarkStyle, &getComments,
                                              [](DOM::RunStyle& style, const std::vector<UUID>& uuids)
                                              { style.getCommentUUIDs() = uuids; }),
    styleProperty<PropertyId::ParaPropertyId>(getParagraphStyle, &DOM::ParagraphStyle::getParaProps,
                                              &DOM::ParagraphStyle::setParaProps),
    styleProperty<PropertyId::ParaTrackedPropsId>(getParagraphStyle, &DOM::ParagraphStyle::getTrackedParaProps,
                                                  &DOM::ParagraphStyle::setTrackedParaProps),
    styleProperty<PropertyId::ParagraphRunPropertyId>(getParagraphStyle, &DOM::ParagraphStyle::getRunProps,
                                                      &DOM::ParagraphStyle::setRunProps),
    styleProperty<PropertyId::ParentStyleId>(getParagraphStyle, &DOM::ParagraphStyle::getParentUUID,
                                             &DOM::ParagraphStyle::setParentUUID),
    styleProperty<PropertyId::TrackedParentStyleId>(getParagraphStyle, &DOM::ParagraphStyle::getTrackedParent,
                                                    &DOM::ParagraphStyle::setTrackedParent),
    property<PropertyId::NumRefId>(&getNumberingRef,
                                   [](ParagraphTarget& target, const boost::optional<DOM::NumberingRef>& numRef)
                                   { Utils::setNumberingRef(target._paragraph, numRef); }));

} // namespace

void ParagraphOperationExecutor::apply(const DOM::NativeNodeAddress& address,
                                       CollaborationEngine::SetPropertyOperation& operation, bool isReverse)
{
    const auto adapter =
        ElementPathUtils::createDOMNodeAdapterAs<GenericParagraphNodeAdapter<false>>(getDomAdapter(), address);
    ParagraphTarget target{getDomAdapter().getSharedObjectFactory(), adapter->getParagraph()};
    applySetting(paragraphProperties, target, operation, isReverse, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onParaPropsChanged(address, operation.getPropertyID());
}

} // namespace Zem::DOMCollaboration

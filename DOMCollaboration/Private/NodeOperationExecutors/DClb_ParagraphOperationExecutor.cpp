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

constexpr auto getMarkStyle = [](ParagraphTarget& target) {
    return SharedStyleReference<DOM::RunStyle>{target._factory, target._paragraph.getSharedParaMarkStyle()};
};

constexpr auto getParagraphStyle = [](ParagraphTarget& target) {
    return SharedStyleReference<DOM::ParagraphStyle>{target._factory, target._paragraph.getSharedStyle()};
};

constexpr auto paragraphProperties = std::make_tuple(
    styleProperty<PropertyId::RunPropertyId>(getMarkStyle, &DOM::RunStyle::setRunProps),
    styleProperty<PropertyId::RunTrackedPropsId>(getMarkStyle, &DOM::RunStyle::setTrackedRunProps),
    styleProperty<PropertyId::TrackedActionId>(getMarkStyle, &DOM::RunStyle::setTrackedAction),
    styleProperty<PropertyId::HyperlinkId>(getMarkStyle, &DOM::RunStyle::setHyperlink),
    styleProperty<PropertyId::CommentUUIDsId>(getMarkStyle, [](DOM::RunStyle& style, const std::vector<UUID>& uuids)
                                              { style.getCommentUUIDs() = uuids; }),
    styleProperty<PropertyId::ParaPropertyId>(getParagraphStyle, &DOM::ParagraphStyle::setParaProps),
    styleProperty<PropertyId::ParaTrackedPropsId>(getParagraphStyle, &DOM::ParagraphStyle::setTrackedParaProps),
    styleProperty<PropertyId::ParagraphRunPropertyId>(getParagraphStyle, &DOM::ParagraphStyle::setRunProps),
    styleProperty<PropertyId::ParentStyleId>(getParagraphStyle, &DOM::ParagraphStyle::setParentUUID),
    styleProperty<PropertyId::TrackedParentStyleId>(getParagraphStyle, &DOM::ParagraphStyle::setTrackedParent),
    property<PropertyId::NumRefId>([](ParagraphTarget& target, const boost::optional<DOM::NumberingRef>& numRef)
                                   { Utils::setNumberingRef(target._paragraph, numRef); }));

} // namespace

void ParagraphOperationExecutor::apply(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                       const CollaborationEngine::DataValue& value)
{
    const auto adapter =
        ElementPathUtils::createDOMNodeAdapterAs<GenericParagraphNodeAdapter<false>>(getDomAdapter(), address);
    ParagraphTarget target{getDomAdapter().getSharedObjectFactory(), adapter->getParagraph()};
    setProperty(paragraphProperties, target, propertyId, value, "Unrecognized PropertyIdType");
    derefPtr(lockObserver()).onParaPropsChanged(address, propertyId);
}

} // namespace Zem::DOMCollaboration

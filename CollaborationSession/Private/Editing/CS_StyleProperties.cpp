#include "Editing/CS_StyleProperties.h"

#include "Editing/CS_InvalidEditError.h"

#include "DClb_PropertyValues.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include <functional>
#include <string>
#include <tuple>
#include <typeinfo>

namespace Zem::CollaborationSession
{

using CollaborationEngine::DataValue;
using DOM::ParagraphStyle;
using DOM::RunStyle;
using DOMCollaboration::PropertyId;

namespace
{

/// A row of a table of properties: the property, and how its value is got.
template<PropertyId id, class Getter>
struct PropertyRow
{
    Getter _get;
};

template<PropertyId id, class Getter>
constexpr PropertyRow<id, Getter> property(Getter getter)
{
    return PropertyRow<id, Getter>{getter};
}

using RunStyleComments = const std::vector<UUID>& (RunStyle::*)() const;

constexpr auto runStyleProperties =
    std::make_tuple(property<PropertyId::RunPropertyId>(&RunStyle::getRunProps),
                    property<PropertyId::RunTrackedPropsId>(&RunStyle::getTrackedRunProps),
                    property<PropertyId::TrackedActionId>(&RunStyle::getTrackedAction),
                    property<PropertyId::HyperlinkId>(&RunStyle::getHyperlink),
                    property<PropertyId::CommentUUIDsId>(static_cast<RunStyleComments>(&RunStyle::getCommentUUIDs)));

/// In a paragraph these are those of its own style.
constexpr auto runParentProperties =
    std::make_tuple(property<PropertyId::ParentStyleId>(&RunStyle::getParentUUID),
                    property<PropertyId::TrackedParentStyleId>(&RunStyle::getTrackedParent));

constexpr auto paragraphStyleProperties =
    std::make_tuple(property<PropertyId::ParaPropertyId>(&ParagraphStyle::getParaProps),
                    property<PropertyId::ParaTrackedPropsId>(&ParagraphStyle::getTrackedParaProps),
                    property<PropertyId::ParagraphRunPropertyId>(&ParagraphStyle::getRunProps),
                    property<PropertyId::ParentStyleId>(&ParagraphStyle::getParentUUID),
                    property<PropertyId::TrackedParentStyleId>(&ParagraphStyle::getTrackedParent));

template<PropertyId id, class Value>
SharedConstPtr<DataValue> makeValue(const Value& value)
{
    return makeSharedConst<DOMCollaboration::MapPropertyIdToSimpleDataValue<id>>(value);
}

/// The value of a property by its row; null when the table has none for it.
template<class Style, class... Rows>
SharedConstPtr<DataValue> findValue(const std::tuple<Rows...>& table, const Style& style, PropertyId propertyId)
{
    SharedConstPtr<DataValue> value;
    const auto tryRow = [&]<PropertyId id, class Getter>(const PropertyRow<id, Getter>& row)
    {
        if (id == propertyId)
        {
            value = makeValue<id>(std::invoke(row._get, style));
        }
        return static_cast<bool>(value);
    };
    std::apply([&](const Rows&... rows) { static_cast<void>((tryRow(rows) || ...)); }, table);
    return value;
}

[[noreturn]] void throwUnknownProperty(PropertyId propertyId, const char* owner)
{
    throw InvalidEditError("Property " + std::to_string(DOMCollaboration::convertPropertyId(propertyId)) +
                           " isn't one of " + owner);
}

} // namespace

SharedConstPtr<DataValue> getRunProperty(const DOM::Run& run, PropertyId propertyId)
{
    const RunStyle& style = DOM::derefSharedStyle(run.getSharedStyle());
    if (auto value = findValue(runStyleProperties, style, propertyId))
    {
        return value;
    }
    if (auto value = findValue(runParentProperties, style, propertyId))
    {
        return value;
    }
    throwUnknownProperty(propertyId, "the style of a run");
}

SharedConstPtr<DataValue> getParagraphProperty(const DOM::Paragraph& paragraph, PropertyId propertyId)
{
    if (auto value = findValue(paragraphStyleProperties, DOM::derefSharedStyle(paragraph.getSharedStyle()), propertyId))
    {
        return value;
    }
    const RunStyle& markStyle = DOM::derefSharedStyle(paragraph.getSharedParaMarkStyle());
    if (auto value = findValue(runStyleProperties, markStyle, propertyId))
    {
        return value;
    }
    if (propertyId == PropertyId::NumRefId)
    {
        boost::optional<DOM::NumberingRef> numRef;
        if (paragraph.getNumRef())
        {
            numRef = *paragraph.getNumRef();
        }
        return makeValue<PropertyId::NumRefId>(numRef);
    }
    throwUnknownProperty(propertyId, "a paragraph");
}

void requireRunProperty(PropertyId propertyId)
{
    static_cast<void>(getRunProperty(DOM::TextRun(), propertyId));
}

void requireParagraphProperty(PropertyId propertyId)
{
    static_cast<void>(getParagraphProperty(DOM::Paragraph(), propertyId));
}

void requireSameType(const SharedConstPtr<DataValue>& value, const DataValue& sample)
{
    const DataValue* plainValue = value.get();
    if (!plainValue || typeid(*plainValue) != typeid(sample))
    {
        throw InvalidEditError("The value isn't of the type of the property");
    }
}

} // namespace Zem::CollaborationSession

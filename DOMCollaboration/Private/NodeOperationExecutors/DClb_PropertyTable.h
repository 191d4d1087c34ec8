#pragma once

/// The table of the properties that an executor takes:
///
///     constexpr auto frameProperties = std::make_tuple(
///         property<PropertyId::ExtentId>([](DOM::Frame& frame, const auto& extent) { frame.setExtent(extent); }),
///         ...);
///     setProperty(frameProperties, frame, propertyId, value, "Unrecognized PropertyIdType");

#include "DClb_PropertyValues.h"

#include "DOM_SetToSharedStyle.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <functional>
#include <tuple>
#include <utility>

namespace Zem::DOMCollaboration
{

/// A row: a property, and what sets a value of it on its target.
template<PropertyId id, class Setter>
struct PropertyRow
{
    Setter _set;
};

/// `setter` is called with the target and a value of the property's type.
template<PropertyId id, class Setter>
constexpr PropertyRow<id, Setter> property(Setter setter)
{
    return PropertyRow<id, Setter>{std::move(setter)};
}

/// A style of an element, and the factory of its document.
template<class Style>
struct SharedStyleReference
{
    const DOM::SharedObjectFactory& _factory;
    DOM::SharedStyleConstIPtr<Style>& _sharedStyle;
};

/// A row for one member of a shared style. `getStyle` gives the `SharedStyleReference` of the target; `setMember`, a
/// member function of the style or another callable, sets a value on a style.
/// It points the target at the style that the factory gives, also when that is the default one: only what was never
/// set has none.
template<PropertyId id, class GetStyle, class SetMember>
constexpr auto styleProperty(GetStyle getStyle, SetMember setMember)
{
    return property<id>(
        [getStyle, setMember](auto& target, const auto& value)
        {
            const auto reference = getStyle(target);
            DOM::SetToSharedStyleDetails::setToSharedStyleVariadicImpl(
                reference._factory, reference._sharedStyle, [&](auto& style) { std::invoke(setMember, style, value); });
        });
}

namespace PropertyTableDetails
{

template<PropertyId id, class Setter, class Target>
bool setIfMatches(const PropertyRow<id, Setter>& row, Target& target, unsigned long propertyId,
                  const CollaborationEngine::DataValue& value)
{
    if (propertyId != convertPropertyId(id))
    {
        return false;
    }
    row._set(target, derefPtr(cast<MapPropertyIdToSimpleDataValue<id>>(&value)).getValue());
    return true;
}

} // namespace PropertyTableDetails

/// Sets a value on `target` by the row of the property.
/// Fails: `unknownIdMessage` when no row is for `propertyId`; "plainPtr" when the value is of another type.
template<class... Rows, class Target>
void setProperty(const std::tuple<Rows...>& table, Target& target, unsigned long propertyId,
                 const CollaborationEngine::DataValue& value, const char* unknownIdMessage)
{
    const bool isSet =
        std::apply([&](const Rows&... rows)
                   { return (PropertyTableDetails::setIfMatches(rows, target, propertyId, value) || ...); },
                   table);
    ZEM_ASSERT_MESSAGE(isSet, unknownIdMessage);
}

} // namespace Zem::DOMCollaboration

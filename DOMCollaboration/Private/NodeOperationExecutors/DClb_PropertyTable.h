#pragma once

/// The table of the properties that an executor takes:
///
///     constexpr auto frameProperties = std::make_tuple(
///         property<PropertyId::ExtentId>([](DOM::Frame& frame, const auto& extent) { frame.setExtent(extent); }),
///         ...);
///     setProperty(frameProperties, frame, propertyId, value, "Unrecognized PropertyIdType");

#include "DClb_PropertyValues.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_SetToSharedStyle.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"
#include "Util_SharedConstPtr.h"

#include <functional>
#include <optional>
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

/// A row that also tells the value that stands, so that operations keep what they really replaced.
template<PropertyId id, class Getter, class Setter>
struct ReadablePropertyRow : PropertyRow<id, Setter>
{
    Getter _get;
};

/// `getter` is called with the target, and gives a value of the property's type, a reference to one, or an
/// `std::optional` of one, which is empty where no value of the property expresses what stands.
template<PropertyId id, class Getter, class Setter>
constexpr ReadablePropertyRow<id, Getter, Setter> property(Getter getter, Setter setter)
{
    return ReadablePropertyRow<id, Getter, Setter>{{std::move(setter)}, std::move(getter)};
}

/// A style of an element, and the factory of its document.
template<class Style>
struct SharedStyleReference
{
    const DOM::SharedObjectFactory& _factory;
    DOM::SharedStyleConstIPtr<Style>& _sharedStyle;
};

/// A row for one member of a shared style. `getStyle` gives the `SharedStyleReference` of the target; `getMember` and
/// `setMember`, member functions of the style or other callables, give a style's value and set it.
/// It points the target at the style that the factory gives, also when that is the default one: only what was never
/// set has none.
template<PropertyId id, class GetStyle, class GetMember, class SetMember>
constexpr auto styleProperty(GetStyle getStyle, GetMember getMember, SetMember setMember)
{
    return property<id>([getStyle, getMember](const auto& target) -> decltype(auto)
                        { return std::invoke(getMember, DOM::derefSharedStyle(getStyle(target)._sharedStyle)); },
                        [getStyle, setMember](auto& target, const auto& value)
                        {
                            const auto reference = getStyle(target);
                            DOM::SetToSharedStyleDetails::setToSharedStyleVariadicImpl(
                                reference._factory, reference._sharedStyle,
                                [&](auto& style) { std::invoke(setMember, style, value); });
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

template<PropertyId id, class Value>
SharedConstPtr<CollaborationEngine::DataValue> wrap(const Value& value)
{
    return makeSharedConst<MapPropertyIdToSimpleDataValue<id>>(deepCopy(value));
}

template<PropertyId id, class Value>
SharedConstPtr<CollaborationEngine::DataValue> wrap(std::optional<Value> value)
{
    if (!value)
    {
        return nullptr;
    }
    return makeSharedConst<MapPropertyIdToSimpleDataValue<id>>(std::move(*value));
}

template<PropertyId id, class Setter, class Target>
void readIfMatches(const PropertyRow<id, Setter>&, const Target&, unsigned long,
                   SharedConstPtr<CollaborationEngine::DataValue>&)
{
}

template<PropertyId id, class Getter, class Setter, class Target>
void readIfMatches(const ReadablePropertyRow<id, Getter, Setter>& row, const Target& target, unsigned long propertyId,
                   SharedConstPtr<CollaborationEngine::DataValue>& value)
{
    if (propertyId == convertPropertyId(id))
    {
        value = wrap<id>(row._get(target));
    }
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

/// Carries `operation` out on `target` or, if `isReverse`, takes it back. The operation keeps the value that it really
/// replaced, where the row can read it, so that it is taken back exactly also where others set the property before it.
/// Fails: as `setProperty`.
template<class... Rows, class Target>
void applySetting(const std::tuple<Rows...>& table, Target& target,
                  CollaborationEngine::SetPropertyOperation& operation, bool isReverse, const char* unknownIdMessage)
{
    const unsigned long propertyId = operation.getPropertyID();
    if (isReverse)
    {
        setProperty(table, target, propertyId, operation.getOldValue(), unknownIdMessage);
        return;
    }
    SharedConstPtr<CollaborationEngine::DataValue> replaced;
    std::apply([&](const Rows&... rows)
               { (PropertyTableDetails::readIfMatches(rows, target, propertyId, replaced), ...); },
               table);
    setProperty(table, target, propertyId, operation.getNewValue(), unknownIdMessage);
    if (replaced)
    {
        operation.setOldValue(std::move(replaced));
    }
}

} // namespace Zem::DOMCollaboration

#pragma once

/// Changes of values of any class of the model, for tests that go through a class's list of fields.

#include "DOM_Block.h"
#include "DOM_ChartSpace.h"
#include "DOM_Image.h"
#include "DOM_Paragraph.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"
#include "DOM_TextWithTombstones.h"
#include "DOM_UUIDContainer.h"

#include "Util_BoolOpt.h"
#include "Util_Fields.h"
#include "Util_TableIndices.h"
#include "Util_TaggedValue.h"
#include "Util_UUID.h"

#include <boost/blank.hpp>
#include <boost/optional.hpp>
#include <boost/variant.hpp>

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

/// Makes `value` unequal to what it was. A null pointer, an empty optional or list gets a value.
template<class T>
void change(T& value);

namespace FieldChangesDetails
{

inline void changeValue(bool& value)
{
    value = !value;
}

inline void changeValue(BoolOpt& value)
{
    value = value && *value ? BoolOpt(false) : BoolOpt(true);
}

inline void changeValue(std::string& value)
{
    value += "x\xC3\xA4";
}

inline void changeValue(UUID& value)
{
    UUID::Bytes bytes = value.getBytes();
    bytes.back() ^= 0xFF;
    value = UUID(bytes);
}

inline void changeValue(boost::blank&)
{
}

inline void changeValue(TextWithTombstones& value)
{
    value.getBlocks().push_back(std::make_unique<Paragraph>());
}

inline void changeValue(std::unique_ptr<Block>& value)
{
    value = std::make_unique<Paragraph>();
}

inline void changeValue(std::unique_ptr<GraphicalObject>& value)
{
    if (value && value->getKind() == GraphicalObjectKind::Image)
    {
        value = std::make_unique<ChartSpace>();
        return;
    }
    value = std::make_unique<Image>();
}

inline void changeValue(CellIndex& value)
{
    ++value.colIndex;
}

inline void changeValue(TableRange& value)
{
    ++value._endColumn;
}

template<class T, class Tag>
void changeValue(TaggedValue<T, Tag>& value)
{
    T inner = value.get();
    change(inner);
    value = TaggedValue<T, Tag>(inner);
}

template<class T>
void changeValue(boost::optional<T>& value)
{
    if (!value)
    {
        value = T{};
        return;
    }
    change(*value);
}

template<class T>
void changeValue(std::vector<T>& value)
{
    value.emplace_back();
    change(value.back());
}

template<class Key, class Value>
void changeValue(std::map<Key, Value>& value)
{
    Key key{};
    while (value.count(key) != 0)
    {
        change(key);
    }
    value.emplace(key, Value{});
}

template<class First, class Second>
void changeValue(std::pair<First, Second>& value)
{
    change(value.second);
}

template<class T>
void changeValue(std::shared_ptr<const T>& value)
{
    auto changed = value ? std::make_shared<T>(*value) : std::make_shared<T>();
    if (value)
    {
        change(*changed);
    }
    value = std::move(changed);
}

template<class T>
void changeValue(std::unique_ptr<T>& value)
{
    if (!value)
    {
        value = std::make_unique<T>();
        return;
    }
    change(*value);
}

template<class Style>
void changeValue(SharedStyleConstIPtr<Style>& value)
{
    Style style = value ? value->get() : Style();
    change(style);
    value.reset(new SharedStyle<Style>(std::move(style)));
}

template<class... Types>
void changeValue(boost::variant<Types...>& value)
{
    boost::apply_visitor([](auto& alternative) { change(alternative); }, value);
}

template<class... Types>
void changeValue(boost::variant<boost::blank, Types...>& value)
{
    if (value.which() == 0)
    {
        value = std::get<0>(std::tuple<Types...>());
        return;
    }
    boost::apply_visitor([](auto& alternative) { change(alternative); }, value);
}

template<class T>
void changeValue(UUIDContainer<T>& value)
{
    value.insert(T());
}

} // namespace FieldChangesDetails

template<class T>
void change(T& value)
{
    if constexpr (std::is_enum_v<T>)
    {
        using Number = std::underlying_type_t<T>;
        value = value == getLastEnumerator(value) ? T() : static_cast<T>(static_cast<Number>(value) + 1);
    }
    else if constexpr (std::is_arithmetic_v<T> && !std::is_same_v<T, bool>)
    {
        value = static_cast<T>(value + 1);
    }
    else if constexpr (HasFields<T>)
    {
        change(value.*(std::get<0>(T::fields())._member));
    }
    else
    {
        FieldChangesDetails::changeValue(value);
    }
}

/// A copy of `object` with every field changed.
template<HasFields T>
T makeChanged(const T& object)
{
    T changed = object;
    forEachField<T>([&](const auto& row) { change(changed.*(row._member)); });
    return changed;
}

/// Calls `callable(name, changed)` with a copy of `object` for each of its fields, in which this one is changed.
template<HasFields T, class Callable>
void forEachFieldChanged(const T& object, Callable&& callable)
{
    forEachField<T>(
        [&](const auto& row)
        {
            T changed = object;
            change(changed.*(row._member));
            callable(row._name, changed);
        });
}

} // namespace Zem::DOM::Tests

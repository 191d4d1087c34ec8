#pragma once

/// The JSON forms of Boost's and our own small types, and how a class gets one. Only .cpp files include this header,
/// and they include it in place of cereal's own ones: what it adds to the input archive must be known wherever that
/// archive is used.
///
///     class Comment                                     // DOM_Comment.h: the form is declared, not defined
///     {
///         template<class Archive>
///         void serialize(Archive& archive);
///     };
///
///     template<class Archive>                           // DOM_Comment.cpp: defined, and instantiated for both
///     archives void Comment::serialize(Archive& archive)
///     {
///         archive(cereal::make_nvp("_text", _text));
///     }
///
///     ZEM_INSTANTIATE_JSON(Comment)
///
///     ZEM_JSON_OF_FIELDS(Indents)                       // or both at once, for a class with a list of fields
///
/// What the input archive does otherwise than cereal's own:
///
///     - A small integer that doesn't fit its type is refused, not cut.
///     - A float or double that is infinite, or no number at all, is refused; the output archive refuses it as well.
///     - A string keeps what stands behind a zero character.
///     - A negative "which" is refused.
///     - A pointer that repeats an id gets the object of that id only if it is of the same class. An object can be
///     named
///       only once it is complete, so that no object contains itself.

#include "Util_BoolOpt.h"
#include "Util_Export.h"
#include "Util_Fields.h"
#include "Util_FloatNumber.h"
#include "Util_JsonInput.h"
#include "Util_SharedConstPtr.h"
#include "Util_TableIndices.h"
#include "Util_TaggedValue.h"
#include "Util_UUID.h"
#include "Util_UUIDable.h"

#include <boost/optional.hpp>
#include <boost/variant.hpp>

#include <cereal/archives/json.hpp>
#include <cereal/types/base_class.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/utility.hpp>
#include <cereal/types/vector.hpp>

#include <cstdint>
#include <type_traits>
#include <utility>

namespace Zem
{

/// Writes or reads each field of `T`'s list as a named member, in the order of the list.
template<class Archive, HasFields T>
void serializeFields(Archive& archive, T& object)
{
    forEachField<T>([&](const auto& row) { archive(cereal::make_nvp(row._name, object.*(row._member))); });
}

template<class T, class Tag>
template<class Archive>
void TaggedValue<T, Tag>::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_value", _value));
}

template<class T>
template<class Archive>
void SharedConstPtr<T>::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_value", _value));
}

template<class T>
template<class Archive>
void Size2D<T>::serialize(Archive& archive)
{
    archive(_width, _height);
}

} // namespace Zem

namespace cereal
{

/// Numbers with a fraction. Fail: `Exception` on one that isn't finite, for which JSON has no form.
void save(JSONOutputArchive& archive, const float& number);
void save(JSONOutputArchive& archive, const double& number);

template<class Archive, class T>
void save(Archive& archive, const boost::optional<T>& optional)
{
    const bool hasValue = optional.has_value();
    archive(make_nvp("hasValue", hasValue));
    if (hasValue)
    {
        archive(make_nvp("value", *optional));
    }
}

template<class Archive, class T>
void load(Archive& archive, boost::optional<T>& optional)
{
    bool hasValue = false;
    archive(make_nvp("hasValue", hasValue));
    if (!hasValue)
    {
        optional.reset();
        return;
    }
    T value{};
    archive(make_nvp("value", value));
    optional = std::move(value);
}

template<class Archive, class... Types>
void save(Archive& archive, const boost::variant<Types...>& variant)
{
    const std::int32_t which = variant.which();
    archive(make_nvp("which", which));
    boost::apply_visitor([&](const auto& alternative) { archive(make_nvp("data", alternative)); }, variant);
}

/// Fails: `Exception` when "which" is no index of an alternative.
template<class Archive, class... Types>
void load(Archive& archive, boost::variant<Types...>& variant)
{
    std::int32_t which = 0;
    archive(make_nvp("which", which));
    if (which < 0 || which >= static_cast<std::int32_t>(sizeof...(Types)))
    {
        throw Exception("Invalid 'which' selector when deserializing boost::variant");
    }
    const auto loadAs = [&](auto&& alternative)
    {
        archive(make_nvp("data", alternative));
        variant = std::move(alternative);
    };
    std::int32_t index = 0;
    static_cast<void>(((index++ == which && (loadAs(Types{}), true)) || ...));
}

} // namespace cereal

/// Instantiates the member template `serialize` of a class for both JSON archives.
#define ZEM_INSTANTIATE_JSON(...)                                                                                      \
    template ZEM_EXPORT void __VA_ARGS__::serialize(cereal::JSONOutputArchive&);                                       \
    template ZEM_EXPORT void __VA_ARGS__::serialize(cereal::JSONInputArchive&);

/// The same for a class that writes and reads itself by different functions.
#define ZEM_INSTANTIATE_JSON_SAVE_LOAD(...)                                                                            \
    template ZEM_EXPORT void __VA_ARGS__::save(cereal::JSONOutputArchive&) const;                                      \
    template ZEM_EXPORT void __VA_ARGS__::load(cereal::JSONInputArchive&);

/// Defines and instantiates `serialize` for a class, not a template, whose form is its list of fields.
#define ZEM_JSON_OF_FIELDS(Class)                                                                                      \
    template<class Archive>                                                                                            \
    void Class::serialize(Archive& archive)                                                                            \
    {                                                                                                                  \
        ::Zem::serializeFields(archive, *this);                                                                        \
    }                                                                                                                  \
    ZEM_INSTANTIATE_JSON(Class)

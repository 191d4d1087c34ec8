#pragma once

/// Comparison and hashing by content: pointers count as what they point at, classes as their fields. What a class is to
/// make of itself is its own `==` and `hash_value`; a class with a list of fields gets both from the list. A class may
/// say by a static `getObjectForNull` that a null pointer to it stands for an object; `arePointersDeeplyEqual` alone
/// doesn't ask for that, and takes null for null.
///
/// A NaN is unequal to every number, itself included. An object is equal to itself even if it holds one, where two
/// pointers meet in it.

#include "Util_Fields.h"
#include "Util_SharedConstPtr.h"

#include <boost/functional/hash.hpp>
#include <boost/optional.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/variant.hpp>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem
{

namespace ComparisonDetails
{

template<class T>
struct IsPointer : std::false_type
{
};

template<class T>
struct IsPointer<std::unique_ptr<T>> : std::true_type
{
};

template<class T>
struct IsPointer<std::shared_ptr<T>> : std::true_type
{
};

template<class T>
struct IsPointer<boost::intrusive_ptr<T>> : std::true_type
{
};

template<class T>
struct IsPointer<SharedConstPtr<T>> : std::true_type
{
};

template<class T>
struct IsOptional : std::false_type
{
};

template<class T>
struct IsOptional<boost::optional<T>> : std::true_type
{
};

template<class T>
struct IsOptional<std::optional<T>> : std::true_type
{
};

template<class T>
struct IsVector : std::false_type
{
};

template<class T>
struct IsVector<std::vector<T>> : std::true_type
{
};

template<class T>
struct IsVariant : std::false_type
{
};

template<class... Types>
struct IsVariant<boost::variant<Types...>> : std::true_type
{
};

template<class T>
struct IsPair : std::false_type
{
};

template<class First, class Second>
struct IsPair<std::pair<First, Second>> : std::true_type
{
};

/// A map in the order of its keys.
template<class T>
concept IsMap = requires
{
    typename T::key_compare;
    typename T::mapped_type;
};

/// A class of which a null pointer stands for an object, such as a default one: it equals each pointer to an equal one.
template<class T>
concept HasObjectForNull = requires
{
    {
        T::getObjectForNull()
        } -> std::same_as<const T&>;
};

template<class Pointer>
using PointeeOf = std::remove_reference_t<decltype(*std::declval<const Pointer&>())>;

template<class Pointer>
const auto& derefWithNull(const Pointer& pointer)
{
    return pointer ? *pointer : PointeeOf<Pointer>::getObjectForNull();
}

template<class T>
bool areEqual(const T& left, const T& right);

/// The same pointer, or both null: equal; exactly one null: unequal; otherwise the pointees decide.
template<class Pointer>
bool arePointersDeeplyEqual(const Pointer& left, const Pointer& right)
{
    return left.get() == right.get() || (left && right && areEqual(*left, *right));
}

/// As `arePointersDeeplyEqual`, but where null stands for an object it equals a pointer to an equal one.
template<class Pointer>
bool areNullablePointersEqual(const Pointer& left, const Pointer& right)
{
    if constexpr (HasObjectForNull<PointeeOf<Pointer>>)
    {
        return left.get() == right.get() || areEqual(derefWithNull(left), derefWithNull(right));
    }
    else
    {
        return arePointersDeeplyEqual(left, right);
    }
}

template<class Sequence>
bool areElementsEqual(const Sequence& left, const Sequence& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const auto& leftElement, const auto& rightElement)
                      { return areEqual(leftElement, rightElement); });
}

template<class Variant>
bool areVariantsEqual(const Variant& left, const Variant& right)
{
    if (left.which() != right.which())
    {
        return false;
    }
    return boost::apply_visitor(
        [&](const auto& alternative)
        { return areEqual(alternative, boost::get<std::remove_cvref_t<decltype(alternative)>>(right)); },
        left);
}

template<class T>
bool areEqual(const T& left, const T& right)
{
    if constexpr (IsPointer<T>::value)
    {
        return areNullablePointersEqual(left, right);
    }
    else if constexpr (IsOptional<T>::value)
    {
        return left.has_value() == right.has_value() && (!left || areEqual(*left, *right));
    }
    else if constexpr (IsVector<T>::value || IsMap<T>)
    {
        return areElementsEqual(left, right);
    }
    else if constexpr (IsPair<T>::value)
    {
        return areEqual(left.first, right.first) && areEqual(left.second, right.second);
    }
    else if constexpr (IsVariant<T>::value)
    {
        return areVariantsEqual(left, right);
    }
    else
    {
        return left == right;
    }
}

template<class T>
void hashInto(std::size_t& seed, const T& value);

template<class Pointer>
void hashPointeeInto(std::size_t& seed, const Pointer& pointer)
{
    if constexpr (HasObjectForNull<PointeeOf<Pointer>>)
    {
        hashInto(seed, derefWithNull(pointer));
    }
    else
    {
        boost::hash_combine(seed, static_cast<bool>(pointer));
        if (pointer)
        {
            hashInto(seed, *pointer);
        }
    }
}

/// Mixes the hash of `value`, by content, into `seed`.
template<class T>
void hashInto(std::size_t& seed, const T& value)
{
    if constexpr (IsPointer<T>::value)
    {
        hashPointeeInto(seed, value);
    }
    else if constexpr (IsOptional<T>::value)
    {
        boost::hash_combine(seed, static_cast<bool>(value));
        if (value)
        {
            hashInto(seed, *value);
        }
    }
    else if constexpr (IsVector<T>::value || IsMap<T>)
    {
        boost::hash_combine(seed, value.size());
        for (const auto& element : value)
        {
            hashInto(seed, element);
        }
    }
    else if constexpr (IsPair<T>::value)
    {
        hashInto(seed, value.first);
        hashInto(seed, value.second);
    }
    else if constexpr (IsVariant<T>::value)
    {
        boost::hash_combine(seed, value.which());
        boost::apply_visitor([&](const auto& alternative) { hashInto(seed, alternative); }, value);
    }
    else if constexpr (HasFields<T>)
    {
        forEachField<T>([&](const auto& row) { hashInto(seed, value.*(row._member)); });
    }
    else
    {
        boost::hash_combine(seed, value);
    }
}

} // namespace ComparisonDetails

/// Equality by content, through pointers, optionals, variants, vectors and maps.
template<class T>
bool areDeeplyEqual(const T& left, const T& right)
{
    return ComparisonDetails::areEqual(left, right);
}

/// A hash of the content; equal contents have equal hashes.
template<class T>
std::size_t deepHash(const T& value)
{
    std::size_t seed = 0;
    ComparisonDetails::hashInto(seed, value);
    return seed;
}

namespace DefineDeepComparisonDetails
{

/// Compares two objects member by member, as their list of fields tells.
template<HasFields T>
bool areMembersDeeplyEqual(const T& left, const T& right)
{
    return allFields<T>([&](const auto& row)
                        { return ComparisonDetails::areEqual(left.*(row._member), right.*(row._member)); });
}

} // namespace DefineDeepComparisonDetails

/// `==` of every class with a list of fields. A namespace takes it over by a using-declaration.
inline namespace FieldOperators
{

template<HasFields T>
bool operator==(const T& left, const T& right)
{
    return DefineDeepComparisonDetails::areMembersDeeplyEqual(left, right);
}

} // namespace FieldOperators

} // namespace Zem

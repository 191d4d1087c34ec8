#pragma once

/// One list of fields for each value class. Equality, hashing, JSON and field-wise merging are all made from it, so a
/// field that is added to the list takes part in all of them, and one that isn't takes part in none.
///
///     struct Indents
///     {
///         float _left = 0;
///         float _right = 0;
///
///         static constexpr auto fields()
///         {
///             return std::make_tuple(field("_left", &Indents::_left), field("_right", &Indents::_right));
///         }
///     };
///
/// A derived class names the fields of its base first, by `std::tuple_cat(Base::fields(), ...)`. One that merely
/// inherits a list has none: its own fields would be forgotten.

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

namespace Zem
{

/// One row of a list of fields: its name on the wire and where it lies in its class.
template<class Owner, class Member>
struct Field
{
    const char* _name;
    Member Owner::*_member;
};

template<class Owner, class Member>
constexpr Field<Owner, Member> field(const char* name, Member Owner::*member)
{
    return {name, member};
}

namespace FieldsDetails
{

template<class Owner, class Member>
Owner ownerOf(const Field<Owner, Member>&);

/// The last row of a list made for `T` is a field of `T` itself. An empty list is that of an empty class.
template<class T, class List, std::size_t rowsCount = std::tuple_size_v<List>>
struct IsListOf : std::is_same<T, decltype(ownerOf(std::declval<std::tuple_element_t<rowsCount - 1, List>>()))>
{
};

template<class T, class List>
struct IsListOf<T, List, 0> : std::is_empty<T>
{
};

} // namespace FieldsDetails

/// A class that has a list of fields.
template<class T>
concept HasFields = requires
{
    T::fields();
}
&&FieldsDetails::IsListOf<T, decltype(T::fields())>::value;

/// Calls `callable` with each row of the list of `T`, in order.
template<HasFields T, class Callable>
constexpr void forEachField(Callable&& callable)
{
    std::apply([&](const auto&... rows) { (callable(rows), ...); }, T::fields());
}

/// Whether `predicate` holds for each row of the list of `T`; stops at the first for which it doesn't.
template<HasFields T, class Predicate>
constexpr bool allFields(Predicate&& predicate)
{
    return std::apply([&](const auto&... rows) { return (predicate(rows) && ...); }, T::fields());
}

} // namespace Zem

#pragma once

namespace Zem
{

/// A list of types, for closed visitors and for tables that are checked against each other.
template<class... Types>
struct TypeList
{
};

namespace TypeUtils
{

/// A type made of a tag and a number, so that two numbers of one kind of thing give two types that don't mix.
template<class Tag, int value>
struct ValueTag
{
    static constexpr int Value = value;
};

} // namespace TypeUtils

} // namespace Zem

#pragma once

/// Casts that check: between polymorphic types, between numbers, from text to numbers.

#include "Util_Assert.h"
#include "Util_BaseRuntimeError.h"
#include "Util_TaggedValue.h"

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace Zem
{

/// A reference cast down or across. Fails: `std::bad_cast` when the object is of another type.
template<class Target, class Source>
requires(!std::is_pointer_v<Source>) auto cast(Source& source)
    -> std::conditional_t<std::is_const_v<Source>, const Target&, Target&>
{
    using Result = std::conditional_t<std::is_const_v<Source>, const Target, Target>;
    return dynamic_cast<Result&>(source);
}

/// A pointer cast down or across; null when the object is of another type, or the pointer is null.
template<class Target, class Source>
auto cast(Source* source) -> std::conditional_t<std::is_const_v<Source>, const Target*, Target*>
{
    using Result = std::conditional_t<std::is_const_v<Source>, const Target, Target>;
    return dynamic_cast<Result*>(source);
}

/// Moves ownership to a pointer of the derived type. Fails: `std::bad_cast`, and `source` keeps the object.
template<class Target, class Source>
std::unique_ptr<Target> dynamicUPtrCheckedCast(std::unique_ptr<Source>&& source)
{
    auto& target = dynamic_cast<Target&>(derefPtr(source));
    static_cast<void>(source.release());
    return std::unique_ptr<Target>(&target);
}

/// What `numCast` throws when a number doesn't fit.
class ZEM_EXPORT BadNumCastError : public BaseRuntimeError
{
public:
    BadNumCastError();
};

namespace CastDetails
{

[[noreturn]] ZEM_EXPORT void throwBadNumCastError();

template<class Number>
struct NumberOf
{
    using Type = Number;

    static constexpr Number get(Number number)
    {
        return number;
    }
};

template<class T, class Tag>
struct NumberOf<TaggedValue<T, Tag>>
{
    using Type = T;

    static constexpr T get(const TaggedValue<T, Tag>& value)
    {
        return value.get();
    }
};

} // namespace CastDetails

/// Converts an integer to another integer type, or a tagged one to another tagged one.
/// Fails: `BadNumCastError` when the value doesn't fit.
template<class Target, class Source>
constexpr Target numCast(const Source& source)
{
    using Number = typename CastDetails::NumberOf<Target>::Type;
    const auto value = CastDetails::NumberOf<Source>::get(source);
    if (!std::in_range<Number>(value))
    {
        CastDetails::throwBadNumCastError();
    }
    return Target(static_cast<Number>(value));
}

/// A byte as it stands in a `char`, from a wider number. `std::in_range` takes no `char`, hence a function of its own.
/// Fails: `BadNumCastError` for a value outside -128 to 127.
constexpr char byteCast(short value)
{
    return static_cast<char>(numCast<signed char>(value));
}

/// Parses a whole number. `endPosition`, if given, receives the number of characters read; otherwise the whole text
/// must be the number. Blanks and a sign may stand in front of it. Empty when there is no number, or when it doesn't
/// fit a `long`. Fails: "base == 0 || (2 <= base && base <= 36)"; base 0 goes by the prefix of the number.
ZEM_EXPORT std::optional<long> strToLong(const std::string& text, unsigned long* endPosition, int base);

} // namespace Zem

#pragma once

#include <boost/functional/hash.hpp>

#include <compare>
#include <cstddef>
#include <functional>
#include <utility>

namespace Zem
{

/// A `T` that only converts explicitly: a strongly typed number. Arithmetic stays within one kind.
template<class T, class Tag>
class TaggedValue
{
public:
    using ValueType = T;

    constexpr TaggedValue() = default;

    constexpr explicit TaggedValue(T value)
        : _value(std::move(value))
    {
    }

    constexpr const T& get() const
    {
        return _value;
    }

    friend constexpr auto operator<=>(const TaggedValue&, const TaggedValue&) = default;
    friend constexpr bool operator==(const TaggedValue&, const TaggedValue&) = default;

    constexpr TaggedValue& operator+=(const TaggedValue& other)
    {
        _value += other._value;
        return *this;
    }

    constexpr TaggedValue& operator-=(const TaggedValue& other)
    {
        _value -= other._value;
        return *this;
    }

    constexpr TaggedValue& operator++()
    {
        ++_value;
        return *this;
    }

    constexpr TaggedValue& operator--()
    {
        --_value;
        return *this;
    }

    friend constexpr TaggedValue operator+(TaggedValue left, const TaggedValue& right)
    {
        return left += right;
    }

    friend constexpr TaggedValue operator-(TaggedValue left, const TaggedValue& right)
    {
        return left -= right;
    }

    friend constexpr TaggedValue operator+(TaggedValue left, const T& right)
    {
        return left += TaggedValue(right);
    }

    friend constexpr TaggedValue operator-(TaggedValue left, const T& right)
    {
        return left -= TaggedValue(right);
    }

    friend std::size_t hash_value(const TaggedValue& value)
    {
        return boost::hash<T>{}(value._value);
    }

    /// Defined in `Util_Json.h`.
    template<class Archive>
    void serialize(Archive& archive);

private:
    T _value{};
};

} // namespace Zem

template<class T, class Tag>
struct std::hash<Zem::TaggedValue<T, Tag>>
{
    std::size_t operator()(const Zem::TaggedValue<T, Tag>& value) const
    {
        return std::hash<T>{}(value.get());
    }
};

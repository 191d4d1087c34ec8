#pragma once

#include "Util_Assert.h"

#include <boost/none.hpp>

#include <cstddef>

namespace Zem
{

/// An optional bool in one byte.
class BoolOpt
{
public:
    BoolOpt() = default;

    BoolOpt(bool value)
        : _value(value ? 1 : 0)
    {
    }

    BoolOpt(boost::none_t)
    {
    }

    /// Whether there is a value; not the value itself.
    explicit operator bool() const
    {
        return _value != noValue;
    }

    /// Fails: "_value != noValue".
    bool operator*() const
    {
        ZEM_ASSERT(_value != noValue);
        return _value == 1;
    }

    friend bool operator==(const BoolOpt&, const BoolOpt&) = default;

    friend std::size_t hash_value(const BoolOpt& value)
    {
        return static_cast<std::size_t>(value._value + 1);
    }

    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

private:
    static constexpr signed char noValue = -1;

    signed char _value = noValue;
};

} // namespace Zem

#pragma once

#include "Util_DeepComparison.h"
#include "Util_Fields.h"

namespace Zem
{

/// A number held by a cell or a field.
struct FloatNumber
{
    FloatNumber() = default;

    explicit FloatNumber(double value)
        : _value(value)
    {
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_value", &FloatNumber::_value));
    }

    template<class Archive>
    void serialize(Archive& archive);

    double _value = 0;
};

} // namespace Zem

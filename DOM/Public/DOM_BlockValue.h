#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Fields.h"

#include <utility>

namespace Zem::DOM
{

/// What a formula gives when it has no value.
enum class FormulaErrorType : unsigned char
{
    DivisionByZero,
    WrongValueType,
    InvalidReference,
    UnknownName,
    InvalidNumber,
    NoValueAvailable,
    EmptyIntersection,
    CircularReference
};

constexpr FormulaErrorType getLastEnumerator(FormulaErrorType)
{
    return FormulaErrorType::CircularReference;
}

/// A value of a cell or field that isn't text.
template<class T>
class BlockValue
{
public:
    BlockValue() = default;

    explicit BlockValue(T value)
        : _value(std::move(value))
    {
    }

    const T& getValue() const
    {
        return _value;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_value", &BlockValue::_value));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    T _value{};
};

} // namespace Zem::DOM

#pragma once

/// The values that operations carry.

#include "Util_Cast.h"
#include "Util_Clonable.h"
#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"
#include "Util_Export.h"

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace Zem::CollaborationEngine
{

/// An abstract value. Two values are equal when their dynamic types and, deeply, their contents are. A value that is a
/// null pointer equals another null pointer alone: a setting that goes from null to a default object changes something,
/// though a document reads the same before and after it.
class ZEM_EXPORT DataValue : public Clonable<DataValue>
{
public:
    ~DataValue() override;

    virtual bool isDeeplyEqual(const DataValue& other) const = 0;

    friend bool operator==(const DataValue& left, const DataValue& right)
    {
        return left.isDeeplyEqual(right);
    }
};

/// A value that holds one `T`; what `T` owns through unique pointers is copied and compared with it.
template<class T>
class SimpleDataValue final : public DataValue
{
public:
    SimpleDataValue() = default;

    explicit SimpleDataValue(T value)
        : _value(std::move(value))
    {
    }

    SimpleDataValue(const SimpleDataValue& other)
        : DataValue(other)
        , _value(deepCopy(other._value))
    {
    }

    SimpleDataValue& operator=(const SimpleDataValue& other)
    {
        _value = deepCopy(other._value);
        return *this;
    }

    const T& getValue() const
    {
        return _value;
    }

    T& getValue()
    {
        return _value;
    }

    void cloneTo(std::shared_ptr<DataValue>& target) const override
    {
        target = std::make_shared<SimpleDataValue>(*this);
    }

    void cloneTo(std::unique_ptr<DataValue>& target) const override
    {
        target = std::make_unique<SimpleDataValue>(*this);
    }

    bool isDeeplyEqual(const DataValue& other) const override
    {
        const auto* sameKind = cast<SimpleDataValue>(&other);
        if constexpr (ComparisonDetails::IsPointer<T>::value)
        {
            return sameKind && ComparisonDetails::arePointersDeeplyEqual(_value, sameKind->_value);
        }
        else
        {
            return sameKind && areDeeplyEqual(_value, sameKind->_value);
        }
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    T _value{};
};

/// Refers to a value that someone else keeps alive, for handing it to code that takes a `DataValue` without a copy.
/// It is read as the reference that it holds. A clone is a `SimpleDataValue<T>` with a copy of the value, and so may
/// outlive that. It never travels.
template<class T>
class SimpleDataValue<std::reference_wrapper<const T>> final : public DataValue
{
public:
    explicit SimpleDataValue(std::reference_wrapper<const T> value)
        : _value(value)
    {
    }

    const std::reference_wrapper<const T>& getValue() const
    {
        return _value;
    }

    std::reference_wrapper<const T>& getValue()
    {
        return _value;
    }

    void cloneTo(std::shared_ptr<DataValue>& target) const override
    {
        target = std::make_shared<SimpleDataValue<T>>(deepCopy(_value.get()));
    }

    void cloneTo(std::unique_ptr<DataValue>& target) const override
    {
        target = std::make_unique<SimpleDataValue<T>>(deepCopy(_value.get()));
    }

    bool isDeeplyEqual(const DataValue& other) const override
    {
        const auto* sameKind = cast<SimpleDataValue>(&other);
        return sameKind && areDeeplyEqual(_value.get(), sameKind->_value.get());
    }

private:
    std::reference_wrapper<const T> _value;
};

/// The `T` inside a value. Fails: `std::bad_cast` when the value holds another type.
template<class T>
const T& getSimpleDataValue(const DataValue& value)
{
    return cast<SimpleDataValue<T>>(value).getValue();
}

template<class T>
T& getSimpleDataValue(DataValue& value)
{
    return cast<SimpleDataValue<T>>(value).getValue();
}

} // namespace Zem::CollaborationEngine

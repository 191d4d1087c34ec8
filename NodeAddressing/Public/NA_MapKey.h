#pragma once

/// Keys of map nodes.

#include "Util_Clonable.h"
#include "Util_Export.h"

#include <boost/functional/hash.hpp>

#include <cstddef>
#include <typeinfo>
#include <utility>

namespace Zem::NodeAddressing
{

/// An abstract key of an entry of a map node. Keys compare by dynamic type and value.
class ZEM_EXPORT MapKey : public Clonable<MapKey>
{
public:
    ~MapKey() override;

    virtual std::size_t getHash() const = 0;

    friend bool operator==(const MapKey& left, const MapKey& right)
    {
        return left.isEqual(right);
    }

private:
    virtual bool isEqual(const MapKey& other) const = 0;
};

/// A key that is one value; in use with `UUID` and with `std::string`.
template<class T>
class SimpleValueMapKey final : public MapKey
{
public:
    SimpleValueMapKey() = default;

    explicit SimpleValueMapKey(T value)
        : _value(std::move(value))
    {
    }

    const T& getValue() const
    {
        return _value;
    }

    std::size_t getHash() const override
    {
        return boost::hash<T>{}(_value);
    }

    void cloneTo(std::shared_ptr<MapKey>& target) const override
    {
        target = std::make_shared<SimpleValueMapKey>(*this);
    }

    void cloneTo(std::unique_ptr<MapKey>& target) const override
    {
        target = std::make_unique<SimpleValueMapKey>(*this);
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    bool isEqual(const MapKey& other) const override
    {
        const auto* sameKind = dynamic_cast<const SimpleValueMapKey*>(&other);
        return sameKind && sameKind->_value == _value;
    }

    T _value{};
};

} // namespace Zem::NodeAddressing

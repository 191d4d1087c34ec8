#pragma once

#include "Util_Assert.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace Zem
{

/// A shared pointer to immutable data. It is a type of its own, not an alias, since it has a JSON form of its own.
/// As with `std::shared_ptr`, `==` asks for the same object; `areDeeplyEqual` compares what is pointed at.
template<class T>
class SharedConstPtr
{
public:
    SharedConstPtr() = default;

    SharedConstPtr(std::nullptr_t)
    {
    }

    template<class Derived>
    requires std::is_convertible_v<Derived*, const T*> SharedConstPtr(std::shared_ptr<Derived> value)
        : _value(std::move(value))
    {
    }

    template<class Derived>
    requires std::is_convertible_v<Derived*, const T*> SharedConstPtr(std::unique_ptr<Derived> value)
        : _value(std::move(value))
    {
    }

    template<class Derived>
    requires std::is_convertible_v<const Derived*, const T*> SharedConstPtr(const SharedConstPtr<Derived>& other)
        : _value(other.getShared())
    {
    }

    const T* get() const
    {
        return _value.get();
    }

    /// Fails: "plainPtr" on null.
    const T& operator*() const
    {
        return derefPtr(_value);
    }

    /// Fails: "plainPtr" on null.
    const T* operator->() const
    {
        return &derefPtr(_value);
    }

    explicit operator bool() const
    {
        return static_cast<bool>(_value);
    }

    const std::shared_ptr<const T>& getShared() const
    {
        return _value;
    }

    friend bool operator==(const SharedConstPtr&, const SharedConstPtr&) = default;

    /// Defined in `Util_Json.h`.
    template<class Archive>
    void serialize(Archive& archive);

private:
    std::shared_ptr<const T> _value;
};

/// Makes a `T` in one allocation.
template<class T, class... Arguments>
SharedConstPtr<T> makeSharedConst(Arguments&&... arguments)
{
    return SharedConstPtr<T>(std::make_shared<const T>(std::forward<Arguments>(arguments)...));
}

} // namespace Zem

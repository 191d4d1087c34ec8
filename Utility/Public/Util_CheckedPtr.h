#pragma once

#include "Util_Assert.h"

namespace Zem
{

/// A plain pointer that doesn't own, and asserts when it is used while it is null. Fails: "plainPtr".
template<class T>
class CheckedPtr
{
public:
    CheckedPtr() = default;

    CheckedPtr(T* pointer)
        : _pointer(pointer)
    {
    }

    T* get() const
    {
        return _pointer;
    }

    T& operator*() const
    {
        return derefPtr(_pointer);
    }

    T* operator->() const
    {
        return &derefPtr(_pointer);
    }

    explicit operator bool() const
    {
        return _pointer != nullptr;
    }

    friend bool operator==(const CheckedPtr&, const CheckedPtr&) = default;

private:
    T* _pointer = nullptr;
};

} // namespace Zem

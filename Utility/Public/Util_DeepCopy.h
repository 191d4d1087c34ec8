#pragma once

/// Copies that own what they hold: a vector of owning pointers is copied with its pointees.

#include "Util_Clonable.h"

#include <concepts>
#include <memory>
#include <type_traits>
#include <vector>

namespace Zem
{

namespace CopyDetails
{

template<class T>
concept ClonableItself = std::derived_from<T, Clonable<T>>;

/// Copying by the copy constructor can't slice such an object.
template<class T>
concept CopyableWhole = (!std::is_polymorphic_v<T> || std::is_final_v<T>)&&std::copy_constructible<T>;

} // namespace CopyDetails

/// A copy of the object that `pointer` owns: a clone of its dynamic type, if it is `Clonable`, else made by the copy
/// constructor, which classes with virtual functions must then not leave open to slicing. Null gives null.
template<class T>
requires(CopyDetails::ClonableItself<T> ||
         CopyDetails::CopyableWhole<T>) std::unique_ptr<T> deepCopy(const std::unique_ptr<T>& pointer)
{
    if (!pointer)
    {
        return nullptr;
    }
    if constexpr (CopyDetails::ClonableItself<T>)
    {
        return cloneToUnique<T>(*pointer);
    }
    else
    {
        return std::make_unique<T>(*pointer);
    }
}

/// A copy of a vector of owning pointers with all its pointees.
template<class T>
std::vector<std::unique_ptr<T>> deepCopy(const std::vector<std::unique_ptr<T>>& pointers)
{
    std::vector<std::unique_ptr<T>> copies;
    copies.reserve(pointers.size());
    for (const std::unique_ptr<T>& pointer : pointers)
    {
        copies.push_back(deepCopy(pointer));
    }
    return copies;
}

/// Any other value is copied as it is.
template<class T>
requires std::copy_constructible<T> T deepCopy(const T& value)
{
    return value;
}

} // namespace Zem

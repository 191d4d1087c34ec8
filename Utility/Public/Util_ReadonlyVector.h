#pragma once

#include "Util_Assert.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace Zem
{

namespace ReadonlyFixedVectorDetails
{

/// Shows an owning pointer as a reference to its const pointee. Fails: "plainPtr" on a null pointer.
struct DerefAndMakeConstFunctor
{
    template<class T>
    const T& operator()(const std::unique_ptr<T>& pointer) const
    {
        return derefPtr(pointer);
    }
};

} // namespace ReadonlyFixedVectorDetails

/// A read-only view of a vector, whose elements are shown through `Functor`. It refers to the vector and copies
/// nothing.
template<class V, class Functor = ReadonlyFixedVectorDetails::DerefAndMakeConstFunctor>
class ReadonlyVector
{
public:
    class const_iterator
    {
    public:
        using iterator_category = std::input_iterator_tag;
        using difference_type = std::ptrdiff_t;
        using value_type = std::remove_cvref_t<decltype(Functor{}(std::declval<const typename V::value_type&>()))>;
        using reference = decltype(Functor{}(std::declval<const typename V::value_type&>()));
        using pointer = const value_type*;

        explicit const_iterator(typename V::const_iterator position)
            : _position(position)
        {
        }

        reference operator*() const
        {
            return Functor{}(*_position);
        }

        const_iterator& operator++()
        {
            ++_position;
            return *this;
        }

        const_iterator operator++(int)
        {
            const const_iterator before = *this;
            ++_position;
            return before;
        }

        friend bool operator==(const const_iterator&, const const_iterator&) = default;

    private:
        typename V::const_iterator _position;
    };

    explicit ReadonlyVector(const V& elements)
        : _elements(&elements)
    {
    }

    std::size_t size() const
    {
        return _elements->size();
    }

    bool empty() const
    {
        return _elements->empty();
    }

    /// Fails: "index < size()".
    decltype(auto) operator[](std::size_t index) const
    {
        ZEM_ASSERT(index < size());
        return Functor{}((*_elements)[index]);
    }

    const_iterator begin() const
    {
        return const_iterator(_elements->begin());
    }

    const_iterator end() const
    {
        return const_iterator(_elements->end());
    }

private:
    const V* _elements;
};

} // namespace Zem

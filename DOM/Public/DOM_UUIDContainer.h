#pragma once

#include "Util_Assert.h"
#include "Util_DeepComparison.h"
#include "Util_UUID.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

namespace Zem::DOM
{

/// Elements found by their own UUID, in the order of the UUIDs. Every operation takes time logarithmic in their number.
///
///     1. Each element lies under its own `getUUID()`; whoever changes an element leaves that alone.
template<class T>
class UUIDContainer
{
    using Collection = std::map<UUID, T>;

    template<class Position, class Element>
    class ElementIterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using difference_type = std::ptrdiff_t;
        using value_type = T;
        using reference = Element&;
        using pointer = Element*;

        ElementIterator() = default;

        explicit ElementIterator(Position position)
            : _position(position)
        {
        }

        Element& operator*() const
        {
            return _position->second;
        }

        Element* operator->() const
        {
            return &_position->second;
        }

        ElementIterator& operator++()
        {
            ++_position;
            return *this;
        }

        ElementIterator operator++(int)
        {
            return ElementIterator(_position++);
        }

        friend bool operator==(const ElementIterator&, const ElementIterator&) = default;

    private:
        Position _position;
    };

public:
    using value_type = T;
    using iterator = ElementIterator<typename Collection::iterator, T>;
    using const_iterator = ElementIterator<typename Collection::const_iterator, const T>;

    /// Null if there is none.
    const T* find(const UUID& uuid) const
    {
        const auto it = _collection.find(uuid);
        return it == _collection.end() ? nullptr : &it->second;
    }

    T* find(const UUID& uuid)
    {
        const auto it = _collection.find(uuid);
        return it == _collection.end() ? nullptr : &it->second;
    }

    /// Fails: "_collection.find(uuid) == _collection.end()" when an element of this UUID is there already.
    void insert(T element)
    {
        const UUID uuid = element.getUUID();
        ZEM_ASSERT(_collection.find(uuid) == _collection.end());
        _collection.emplace(uuid, std::move(element));
    }

    /// Takes the element out and returns it. Fails: "it != _collection.end()" when there is none.
    T take(const UUID& uuid)
    {
        const auto it = _collection.find(uuid);
        ZEM_ASSERT(it != _collection.end());
        T element = std::move(it->second);
        _collection.erase(it);
        return element;
    }

    /// Fails: "it != _collection.end()" when there is none.
    void remove(const UUID& uuid)
    {
        const auto it = _collection.find(uuid);
        ZEM_ASSERT(it != _collection.end());
        _collection.erase(it);
    }

    std::size_t size() const
    {
        return _collection.size();
    }

    bool empty() const
    {
        return _collection.empty();
    }

    iterator begin()
    {
        return iterator(_collection.begin());
    }

    iterator end()
    {
        return iterator(_collection.end());
    }

    const_iterator begin() const
    {
        return const_iterator(_collection.begin());
    }

    const_iterator end() const
    {
        return const_iterator(_collection.end());
    }

    /// Whether invariant 1 holds. Linear.
    bool areElementsUnderTheirUUIDs() const
    {
        return std::all_of(_collection.begin(), _collection.end(),
                           [](const auto& entry) { return entry.first == entry.second.getUUID(); });
    }

    friend bool operator==(const UUIDContainer& left, const UUIDContainer& right)
    {
        return areDeeplyEqual(left._collection, right._collection);
    }

    /// The elements in their order. Fails: `cereal::Exception` when two elements that are read have one UUID.
    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

private:
    Collection _collection;
};

} // namespace Zem::DOM

#pragma once

/// The address of a node: the steps that lead to it from the root of its document.

#include "NA_AddressChunks.h"

#include "Util_Assert.h"

#include <boost/container/small_vector.hpp>
#include <boost/variant.hpp>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace Zem::NodeAddressing
{

/// A vector of chunks, from the root down. `Tag` keeps the address worlds apart, `Type` is the world's node type.
/// Most addresses are short, so that up to `inlineChunks` chunks need no allocation.
template<class Tag, class Type>
class NodeAddress
{
public:
    using NodeType = Type;
    using FixedChunk = FixedNodeAddress<Type>;
    using Chunk = boost::variant<AddressInList, AddressInTable, AddressInMap, FixedChunk>;

    static constexpr std::size_t inlineChunks = 2;

    using Items = boost::container::small_vector<Chunk, inlineChunks>;

    NodeAddress() = default;

    NodeAddress(std::initializer_list<Chunk> items)
        : _items(items.begin(), items.end())
    {
    }

    unsigned long getSize() const
    {
        return _items.size();
    }

    bool isEmpty() const
    {
        return _items.empty();
    }

    const Items& getItems() const
    {
        return _items;
    }

    /// The chunk at `index` from the root. Fails: "index < _items.size()".
    const Chunk& getItem(unsigned long index) const
    {
        ZEM_ASSERT(index < _items.size());
        return _items[index];
    }

    Chunk& getItem(unsigned long index)
    {
        ZEM_ASSERT(index < _items.size());
        return _items[index];
    }

    /// The chunk at `index` counted from the end, 0 being the last; null if it is of another kind.
    /// Fails: "index < _items.size()".
    template<class ChunkType>
    const ChunkType* getItemFromEndAs(unsigned long index) const
    {
        ZEM_ASSERT(index < _items.size());
        return boost::get<ChunkType>(&_items[_items.size() - 1 - index]);
    }

    template<class ChunkType>
    ChunkType* getItemFromEndAs(unsigned long index)
    {
        ZEM_ASSERT(index < _items.size());
        return boost::get<ChunkType>(&_items[_items.size() - 1 - index]);
    }

    /// Adds chunks at the end. They come as copies, so that chunks of this very address may be added.
    template<class... Chunks>
    NodeAddress& appendItems(Chunks... chunks)
    {
        _items.reserve(_items.size() + sizeof...(chunks));
        (_items.emplace_back(std::move(chunks)), ...);
        return *this;
    }

    /// Adds `count` chunks of `other`, which may be this address, from its chunk `begin` on.
    /// Fails: "position <= _items.size()" where the stretch begins or ends behind the last chunk.
    NodeAddress& append(const NodeAddress& other, unsigned long begin, unsigned long count)
    {
        if (&other == this)
        {
            return append(NodeAddress(other), begin, count);
        }
        other.requirePosition(begin);
        other.requirePosition(count);
        other.requirePosition(begin + count);
        const auto first = other._items.begin() + static_cast<std::ptrdiff_t>(begin);
        _items.insert(_items.end(), first, first + static_cast<std::ptrdiff_t>(count));
        return *this;
    }

    /// Takes `trimSize` chunks off the end. Fails: "trimSize <= _items.size()".
    void trimAtEnd(unsigned long trimSize)
    {
        ZEM_ASSERT(trimSize <= _items.size());
        _items.erase(_items.end() - static_cast<std::ptrdiff_t>(trimSize), _items.end());
    }

    NodeAddress getTrimmedAtEnd(unsigned long trimSize) const
    {
        NodeAddress trimmed(*this);
        trimmed.trimAtEnd(trimSize);
        return trimmed;
    }

    /// Whether this address leads to `other` or to something above it.
    bool isPrefixOf(const NodeAddress& other) const
    {
        return _items.size() <= other._items.size() && std::equal(_items.begin(), _items.end(), other._items.begin());
    }

    void reserve(unsigned long count)
    {
        _items.reserve(count);
    }

    friend bool operator==(const NodeAddress& left, const NodeAddress& right)
    {
        return left._items == right._items;
    }

    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

private:
    void requirePosition(unsigned long position) const
    {
        ZEM_ASSERT(position <= _items.size());
    }

    Items _items;
};

} // namespace Zem::NodeAddressing

#pragma once

/// The nodes of `SummedSequence`, and the pools in which they lie.

#include "Util_Assert.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace Zem::CollaborationUtils
{

/// A small value with an additive summary, whose default is zero.
template<class Item>
concept SummedItem = std::default_initializable<Item> && std::copyable<Item> &&
    std::equality_comparable<typename Item::Summary> &&
    requires(const Item& item, typename Item::Summary sum, const typename Item::Summary& other)
{
    {
        item.getSummary()
        } -> std::convertible_to<typename Item::Summary>;
    sum += other;
    sum -= other;
};

namespace SummedSequenceDetails
{

/// The most entries of a node, and the fewest of one that isn't the root.
constexpr unsigned fanout = 16;
constexpr unsigned minimalFill = fanout / 4;

/// Where a node lies in its pool.
using NodeNumber = std::uint32_t;
constexpr NodeNumber noNode = 0xFFFFFFFF;

/// How many items there are below an entry, and the sum of their summaries.
template<class Summary>
struct Totals
{
    Totals& operator+=(const Totals& other)
    {
        _size += other._size;
        _sum += other._sum;
        return *this;
    }

    Totals& operator-=(const Totals& other)
    {
        _size -= other._size;
        _sum -= other._sum;
        return *this;
    }

    friend bool operator==(const Totals&, const Totals&) = default;

    std::size_t _size = 0;
    Summary _sum{};
};

/// An entry of an inner node.
template<class Summary>
struct Branch
{
    Totals<Summary> _totals;
    NodeNumber _child = noNode;
};

template<class Item>
Totals<typename Item::Summary> getTotals(const Item& item)
{
    return {1, item.getSummary()};
}

template<class Summary>
const Totals<Summary>& getTotals(const Branch<Summary>& branch)
{
    return branch._totals;
}

/// A leaf, whose entries are items, or an inner node, whose entries are branches.
template<class Entry>
struct Node
{
    /// `entry` may be one of this node.
    void insertAt(unsigned slot, const Entry& entry)
    {
        const Entry copy = entry;
        std::move_backward(_entries.begin() + slot, _entries.begin() + _count, _entries.begin() + _count + 1);
        _entries[slot] = copy;
        ++_count;
    }

    void eraseAt(unsigned slot)
    {
        std::move(_entries.begin() + slot + 1, _entries.begin() + _count, _entries.begin() + slot);
        --_count;
    }

    /// Moves the first `count` entries to the end of `target`.
    void moveFrontTo(Node& target, unsigned count)
    {
        std::move(_entries.begin(), _entries.begin() + count, target._entries.begin() + target._count);
        std::move(_entries.begin() + count, _entries.begin() + _count, _entries.begin());
        target._count += count;
        _count -= count;
    }

    /// Moves the last `count` entries to the front of `target`.
    void moveBackTo(Node& target, unsigned count)
    {
        const auto targetBegin = target._entries.begin();
        std::move_backward(targetBegin, targetBegin + target._count, targetBegin + target._count + count);
        std::move(_entries.begin() + (_count - count), _entries.begin() + _count, targetBegin);
        target._count += count;
        _count -= count;
    }

    auto sumUp() const
    {
        std::remove_cvref_t<decltype(getTotals(_entries[0]))> totals;
        for (unsigned slot = 0; slot < _count; ++slot)
        {
            totals += getTotals(_entries[slot]);
        }
        return totals;
    }

    unsigned _count = 0;
    NodeNumber _nextFree = noNode;
    std::array<Entry, fanout> _entries{};
};

/// The nodes of one kind, in one array; those that are free form a chain. A copy of the pool is a copy of its nodes.
template<class Node>
class NodePool
{
public:
    void reserve(std::size_t count)
    {
        _nodes.reserve(count);
    }

    /// The number of an empty node. References to nodes of this pool become invalid.
    NodeNumber allocate()
    {
        if (_firstFree == noNode)
        {
            ZEM_ASSERT(_nodes.size() < noNode);
            _nodes.emplace_back();
            return static_cast<NodeNumber>(_nodes.size() - 1);
        }
        const NodeNumber number = _firstFree;
        _firstFree = _nodes[number]._nextFree;
        _nodes[number]._nextFree = noNode;
        return number;
    }

    void release(NodeNumber number)
    {
        _nodes[number]._count = 0;
        _nodes[number]._nextFree = _firstFree;
        _firstFree = number;
    }

    Node& operator[](NodeNumber number)
    {
        return _nodes[number];
    }

    const Node& operator[](NodeNumber number) const
    {
        return _nodes[number];
    }

    std::size_t countUsed() const
    {
        std::size_t used = _nodes.size();
        for (NodeNumber number = _firstFree; number != noNode; number = _nodes[number]._nextFree)
        {
            --used;
        }
        return used;
    }

    std::size_t getMemoryUsage() const
    {
        return _nodes.capacity() * sizeof(Node);
    }

private:
    std::vector<Node> _nodes;
    NodeNumber _firstFree = noNode;
};

} // namespace SummedSequenceDetails

} // namespace Zem::CollaborationUtils

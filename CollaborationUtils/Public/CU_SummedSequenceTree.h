#pragma once

/// The tree of `SummedSequence`, which tells the idea and numbers the invariants. A tree always holds items.

#include "CU_SummedSequenceNodes.h"

#include "Util_Assert.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace Zem::CollaborationUtils::SummedSequenceDetails
{

/// Trees are at most as high as the numbers of nodes can make them.
constexpr unsigned maximalHeight = 16;

struct Step
{
    NodeNumber _node;
    unsigned _slot;
};

/// The way to an item, or to the end of a leaf: a node and a slot for each level, the leaf's first. Paths are made all
/// the time, so that only the steps in use are ever written or copied.
class Path
{
public:
    Path() noexcept
    {
    }

    Path(const Path& other) noexcept
    {
        *this = other;
    }

    Path& operator=(const Path& other) noexcept
    {
        _length = other._length;
        std::copy_n(other._steps.begin(), _length, _steps.begin());
        return *this;
    }

    void setLength(unsigned length)
    {
        _length = length;
    }

    Step& operator[](unsigned level)
    {
        return _steps[level];
    }

    const Step& operator[](unsigned level) const
    {
        return _steps[level];
    }

private:
    std::array<Step, maximalHeight + 1> _steps;
    unsigned _length = 0;
};

template<class Item>
class Tree
{
public:
    using Summary = typename Item::Summary;
    using Totals = SummedSequenceDetails::Totals<Summary>;

    /// Fails: "!items.empty()".
    explicit Tree(const std::vector<Item>& items);

    const Totals& getTotals() const
    {
        return _totals;
    }

    /// Walks down to the first item at whose end the sum of `measure(totals)` is more than `target`, or to the end.
    /// Gives the way to it, and the totals of what stands before it.
    template<class Measure, class Target>
    void descend(const Measure& measure, Target target, Path& path, Totals& before) const;

    const Item& getItem(const Path& path) const
    {
        return _leaves[path[0]._node]._entries[path[0]._slot];
    }

    /// Leads `path` from an item to the next one, or to the end.
    void advance(Path& path) const;

    /// Leads `path` to the item before. Requires: there is one.
    void retreat(Path& path) const;

    /// Inserts before the item, or at the end of the leaf, to which `path` leads.
    void insert(const Path& path, const Item& item);

    /// Requires: there are two items at least.
    void erase(const Path& path);

    void update(const Path& path, const Item& item);

    /// Calls `visitor` with each item from `path` on, as long as it returns true.
    template<class Visitor>
    void forEach(Path path, Visitor&& visitor) const;

    /// Whether both hold equal items in the same order.
    bool isEqual(const Tree& other) const;

    void checkInvariants() const;

    std::size_t getMemoryUsage() const
    {
        return _leaves.getMemoryUsage() + _inners.getMemoryUsage();
    }

private:
    using Branch = SummedSequenceDetails::Branch<Summary>;

    /// Calls `callable` with the pool of the nodes of `level`.
    template<class Callable>
    decltype(auto) withPool(unsigned level, Callable&& callable)
    {
        return level == 0 ? callable(_leaves) : callable(_inners);
    }

    unsigned getCount(NodeNumber node, unsigned level) const
    {
        return level == 0 ? _leaves[node]._count : _inners[node]._count;
    }

    template<class Pool, class Entry>
    static std::vector<Branch> buildLevel(Pool& pool, const std::vector<Entry>& entries);

    Path getBegin() const;
    bool advanceLeaf(Path& path) const;

    void insertWithRoom(const Path& path, const Item& item);
    void makeRoom(Path& path, unsigned level);
    void growRoot(Path& path);
    template<class Pool>
    void split(Pool& pool, Path& path, unsigned level);

    void mendUnderflow(const Path& path, unsigned level);
    void shrinkRoot();
    template<class Pool>
    bool combine(Pool& pool, Node<Branch>& parent, unsigned leftSlot);

    struct NodesCount
    {
        std::size_t _leaves = 0;
        std::size_t _inners = 0;
    };

    Totals checkNode(NodeNumber node, unsigned level, NodesCount& count) const;

    NodePool<Node<Item>> _leaves;
    NodePool<Node<Branch>> _inners;
    Totals _totals;
    NodeNumber _root = 0;
    /// The level of the root; leaves have level 0.
    unsigned _height = 0;
};

template<class Item>
Tree<Item>::Tree(const std::vector<Item>& items)
{
    ZEM_ASSERT(!items.empty());
    std::vector<Branch> branches = buildLevel(_leaves, items);
    while (branches.size() > 1)
    {
        branches = buildLevel(_inners, branches);
        ++_height;
    }
    _root = branches.front()._child;
    _totals = branches.front()._totals;
}

/// Spreads `entries` evenly over nodes that are three quarters full at most, and returns the branches to these.
template<class Item>
template<class Pool, class Entry>
std::vector<typename Tree<Item>::Branch> Tree<Item>::buildLevel(Pool& pool, const std::vector<Entry>& entries)
{
    constexpr std::size_t comfortableFill = fanout - minimalFill;
    const std::size_t nodesCount = (entries.size() + comfortableFill - 1) / comfortableFill;
    std::vector<Branch> branches;
    branches.reserve(nodesCount);
    pool.reserve(nodesCount);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < nodesCount; ++i)
    {
        const std::size_t end = entries.size() * (i + 1) / nodesCount;
        const NodeNumber number = pool.allocate();
        auto& node = pool[number];
        std::copy(entries.data() + begin, entries.data() + end, node._entries.begin());
        node._count = static_cast<unsigned>(end - begin);
        branches.push_back({node.sumUp(), number});
        begin = end;
    }
    return branches;
}

template<class Item>
template<class Measure, class Target>
void Tree<Item>::descend(const Measure& measure, Target target, Path& path, Totals& before) const
{
    path.setLength(_height + 1);
    std::size_t size = 0;
    Summary sum{};
    const auto skip = [&](const auto& node, unsigned count)
    {
        unsigned slot = 0;
        for (; slot < count; ++slot)
        {
            const Totals& totals = SummedSequenceDetails::getTotals(node._entries[slot]);
            const Target amount = measure(totals);
            if (amount > target)
            {
                break;
            }
            target -= amount;
            size += totals._size;
            sum += totals._sum;
        }
        return slot;
    };
    NodeNumber number = _root;
    for (unsigned level = _height; level > 0; --level)
    {
        const Node<Branch>& node = _inners[number];
        const unsigned slot = skip(node, node._count - 1);
        path[level] = {number, slot};
        number = node._entries[slot]._child;
    }
    const Node<Item>& leaf = _leaves[number];
    path[0] = {number, skip(leaf, leaf._count)};
    before._size = size;
    before._sum = sum;
}

template<class Item>
void Tree<Item>::update(const Path& path, const Item& item)
{
    Item& place = _leaves[path[0]._node]._entries[path[0]._slot];
    const Summary oldSummary = place.getSummary();
    const Summary newSummary = item.getSummary();
    const auto exchange = [&](Summary& sum)
    {
        sum -= oldSummary;
        sum += newSummary;
    };
    place = item;
    for (unsigned level = 1; level <= _height; ++level)
    {
        exchange(_inners[path[level]._node]._entries[path[level]._slot]._totals._sum);
    }
    exchange(_totals._sum);
}

template<class Item>
void Tree<Item>::insert(const Path& path, const Item& item)
{
    if (_leaves[path[0]._node]._count < fanout)
    {
        insertWithRoom(path, item);
        return;
    }
    const Item copy = item;
    Path pathWithRoom = path;
    makeRoom(pathWithRoom, 0);
    insertWithRoom(pathWithRoom, copy);
}

template<class Item>
void Tree<Item>::insertWithRoom(const Path& path, const Item& item)
{
    const Totals totals = SummedSequenceDetails::getTotals(item);
    _leaves[path[0]._node].insertAt(path[0]._slot, item);
    for (unsigned level = 1; level <= _height; ++level)
    {
        _inners[path[level]._node]._entries[path[level]._slot]._totals += totals;
    }
    _totals += totals;
}

/// Sees to it that the node of `level` has room for an entry; `path` goes on leading to the same place.
template<class Item>
void Tree<Item>::makeRoom(Path& path, unsigned level)
{
    if (getCount(path[level]._node, level) < fanout)
    {
        return;
    }
    if (level == _height)
    {
        growRoot(path);
    }
    makeRoom(path, level + 1);
    withPool(level, [&](auto& pool) { split(pool, path, level); });
}

/// Puts a new root above the old one.
template<class Item>
void Tree<Item>::growRoot(Path& path)
{
    ZEM_ASSERT(_height < maximalHeight);
    const NodeNumber newRoot = _inners.allocate();
    _inners[newRoot].insertAt(0, {_totals, _root});
    _root = newRoot;
    ++_height;
    path.setLength(_height + 1);
    path[_height] = {newRoot, 0};
}

/// Moves the upper half of a full node to a new node beside it. Requires: its parent has room.
template<class Item>
template<class Pool>
void Tree<Item>::split(Pool& pool, Path& path, unsigned level)
{
    constexpr unsigned half = fanout / 2;
    const NodeNumber right = pool.allocate();
    const NodeNumber left = path[level]._node;
    pool[left].moveBackTo(pool[right], fanout - half);

    Step& parentStep = path[level + 1];
    Node<Branch>& parent = _inners[parentStep._node];
    const Totals moved = pool[right].sumUp();
    parent._entries[parentStep._slot]._totals -= moved;
    parent.insertAt(parentStep._slot + 1, {moved, right});
    if (path[level]._slot >= half)
    {
        path[level] = {right, path[level]._slot - half};
        ++parentStep._slot;
    }
}

template<class Item>
void Tree<Item>::erase(const Path& path)
{
    Node<Item>& leaf = _leaves[path[0]._node];
    const Totals totals = SummedSequenceDetails::getTotals(leaf._entries[path[0]._slot]);
    leaf.eraseAt(path[0]._slot);
    for (unsigned level = 1; level <= _height; ++level)
    {
        _inners[path[level]._node]._entries[path[level]._slot]._totals -= totals;
    }
    _totals -= totals;
    mendUnderflow(path, 0);
}

/// Restores invariant 1 for the node of `level` after it has lost an entry, and for those above it.
template<class Item>
void Tree<Item>::mendUnderflow(const Path& path, unsigned level)
{
    if (level == _height)
    {
        shrinkRoot();
        return;
    }
    if (getCount(path[level]._node, level) >= minimalFill)
    {
        return;
    }
    Node<Branch>& parent = _inners[path[level + 1]._node];
    const unsigned slot = path[level + 1]._slot;
    const unsigned leftSlot = slot > 0 ? slot - 1 : 0;
    if (withPool(level, [&](auto& pool) { return combine(pool, parent, leftSlot); }))
    {
        mendUnderflow(path, level + 1);
    }
}

/// Takes away roots that have one child alone.
template<class Item>
void Tree<Item>::shrinkRoot()
{
    while (_height > 0 && _inners[_root]._count == 1)
    {
        const NodeNumber child = _inners[_root]._entries[0]._child;
        _inners.release(_root);
        _root = child;
        --_height;
    }
}

/// Makes one node of two neighbours, if that holds their entries, and else evens them out. Returns whether it made one.
template<class Item>
template<class Pool>
bool Tree<Item>::combine(Pool& pool, Node<Branch>& parent, unsigned leftSlot)
{
    Branch& leftBranch = parent._entries[leftSlot];
    Branch& rightBranch = parent._entries[leftSlot + 1];
    auto& left = pool[leftBranch._child];
    auto& right = pool[rightBranch._child];
    if (left._count + right._count <= fanout)
    {
        right.moveFrontTo(left, right._count);
        leftBranch._totals += rightBranch._totals;
        pool.release(rightBranch._child);
        parent.eraseAt(leftSlot + 1);
        return true;
    }
    if (left._count < right._count)
    {
        right.moveFrontTo(left, (right._count - left._count) / 2);
    }
    else
    {
        left.moveBackTo(right, (left._count - right._count) / 2);
    }
    leftBranch._totals += rightBranch._totals;
    rightBranch._totals = right.sumUp();
    leftBranch._totals -= rightBranch._totals;
    return false;
}

template<class Item>
template<class Visitor>
void Tree<Item>::forEach(Path path, Visitor&& visitor) const
{
    do
    {
        const Node<Item>& leaf = _leaves[path[0]._node];
        for (unsigned slot = path[0]._slot; slot < leaf._count; ++slot)
        {
            if (!visitor(leaf._entries[slot]))
            {
                return;
            }
        }
    } while (advanceLeaf(path));
}

template<class Item>
Path Tree<Item>::getBegin() const
{
    Path path;
    Totals before;
    descend([](const Totals& totals) { return totals._size; }, std::size_t{0}, path, before);
    return path;
}

/// Leads `path` to the beginning of the next leaf. Returns false behind the last one.
template<class Item>
bool Tree<Item>::advanceLeaf(Path& path) const
{
    unsigned level = 1;
    while (level <= _height && path[level]._slot + 1 == _inners[path[level]._node]._count)
    {
        ++level;
    }
    if (level > _height)
    {
        return false;
    }
    ++path[level]._slot;
    for (; level > 0; --level)
    {
        path[level - 1] = {_inners[path[level]._node]._entries[path[level]._slot]._child, 0};
    }
    return true;
}

template<class Item>
void Tree<Item>::advance(Path& path) const
{
    ++path[0]._slot;
    if (path[0]._slot == _leaves[path[0]._node]._count)
    {
        advanceLeaf(path);
    }
}

template<class Item>
void Tree<Item>::retreat(Path& path) const
{
    unsigned level = 0;
    while (path[level]._slot == 0)
    {
        ++level;
    }
    --path[level]._slot;
    for (; level > 0; --level)
    {
        const NodeNumber child = _inners[path[level]._node]._entries[path[level]._slot]._child;
        path[level - 1] = {child, getCount(child, level - 1) - 1};
    }
}

template<class Item>
bool Tree<Item>::isEqual(const Tree& other) const
{
    if (_totals != other._totals)
    {
        return false;
    }
    Path otherPath = other.getBegin();
    bool areEqual = true;
    forEach(getBegin(),
            [&](const Item& item)
            {
                areEqual = item == other.getItem(otherPath);
                other.advance(otherPath);
                return areEqual;
            });
    return areEqual;
}

template<class Item>
void Tree<Item>::checkInvariants() const
{
    NodesCount count;
    ZEM_ASSERT_MESSAGE(checkNode(_root, _height, count) == _totals, "SummedSequence: invariant 3");
    ZEM_ASSERT_MESSAGE(count._leaves == _leaves.countUsed(), "SummedSequence: invariant 4");
    ZEM_ASSERT_MESSAGE(count._inners == _inners.countUsed(), "SummedSequence: invariant 4");
}

template<class Item>
typename Tree<Item>::Totals Tree<Item>::checkNode(NodeNumber node, unsigned level, NodesCount& count) const
{
    const unsigned rootMinimum = level > 0 ? 2 : 1;
    const unsigned minimum = node == _root && level == _height ? rootMinimum : minimalFill;
    const unsigned entriesCount = getCount(node, level);
    ZEM_ASSERT_MESSAGE(minimum <= entriesCount && entriesCount <= fanout, "SummedSequence: invariant 1");
    if (level == 0)
    {
        ++count._leaves;
        return _leaves[node].sumUp();
    }
    ++count._inners;
    for (unsigned slot = 0; slot < entriesCount; ++slot)
    {
        const Branch& branch = _inners[node]._entries[slot];
        ZEM_ASSERT_MESSAGE(checkNode(branch._child, level - 1, count) == branch._totals, "SummedSequence: invariant 2");
    }
    return _inners[node].sumUp();
}

} // namespace Zem::CollaborationUtils::SummedSequenceDetails

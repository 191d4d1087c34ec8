#pragma once

/// A sequence that knows the sum of any of its beginnings.
///
/// Each item has an additive summary: a run of text may have its bytes and its characters, a run of places the live and
/// the dead ones. The sequence answers "in which item do we stand after 1000 bytes, and how many characters came
/// before it" in logarithmic time, and takes an item in, out or changed at any place in the same time.
///
/// It is a B+-tree without keys. The items lie in the leaves, 16 to a leaf at most. An entry of an inner node holds a
/// child, the number of items below it and the sum of their summaries. To find a place, one walks down, skipping
/// entries from the left as long as what is looked for lies behind them, and adds up what one skips:
///
///     inner node                 [ 5 items, sum 40 | 4 items, sum 25 ]
///     its leaves      [ 3 | 12 | 6 | 9 | 10 ]       [ 8 | 2 | 7 | 8 ]
///
///     after 46:   skip the first entry (40 <= 46), walk down; there 8 > 6, so it is item 5, with a sum of 40 before it
///
/// Nodes don't own each other: all leaves lie in one array and all inner nodes in another, and name each other by
/// number, so that there is no allocation per item and a copy of the sequence copies two arrays.
///
///     1. A node has 1 to 16 entries; a node that isn't the root at least 4, an inner root at least 2.
///     2. A branch holds the number of items below it, and the sum of their summaries.
///     3. The totals of the tree are those of its root.
///     4. Every node of the pools is either in the tree, once, or free.
///     5. A sequence without items has no tree.

#include "CU_SummedSequenceNodes.h"
#include "CU_SummedSequenceTree.h"

#include "Util_Assert.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::CollaborationUtils
{

/// The sequence as a value: a copy has items of its own, and what was moved from is empty.
template<class Item>
class SummedSequence
{
    static_assert(SummedItem<Item>);

public:
    using Summary = typename Item::Summary;

    /// What a projection makes of a summary; a number.
    template<class Projection>
    using Sum = std::decay_t<std::invoke_result_t<const Projection&, const Summary&>>;

    /// An item of the sequence, or the end. It holds until items are inserted or erased.
    class Place
    {
    public:
        /// How many items stand before it.
        std::size_t getOrdinal() const
        {
            return _before._size;
        }

        /// The sum of the summaries of the items before it.
        const Summary& getBefore() const
        {
            return _before._sum;
        }

    private:
        friend class SummedSequence;

        SummedSequenceDetails::Totals<Summary> _before;
        SummedSequenceDetails::Path _path;
    };

    SummedSequence() = default;

    /// Linear.
    explicit SummedSequence(const std::vector<Item>& items)
    {
        assign(items);
    }

    SummedSequence(const SummedSequence& other)
        : _tree(other._tree ? std::make_unique<Tree>(*other._tree) : nullptr)
    {
    }

    SummedSequence(SummedSequence&&) noexcept = default;

    SummedSequence& operator=(const SummedSequence& other)
    {
        return *this = SummedSequence(other);
    }

    SummedSequence& operator=(SummedSequence&&) noexcept = default;

    ~SummedSequence() = default;

    std::size_t size() const
    {
        return _tree ? _tree->getTotals()._size : 0;
    }

    bool empty() const
    {
        return !_tree;
    }

    /// The sum of all summaries. Constant time.
    Summary getTotal() const
    {
        return _tree ? _tree->getTotals()._sum : Summary{};
    }

    /// The first item at whose end the sum of `projection(summary)` over all items so far is more than `target`; the
    /// end if there is none. `projection` must be additive, and never negative. Logarithmic.
    template<class Projection>
    Place find(const Projection& projection, Sum<Projection> target) const;

    /// The place of item `ordinal`; `size()` gives the end. Logarithmic. Fails: "ordinal <= size()".
    Place getPlace(std::size_t ordinal) const;

    /// The place behind an item. Constant time, but for a walk up the tree at the end of a node.
    /// Fails: "place.getOrdinal() < size()".
    Place getNext(const Place& place) const;

    /// The place of the item before. As fast as `getNext`. Fails: "place.getOrdinal() > 0".
    Place getPrevious(const Place& place) const;

    /// The item at a place that isn't the end. Constant time. Fails: "place.getOrdinal() < size()".
    const Item& get(const Place& place) const
    {
        ZEM_ASSERT(place.getOrdinal() < size());
        return _tree->getItem(place._path);
    }

    /// Logarithmic. Fails: "ordinal < size()".
    const Item& get(std::size_t ordinal) const
    {
        ZEM_ASSERT(ordinal < size());
        return _tree->getItem(getPlace(ordinal)._path);
    }

    /// Inserts an item before `place`. Logarithmic.
    void insert(const Place& place, const Item& item);

    void insert(std::size_t ordinal, const Item& item)
    {
        insert(getPlace(ordinal), item);
    }

    /// Inserts items before item `ordinal`. At most linear in the items of both. Fails: "ordinal <= size()".
    void insert(std::size_t ordinal, const std::vector<Item>& items);

    void append(const Item& item)
    {
        insert(size(), item);
    }

    /// Erases the item at `place`. Logarithmic. Fails: "place.getOrdinal() < size()".
    void erase(const Place& place);

    /// Fails: "ordinal < size()".
    void erase(std::size_t ordinal)
    {
        ZEM_ASSERT(ordinal < size());
        erase(getPlace(ordinal));
    }

    /// Erases `count` items from `ordinal` on. At most linear. Fails: "ordinal <= size() && count <= size() - ordinal".
    void erase(std::size_t ordinal, std::size_t count);

    /// Replaces the item at `place`, which still holds afterwards. Logarithmic. Fails: "place.getOrdinal() < size()".
    void update(const Place& place, const Item& item);

    /// Fails: "ordinal < size()".
    void update(std::size_t ordinal, const Item& item)
    {
        ZEM_ASSERT(ordinal < size());
        update(getPlace(ordinal), item);
    }

    /// Takes `items` in place of all that it has. Linear.
    void assign(const std::vector<Item>& items);

    void clear()
    {
        _tree.reset();
    }

    /// Calls `visitor` with each item from `place` on, as long as it returns true. Logarithmic, and linear in the items
    /// visited. The sequence must not be changed meanwhile.
    template<class Visitor>
    void forEach(const Place& place, Visitor&& visitor) const;

    template<class Visitor>
    void forEach(std::size_t ordinal, Visitor&& visitor) const
    {
        forEach(getPlace(ordinal), std::forward<Visitor>(visitor));
    }

    std::vector<Item> getItems() const;

    /// Asserts the invariants above, by their numbers.
    void checkInvariants() const;

    /// Bytes on the heap.
    std::size_t getMemoryUsage() const
    {
        return _tree ? sizeof(Tree) + _tree->getMemoryUsage() : 0;
    }

    /// Whether both hold equal items in the same order, however their trees are cut.
    friend bool operator==(const SummedSequence& left, const SummedSequence& right)
    {
        return left._tree && right._tree ? left._tree->isEqual(*right._tree) : left._tree == right._tree;
    }

private:
    using Tree = SummedSequenceDetails::Tree<Item>;

    /// Whether so few items change one by one faster than all are built anew.
    static bool isFewOf(std::size_t count, std::size_t size)
    {
        return count < size / 16;
    }

    std::unique_ptr<Tree> _tree;
};

template<class Item>
template<class Projection>
typename SummedSequence<Item>::Place SummedSequence<Item>::find(const Projection& projection,
                                                                Sum<Projection> target) const
{
    Place place;
    if (_tree)
    {
        const auto measure = [&](const auto& totals) -> Sum<Projection> { return projection(totals._sum); };
        _tree->descend(measure, target, place._path, place._before);
    }
    return place;
}

template<class Item>
typename SummedSequence<Item>::Place SummedSequence<Item>::getPlace(std::size_t ordinal) const
{
    ZEM_ASSERT(ordinal <= size());
    Place place;
    if (_tree)
    {
        _tree->descend([](const auto& totals) { return totals._size; }, ordinal, place._path, place._before);
    }
    return place;
}

template<class Item>
typename SummedSequence<Item>::Place SummedSequence<Item>::getNext(const Place& place) const
{
    Place next = place;
    next._before += SummedSequenceDetails::getTotals(get(place));
    _tree->advance(next._path);
    return next;
}

template<class Item>
typename SummedSequence<Item>::Place SummedSequence<Item>::getPrevious(const Place& place) const
{
    ZEM_ASSERT(place.getOrdinal() > 0);
    Place previous = place;
    _tree->retreat(previous._path);
    previous._before -= SummedSequenceDetails::getTotals(_tree->getItem(previous._path));
    return previous;
}

template<class Item>
void SummedSequence<Item>::insert(const Place& place, const Item& item)
{
    if (_tree)
    {
        _tree->insert(place._path, item);
    }
    else
    {
        assign({item});
    }
}

template<class Item>
void SummedSequence<Item>::insert(std::size_t ordinal, const std::vector<Item>& items)
{
    ZEM_ASSERT(ordinal <= size());
    if (isFewOf(items.size(), size()))
    {
        for (std::size_t i = 0; i < items.size(); ++i)
        {
            insert(ordinal + i, items[i]);
        }
        return;
    }
    std::vector<Item> all = getItems();
    all.insert(all.begin() + static_cast<std::ptrdiff_t>(ordinal), items.begin(), items.end());
    assign(all);
}

template<class Item>
void SummedSequence<Item>::erase(const Place& place)
{
    ZEM_ASSERT(place.getOrdinal() < size());
    if (size() == 1)
    {
        clear();
    }
    else
    {
        _tree->erase(place._path);
    }
}

template<class Item>
void SummedSequence<Item>::erase(std::size_t ordinal, std::size_t count)
{
    ZEM_ASSERT(ordinal <= size() && count <= size() - ordinal);
    if (isFewOf(count, size()))
    {
        for (std::size_t i = 0; i < count; ++i)
        {
            erase(ordinal);
        }
        return;
    }
    std::vector<Item> all = getItems();
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(ordinal);
    all.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
    assign(all);
}

template<class Item>
void SummedSequence<Item>::update(const Place& place, const Item& item)
{
    ZEM_ASSERT(place.getOrdinal() < size());
    _tree->update(place._path, item);
}

template<class Item>
void SummedSequence<Item>::assign(const std::vector<Item>& items)
{
    _tree = items.empty() ? nullptr : std::make_unique<Tree>(items);
}

template<class Item>
template<class Visitor>
void SummedSequence<Item>::forEach(const Place& place, Visitor&& visitor) const
{
    if (_tree)
    {
        _tree->forEach(place._path, std::forward<Visitor>(visitor));
    }
}

template<class Item>
std::vector<Item> SummedSequence<Item>::getItems() const
{
    std::vector<Item> items;
    items.reserve(size());
    forEach(0,
            [&](const Item& item)
            {
                items.push_back(item);
                return true;
            });
    return items;
}

template<class Item>
void SummedSequence<Item>::checkInvariants() const
{
    if (_tree)
    {
        ZEM_ASSERT_MESSAGE(size() > 0, "SummedSequence: invariant 5");
        _tree->checkInvariants();
    }
}

} // namespace Zem::CollaborationUtils

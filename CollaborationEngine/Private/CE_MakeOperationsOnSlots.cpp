#include "CE_ListSlots.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

using Insert = ListModificationOperation<InsertTag>;
using Remove = ListModificationOperation<RemoveTag>;
using MarkAsRemoved = ListModificationOperation<MarkAsRemovedTag>;
using Restore = ListModificationOperation<RestoreTag>;

/// Pieces that touch, as one range with its items.
struct Stretch
{
    IndexRange<unsigned long> _range;
    SharedConstPtr<ItemsCollection> _items;
    unsigned long _holdersCount;
    bool _releasesAll;
};

SharedConstPtr<ItemsCollection> takeItems(const SlotPiece& piece)
{
    if (!piece._items || !*piece._items)
    {
        return nullptr;
    }
    const SharedConstPtr<ItemsCollection>& items = *piece._items;
    if (piece._offset == 0 && piece._count == items->getSize())
    {
        return items;
    }
    return items->copySubrange(IndexRange<unsigned long>::fromCount(piece._offset, piece._count));
}

using PieceIterator = SlotPieces::const_iterator;
using Stretches = boost::container::small_vector<Stretch, 2>;

/// The items of all the pieces, or none if one of them has none.
SharedConstPtr<ItemsCollection> joinItems(PieceIterator begin, PieceIterator end)
{
    if (end - begin == 1)
    {
        return takeItems(*begin);
    }
    std::unique_ptr<ItemsCollection> joined;
    for (PieceIterator piece = begin; piece != end; ++piece)
    {
        const SharedConstPtr<ItemsCollection> items = takeItems(*piece);
        if (!items)
        {
            return nullptr;
        }
        if (joined)
        {
            joined->append(*items);
            continue;
        }
        items->cloneTo(joined);
    }
    return joined;
}

bool touch(SlotAction action, const SlotPiece& lower, const SlotPiece& upper)
{
    const unsigned long lowerEnd = action == SlotAction::Insertion ? lower._begin : lower.getEnd();
    return lowerEnd == upper._begin && lower._holdersCount == upper._holdersCount &&
           lower._releasesAll == upper._releasesAll;
}

/// The stretches of an operation, from the highest to the lowest.
Stretches takeStretches(const SlotOperation& slots)
{
    Stretches stretches;
    stretches.reserve(slots._pieces.size());
    PieceIterator end = slots._pieces.end();
    while (end != slots._pieces.begin())
    {
        PieceIterator begin = end - 1;
        unsigned long count = begin->_count;
        while (begin != slots._pieces.begin() && touch(slots._action, *(begin - 1), *begin))
        {
            --begin;
            count += begin->_count;
        }
        stretches.push_back({IndexRange<unsigned long>::fromCount(begin->_begin, count), joinItems(begin, end),
                             begin->_holdersCount, begin->_releasesAll});
        end = begin;
    }
    return stretches;
}

Shadows makeHolds(const Stretch& stretch)
{
    Shadows shadows;
    shadows._holdersCount = stretch._holdersCount;
    shadows._releasesAll = stretch._releasesAll;
    return shadows;
}

template<class T>
T makeSingle(const HierarchicalOperation& model, Stretch& stretch)
{
    if constexpr (std::is_same_v<T, ListLeaveTombstonesOperation>)
    {
        return T(model.getNodeAddress(), model.getOperandType(), std::move(stretch._items), stretch._range,
                 stretch._holdersCount);
    }
    else
    {
        return T(model.getNodeAddress(), model.getOperandType(), std::move(stretch._items), stretch._range);
    }
}

/// Makes operations of single ranges.
struct SingleMaker
{
    template<class T>
    void makeEach(Stretches stretches)
    {
        for (Stretch& stretch : stretches)
        {
            _parts.push_back(std::make_unique<T>(makeSingle<T>(_model, stretch)));
        }
    }

    void makeReleasings(Stretches stretches)
    {
        for (Stretch& stretch : stretches)
        {
            _parts.push_back(std::make_unique<ShadowedOperation>(
                std::make_unique<Restore>(makeSingle<Restore>(_model, stretch)), makeHolds(stretch)));
        }
    }

    const HierarchicalOperation& _model;
    std::vector<OperationUPtr>& _parts;
};

/// Makes multirange operations.
struct MultirangeMaker
{
    template<class T>
    std::unique_ptr<ListMultirangeOperationImpl<T>> makeOne(Stretches& stretches)
    {
        std::vector<T> nestedOperations;
        nestedOperations.reserve(stretches.size());
        for (Stretch& stretch : stretches)
        {
            nestedOperations.push_back(makeSingle<T>(_model, stretch));
        }
        return std::make_unique<ListMultirangeOperationImpl<T>>(std::move(nestedOperations));
    }

    template<class T>
    void makeEach(Stretches stretches)
    {
        _parts.push_back(makeOne<T>(stretches));
    }

    /// One operation for each number of holders.
    void makeReleasings(Stretches stretches)
    {
        while (!stretches.empty())
        {
            const Stretch first = stretches.front();
            const auto others = std::stable_partition(stretches.begin(), stretches.end(),
                                                      [&](const Stretch& stretch) {
                                                          return stretch._holdersCount == first._holdersCount &&
                                                                 stretch._releasesAll == first._releasesAll;
                                                      });
            Stretches alike(std::make_move_iterator(stretches.begin()), std::make_move_iterator(others));
            stretches.erase(stretches.begin(), others);
            _parts.push_back(std::make_unique<ShadowedOperation>(makeOne<Restore>(alike), makeHolds(first)));
        }
    }

    const HierarchicalOperation& _model;
    std::vector<OperationUPtr>& _parts;
};

OperationUPtr makeMove(const HierarchicalOperation& model, const SlotOperation& slots)
{
    const unsigned long slot = slots._pieces.front()._begin;
    return std::make_unique<ListMoveOperation>(model.getNodeAddress(), model.getOperandType(),
                                               IndexRange<unsigned long>::fromCount(slot, 1),
                                               static_cast<long>(slots._target) - static_cast<long>(slot));
}

template<class Maker>
void makeParts(Maker maker, const SlotOperation& slots)
{
    switch (slots._action)
    {
    case SlotAction::Insertion:
        return maker.template makeEach<Insert>(takeStretches(slots));
    case SlotAction::Removal:
        return maker.template makeEach<Remove>(takeStretches(slots));
    case SlotAction::Marking:
        return maker.template makeEach<MarkAsRemoved>(takeStretches(slots));
    case SlotAction::Restoring:
        return maker.template makeEach<Restore>(takeStretches(slots));
    case SlotAction::Leaving:
        return maker.template makeEach<ListLeaveTombstonesOperation>(takeStretches(slots));
    case SlotAction::Releasing:
        return maker.makeReleasings(takeStretches(slots));
    case SlotAction::Move:
        maker._parts.push_back(makeMove(maker._model, slots));
    }
}

template<class Maker>
OperationUPtr makeOperations(const HierarchicalOperation& model, const SlotOperations& slots)
{
    std::vector<OperationUPtr> parts;
    parts.reserve(slots.size());
    for (const SlotOperation& slotOperation : slots)
    {
        makeParts(Maker{model, parts}, slotOperation);
    }
    return makeOperationFromParts(std::move(parts));
}

} // namespace

OperationUPtr makeOperationsOnSlots(const ListOperation& model, const SlotOperations& slots)
{
    return makeOperations<SingleMaker>(model, slots);
}

OperationUPtr makeOperationsOnSlots(const ListMultirangeOperation& model, const SlotOperations& slots)
{
    return makeOperations<MultirangeMaker>(model, slots);
}

} // namespace Zem::CollaborationEngine

#include "CE_ListSlots.h"

#include <type_traits>

namespace Zem::CollaborationEngine
{

namespace
{

template<class T>
struct ActionOf;

template<>
struct ActionOf<ListModificationOperation<InsertTag>>
{
    static constexpr SlotAction value = SlotAction::Insertion;
};

template<>
struct ActionOf<ListModificationOperation<RemoveTag>>
{
    static constexpr SlotAction value = SlotAction::Removal;
};

template<>
struct ActionOf<ListModificationOperation<MarkAsRemovedTag>>
{
    static constexpr SlotAction value = SlotAction::Marking;
};

template<>
struct ActionOf<ListModificationOperation<RestoreTag>>
{
    static constexpr SlotAction value = SlotAction::Restoring;
};

template<>
struct ActionOf<ListLeaveTombstonesOperation>
{
    static constexpr SlotAction value = SlotAction::Leaving;
};

template<class T>
SlotPiece describePiece(const T& operation, const Shadows* shadows)
{
    SlotPiece piece;
    piece._begin = operation.getRange().getBegin();
    piece._count = operation.getRange().getCount();
    piece._items = &operation.getData();
    if constexpr (std::is_same_v<T, ListLeaveTombstonesOperation>)
    {
        piece._holdersCount = operation.getHoldersCount();
    }
    else if (shadows)
    {
        piece.setHolds(*shadows);
    }
    return piece;
}

/// A restoring that others hold down is a releasing.
template<class T>
SlotAction getAction(const Shadows* shadows)
{
    const bool isHeldDown = shadows && shadows->_holdersCount > 0;
    return std::is_same_v<T, ListModificationOperation<RestoreTag>> && isHeldDown ? SlotAction::Releasing
                                                                                  : ActionOf<T>::value;
}

template<class T>
SlotOperation describeSingle(const T& operation, const Shadows* shadows)
{
    SlotOperation slots;
    slots._action = getAction<T>(shadows);
    slots._pieces.push_back(describePiece(operation, shadows));
    return slots;
}

SlotOperation describeMove(const ListMoveOperation& operation)
{
    const IndexRange<unsigned long>& range = operation.getRange();
    ZEM_ASSERT(range.getCount() == 1u);
    SlotOperation slots;
    slots._action = SlotAction::Move;
    SlotPiece piece;
    piece._begin = range.getBegin();
    piece._count = 1;
    slots._pieces.push_back(piece);
    slots._target = range.getBegin() + static_cast<unsigned long>(operation.getOffset());
    const bool isTargetInRange = (operation.getOffset() < 0) == (slots._target < range.getBegin());
    ZEM_ASSERT(isTargetInRange);
    return slots;
}

template<class T>
SlotOperation describeMultirange(const ListMultirangeOperationImpl<T>& operation, const Shadows* shadows)
{
    SlotOperation slots;
    slots._action = getAction<T>(shadows);
    const std::vector<T>& nestedOperations = operation.getNestedOperations();
    slots._pieces.reserve(nestedOperations.size());
    for (auto nestedOperation = nestedOperations.rbegin(); nestedOperation != nestedOperations.rend();
         ++nestedOperation)
    {
        const SlotPiece piece = describePiece(*nestedOperation, shadows);
        if (!slots._pieces.empty())
        {
            const SlotPiece& lower = slots._pieces.back();
            const bool areRangesDescending =
                (slots._action == SlotAction::Insertion ? lower._begin : lower.getEnd()) <= piece._begin;
            ZEM_ASSERT(areRangesDescending);
        }
        slots._pieces.push_back(piece);
    }
    return slots;
}

} // namespace

SlotOperation describeSlots(const ListOperation& operation, const Shadows* shadows)
{
    return visitWith<SlotOperation>(
        operation, [](const ListMoveOperation& move) { return describeMove(move); },
        [&](const auto& single) { return describeSingle(single, shadows); });
}

SlotOperation describeSlots(const ListMultirangeOperation& operation, const Shadows* shadows)
{
    return visitWith<SlotOperation>(operation,
                                    [&](const auto& multirange) { return describeMultirange(multirange, shadows); });
}

} // namespace Zem::CollaborationEngine

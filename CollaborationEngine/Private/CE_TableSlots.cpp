#include "CE_TableSlots.h"

#include "Util_Visitor.h"

#include <type_traits>

namespace Zem::CollaborationEngine
{

namespace
{

template<class Result, class... Callables>
Result visitNested(const NestedTableOperation& nestedOperation, Callables... callables)
{
    const Overloads<Callables...> overloads{std::move(callables)...};
    return boost::apply_visitor([&](const auto& nested) -> Result { return overloads(nested); }, nestedOperation);
}

SlotOperation makeSlots(SlotAction action, unsigned long index)
{
    SlotOperation slots;
    slots._action = action;
    SlotPiece piece;
    piece._begin = index;
    piece._count = 1;
    slots._pieces.push_back(piece);
    return slots;
}

SlotOperation describeMove(const RowOrColumnMoveOperation& move)
{
    SlotOperation slots = makeSlots(SlotAction::Move, move.getIndex());
    slots._target = move.getIndex() + static_cast<unsigned long>(move.getOffset());
    const bool isTargetInRange = (move.getOffset() < 0) == (slots._target < move.getIndex());
    ZEM_ASSERT(isTargetInRange);
    return slots;
}

/// Whether other deletions hold down what is restored.
bool isReleasing(const Shadows* shadows)
{
    return shadows && shadows->_holdersCount > 0;
}

SlotOperation describeRestoring(const RowOrColumnRestore& restore, const Shadows* shadows)
{
    if (!isReleasing(shadows))
    {
        return makeSlots(SlotAction::Restoring, restore.getIndex());
    }
    SlotOperation slots = makeSlots(SlotAction::Releasing, restore.getIndex());
    slots._pieces.front().setHolds(*shadows);
    return slots;
}

SlotOperation describeLeaving(const RowOrColumnLeaveTombstoneOperation& leave)
{
    SlotOperation slots = makeSlots(SlotAction::Leaving, leave.getIndex());
    slots._pieces.front()._holdersCount = leave.getHoldersCount();
    return slots;
}

} // namespace

TableAction getTableAction(const NestedTableOperation& nestedOperation, const Shadows* shadows)
{
    return visitNested<TableAction>(
        nestedOperation, [](const RowOrColumnInsert&) { return TableAction::Insertion; },
        [](const RowOrColumnRemoveOperation&) { return TableAction::Removal; },
        [](const RowOrColumnMark&) { return TableAction::Marking; },
        [&](const RowOrColumnRestore&)
        { return isReleasing(shadows) ? TableAction::Releasing : TableAction::Restoring; },
        [](const RowOrColumnMoveOperation&) { return TableAction::Move; },
        [](const RowOrColumnLeaveTombstoneOperation&) { return TableAction::Leaving; },
        [](const SetRowOrColumnPropertyOperation&) { return TableAction::Setting; });
}

unsigned long getIndex(const NestedTableOperation& nestedOperation)
{
    return visitNested<unsigned long>(nestedOperation, [](const BaseTableRowOrColumnListOperation& nested)
                                      { return nested.getIndex(); });
}

boost::optional<SlotOperation> describeSlots(const NestedTableOperation& nestedOperation, const Shadows* shadows)
{
    using Result = boost::optional<SlotOperation>;
    return visitNested<Result>(
        nestedOperation,
        [](const RowOrColumnInsert& insert) -> Result { return makeSlots(SlotAction::Insertion, insert.getIndex()); },
        [](const RowOrColumnRemoveOperation& remove) -> Result
        { return makeSlots(SlotAction::Removal, remove.getIndex()); },
        [](const RowOrColumnMark& mark) -> Result { return makeSlots(SlotAction::Marking, mark.getIndex()); },
        [&](const RowOrColumnRestore& restore) -> Result { return describeRestoring(restore, shadows); },
        [](const RowOrColumnMoveOperation& move) -> Result { return describeMove(move); },
        [](const RowOrColumnLeaveTombstoneOperation& leave) -> Result { return describeLeaving(leave); },
        [](const SetRowOrColumnPropertyOperation&) -> Result { return boost::none; });
}

SharedConstPtr<RowOrColumn> getRowOrColumn(const NestedTableOperation& nestedOperation)
{
    using Result = SharedConstPtr<RowOrColumn>;
    return visitNested<Result>(
        nestedOperation, [](const TableRowOrColumnDataOperation& nested) -> Result { return nested.getRowOrColumn(); },
        [](const BaseTableRowOrColumnListOperation&) -> Result { return nullptr; });
}

void setRowOrColumn(NestedTableOperation& nestedOperation, const SharedConstPtr<RowOrColumn>& rowOrColumn)
{
    boost::apply_visitor(
        [&](auto& nested)
        {
            if constexpr (std::is_base_of_v<TableRowOrColumnDataOperation, std::remove_reference_t<decltype(nested)>>)
            {
                nested.setRowOrColumn(rowOrColumn);
            }
        },
        nestedOperation);
}

NestedTableOperation makeNestedOperation(const SlotOperation& slots, SharedConstPtr<RowOrColumn> rowOrColumn)
{
    const SlotPiece& piece = slots._pieces.front();
    switch (slots._action)
    {
    case SlotAction::Insertion:
        return RowOrColumnInsert(piece._begin, std::move(rowOrColumn));
    case SlotAction::Removal:
        return RowOrColumnRemoveOperation(piece._begin, std::move(rowOrColumn));
    case SlotAction::Marking:
        return RowOrColumnMark(piece._begin, std::move(rowOrColumn));
    case SlotAction::Restoring:
    case SlotAction::Releasing:
        return RowOrColumnRestore(piece._begin, std::move(rowOrColumn));
    case SlotAction::Leaving:
        return RowOrColumnLeaveTombstoneOperation(piece._begin, std::move(rowOrColumn), piece._holdersCount);
    case SlotAction::Move:
        return RowOrColumnMoveOperation(piece._begin,
                                        static_cast<long>(slots._target) - static_cast<long>(piece._begin));
    }
    ZEM_FAIL("The action isn't one of the matrix.");
}

} // namespace Zem::CollaborationEngine

#include "CE_TableSlots.h"

#include "CE_SlotMapping.h"

#include "Util_Visitor.h"

#include <algorithm>
#include <type_traits>

namespace Zem::CollaborationEngine
{

namespace
{

using RowOrColumnInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
using RowOrColumnMark = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
using RowOrColumnRestore = TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>;

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

SlotOperation describeRestoring(const RowOrColumnRestore& restore, const Shadows* shadows)
{
    const bool isHeldDown = shadows && shadows->_holdersCount > 0;
    SlotOperation slots = makeSlots(isHeldDown ? SlotAction::Releasing : SlotAction::Restoring, restore.getIndex());
    if (isHeldDown)
    {
        slots._pieces.front().setHolds(*shadows);
    }
    return slots;
}

SlotOperation describeLeaving(const RowOrColumnLeaveTombstoneOperation& leave)
{
    SlotOperation slots = makeSlots(SlotAction::Leaving, leave.getIndex());
    slots._pieces.front()._holdersCount = leave.getHoldersCount();
    return slots;
}

using Cells = std::vector<CellData>;

Cells::iterator findCell(Cells& cells, unsigned long index)
{
    return std::find_if(cells.begin(), cells.end(), [&](const CellData& cell) { return cell.getIndex() == index; });
}

/// Brings the cells past what happened to the crossing rows or columns. Returns whether anything changed.
bool followSlots(Cells& cells, const SlotOperation& slots)
{
    bool isChanged = false;
    const auto isDropped = [&](CellData& cell)
    {
        const auto index = mapSlot(cell.getIndex(), slots);
        isChanged |= index != cell.getIndex();
        cell.setIndex(index.value_or(0));
        return !index;
    };
    cells.erase(std::remove_if(cells.begin(), cells.end(), isDropped), cells.end());
    if (slots._action == SlotAction::Marking || slots._action == SlotAction::Restoring)
    {
        const bool isRemoved = slots._action == SlotAction::Marking;
        const auto cell = findCell(cells, slots._pieces.front()._begin);
        if (cell != cells.end() && cell->isRemoved() != isRemoved)
        {
            cell->setRemoved(isRemoved);
            isChanged = true;
        }
    }
    std::stable_sort(cells.begin(), cells.end(),
                     [](const CellData& left, const CellData& right) { return left.getIndex() < right.getIndex(); });
    return isChanged;
}

/// Takes over the cell where the two cross from a row or column that comes in at the same time, if it comes back only
/// now because both were gone: the row's value stands.
bool takeOverCrossingCell(Cells& cells, const NestedTableOperation& first, const NestedTableOperation& second,
                          bool isFirstRow)
{
    const SharedConstPtr<RowOrColumn> crossing = getRowOrColumn(second);
    if (!crossing)
    {
        return false;
    }
    Cells crossingCells = crossing->getCells();
    const auto crossingCell = findCell(crossingCells, getIndex(first));
    const auto cell = findCell(cells, getIndex(second));
    if (crossingCell == crossingCells.end() || !crossingCell->isRemoved() || (isFirstRow && cell != cells.end()))
    {
        return false;
    }
    const CellData takenOver(getIndex(second), crossingCell->getData(), false);
    if (cell != cells.end())
    {
        *cell = takenOver;
        return true;
    }
    const auto place =
        std::find_if(cells.begin(), cells.end(),
                     [&](const CellData& candidate) { return candidate.getIndex() > takenOver.getIndex(); });
    cells.insert(place, takenOver);
    return true;
}

bool bringsElements(const NestedTableOperation& nestedOperation)
{
    return visitNested<bool>(
        nestedOperation, [](const RowOrColumnInsert&) { return true; }, [](const RowOrColumnRestore&) { return true; },
        [](const BaseTableRowOrColumnListOperation&) { return false; });
}

} // namespace

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

SharedConstPtr<RowOrColumn> followCrossing(const NestedTableOperation& first, const NestedTableOperation& second,
                                           bool isFirstRow)
{
    const SharedConstPtr<RowOrColumn> rowOrColumn = getRowOrColumn(first);
    const auto slots = describeSlots(second, nullptr);
    if (!rowOrColumn || !slots)
    {
        return nullptr;
    }
    RowOrColumn followed = *rowOrColumn;
    bool isChanged = followSlots(followed.getCells(), *slots);
    const bool restores = boost::get<RowOrColumnRestore>(&first) != nullptr;
    if (restores && bringsElements(second))
    {
        isChanged |= takeOverCrossingCell(followed.getCells(), first, second, isFirstRow);
    }
    return isChanged ? makeSharedConst<RowOrColumn>(std::move(followed)) : nullptr;
}

} // namespace Zem::CollaborationEngine

#include "CE_SlotMapping.h"
#include "CE_TableMatrix.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

// These rules serve all that carries cells: removals, markings and leavings, too, and restorings and releasings where
// they have no rule of their own.

namespace
{

void sortCells(Cells& cells)
{
    std::stable_sort(cells.begin(), cells.end(),
                     [](const CellData& left, const CellData& right) { return left.getIndex() < right.getIndex(); });
}

bool flagCell(Cells& cells, unsigned long index, bool isRemoved)
{
    const auto cell = findCell(cells, index);
    const bool isChanged = cell != cells.end() && cell->isRemoved() != isRemoved;
    if (isChanged)
    {
        cell->setRemoved(isRemoved);
    }
    sortCells(cells);
    return isChanged;
}

} // namespace

bool includeCellsPastChangeOfIndices(Cells& cells, const TableOperand&, const TableOperand& second)
{
    const auto slots = describeSlots(second);
    bool isChanged = false;
    const auto isDropped = [&](CellData& cell)
    {
        const auto index = mapSlot(cell.getIndex(), *slots);
        isChanged |= index != cell.getIndex();
        cell.setIndex(index.value_or(0));
        return !index;
    };
    cells.erase(std::remove_if(cells.begin(), cells.end(), isDropped), cells.end());
    sortCells(cells);
    return isChanged;
}

bool includeCellsPastMarking(Cells& cells, const TableOperand&, const TableOperand& second)
{
    return flagCell(cells, getIndex(second._nestedOperation), true);
}

bool includeCellsPastRestoring(Cells& cells, const TableOperand&, const TableOperand& second)
{
    return flagCell(cells, getIndex(second._nestedOperation), false);
}

} // namespace Zem::CollaborationEngine

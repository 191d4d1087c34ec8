#include "CE_TableMatrix.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

/// Takes over the cell where the two cross from a row or column that comes in at the same time, if it comes back only
/// now because both were gone: the row's value stands.
bool takeOverCrossingCell(Cells& cells, const TableOperand& first, const TableOperand& second)
{
    const SharedConstPtr<RowOrColumn> crossing = getRowOrColumn(second._nestedOperation);
    if (!crossing)
    {
        return false;
    }
    const unsigned long index = getIndex(second._nestedOperation);
    Cells crossingCells = crossing->getCells();
    const auto crossingCell = findCell(crossingCells, getIndex(first._nestedOperation));
    const auto cell = findCell(cells, index);
    if (crossingCell == crossingCells.end() || !crossingCell->isRemoved() || (first._isRow && cell != cells.end()))
    {
        return false;
    }
    const CellData takenOver(index, crossingCell->getData(), false);
    if (cell != cells.end())
    {
        *cell = takenOver;
        return true;
    }
    const auto place = std::find_if(cells.begin(), cells.end(),
                                    [&](const CellData& candidate) { return candidate.getIndex() > index; });
    cells.insert(place, takenOver);
    return true;
}

} // namespace

// These rules serve the left operand of a releasing too.

bool includeRestoredCellsPastInsertion(Cells& cells, const TableOperand& first, const TableOperand& second)
{
    const bool haveMoved = includeCellsPastChangeOfIndices(cells, first, second);
    return takeOverCrossingCell(cells, first, second) || haveMoved;
}

bool includeRestoredCellsPastRestoring(Cells& cells, const TableOperand& first, const TableOperand& second)
{
    const bool isCleared = includeCellsPastRestoring(cells, first, second);
    return takeOverCrossingCell(cells, first, second) || isCleared;
}

} // namespace Zem::CollaborationEngine

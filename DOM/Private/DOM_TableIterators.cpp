#include "DOM_TableIterators.h"
#include "DOM_TableGrid.h"

#include "Util_Assert.h"

namespace Zem::DOM
{

namespace
{

bool isOneColumn(const TableRange& range)
{
    return range._endColumn.get() - range._beginColumn.get() == 1;
}

} // namespace

CellRangeIt<true>::CellRangeIt(const TableGrid& grid, const TableRange& range)
    : _grid(&grid)
    , _range(range)
{
}

const Cell* CellRangeIt<true>::operator*() const
{
    return _slot ? &_slot->_cell : nullptr;
}

RowIndex CellRangeIt<true>::getRowIndex() const
{
    return _slot ? _grid->getLines<RowAxis>().getIndex(_slot->getLine<RowAxis>()) : _range._endRow;
}

ColumnIndex CellRangeIt<true>::getColIndex() const
{
    return _slot ? _grid->getLines<ColumnAxis>().getIndex(_slot->getLine<ColumnAxis>()) : _range._beginColumn;
}

CellRangeIt<true>& CellRangeIt<true>::operator++()
{
    ZEM_ASSERT(_slot);
    const bool isAlongColumn = isOneColumn(_range);
    const CellSlot* const next =
        isAlongColumn ? TableGrid::findNextInLine<ColumnAxis>(*_slot) : TableGrid::findNextInLine<RowAxis>(*_slot);
    if (next != _endOfLine)
    {
        _slot = next;
    }
    else if (isAlongColumn)
    {
        _slot = nullptr;
    }
    else
    {
        goToNextRow(getRowIndex() + 1);
    }
    return *this;
}

/// Goes to the first cell of the range in `firstRow` or a row behind it, or to the end.
void CellRangeIt<true>::goToNextRow(RowIndex firstRow)
{
    _slot = nullptr;
    const TableLines<RowAxis>& rows = _grid->getLines<RowAxis>();
    for (auto row = rows.lowerBound(firstRow); row != rows.getOrderedLines().end(); ++row)
    {
        if (rows.getIndex(*row) >= _range._endRow)
        {
            return;
        }
        const CellSlot* const slot = _grid->findInLine(*row, _range._beginColumn);
        _endOfLine = slot ? _grid->findInLine(*row, _range._endColumn) : nullptr;
        if (slot != _endOfLine)
        {
            _slot = slot;
            return;
        }
    }
}

std::pair<CellRangeIt<true>, CellRangeIt<true>> TableGrid::getRangeIterators(const TableRange& range) const
{
    CellRangeIt<true> begin(*this, range);
    const CellRangeIt<true> end = begin;
    if (!isOneColumn(range))
    {
        begin.goToNextRow(range._beginRow);
    }
    else if (const Line<ColumnAxis>* const column = getLines<ColumnAxis>().findLine(range._beginColumn))
    {
        const CellSlot* const slot = findInLine(*column, range._beginRow);
        begin._endOfLine = findInLine(*column, range._endRow);
        begin._slot = slot != begin._endOfLine ? slot : nullptr;
    }
    return {begin, end};
}

} // namespace Zem::DOM

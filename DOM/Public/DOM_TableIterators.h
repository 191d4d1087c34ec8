#pragma once

/// The walks over a rectangle of a table, by rows, and in each row by columns. They refer to the table, which must not
/// change its rows, columns, or which cells it has meanwhile.

#include "DOM_Cell.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

class TableGrid;
struct CellSlot;

template<bool isConst>
class CellRangeIt;

/// Stands on a cell of the range, or behind them all; positions without a cell are passed over.
///
/// Cost of a walk: logarithmic for each row of the range that has cells at all, and constant for each cell of the
/// range. A range of one column is walked along that column, and costs its own cells alone. What is called logarithmic
/// here is a search among the lines or cells, each step of which is one among the runs of lines
/// (DOM_TombstonesWithIDsStorage.h).
template<>
class ZEM_EXPORT CellRangeIt<true>
{
public:
    /// Null at the end only.
    const Cell* operator*() const;

    /// Fails: "_slot" at the end.
    CellRangeIt& operator++();

    /// At the end they are those of the range's end row and first column. Logarithmic.
    RowIndex getRowIndex() const;
    ColumnIndex getColIndex() const;

    /// For two iterators of one range.
    friend bool operator==(const CellRangeIt& left, const CellRangeIt& right)
    {
        return left._slot == right._slot;
    }

private:
    friend class TableGrid;

    CellRangeIt(const TableGrid& grid, const TableRange& range);

    void goToNextRow(RowIndex firstRow);

    const TableGrid* _grid;
    TableRange _range;
    /// Null at the end.
    const CellSlot* _slot = nullptr;
    /// Where the line that is walked along leaves the range; null if it doesn't.
    const CellSlot* _endOfLine = nullptr;
};

/// Stands on a position of a range of which `CellIt` walks the cells, or behind them all.
template<class CellIt>
class LogicalCellIt
{
public:
    /// The first position of the range. `cells` stands on its first cell, and `cellsEnd` behind its last.
    LogicalCellIt(const TableRange& range, CellIt cells, CellIt cellsEnd)
        : _range(range)
        , _position(range._beginRow, range._beginColumn)
        , _cells(cells)
        , _cellsEnd(cellsEnd)
    {
        findCellIndex();
    }

    /// Behind the last position.
    LogicalCellIt(const TableRange& range, CellIt cellsEnd)
        : _range(range)
        , _position(range._endRow, range._beginColumn)
        , _cells(cellsEnd)
        , _cellsEnd(cellsEnd)
    {
    }

    /// Null where no cell stands.
    const Cell* operator*() const
    {
        return _cellIndex == _position ? *_cells : nullptr;
    }

    LogicalCellIt& operator++()
    {
        if (_cellIndex == _position)
        {
            ++_cells;
            findCellIndex();
        }
        ++_position.colIndex;
        if (_position.colIndex == _range._endColumn)
        {
            _position = CellIndex(_position.rowIndex + 1, _range._beginColumn);
        }
        return *this;
    }

    RowIndex getRowIndex() const
    {
        return _position.rowIndex;
    }

    ColumnIndex getColIndex() const
    {
        return _position.colIndex;
    }

    /// For two iterators of one range.
    friend bool operator==(const LogicalCellIt& left, const LogicalCellIt& right)
    {
        return left._position == right._position;
    }

private:
    void findCellIndex()
    {
        _cellIndex.reset();
        if (_cells != _cellsEnd)
        {
            _cellIndex = CellIndex(_cells.getRowIndex(), _cells.getColIndex());
        }
    }

    TableRange _range;
    CellIndex _position;
    CellIt _cells;
    CellIt _cellsEnd;
    /// Where the next cell stands.
    boost::optional<CellIndex> _cellIndex;
};

} // namespace Zem::DOM

#pragma once

/// What differs between the rows and the columns of a table, so that code for both is written once, over `TableRows` or
/// `TableColumns`. A line is a row or a column; crossing are the lines of the other kind. Indices are live unless they
/// are said to include tombstones.

#include "DOM_Formula.h"
#include "DOM_SparseData.h"
#include "DOM_Table.h"

#include "CU_Index.h"
#include "Util_TableIndices.h"

#include <optional>
#include <type_traits>

namespace Zem::DOMCollaboration
{

struct TableRows
{
    static constexpr bool isColumns = false;

    using Index = RowIndex;
    using CrossingIndex = ColumnIndex;
    using Style = DOM::RowStyle;

    static unsigned long getLiveCount(const DOM::Table& table)
    {
        return table.getLiveRowsCount().get();
    }

    /// Fails: the assertions of `TableRange`, for an empty one.
    static TableRange makeRange(Index begin, Index end, CrossingIndex crossingBegin, CrossingIndex crossingEnd)
    {
        return TableRange(begin, crossingBegin, end, crossingEnd);
    }

    static CellIndex makeCellIndex(Index line, CrossingIndex crossing)
    {
        return CellIndex(line, crossing);
    }

    static CrossingIndex getCrossing(const CellIndex& cell)
    {
        return cell.colIndex;
    }

    template<class CellIterator>
    static Index getIndex(const CellIterator& iterator)
    {
        return iterator.getRowIndex();
    }

    /// How many lines behind its own the root of a merge captures.
    static unsigned long getCapturedCount(const DOM::CellMergeProps& mergeProps)
    {
        return mergeProps.getCapturedRowsCount();
    }

    static unsigned long getArrayCount(const Size2D<unsigned long>& arraySize)
    {
        return arraySize._height;
    }

    static unsigned long getShiftCount(const DOM::ArrayFormulaShift& shift)
    {
        return shift.getRowsCount();
    }

    static bool canInsert(const DOM::Table& table, Index line)
    {
        return table.canInsertRow(line);
    }

    static std::optional<Index> convertIndex(const DOM::Table& table,
                                             CollaborationUtils::IndexIncludingTombstones index)
    {
        return table.convertRowIndex(index);
    }

    static unsigned long convertToIncludingTombstones(const DOM::Table& table, Index line)
    {
        return table.convertRowIndex(line).get();
    }
};

struct TableColumns
{
    static constexpr bool isColumns = true;

    using Index = ColumnIndex;
    using CrossingIndex = RowIndex;
    using Style = DOM::ColumnStyle;

    static unsigned long getLiveCount(const DOM::Table& table)
    {
        return table.getLiveColsCount().get();
    }

    static TableRange makeRange(Index begin, Index end, CrossingIndex crossingBegin, CrossingIndex crossingEnd)
    {
        return TableRange(crossingBegin, begin, crossingEnd, end);
    }

    static CellIndex makeCellIndex(Index line, CrossingIndex crossing)
    {
        return CellIndex(crossing, line);
    }

    static CrossingIndex getCrossing(const CellIndex& cell)
    {
        return cell.rowIndex;
    }

    template<class CellIterator>
    static Index getIndex(const CellIterator& iterator)
    {
        return iterator.getColIndex();
    }

    static unsigned long getCapturedCount(const DOM::CellMergeProps& mergeProps)
    {
        return mergeProps.getCapturedColsCount();
    }

    static unsigned long getArrayCount(const Size2D<unsigned long>& arraySize)
    {
        return arraySize._width;
    }

    static unsigned long getShiftCount(const DOM::ArrayFormulaShift& shift)
    {
        return shift.getColumnsCount();
    }

    static bool canInsert(const DOM::Table& table, Index line)
    {
        return table.canInsertColumn(line);
    }

    static std::optional<Index> convertIndex(const DOM::Table& table,
                                             CollaborationUtils::IndexIncludingTombstones index)
    {
        return table.convertColIndex(index);
    }

    static unsigned long convertToIncludingTombstones(const DOM::Table& table, Index line)
    {
        return table.convertColIndex(line).get();
    }
};

/// The lines that cross those of a kind.
template<class Lines>
using CrossingLines = std::conditional_t<Lines::isColumns, TableRows, TableColumns>;

} // namespace Zem::DOMCollaboration

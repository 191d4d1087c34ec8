#pragma once

/// The rows, columns and cells of a table, with the index of its merges and that of its pivot tables.
///
///     1. Both lists of lines keep their own invariants.
///     2. Every line that exists has a style or cells, is live, and stands in the order of the live indices.
///     3. Every cell stands in the cells of its row and in those of its column, in the order of the crossing lines.
///     4. The cells that are merged are the roots in the index of merges, with their counts; and those with a pivot
///     table
///        are the roots in the index of pivot tables, with its size.

#include "DOM_RectangleIndex.h"
#include "DOM_SparseData.h"
#include "DOM_Table.h"
#include "DOM_TableLines.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace Zem::DOM
{

class TableGrid
{
public:
    using Place = TombstonesWithIDsStorage::Place;

    TableGrid(TombstonesWithIDsStorage rows, TombstonesWithIDsStorage columns);

    /// Deep. Linear but for the merges and pivot tables, each of which costs a search.
    TableGrid(const TableGrid& other);

    TableGrid& operator=(const TableGrid&) = delete;
    ~TableGrid();

    template<class Axis>
    TableLines<Axis>& getLines()
    {
        return std::get<TableLines<Axis>>(_lines);
    }

    template<class Axis>
    const TableLines<Axis>& getLines() const
    {
        return std::get<TableLines<Axis>>(_lines);
    }

    CellIndex getCellIndex(const CellSlot& slot) const
    {
        return CellIndex(getLines<RowAxis>().getIndex(slot.getLine<RowAxis>()),
                         getLines<ColumnAxis>().getIndex(slot.getLine<ColumnAxis>()));
    }

    // Lines.

    template<class Axis>
    void insertLine(SparseData<typename Axis::Style> data, Place place);

    template<class Axis>
    void restoreLine(SparseData<typename Axis::Style> data, Place place);

    template<class Axis>
    SparseData<typename Axis::Style> removeLine(Place place);

    template<class Axis>
    SparseData<typename Axis::Style> replaceLineWithTombstone(Place place);

    template<class Axis>
    const SharedStyleConstIPtr<typename Axis::Style>& getLineStyle(typename Axis::Index index) const;

    template<class Axis>
    void setLineStyle(SharedStyleConstIPtr<typename Axis::Style> style, typename Axis::Index index);

    /// As `Table::changeSize`, for one direction; lines in front of `heldCount` count as held.
    template<class Axis>
    void changeLinesCount(unsigned long count, unsigned long heldCount);

    /// Whether a pivot table has the lines `index - 1` and `index`.
    template<class Axis>
    bool isPivotTableAcross(typename Axis::Index index) const;

    // Cells.

    /// Null where none stands.
    CellSlot* findSlot(const CellIndex& index) const;

    CellSlot& getOrCreateSlot(const CellIndex& index);

    void removeCell(const CellIndex& index);

    /// Requires: no cell stands there, and it is inside the table.
    void insertCell(const CellIndex& index, Cell cell);

    std::size_t getCellsCount() const
    {
        return _cellsCount;
    }

    /// The two ends of the walk along a range.
    std::pair<CellRangeIt<true>, CellRangeIt<true>> getRangeIterators(const TableRange& range) const;

    /// The first cell of a line whose crossing index is `crossing` or more; null if there is none.
    template<class Axis>
    const CellSlot* findInLine(const Line<Axis>& line, typename Axis::Crossing::Index crossing) const;

    /// The cell behind `slot` in its line of the axis; null if there is none.
    template<class Axis>
    static const CellSlot* findNextInLine(const CellSlot& slot);

    // Merges and pivot tables.

    void setMergeProps(CellSlot& root, const CellMergeProps& props);
    void setPivotTable(CellSlot& root, std::unique_ptr<PivotTable> pivotTable);

    const RectangleIndex& getMerges() const
    {
        return _merges;
    }

    const RectangleIndex& getPivotTables() const
    {
        return _pivotTables;
    }

    std::size_t getMemoryUsage() const;

    /// A line for each rule above that is broken, by its number.
    std::vector<std::string> checkInvariants() const;

    friend bool operator==(const TableGrid& left, const TableGrid& right);

private:
    struct LinesOnly
    {
    };

    /// Without the cells.
    TableGrid(const TableGrid& other, LinesOnly);

    template<class Axis>
    using CrossingLines = TableLines<typename Axis::Crossing>;

    template<class Axis>
    void checkCells(const SparseData<typename Axis::Style>& data) const;

    template<class Axis>
    void fillLine(SparseData<typename Axis::Style> data, typename Axis::Index index);

    template<class Axis>
    SparseData<typename Axis::Style> emptyLine(typename Axis::Index index);

    template<class Axis>
    unsigned long countHeldLines() const;

    template<class Axis>
    void link(CellSlot& slot, Line<Axis>& line, typename Axis::Crossing::Index crossing);

    template<class Axis>
    static void appendTo(CellSlot& slot, Line<Axis>& line);

    void indexRectangles(const CellSlot& slot);
    void unindexRectangles(const CellSlot& slot);

    template<class Axis>
    void checkLines(std::vector<std::string>& broken) const;
    void checkRectangles(std::vector<std::string>& broken) const;

    std::tuple<TableLines<RowAxis>, TableLines<ColumnAxis>> _lines;
    std::size_t _cellsCount = 0;
    RectangleIndex _merges;
    RectangleIndex _pivotTables;
};

} // namespace Zem::DOM

#pragma once

#include "DOM_Block.h"
#include "DOM_Cell.h"
#include "DOM_ConditionalFormat.h"
#include "DOM_Frame.h"
#include "DOM_HeaderRowsCols.h"
#include "DOM_RowColumnIDs.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_SharedStyle.h"
#include "DOM_SparseData.h"
#include "DOM_TableFilterInfo.h"
#include "DOM_TableIterators.h"
#include "DOM_TableSettings.h"
#include "DOM_TableStyle.h"
#include "DOM_TombstonesWithIDsStorage.h"

#include "CU_CollectionWithTombstones.h"
#include "CU_Index.h"

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"
#include "Util_TableIndices.h"
#include "Util_UUIDable.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM
{

class TableGrid;

/// A table of a text, or a worksheet. Rows and columns are lists with tombstones, and each has an id for life. Cells
/// are sparse; they are kept by the ids of their row and column, so that nothing moves when others are inserted or
/// removed.
///
/// A tombstone is a place and an id alone: what the line held went with it, in its `SparseData`.
///
/// A merge is a cell with two numbers: how many live rows below and columns to the right of it are captured. The
/// numbers belong to the cell. Whatever happens to other lines, they stay, and the merge captures what then stands next
/// to its root; a table is therefore the same whatever the order in which its changes came, and every change can be
/// undone. Those who change a table see to it that a change doesn't split a merge, or push it over the edge; where an
/// undoing leads through such a state nevertheless, all functions here have defined answers. If two merges overlap, the
/// one whose root comes first, by rows, captures. All this holds for a pivot table and its size likewise.
///
/// The filter's range, and those of the conditional formats, don't follow the lines either.
///
/// Indices: `RowIndex` and `ColumnIndex` are live; those including tombstones say so by their type. Costs: finding a
/// line is logarithmic in the runs of lines (DOM_TombstonesWithIDsStorage.h), finding a cell logarithmic in the cells
/// of its row besides. A question about merges or pivot tables costs a search for each row that has a root near enough
/// above.
class ZEM_EXPORT Table final : public BlockImpl<Table, BlockKind::Table>, public UUIDable
{
public:
    using IndexIncludingTombstones = CollaborationUtils::IndexIncludingTombstones;
    using IndexExcludingTombstones = CollaborationUtils::IndexExcludingTombstones;
    using ConditionalFormats = CollaborationUtils::CollectionWithTombstones<std::vector<ConditionalFormatUPtr>>;
    using Frames = CollaborationUtils::CollectionWithTombstones<std::vector<FrameUPtr>>;
    using CellRangeIterators = std::pair<CellRangeIt<true>, CellRangeIt<true>>;
    using LogicalCellIterators = std::pair<LogicalCellIt<CellRangeIt<true>>, LogicalCellIt<CellRangeIt<true>>>;

    /// A row or column can't take the id that it comes with: another has it already, or the place where it is to be
    /// restored isn't a tombstone with that id.
    class ZEM_EXPORT BadRowColIDException : public BaseRuntimeError
    {
    public:
        using BaseRuntimeError::BaseRuntimeError;
    };

    /// Without rows and columns.
    Table();

    /// With live rows and columns without style, and no cells. Costs nothing by their number.
    Table(unsigned long rowsCount, unsigned long colsCount);

    Table(const Table& other);
    Table(Table&&) noexcept;
    Table& operator=(const Table& other);
    Table& operator=(Table&&) noexcept;
    ~Table() override;

    // Sizes and indices.

    IndexExcludingTombstones getLiveRowsCount() const;
    IndexExcludingTombstones getLiveColsCount() const;
    IndexIncludingTombstones getAllRowsCount() const;
    IndexIncludingTombstones getAllColsCount() const;

    /// The live index of a place; empty for a tombstone. Places behind the last are counted on.
    std::optional<RowIndex> convertRowIndex(IndexIncludingTombstones index) const;
    std::optional<ColumnIndex> convertColIndex(IndexIncludingTombstones index) const;

    /// The place of a live index; for the number of live lines, the one behind all places.
    IndexIncludingTombstones convertRowIndex(IndexExcludingTombstones index) const;
    IndexIncludingTombstones convertColIndex(IndexExcludingTombstones index) const;
    IndexIncludingTombstones convertRowIndex(RowIndex index) const;
    IndexIncludingTombstones convertColIndex(ColumnIndex index) const;

    /// The live index at which something at this place stands or would stand: for a tombstone, that of the next live
    /// line.
    RowIndex getRowIndexToInsertTo(IndexIncludingTombstones index) const;
    ColumnIndex getColIndexToInsertTo(IndexIncludingTombstones index) const;

    /// Makes the table as big as asked, as far as it can, and returns the size reached, in live rows and columns. It
    /// grows at the end. It shrinks only over lines at the end that hold nothing, neither cells nor a style, nor a part
    /// of a merge, pivot table or filter range, and that growing would bring back as they were: tombstones and lines
    /// that were inserted one by one stop it. Linear in the merges and pivot tables when it shrinks.
    CellIndex changeSize(unsigned long rowsCount, unsigned long colsCount);

    // Identities.

    /// Fails: "place < getAllCount()".
    RowID getRowID(RowIndex row) const;
    ColumnID getColumnID(ColumnIndex column) const;

    /// The live index of the line with this id; empty if it is a tombstone, or isn't here.
    std::optional<RowIndex> findRow(RowID id) const;
    std::optional<ColumnIndex> findColumn(ColumnID id) const;

    /// An id for a new line, drawn at random from those that a table's own lines don't use.
    RowID makeFreshRowID() const;
    ColumnID makeFreshColumnID() const;

    const TombstonesWithIDsStorage& getRows() const;
    const TombstonesWithIDsStorage& getColumns() const;

    // Structure. The cost is that of the line's own cells, merges and pivot tables.

    /// A new live line in front of the place.
    /// Fails, before anything has changed: `BadRowColIDException` when the id is taken; "place <= getAllCount()";
    /// "getAllCount().get() < maximalCount"; "crossingIndex < crossingCount" or "areCellsApart" for cells outside the
    /// crossing lines, or two at one place.
    void insertRow(SparseRowData data, IndexIncludingTombstones index);
    void insertColumn(SparseColumnData data, IndexIncludingTombstones index);

    /// Takes a live line out altogether. Fails: "isLive(place)".
    SparseRowData removeRow(IndexIncludingTombstones index);
    SparseColumnData removeColumn(IndexIncludingTombstones index);

    /// Takes out what a live line holds, and leaves a tombstone. Fails: "isLive(place)".
    SparseRowData replaceRowWithTombstone(IndexIncludingTombstones index);
    SparseColumnData replaceColWithTombstone(IndexIncludingTombstones index);

    /// Puts a line back in place of its tombstone.
    /// Fails: `BadRowColIDException` when the place isn't a tombstone with the id, and the table is unchanged; for
    /// cells as an insertion does.
    void restoreRow(SparseRowData data, IndexIncludingTombstones index);
    void restoreColumn(SparseColumnData data, IndexIncludingTombstones index);

    /// Whether a pivot table stands in the way of an insertion in front of a line: true for "in the way".
    bool canInsertRow(RowIndex row) const;
    bool canInsertColumn(ColumnIndex column) const;

    // Cells.

    /// Null where no cell stands, and outside the table.
    const Cell* getCell(RowIndex row, ColumnIndex column) const;
    Cell* getCell(RowIndex row, ColumnIndex column);

    /// Fails: "isInside" for a position outside the table.
    Cell& getOrCreateCell(RowIndex row, ColumnIndex column);

    /// Drops a cell, with its merge and its pivot table; nothing where none stands.
    void removeCell(RowIndex row, ColumnIndex column);

    /// Begin and end of a walk over the cells of a range, by rows. What lies outside the table has no cells.
    CellRangeIterators getRangeIterators(const TableRange& range) const;

    /// Begin and end of a walk over all positions of a range, by rows, those outside the table too.
    LogicalCellIterators getRangeLogicalIterators(const TableRange& range) const;

    /// Constant time.
    std::size_t getCellsCount() const;

    // Merges and pivot tables.

    /// Makes the cell the root of a merge that captures so many rows and columns beyond its own, and brings it into
    /// being if need be; both 0 takes the merge apart. Fails: "isInside" for a position outside the table.
    void setMergeProps(RowIndex row, ColumnIndex column, unsigned long rowsCount, unsigned long colsCount);

    /// The root of the merge that captures this position; empty for a root itself, and outside all merges.
    boost::optional<CellIndex> getMergedCellRoot(RowIndex row, ColumnIndex column) const;

    /// The range of the merge at this position, be it the root or captured; null if there is none. It may reach out of
    /// the table. The pointer holds until the table changes.
    const TableRange* getMergedRange(RowIndex row, ColumnIndex column) const;

    /// The ranges of all merges that have a position in `range`, by rows of their roots.
    std::vector<TableRange> getMergedRangesInRange(const TableRange& range) const;

    /// Puts a pivot table at a root, in place of one that was there. A null pointer takes it away.
    /// Fails: "isInside" for a position outside the table.
    void setPivotTable(RowIndex row, ColumnIndex column, std::unique_ptr<PivotTable> pivotTable);
    void removePivotTable(RowIndex row, ColumnIndex column);

    /// The root of the pivot table that covers this position, its root included.
    boost::optional<CellIndex> getPivotRoot(RowIndex row, ColumnIndex column) const;

    /// The roots of the pivot tables that cover a position of the range, by rows.
    std::vector<CellIndex> getPivotTablesInRange(const TableRange& range) const;
    bool isPivotTablesInRange(const TableRange& range) const;

    // Properties.

    const std::string& getName() const
    {
        return _name;
    }

    void setName(std::string name)
    {
        _name = std::move(name);
    }

    /// A default one if the table has none.
    const TableStyle& getStyle() const;

    const SharedStyleConstIPtr<TableStyle>& getSharedStyle() const
    {
        return _sharedStyle;
    }

    SharedStyleConstIPtr<TableStyle>& getSharedStyle()
    {
        return _sharedStyle;
    }

    /// Null for a line without style. Fails: "isInside" for a line outside the table.
    const SharedRowStyleConstIPtr& getSharedStyle(RowIndex row) const;
    const SharedColumnStyleConstIPtr& getSharedStyle(ColumnIndex column) const;
    void setSharedStyle(SharedRowStyleConstIPtr style, RowIndex row);
    void setSharedStyle(SharedColumnStyleConstIPtr style, ColumnIndex column);

    const boost::optional<TableFilterInfo>& getFilterInfo() const
    {
        return _filterInfo;
    }

    void setFilterInfo(boost::optional<TableFilterInfo> filterInfo)
    {
        _filterInfo = std::move(filterInfo);
    }

    const boost::optional<HeaderRowsCols>& getHeaderRowsCols() const
    {
        return _headerRowsCols;
    }

    void setHeaderRowsCols(boost::optional<HeaderRowsCols> headerRowsCols)
    {
        _headerRowsCols = headerRowsCols;
    }

    const TableSettings& getTableSettings() const
    {
        return _settings;
    }

    TableSettings& getTableSettings()
    {
        return _settings;
    }

    const ConditionalFormats& getConditionalFormats() const
    {
        return _conditionalFormats;
    }

    ConditionalFormats& getConditionalFormats()
    {
        return _conditionalFormats;
    }

    const Frames& getFrames() const
    {
        return _frames;
    }

    Frames& getFrames()
    {
        return _frames;
    }

    /// Bytes on the heap for rows, columns and the index of cells; what cells and styles hold themselves isn't counted.
    std::size_t getMemoryUsage() const;

    /// Deep. Ids and the table's own identity are part of the value, since operations and formulas name them.
    friend ZEM_EXPORT bool operator==(const Table& left, const Table& right);

    friend ZEM_EXPORT std::vector<std::string> checkInvariants(const Table& table);

    template<class Archive>
    void serialize(Archive& archive);

private:
    /// Null only in a table that was moved from, which may be assigned to or destroyed. Fails: "plainPtr".
    TableGrid& getGrid();
    const TableGrid& getGrid() const;

    std::string _name;
    SharedStyleConstIPtr<TableStyle> _sharedStyle;
    boost::optional<TableFilterInfo> _filterInfo;
    boost::optional<HeaderRowsCols> _headerRowsCols;
    TableSettings _settings;
    ConditionalFormats _conditionalFormats;
    Frames _frames;
    std::unique_ptr<TableGrid> _grid;
};

/// A line for each broken rule: those of the two lists of lines, and that every cell stands in its row and column, in
/// order, and every merge and pivot table in its index; that no conditional format and no frame is null, and none of
/// their tombstones stands behind more of them than there are. Linear.
ZEM_EXPORT std::vector<std::string> checkInvariants(const Table& table);

using TableUPtr = std::unique_ptr<Table>;

} // namespace Zem::DOM

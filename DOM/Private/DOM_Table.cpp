#include "DOM_Table.h"
#include "DOM_SetToSharedStyle.h"
#include "DOM_TableGrid.h"
#include "DOM_TombstonesLimits.h"

#include "Util_Assert.h"
#include "Util_DeepComparison.h"

#include <algorithm>

namespace Zem::DOM
{

namespace
{

/// The live index of the line with an id, if it is live.
template<class Axis>
std::optional<typename Axis::Index> findLiveLine(const TableLines<Axis>& lines, unsigned long id)
{
    const auto place = lines.getIDs().findID(id);
    const auto index = place ? lines.getIDs().convertIndex(*place) : std::nullopt;
    return index ? std::optional(typename Axis::Index(index->get())) : std::nullopt;
}

template<class Index>
std::optional<Index> convertTo(const std::optional<TombstonesWithIDsStorage::LiveIndex>& index)
{
    return index ? std::optional(Index(index->get())) : std::nullopt;
}

template<class Collection>
void checkCollection(std::vector<std::string>& broken, const Collection& collection, const std::string& kind)
{
    if (const std::optional<std::string> problem = TombstonesLimits::findProblem(collection, kind))
    {
        broken.push_back("5: " + *problem);
    }
}

} // namespace

Table::Table()
    : Table(0, 0)
{
}

Table::Table(unsigned long rowsCount, unsigned long colsCount)
    : _grid(std::make_unique<TableGrid>(TombstonesWithIDsStorage(rowsCount), TombstonesWithIDsStorage(colsCount)))
{
}

Table::Table(const Table& other)
    : BlockImpl(other)
    , UUIDable(other)
    , _name(other._name)
    , _sharedStyle(other._sharedStyle)
    , _filterInfo(other._filterInfo)
    , _headerRowsCols(other._headerRowsCols)
    , _settings(other._settings)
    , _conditionalFormats(other._conditionalFormats)
    , _frames(other._frames)
    , _grid(std::make_unique<TableGrid>(other.getGrid()))
{
}

Table::Table(Table&&) noexcept = default;

Table& Table::operator=(const Table& other)
{
    return *this = Table(other);
}

Table& Table::operator=(Table&&) noexcept = default;
Table::~Table() = default;

TableGrid& Table::getGrid()
{
    return derefPtr(_grid);
}

const TableGrid& Table::getGrid() const
{
    return derefPtr(_grid);
}

const TombstonesWithIDsStorage& Table::getRows() const
{
    return getGrid().getLines<RowAxis>().getIDs();
}

const TombstonesWithIDsStorage& Table::getColumns() const
{
    return getGrid().getLines<ColumnAxis>().getIDs();
}

CollaborationUtils::IndexExcludingTombstones Table::getLiveRowsCount() const
{
    return getRows().getLiveCount();
}

CollaborationUtils::IndexExcludingTombstones Table::getLiveColsCount() const
{
    return getColumns().getLiveCount();
}

CollaborationUtils::IndexIncludingTombstones Table::getAllRowsCount() const
{
    return getRows().getAllCount();
}

CollaborationUtils::IndexIncludingTombstones Table::getAllColsCount() const
{
    return getColumns().getAllCount();
}

std::optional<RowIndex> Table::convertRowIndex(IndexIncludingTombstones index) const
{
    return convertTo<RowIndex>(getRows().convertIndex(index));
}

std::optional<ColumnIndex> Table::convertColIndex(IndexIncludingTombstones index) const
{
    return convertTo<ColumnIndex>(getColumns().convertIndex(index));
}

CollaborationUtils::IndexIncludingTombstones Table::convertRowIndex(IndexExcludingTombstones index) const
{
    return getRows().convertIndex(index);
}

CollaborationUtils::IndexIncludingTombstones Table::convertColIndex(IndexExcludingTombstones index) const
{
    return getColumns().convertIndex(index);
}

CollaborationUtils::IndexIncludingTombstones Table::convertRowIndex(RowIndex index) const
{
    return convertRowIndex(IndexExcludingTombstones(index.get()));
}

CollaborationUtils::IndexIncludingTombstones Table::convertColIndex(ColumnIndex index) const
{
    return convertColIndex(IndexExcludingTombstones(index.get()));
}

RowIndex Table::getRowIndexToInsertTo(IndexIncludingTombstones index) const
{
    return RowIndex(getRows().getIndexToInsertTo(index).get());
}

ColumnIndex Table::getColIndexToInsertTo(IndexIncludingTombstones index) const
{
    return ColumnIndex(getColumns().getIndexToInsertTo(index).get());
}

CellIndex Table::changeSize(unsigned long rowsCount, unsigned long colsCount)
{
    const unsigned long filterRows = _filterInfo ? _filterInfo->getFilterRange()._endRow.get() : 0;
    const unsigned long filterColumns = _filterInfo ? _filterInfo->getFilterRange()._endColumn.get() : 0;
    getGrid().changeLinesCount<RowAxis>(rowsCount, filterRows);
    getGrid().changeLinesCount<ColumnAxis>(colsCount, filterColumns);
    return CellIndex(RowIndex(getLiveRowsCount().get()), ColumnIndex(getLiveColsCount().get()));
}

RowID Table::getRowID(RowIndex row) const
{
    return RowID(getGrid().getLines<RowAxis>().getID(row));
}

ColumnID Table::getColumnID(ColumnIndex column) const
{
    return ColumnID(getGrid().getLines<ColumnAxis>().getID(column));
}

std::optional<RowIndex> Table::findRow(RowID id) const
{
    return findLiveLine(getGrid().getLines<RowAxis>(), id.get());
}

std::optional<ColumnIndex> Table::findColumn(ColumnID id) const
{
    return findLiveLine(getGrid().getLines<ColumnAxis>(), id.get());
}

RowID Table::makeFreshRowID() const
{
    return RowID(getRows().makeFreshID());
}

ColumnID Table::makeFreshColumnID() const
{
    return ColumnID(getColumns().makeFreshID());
}

void Table::insertRow(SparseRowData data, IndexIncludingTombstones index)
{
    getGrid().insertLine<RowAxis>(std::move(data), index);
}

void Table::insertColumn(SparseColumnData data, IndexIncludingTombstones index)
{
    getGrid().insertLine<ColumnAxis>(std::move(data), index);
}

SparseRowData Table::removeRow(IndexIncludingTombstones index)
{
    return getGrid().removeLine<RowAxis>(index);
}

SparseColumnData Table::removeColumn(IndexIncludingTombstones index)
{
    return getGrid().removeLine<ColumnAxis>(index);
}

SparseRowData Table::replaceRowWithTombstone(IndexIncludingTombstones index)
{
    return getGrid().replaceLineWithTombstone<RowAxis>(index);
}

SparseColumnData Table::replaceColWithTombstone(IndexIncludingTombstones index)
{
    return getGrid().replaceLineWithTombstone<ColumnAxis>(index);
}

void Table::restoreRow(SparseRowData data, IndexIncludingTombstones index)
{
    getGrid().restoreLine<RowAxis>(std::move(data), index);
}

void Table::restoreColumn(SparseColumnData data, IndexIncludingTombstones index)
{
    getGrid().restoreLine<ColumnAxis>(std::move(data), index);
}

bool Table::canInsertRow(RowIndex row) const
{
    return getGrid().isPivotTableAcross<RowAxis>(row);
}

bool Table::canInsertColumn(ColumnIndex column) const
{
    return getGrid().isPivotTableAcross<ColumnAxis>(column);
}

const Cell* Table::getCell(RowIndex row, ColumnIndex column) const
{
    const CellSlot* const slot = getGrid().findSlot(CellIndex(row, column));
    return slot ? &slot->_cell : nullptr;
}

Cell* Table::getCell(RowIndex row, ColumnIndex column)
{
    CellSlot* const slot = getGrid().findSlot(CellIndex(row, column));
    return slot ? &slot->_cell : nullptr;
}

Cell& Table::getOrCreateCell(RowIndex row, ColumnIndex column)
{
    return getGrid().getOrCreateSlot(CellIndex(row, column))._cell;
}

void Table::removeCell(RowIndex row, ColumnIndex column)
{
    getGrid().removeCell(CellIndex(row, column));
}

Table::CellRangeIterators Table::getRangeIterators(const TableRange& range) const
{
    return getGrid().getRangeIterators(range);
}

Table::LogicalCellIterators Table::getRangeLogicalIterators(const TableRange& range) const
{
    const CellRangeIterators cells = getRangeIterators(range);
    return {LogicalCellIt<CellRangeIt<true>>(range, cells.first, cells.second),
            LogicalCellIt<CellRangeIt<true>>(range, cells.second)};
}

std::size_t Table::getCellsCount() const
{
    return getGrid().getCellsCount();
}

void Table::setMergeProps(RowIndex row, ColumnIndex column, unsigned long rowsCount, unsigned long colsCount)
{
    const CellIndex index(row, column);
    const CellMergeProps props(rowsCount, colsCount);
    if (props.isMerge())
    {
        getGrid().setMergeProps(getGrid().getOrCreateSlot(index), props);
    }
    else if (CellSlot* const slot = getGrid().findSlot(index))
    {
        getGrid().setMergeProps(*slot, props);
    }
}

boost::optional<CellIndex> Table::getMergedCellRoot(RowIndex row, ColumnIndex column) const
{
    const Cell* const cell = getCell(row, column);
    if (cell && cell->getMergeProps().isMerge())
    {
        return boost::none;
    }
    const RootedRectangle* const merge = getGrid().getMerges().findAt(CellIndex(row, column));
    return merge ? boost::make_optional(getGrid().getCellIndex(*merge->_root)) : boost::none;
}

const TableRange* Table::getMergedRange(RowIndex row, ColumnIndex column) const
{
    const RectangleIndex& merges = getGrid().getMerges();
    const CellSlot* const slot = getGrid().findSlot(CellIndex(row, column));
    const RootedRectangle* const merge = slot && slot->_cell.getMergeProps().isMerge()
                                             ? merges.find(*slot, getExtent(slot->_cell.getMergeProps()))
                                             : merges.findAt(CellIndex(row, column));
    if (!merge)
    {
        return nullptr;
    }
    merge->_range = merges.getRange(*merge);
    return &merge->_range;
}

std::vector<TableRange> Table::getMergedRangesInRange(const TableRange& range) const
{
    std::vector<TableRange> ranges;
    const auto add = [&](const RootedRectangle&, const TableRange& covered)
    {
        ranges.push_back(covered);
        return true;
    };
    getGrid().getMerges().visitIntersecting(range, add);
    std::sort(ranges.begin(), ranges.end(),
              [](const TableRange& left, const TableRange& right) {
                  return CellIndex(left._beginRow, left._beginColumn) < CellIndex(right._beginRow, right._beginColumn);
              });
    return ranges;
}

void Table::setPivotTable(RowIndex row, ColumnIndex column, std::unique_ptr<PivotTable> pivotTable)
{
    if (!pivotTable)
    {
        return removePivotTable(row, column);
    }
    getGrid().setPivotTable(getGrid().getOrCreateSlot(CellIndex(row, column)), std::move(pivotTable));
}

void Table::removePivotTable(RowIndex row, ColumnIndex column)
{
    if (CellSlot* const slot = getGrid().findSlot(CellIndex(row, column)))
    {
        getGrid().setPivotTable(*slot, nullptr);
    }
}

boost::optional<CellIndex> Table::getPivotRoot(RowIndex row, ColumnIndex column) const
{
    const Cell* const cell = getCell(row, column);
    if (cell && cell->getPivotTable())
    {
        return CellIndex(row, column);
    }
    const RootedRectangle* const pivotTable = getGrid().getPivotTables().findAt(CellIndex(row, column));
    return pivotTable ? boost::make_optional(getGrid().getCellIndex(*pivotTable->_root)) : boost::none;
}

std::vector<CellIndex> Table::getPivotTablesInRange(const TableRange& range) const
{
    std::vector<CellIndex> roots;
    const auto add = [&](const RootedRectangle&, const TableRange& covered)
    {
        roots.push_back(CellIndex(covered._beginRow, covered._beginColumn));
        return true;
    };
    getGrid().getPivotTables().visitIntersecting(range, add);
    std::sort(roots.begin(), roots.end());
    return roots;
}

bool Table::isPivotTablesInRange(const TableRange& range) const
{
    bool isAny = false;
    const auto stop = [&](const RootedRectangle&, const TableRange&)
    {
        isAny = true;
        return false;
    };
    getGrid().getPivotTables().visitIntersecting(range, stop);
    return isAny;
}

const TableStyle& Table::getStyle() const
{
    return derefSharedStyle(_sharedStyle);
}

const SharedRowStyleConstIPtr& Table::getSharedStyle(RowIndex row) const
{
    return getGrid().getLineStyle<RowAxis>(row);
}

const SharedColumnStyleConstIPtr& Table::getSharedStyle(ColumnIndex column) const
{
    return getGrid().getLineStyle<ColumnAxis>(column);
}

void Table::setSharedStyle(SharedRowStyleConstIPtr style, RowIndex row)
{
    getGrid().setLineStyle<RowAxis>(std::move(style), row);
}

void Table::setSharedStyle(SharedColumnStyleConstIPtr style, ColumnIndex column)
{
    getGrid().setLineStyle<ColumnAxis>(std::move(style), column);
}

std::size_t Table::getMemoryUsage() const
{
    return getGrid().getMemoryUsage();
}

bool operator==(const Table& left, const Table& right)
{
    return left.getUUID() == right.getUUID() && left._name == right._name &&
           areDeeplyEqual(left._sharedStyle, right._sharedStyle) &&
           areDeeplyEqual(left._filterInfo, right._filterInfo) &&
           areDeeplyEqual(left._headerRowsCols, right._headerRowsCols) && left._settings == right._settings &&
           left._conditionalFormats == right._conditionalFormats && left._frames == right._frames &&
           left.getGrid() == right.getGrid();
}

std::vector<std::string> checkInvariants(const Table& table)
{
    std::vector<std::string> broken = table.getGrid().checkInvariants();
    checkCollection(broken, table._conditionalFormats, "Conditional format");
    checkCollection(broken, table._frames, "Frame");
    return broken;
}

} // namespace Zem::DOM

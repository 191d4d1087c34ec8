#include "DOM_NaiveTable.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Zem::DOM::Tests
{

namespace
{

using IndexIncludingTombstones = CollaborationUtils::IndexIncludingTombstones;
using IndexExcludingTombstones = CollaborationUtils::IndexExcludingTombstones;

template<class Style>
SharedStyleConstIPtr<Style> makeStyle(unsigned char number)
{
    if (number == 0)
    {
        return nullptr;
    }
    Style style;
    style.setParentUUID(UUID(UUID::Bytes{number}));
    return SharedStyleConstIPtr<Style>(new SharedStyle<Style>(style));
}

TableRange makeRange(unsigned long row, unsigned long column, unsigned long rowsCount, unsigned long colsCount)
{
    return TableRange(RowIndex(row), ColumnIndex(column), RowIndex(row + rowsCount), ColumnIndex(column + colsCount));
}

} // namespace

Cell makeCell(const std::string& text)
{
    Cell cell;
    auto paragraph = std::make_unique<Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<TextRun>(text));
    cell.getTextWithTombstones().getBlocks().push_back(std::move(paragraph));
    return cell;
}

std::string getText(const Cell& cell)
{
    if (cell.getTextWithTombstones().getBlocks().empty())
    {
        return "";
    }
    const auto& paragraph = static_cast<const Paragraph&>(*cell.getTextWithTombstones().getBlocks().front());
    return static_cast<const TextRun&>(*paragraph.getRuns().front()).getText();
}

SharedRowStyleConstIPtr makeRowStyle(unsigned char number)
{
    return makeStyle<RowStyle>(number);
}

SharedColumnStyleConstIPtr makeColumnStyle(unsigned char number)
{
    return makeStyle<ColumnStyle>(number);
}

NaiveTable::NaiveTable(unsigned long rowsCount, unsigned long colsCount)
    : _rows(rowsCount)
    , _columns(colsCount)
    , _cells(rowsCount, std::vector<Cell>(colsCount))
{
    for (const bool isRows : {false, true})
    {
        for (unsigned long place = 0; place < getLines(isRows).size(); ++place)
        {
            getLines(isRows)[place]._id = place;
        }
    }
}

std::vector<unsigned long> NaiveTable::getLivePlaces(bool isRows) const
{
    std::vector<unsigned long> places;
    for (unsigned long place = 0; place < getLines(isRows).size(); ++place)
    {
        if (getLines(isRows)[place]._isLive)
        {
            places.push_back(place);
        }
    }
    return places;
}

void NaiveTable::insertLine(bool isRows, unsigned long place, const NaiveLineData& data)
{
    const auto offset = static_cast<long>(place);
    getLines(isRows).insert(getLines(isRows).begin() + offset, data._line);
    if (isRows)
    {
        _cells.insert(_cells.begin() + offset, data._cells);
        return;
    }
    for (unsigned long row = 0; row < _rows.size(); ++row)
    {
        _cells[row].insert(_cells[row].begin() + offset, data._cells[row]);
    }
}

void NaiveTable::eraseLine(bool isRows, unsigned long place)
{
    const auto offset = static_cast<long>(place);
    getLines(isRows).erase(getLines(isRows).begin() + offset);
    if (isRows)
    {
        _cells.erase(_cells.begin() + offset);
        return;
    }
    for (std::vector<Cell>& row : _cells)
    {
        row.erase(row.begin() + offset);
    }
}

NaiveLineData NaiveTable::getLine(bool isRows, unsigned long place) const
{
    NaiveLineData data{getLines(isRows)[place], {}};
    if (isRows)
    {
        data._cells = _cells[place];
        return data;
    }
    for (const std::vector<Cell>& row : _cells)
    {
        data._cells.push_back(row[place]);
    }
    return data;
}

void NaiveTable::setLine(bool isRows, unsigned long place, const NaiveLineData& data)
{
    eraseLine(isRows, place);
    insertLine(isRows, place, data);
}

NaiveTable::Cell& NaiveTable::at(unsigned long row, unsigned long column)
{
    return _cells[getLivePlaces(true)[row]][getLivePlaces(false)[column]];
}

const NaiveTable::Cell& NaiveTable::at(unsigned long row, unsigned long column) const
{
    return const_cast<NaiveTable*>(this)->at(row, column);
}

std::vector<TableRange> NaiveTable::getMergedRanges() const
{
    std::vector<TableRange> ranges;
    for (unsigned long row = 0; row < getLivePlaces(true).size(); ++row)
    {
        for (unsigned long column = 0; column < getLivePlaces(false).size(); ++column)
        {
            const Cell& cell = at(row, column);
            if (cell && cell->_capturedRows + cell->_capturedCols > 0)
            {
                ranges.push_back(makeRange(row, column, cell->_capturedRows + 1, cell->_capturedCols + 1));
            }
        }
    }
    return ranges;
}

std::vector<TableRange> NaiveTable::getPivotRanges() const
{
    std::vector<TableRange> ranges;
    for (unsigned long row = 0; row < getLivePlaces(true).size(); ++row)
    {
        for (unsigned long column = 0; column < getLivePlaces(false).size(); ++column)
        {
            const Cell& cell = at(row, column);
            if (cell && cell->_pivotSize)
            {
                ranges.push_back(makeRange(row, column, std::max(1U, cell->_pivotSize->_height),
                                           std::max(1U, cell->_pivotSize->_width)));
            }
        }
    }
    return ranges;
}

boost::optional<TableRange> NaiveTable::getMergedRange(unsigned long row, unsigned long column) const
{
    const CellIndex index{RowIndex(row), ColumnIndex(column)};
    const std::vector<TableRange> ranges = getMergedRanges();
    const auto own =
        std::find_if(ranges.begin(), ranges.end(),
                     [&](const TableRange& range) { return CellIndex(range._beginRow, range._beginColumn) == index; });
    if (own != ranges.end())
    {
        return *own;
    }
    const auto first =
        std::find_if(ranges.begin(), ranges.end(), [&](const TableRange& range) { return range.contains(index); });
    return first != ranges.end() ? boost::make_optional(*first) : boost::none;
}

boost::optional<CellIndex> NaiveTable::getMergedCellRoot(unsigned long row, unsigned long column) const
{
    const CellIndex index{RowIndex(row), ColumnIndex(column)};
    const boost::optional<TableRange> range = getMergedRange(row, column);
    if (!range || CellIndex(range->_beginRow, range->_beginColumn) == index)
    {
        return boost::none;
    }
    return CellIndex(range->_beginRow, range->_beginColumn);
}

boost::optional<CellIndex> NaiveTable::getPivotRoot(unsigned long row, unsigned long column) const
{
    const CellIndex index{RowIndex(row), ColumnIndex(column)};
    boost::optional<CellIndex> root;
    for (const TableRange& range : getPivotRanges())
    {
        const CellIndex candidate(range._beginRow, range._beginColumn);
        if (range.contains(index) && (!root || candidate == index))
        {
            root = candidate;
        }
    }
    return root;
}

unsigned long NaiveTable::countAfterShrinking(bool isRows, unsigned long count) const
{
    const std::vector<unsigned long> places = getLivePlaces(isRows);
    unsigned long remaining = places.size();
    std::vector<TableRange> rectangles = getMergedRanges();
    const std::vector<TableRange> pivotRanges = getPivotRanges();
    rectangles.insert(rectangles.end(), pivotRanges.begin(), pivotRanges.end());
    std::vector<unsigned long> lowIDs;
    for (const NaiveLine& line : getLines(isRows))
    {
        if (line._id < TombstonesWithIDsStorage::firstFreshID)
        {
            lowIDs.push_back(line._id);
        }
    }
    std::sort(lowIDs.begin(), lowIDs.end());
    while (remaining > count)
    {
        const unsigned long place = places[remaining - 1];
        const NaiveLineData data = getLine(isRows, place);
        const auto isHeldBy = [&](const TableRange& range)
        { return (isRows ? range._endRow.get() : range._endColumn.get()) >= remaining; };
        const bool isLast = place + 1 + (places.size() - remaining) == getLines(isRows).size();
        const bool holdsCells =
            std::any_of(data._cells.begin(), data._cells.end(), [](const Cell& cell) { return cell.has_value(); });
        const bool isRegrown =
            !lowIDs.empty() && lowIDs.back() == data._line._id &&
            (lowIDs.size() == 1 ? data._line._id == 0 : lowIDs[lowIDs.size() - 2] + 1 == data._line._id);
        if (!isLast || holdsCells || data._line._style != 0 || !isRegrown ||
            std::any_of(rectangles.begin(), rectangles.end(), isHeldBy))
        {
            return remaining;
        }
        lowIDs.pop_back();
        --remaining;
    }
    return remaining;
}

namespace
{

void expectLinesEqual(const Table& table, const NaiveTable& naive)
{
    const std::vector<NaiveLine>& rows = naive.getLines(true);
    ASSERT_EQ(IndexIncludingTombstones(rows.size()), table.getAllRowsCount());
    ASSERT_EQ(IndexExcludingTombstones(naive.getLivePlaces(true).size()), table.getLiveRowsCount());
    unsigned long live = 0;
    for (unsigned long place = 0; place < rows.size(); ++place)
    {
        const auto index = table.convertRowIndex(IndexIncludingTombstones(place));
        EXPECT_EQ(rows[place]._isLive, index.has_value());
        EXPECT_EQ(RowIndex(live), table.getRowIndexToInsertTo(IndexIncludingTombstones(place)));
        EXPECT_EQ(index, table.findRow(RowID(rows[place]._id)));
        if (index)
        {
            EXPECT_EQ(RowIndex(live++), *index);
            EXPECT_EQ(IndexIncludingTombstones(place), table.convertRowIndex(*index));
            EXPECT_EQ(RowID(rows[place]._id), table.getRowID(*index));
            EXPECT_TRUE(areDeeplyEqual(table.getSharedStyle(*index), makeRowStyle(rows[place]._style)));
        }
    }
    const std::vector<NaiveLine>& columns = naive.getLines(false);
    ASSERT_EQ(IndexIncludingTombstones(columns.size()), table.getAllColsCount());
    ASSERT_EQ(IndexExcludingTombstones(naive.getLivePlaces(false).size()), table.getLiveColsCount());
    live = 0;
    for (unsigned long place = 0; place < columns.size(); ++place)
    {
        const auto index = table.convertColIndex(IndexIncludingTombstones(place));
        EXPECT_EQ(columns[place]._isLive, index.has_value());
        EXPECT_EQ(ColumnIndex(live), table.getColIndexToInsertTo(IndexIncludingTombstones(place)));
        EXPECT_EQ(index, table.findColumn(ColumnID(columns[place]._id)));
        if (index)
        {
            EXPECT_EQ(ColumnIndex(live++), *index);
            EXPECT_EQ(IndexIncludingTombstones(place), table.convertColIndex(*index));
            EXPECT_EQ(ColumnID(columns[place]._id), table.getColumnID(*index));
            EXPECT_TRUE(areDeeplyEqual(table.getSharedStyle(*index), makeColumnStyle(columns[place]._style)));
        }
    }
}

void expectCellEqual(const Cell* cell, const NaiveTable::Cell& naive)
{
    ASSERT_EQ(naive.has_value(), cell != nullptr);
    if (!naive)
    {
        return;
    }
    EXPECT_EQ(naive->_text, getText(*cell));
    EXPECT_TRUE(cell->getMergeProps() == CellMergeProps(naive->_capturedRows, naive->_capturedCols));
    ASSERT_EQ(naive->_pivotSize.has_value(), cell->getPivotTable().has_value());
    if (naive->_pivotSize)
    {
        EXPECT_TRUE(cell->getPivotTable()->getSize() == *naive->_pivotSize);
    }
}

void expectPositionEqual(const Table& table, const NaiveTable& naive, unsigned long row, unsigned long column)
{
    SCOPED_TRACE("cell " + std::to_string(row) + ", " + std::to_string(column));
    const RowIndex rowIndex(row);
    const ColumnIndex colIndex(column);
    expectCellEqual(table.getCell(rowIndex, colIndex), naive.at(row, column));
    EXPECT_TRUE(naive.getMergedCellRoot(row, column) == table.getMergedCellRoot(rowIndex, colIndex));
    EXPECT_TRUE(naive.getPivotRoot(row, column) == table.getPivotRoot(rowIndex, colIndex));
    const boost::optional<TableRange> naiveRange = naive.getMergedRange(row, column);
    const TableRange* const range = table.getMergedRange(rowIndex, colIndex);
    EXPECT_TRUE(naiveRange.has_value() ? range && *range == *naiveRange : !range);
}

/// Whether one of the ranges is cut by a line that comes in at `index`.
bool isAnyCut(const std::vector<TableRange>& ranges, bool isRows, unsigned long index)
{
    return std::any_of(ranges.begin(), ranges.end(),
                       [&](const TableRange& range)
                       {
                           const unsigned long begin = isRows ? range._beginRow.get() : range._beginColumn.get();
                           const unsigned long end = isRows ? range._endRow.get() : range._endColumn.get();
                           return begin < index && index < end;
                       });
}

} // namespace

void expectEqual(const Table& table, const NaiveTable& naive)
{
    EXPECT_EQ(std::vector<std::string>(), checkInvariants(table));
    ASSERT_NO_FATAL_FAILURE(expectLinesEqual(table, naive));
    std::size_t cellsCount = 0;
    const unsigned long rowsCount = naive.getLivePlaces(true).size();
    const unsigned long colsCount = naive.getLivePlaces(false).size();
    for (unsigned long row = 0; row < rowsCount; ++row)
    {
        for (unsigned long column = 0; column < colsCount; ++column)
        {
            expectPositionEqual(table, naive, row, column);
            cellsCount += naive.at(row, column) ? 1 : 0;
        }
    }
    EXPECT_EQ(cellsCount, table.getCellsCount());
    const std::vector<TableRange> pivotRanges = naive.getPivotRanges();
    for (unsigned long row = 0; row <= rowsCount + 1; ++row)
    {
        EXPECT_EQ(isAnyCut(pivotRanges, true, row), table.canInsertRow(RowIndex(row)));
    }
    for (unsigned long column = 0; column <= colsCount + 1; ++column)
    {
        EXPECT_EQ(isAnyCut(pivotRanges, false, column), table.canInsertColumn(ColumnIndex(column)));
    }
}

} // namespace Zem::DOM::Tests

// Random changes of a table, compared with a naive one after each.

#include "DOM_BusinessLogicChecks.h"
#include "DOM_NaiveTable.h"

#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

using IndexIncludingTombstones = CollaborationUtils::IndexIncludingTombstones;

/// A table and its naive twin, and what to do with both.
class TableFarm
{
public:
    explicit TableFarm(unsigned seed)
        : _random(seed)
        , _table(4, 3)
        , _naive(4, 3)
    {
    }

    void step()
    {
        const bool isRows = choose(2) == 0;
        static constexpr void (TableFarm::*changes[])(bool) = {
            &TableFarm::insert,       &TableFarm::insert,       &TableFarm::remove,     &TableFarm::kill,
            &TableFarm::kill,         &TableFarm::restore,      &TableFarm::restore,    &TableFarm::setText,
            &TableFarm::setText,      &TableFarm::setText,      &TableFarm::removeCell, &TableFarm::setMerge,
            &TableFarm::setMerge,     &TableFarm::setPivot,     &TableFarm::setStyle,   &TableFarm::changeSize,
            &TableFarm::failToInsert, &TableFarm::failToRestore};
        (this->*changes[choose(std::size(changes))])(isRows);
    }

    void check()
    {
        expectEqual(_table, _naive);
        checkRanges();
    }

    /// That the table is the same after each of what makes a table of one.
    void checkCopies()
    {
        Table copy = _table;
        EXPECT_TRUE(copy == _table);
        EXPECT_EQ(std::vector<std::string>(), checkInvariants(copy));
        Table assigned;
        assigned = copy;
        EXPECT_TRUE(assigned == _table);
        const Table read = fromJson<Table>(toJson(_table));
        EXPECT_TRUE(read == _table);
        expectEqual(read, _naive);
        expectEqual(copy, _naive);
    }

    const Table& getTable() const
    {
        return _table;
    }

private:
    unsigned long choose(unsigned long bound)
    {
        return _random() % bound;
    }

    unsigned long countLive(bool isRows) const
    {
        return _naive.getLivePlaces(isRows).size();
    }

    bool hasPositions() const
    {
        return countLive(true) > 0 && countLive(false) > 0;
    }

    NaiveLineData makeLineData(bool isRows)
    {
        NaiveLineData data{NaiveLine{_nextID++, true, static_cast<unsigned char>(choose(3))}, {}};
        if (choose(4) == 0)
        {
            data._line._id += TombstonesWithIDsStorage::firstFreshID;
        }
        for (const NaiveLine& crossing : _naive.getLines(!isRows))
        {
            data._cells.emplace_back();
            if (crossing._isLive && choose(3) == 0)
            {
                data._cells.back() = NaiveCell{"new" + std::to_string(choose(100)), 0, 0, boost::none};
            }
        }
        return data;
    }

    /// The cells that stand in the model's form of a line.
    template<class Data>
    Data makeSparseData(bool isRows, const NaiveLineData& line)
    {
        Data data;
        data._id = line._line._id;
        unsigned long crossingIndex = 0;
        for (unsigned long place = 0; place < line._cells.size(); ++place)
        {
            if (!_naive.getLines(!isRows)[place]._isLive)
            {
                continue;
            }
            if (line._cells[place])
            {
                data._cells.emplace_back(crossingIndex, std::make_unique<Cell>(makeCell(line._cells[place]->_text)));
            }
            ++crossingIndex;
        }
        std::shuffle(data._cells.begin(), data._cells.end(), _random);
        data._cells.emplace_back(0, nullptr);
        if (crossingIndex == 0 || (line._cells.size() > 0 && hasFirst(data)))
        {
            data._cells.pop_back();
        }
        return data;
    }

    template<class Data>
    static bool hasFirst(const Data& data)
    {
        return std::any_of(data._cells.begin(), data._cells.end() - 1,
                           [](const auto& entry) { return entry.first.get() == 0; });
    }

    void insert(bool isRows)
    {
        if (_naive.getLines(isRows).size() > 11)
        {
            return;
        }
        const unsigned long place = choose(_naive.getLines(isRows).size() + 1);
        const NaiveLineData line = makeLineData(isRows);
        if (isRows)
        {
            auto data = makeSparseData<SparseRowData>(true, line);
            data._style = makeRowStyle(line._line._style);
            _table.insertRow(std::move(data), IndexIncludingTombstones(place));
        }
        else
        {
            auto data = makeSparseData<SparseColumnData>(false, line);
            data._style = makeColumnStyle(line._line._style);
            _table.insertColumn(std::move(data), IndexIncludingTombstones(place));
        }
        _naive.insertLine(isRows, place, line);
    }

    void failToInsert(bool isRows)
    {
        const std::vector<NaiveLine>& lines = _naive.getLines(isRows);
        if (lines.empty())
        {
            return;
        }
        const Table before = _table;
        const unsigned long id = lines[choose(lines.size())]._id;
        const IndexIncludingTombstones place(choose(lines.size() + 1));
        if (isRows)
        {
            SparseRowData data;
            data._id = id;
            EXPECT_THROW(_table.insertRow(std::move(data), place), Table::BadRowColIDException);
        }
        else
        {
            SparseColumnData data;
            data._id = id;
            EXPECT_THROW(_table.insertColumn(std::move(data), place), Table::BadRowColIDException);
        }
        EXPECT_TRUE(_table == before);
    }

    /// At a live place with its own id, or anywhere with an id that nobody has.
    void failToRestore(bool isRows)
    {
        const std::vector<NaiveLine>& lines = _naive.getLines(isRows);
        const Table before = _table;
        const unsigned long place = choose(lines.size() + 1);
        const bool isLive = place < lines.size() && lines[place]._isLive;
        const unsigned long id = isLive ? lines[place]._id : _nextID;
        if (isRows)
        {
            SparseRowData data;
            data._id = id;
            EXPECT_THROW(_table.restoreRow(std::move(data), IndexIncludingTombstones(place)),
                         Table::BadRowColIDException);
        }
        else
        {
            SparseColumnData data;
            data._id = id;
            EXPECT_THROW(_table.restoreColumn(std::move(data), IndexIncludingTombstones(place)),
                         Table::BadRowColIDException);
        }
        EXPECT_TRUE(_table == before);
    }

    template<class Data>
    void expectTaken(bool isRows, const Data& data, const NaiveLineData& line)
    {
        EXPECT_EQ(line._line._id, data._id);
        unsigned long live = 0;
        auto entry = data._cells.begin();
        for (unsigned long place = 0; place < line._cells.size(); ++place)
        {
            if (line._cells[place])
            {
                ASSERT_NE(data._cells.end(), entry);
                EXPECT_EQ(live, entry->first.get());
                EXPECT_EQ(line._cells[place]->_text, getText(*entry->second));
                ++entry;
            }
            live += _naive.getLines(!isRows)[place]._isLive ? 1 : 0;
        }
        EXPECT_EQ(data._cells.end(), entry);
    }

    void remove(bool isRows)
    {
        const std::vector<unsigned long> places = _naive.getLivePlaces(isRows);
        if (places.empty())
        {
            return;
        }
        const unsigned long place = places[choose(places.size())];
        if (isRows)
        {
            expectTaken(true, _table.removeRow(IndexIncludingTombstones(place)), _naive.getLine(true, place));
        }
        else
        {
            expectTaken(false, _table.removeColumn(IndexIncludingTombstones(place)), _naive.getLine(false, place));
        }
        _naive.eraseLine(isRows, place);
    }

    void kill(bool isRows)
    {
        const std::vector<unsigned long> places = _naive.getLivePlaces(isRows);
        if (places.empty())
        {
            return;
        }
        const unsigned long place = places[choose(places.size())];
        const NaiveLineData line = _naive.getLine(isRows, place);
        if (isRows)
        {
            _killedRows.push_back(_table.replaceRowWithTombstone(IndexIncludingTombstones(place)));
            expectTaken(true, _killedRows.back(), line);
        }
        else
        {
            _killedColumns.push_back(_table.replaceColWithTombstone(IndexIncludingTombstones(place)));
            expectTaken(false, _killedColumns.back(), line);
        }
        NaiveLineData dead{NaiveLine{line._line._id, false, 0}, {}};
        dead._cells.resize(line._cells.size());
        _naive.setLine(isRows, place, dead);
        getKilledStyles(isRows).emplace_back(line._line._id, line._line._style);
    }

    /// The cells go back to the indices that they had, as far as there are such.
    template<class Data>
    NaiveLineData makeRestored(bool isRows, Data& data)
    {
        const std::vector<unsigned long> crossing = _naive.getLivePlaces(!isRows);
        NaiveLineData line{NaiveLine{data._id, true, 0}, {}};
        line._cells.resize(_naive.getLines(!isRows).size());
        std::erase_if(data._cells, [&](const auto& entry) { return entry.first.get() >= crossing.size(); });
        for (const auto& entry : data._cells)
        {
            const Cell& cell = *entry.second;
            line._cells[crossing[entry.first.get()]] = NaiveCell();
            NaiveCell& naive = *line._cells[crossing[entry.first.get()]];
            naive._text = getText(cell);
            naive._capturedRows = cell.getMergeProps().getCapturedRowsCount();
            naive._capturedCols = cell.getMergeProps().getCapturedColsCount();
            if (cell.getPivotTable())
            {
                naive._pivotSize = cell.getPivotTable()->getSize();
            }
        }
        const KilledStyles& killedStyles = getKilledStyles(isRows);
        const auto style = std::find_if(killedStyles.rbegin(), killedStyles.rend(),
                                        [&](const auto& entry) { return entry.first == data._id; });
        line._line._style = style->second;
        return line;
    }

    void restore(bool isRows)
    {
        if (isRows ? _killedRows.empty() : _killedColumns.empty())
        {
            return;
        }
        const unsigned long chosen = choose(isRows ? _killedRows.size() : _killedColumns.size());
        const unsigned long id = isRows ? _killedRows[chosen]._id : _killedColumns[chosen]._id;
        const std::vector<NaiveLine>& lines = _naive.getLines(isRows);
        const auto line = std::find_if(lines.begin(), lines.end(), [&](const NaiveLine& one) { return one._id == id; });
        const auto place = static_cast<unsigned long>(line - lines.begin());
        if (isRows)
        {
            const NaiveLineData restored = makeRestored(true, _killedRows[chosen]);
            _table.restoreRow(std::move(_killedRows[chosen]), IndexIncludingTombstones(place));
            _killedRows.erase(_killedRows.begin() + static_cast<long>(chosen));
            _naive.setLine(true, place, restored);
        }
        else
        {
            const NaiveLineData restored = makeRestored(false, _killedColumns[chosen]);
            _table.restoreColumn(std::move(_killedColumns[chosen]), IndexIncludingTombstones(place));
            _killedColumns.erase(_killedColumns.begin() + static_cast<long>(chosen));
            _naive.setLine(false, place, restored);
        }
    }

    CellIndex choosePosition()
    {
        return CellIndex(RowIndex(choose(countLive(true))), ColumnIndex(choose(countLive(false))));
    }

    NaiveCell& getOrCreate(const CellIndex& index)
    {
        NaiveTable::Cell& cell = _naive.at(index.rowIndex.get(), index.colIndex.get());
        if (!cell)
        {
            cell = NaiveCell();
        }
        return *cell;
    }

    void setText(bool)
    {
        if (!hasPositions())
        {
            return;
        }
        const CellIndex index = choosePosition();
        NaiveCell& naive = getOrCreate(index);
        naive._text = std::to_string(choose(1000));
        _table.getOrCreateCell(index.rowIndex, index.colIndex).getTextWithTombstones() =
            makeCell(naive._text).getTextWithTombstones();
    }

    void removeCell(bool)
    {
        if (!hasPositions())
        {
            return;
        }
        const CellIndex index = choosePosition();
        _naive.at(index.rowIndex.get(), index.colIndex.get()).reset();
        _table.removeCell(index.rowIndex, index.colIndex);
    }

    void setMerge(bool)
    {
        if (!hasPositions())
        {
            return;
        }
        const CellIndex index = choosePosition();
        const unsigned long rows = choose(4);
        const unsigned long columns = choose(4);
        if (rows + columns > 0 || _naive.at(index.rowIndex.get(), index.colIndex.get()))
        {
            getOrCreate(index)._capturedRows = rows;
            getOrCreate(index)._capturedCols = columns;
        }
        _table.setMergeProps(index.rowIndex, index.colIndex, rows, columns);
    }

    void setPivot(bool isSet)
    {
        if (!hasPositions())
        {
            return;
        }
        const CellIndex index = choosePosition();
        if (isSet)
        {
            const Size2D<unsigned> size{static_cast<unsigned>(choose(4)), static_cast<unsigned>(choose(4))};
            getOrCreate(index)._pivotSize = size;
            _table.setPivotTable(index.rowIndex, index.colIndex, std::make_unique<PivotTable>(size));
            return;
        }
        if (NaiveTable::Cell& cell = _naive.at(index.rowIndex.get(), index.colIndex.get()))
        {
            cell->_pivotSize.reset();
        }
        _table.removePivotTable(index.rowIndex, index.colIndex);
    }

    void setStyle(bool isRows)
    {
        const std::vector<unsigned long> places = _naive.getLivePlaces(isRows);
        if (places.empty())
        {
            return;
        }
        const unsigned long index = choose(places.size());
        const auto style = static_cast<unsigned char>(choose(3));
        _naive.getLines(isRows)[places[index]]._style = style;
        if (isRows)
        {
            _table.setSharedStyle(makeRowStyle(style), RowIndex(index));
        }
        else
        {
            _table.setSharedStyle(makeColumnStyle(style), ColumnIndex(index));
        }
    }

    void changeSize(bool isRows)
    {
        const unsigned long count = choose(9);
        const unsigned long crossingCount = countLive(!isRows);
        const CellIndex reached =
            isRows ? _table.changeSize(count, crossingCount) : _table.changeSize(crossingCount, count);
        while (countLive(isRows) < count)
        {
            const std::vector<NaiveLine>& lines = _naive.getLines(isRows);
            unsigned long nextID = 0;
            for (const NaiveLine& line : lines)
            {
                nextID = line._id < TombstonesWithIDsStorage::firstFreshID ? std::max(nextID, line._id + 1) : nextID;
            }
            _nextID = std::max(_nextID, nextID + 1);
            NaiveLineData line{NaiveLine{nextID, true, 0}, {}};
            line._cells.resize(_naive.getLines(!isRows).size());
            _naive.insertLine(isRows, lines.size(), line);
        }
        const unsigned long remaining = _naive.countAfterShrinking(isRows, count);
        while (countLive(isRows) > remaining)
        {
            _naive.eraseLine(isRows, _naive.getLines(isRows).size() - 1);
        }
        EXPECT_EQ(CellIndex(RowIndex(countLive(true)), ColumnIndex(countLive(false))), reached);
    }

    /// The ids of killed lines, and their styles. A row and a column may have the same id.
    using KilledStyles = std::vector<std::pair<unsigned long, unsigned char>>;

    KilledStyles& getKilledStyles(bool isRows)
    {
        return isRows ? _killedRowStyles : _killedColumnStyles;
    }

    TableRange chooseRange()
    {
        const unsigned long row = choose(countLive(true) + 1);
        const unsigned long column = choose(countLive(false) + 1);
        return TableRange(RowIndex(row), ColumnIndex(column), RowIndex(row + 1 + choose(4)),
                          ColumnIndex(column + 1 + choose(4)));
    }

    void checkRanges()
    {
        for (int count = 0; count < 5; ++count)
        {
            const TableRange range = chooseRange();
            checkWalks(range);
            checkRectangles(range);
        }
    }

    void checkWalks(const TableRange& range)
    {
        auto [cell, cellEnd] = _table.getRangeIterators(range);
        auto [logical, logicalEnd] = _table.getRangeLogicalIterators(range);
        for (RowIndex row = range._beginRow; row < range._endRow; ++row)
        {
            for (ColumnIndex column = range._beginColumn; column < range._endColumn; ++column)
            {
                const Cell* const expected = _table.getCell(row, column);
                ASSERT_TRUE(logical != logicalEnd);
                EXPECT_EQ(expected, *logical);
                EXPECT_EQ(CellIndex(row, column), CellIndex(logical.getRowIndex(), logical.getColIndex()));
                ++logical;
                if (expected)
                {
                    ASSERT_TRUE(cell != cellEnd);
                    EXPECT_EQ(expected, *cell);
                    EXPECT_EQ(CellIndex(row, column), CellIndex(cell.getRowIndex(), cell.getColIndex()));
                    ++cell;
                }
            }
        }
        EXPECT_TRUE(cell == cellEnd);
        EXPECT_TRUE(logical == logicalEnd);
    }

    void checkRectangles(const TableRange& range)
    {
        std::vector<TableRange> merged = _naive.getMergedRanges();
        std::erase_if(merged, [&](const TableRange& one) { return !one.intersects(range); });
        EXPECT_TRUE(merged == _table.getMergedRangesInRange(range));
        EXPECT_EQ(
            std::any_of(merged.begin(), merged.end(), [&](const TableRange& one) { return !range.contains(one); }),
            BusinessLogicChecks::isMergedRangeIntersectedAndOutOfRangeExists(_table, range));
        std::vector<CellIndex> roots;
        for (const TableRange& one : _naive.getPivotRanges())
        {
            if (one.intersects(range))
            {
                roots.emplace_back(one._beginRow, one._beginColumn);
            }
        }
        EXPECT_TRUE(roots == _table.getPivotTablesInRange(range));
        EXPECT_EQ(!roots.empty(), _table.isPivotTablesInRange(range));
    }

    std::mt19937_64 _random;
    Table _table;
    NaiveTable _naive;
    std::vector<SparseRowData> _killedRows;
    std::vector<SparseColumnData> _killedColumns;
    KilledStyles _killedRowStyles;
    KilledStyles _killedColumnStyles;
    unsigned long _nextID = 100;
};

SparseRowData copyData(const SparseRowData& data)
{
    SparseRowData copy;
    copy._id = data._id;
    copy._style = data._style;
    for (const auto& [index, cell] : data._cells)
    {
        copy._cells.emplace_back(index, std::make_unique<Cell>(*cell));
    }
    return copy;
}

} // namespace

TEST(TableModel, DoesAsANaiveTableDoes)
{
    for (unsigned seed = 1; seed <= 60; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TableFarm farm(seed);
        for (int step = 0; step < 100; ++step)
        {
            SCOPED_TRACE("step " + std::to_string(step));
            farm.step();
            farm.check();
            if (HasFailure())
            {
                return;
            }
        }
        farm.checkCopies();
    }
}

TEST(TableModel, TakesEveryLineOutAndBackIn)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TableFarm farm(1000 + seed);
        for (int step = 0; step < 60; ++step)
        {
            farm.step();
        }
        Table table = farm.getTable();
        const Table before = table;
        for (unsigned long row = 0; row < table.getLiveRowsCount().get(); ++row)
        {
            const IndexIncludingTombstones place = table.convertRowIndex(RowIndex(row));
            table.restoreRow(table.replaceRowWithTombstone(place), place);
            EXPECT_TRUE(table == before);
            SparseRowData data = table.removeRow(place);
            const SparseRowData copy = copyData(data);
            EXPECT_FALSE(table == before);
            table.insertRow(std::move(data), place);
            EXPECT_TRUE(table == before);
            EXPECT_EQ(copy._cells.size(), table.removeRow(place)._cells.size());
            table.insertRow(copyData(copy), place);
            EXPECT_TRUE(table == before);
        }
        for (unsigned long column = 0; column < table.getLiveColsCount().get(); ++column)
        {
            const IndexIncludingTombstones place = table.convertColIndex(ColumnIndex(column));
            table.restoreColumn(table.replaceColWithTombstone(place), place);
            EXPECT_TRUE(table == before);
            table.insertColumn(table.removeColumn(place), place);
            EXPECT_TRUE(table == before);
        }
        EXPECT_EQ(std::vector<std::string>(), checkInvariants(table));
    }
}

TEST(TableModel, UndoesAStackOfRemovedLines)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TableFarm farm(2000 + seed);
        for (int step = 0; step < 60; ++step)
        {
            farm.step();
        }
        std::mt19937_64 random(seed);
        Table table = farm.getTable();
        std::vector<std::pair<Table, std::function<void()>>> undo;
        while (table.getLiveRowsCount().get() > 0 && table.getLiveColsCount().get() > 0)
        {
            const Table before = table;
            if (random() % 2 == 0)
            {
                const auto place = table.convertRowIndex(RowIndex(random() % table.getLiveRowsCount().get()));
                auto data = std::make_shared<SparseRowData>(table.replaceRowWithTombstone(place));
                undo.emplace_back(before, [=, &table] { table.restoreRow(std::move(*data), place); });
            }
            else
            {
                const auto place = table.convertColIndex(ColumnIndex(random() % table.getLiveColsCount().get()));
                auto data = std::make_shared<SparseColumnData>(table.replaceColWithTombstone(place));
                undo.emplace_back(before, [=, &table] { table.restoreColumn(std::move(*data), place); });
            }
        }
        EXPECT_EQ(0u, table.getCellsCount());
        for (; !undo.empty(); undo.pop_back())
        {
            undo.back().second();
            EXPECT_TRUE(table == undo.back().first);
        }
    }
}

} // namespace Zem::DOM::Tests

#include "DOM_Table.h"
#include "DOM_Image.h"
#include "DOM_NaiveTable.h"

#include "TS_Assertions.h"

#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

using Place = CollaborationUtils::IndexIncludingTombstones;
using LiveIndex = CollaborationUtils::IndexExcludingTombstones;

CellIndex at(unsigned long row, unsigned long column)
{
    return CellIndex(RowIndex(row), ColumnIndex(column));
}

TableRange makeRange(unsigned long beginRow, unsigned long beginColumn, unsigned long endRow, unsigned long endColumn)
{
    return TableRange(RowIndex(beginRow), ColumnIndex(beginColumn), RowIndex(endRow), ColumnIndex(endColumn));
}

SharedStyleConstIPtr<TableStyle> makeTableStyle()
{
    TableStyle style;
    style.setTableProps(std::make_shared<const TableProps>());
    return SharedStyleConstIPtr<TableStyle>(new SharedStyle<TableStyle>(style));
}

void setText(Table& table, unsigned long row, unsigned long column, const std::string& text)
{
    table.getOrCreateCell(RowIndex(row), ColumnIndex(column)).getTextWithTombstones() =
        makeCell(text).getTextWithTombstones();
}

std::string textAt(const Table& table, unsigned long row, unsigned long column)
{
    const Cell* const cell = table.getCell(RowIndex(row), ColumnIndex(column));
    return cell ? getText(*cell) : "-";
}

/// The texts of a table, by rows; a dash where no cell stands.
std::string draw(const Table& table)
{
    std::string drawing;
    for (unsigned long row = 0; row < table.getLiveRowsCount().get(); ++row)
    {
        for (unsigned long column = 0; column < table.getLiveColsCount().get(); ++column)
        {
            drawing += textAt(table, row, column);
        }
        drawing += '/';
    }
    return drawing;
}

/// "ab/cd/": each letter in a cell of its own, a dash for none.
Table makeTable(const std::string& drawing)
{
    const unsigned long colsCount = drawing.find('/');
    const unsigned long rowsCount = drawing.size() / (colsCount + 1);
    Table table(rowsCount, colsCount);
    for (unsigned long row = 0; row < rowsCount; ++row)
    {
        for (unsigned long column = 0; column < colsCount; ++column)
        {
            const char letter = drawing[row * (colsCount + 1) + column];
            if (letter != '-')
            {
                setText(table, row, column, std::string(1, letter));
            }
        }
    }
    return table;
}

SparseRowData makeRow(unsigned long id, const std::string& letters = "")
{
    SparseRowData data;
    data._id = id;
    for (unsigned long column = 0; column < letters.size(); ++column)
    {
        if (letters[column] != '-')
        {
            data._cells.emplace_back(column, std::make_unique<Cell>(makeCell(std::string(1, letters[column]))));
        }
    }
    return data;
}

SparseColumnData makeColumn(unsigned long id)
{
    SparseColumnData data;
    data._id = id;
    return data;
}

std::unique_ptr<PivotTable> makePivot(unsigned width, unsigned height)
{
    return std::make_unique<PivotTable>(Size2D<unsigned>{width, height});
}

} // namespace

static_assert(std::is_base_of_v<BaseRuntimeError, Table::BadRowColIDException>);
static_assert(std::is_nothrow_move_constructible_v<Table>);

TEST(Table, BeginsWithoutRowsAndColumns)
{
    const Table table;
    EXPECT_EQ(LiveIndex(0), table.getLiveRowsCount());
    EXPECT_EQ(Place(0), table.getAllColsCount());
    EXPECT_EQ(nullptr, table.getCell(RowIndex(0), ColumnIndex(0)));
    EXPECT_EQ(0u, table.getCellsCount());
}

TEST(Table, HasNoLiveIndexForATombstone)
{
    Table table(4, 4);
    table.replaceRowWithTombstone(Place(1));
    table.replaceColWithTombstone(Place(3));
    EXPECT_FALSE(table.convertRowIndex(Place(1)));
    EXPECT_EQ(RowIndex(1), table.getRowIndexToInsertTo(Place(1)));
    EXPECT_EQ(RowIndex(1), table.convertRowIndex(Place(2)));
    EXPECT_FALSE(table.convertColIndex(Place(3)));
    EXPECT_EQ(ColumnIndex(3), table.getColIndexToInsertTo(Place(3)));
    EXPECT_EQ(RowIndex(3), table.convertRowIndex(Place(4)));
    EXPECT_EQ(Place(4), table.convertRowIndex(LiveIndex(3)));
    EXPECT_EQ(Place(4), table.convertColIndex(LiveIndex(3)));
}

TEST(Table, IsAsBeforeOnceARowIsRestored)
{
    Table table = makeTable("ab/cd/ef/");
    table.setSharedStyle(makeRowStyle(3), RowIndex(1));
    table.setMergeProps(RowIndex(1), ColumnIndex(0), 1, 1);
    table.setPivotTable(RowIndex(1), ColumnIndex(1), makePivot(1, 2));
    const Table before = table;
    SparseRowData data = table.replaceRowWithTombstone(Place(1));
    EXPECT_EQ("ab/ef/", draw(table));
    EXPECT_FALSE(table == before);
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(1), ColumnIndex(0)));
    EXPECT_FALSE(table.getPivotRoot(RowIndex(1), ColumnIndex(1)));
    table.restoreRow(std::move(data), Place(1));
    EXPECT_TRUE(table == before);
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(2), ColumnIndex(0)) == at(1, 0));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(2), ColumnIndex(1)) == at(1, 1));
}

TEST(Table, IsAsBeforeOnceACapturedRowIsRestored)
{
    Table table(3, 3);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    const Table before = table;
    SparseRowData row = table.replaceRowWithTombstone(Place(1));
    SparseColumnData column = table.replaceColWithTombstone(Place(1));
    table.restoreColumn(std::move(column), Place(1));
    table.restoreRow(std::move(row), Place(1));
    EXPECT_TRUE(table == before);
    EXPECT_EQ(makeRange(0, 0, 2, 2), *table.getMergedRange(RowIndex(1), ColumnIndex(1)));
}

TEST(Table, KeepsTheIDOfATombstone)
{
    Table table(3, 3);
    table.insertRow(makeRow(50), Place(1));
    EXPECT_EQ(50u, table.replaceRowWithTombstone(Place(1))._id);
    EXPECT_FALSE(table.findRow(RowID(50)));
    EXPECT_THROW(table.insertRow(makeRow(50), Place(0)), Table::BadRowColIDException);
    table.restoreRow(makeRow(50), Place(1));
    EXPECT_EQ(RowIndex(1), table.findRow(RowID(50)));
}

TEST(Table, RefusesATakenIDUnchanged)
{
    Table table = makeTable("ab/cd/");
    table.replaceColWithTombstone(Place(1));
    const Table before = table;
    EXPECT_THROW(table.insertRow(makeRow(1, "x"), Place(0)), Table::BadRowColIDException);
    EXPECT_THROW(table.insertColumn(makeColumn(1), Place(0)), Table::BadRowColIDException);
    EXPECT_TRUE(table == before);
}

TEST(Table, RefusesToRestoreWhatIsNoTombstoneWithTheID)
{
    Table table = makeTable("ab/cd/");
    table.replaceRowWithTombstone(Place(1));
    const Table before = table;
    EXPECT_THROW(table.restoreRow(makeRow(0), Place(1)), Table::BadRowColIDException);
    EXPECT_THROW(table.restoreRow(makeRow(0), Place(0)), Table::BadRowColIDException);
    EXPECT_THROW(table.restoreRow(makeRow(1), Place(2)), Table::BadRowColIDException);
    EXPECT_THROW(table.restoreColumn(makeColumn(0), Place(0)), Table::BadRowColIDException);
    EXPECT_TRUE(table == before);
}

TEST(Table, QuotesTheIDThatItRefuses)
{
    Table table(1, 1);
    try
    {
        table.insertRow(makeRow(0), Place(0));
        FAIL();
    }
    catch (const BaseRuntimeError& error)
    {
        EXPECT_STREQ("The id 0 of a row or column is taken", error.what());
    }
    try
    {
        table.restoreRow(makeRow(7), Place(0));
        FAIL();
    }
    catch (const BaseRuntimeError& error)
    {
        EXPECT_STREQ("The id 7 of a row or column isn't that of the tombstone at 0", error.what());
    }
}

TEST(Table, InsertsRowsWithTheirCells)
{
    Table table = makeTable("ab/cd/");
    table.insertRow(makeRow(70, "x-"), Place(1));
    table.insertRow(makeRow(71, "yz"), Place(3));
    EXPECT_EQ("ab/x-/cd/yz/", draw(table));
    EXPECT_EQ("x-/", draw(
                         [&]
                         {
                             Table other = table;
                             other.removeRow(Place(0));
                             other.removeRow(Place(1));
                             other.removeRow(Place(1));
                             return other;
                         }()));
}

TEST(Table, InsertsAtTheEndWithTombstonesBeforeIt)
{
    Table table = makeTable("a/b/");
    table.replaceRowWithTombstone(Place(1));
    table.insertRow(makeRow(70, "x"), Place(2));
    table.insertRow(makeRow(71, "y"), Place(1));
    EXPECT_EQ("a/y/x/", draw(table));
    EXPECT_EQ(Place(4), table.getAllRowsCount());
}

TEST(Table, RefusesCellsThatDoNotFitUnchanged)
{
    Table table = makeTable("ab/");
    const Table before = table;
    EXPECT_ASSERTION(table.insertRow(makeRow(9, "xyz"), Place(0)), "crossingIndex < crossingCount");
    SparseRowData twice = makeRow(9, "x");
    twice._cells.emplace_back(ColumnIndex(0), std::make_unique<Cell>());
    EXPECT_ASSERTION(table.insertRow(std::move(twice), Place(0)), "areCellsApart");
    EXPECT_ASSERTION(table.insertRow(makeRow(9), Place(2)), "place <= getAllCount()");
    EXPECT_ASSERTION(table.removeRow(Place(1)), "isLive(place)");
    EXPECT_ASSERTION(table.replaceColWithTombstone(Place(2)), "isLive(place)");
    EXPECT_TRUE(table == before);
    table.replaceRowWithTombstone(Place(0));
    EXPECT_ASSERTION(table.removeRow(Place(0)), "isLive(place)");
    EXPECT_ASSERTION(table.replaceRowWithTombstone(Place(0)), "isLive(place)");
    EXPECT_ASSERTION(table.restoreRow(makeRow(0, "xyz"), Place(0)), "crossingIndex < crossingCount");
    EXPECT_EQ(LiveIndex(0), table.getLiveRowsCount());
}

TEST(Table, RefusesPositionsOutside)
{
    Table table(2, 3);
    EXPECT_EQ(nullptr, table.getCell(RowIndex(2), ColumnIndex(0)));
    EXPECT_EQ(nullptr, table.getCell(RowIndex(0), ColumnIndex(3)));
    EXPECT_ASSERTION(table.getOrCreateCell(RowIndex(2), ColumnIndex(0)), "isInside");
    EXPECT_ASSERTION(table.getOrCreateCell(RowIndex(0), ColumnIndex(3)), "isInside");
    EXPECT_ASSERTION(table.setMergeProps(RowIndex(2), ColumnIndex(0), 1, 1), "isInside");
    EXPECT_ASSERTION(table.setPivotTable(RowIndex(0), ColumnIndex(3), makePivot(1, 1)), "isInside");
    EXPECT_ASSERTION(table.setSharedStyle(makeRowStyle(1), RowIndex(2)), "isInside");
    EXPECT_ASSERTION(table.getSharedStyle(ColumnIndex(3)), "isInside");
    EXPECT_ASSERTION(table.getRowID(RowIndex(2)), "place < getAllCount()");
    table.removeCell(RowIndex(9), ColumnIndex(9));
    table.setMergeProps(RowIndex(9), ColumnIndex(9), 0, 0);
    table.removePivotTable(RowIndex(9), ColumnIndex(9));
    EXPECT_EQ(0u, table.getCellsCount());
}

TEST(Table, KeepsCellsWhereTheyAre)
{
    Table table(2, 2);
    Cell& cell = table.getOrCreateCell(RowIndex(1), ColumnIndex(1));
    table.insertRow(makeRow(70, "ab"), Place(0));
    table.insertColumn(makeColumn(70), Place(1));
    EXPECT_EQ(&cell, table.getCell(RowIndex(2), ColumnIndex(2)));
    table.removeCell(RowIndex(2), ColumnIndex(2));
    EXPECT_EQ(nullptr, table.getCell(RowIndex(2), ColumnIndex(2)));
    EXPECT_EQ(2u, table.getCellsCount());
}

TEST(Table, KeepsStylesByRowAndColumn)
{
    Table table(3, 3);
    const SharedRowStyleConstIPtr style = makeRowStyle(1);
    table.setSharedStyle(style, RowIndex(1));
    table.setSharedStyle(makeColumnStyle(2), ColumnIndex(0));
    EXPECT_EQ(style, table.getSharedStyle(RowIndex(1)));
    EXPECT_EQ(nullptr, table.getSharedStyle(RowIndex(0)));
    table.insertRow(makeRow(70), Place(0));
    EXPECT_EQ(style, table.getSharedStyle(RowIndex(2)));
    table.setSharedStyle(SharedRowStyleConstIPtr(), RowIndex(2));
    EXPECT_EQ(nullptr, table.getSharedStyle(RowIndex(2)));
    table.setSharedStyle(SharedColumnStyleConstIPtr(), ColumnIndex(0));
    EXPECT_EQ(std::vector<std::string>(), checkInvariants(table));
}

TEST(Table, HasNoMergedRootAtTheRootItself)
{
    Table table(4, 4);
    table.setMergeProps(RowIndex(1), ColumnIndex(1), 1, 2);
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(1), ColumnIndex(1)));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(2), ColumnIndex(3)) == at(1, 1));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(1), ColumnIndex(2)) == at(1, 1));
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(3), ColumnIndex(1)));
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(1), ColumnIndex(0)));
    EXPECT_EQ(makeRange(1, 1, 3, 4), *table.getMergedRange(RowIndex(1), ColumnIndex(1)));
    EXPECT_EQ(makeRange(1, 1, 3, 4), *table.getMergedRange(RowIndex(2), ColumnIndex(2)));
    EXPECT_EQ(nullptr, table.getMergedRange(RowIndex(0), ColumnIndex(0)));
}

TEST(Table, TakesAMergeApart)
{
    Table table(4, 4);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 3, 0);
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(1), ColumnIndex(1)));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(3), ColumnIndex(0)) == at(0, 0));
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 0, 0);
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(3), ColumnIndex(0)));
    EXPECT_EQ(nullptr, table.getMergedRange(RowIndex(0), ColumnIndex(0)));
    EXPECT_NE(nullptr, table.getCell(RowIndex(0), ColumnIndex(0)));
    table.setMergeProps(RowIndex(2), ColumnIndex(2), 0, 0);
    EXPECT_EQ(nullptr, table.getCell(RowIndex(2), ColumnIndex(2)));
}

TEST(Table, MovesMergesAndPivotTablesWithTheirRoots)
{
    Table table(6, 6);
    table.setMergeProps(RowIndex(2), ColumnIndex(2), 1, 1);
    table.setPivotTable(RowIndex(4), ColumnIndex(4), makePivot(2, 2));
    table.insertRow(makeRow(70), Place(0));
    table.insertColumn(makeColumn(70), Place(1));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(4), ColumnIndex(4)) == at(3, 3));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(6), ColumnIndex(6)) == at(5, 5));
    table.removeRow(Place(0));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(3), ColumnIndex(4)) == at(2, 3));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(4), ColumnIndex(5)) == at(4, 5));
}

TEST(Table, KeepsTheCountsOfAMergeWhateverComesInside)
{
    Table table(5, 5);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 2, 0);
    table.insertRow(makeRow(70), Place(1));
    EXPECT_EQ(makeRange(0, 0, 3, 1), *table.getMergedRange(RowIndex(0), ColumnIndex(0)));
    table.replaceRowWithTombstone(Place(1));
    table.replaceRowWithTombstone(Place(2));
    EXPECT_EQ(makeRange(0, 0, 3, 1), *table.getMergedRange(RowIndex(2), ColumnIndex(0)));
}

TEST(Table, LetsTheFirstOfOverlappingMergesCapture)
{
    Table table(5, 5);
    table.setMergeProps(RowIndex(1), ColumnIndex(1), 3, 3);
    table.setMergeProps(RowIndex(0), ColumnIndex(3), 2, 0);
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(2), ColumnIndex(3)) == at(0, 3));
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(3), ColumnIndex(3)) == at(1, 1));
    EXPECT_EQ((std::vector<TableRange>{makeRange(0, 3, 3, 4), makeRange(1, 1, 5, 5)}),
              table.getMergedRangesInRange(makeRange(2, 3, 3, 4)));
}

TEST(Table, TakesMergesThatReachFurtherThanCanBeCounted)
{
    Table table(5, 5);
    table.setMergeProps(RowIndex(1), ColumnIndex(1), ~0UL, ~0UL);
    EXPECT_TRUE(table.getMergedCellRoot(RowIndex(1000000), ColumnIndex(4)) == at(1, 1));
    EXPECT_EQ(makeRange(1, 1, ~0UL, ~0UL), *table.getMergedRange(RowIndex(4), ColumnIndex(4)));
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(0), ColumnIndex(4)));
    EXPECT_FALSE(table.getMergedCellRoot(RowIndex(~0UL), ColumnIndex(4)));
}

TEST(Table, FindsAPivotRootAtTheRootItself)
{
    Table table(4, 4);
    table.setPivotTable(RowIndex(1), ColumnIndex(1), makePivot(3, 2));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(1), ColumnIndex(1)) == at(1, 1));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(2), ColumnIndex(3)) == at(1, 1));
    EXPECT_FALSE(table.getPivotRoot(RowIndex(3), ColumnIndex(1)));
    table.removePivotTable(RowIndex(1), ColumnIndex(1));
    EXPECT_FALSE(table.getPivotRoot(RowIndex(1), ColumnIndex(1)));
    table.setPivotTable(RowIndex(1), ColumnIndex(1), makePivot(1, 1));
    table.setPivotTable(RowIndex(1), ColumnIndex(1), nullptr);
    EXPECT_FALSE(table.getPivotRoot(RowIndex(1), ColumnIndex(1)));
}

TEST(Table, CountsAPivotTableWithoutSizeAsItsRoot)
{
    Table table(3, 3);
    table.setPivotTable(RowIndex(1), ColumnIndex(1), makePivot(0, 0));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(1), ColumnIndex(1)) == at(1, 1));
    EXPECT_FALSE(table.canInsertRow(RowIndex(1)));
    EXPECT_FALSE(table.canInsertRow(RowIndex(2)));
}

TEST(Table, ReplacesAPivotTableAtItsRoot)
{
    Table table(4, 4);
    table.setPivotTable(RowIndex(0), ColumnIndex(0), makePivot(2, 2));
    table.setPivotTable(RowIndex(0), ColumnIndex(0), makePivot(4, 1));
    EXPECT_TRUE(table.getPivotRoot(RowIndex(0), ColumnIndex(3)) == at(0, 0));
    EXPECT_FALSE(table.getPivotRoot(RowIndex(1), ColumnIndex(0)));
}

TEST(Table, FindsPivotTablesThatReachIntoARange)
{
    Table table(6, 6);
    table.setPivotTable(RowIndex(3), ColumnIndex(0), makePivot(2, 2));
    table.setPivotTable(RowIndex(0), ColumnIndex(3), makePivot(2, 3));
    EXPECT_EQ((std::vector<CellIndex>{at(0, 3), at(3, 0)}), table.getPivotTablesInRange(makeRange(2, 1, 4, 4)));
    EXPECT_EQ((std::vector<CellIndex>{at(3, 0)}), table.getPivotTablesInRange(makeRange(4, 0, 5, 6)));
    EXPECT_TRUE(table.isPivotTablesInRange(makeRange(4, 0, 5, 6)));
    EXPECT_FALSE(table.isPivotTablesInRange(makeRange(5, 0, 6, 6)));
}

TEST(Table, SaysWhetherAPivotTableStandsInTheWay)
{
    Table table(6, 6);
    table.setPivotTable(RowIndex(2), ColumnIndex(1), makePivot(2, 3));
    EXPECT_FALSE(table.canInsertRow(RowIndex(0)));
    EXPECT_FALSE(table.canInsertRow(RowIndex(2)));
    EXPECT_TRUE(table.canInsertRow(RowIndex(3)));
    EXPECT_TRUE(table.canInsertRow(RowIndex(4)));
    EXPECT_FALSE(table.canInsertRow(RowIndex(5)));
    EXPECT_FALSE(table.canInsertColumn(ColumnIndex(1)));
    EXPECT_TRUE(table.canInsertColumn(ColumnIndex(2)));
    EXPECT_FALSE(table.canInsertColumn(ColumnIndex(3)));
    EXPECT_FALSE(table.canInsertRow(RowIndex(~0UL)));
}

TEST(Table, GrowsAtTheEnd)
{
    Table table = makeTable("ab/");
    table.replaceColWithTombstone(Place(1));
    EXPECT_EQ(at(3, 2), table.changeSize(3, 2));
    EXPECT_EQ("a-/--/--/", draw(table));
    EXPECT_EQ(Place(3), table.getAllColsCount());
}

TEST(Table, ShrinksOverWhatHoldsNothing)
{
    Table table = makeTable("ab-/---/---/");
    EXPECT_EQ(at(1, 2), table.changeSize(0, 0));
    EXPECT_EQ("ab/", draw(table));
    Table empty(5, 5);
    EXPECT_EQ(at(0, 0), empty.changeSize(0, 0));
}

TEST(Table, StopsShrinkingAtStylesMergesPivotTablesAndTheFilter)
{
    Table table(10, 10);
    table.setSharedStyle(makeRowStyle(1), RowIndex(2));
    EXPECT_EQ(at(3, 0), Table(table).changeSize(0, 0));
    table.setMergeProps(RowIndex(3), ColumnIndex(3), 2, 1);
    EXPECT_EQ(at(6, 5), Table(table).changeSize(0, 0));
    table.setPivotTable(RowIndex(0), ColumnIndex(0), makePivot(7, 7));
    EXPECT_EQ(at(7, 7), Table(table).changeSize(0, 0));
    table.setFilterInfo(TableFilterInfo(makeRange(0, 0, 8, 9)));
    EXPECT_EQ(at(8, 9), Table(table).changeSize(0, 0));
}

TEST(Table, StopsShrinkingAtTombstonesAndInsertedLines)
{
    Table table(5, 5);
    table.replaceRowWithTombstone(Place(3));
    table.insertColumn(makeColumn(table.makeFreshColumnID().get()), Place(4));
    EXPECT_EQ(at(3, 5), table.changeSize(0, 0));
}

TEST(Table, RegrowsWhatItShrank)
{
    Table table(10, 10);
    table.replaceRowWithTombstone(Place(2));
    const Table before = table;
    EXPECT_EQ(at(4, 3), table.changeSize(4, 3));
    EXPECT_EQ(at(9, 10), table.changeSize(9, 10));
    EXPECT_TRUE(table == before);
}

TEST(Table, KeepsTheFilterWhereItIs)
{
    Table table(10, 10);
    table.setFilterInfo(TableFilterInfo(makeRange(2, 2, 4, 4)));
    table.insertRow(makeRow(70), Place(0));
    table.replaceColWithTombstone(Place(0));
    EXPECT_EQ(makeRange(2, 2, 4, 4), table.getFilterInfo()->getFilterRange());
}

TEST(Table, HasADefaultStyle)
{
    Table table;
    EXPECT_EQ(nullptr, table.getStyle().getTableProps());
    table.getSharedStyle() = makeTableStyle();
    EXPECT_NE(nullptr, table.getStyle().getTableProps());
}

TEST(Table, IsUnequalOnceAnyPartDiffers)
{
    const Table original = makeTable("ab/cd/");
    const std::vector<std::pair<const char*, void (*)(Table&)>> changes{
        {"identity", [](Table& table) { table = Table(2, 2); }},
        {"name", [](Table& table) { table.setName("x"); }},
        {"style", [](Table& table) { table.getSharedStyle() = makeTableStyle(); }},
        {"filter", [](Table& table) { table.setFilterInfo(TableFilterInfo()); }},
        {"header", [](Table& table) { table.setHeaderRowsCols(HeaderRowsCols(1, 0)); }},
        {"settings", [](Table& table) { table.getTableSettings()._showZeroValue = false; }},
        {"formats", [](Table& table)
         { table.getConditionalFormats().getElements().push_back(std::make_unique<ConditionalFormat>()); }},
        {"frames", [](Table& table) { table.getFrames().getElements().push_back(std::make_unique<Frame>()); }},
        {"row style", [](Table& table) { table.setSharedStyle(makeRowStyle(1), RowIndex(0)); }},
        {"column style", [](Table& table) { table.setSharedStyle(makeColumnStyle(1), ColumnIndex(0)); }},
        {"cell", [](Table& table) { setText(table, 0, 0, "x"); }},
        {"no cell", [](Table& table) { table.removeCell(RowIndex(1), ColumnIndex(1)); }},
        {"merge", [](Table& table) { table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 0); }},
        {"pivot table", [](Table& table) { table.setPivotTable(RowIndex(0), ColumnIndex(0), makePivot(1, 1)); }},
        {"rows", [](Table& table) { table.changeSize(3, 2); }},
        {"columns", [](Table& table) { table.changeSize(2, 3); }}};
    for (const auto& [name, change] : changes)
    {
        Table changed = original;
        EXPECT_TRUE(changed == original);
        change(changed);
        EXPECT_FALSE(changed == original) << name;
        EXPECT_FALSE(original == changed) << name;
        EXPECT_TRUE(fromJson<Table>(toJson(changed)) == changed) << name;
    }
}

TEST(Table, IsUnequalByTheIDsOfItsLines)
{
    Table left(2, 2);
    Table right = left;
    left.insertRow(makeRow(70), Place(1));
    right.insertRow(makeRow(71), Place(1));
    EXPECT_FALSE(left == right);
}

TEST(Table, EqualsOneWithEqualStylesInOtherObjects)
{
    Table left(2, 2);
    Table right = left;
    left.setSharedStyle(makeRowStyle(1), RowIndex(0));
    right.setSharedStyle(makeRowStyle(1), RowIndex(0));
    EXPECT_NE(left.getSharedStyle(RowIndex(0)), right.getSharedStyle(RowIndex(0)));
    EXPECT_TRUE(left == right);
}

TEST(Table, EqualsOneWithDefaultStylesInPlaceOfNone)
{
    const Table none(2, 2);
    Table byDefault = none;
    byDefault.getSharedStyle().reset(new SharedStyle<TableStyle>(TableStyle()));
    byDefault.setSharedStyle(SharedRowStyleConstIPtr(new SharedStyle<RowStyle>(RowStyle())), RowIndex(0));
    byDefault.setSharedStyle(SharedColumnStyleConstIPtr(new SharedStyle<ColumnStyle>(ColumnStyle())), ColumnIndex(1));
    EXPECT_TRUE(none == byDefault);
    EXPECT_TRUE(byDefault == none);
    EXPECT_TRUE(fromJson<Table>(toJson(byDefault)) == none);

    Table styled = none;
    styled.setSharedStyle(makeRowStyle(1), RowIndex(0));
    EXPECT_FALSE(byDefault == styled);
    EXPECT_FALSE(styled == byDefault);
    EXPECT_FALSE(styled == none);
    EXPECT_FALSE(none == styled);
}

TEST(Table, DiffersWhereACellStandsInARowOfOneTableOnly)
{
    Table left(2, 2);
    Table right = left;
    left.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    right.getOrCreateCell(RowIndex(1), ColumnIndex(0));
    EXPECT_FALSE(left == right);
    EXPECT_FALSE(right == left);
}

TEST(Table, ReportsFormatsAndFramesThatAreNullOrDoNotFitTheirTombstones)
{
    const auto check = [](auto change)
    {
        Table table(1, 1);
        change(table);
        return checkInvariants(table);
    };
    using Problems = std::vector<std::string>;
    EXPECT_EQ(Problems(), check(
                              [](Table& table)
                              {
                                  table.getFrames().getElements().push_back(std::make_unique<Frame>());
                                  table.getFrames().getTombstones().replaceWithTombstone(Place(1));
                              }));
    EXPECT_EQ(Problems{"5: Frame 0 of a table is null."},
              check([](Table& table) { table.getFrames().getElements().push_back(nullptr); }));
    EXPECT_EQ(Problems{"5: Frames: The last tombstone stands behind 2 live slots, but there are 0."},
              check([](Table& table) { table.getFrames().getTombstones().replaceWithTombstone(Place(2)); }));
    EXPECT_EQ(Problems{"5: Conditional format 0 of a table is null."},
              check([](Table& table) { table.getConditionalFormats().getElements().push_back(nullptr); }));
    EXPECT_EQ(
        Problems{"5: Conditional formats: The last tombstone stands behind 1 live slots, but there are 0."},
        check([](Table& table) { table.getConditionalFormats().getTombstones().replaceWithTombstone(Place(1)); }));
}

TEST(Table, CopiesAreIndependent)
{
    Table original = makeTable("ab/cd/");
    original.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 0);
    original.getFrames().getElements().push_back(std::make_unique<Frame>());
    Table copy = original;
    setText(copy, 1, 1, "x");
    copy.setMergeProps(RowIndex(0), ColumnIndex(0), 0, 0);
    copy.removeRow(Place(0));
    copy.getFrames().getElements().front()->setDescription("x");
    EXPECT_EQ("ab/cd/", draw(original));
    EXPECT_TRUE(original.getMergedCellRoot(RowIndex(1), ColumnIndex(0)) == at(0, 0));
    EXPECT_EQ("", original.getFrames().getElements().front()->getDescription());
    original = copy;
    EXPECT_TRUE(original == copy);
    Table moved = std::move(copy);
    EXPECT_TRUE(moved == original);
    moved = Table();
    EXPECT_EQ(LiveIndex(0), moved.getLiveRowsCount());
}

TEST(Table, AssertsWhenUsedAfterItWasMovedFrom)
{
    Table table(2, 2);
    const Table moved = std::move(table);
    EXPECT_ASSERTION(table.getLiveRowsCount(), "plainPtr");
    table = moved;
    EXPECT_TRUE(table == moved);
}

TEST(Table, ComparesAndClonesAsABlock)
{
    const Table table = makeTable("ab/");
    std::unique_ptr<Block> clone;
    table.cloneTo(clone);
    EXPECT_EQ(BlockKind::Table, clone->getKind());
    EXPECT_TRUE(*clone == static_cast<const Block&>(table));
    setText(static_cast<Table&>(*clone), 0, 0, "x");
    EXPECT_FALSE(*clone == static_cast<const Block&>(table));
}

TEST(Table, WalksOnlyCellsInsideTheTable)
{
    const Table table = makeTable("ab/c-/");
    auto [cell, end] = table.getRangeIterators(makeRange(0, 0, 100, 100));
    std::string texts;
    for (; cell != end; ++cell)
    {
        texts += getText(**cell);
    }
    EXPECT_EQ("abc", texts);
    auto [first, last] = table.getRangeIterators(makeRange(5, 0, 6, 1));
    EXPECT_TRUE(first == last);
    EXPECT_EQ(nullptr, *last);
    EXPECT_ASSERTION(++last, "_slot");
    auto [column, columnEnd] = table.getRangeIterators(makeRange(0, 9, 2, 10));
    EXPECT_TRUE(column == columnEnd);
}

TEST(Table, WalksEveryPositionOfARange)
{
    const Table table = makeTable("a-/-b/");
    auto [position, end] = table.getRangeLogicalIterators(makeRange(0, 0, 3, 2));
    std::string texts;
    for (; position != end; ++position)
    {
        texts += *position ? getText(**position)
                           : std::to_string(position.getRowIndex().get()) + "," +
                                 std::to_string(position.getColIndex().get()) + " ";
    }
    EXPECT_EQ("a0,1 1,0 b2,0 2,1 ", texts);
}

TEST(Table, HoldsAFreshSheetInBytes)
{
    const Table sheet(1048576, 16384);
    EXPECT_LT(sheet.getMemoryUsage(), 2048u);
    const Table huge(1UL << 60, 1UL << 60);
    EXPECT_LT(huge.getMemoryUsage(), 2048u);
    EXPECT_EQ(nullptr, huge.getCell(RowIndex(1UL << 59), ColumnIndex(1UL << 59)));
}

TEST(Table, CellsAreNotAssignedToAsAWhole)
{
    EXPECT_FALSE((std::is_assignable_v<Cell&, const Cell&>));
    EXPECT_FALSE((std::is_assignable_v<Cell&, Cell>));
    EXPECT_TRUE(std::is_copy_constructible_v<Cell>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Cell>);
}

} // namespace Zem::DOM::Tests

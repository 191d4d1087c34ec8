// Does the cost of inserting a row depend on the rows and cells below it? And what does an empty sheet hold?

#include "DOM_Table.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <string>

namespace
{

using namespace Zem;
using namespace Zem::DOM;
using Place = CollaborationUtils::IndexIncludingTombstones;

void require(bool isRight, const char* what)
{
    if (!isRight)
    {
        std::cerr << "Wrong answer: " << what << '\n';
        std::exit(1);
    }
}

/// A table of ten columns, with cells spread evenly over the rows.
Table makeTable(unsigned long rowsCount, unsigned long cellsCount)
{
    constexpr unsigned long colsCount = 10;
    Table table(rowsCount, colsCount);
    for (unsigned long cell = 0; cell < cellsCount; ++cell)
    {
        const unsigned long position = cell * (rowsCount * colsCount / cellsCount);
        table.getOrCreateCell(RowIndex(position / colsCount), ColumnIndex(position % colsCount));
    }
    return table;
}

SparseRowData makeRow(unsigned long id)
{
    SparseRowData row;
    row._id = id;
    row._cells.emplace_back(ColumnIndex(3), std::make_unique<Cell>());
    return row;
}

/// A row with one cell comes in above all others, and goes again.
void insertRow(benchmark::State& state)
{
    const auto rowsCount = static_cast<unsigned long>(state.range(0));
    const auto cellsCount = static_cast<unsigned long>(state.range(1));
    Table table = makeTable(rowsCount, cellsCount);
    const Table before = table;
    for (auto _ : state)
    {
        table.insertRow(makeRow(TombstonesWithIDsStorage::firstFreshID), Place(1));
        benchmark::DoNotOptimize(table.removeRow(Place(1)));
    }
    require(table == before, "the table after its row has gone");
    table.insertRow(makeRow(TombstonesWithIDsStorage::firstFreshID), Place(1));
    require(table.getLiveRowsCount().get() == rowsCount + 1, "the rows");
    require(table.getCellsCount() == cellsCount + 1, "the cells");
    require(table.getCell(RowIndex(1), ColumnIndex(3)) != nullptr, "the row's cell");
    require(checkInvariants(table).empty(), "the invariants");
}

/// A sheet into which rows have come one by one, each a run of its own, gets another in its middle.
void insertRowAmongInserted(benchmark::State& state)
{
    const auto insertedCount = static_cast<unsigned long>(state.range(0));
    Table table(1, 10);
    for (unsigned long row = 0; row < insertedCount; ++row)
    {
        table.insertRow(makeRow(table.makeFreshRowID().get()), Place(row * 7919 % (row + 1)));
    }
    const Table before = table;
    const Place place(insertedCount / 2);
    for (auto _ : state)
    {
        table.insertRow(makeRow(TombstonesWithIDsStorage::firstFreshID), place);
        benchmark::DoNotOptimize(table.removeRow(place));
    }
    require(table == before, "the table after its row has gone");
}

void makeEmptySheet(benchmark::State& state)
{
    std::size_t bytes = 0;
    for (auto _ : state)
    {
        const Table sheet(1048576, 16384);
        bytes = sheet.getMemoryUsage();
        require(sheet.getLiveRowsCount().get() == 1048576 && sheet.getLiveColsCount().get() == 16384, "the size");
    }
    require(bytes < 2048, "the bytes of an empty sheet");
    state.counters["bytes"] = static_cast<double>(bytes);
}

} // namespace

BENCHMARK(insertRow)
    ->ArgNames({"rows", "cells"})
    ->Args({100, 1000})
    ->Args({10000, 100000})
    ->Args({100000, 100000})
    ->Args({1000000, 100000})
    ->Args({1000000, 1000});
BENCHMARK(insertRowAmongInserted)->ArgName("inserted")->RangeMultiplier(10)->Range(100, 100000);
BENCHMARK(makeEmptySheet);

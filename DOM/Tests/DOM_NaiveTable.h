#pragma once

/// A table done in the plainest way: every place of every row is there, dead ones too, and every question is answered
/// by looking at all of them. Tests compare the model's table with it.

#include "DOM_Table.h"

#include <boost/optional.hpp>

#include <optional>
#include <string>
#include <vector>

namespace Zem::DOM::Tests
{

struct NaiveCell
{
    std::string _text;
    unsigned long _capturedRows = 0;
    unsigned long _capturedCols = 0;
    boost::optional<Size2D<unsigned>> _pivotSize;
};

struct NaiveLine
{
    unsigned long _id = 0;
    bool _isLive = true;
    /// 0 for a line without style.
    unsigned char _style = 0;
};

/// What a line holds, apart from the table; `_cells` has an entry for each place that crosses it.
struct NaiveLineData
{
    NaiveLine _line;
    std::vector<std::optional<NaiveCell>> _cells;
};

class NaiveTable
{
public:
    using Cell = std::optional<NaiveCell>;

    NaiveTable(unsigned long rowsCount, unsigned long colsCount);

    /// For both: `isRows` chooses between rows and columns. Places include dead ones.
    std::vector<NaiveLine>& getLines(bool isRows)
    {
        return isRows ? _rows : _columns;
    }

    const std::vector<NaiveLine>& getLines(bool isRows) const
    {
        return isRows ? _rows : _columns;
    }

    /// The places of the live lines.
    std::vector<unsigned long> getLivePlaces(bool isRows) const;

    void insertLine(bool isRows, unsigned long place, const NaiveLineData& data);
    void eraseLine(bool isRows, unsigned long place);
    NaiveLineData getLine(bool isRows, unsigned long place) const;
    void setLine(bool isRows, unsigned long place, const NaiveLineData& data);

    /// By live indices.
    Cell& at(unsigned long row, unsigned long column);
    const Cell& at(unsigned long row, unsigned long column) const;

    /// How many live lines must stay when the table shrinks, and which are the ids that growing would bring back.
    unsigned long countAfterShrinking(bool isRows, unsigned long count) const;

    boost::optional<TableRange> getMergedRange(unsigned long row, unsigned long column) const;
    boost::optional<CellIndex> getMergedCellRoot(unsigned long row, unsigned long column) const;
    boost::optional<CellIndex> getPivotRoot(unsigned long row, unsigned long column) const;
    std::vector<TableRange> getMergedRanges() const;
    std::vector<TableRange> getPivotRanges() const;

private:
    std::vector<NaiveLine> _rows;
    std::vector<NaiveLine> _columns;
    /// By place of the row, then of the column.
    std::vector<std::vector<Cell>> _cells;
};

/// Reports every answer of `table` that isn't that of `naive`.
void expectEqual(const Table& table, const NaiveTable& naive);

// From the naive form to the model's.

Cell makeCell(const std::string& text);
std::string getText(const Cell& cell);
SharedRowStyleConstIPtr makeRowStyle(unsigned char number);
SharedColumnStyleConstIPtr makeColumnStyle(unsigned char number);

} // namespace Zem::DOM::Tests

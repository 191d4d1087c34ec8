#include "DOM_TableGrid.h"

#include "Util_Assert.h"
#include "Util_DeepComparison.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace Zem::DOM
{

namespace
{

constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();

template<class Axis>
CellIndex makeCellIndex(typename Axis::Index index, typename Axis::Crossing::Index crossing)
{
    if constexpr (std::is_same_v<Axis, RowAxis>)
    {
        return CellIndex(index, crossing);
    }
    else
    {
        return CellIndex(crossing, index);
    }
}

/// The first line of a range, and the end of its lines.
template<class Axis>
std::pair<typename Axis::Index, typename Axis::Index> getLinesOf(const TableRange& range)
{
    if constexpr (std::is_same_v<Axis, RowAxis>)
    {
        return {range._beginRow, range._endRow};
    }
    else
    {
        return {range._beginColumn, range._endColumn};
    }
}

/// The lines from `begin` to `end`, with all lines that cross them.
template<class Axis>
TableRange makeStrip(unsigned long begin, unsigned long end)
{
    if constexpr (std::is_same_v<Axis, RowAxis>)
    {
        return TableRange(RowIndex(begin), ColumnIndex(0), RowIndex(end), ColumnIndex(highest));
    }
    else
    {
        return TableRange(RowIndex(0), ColumnIndex(begin), RowIndex(highest), ColumnIndex(end));
    }
}

bool isMerged(const Cell& cell)
{
    return cell.getMergeProps().isMerge();
}

} // namespace

TableGrid::TableGrid(TombstonesWithIDsStorage rows, TombstonesWithIDsStorage columns)
    : _lines(std::move(rows), std::move(columns))
    , _merges(*this)
    , _pivotTables(*this)
{
}

TableGrid::TableGrid(const TableGrid& other, LinesOnly)
    : _lines(other._lines)
    , _merges(*this)
    , _pivotTables(*this)
{
}

// Another constructor has made a whole grid before the first cell comes in: should there be no memory for all of them,
// the destructor frees those that there are.
TableGrid::TableGrid(const TableGrid& other)
    : TableGrid(other, LinesOnly())
{
    for (const Line<RowAxis>& otherRow : other.getLines<RowAxis>().getOrderedLines())
    {
        Line<RowAxis>& row = *getLines<RowAxis>().findLineByID(otherRow._id);
        for (const CellSlot& otherSlot : otherRow._cells)
        {
            auto slot = std::make_unique<CellSlot>(otherSlot._cell);
            appendTo(*slot, row);
            appendTo(*slot, *getLines<ColumnAxis>().findLineByID(otherSlot.getLine<ColumnAxis>()._id));
            indexRectangles(*slot.release());
            ++_cellsCount;
        }
    }
}

TableGrid::~TableGrid()
{
    for (Line<RowAxis>& row : getLines<RowAxis>().getOrderedLines())
    {
        row._cells.clear_and_dispose(std::default_delete<CellSlot>());
    }
}

template<class Axis>
void TableGrid::appendTo(CellSlot& slot, Line<Axis>& line)
{
    std::get<Line<Axis>*>(slot._lines) = &line;
    line._cells.push_back(slot);
}

template<class Axis>
void TableGrid::link(CellSlot& slot, Line<Axis>& line, typename Axis::Crossing::Index crossing)
{
    using Order = typename CrossingLines<Axis>::CellsByIndex;
    std::get<Line<Axis>*>(slot._lines) = &line;
    typename LineCells<Axis>::insert_commit_data commitData;
    const bool isFree =
        line._cells.insert_unique_check(crossing, Order{getLines<typename Axis::Crossing>()}, commitData).second;
    ZEM_ASSERT(isFree);
    line._cells.insert_unique_commit(slot, commitData);
}

template<class Axis>
const CellSlot* TableGrid::findInLine(const Line<Axis>& line, typename Axis::Crossing::Index crossing) const
{
    using Order = typename CrossingLines<Axis>::CellsByIndex;
    const auto slot = line._cells.lower_bound(crossing, Order{getLines<typename Axis::Crossing>()});
    return slot == line._cells.end() ? nullptr : &*slot;
}

template<class Axis>
const CellSlot* TableGrid::findNextInLine(const CellSlot& slot)
{
    const LineCells<Axis>& cells = slot.getLine<Axis>()._cells;
    const auto next = std::next(cells.iterator_to(slot));
    return next == cells.end() ? nullptr : &*next;
}

CellSlot* TableGrid::findSlot(const CellIndex& index) const
{
    const Line<RowAxis>* const row = getLines<RowAxis>().findLine(index.rowIndex);
    const Line<ColumnAxis>* const column = getLines<ColumnAxis>().findLine(index.colIndex);
    if (!row || !column)
    {
        return nullptr;
    }
    const CellSlot* const slot = findInLine(*row, index.colIndex);
    return slot && &slot->getLine<ColumnAxis>() == column ? const_cast<CellSlot*>(slot) : nullptr;
}

CellSlot& TableGrid::getOrCreateSlot(const CellIndex& index)
{
    const bool isInside =
        getLines<RowAxis>().contains(index.rowIndex) && getLines<ColumnAxis>().contains(index.colIndex);
    ZEM_ASSERT(isInside);
    if (CellSlot* const slot = findSlot(index))
    {
        return *slot;
    }
    insertCell(index, Cell());
    return *findSlot(index);
}

void TableGrid::insertCell(const CellIndex& index, Cell cell)
{
    auto slot = std::make_unique<CellSlot>(std::move(cell));
    Line<RowAxis>& row = getLines<RowAxis>().getOrCreateLine(index.rowIndex);
    Line<ColumnAxis>& column = getLines<ColumnAxis>().getOrCreateLine(index.colIndex);
    link(*slot, row, index.colIndex);
    link(*slot, column, index.rowIndex);
    ++_cellsCount;
    indexRectangles(*slot.release());
}

void TableGrid::removeCell(const CellIndex& index)
{
    const std::unique_ptr<CellSlot> slot(findSlot(index));
    if (!slot)
    {
        return;
    }
    unindexRectangles(*slot);
    Line<RowAxis>& row = slot->getLine<RowAxis>();
    Line<ColumnAxis>& column = slot->getLine<ColumnAxis>();
    row._cells.erase(row._cells.iterator_to(*slot));
    column._cells.erase(column._cells.iterator_to(*slot));
    getLines<RowAxis>().dropIfUnused(row);
    getLines<ColumnAxis>().dropIfUnused(column);
    --_cellsCount;
}

void TableGrid::indexRectangles(const CellSlot& slot)
{
    if (isMerged(slot._cell))
    {
        _merges.insert(slot, getExtent(slot._cell.getMergeProps()));
    }
    if (slot._cell._pivotTable)
    {
        _pivotTables.insert(slot, getExtent(*slot._cell._pivotTable));
    }
}

void TableGrid::unindexRectangles(const CellSlot& slot)
{
    if (isMerged(slot._cell))
    {
        _merges.erase(slot, getExtent(slot._cell.getMergeProps()));
    }
    if (slot._cell._pivotTable)
    {
        _pivotTables.erase(slot, getExtent(*slot._cell._pivotTable));
    }
}

void TableGrid::setMergeProps(CellSlot& root, const CellMergeProps& props)
{
    unindexRectangles(root);
    root._cell._mergeProps = props;
    indexRectangles(root);
}

void TableGrid::setPivotTable(CellSlot& root, std::unique_ptr<PivotTable> pivotTable)
{
    unindexRectangles(root);
    root._cell._pivotTable = std::move(pivotTable);
    indexRectangles(root);
}

/// The cells of a line that is to come in must fit where it comes in.
template<class Axis>
void TableGrid::checkCells(const SparseData<typename Axis::Style>& data) const
{
    using CrossingIndex = typename Axis::Crossing::Index;
    const CrossingIndex crossingCount(getLines<typename Axis::Crossing>().getIDs().getLiveCount().get());
    std::vector<CrossingIndex> indices;
    indices.reserve(data._cells.size());
    for (const auto& entry : data._cells)
    {
        const CrossingIndex crossingIndex = entry.first;
        ZEM_ASSERT(crossingIndex < crossingCount);
        indices.push_back(crossingIndex);
    }
    std::sort(indices.begin(), indices.end());
    const bool areCellsApart = std::adjacent_find(indices.begin(), indices.end()) == indices.end();
    ZEM_ASSERT(areCellsApart);
}

template<class Axis>
void TableGrid::fillLine(SparseData<typename Axis::Style> data, typename Axis::Index index)
{
    setLineStyle<Axis>(std::move(data._style), index);
    for (auto& entry : data._cells)
    {
        if (entry.second)
        {
            insertCell(makeCellIndex<Axis>(index, entry.first), std::move(*entry.second));
        }
    }
}

template<class Axis>
SparseData<typename Axis::Style> TableGrid::emptyLine(typename Axis::Index index)
{
    using Crossing = typename Axis::Crossing;
    SparseData<typename Axis::Style> data;
    data._id = getLines<Axis>().getID(index);
    Line<Axis>* const line = getLines<Axis>().findLine(index);
    if (!line)
    {
        return data;
    }
    while (!line->_cells.empty())
    {
        const std::unique_ptr<CellSlot> slot(&*line->_cells.begin());
        Line<Crossing>& crossing = slot->template getLine<Crossing>();
        const typename Crossing::Index crossingIndex = getLines<Crossing>().getIndex(crossing);
        unindexRectangles(*slot);
        line->_cells.erase(line->_cells.begin());
        crossing._cells.erase(crossing._cells.iterator_to(*slot));
        getLines<Crossing>().dropIfUnused(crossing);
        data._cells.emplace_back(crossingIndex, std::make_unique<Cell>(std::move(slot->_cell)));
    }
    _cellsCount -= data._cells.size();
    data._style = std::move(line->_style);
    getLines<Axis>().dropIfUnused(*line);
    return data;
}

template<class Axis>
void TableGrid::insertLine(SparseData<typename Axis::Style> data, Place place)
{
    TombstonesWithIDsStorage& ids = getLines<Axis>().getIDs();
    if (ids.findID(data._id))
    {
        throw Table::BadRowColIDException("The id " + std::to_string(data._id) + " of a row or column is taken");
    }
    checkCells<Axis>(data);
    const unsigned long index = ids.insertElement(place, data._id).get();
    fillLine<Axis>(std::move(data), typename Axis::Index(index));
}

template<class Axis>
void TableGrid::restoreLine(SparseData<typename Axis::Style> data, Place place)
{
    TombstonesWithIDsStorage& ids = getLines<Axis>().getIDs();
    const bool isTombstone = place < ids.getAllCount() && !ids.convertIndex(place);
    if (!isTombstone || ids.getID(place) != data._id)
    {
        throw Table::BadRowColIDException("The id " + std::to_string(data._id) +
                                          " of a row or column isn't that of the tombstone at " +
                                          std::to_string(place.get()));
    }
    checkCells<Axis>(data);
    const unsigned long index = ids.restoreElement(place).get();
    fillLine<Axis>(std::move(data), typename Axis::Index(index));
}

template<class Axis>
SparseData<typename Axis::Style> TableGrid::removeLine(Place place)
{
    TombstonesWithIDsStorage& ids = getLines<Axis>().getIDs();
    const bool isLive = place < ids.getAllCount() && ids.convertIndex(place);
    ZEM_ASSERT_MESSAGE(isLive, "isLive(place)");
    auto data = emptyLine<Axis>(typename Axis::Index(ids.convertIndex(place)->get()));
    ids.removeElement(place);
    return data;
}

template<class Axis>
SparseData<typename Axis::Style> TableGrid::replaceLineWithTombstone(Place place)
{
    TombstonesWithIDsStorage& ids = getLines<Axis>().getIDs();
    const bool isLive = place < ids.getAllCount() && ids.convertIndex(place);
    ZEM_ASSERT_MESSAGE(isLive, "isLive(place)");
    auto data = emptyLine<Axis>(typename Axis::Index(ids.convertIndex(place)->get()));
    ids.replaceWithTombstone(place);
    return data;
}

template<class Axis>
const SharedStyleConstIPtr<typename Axis::Style>& TableGrid::getLineStyle(typename Axis::Index index) const
{
    static const SharedStyleConstIPtr<typename Axis::Style> none;
    const bool isInside = getLines<Axis>().contains(index);
    ZEM_ASSERT(isInside);
    const Line<Axis>* const line = getLines<Axis>().findLine(index);
    return line ? line->_style : none;
}

template<class Axis>
void TableGrid::setLineStyle(SharedStyleConstIPtr<typename Axis::Style> style, typename Axis::Index index)
{
    const bool isInside = getLines<Axis>().contains(index);
    ZEM_ASSERT(isInside);
    if (style)
    {
        getLines<Axis>().getOrCreateLine(index)._style = std::move(style);
    }
    else if (Line<Axis>* const line = getLines<Axis>().findLine(index))
    {
        line->_style.reset();
        getLines<Axis>().dropIfUnused(*line);
    }
}

/// How many lines, from the first on, must stay for the last one that holds something.
template<class Axis>
unsigned long TableGrid::countHeldLines() const
{
    const auto& lines = getLines<Axis>().getOrderedLines();
    unsigned long heldCount = lines.empty() ? 0 : getLines<Axis>().getIndex(*lines.rbegin()).get() + 1;
    const auto hold = [&](const RootedRectangle&, const TableRange& covered)
    {
        heldCount = std::max(heldCount, getLinesOf<Axis>(covered).second.get());
        return true;
    };
    const TableRange everything = makeStrip<Axis>(0, highest);
    _merges.visitIntersecting(everything, hold);
    _pivotTables.visitIntersecting(everything, hold);
    return heldCount;
}

template<class Axis>
void TableGrid::changeLinesCount(unsigned long count, unsigned long heldCount)
{
    TombstonesWithIDsStorage& ids = getLines<Axis>().getIDs();
    if (count >= ids.getLiveCount().get())
    {
        ids.grow(count);
        return;
    }
    ids.shrink(std::max({count, heldCount, countHeldLines<Axis>()}));
}

template<class Axis>
bool TableGrid::isPivotTableAcross(typename Axis::Index index) const
{
    if (index.get() == 0)
    {
        return false;
    }
    bool isAcross = false;
    const auto lookBehind = [&](const RootedRectangle&, const TableRange& covered)
    {
        isAcross = index < getLinesOf<Axis>(covered).second;
        return !isAcross;
    };
    _pivotTables.visitIntersecting(makeStrip<Axis>(index.get() - 1, index.get()), lookBehind);
    return isAcross;
}

std::size_t TableGrid::getMemoryUsage() const
{
    return sizeof(TableGrid) + getLines<RowAxis>().getMemoryUsage() + getLines<ColumnAxis>().getMemoryUsage() +
           _cellsCount * sizeof(CellSlot);
}

namespace
{

/// Whether each line of `left` has its style in `right` too. A line that isn't there has none.
template<class Axis>
bool areStylesIn(const TableLines<Axis>& left, const TableLines<Axis>& right)
{
    const SharedStyleConstIPtr<typename Axis::Style> none;
    const auto isIn = [&](const Line<Axis>& line)
    {
        const Line<Axis>* const rightLine = right.findLineByID(line._id);
        return areDeeplyEqual(line._style, rightLine ? rightLine->_style : none);
    };
    return std::all_of(left.getOrderedLines().begin(), left.getOrderedLines().end(), isIn);
}

template<class Axis>
bool areStylesEqual(const TableLines<Axis>& left, const TableLines<Axis>& right)
{
    return areStylesIn(left, right) && areStylesIn(right, left);
}

bool areCellsEqual(const Line<RowAxis>& left, const Line<RowAxis>& right)
{
    const auto isSame = [](const CellSlot& leftSlot, const CellSlot& rightSlot)
    {
        return leftSlot.getLine<ColumnAxis>()._id == rightSlot.getLine<ColumnAxis>()._id &&
               leftSlot._cell == rightSlot._cell;
    };
    return std::equal(left._cells.begin(), left._cells.end(), right._cells.begin(), right._cells.end(), isSame);
}

} // namespace

bool operator==(const TableGrid& left, const TableGrid& right)
{
    const auto& leftRows = left.getLines<RowAxis>();
    const auto& rightRows = right.getLines<RowAxis>();
    const auto& leftColumns = left.getLines<ColumnAxis>();
    const auto& rightColumns = right.getLines<ColumnAxis>();
    // No cell is in the right grid alone, once all of the left one are found there and the counts are equal.
    const auto areCellsInRight = [&](const Line<RowAxis>& row)
    {
        const Line<RowAxis>* const rightRow = rightRows.findLineByID(row._id);
        return rightRow ? areCellsEqual(row, *rightRow) : row._cells.empty();
    };
    return left.getCellsCount() == right.getCellsCount() && leftRows.getIDs() == rightRows.getIDs() &&
           leftColumns.getIDs() == rightColumns.getIDs() && areStylesEqual(leftRows, rightRows) &&
           areStylesEqual(leftColumns, rightColumns) &&
           std::all_of(leftRows.getOrderedLines().begin(), leftRows.getOrderedLines().end(), areCellsInRight);
}

template<class Axis>
void TableGrid::checkLines(std::vector<std::string>& broken) const
{
    const std::string name = std::is_same_v<Axis, RowAxis> ? "row " : "column ";
    const TableLines<Axis>& lines = getLines<Axis>();
    for (const std::string& problem : lines.getIDs().checkInvariants())
    {
        broken.push_back("1: " + name + problem);
    }
    std::size_t linesCount = 0;
    std::size_t cellsCount = 0;
    std::optional<typename Axis::Index> previousIndex;
    for (const Line<Axis>& line : lines.getOrderedLines())
    {
        ++linesCount;
        const auto place = lines.getIDs().findID(line._id);
        if (line.isUnused() || !place || !lines.getIDs().convertIndex(*place) ||
            (previousIndex && !(*previousIndex < lines.getIndex(line))))
        {
            broken.push_back("2: " + name + std::to_string(line._id));
            return;
        }
        previousIndex = lines.getIndex(line);
        std::optional<typename Axis::Crossing::Index> previousCrossing;
        for (const CellSlot& slot : line._cells)
        {
            ++cellsCount;
            const auto crossing = getLines<typename Axis::Crossing>().getIndex(slot.getLine<typename Axis::Crossing>());
            if (&slot.getLine<Axis>() != &line || (previousCrossing && !(*previousCrossing < crossing)) ||
                findSlot(makeCellIndex<Axis>(*previousIndex, crossing)) != &slot)
            {
                broken.push_back("3: a cell of " + name + std::to_string(line._id));
            }
            previousCrossing = crossing;
        }
    }
    if (linesCount != lines.getLinesCount())
    {
        broken.push_back("2: the number of lines, " + name);
    }
    if (cellsCount != _cellsCount)
    {
        broken.push_back("3: the number of cells by " + name);
    }
}

void TableGrid::checkRectangles(std::vector<std::string>& broken) const
{
    std::size_t mergesCount = 0;
    std::size_t pivotTablesCount = 0;
    for (const Line<RowAxis>& row : getLines<RowAxis>().getOrderedLines())
    {
        for (const CellSlot& slot : row._cells)
        {
            const bool hasPivotTable = static_cast<bool>(slot._cell._pivotTable);
            mergesCount += isMerged(slot._cell) ? 1 : 0;
            pivotTablesCount += hasPivotTable ? 1 : 0;
            if ((isMerged(slot._cell) && !_merges.find(slot, getExtent(slot._cell.getMergeProps()))) ||
                (hasPivotTable && !_pivotTables.find(slot, getExtent(*slot._cell._pivotTable))))
            {
                broken.push_back("4: a cell of row " + std::to_string(row._id));
            }
        }
    }
    if (mergesCount != _merges.size() || pivotTablesCount != _pivotTables.size())
    {
        broken.push_back("4: the number of merges or pivot tables");
    }
}

std::vector<std::string> TableGrid::checkInvariants() const
{
    std::vector<std::string> broken;
    checkLines<RowAxis>(broken);
    checkLines<ColumnAxis>(broken);
    if (broken.empty())
    {
        checkRectangles(broken);
    }
    return broken;
}

#define ZEM_INSTANTIATE_LINES(Axis)                                                                                    \
    template void TableGrid::insertLine<Axis>(SparseData<Axis::Style>, Place);                                         \
    template void TableGrid::restoreLine<Axis>(SparseData<Axis::Style>, Place);                                        \
    template SparseData<Axis::Style> TableGrid::removeLine<Axis>(Place);                                               \
    template SparseData<Axis::Style> TableGrid::replaceLineWithTombstone<Axis>(Place);                                 \
    template const SharedStyleConstIPtr<Axis::Style>& TableGrid::getLineStyle<Axis>(Axis::Index) const;                \
    template void TableGrid::setLineStyle<Axis>(SharedStyleConstIPtr<Axis::Style>, Axis::Index);                       \
    template void TableGrid::changeLinesCount<Axis>(unsigned long, unsigned long);                                     \
    template bool TableGrid::isPivotTableAcross<Axis>(Axis::Index) const;                                              \
    template const CellSlot* TableGrid::findInLine<Axis>(const Line<Axis>&, Axis::Crossing::Index) const;              \
    template const CellSlot* TableGrid::findNextInLine<Axis>(const CellSlot&);

ZEM_INSTANTIATE_LINES(RowAxis)
ZEM_INSTANTIATE_LINES(ColumnAxis)

} // namespace Zem::DOM

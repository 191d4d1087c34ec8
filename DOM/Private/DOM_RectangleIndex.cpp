#include "DOM_RectangleIndex.h"
#include "DOM_TableGrid.h"

#include "Util_Assert.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace Zem::DOM
{

namespace
{

constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();

/// The greatest number of `digits` binary digits.
unsigned long getGreatest(int digits)
{
    return digits == 0 ? 0 : highest >> (std::numeric_limits<unsigned long>::digits - digits);
}

/// `value` less `amount`, but not below 0.
template<class Index>
Index subtract(Index value, unsigned long amount)
{
    return Index(value.get() - std::min(value.get(), amount));
}

/// Where lines end of which the first is `begin`, and `extent` follow on it; not more than can be counted.
template<class Index>
Index getEnd(Index begin, unsigned long extent)
{
    return Index(begin.get() + 1 + std::min(extent, highest - begin.get() - 1));
}

} // namespace

RectangleExtent getExtent(const CellMergeProps& props)
{
    return {props.getCapturedRowsCount(), props.getCapturedColsCount()};
}

RectangleExtent getExtent(const PivotTable& pivotTable)
{
    const Size2D<unsigned>& size = pivotTable.getSize();
    return {std::max(size._height, 1U) - 1, std::max(size._width, 1U) - 1};
}

bool RectangleIndex::ByRoot::operator()(const RootedRectangle& left, const RootedRectangle& right) const
{
    return left._root != right._root && _grid->getCellIndex(*left._root) < _grid->getCellIndex(*right._root);
}

bool RectangleIndex::ByRoot::operator()(const RootedRectangle& left, const CellIndex& right) const
{
    return _grid->getCellIndex(*left._root) < right;
}

bool RectangleIndex::ByRoot::operator()(const CellIndex& left, const RootedRectangle& right) const
{
    return left < _grid->getCellIndex(*right._root);
}

RectangleIndex::Magnitudes RectangleIndex::getMagnitudes(const RectangleExtent& extent)
{
    return {static_cast<int>(std::bit_width(extent._rows)), static_cast<int>(std::bit_width(extent._columns))};
}

void RectangleIndex::insert(const CellSlot& root, const RectangleExtent& extent)
{
    Class& rectangles = _classes.try_emplace(getMagnitudes(extent), ByRoot{&_grid}).first->second;
    const bool isFree = rectangles.insert(RootedRectangle{&root, extent, TableRange()}).second;
    ZEM_ASSERT(isFree);
    ++_size;
}

void RectangleIndex::erase(const CellSlot& root, const RectangleExtent& extent)
{
    const auto entry = _classes.find(getMagnitudes(extent));
    ZEM_ASSERT(entry != _classes.end());
    const auto rectangle = entry->second.find(_grid.getCellIndex(root));
    ZEM_ASSERT(rectangle != entry->second.end());
    entry->second.erase(rectangle);
    if (entry->second.empty())
    {
        _classes.erase(entry);
    }
    --_size;
}

const RootedRectangle* RectangleIndex::find(const CellSlot& root, const RectangleExtent& extent) const
{
    const auto entry = _classes.find(getMagnitudes(extent));
    if (entry == _classes.end())
    {
        return nullptr;
    }
    const auto rectangle = entry->second.find(_grid.getCellIndex(root));
    const bool isFound = rectangle != entry->second.end() && rectangle->_root == &root && rectangle->_extent == extent;
    return isFound ? &*rectangle : nullptr;
}

TableRange RectangleIndex::getRange(const RootedRectangle& rectangle) const
{
    const CellIndex root = _grid.getCellIndex(*rectangle._root);
    return TableRange(root.rowIndex, root.colIndex, getEnd(root.rowIndex, rectangle._extent._rows),
                      getEnd(root.colIndex, rectangle._extent._columns));
}

const RootedRectangle* RectangleIndex::findAt(const CellIndex& position) const
{
    if (position.rowIndex.get() == highest || position.colIndex.get() == highest)
    {
        return nullptr;
    }
    const TableRange range(position.rowIndex, position.colIndex, position.rowIndex + 1, position.colIndex + 1);
    const RootedRectangle* first = nullptr;
    CellIndex firstRoot;
    const auto takeFirst = [&](const RootedRectangle& rectangle, const TableRange& covered)
    {
        const CellIndex root(covered._beginRow, covered._beginColumn);
        if (!first || root < firstRoot)
        {
            first = &rectangle;
            firstRoot = root;
        }
        return false;
    };
    for (const auto& [magnitudes, rectangles] : _classes)
    {
        visitIntersecting(rectangles, magnitudes, range, takeFirst);
    }
    return first;
}

void RectangleIndex::visitIntersecting(const TableRange& range,
                                       CallableRef<bool(const RootedRectangle&, const TableRange&)> visitor) const
{
    for (const auto& [magnitudes, rectangles] : _classes)
    {
        if (!visitIntersecting(rectangles, magnitudes, range, visitor))
        {
            return;
        }
    }
}

bool RectangleIndex::visitIntersecting(const Class& rectangles, const Magnitudes& magnitudes, const TableRange& range,
                                       CallableRef<bool(const RootedRectangle&, const TableRange&)> visitor) const
{
    const CellIndex nearest(subtract(range._beginRow, getGreatest(magnitudes.first)),
                            subtract(range._beginColumn, getGreatest(magnitudes.second)));
    auto rectangle = rectangles.lower_bound(nearest);
    while (rectangle != rectangles.end())
    {
        const TableRange covered = getRange(*rectangle);
        if (covered._beginRow >= range._endRow)
        {
            return true;
        }
        if (covered._beginColumn >= range._endColumn)
        {
            rectangle = rectangles.lower_bound(CellIndex(covered._beginRow + 1, nearest.colIndex));
            continue;
        }
        if (covered._beginColumn < nearest.colIndex)
        {
            rectangle = rectangles.lower_bound(CellIndex(covered._beginRow, nearest.colIndex));
            continue;
        }
        if (covered.intersects(range) && !visitor(*rectangle, covered))
        {
            return false;
        }
        ++rectangle;
    }
    return true;
}

} // namespace Zem::DOM

#pragma once

/// The merges of a table, or its pivot tables: rectangles that are given by a root cell, and how far they reach beyond
/// it.
///
/// Rectangles are kept in classes by the magnitude of their height and of their width, and in a class in the order of
/// their roots. Who looks for the rectangles at a position needs, of each class, only the roots that are near enough
/// above and to the left. As few rectangles of like size fit there side by side, this takes a few searches for each row
/// that has roots near enough; and there are as many classes as magnitudes occur.

#include "DOM_TableLines.h"

#include "Util_CallableRef.h"
#include "Util_TableIndices.h"

#include <cstddef>
#include <map>
#include <set>
#include <utility>

namespace Zem::DOM
{

class TableGrid;

/// How many rows below and columns to the right of its root a rectangle reaches.
struct RectangleExtent
{
    unsigned long _rows = 0;
    unsigned long _columns = 0;

    friend bool operator==(const RectangleExtent&, const RectangleExtent&) = default;
};

RectangleExtent getExtent(const CellMergeProps& props);

/// A pivot table covers its root, whatever its size says.
RectangleExtent getExtent(const PivotTable& pivotTable);

/// A rectangle in its index.
struct RootedRectangle
{
    const CellSlot* _root = nullptr;
    RectangleExtent _extent;
    /// Where the rectangle lay when somebody last asked for a pointer to this.
    mutable TableRange _range;
};

class RectangleIndex
{
public:
    explicit RectangleIndex(const TableGrid& grid)
        : _grid(grid)
    {
    }

    RectangleIndex(const RectangleIndex&) = delete;
    RectangleIndex& operator=(const RectangleIndex&) = delete;

    void insert(const CellSlot& root, const RectangleExtent& extent);

    /// Requires: it was inserted with the same extent.
    void erase(const CellSlot& root, const RectangleExtent& extent);

    /// The rectangle that covers a position, its root included; where several do, the one whose root comes first by
    /// rows. Null if none does.
    const RootedRectangle* findAt(const CellIndex& position) const;

    /// Calls `visitor` with each rectangle that has a position in `range`, and the range that it covers, as long as it
    /// returns true. Within a class they come by rows of their roots.
    void visitIntersecting(const TableRange& range,
                           CallableRef<bool(const RootedRectangle&, const TableRange&)> visitor) const;

    /// What a rectangle covers now; rectangles that reach further than can be counted end there.
    TableRange getRange(const RootedRectangle& rectangle) const;

    std::size_t size() const
    {
        return _size;
    }

    /// The rectangle of a root; null if it has none of this extent.
    const RootedRectangle* find(const CellSlot& root, const RectangleExtent& extent) const;

private:
    /// Orders by the roots' positions.
    struct ByRoot
    {
        using is_transparent = void;

        bool operator()(const RootedRectangle& left, const RootedRectangle& right) const;
        bool operator()(const RootedRectangle& left, const CellIndex& right) const;
        bool operator()(const CellIndex& left, const RootedRectangle& right) const;

        const TableGrid* _grid;
    };

    using Class = std::set<RootedRectangle, ByRoot>;
    /// The magnitude of the extent in rows, then in columns: the number of its binary digits.
    using Magnitudes = std::pair<int, int>;

    static Magnitudes getMagnitudes(const RectangleExtent& extent);

    /// The same for the rectangles of one class. Returns what `visitor` last did.
    bool visitIntersecting(const Class& rectangles, const Magnitudes& magnitudes, const TableRange& range,
                           CallableRef<bool(const RootedRectangle&, const TableRange&)> visitor) const;

    const TableGrid& _grid;
    std::map<Magnitudes, Class> _classes;
    std::size_t _size = 0;
};

} // namespace Zem::DOM

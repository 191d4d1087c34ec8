#pragma once

/// Live row and column numbers of a table, cells' places and rectangles.

#include "Util_Assert.h"
#include "Util_Fields.h"
#include "Util_TaggedValue.h"
#include "Util_TypeList.h"

#include <compare>

namespace Zem
{

struct RowOrColumnTag
{
};

using RowTag = TypeUtils::ValueTag<RowOrColumnTag, 0>;
using ColumnTag = TypeUtils::ValueTag<RowOrColumnTag, 1>;

/// The number of a live row, or of a live column: tombstones don't count.
using RowIndex = TaggedValue<unsigned long, RowTag>;
using ColumnIndex = TaggedValue<unsigned long, ColumnTag>;

/// The place of a cell: row, then column.
struct CellIndex
{
    CellIndex() = default;

    CellIndex(RowIndex row, ColumnIndex column)
        : rowIndex(row)
        , colIndex(column)
    {
    }

    friend bool operator==(const CellIndex&, const CellIndex&) = default;
    friend auto operator<=>(const CellIndex&, const CellIndex&) = default;

    template<class Archive>
    void serialize(Archive& archive);

    RowIndex rowIndex;
    ColumnIndex colIndex;
};

/// A half-open rectangle of a table; it is never empty.
struct TableRange
{
    /// Fails: "_beginRow < _endRow", "_beginColumn < _endColumn".
    TableRange(RowIndex beginRow, ColumnIndex beginColumn, RowIndex endRow, ColumnIndex endColumn)
        : _beginRow(beginRow)
        , _beginColumn(beginColumn)
        , _endRow(endRow)
        , _endColumn(endColumn)
    {
        ZEM_ASSERT(_beginRow < _endRow);
        ZEM_ASSERT(_beginColumn < _endColumn);
    }

    /// The rectangle of one cell, the first.
    TableRange()
        : TableRange(RowIndex(0), ColumnIndex(0), RowIndex(1), ColumnIndex(1))
    {
    }

    bool contains(const CellIndex& cell) const
    {
        return _beginRow <= cell.rowIndex && cell.rowIndex < _endRow && _beginColumn <= cell.colIndex &&
               cell.colIndex < _endColumn;
    }

    bool contains(const TableRange& other) const
    {
        return _beginRow <= other._beginRow && other._endRow <= _endRow && _beginColumn <= other._beginColumn &&
               other._endColumn <= _endColumn;
    }

    bool intersects(const TableRange& other) const
    {
        return _beginRow < other._endRow && other._beginRow < _endRow && _beginColumn < other._endColumn &&
               other._beginColumn < _endColumn;
    }

    friend bool operator==(const TableRange&, const TableRange&) = default;

    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

    RowIndex _beginRow;
    ColumnIndex _beginColumn;
    RowIndex _endRow;
    ColumnIndex _endColumn;
};

/// A size: width first, then height.
template<class T>
struct Size2D
{
    T _width{};
    T _height{};

    friend bool operator==(const Size2D&, const Size2D&) = default;

    template<class Archive>
    void serialize(Archive& archive);

    static constexpr auto fields()
    {
        return std::make_tuple(field("_width", &Size2D::_width), field("_height", &Size2D::_height));
    }
};

} // namespace Zem

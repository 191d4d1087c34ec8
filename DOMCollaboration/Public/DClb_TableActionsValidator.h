#pragma once

#include "Util_Export.h"
#include "Util_TableIndices.h"

namespace Zem::DOM
{

class Cell;
class Table;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Whether a table may take a structural change at a place, given what can't be split: array formulas and pivot tables.
/// Indices are live. The functions read the cells of the range that is asked about, and stop at the first obstacle.
namespace TableActionsValidator
{

/// Whether a row, or column, may be inserted in front of that of `cell`: not where it would cut an array formula.
ZEM_EXPORT bool canInsertRowsOrColumns(const DOM::Cell& cell, bool isColumns);

/// Whether a row may be inserted in front of `row`.
/// Fails: "_beginColumn < _endColumn" for a table without live columns.
ZEM_EXPORT bool canInsertRows(const DOM::Table& table, RowIndex row);

/// Fails: "_beginRow < _endRow" for a table without live rows.
ZEM_EXPORT bool canInsertColumns(const DOM::Table& table, ColumnIndex column);

/// Whether the rows can go: each array formula that they touch lies wholly inside them, and no pivot table stands
/// there. Fails: "_beginRow < _endRow" when `count` is 0, "_beginColumn < _endColumn" for a table without live columns.
ZEM_EXPORT bool canRemoveRows(const DOM::Table& table, RowIndex firstRow, unsigned long count);

/// Fails: "_beginColumn < _endColumn" when `count` is 0, "_beginRow < _endRow" for a table without live rows.
ZEM_EXPORT bool canRemoveColumns(const DOM::Table& table, ColumnIndex firstColumn, unsigned long count);

} // namespace TableActionsValidator

} // namespace Zem::DOMCollaboration

#pragma once

#include "DOM_Cell.h"
#include "DOM_RowColumnStyle.h"

#include "Util_TableIndices.h"

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::DOM
{

/// The index of the lines that cross a line of the style: rows are crossed by columns, columns by rows.
template<class Style>
using CrossingIndex = std::conditional_t<std::is_same_v<Style, RowStyle>, ColumnIndex, RowIndex>;

/// One row or column as it leaves or enters a table. Only the cells that exist stand in it, by ascending crossing index
/// where a table gave it; a null cell stands for none.
template<class Style>
struct SparseData
{
    using Cells = std::vector<std::pair<CrossingIndex<Style>, std::unique_ptr<Cell>>>;

    /// The live crossing index of each cell, and the cell.
    Cells _cells;
    SharedStyleConstIPtr<Style> _style;
    /// The identity of the row or column within its table.
    unsigned long _id = 0;
};

using SparseRowData = SparseData<RowStyle>;
using SparseColumnData = SparseData<ColumnStyle>;

} // namespace Zem::DOM

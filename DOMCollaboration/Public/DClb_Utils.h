#pragma once

/// Helpers for tables, texts and names that clients share with the executors. Indices are live, except where stated.

#include "CE_RowOrColumn.h"
#include "DOM_Block.h"
#include "DOM_NativeNodeAddress.h"
#include "DOM_NumberingRef.h"
#include "DOM_SparseData.h"

#include "Util_Export.h"
#include "Util_ReadonlyVector.h"
#include "Util_SharedConstPtr.h"
#include "Util_TableIndices.h"

#include <boost/container/map.hpp>
#include <boost/optional.hpp>

#include <string>
#include <vector>

namespace Zem::DOM
{

class Cell;
class Table;
class TextWithTombstones;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

class DocumentAdapterWithNodeAdapter;

namespace Utils
{

/// The roots of merges that were found, and where they stand. The order tells nothing about their places.
using MergedCells = boost::container::map<const DOM::Cell*, CellIndex>;

/// The text of a detached text, and the main text of any other document.
ZEM_EXPORT DOM::TextWithTombstones& getMainTextWithTombstones(DocumentAdapterWithNodeAdapter& adapter);
ZEM_EXPORT const DOM::TextWithTombstones& getMainTextWithTombstones(const DocumentAdapterWithNodeAdapter& adapter);

/// Whether rows, or columns, that are inserted at `index` could split a merge, in a table that has `liveCount` of them.
ZEM_EXPORT bool isNeededUnmergeToInsertInTable(unsigned long liveCount, unsigned long index);

/// Whether no other block than `table` is shown. A table without properties is.
ZEM_EXPORT bool isLastVisibleBlock(const ReadonlyVector<DOM::Blocks>& blocks, const DOM::Table& table);

/// Whether a pivot table of `size`, its columns first, may stand at a place: where cells are empty or absent, and on no
/// other pivot table than one of the same root. Fails: the assertions of `TableRange` for an empty size.
ZEM_EXPORT bool canInsertPivotTable(const DOM::Table& table, RowIndex row, ColumnIndex column,
                                    const Size2D<unsigned>& size);

/// A row, as a table takes it, from the form in which it travels. Cells are copied; those marked as removed are left
/// out. Fails: "plainPtr" when it or its properties are missing; `std::bad_cast` when these aren't a row's, or a value
/// isn't a cell; "opt" when a cell stands in a dead column.
ZEM_EXPORT DOM::SparseRowData makeRowData(const DOM::Table& table,
                                          const SharedConstPtr<CollaborationEngine::RowOrColumn>& rowOrColumn);
ZEM_EXPORT DOM::SparseColumnData makeColumnData(const DOM::Table& table,
                                                const SharedConstPtr<CollaborationEngine::RowOrColumn>& rowOrColumn);

/// The form in which a row or column travels, from what a table gave. The indices of its cells stay live ones.
ZEM_EXPORT CollaborationEngine::RowOrColumn makeRowOrColumn(DOM::SparseRowData data);
ZEM_EXPORT CollaborationEngine::RowOrColumn makeRowOrColumn(DOM::SparseColumnData data);

/// The same with the indices of its cells including tombstones, as an operation has them.
ZEM_EXPORT SharedConstPtr<CollaborationEngine::RowOrColumn> makeRowOrColumn(const DOM::Table& table,
                                                                            DOM::SparseRowData data);
ZEM_EXPORT SharedConstPtr<CollaborationEngine::RowOrColumn> makeRowOrColumn(const DOM::Table& table,
                                                                            DOM::SparseColumnData data);

/// Each of these adds the roots of the merges that reach into rows, columns or a rectangle. Merges of one row aren't
/// looked for in rows, nor those of one column in columns; in a rectangle all are.
/// Fails: "mergedCells.at(cell) == indices" when a cell was found at another place before. For rows and rectangles:
/// "(startColIndex + colsCount).get() <= table.getLiveColsCount().get()".
/// Cost: that of the merges met, times the lines in which they begin or end; a merge is stepped over as a whole, and
/// what lies between merges isn't looked at.
ZEM_EXPORT void getMergedCellsInRow(MergedCells& mergedCells, const DOM::Table& table, RowIndex row);
ZEM_EXPORT void getMergedCellsInRows(MergedCells& mergedCells, const DOM::Table& table, RowIndex first,
                                     unsigned long count);
ZEM_EXPORT void getMergedCellsInColumn(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex column);
ZEM_EXPORT void getMergedCellsInCols(MergedCells& mergedCells, const DOM::Table& table, ColumnIndex first,
                                     unsigned long count);
ZEM_EXPORT void getMergedCellsInRect(MergedCells& mergedCells, const DOM::Table& table, RowIndex row,
                                     unsigned long rowsCount, ColumnIndex column, unsigned long colsCount);

/// Takes the cell that `address` leads to, or into, out of its table, if nothing is left in it: no contents, tombstones
/// included, and no pivot table. An address without a cell is left alone.
/// Fails: "cellIndices" when the address goes on from the table's cells by anything but a place.
ZEM_EXPORT void clearCellIfNeeded(DocumentAdapterWithNodeAdapter& adapter, const DOM::NativeNodeAddress& address);

/// Sets or clears the place in a numbering of a paragraph or a named text style. An existing object is kept.
template<class T>
void setNumberingRef(T& target, const boost::optional<DOM::NumberingRef>& value)
{
    auto& numRef = target.getNumRef();
    if (!value)
    {
        numRef.reset();
        return;
    }
    if (!numRef)
    {
        numRef = std::make_unique<DOM::NumberingRef>();
    }
    *numRef = *value;
}

/// Whether `name` is taken in `container`; then `newName` becomes `name`, "_conflict_" and the number behind the
/// highest one in use. Otherwise `newName` stays as it is.
///
/// A container is a `DOM::UUIDContainer` of named text or table styles, or a `ReadonlyVector<DOM::Blocks>` of tables.
/// Fails: "!name.empty()"; "opt" for a style without a name; `std::bad_cast` for a block that is no table.
template<class Container>
bool getNewUniqueNameIfNeeded(const Container& container, const std::string& name, std::string& newName);

/// `prefix`, `suffix` and the number behind the highest one in use, 1 if there is none. The suffix is a piece of a
/// regular expression where names are compared with it. Fails: as above, and with the exceptions of `boost::regex`.
template<class Container>
std::string getUniqueName(const Container& container, const std::string& prefix, const std::string& suffix);

/// The numbers at the ends of those names that are `prefix`, `suffix` and a number, ascending. The number begins where
/// the last run of digits of the name does, be it in the prefix. Fails: as above.
template<class Container>
std::vector<unsigned long> collectNameIndices(const Container& container, const std::string& prefix,
                                              const std::string& suffix);

} // namespace Utils

} // namespace Zem::DOMCollaboration

#pragma once

#include "DOM_CellMergeProps.h"
#include "DOM_CellStyle.h"
#include "DOM_FieldBlock.h"
#include "DOM_PivotTable.h"
#include "DOM_SharedStyle.h"
#include "DOM_TextWithTombstones.h"

#include "CU_Index.h"

#include "Util_Export.h"

#include <boost/blank.hpp>
#include <boost/optional.hpp>
#include <boost/variant.hpp>

#include <memory>

namespace Zem::DOM
{

/// What a cell holds: nothing, one of the data of a field block, or a text. The pointers aren't null, and point into
/// the cell.
using CellData = boost::variant<boost::blank, const Formula*, const ArrayFormulaShift*, const BlockValue<FloatNumber>*,
                                const BlockValue<FormulaErrorType>*, const BlockValue<bool>*,
                                const TableOfContentsInfo*, const TextWithTombstones*>;

/// A cell of a table: its text, its style, whether it is the root of a merge, and whether that of a pivot table. A
/// formula or a value is the text's one block, a `FieldBlock`. What a cell doesn't have costs a null pointer.
///
/// Merge and pivot table concern the table as a whole, which keeps an index of them: of a cell in a table they are set
/// through the table alone. For the same reason a cell can be copied, but not assigned to.
class ZEM_EXPORT Cell
{
public:
    using WithTombstones = CollaborationUtils::WithTombstones;

    enum class CopyStrategy
    {
        Everything = 0,
        /// The style alone, as for pasting a format.
        StyleOnly = 1
    };

    Cell();
    Cell(const Cell& other);
    Cell(const Cell& other, CopyStrategy strategy);
    Cell(Cell&&) noexcept;
    Cell& operator=(const Cell&) = delete;
    ~Cell();

    /// For a cell without text this is one empty text for all cells, which stays.
    const TextWithTombstones& getTextWithTombstones() const;

    /// Gives the cell an empty text if it has none.
    TextWithTombstones& getTextWithTombstones();

    const SharedStyleConstIPtr<CellStyle>& getSharedStyle() const
    {
        return _sharedStyle;
    }

    SharedStyleConstIPtr<CellStyle>& getSharedStyle()
    {
        return _sharedStyle;
    }

    const CellMergeProps& getMergeProps() const
    {
        return _mergeProps;
    }

    boost::optional<const PivotTable&> getPivotTable() const;

    /// Told by the first block of the text.
    CellData getCellData() const;

    /// Null if the cell holds none.
    const ArrayFormulaShift* getArrayFormulaShift() const;

    /// Whether the cell has no contents. A block of its text is one, and so is being the root of a merge. Counting
    /// tombstones, so is all else that would be lost with the cell: the tombstones of its text, and its style, unless
    /// that is the default one. A style alone therefore doesn't stand in the way of a merge or of a pivot table, yet
    /// keeps its cell in the table. A pivot table isn't looked at; who wants to drop a cell asks `getPivotTable` too.
    bool isEmpty(WithTombstones withTombstones) const;

    /// A cell with an empty text equals one without text.
    friend ZEM_EXPORT bool operator==(const Cell& left, const Cell& right);

    template<class Archive>
    void serialize(Archive& archive);

private:
    friend class TableGrid;

    std::unique_ptr<TextWithTombstones> _text;
    SharedStyleConstIPtr<CellStyle> _sharedStyle;
    CellMergeProps _mergeProps;
    std::unique_ptr<PivotTable> _pivotTable;
};

using CellUPtr = std::unique_ptr<Cell>;

} // namespace Zem::DOM

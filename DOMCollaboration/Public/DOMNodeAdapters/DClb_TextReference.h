#pragma once

/// How adapters refer to a text that may not be there yet: the cells of a table are sparse, and walking past an empty
/// one must not make it.

#include "DOMNodeAdapters/DClb_NodeAdapterWorlds.h"

#include "DOM_TextWithTombstones.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

class Cell;
class Table;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

template<bool isConst>
class CellReference;
template<bool isConst>
class TextReference;

/// The cell at a position, brought into being if needed. Fails: "isInside" for a position outside the table.
ZEM_EXPORT DOM::Cell& getOrCreateCell(const CellReference<false>& cell);

/// The text, for change; brings the cell into being whose text it is. Fails: as `getOrCreateCell`.
ZEM_EXPORT DOM::TextWithTombstones& getOrCreateText(const TextReference<false>& text);

/// A position of a table, by live row and column, and the cell there, if one stands. The cell is looked up when the
/// reference is made, and again only while there is none.
template<bool isConst>
class ZEM_EXPORT CellReference
{
public:
    using Table = ConstIf<isConst, DOM::Table>;
    using Cell = ConstIf<isConst, DOM::Cell>;

    CellReference(Table& table, RowIndex row, ColumnIndex column)
        : _table(&table)
        , _row(row)
        , _column(column)
    {
        findCell();
    }

    operator CellReference<true>() const requires(!isConst)
    {
        return CellReference<true>(*_table, _row, _column, _cell);
    }

    /// Null where no cell stands.
    Cell* findCell() const;

    CellIndex getIndex() const
    {
        return CellIndex(_row, _column);
    }

private:
    friend CellReference<!isConst>;
    friend DOM::Cell& getOrCreateCell(const CellReference<false>& cell);

    CellReference(Table& table, RowIndex row, ColumnIndex column, Cell* cell)
        : _table(&table)
        , _row(row)
        , _column(column)
        , _cell(cell)
    {
    }

    Table* _table;
    RowIndex _row;
    ColumnIndex _column;
    mutable Cell* _cell = nullptr;
};

/// A text that is there, or the text of a cell that may have to be made first.
template<bool isConst>
class ZEM_EXPORT TextReference
{
public:
    using Text = ConstIf<isConst, DOM::TextWithTombstones>;

    TextReference(Text& text)
        : _text(&text)
    {
    }

    TextReference(const CellReference<isConst>& cell)
        : _cell(cell)
    {
    }

    operator TextReference<true>() const requires(!isConst)
    {
        return _cell ? TextReference<true>(CellReference<true>(*_cell)) : TextReference<true>(*_text);
    }

    /// An empty text, shared by all, stands in for that of a cell that isn't there.
    const DOM::TextWithTombstones& getText() const;

    /// The text, for access to the blocks that it has. Requires: `getText()` has blocks.
    Text& getExistingText() const;

private:
    friend DOM::TextWithTombstones& getOrCreateText(const TextReference<false>& text);

    Text* _text = nullptr;
    boost::optional<CellReference<isConst>> _cell;
};

extern template class CellReference<true>;
extern template class CellReference<false>;
extern template class TextReference<true>;
extern template class TextReference<false>;

} // namespace Zem::DOMCollaboration

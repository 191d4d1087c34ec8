#include "DOMNodeAdapters/DClb_TextReference.h"

#include "DOM_Cell.h"
#include "DOM_Table.h"

namespace Zem::DOMCollaboration
{

namespace
{

/// What all cells without a text show.
const DOM::TextWithTombstones& getEmptyText()
{
    static const DOM::TextWithTombstones emptyText;
    return emptyText;
}

} // namespace

template<bool isConst>
typename CellReference<isConst>::Cell* CellReference<isConst>::findCell() const
{
    if (!_cell)
    {
        _cell = _table->getCell(_row, _column);
    }
    return _cell;
}

DOM::Cell& getOrCreateCell(const CellReference<false>& cell)
{
    if (!cell._cell)
    {
        cell._cell = &cell._table->getOrCreateCell(cell._row, cell._column);
    }
    return *cell._cell;
}

template<bool isConst>
const DOM::TextWithTombstones& TextReference<isConst>::getText() const
{
    if (_text)
    {
        return *_text;
    }
    // As a const object, a cell without text makes none.
    const DOM::Cell* cell = _cell->findCell();
    return cell ? cell->getTextWithTombstones() : getEmptyText();
}

DOM::TextWithTombstones& getOrCreateText(const TextReference<false>& text)
{
    return text._text ? *text._text : getOrCreateCell(*text._cell).getTextWithTombstones();
}

template<bool isConst>
typename TextReference<isConst>::Text& TextReference<isConst>::getExistingText() const
{
    if constexpr (isConst)
    {
        return getText();
    }
    else
    {
        return getOrCreateText(*this);
    }
}

template class CellReference<true>;
template class CellReference<false>;
template class TextReference<true>;
template class TextReference<false>;

} // namespace Zem::DOMCollaboration

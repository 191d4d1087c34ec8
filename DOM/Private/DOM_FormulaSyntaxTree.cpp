#include "DOM_FormulaSyntaxTree.h"

namespace Zem::DOM::FormulaSyntaxTree
{

Expr::~Expr() = default;

CellRange::CellRange(TableAddress table, std::pair<ColumnEdge, ColumnEdge> columns, std::pair<RowEdge, RowEdge> rows)
    : _firstTableAddress(table)
    , _secondTableAddress(std::move(table))
    , _columns(std::move(columns))
    , _rows(std::move(rows))
{
}

void CellRange::cloneTo(std::shared_ptr<Expr>& target) const
{
    target = std::make_shared<CellRange>(*this);
}

void CellRange::cloneTo(std::unique_ptr<Expr>& target) const
{
    target = std::make_unique<CellRange>(*this);
}

} // namespace Zem::DOM::FormulaSyntaxTree

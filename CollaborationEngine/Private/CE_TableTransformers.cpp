#include "CE_TableTransformers.h"

#include "CE_TableMatrix.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// Two operations on rows, or two on columns.
OperationUPtr includeSameAxis(const TableOperand& first, const TableOperand& second,
                              const SetPropertyDataMerger& merger, TieResolveCondition tieResolveCondition)
{
    const LinePairRule rule = getLinePairRule(getTableAction(first), getTableAction(second));
    return rule ? rule(first, second, merger, tieResolveCondition) : cloneWithoutShadowsAbove(first._operand);
}

/// An operation on rows past one on columns, or the other way round: only what travels follows.
OperationUPtr includeCrossAxis(const TableOperand& first, const TableOperand& second)
{
    const CellsPairRule rule = getCellsPairRule(getTableAction(first), getTableAction(second));
    const SharedConstPtr<RowOrColumn> rowOrColumn = getRowOrColumn(first._nestedOperation);
    if (!rule || !rowOrColumn)
    {
        return cloneWithoutShadowsAbove(first._operand);
    }
    RowOrColumn followed = *rowOrColumn;
    if (!rule(followed.getCells(), first, second))
    {
        return cloneWithoutShadowsAbove(first._operand);
    }
    NestedTableOperation nestedOperation = first._nestedOperation;
    setRowOrColumn(nestedOperation, makeSharedConst<RowOrColumn>(std::move(followed)));
    return applyShadows(makeTableOperation(first, std::move(nestedOperation)), takeOwnShadows(first._operand));
}

} // namespace

TableSameNodeTransformer::TableSameNodeTransformer(std::shared_ptr<SetPropertyDataMerger> merger)
    : _merger(std::move(merger))
{
    derefPtr(_merger);
}

OperationUPtr TableSameNodeTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                                TieResolveCondition tieResolveCondition) const
{
    const TableOperand firstOperand = makeTableOperand(first);
    const TableOperand secondOperand = makeTableOperand(second);
    return firstOperand._isRow == secondOperand._isRow
               ? includeSameAxis(firstOperand, secondOperand, *_merger, tieResolveCondition)
               : includeCrossAxis(firstOperand, secondOperand);
}

} // namespace Zem::CollaborationEngine

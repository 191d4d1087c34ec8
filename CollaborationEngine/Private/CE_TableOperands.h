#pragma once

/// Operations on rows and columns as operands, freed of which of the two they are: both follow the same rules.

#include "CE_NodeOperands.h"
#include "CE_TableSlots.h"

namespace Zem::CollaborationEngine
{

struct TableOperand
{
    const NodeOperand& _operand;
    const NestedTableOperation& _nestedOperation;
    bool _isRow;
};

/// Fails: `std::bad_cast` for an operation of another family.
TableOperand makeTableOperand(const NodeOperand& operand);

inline TableAction getTableAction(const TableOperand& operand)
{
    return getTableAction(operand._nestedOperation, operand._operand._shadows);
}

inline boost::optional<SlotOperation> describeSlots(const TableOperand& operand)
{
    return describeSlots(operand._nestedOperation, operand._operand._shadows);
}

constexpr DeadPlace::Kind getDeadPlaceKind(bool isRow)
{
    return isRow ? DeadPlace::Kind::Row : DeadPlace::Kind::Column;
}

/// An operation on the rows or columns of the table that `model` is aimed at, with the id of `model`.
std::unique_ptr<AtomicOperation> makeTableOperation(const TableOperand& model, NestedTableOperation nestedOperation);

} // namespace Zem::CollaborationEngine

#pragma once

/// What an operation on a row or column does to the list of rows or columns, and what travels with it.

#include "CE_Shadows.h"
#include "CE_Slots.h"
#include "CE_TableOperation.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

using NestedTableOperation = TableRowOperation::NestedOperation;
using RowOrColumnInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
using RowOrColumnMark = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
using RowOrColumnRestore = TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>;

/// The kinds of operation on a row or column, in the order of the rows and columns of the matrices: those on slots, and
/// the setting of a property.
enum class TableAction
{
    Insertion,
    Removal,
    Marking,
    Restoring,
    Leaving,
    Releasing,
    Move,
    Setting
};

constexpr unsigned long tableActionsCount = slotActionsCount + 1;

TableAction getTableAction(const NestedTableOperation& nestedOperation, const Shadows* shadows);

/// The index that a nested operation names.
unsigned long getIndex(const NestedTableOperation& nestedOperation);

/// What a nested operation does to its own list; empty for the setting of a property.
/// Fails: "isTargetInRange" for a move to a place in front of the first.
boost::optional<SlotOperation> describeSlots(const NestedTableOperation& nestedOperation, const Shadows* shadows);

/// The row or column that travels; null if none does.
SharedConstPtr<RowOrColumn> getRowOrColumn(const NestedTableOperation& nestedOperation);

/// Does nothing where no row or column can travel.
void setRowOrColumn(NestedTableOperation& nestedOperation, const SharedConstPtr<RowOrColumn>& rowOrColumn);

/// The nested operation that does `slots`, of one piece, with a row or column where it needs one.
NestedTableOperation makeNestedOperation(const SlotOperation& slots, SharedConstPtr<RowOrColumn> rowOrColumn);

} // namespace Zem::CollaborationEngine

#pragma once

/// What an operation on a row or column does to the list of rows or columns, and to what travels the other way.

#include "CE_Shadows.h"
#include "CE_Slots.h"
#include "CE_TableOperation.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

using NestedTableOperation = TableRowOperation::NestedOperation;

template<class Tag>
constexpr DeadPlace::Kind deadPlaceKind = std::is_same_v<Tag, RowTag> ? DeadPlace::Kind::Row : DeadPlace::Kind::Column;

/// The index that a nested operation names.
unsigned long getIndex(const NestedTableOperation& nestedOperation);

/// What a nested operation does to its own list; empty for the setting of a property.
/// Fails: "isTargetInRange" for a move to a place in front of the first.
boost::optional<SlotOperation> describeSlots(const NestedTableOperation& nestedOperation, const Shadows* shadows);

/// The row or column that travels; null if none does.
SharedConstPtr<RowOrColumn> getRowOrColumn(const NestedTableOperation& nestedOperation);

/// The nested operation that does `slots`, of one piece, with a row or column where it needs one.
NestedTableOperation makeNestedOperation(const SlotOperation& slots, SharedConstPtr<RowOrColumn> rowOrColumn);

/// The row or column that `first` carries, as it has to be past `second` on a crossing one; null if it stays as it is.
/// `isFirstRow` says which of them is the row.
SharedConstPtr<RowOrColumn> followCrossing(const NestedTableOperation& first, const NestedTableOperation& second,
                                           bool isFirstRow);

} // namespace Zem::CollaborationEngine

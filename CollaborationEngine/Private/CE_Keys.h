#pragma once

/// What operations do to one key of a map, and the operations that come of it.

#include "CE_MapOperation.h"
#include "CE_NodeOperands.h"

namespace Zem::CollaborationEngine
{

using MapInsert = MapInsertOrRemoveOperation<MapInsertTag>;
using MapRemove = MapInsertOrRemoveOperation<MapRemoveTag>;

/// The kinds of operation on a key, in the order of the rows and columns of the matrix.
enum class MapAction
{
    Insertion,
    Removal,
    /// A removal of a key that is gone already.
    Leaving,
    /// An insertion that other removals hold down.
    Releasing
};

constexpr unsigned long mapActionsCount = 4;

/// Fails: `std::bad_cast` for an operation of another family.
MapAction getMapAction(const NodeOperand& operand);

/// The value that an insertion, a removal or a leaving carries. Fails: `std::bad_cast` for another kind.
const SharedConstPtr<DataValue>& getInsertedValue(const NodeOperand& operand);
const SharedConstPtr<DataValue>& getRemovedValue(const NodeOperand& operand);
const SharedConstPtr<DataValue>& getLeftValue(const NodeOperand& operand);

/// How many removals a leaving found. Fails: `std::bad_cast` for another kind.
unsigned long getKeyHoldersCount(const NodeOperand& operand);

/// Operations on the key of `operand`, with its id.
std::unique_ptr<MapInsert> makeKeyInsertion(const NodeOperand& operand, const SharedConstPtr<DataValue>& value);
std::unique_ptr<MapRemove> makeKeyRemoval(const NodeOperand& operand, const SharedConstPtr<DataValue>& value);
OperationUPtr makeKeyLeaving(const NodeOperand& operand, const SharedConstPtr<DataValue>& value,
                             unsigned long holdersCount);

} // namespace Zem::CollaborationEngine

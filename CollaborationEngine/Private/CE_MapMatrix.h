#pragma once

/// The matrix of pairs for operations on one key of a map. Removal, leaving, insertion and releasing of a key are to
/// each other what marking, leaving, restoring and releasing are for a slot of a list, and two insertions can clash.

#include "CE_MapOperation.h"
#include "CE_NodeOperands.h"

namespace Zem::CollaborationEngine
{

/// In the order of the rows and columns of the matrix.
enum class MapAction
{
    Insertion,
    Removal,
    Leaving,
    /// An insertion that other removals hold down.
    Releasing
};

constexpr unsigned long mapActionsCount = 4;

using MapPairRule = OperationUPtr (*)(const NodeOperand& first, const NodeOperand& second,
                                      TieResolveCondition tieResolveCondition);

MapAction getMapAction(const NodeOperand& operand);

/// The rule of a pair; null where the left operand stays as it is.
MapPairRule getMapPairRule(MapAction first, MapAction second);

} // namespace Zem::CollaborationEngine

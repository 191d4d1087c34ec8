#pragma once

/// The matrix of pairs for operations on one key of a map. Removal, leaving, insertion and releasing of a key are to
/// each other what marking, leaving, restoring and releasing are for a slot of a list, and two insertions can clash.
/// One source file for each left operand holds its rules; `Docs/Engine.md` tells why they hold.

#include "CE_Keys.h"
#include "CE_TieResolveCondition.h"

namespace Zem::CollaborationEngine
{

using MapPairRule = OperationUPtr (*)(const NodeOperand& first, const NodeOperand& second,
                                      TieResolveCondition tieResolveCondition);

/// The rule of a pair; null where the left operand stays as it is. `MapMatrix` in the tests names each of these pairs.
MapPairRule getMapPairRule(MapAction first, MapAction second);

OperationUPtr includeKeyInsertionPastInsertion(const NodeOperand& first, const NodeOperand& second,
                                               TieResolveCondition tieResolveCondition);
OperationUPtr includeKeyInsertionPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);

OperationUPtr includeKeyRemovalPastRemoval(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);

OperationUPtr includeKeyLeavingPastInsertion(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);
OperationUPtr includeKeyLeavingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);
OperationUPtr includeKeyLeavingPastReleasing(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);

OperationUPtr includeKeyReleasingPastInsertion(const NodeOperand& first, const NodeOperand& second,
                                               TieResolveCondition);
OperationUPtr includeKeyReleasingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition);
OperationUPtr includeKeyReleasingPastReleasing(const NodeOperand& first, const NodeOperand& second,
                                               TieResolveCondition);

} // namespace Zem::CollaborationEngine

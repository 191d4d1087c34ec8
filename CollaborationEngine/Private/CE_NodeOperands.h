#pragma once

/// What the transformers do with operands and their shadows.

#include "CE_SameNodeTransformer.h"

namespace Zem::CollaborationEngine
{

/// An atomic or shadowed operation as an operand. Fails: `std::bad_cast` for an atomic operation that isn't
/// hierarchical.
NodeOperand makeNodeOperand(const Operation& operation);

inline bool isShadowedForGood(const NodeOperand& operand)
{
    return operand._shadows && operand._shadows->areForGood();
}

/// Whether other deletions hold down what the operand would restore.
inline bool isHeldDown(const NodeOperand& operand)
{
    return operand._shadows && operand._shadows->_holdersCount > 0;
}

/// A copy of the operand with all that lies on it.
OperationUPtr cloneOperand(const NodeOperand& operand);

/// What lies on the operand itself, without the shadows on elements above its node.
Shadows takeOwnShadows(const NodeOperand& operand);

/// A copy of the operand with what lies on it itself, and without the shadows on elements above its node.
OperationUPtr cloneWithoutShadowsAbove(const NodeOperand& operand);

/// An operation that does nothing, with the id of the operand.
OperationUPtr makeNothing(const NodeOperand& operand);

/// Lays the dead places on each part of an operation.
OperationUPtr addDeadPlaces(OperationUPtr operation, const std::vector<DeadPlace>& deadPlaces);

/// `operation` under `shadows`, or itself if nothing shadows it any more.
OperationUPtr applyShadows(std::unique_ptr<AtomicOperation> operation, Shadows shadows);

/// The smallest number of dead places that lie on a part of an operation.
unsigned long countDeadPlaces(const Operation& operation);

/// Whether one of the dead places that lay on an operation is gone, and it isn't shadowed for good instead.
bool hasShadowEnded(const Operation& operation, unsigned long deadPlacesBefore);

} // namespace Zem::CollaborationEngine

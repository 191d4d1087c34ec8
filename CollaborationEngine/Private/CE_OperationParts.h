#pragma once

/// What composite operations are taken apart into, and put together from.

#include "CE_HierarchicalOperation.h"

#include <span>
#include <vector>

namespace Zem::CollaborationEngine
{

using OperationParts = std::vector<OperationUPtr>;

void appendMoved(OperationParts& target, OperationParts& source);

CompositeKind getKind(const Operation& operation);

/// Whether the operation is a restoring with what it brings along.
inline bool isUnit(const Operation& operation)
{
    return getKind(operation) != CompositeKind::Plain;
}

/// Copies of the parts of an operation, without empty ones. Plain composites are taken apart, whatever their nesting;
/// units stay whole.
OperationParts takeParts(const Operation& operation);

/// The parts of a single result, which is handed over.
OperationParts splitResult(OperationUPtr result);

/// The parts inside a unit; of any other operation, itself.
OperationParts takeUnitApart(OperationParts parts);

/// The parts of a composite operation; of any other one, itself.
std::span<const OperationUPtr> getParts(const OperationUPtr& operation);

/// The operation itself, or the first part of it; of a shadowed one, the original.
const HierarchicalOperation& getFirstSingle(const Operation& operation);

/// Whether a part of `upper` is aimed at the node of a part of `lower`, or at one that contains it. Otherwise `lower`
/// stays as it is when it is transformed against `upper`, but for what a restoring that is shadowed brings along.
bool touches(const Operation& upper, const Operation& lower);

/// The parts, shadowed for good.
OperationParts shadowForGood(const OperationParts& parts);

/// What takes each part back. Units among them are taken apart.
OperationParts makeReversals(const OperationParts& parts);

} // namespace Zem::CollaborationEngine

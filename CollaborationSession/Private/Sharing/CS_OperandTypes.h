#pragma once

#include "CE_HierarchicalOperation.h"
#include "DClb_PropertyId.h"

#include <optional>
#include <span>

namespace Zem::CollaborationSession
{

/// What operations may do to nodes of a type.
struct OperandType
{
    CollaborationEngine::HierarchicalOperation::Family _family;
    /// Whether an executor takes operations on it. Where none does, they needn't be transformed either.
    bool _isExecuted;
    /// The properties that its executor sets.
    std::span<const DOMCollaboration::PropertyId> _properties;
};

/// Whether there is a type of this number at all.
bool isNodeType(unsigned long nodeType);

/// Nothing for a type that operations aren't aimed at. Requires: `isNodeType(nodeType)`.
std::optional<OperandType> findOperandType(unsigned long nodeType);

} // namespace Zem::CollaborationSession

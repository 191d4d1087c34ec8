#pragma once

#include "CE_HierarchicalOperation.h"
#include "CE_NodeAddressWithTransformationData.h"

namespace Zem::CollaborationEngine
{

/// Moves positions across operations on nodes of one type. Both functions require that the address of the operation is
/// a proper prefix of the position's.
class ZEM_EXPORT NodePositionTransformer
{
public:
    virtual ~NodePositionTransformer();

    /// Moves a position forward: it was taken before the operation, and is to hold after it.
    virtual void include(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const = 0;

    /// Moves a position back: it was taken after the operation, and is to hold before it.
    virtual void exclude(const HierarchicalOperation& operation, NodeAddressWithTransformationData& position) const = 0;
};

} // namespace Zem::CollaborationEngine

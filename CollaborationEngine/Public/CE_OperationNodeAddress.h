#pragma once

#include "NA_NodeAddress.h"

namespace Zem::CollaborationEngine
{

/// The address world of operations: node types are numbers whose meaning is the engine's user's, and list and table
/// indices include tombstones.
struct OperationNodeAddressTag
{
};

using OperationNodeAddress = NodeAddressing::NodeAddress<OperationNodeAddressTag, unsigned long>;

} // namespace Zem::CollaborationEngine

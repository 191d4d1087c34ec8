#pragma once

#include "CE_Operation.h"
#include "CE_OperationNodeAddress.h"

#include <vector>

namespace Zem::CollaborationSession
{

/// The nodes that operations change, for telling quickly which other operations commute with all of them.
///
/// Two operations commute if each keeps to a node of its own: neither node lies inside the other, and what executes
/// them reads and writes nothing but its node, and of what is around that only what no operation changes without
/// changing one of the nodes around. Each then does the same whichever runs first, captures the same data, takes itself
/// back in front of the other and behind it, and is transformed into itself.
class ChangedNodes
{
public:
    /// One more operation. Cost: a comparison of addresses for each node, of which no more than a few are remembered.
    void add(const CollaborationEngine::Operation& operation);

    /// Whether `operation` commutes with each of the operations. False where that isn't known: of composed operations,
    /// of shadowed ones, of nodes without a word about their executor, and if more nodes were changed than it pays to
    /// look at. Cost: a comparison of addresses for each node.
    bool commuteWith(const CollaborationEngine::Operation& operation) const;

private:
    std::vector<CollaborationEngine::OperationNodeAddress> _addresses;
    bool _areAllKnown = true;
};

} // namespace Zem::CollaborationSession

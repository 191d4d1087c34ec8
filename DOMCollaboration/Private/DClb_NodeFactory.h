#pragma once

#include "DClb_NodeFactories.h"

#include <memory>
#include <vector>

namespace Zem::DOMCollaboration
{

/// Everything that is made for one type of node. Its bases are virtual, so that it has one `getNodeType`.
class NodeFactory : public virtual NodePositionTransformersFactory,
                    public virtual SameNodePositionTransformersFactory,
                    public virtual NodeOperationExecutorsFactory
{
public:
    unsigned long getNodeType() const override = 0;
};

/// The factories of all types of node, in ascending order of their numbers.
std::vector<std::shared_ptr<const NodeFactory>> makeNodeTransformersFactory();

} // namespace Zem::DOMCollaboration

#include "DClb_DocumentPositionTransformer.h"

#include "DClb_NodeFactories.h"

namespace Zem::DOMCollaboration
{

DocumentPositionTransformer::DocumentPositionTransformer()
{
    forAllNodePositionTransformers(
        [this](const NodePositionTransformersFactory& factory)
        { registerNodePositionTransformer(factory.getNodeType(), factory.createNodePositionTransformer()); });
}

} // namespace Zem::DOMCollaboration

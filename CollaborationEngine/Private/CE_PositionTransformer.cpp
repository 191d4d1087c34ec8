#include "CE_PositionTransformer.h"

#include "CE_OperationKinds.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

NodePositionTransformer::~NodePositionTransformer() = default;

NodeAddressWithTransformationData::~NodeAddressWithTransformationData() = default;

bool NodeAddressWithTransformationData::sticksToPrevious() const
{
    return false;
}

void NodeAddressWithTransformationData::cleanRevertedOperationsStack()
{
    _revertedInsertOperations.clear();
}

PositionTransformer::~PositionTransformer() = default;

void PositionTransformer::registerNodePositionTransformer(unsigned long nodeType,
                                                          std::shared_ptr<NodePositionTransformer> transformer)
{
    derefPtr(transformer);
    const bool isNew = _nodePositionTransformers.emplace(nodeType, std::move(transformer)).second;
    ZEM_ASSERT(isNew);
}

const NodePositionTransformer* PositionTransformer::findNodePositionTransformer(unsigned long nodeType) const
{
    const auto transformerIt = _nodePositionTransformers.find(nodeType);
    return transformerIt == _nodePositionTransformers.end() ? nullptr : transformerIt->second.get();
}

void PositionTransformer::include(const Operation& operation, NodeAddressWithTransformationData& position) const
{
    visitWith(
        operation,
        [&](const AtomicOperation& atomic)
        {
            const HierarchicalOperation& hierarchical = getHierarchical(atomic);
            if (const NodePositionTransformer* transformer = findFor(hierarchical, position))
            {
                transformer->include(hierarchical, position);
            }
        },
        [&](const CompositeOperation& composite)
        {
            for (const OperationUPtr& part : composite.getParts())
            {
                include(*part, position);
            }
        },
        [](const EmptyOperation&) {}, [](const ShadowedOperation&) {});
}

void PositionTransformer::exclude(const Operation& operation, NodeAddressWithTransformationData& position) const
{
    visitWith(
        operation,
        [&](const AtomicOperation& atomic)
        {
            const HierarchicalOperation& hierarchical = getHierarchical(atomic);
            if (const NodePositionTransformer* transformer = findFor(hierarchical, position))
            {
                transformer->exclude(hierarchical, position);
            }
        },
        [&](const CompositeOperation& composite)
        {
            const std::vector<OperationUPtr>& parts = composite.getParts();
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
            {
                exclude(**part, position);
            }
        },
        [](const EmptyOperation&) {}, [](const ShadowedOperation&) {});
}

/// Null if the operation's node doesn't contain the position.
const NodePositionTransformer* PositionTransformer::findFor(const HierarchicalOperation& operation,
                                                            const NodeAddressWithTransformationData& position) const
{
    const OperationNodeAddress& node = operation.getNodeAddress();
    if (node.getSize() >= position.getAddress().getSize() || !node.isPrefixOf(position.getAddress()))
    {
        return nullptr;
    }
    const auto transformerIt = _nodePositionTransformers.find(operation.getOperandType());
    ZEM_ASSERT(transformerIt != _nodePositionTransformers.end());
    return transformerIt->second.get();
}

} // namespace Zem::CollaborationEngine

#include "CE_NodeOperands.h"

#include "CE_OperationKinds.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

std::unique_ptr<AtomicOperation> cloneAtomic(const AtomicOperation& operation)
{
    std::unique_ptr<AtomicOperation> clone;
    operation.cloneTo(clone);
    return clone;
}

} // namespace

NodeOperand makeNodeOperand(const Operation& operation)
{
    if (const auto* shadowed = getIf<ShadowedOperation>(operation))
    {
        return NodeOperand{getHierarchical(shadowed->getOriginal()), &shadowed->getShadows()};
    }
    return NodeOperand{getHierarchical(derefPtr(getIf<AtomicOperation>(operation)))};
}

OperationUPtr cloneOperand(const NodeOperand& operand)
{
    if (!operand._shadows)
    {
        return cloneOperation(operand._operation);
    }
    return std::make_unique<ShadowedOperation>(cloneAtomic(operand._operation), *operand._shadows);
}

Shadows takeOwnShadows(const NodeOperand& operand)
{
    if (!operand._shadows)
    {
        return Shadows{};
    }
    const unsigned long nodeDepth = operand._operation.getNodeAddress().getSize();
    Shadows ownShadows = *operand._shadows;
    std::erase_if(ownShadows._deadPlaces,
                  [&](const DeadPlace& deadPlace) { return deadPlace._chunkIndex < nodeDepth; });
    return ownShadows;
}

OperationUPtr cloneWithoutShadowsAbove(const NodeOperand& operand)
{
    if (!operand._shadows)
    {
        return cloneOperation(operand._operation);
    }
    return applyShadows(cloneAtomic(operand._operation), takeOwnShadows(operand));
}

OperationUPtr makeNothing(const NodeOperand& operand)
{
    auto nothing = std::make_unique<EmptyOperation>();
    nothing->inheritIDIfPossibleImpl(operand._operation);
    return nothing;
}

OperationUPtr addDeadPlaces(OperationUPtr operation, const std::vector<DeadPlace>& deadPlaces)
{
    if (deadPlaces.empty())
    {
        return operation;
    }
    if (auto* composite = getIf<CompositeOperation>(*operation))
    {
        for (OperationUPtr& part : composite->getParts())
        {
            part = addDeadPlaces(std::move(part), deadPlaces);
        }
    }
    else if (auto* shadowed = getIf<ShadowedOperation>(*operation))
    {
        std::vector<DeadPlace>& own = shadowed->getShadows()._deadPlaces;
        own.insert(own.end(), deadPlaces.begin(), deadPlaces.end());
    }
    else if (auto* atomic = getIf<AtomicOperation>(*operation))
    {
        return std::make_unique<ShadowedOperation>(cloneAtomic(*atomic), Shadows{deadPlaces});
    }
    return operation;
}

OperationUPtr applyShadows(std::unique_ptr<AtomicOperation> operation, Shadows shadows)
{
    if (shadows.areForGood())
    {
        return operation;
    }
    return std::make_unique<ShadowedOperation>(std::move(operation), std::move(shadows));
}

unsigned long countDeadPlaces(const Operation& operation)
{
    if (const auto* composite = getIf<CompositeOperation>(operation))
    {
        unsigned long fewest = ~0ul;
        for (const OperationUPtr& part : composite->getParts())
        {
            fewest = std::min(fewest, countDeadPlaces(*part));
        }
        return fewest;
    }
    const auto* shadowed = getIf<ShadowedOperation>(operation);
    return shadowed ? shadowed->getShadows()._deadPlaces.size() : 0;
}

bool hasShadowEnded(const Operation& operation, unsigned long deadPlacesBefore)
{
    const auto* shadowed = getIf<ShadowedOperation>(operation);
    return countDeadPlaces(operation) < deadPlacesBefore && (!shadowed || !shadowed->getShadows().areForGood());
}

} // namespace Zem::CollaborationEngine

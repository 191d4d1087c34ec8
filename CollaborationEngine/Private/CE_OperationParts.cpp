#include "CE_OperationParts.h"

#include "CE_InverseOperation.h"
#include "CE_NodeOperands.h"
#include "CE_OperationKinds.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <iterator>

namespace Zem::CollaborationEngine
{

namespace
{

/// Takes apart plain composites, whatever their nesting, with a stack of its own.
template<class Consume>
void forEachPart(const Operation& operation, const Consume& consume)
{
    std::vector<const Operation*> pending{&operation};
    while (!pending.empty())
    {
        const Operation* next = pending.back();
        pending.pop_back();
        const auto* composite = getIf<CompositeOperation>(*next);
        if (composite && !composite->bringsShadowedAlong())
        {
            const OperationParts& parts = composite->getParts();
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
            {
                pending.push_back(part->get());
            }
        }
        else if (!getIf<EmptyOperation>(*next))
        {
            consume(*next);
        }
    }
}

/// Takes units apart, too.
void appendSingles(OperationUPtr operation, OperationParts& singles)
{
    if (auto* composite = getIf<CompositeOperation>(*operation))
    {
        for (OperationUPtr& part : composite->getParts())
        {
            appendSingles(std::move(part), singles);
        }
    }
    else if (!getIf<EmptyOperation>(*operation))
    {
        singles.push_back(std::move(operation));
    }
}

} // namespace

void appendMoved(OperationParts& target, OperationParts& source)
{
    std::move(source.begin(), source.end(), std::back_inserter(target));
}

CompositeKind getKind(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    return composite ? composite->getKind() : CompositeKind::Plain;
}

OperationParts takeParts(const Operation& operation)
{
    OperationParts parts;
    forEachPart(operation, [&](const Operation& part) { parts.push_back(cloneOperation(part)); });
    return parts;
}

OperationParts splitResult(OperationUPtr result)
{
    auto* composite = getIf<CompositeOperation>(*result);
    if (composite && !composite->bringsShadowedAlong())
    {
        return std::move(composite->getParts());
    }
    OperationParts parts;
    if (!getIf<EmptyOperation>(*result))
    {
        parts.push_back(std::move(result));
    }
    return parts;
}

OperationParts takeUnitApart(OperationParts parts)
{
    if (parts.size() == 1 && isUnit(*parts.front()))
    {
        return std::move(cast<CompositeOperation>(*parts.front()).getParts());
    }
    return parts;
}

std::span<const OperationUPtr> getParts(const OperationUPtr& operation)
{
    const auto* composite = getIf<CompositeOperation>(*operation);
    return composite ? std::span<const OperationUPtr>(composite->getParts()) : std::span(&operation, 1);
}

const HierarchicalOperation& getFirstSingle(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    if (!composite)
    {
        return makeNodeOperand(operation)._operation;
    }
    ZEM_ASSERT(!composite->getParts().empty());
    return getFirstSingle(*composite->getParts().front());
}

bool touches(const Operation& upper, const Operation& lower)
{
    if (const auto* composite = getIf<CompositeOperation>(upper))
    {
        const OperationParts& parts = composite->getParts();
        return std::any_of(parts.begin(), parts.end(),
                           [&](const OperationUPtr& part) { return touches(*part, lower); });
    }
    if (const auto* composite = getIf<CompositeOperation>(lower))
    {
        const OperationParts& parts = composite->getParts();
        return std::any_of(parts.begin(), parts.end(),
                           [&](const OperationUPtr& part) { return touches(upper, *part); });
    }
    if (getIf<EmptyOperation>(upper) || getIf<EmptyOperation>(lower))
    {
        return false;
    }
    const OperationNodeAddress& upperNode = makeNodeOperand(upper)._operation.getNodeAddress();
    return upperNode.isPrefixOf(makeNodeOperand(lower)._operation.getNodeAddress());
}

OperationParts shadowForGood(const OperationParts& parts)
{
    OperationParts shadowed;
    for (const OperationUPtr& part : parts)
    {
        std::unique_ptr<AtomicOperation> original;
        getFirstSingle(*part).cloneTo(original);
        shadowed.push_back(std::make_unique<ShadowedOperation>(std::move(original)));
        shadowed.back()->inheritIDIfPossibleImpl(*part);
    }
    return shadowed;
}

OperationParts makeReversals(const OperationParts& parts)
{
    OperationParts reversals;
    for (const OperationUPtr& part : parts)
    {
        appendSingles(makeReversal(*part), reversals);
    }
    return reversals;
}

} // namespace Zem::CollaborationEngine

#include "CE_Operation.h"

#include "CE_OperationExecutor.h"
#include "CE_OperationKinds.h"

#include "Util_Assert.h"

#include <algorithm>
#include <iterator>

namespace Zem::CollaborationEngine
{

Operation::~Operation() = default;

boost::optional<Operation::Id> Operation::getID() const
{
    return _id;
}

void Operation::setIDIfNeeded(unsigned long& nextID)
{
    if (!_id)
    {
        _id = nextID++;
    }
}

void Operation::inheritIDIfPossibleImpl(const Operation& other)
{
    if (!_id)
    {
        _id = other._id;
    }
}

OperationUPtr cloneOperation(const Operation& operation)
{
    OperationUPtr clone;
    operation.cloneTo(clone);
    return clone;
}

OperationUPtr executeOwned(OperationUPtr operation, OperationExecutor& executor)
{
    OperationUPtr changedOp;
    return executor.executeAndChangeIfNeeded(*operation, changedOp) ? std::move(changedOp) : std::move(operation);
}

OperationUPtr EmptyOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    return cloneOperation(*this);
}

ChangeOfRestoring::ChangeOfRestoring(OperationUPtr planned, OperationUPtr difference)
    : _planned(std::move(planned))
    , _difference(std::move(difference))
{
    derefPtr(_planned);
    derefPtr(_difference);
}

ChangeOfRestoring::ChangeOfRestoring(const ChangeOfRestoring& other)
    : _planned(other.isKnown() ? cloneOperation(*other._planned) : nullptr)
    , _difference(other.isKnown() ? cloneOperation(*other._difference) : nullptr)
{
}

CompositeOperation::CompositeOperation(std::vector<OperationUPtr> parts, CompositeKind kind)
    : _parts(std::move(parts))
    , _kind(kind)
{
    ZEM_ASSERT(kind == CompositeKind::Plain || !_parts.empty());
    for (const OperationUPtr& part : _parts)
    {
        derefPtr(part);
    }
}

CompositeOperation::CompositeOperation(std::vector<OperationUPtr> parts, ChangeOfRestoring change)
    : CompositeOperation(std::move(parts), CompositeKind::ChangedRestoring)
{
    _change = std::move(change);
}

CompositeOperation::CompositeOperation(const CompositeOperation& other)
    : OperationImpl(other)
    , _kind(other._kind)
    , _change(other._change)
{
    _parts.reserve(other._parts.size());
    for (const OperationUPtr& part : other._parts)
    {
        _parts.push_back(cloneOperation(*part));
    }
}

OperationUPtr CompositeOperation::getPseudoIdentity(const BaseOperationTransformer& transformer) const
{
    std::vector<OperationUPtr> identities;
    identities.reserve(_parts.size());
    for (const OperationUPtr& part : _parts)
    {
        identities.push_back(part->getPseudoIdentity(transformer));
    }
    return withIDOf(*this, makeOperationFromParts(std::move(identities)));
}

void CompositeOperation::setIDIfNeeded(unsigned long& nextID)
{
    OperationImpl::setIDIfNeeded(nextID);
    for (const OperationUPtr& part : _parts)
    {
        part->setIDIfNeeded(nextID);
    }
}

void CompositeOperation::inheritIDIfPossibleImpl(const Operation& other)
{
    OperationImpl::inheritIDIfPossibleImpl(other);
    for (const OperationUPtr& part : _parts)
    {
        part->inheritIDIfPossibleImpl(other);
    }
}

OperationUPtr makeOperationFromParts(std::vector<OperationUPtr> parts)
{
    std::for_each(parts.begin(), parts.end(), [](const OperationUPtr& part) { derefPtr(part); });
    if (parts.size() == 1 && !getIf<CompositeOperation>(*parts.front()))
    {
        return std::move(parts.front());
    }
    std::vector<OperationUPtr> flat;
    flat.reserve(parts.size());
    for (OperationUPtr& part : parts)
    {
        visitWith(
            *part, [](EmptyOperation&) {},
            [&](CompositeOperation& composite)
            {
                if (composite.bringsShadowedAlong())
                {
                    flat.push_back(std::move(part));
                    return;
                }
                std::vector<OperationUPtr>& inner = composite.getParts();
                std::move(inner.begin(), inner.end(), std::back_inserter(flat));
            },
            [&](auto&) { flat.push_back(std::move(part)); });
    }
    if (flat.empty())
    {
        return std::make_unique<EmptyOperation>();
    }
    return flat.size() == 1 ? std::move(flat.front()) : std::make_unique<CompositeOperation>(std::move(flat));
}

OperationUPtr withIDOf(const Operation& original, OperationUPtr whatBecameOfIt)
{
    whatBecameOfIt->inheritIDIfPossibleImpl(original);
    if (!original.getID() || whatBecameOfIt->getID() == original.getID())
    {
        return whatBecameOfIt;
    }
    OperationUPtr renamed;
    if (getIf<EmptyOperation>(*whatBecameOfIt))
    {
        renamed = std::make_unique<EmptyOperation>();
    }
    else
    {
        std::vector<OperationUPtr> parts;
        parts.push_back(std::move(whatBecameOfIt));
        renamed = std::make_unique<CompositeOperation>(std::move(parts));
    }
    renamed->inheritIDIfPossibleImpl(original);
    return renamed;
}

const HierarchicalOperation* AtomicOperation::getIfHierarchical() const
{
    return nullptr;
}

ShadowedOperation::ShadowedOperation(std::unique_ptr<AtomicOperation> original, Shadows shadows)
    : _original(std::move(original))
    , _shadows(std::move(shadows))
{
    derefPtr(_original);
    inheritIDIfPossibleImpl(*_original);
}

ShadowedOperation::ShadowedOperation(const ShadowedOperation& other)
    : OperationImpl(other)
    , _shadows(other._shadows)
{
    other._original->cloneTo(_original);
}

OperationUPtr ShadowedOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    std::unique_ptr<AtomicOperation> original;
    _original->cloneTo(original);
    return std::make_unique<ShadowedOperation>(std::move(original));
}

} // namespace Zem::CollaborationEngine

#include "CE_HierarchicalOperationTransformer.h"

#include "CE_NodeOperands.h"
#include "CE_OperationKinds.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

template<class Map, class Transformer>
void registerTransformer(Map& transformers, unsigned long nodeType, Transformer transformer)
{
    derefPtr(transformer);
    const bool isNew = transformers.emplace(nodeType, std::move(transformer)).second;
    ZEM_ASSERT(isNew);
}

template<class Map>
auto findTransformer(const Map& transformers, unsigned long nodeType)
{
    const auto transformer = transformers.find(nodeType);
    return transformer == transformers.end() ? nullptr : transformer->second.get();
}

/// Whether two dead places are one, and, where it is known, of one value of a map.
bool isSamePlace(const DeadPlace& first, const DeadPlace& second)
{
    const bool isSameValue =
        !first._removedValue || !second._removedValue || *first._removedValue == *second._removedValue;
    return first == second && isSameValue;
}

void eraseDeadPlace(std::vector<DeadPlace>& deadPlaces, const DeadPlace& cameBack)
{
    std::erase_if(deadPlaces, [&](const DeadPlace& deadPlace) { return isSamePlace(deadPlace, cameBack); });
}

bool hasPlace(const NodeOperand& operand, const DeadPlace& place)
{
    return operand._shadows && std::any_of(operand._shadows->_deadPlaces.begin(), operand._shadows->_deadPlaces.end(),
                                           [&](const DeadPlace& ownPlace) { return isSamePlace(ownPlace, place); });
}

/// Whether one of the first `chunksCount` chunks of the address of `operand` names something dead in which `other`
/// doesn't lie.
bool isInSomethingDeadWithout(const NodeOperand& operand, const NodeOperand& other, unsigned long chunksCount)
{
    return operand._shadows && std::any_of(operand._shadows->_deadPlaces.begin(), operand._shadows->_deadPlaces.end(),
                                           [&](const DeadPlace& place)
                                           { return place._chunkIndex < chunksCount && !hasPlace(other, place); });
}

/// Whether a map has another value under the key now than the one in which one of the two operations lies, and the
/// other one lies in that, though the address of `second` begins that of `first`. Elements of lists, rows and columns
/// keep their index, dead or live: two operations of one state that lie in one of them share its being dead.
bool areInDifferentValues(const NodeOperand& first, const NodeOperand& second)
{
    const unsigned long sharedChunksCount = second._operation.getNodeAddress().getSize();
    return isInSomethingDeadWithout(first, second, sharedChunksCount) ||
           isInSomethingDeadWithout(second, first, sharedChunksCount);
}

/// What is dead already can't die again: what is removed now is another value under the same key.
void addDeadPlace(std::vector<DeadPlace>& deadPlaces, const DeadPlace& place)
{
    if (std::find(deadPlaces.begin(), deadPlaces.end(), place) == deadPlaces.end())
    {
        deadPlaces.push_back(place);
    }
}

} // namespace

SameNodeTransformer::~SameNodeTransformer() = default;

AncestorCollectionModificationTransformer::~AncestorCollectionModificationTransformer() = default;

void HierarchicalOperationTransformer::registerSameNodeTransformer(unsigned long nodeType,
                                                                   std::shared_ptr<SameNodeTransformer> transformer)
{
    registerTransformer(_sameNodeTransformers, nodeType, std::move(transformer));
}

void HierarchicalOperationTransformer::registerAdressModifierTransformer(
    unsigned long nodeType, std::shared_ptr<AncestorCollectionModificationTransformer> transformer)
{
    registerTransformer(_adressModifierTransformers, nodeType, std::move(transformer));
}

const SameNodeTransformer* HierarchicalOperationTransformer::findSameNodeTransformer(unsigned long nodeType) const
{
    return findTransformer(_sameNodeTransformers, nodeType);
}

const AncestorCollectionModificationTransformer*
HierarchicalOperationTransformer::findAdressModifierTransformer(unsigned long nodeType) const
{
    return findTransformer(_adressModifierTransformers, nodeType);
}

OperationUPtr HierarchicalOperationTransformer::includeImpl(const AtomicOperation& first, const AtomicOperation& second,
                                                            TieResolveCondition tieResolveCondition) const
{
    return includeOperand({getHierarchical(first)}, {getHierarchical(second)}, tieResolveCondition);
}

OperationUPtr HierarchicalOperationTransformer::includeImpl(const ShadowedOperation& first,
                                                            const AtomicOperation& second,
                                                            TieResolveCondition tieResolveCondition) const
{
    return includeOperand(makeNodeOperand(first), makeNodeOperand(second), tieResolveCondition);
}

OperationUPtr HierarchicalOperationTransformer::includeImpl(const Operation& first, const ShadowedOperation& second,
                                                            TieResolveCondition tieResolveCondition) const
{
    const NodeOperand firstOperand = makeNodeOperand(first);
    const NodeOperand secondOperand = makeNodeOperand(second);
    OperationUPtr result = includeOperand(firstOperand, secondOperand, tieResolveCondition);
    return bringAlong(std::move(result), firstOperand, secondOperand, tieResolveCondition);
}

/// If `first` ends a shadow on `second`, it brings `second` along.
OperationUPtr HierarchicalOperationTransformer::bringAlong(OperationUPtr restoring, const NodeOperand& first,
                                                           const NodeOperand& second,
                                                           TieResolveCondition tieResolveCondition) const
{
    const std::vector<DeadPlace>& deadPlaces = second._shadows->_deadPlaces;
    if (deadPlaces.empty() || !first._operation.getNodeAddress().isPrefixOf(second._operation.getNodeAddress()))
    {
        return restoring;
    }
    OperationUPtr broughtAlong = includeOperand(second, first, getOpposite(tieResolveCondition));
    if (!hasShadowEnded(*broughtAlong, deadPlaces.size()))
    {
        return restoring;
    }
    restoring->inheritIDIfPossibleImpl(first._operation);
    broughtAlong->inheritIDIfPossibleImpl(second._operation);
    std::vector<OperationUPtr> parts;
    parts.push_back(std::move(restoring));
    parts.push_back(std::move(broughtAlong));
    OperationUPtr flat = makeOperationFromParts(std::move(parts));
    auto* composite = getIf<CompositeOperation>(*flat);
    return composite ? std::make_unique<CompositeOperation>(std::move(composite->getParts()), CompositeKind::Restoring)
                     : std::move(flat);
}

OperationUPtr HierarchicalOperationTransformer::includeOperand(const NodeOperand& first, const NodeOperand& second,
                                                               TieResolveCondition tieResolveCondition) const
{
    const OperationNodeAddress& firstAddress = first._operation.getNodeAddress();
    const OperationNodeAddress& secondAddress = second._operation.getNodeAddress();
    if (isShadowedForGood(first) || isShadowedForGood(second) || !secondAddress.isPrefixOf(firstAddress) ||
        areInDifferentValues(first, second))
    {
        return cloneOperand(first);
    }
    if (firstAddress.getSize() > secondAddress.getSize())
    {
        return isHeldDown(second) ? cloneOperand(first) : includeAncestor(first, second._operation);
    }
    if (first._operation.getOperandType() != second._operation.getOperandType())
    {
        return cloneOperand(first);
    }
    return includeSameNode(first, second, tieResolveCondition);
}

OperationUPtr HierarchicalOperationTransformer::includeSameNode(const NodeOperand& first, const NodeOperand& second,
                                                                TieResolveCondition tieResolveCondition) const
{
    const auto transformerIt = _sameNodeTransformers.find(first._operation.getOperandType());
    ZEM_ASSERT(transformerIt != _sameNodeTransformers.end());
    OperationUPtr result = transformerIt->second->include(first, second, tieResolveCondition);
    if (!first._shadows)
    {
        return result;
    }
    const unsigned long nodeDepth = first._operation.getNodeAddress().getSize();
    std::vector<DeadPlace> deadPlacesAbove = first._shadows->_deadPlaces;
    std::erase_if(deadPlacesAbove, [&](const DeadPlace& deadPlace) { return deadPlace._chunkIndex >= nodeDepth; });
    return addDeadPlaces(std::move(result), deadPlacesAbove);
}

OperationUPtr HierarchicalOperationTransformer::includeAncestor(const NodeOperand& first,
                                                                const HierarchicalOperation& ancestorsChange) const
{
    const auto transformerIt = _adressModifierTransformers.find(ancestorsChange.getOperandType());
    ZEM_ASSERT(transformerIt != _adressModifierTransformers.end());
    OperationNodeAddress address = first._operation.getNodeAddress();
    const AddressChange change = transformerIt->second->include(address, ancestorsChange);
    std::unique_ptr<AtomicOperation> operation;
    first._operation.cloneTo(operation);
    if (!(address == first._operation.getNodeAddress()))
    {
        cast<HierarchicalOperation>(*operation).setNodeAddress(std::move(address));
    }
    Shadows shadows = first._shadows ? *first._shadows : Shadows{};
    switch (change._kind)
    {
    case AddressChange::Kind::Follows:
        break;
    case AddressChange::Kind::Dies:
        addDeadPlace(shadows._deadPlaces, derefPtr(change._deadPlace));
        break;
    case AddressChange::Kind::ComesBack:
        eraseDeadPlace(shadows._deadPlaces, derefPtr(change._deadPlace));
        break;
    case AddressChange::Kind::IsGone:
        return std::make_unique<ShadowedOperation>(std::move(operation));
    }
    return applyShadows(std::move(operation), std::move(shadows));
}

} // namespace Zem::CollaborationEngine

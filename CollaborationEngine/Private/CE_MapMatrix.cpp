#include "CE_MapMatrix.h"

#include "CE_Holders.h"

#include "Util_Cast.h"

namespace Zem::CollaborationEngine
{

namespace
{

using MapInsert = MapInsertOrRemoveOperation<MapInsertTag>;
using MapRemove = MapInsertOrRemoveOperation<MapRemoveTag>;

template<class T>
std::unique_ptr<T> makeLike(const NodeOperand& operand, const SharedConstPtr<DataValue>& value)
{
    const auto& model = castToFamily<MapOperation>(operand._operation);
    auto operation = std::make_unique<T>(model.getNodeAddress(), model.getOperandType(), model.getKey(), value);
    operation->inheritIDIfPossibleImpl(model);
    return operation;
}

OperationUPtr makeLeaving(const NodeOperand& operand, const SharedConstPtr<DataValue>& value,
                          unsigned long holdersCount)
{
    const auto& model = castToFamily<MapOperation>(operand._operation);
    auto leaving = std::make_unique<MapLeaveRemovedOperation>(model.getNodeAddress(), model.getOperandType(),
                                                              model.getKey(), value, holdersCount);
    leaving->inheritIDIfPossibleImpl(model);
    return leaving;
}

/// The insertion `operand` under `shadows`, with the value of the insertion `source`.
OperationUPtr makeInsertion(const NodeOperand& operand, const Shadows& shadows, const NodeOperand& source)
{
    return applyShadows(makeLike<MapInsert>(operand, cast<MapInsert>(source._operation).getData()), shadows);
}

OperationUPtr makeNothing(const NodeOperand& operand)
{
    auto nothing = std::make_unique<EmptyOperation>();
    nothing->inheritIDIfPossibleImpl(operand._operation);
    return nothing;
}

const SharedConstPtr<DataValue>& getLeftValue(const NodeOperand& operand)
{
    return cast<MapLeaveRemovedOperation>(operand._operation).getData();
}

unsigned long getHoldersCount(const NodeOperand& operand)
{
    return cast<MapLeaveRemovedOperation>(operand._operation).getHoldersCount();
}

/// The winner's value stands.
OperationUPtr includeInsertionPastInsertion(const NodeOperand& first, const NodeOperand& second,
                                            TieResolveCondition tieResolveCondition)
{
    if (tieResolveCondition == TieResolveCondition::SecondWins)
    {
        return makeNothing(first);
    }
    std::vector<OperationUPtr> parts;
    parts.push_back(makeLike<MapRemove>(first, cast<MapInsert>(second._operation).getData()));
    parts.push_back(makeLike<MapInsert>(first, cast<MapInsert>(first._operation).getData()));
    auto replacement = std::make_unique<CompositeOperation>(std::move(parts));
    replacement->inheritIDIfPossibleImpl(first._operation);
    return replacement;
}

OperationUPtr includeInsertionPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return makeInsertion(first, getHoldersCount(second) == 0 ? Shadows{} : makeHoldsPastLeaving(), first);
}

OperationUPtr includeRemovalPastRemoval(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    const auto& captured = cast<MapRemove>(second._operation).getData();
    return makeLeaving(first, captured ? captured : cast<MapRemove>(first._operation).getData(), 1);
}

OperationUPtr includeLeavingPastInsertion(const NodeOperand& first, const NodeOperand&, TieResolveCondition)
{
    if (getHoldersCount(first) == 0)
    {
        return cloneWithoutShadowsAbove(first);
    }
    return makeLike<MapRemove>(first, getLeftValue(first));
}

OperationUPtr includeLeavingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return makeLeaving(first, getLeftValue(first),
                       countHoldersPastLeaving(getHoldersCount(first), getHoldersCount(second)));
}

OperationUPtr includeLeavingPastReleasing(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    return makeLeaving(first, getLeftValue(first), getHoldersCount(first) == 0 ? 0 : second._shadows->_holdersCount);
}

OperationUPtr includeReleasingPastInsertion(const NodeOperand& first, const NodeOperand&, TieResolveCondition)
{
    return makeNothing(first);
}

OperationUPtr includeReleasingPastLeaving(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    Shadows shadows = makeHolds(*first._shadows);
    shadows._holdersCount += getHoldersCount(second) == 0 ? 0 : 1;
    return makeInsertion(first, shadows, first);
}

/// Once nothing holds the key out any more, the value of an insertion comes in that the removals held back, and not one
/// that undoing a removal would bring back.
OperationUPtr includeReleasingPastReleasing(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    Shadows shadows = makeHolds(*first._shadows);
    const auto holdersCount = countHoldersPastReleasing(shadows, *second._shadows);
    if (!holdersCount)
    {
        return makeNothing(first);
    }
    const bool isOtherAnInsertion = second._shadows->_releasesAll && !shadows._releasesAll;
    shadows._holdersCount = *holdersCount;
    return makeInsertion(first, shadows, isOtherAnInsertion && *holdersCount == 0 ? second : first);
}

constexpr MapPairRule asItIs = nullptr;

/// The one needs the key in the map, the other needs it out of it.
constexpr MapPairRule disjoint = nullptr;

// clang-format off
constexpr MapPairRule mapMatrix[mapActionsCount][mapActionsCount] = {
/* first \ second  insertion                       removal                     leaving                       releasing */
/* insertion */  { &includeInsertionPastInsertion, disjoint,                   &includeInsertionPastLeaving, asItIs },
/* removal   */  { disjoint,                       &includeRemovalPastRemoval, disjoint,                     disjoint },
/* leaving   */  { &includeLeavingPastInsertion,   disjoint,                   &includeLeavingPastLeaving,   &includeLeavingPastReleasing },
/* releasing */  { &includeReleasingPastInsertion, disjoint,                   &includeReleasingPastLeaving, &includeReleasingPastReleasing },
};
// clang-format on

} // namespace

MapAction getMapAction(const NodeOperand& operand)
{
    return visitWith<MapAction>(
        castToFamily<MapOperation>(operand._operation),
        [&](const MapInsert&) { return isHeldDown(operand) ? MapAction::Releasing : MapAction::Insertion; },
        [](const MapRemove&) { return MapAction::Removal; },
        [](const MapLeaveRemovedOperation&) { return MapAction::Leaving; });
}

MapPairRule getMapPairRule(MapAction first, MapAction second)
{
    return mapMatrix[static_cast<unsigned long>(first)][static_cast<unsigned long>(second)];
}

} // namespace Zem::CollaborationEngine

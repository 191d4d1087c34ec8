#include "CE_OperationEquality.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_OperationKinds.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <algorithm>
#include <typeinfo>

namespace Zem::CollaborationEngine
{

namespace
{

template<class T>
bool haveEqualTargets(const SharedConstPtr<T>& first, const SharedConstPtr<T>& second)
{
    return ComparisonDetails::arePointersDeeplyEqual(first.getShared(), second.getShared());
}

template<class Tag>
bool sayTheSame(const ListModificationOperation<Tag>& first, const ListModificationOperation<Tag>& second)
{
    return first.getRange() == second.getRange() && haveEqualTargets(first.getData(), second.getData());
}

bool sayTheSame(const ListMoveOperation& first, const ListMoveOperation& second)
{
    return first.getRange() == second.getRange() && first.getOffset() == second.getOffset();
}

bool sayTheSame(const ListLeaveTombstonesOperation& first, const ListLeaveTombstonesOperation& second)
{
    return first.getRange() == second.getRange() && first.getHoldersCount() == second.getHoldersCount() &&
           haveEqualTargets(first.getData(), second.getData());
}

template<class T>
bool sayTheSame(const ListMultirangeOperationImpl<T>& first, const ListMultirangeOperationImpl<T>& second)
{
    return std::equal(first.getNestedOperations().begin(), first.getNestedOperations().end(),
                      second.getNestedOperations().begin(), second.getNestedOperations().end(),
                      [](const T& left, const T& right) { return sayTheSame(left, right); });
}

template<class Tag>
bool sayTheSame(const MapInsertOrRemoveOperation<Tag>& first, const MapInsertOrRemoveOperation<Tag>& second)
{
    return haveEqualTargets(first.getKey(), second.getKey()) && haveEqualTargets(first.getData(), second.getData());
}

bool sayTheSame(const MapLeaveRemovedOperation& first, const MapLeaveRemovedOperation& second)
{
    return first.getHoldersCount() == second.getHoldersCount() && haveEqualTargets(first.getKey(), second.getKey()) &&
           haveEqualTargets(first.getData(), second.getData());
}

bool sayTheSame(const TableRowOrColumnDataOperation& first, const TableRowOrColumnDataOperation& second)
{
    return first.getIndex() == second.getIndex() && haveEqualTargets(first.getRowOrColumn(), second.getRowOrColumn());
}

bool sayTheSame(const RowOrColumnLeaveTombstoneOperation& first, const RowOrColumnLeaveTombstoneOperation& second)
{
    return first.getIndex() == second.getIndex() && first.getHoldersCount() == second.getHoldersCount() &&
           haveEqualTargets(first.getRowOrColumn(), second.getRowOrColumn());
}

bool sayTheSame(const RowOrColumnMoveOperation& first, const RowOrColumnMoveOperation& second)
{
    return first.getIndex() == second.getIndex() && first.getOffset() == second.getOffset();
}

bool sayTheSame(const SetRowOrColumnPropertyOperation& first, const SetRowOrColumnPropertyOperation& second)
{
    return first.getIndex() == second.getIndex() && first.getPropertyID() == second.getPropertyID() &&
           first.getOldValue() == second.getOldValue() && first.getNewValue() == second.getNewValue();
}

template<class Tag>
bool sayTheSame(const TableRowOrColumnOperation<Tag>& first, const TableRowOrColumnOperation<Tag>& second)
{
    return boost::apply_visitor(
        [&](const auto& nested)
        {
            const auto* other = boost::get<std::decay_t<decltype(nested)>>(&second.getNestedOperation());
            return other && sayTheSame(nested, *other);
        },
        first.getNestedOperation());
}

bool sayTheSame(const SetPropertyOperation& first, const SetPropertyOperation& second)
{
    return first.getPropertyID() == second.getPropertyID() && first.getOldValue() == second.getOldValue() &&
           first.getNewValue() == second.getNewValue();
}

/// Both are of one class, which is of the family `Root`.
template<class Root>
bool compareInFamily(const Root& first, const HierarchicalOperation& second)
{
    return visitWith<bool>(first, [&](const auto& typed)
                           { return sayTheSame(typed, cast<std::decay_t<decltype(typed)>>(second)); });
}

bool compareOfOneClass(const HierarchicalOperation& first, const HierarchicalOperation& second)
{
    switch (first.getFamily())
    {
    case HierarchicalOperation::Family::List:
        return compareInFamily(castToFamily<ListOperation>(first), second);
    case HierarchicalOperation::Family::ListMultirange:
        return compareInFamily(castToFamily<ListMultirangeOperation>(first), second);
    case HierarchicalOperation::Family::Map:
        return compareInFamily(castToFamily<MapOperation>(first), second);
    case HierarchicalOperation::Family::SetProperty:
        return sayTheSame(castToFamily<SetPropertyOperation>(first), castToFamily<SetPropertyOperation>(second));
    case HierarchicalOperation::Family::Table:
        return compareInFamily(castToFamily<TableOperation>(first), second);
    }
    ZEM_FAIL("The operation is of no family.");
}

bool compareAtomic(const AtomicOperation& first, const AtomicOperation& second)
{
    if (typeid(first) != typeid(second))
    {
        return false;
    }
    const auto& firstOnNode = getHierarchical(first);
    const auto& secondOnNode = getHierarchical(second);
    return firstOnNode.getOperandType() == secondOnNode.getOperandType() &&
           firstOnNode.getNodeAddress() == secondOnNode.getNodeAddress() &&
           compareOfOneClass(firstOnNode, secondOnNode);
}

bool haveEqualShadows(const Shadows& first, const Shadows& second)
{
    const auto areEqual = [](const DeadPlace& left, const DeadPlace& right)
    { return left == right && haveEqualTargets(left._removedValue, right._removedValue); };
    return first._holdersCount == second._holdersCount && first._releasesAll == second._releasesAll &&
           std::equal(first._deadPlaces.begin(), first._deadPlaces.end(), second._deadPlaces.begin(),
                      second._deadPlaces.end(), areEqual);
}

bool compareParts(const CompositeOperation& first, const CompositeOperation& second)
{
    return first.bringsShadowedAlong() == second.bringsShadowedAlong() &&
           std::equal(
               first.getParts().begin(), first.getParts().end(), second.getParts().begin(), second.getParts().end(),
               [](const OperationUPtr& left, const OperationUPtr& right) { return areDeeplyEqual(*left, *right); });
}

} // namespace

bool areDeeplyEqual(const Operation& first, const Operation& second)
{
    return visitWith<bool>(
        first,
        [&](const AtomicOperation& atomic)
        {
            const auto* other = getIf<AtomicOperation>(second);
            return other && compareAtomic(atomic, *other);
        },
        [&](const CompositeOperation& composite)
        {
            const auto* other = getIf<CompositeOperation>(second);
            return other && compareParts(composite, *other);
        },
        [&](const EmptyOperation&) { return getIf<EmptyOperation>(second) != nullptr; },
        [&](const ShadowedOperation& shadowed)
        {
            const auto* other = getIf<ShadowedOperation>(second);
            return other && compareAtomic(shadowed.getOriginal(), other->getOriginal()) &&
                   haveEqualShadows(shadowed.getShadows(), other->getShadows());
        });
}

} // namespace Zem::CollaborationEngine

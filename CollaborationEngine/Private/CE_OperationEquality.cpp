#include "CE_OperationEquality.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_OperationKinds.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <algorithm>
#include <type_traits>
#include <typeinfo>

namespace Zem::CollaborationEngine
{

namespace
{

/// Whether what operations took out of a document when they ran is to be equal, too.
enum class CapturedData : unsigned char
{
    Counts,
    IsIgnored
};

template<class T>
bool haveEqualTargets(const SharedConstPtr<T>& first, const SharedConstPtr<T>& second)
{
    return ComparisonDetails::arePointersDeeplyEqual(first.getShared(), second.getShared());
}

template<class T>
bool haveEqualCaptures(const SharedConstPtr<T>& first, const SharedConstPtr<T>& second, CapturedData captured)
{
    return captured == CapturedData::IsIgnored || haveEqualTargets(first, second);
}

template<class Tag>
bool sayTheSame(const ListModificationOperation<Tag>& first, const ListModificationOperation<Tag>& second,
                CapturedData captured)
{
    const CapturedData capturedHere = std::is_same_v<Tag, InsertTag> ? CapturedData::Counts : captured;
    return first.getRange() == second.getRange() && haveEqualCaptures(first.getData(), second.getData(), capturedHere);
}

bool sayTheSame(const ListMoveOperation& first, const ListMoveOperation& second, CapturedData)
{
    return first.getRange() == second.getRange() && first.getOffset() == second.getOffset();
}

bool sayTheSame(const ListLeaveTombstonesOperation& first, const ListLeaveTombstonesOperation& second,
                CapturedData captured)
{
    return first.getRange() == second.getRange() && first.getHoldersCount() == second.getHoldersCount() &&
           haveEqualCaptures(first.getData(), second.getData(), captured);
}

template<class T>
bool sayTheSame(const ListMultirangeOperationImpl<T>& first, const ListMultirangeOperationImpl<T>& second,
                CapturedData captured)
{
    return std::equal(first.getNestedOperations().begin(), first.getNestedOperations().end(),
                      second.getNestedOperations().begin(), second.getNestedOperations().end(),
                      [captured](const T& left, const T& right) { return sayTheSame(left, right, captured); });
}

template<class Tag>
bool sayTheSame(const MapInsertOrRemoveOperation<Tag>& first, const MapInsertOrRemoveOperation<Tag>& second,
                CapturedData captured)
{
    const CapturedData capturedHere = std::is_same_v<Tag, MapInsertTag> ? CapturedData::Counts : captured;
    return haveEqualTargets(first.getKey(), second.getKey()) &&
           haveEqualCaptures(first.getData(), second.getData(), capturedHere);
}

bool sayTheSame(const MapLeaveRemovedOperation& first, const MapLeaveRemovedOperation& second, CapturedData captured)
{
    return first.getHoldersCount() == second.getHoldersCount() && haveEqualTargets(first.getKey(), second.getKey()) &&
           haveEqualCaptures(first.getData(), second.getData(), captured);
}

template<class Operation>
bool sayTheSame(const Operation& first, const Operation& second,
                CapturedData captured) requires std::is_base_of_v<TableRowOrColumnDataOperation, Operation>
{
    constexpr bool isInsertion =
        std::is_same_v<Operation, TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>>;
    if constexpr (std::is_same_v<Operation, RowOrColumnLeaveTombstoneOperation>)
    {
        if (first.getHoldersCount() != second.getHoldersCount())
        {
            return false;
        }
    }
    return first.getIndex() == second.getIndex() && haveEqualCaptures(first.getRowOrColumn(), second.getRowOrColumn(),
                                                                      isInsertion ? CapturedData::Counts : captured);
}

bool sayTheSame(const RowOrColumnMoveOperation& first, const RowOrColumnMoveOperation& second, CapturedData)
{
    return first.getIndex() == second.getIndex() && first.getOffset() == second.getOffset();
}

/// Both are settings of one property, on one row, column or node.
template<class Setting>
bool haveEqualValues(const Setting& first, const Setting& second, CapturedData captured)
{
    return first.getPropertyID() == second.getPropertyID() && first.getNewValue() == second.getNewValue() &&
           (captured == CapturedData::IsIgnored || first.getOldValue() == second.getOldValue());
}

bool sayTheSame(const SetRowOrColumnPropertyOperation& first, const SetRowOrColumnPropertyOperation& second,
                CapturedData captured)
{
    return first.getIndex() == second.getIndex() && haveEqualValues(first, second, captured);
}

template<class Tag>
bool sayTheSame(const TableRowOrColumnOperation<Tag>& first, const TableRowOrColumnOperation<Tag>& second,
                CapturedData captured)
{
    return boost::apply_visitor(
        [&](const auto& nested)
        {
            const auto* other = boost::get<std::decay_t<decltype(nested)>>(&second.getNestedOperation());
            return other && sayTheSame(nested, *other, captured);
        },
        first.getNestedOperation());
}

bool sayTheSame(const SetPropertyOperation& first, const SetPropertyOperation& second, CapturedData captured)
{
    return haveEqualValues(first, second, captured);
}

/// Both are of one class, which is of the family `Root`.
template<class Root>
bool compareInFamily(const Root& first, const HierarchicalOperation& second, CapturedData captured)
{
    return visitWith<bool>(first, [&](const auto& typed)
                           { return sayTheSame(typed, cast<std::decay_t<decltype(typed)>>(second), captured); });
}

bool compareOfOneClass(const HierarchicalOperation& first, const HierarchicalOperation& second, CapturedData captured)
{
    switch (first.getFamily())
    {
    case HierarchicalOperation::Family::List:
        return compareInFamily(castToFamily<ListOperation>(first), second, captured);
    case HierarchicalOperation::Family::ListMultirange:
        return compareInFamily(castToFamily<ListMultirangeOperation>(first), second, captured);
    case HierarchicalOperation::Family::Map:
        return compareInFamily(castToFamily<MapOperation>(first), second, captured);
    case HierarchicalOperation::Family::SetProperty:
        return sayTheSame(castToFamily<SetPropertyOperation>(first), castToFamily<SetPropertyOperation>(second),
                          captured);
    case HierarchicalOperation::Family::Table:
        return compareInFamily(castToFamily<TableOperation>(first), second, captured);
    }
    ZEM_FAIL("The operation is of no family.");
}

bool compareAtomic(const AtomicOperation& first, const AtomicOperation& second, CapturedData captured)
{
    if (typeid(first) != typeid(second))
    {
        return false;
    }
    const auto& firstOnNode = getHierarchical(first);
    const auto& secondOnNode = getHierarchical(second);
    return firstOnNode.getOperandType() == secondOnNode.getOperandType() &&
           firstOnNode.getNodeAddress() == secondOnNode.getNodeAddress() &&
           compareOfOneClass(firstOnNode, secondOnNode, captured);
}

bool haveEqualShadows(const Shadows& first, const Shadows& second)
{
    const auto areEqual = [](const DeadPlace& left, const DeadPlace& right)
    { return left == right && haveEqualTargets(left._removedValue, right._removedValue); };
    return first._holdersCount == second._holdersCount && first._releasesAll == second._releasesAll &&
           std::equal(first._deadPlaces.begin(), first._deadPlaces.end(), second._deadPlaces.begin(),
                      second._deadPlaces.end(), areEqual);
}

bool compare(const Operation& first, const Operation& second, CapturedData captured);

/// What was to be counts like what was taken out of a document: it is no effect.
bool haveEqualChanges(const ChangeOfRestoring& first, const ChangeOfRestoring& second, CapturedData captured)
{
    if (captured == CapturedData::IsIgnored || !first.isKnown() || !second.isKnown())
    {
        return captured == CapturedData::IsIgnored || first.isKnown() == second.isKnown();
    }
    return compare(*first._planned, *second._planned, captured) &&
           compare(*first._difference, *second._difference, captured);
}

bool compareParts(const CompositeOperation& first, const CompositeOperation& second, CapturedData captured)
{
    return first.getKind() == second.getKind() && haveEqualChanges(first.getChange(), second.getChange(), captured) &&
           std::equal(first.getParts().begin(), first.getParts().end(), second.getParts().begin(),
                      second.getParts().end(),
                      [captured](const OperationUPtr& left, const OperationUPtr& right)
                      { return compare(*left, *right, captured); });
}

bool compare(const Operation& first, const Operation& second, CapturedData captured)
{
    return visitWith<bool>(
        first,
        [&](const AtomicOperation& atomic)
        {
            const auto* other = getIf<AtomicOperation>(second);
            return other && compareAtomic(atomic, *other, captured);
        },
        [&](const CompositeOperation& composite)
        {
            const auto* other = getIf<CompositeOperation>(second);
            return other && compareParts(composite, *other, captured);
        },
        [&](const EmptyOperation&) { return getIf<EmptyOperation>(second) != nullptr; },
        [&](const ShadowedOperation& shadowed)
        {
            const auto* other = getIf<ShadowedOperation>(second);
            return other && compareAtomic(shadowed.getOriginal(), other->getOriginal(), captured) &&
                   haveEqualShadows(shadowed.getShadows(), other->getShadows());
        });
}

} // namespace

bool areDeeplyEqual(const Operation& first, const Operation& second)
{
    return compare(first, second, CapturedData::Counts);
}

bool haveEqualEffects(const Operation& first, const Operation& second)
{
    return compare(first, second, CapturedData::IsIgnored);
}

} // namespace Zem::CollaborationEngine

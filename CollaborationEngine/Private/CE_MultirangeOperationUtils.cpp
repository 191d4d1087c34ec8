#include "CE_MultirangeOperationUtils.h"

#include "CE_ListSlots.h"
#include "CE_OperationKinds.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationEngine::MultirangeOperationUtils
{

namespace
{

template<class T>
constexpr bool changesIndices =
    std::is_same_v<T, ListModificationOperation<InsertTag>> || std::is_same_v<T, ListModificationOperation<RemoveTag>>;

/// The operation as one on several ranges; null if it is another one.
ListMultirangeOperation* getIfMultirange(Operation& operation)
{
    const auto* atomic = getIf<AtomicOperation>(operation);
    const HierarchicalOperation* hierarchical = atomic ? atomic->getIfHierarchical() : nullptr;
    const bool isMultirange =
        hierarchical && hierarchical->getFamily() == HierarchicalOperation::Family::ListMultirange;
    return isMultirange ? static_cast<ListMultirangeOperation*>(const_cast<HierarchicalOperation*>(hierarchical))
                        : nullptr;
}

template<class T>
void sortDescending(std::vector<T>& nestedOperations)
{
    const auto isHigher = [](const T& left, const T& right)
    { return left.getRange().getBegin() > right.getRange().getBegin(); };
    if (!std::is_sorted(nestedOperations.begin(), nestedOperations.end(), isHigher))
    {
        std::stable_sort(nestedOperations.begin(), nestedOperations.end(), isHigher);
    }
}

/// Whether two neighbours, the higher one first, can be one piece.
template<class T>
bool touch(const T& upper, const T& lower)
{
    const IndexRange<unsigned long>& range = lower.getRange();
    const bool areInsertions = std::is_same_v<T, ListModificationOperation<InsertTag>>;
    return (areInsertions ? range.getBegin() : range.getEnd()) == upper.getRange().getBegin();
}

/// What takes the place of `operation`; null if that stays, in order.
template<class T>
OperationUPtr tidy(ListMultirangeOperationImpl<T>& operation, bool keepsPieceBorders)
{
    std::vector<T>& nestedOperations = operation.getNestedOperations();
    sortDescending(nestedOperations);
    const auto neighbours = std::adjacent_find(nestedOperations.begin(), nestedOperations.end(), &touch<T>);
    if (keepsPieceBorders || neighbours == nestedOperations.end())
    {
        return nullptr;
    }
    SlotOperations slots;
    slots.push_back(describeSlots(operation, nullptr));
    OperationUPtr joined = makeOperationsOnSlots(operation, slots);
    joined->inheritIDIfPossibleImpl(operation);
    return joined;
}

OperationUPtr tidyMultirange(OperationUPtr operation, ListMultirangeOperation& multirange, bool keepsPieceBorders)
{
    OperationUPtr joined =
        visitWith<OperationUPtr>(multirange, [&](auto& typed) { return tidy(typed, keepsPieceBorders); });
    return joined ? std::move(joined) : std::move(operation);
}

/// Takes the pieces of `next` into `operation`, if the two can be carried out as one: they are of one kind, came from
/// one operation, and the places of `next` are the same before and after `operation`.
template<class T>
bool takeIn(ListMultirangeOperationImpl<T>& operation, ListMultirangeOperation& next)
{
    auto* sameKind = cast<ListMultirangeOperationImpl<T>>(&next);
    if (!sameKind || sameKind->getID() != operation.getID() ||
        sameKind->getOperandType() != operation.getOperandType() ||
        !(sameKind->getNodeAddress() == operation.getNodeAddress()))
    {
        return false;
    }
    std::vector<T>& pieces = operation.getNestedOperations();
    std::vector<T>& nextPieces = sameKind->getNestedOperations();
    if (changesIndices<T>)
    {
        const IndexRange<unsigned long>& highest = nextPieces.front().getRange();
        const bool isInsertion = std::is_same_v<T, ListModificationOperation<InsertTag>>;
        if ((isInsertion ? highest.getBegin() : highest.getEnd()) > pieces.back().getRange().getBegin())
        {
            return false;
        }
    }
    std::move(nextPieces.begin(), nextPieces.end(), std::back_inserter(pieces));
    return true;
}

bool takeInNext(Operation& operation, Operation& next)
{
    ListMultirangeOperation* multirange = getIfMultirange(operation);
    ListMultirangeOperation* nextMultirange = getIfMultirange(next);
    return multirange && nextMultirange &&
           visitWith<bool>(*multirange, [&](auto& single) { return takeIn(single, *nextMultirange); });
}

OperationUPtr mergeParts(OperationUPtr operation, CompositeOperation& composite, bool keepsPieceBorders)
{
    std::vector<OperationUPtr> merged;
    for (OperationUPtr& part : composite.getParts())
    {
        if (!getIf<EmptyOperation>(*part) && (merged.empty() || !takeInNext(*merged.back(), *part)))
        {
            merged.push_back(std::move(part));
        }
    }
    for (OperationUPtr& part : merged)
    {
        part = mergeOperations(std::move(part), keepsPieceBorders);
    }
    if (merged.size() > 1 || composite.getKind() == CompositeKind::ChangedRestoring)
    {
        composite.getParts() = std::move(merged);
        return operation;
    }
    return withIDOf(composite, makeOperationFromParts(std::move(merged)));
}

} // namespace

OperationUPtr mergeOperations(OperationUPtr operation, bool keepsPieceBorders)
{
    if (ListMultirangeOperation* multirange = getIfMultirange(*operation))
    {
        return tidyMultirange(std::move(operation), *multirange, keepsPieceBorders);
    }
    if (auto* composite = getIf<CompositeOperation>(*operation))
    {
        const auto isMultirange = [](const OperationUPtr& part) { return getIfMultirange(*part) != nullptr; };
        if (std::any_of(composite->getParts().begin(), composite->getParts().end(), isMultirange))
        {
            return mergeParts(std::move(operation), *composite, keepsPieceBorders);
        }
    }
    return operation;
}

} // namespace Zem::CollaborationEngine::MultirangeOperationUtils

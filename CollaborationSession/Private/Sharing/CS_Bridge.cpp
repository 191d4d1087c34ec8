#include "Sharing/CS_Bridge.h"

#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Overloaded.h"
#include "Sharing/CS_PartialMarking.h"

#include "CE_InverseOperation.h"
#include "CE_MapOperation.h"
#include "CE_OperationEquality.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

bool haveOneNode(const HierarchicalOperation& planned, const HierarchicalOperation& happened)
{
    return planned.getOperandType() == happened.getOperandType() &&
           planned.getNodeAddress() == happened.getNodeAddress();
}

/// Whether two operations on one node put their elements at the same places, so that only the values differ.
bool haveEqualPlaces(const HierarchicalOperation& planned, const HierarchicalOperation& happened)
{
    if (typeid(planned) != typeid(happened) || cast<ListMoveOperation>(&planned))
    {
        return false;
    }
    if (const auto* list = cast<ListOperation>(&planned))
    {
        return list->getRange() == cast<ListOperation>(happened).getRange();
    }
    if (const auto* map = cast<MapOperation>(&planned))
    {
        return ComparisonDetails::arePointersDeeplyEqual(map->getKey().getShared(),
                                                         cast<MapOperation>(happened).getKey().getShared());
    }
    return false;
}

using TextRemoval = ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>;

/// Whether a removal for good takes place in a text.
bool removesSlots(const Operation& operation)
{
    return visitWith<bool>(
        operation, [](const AtomicOperation& atomic) { return cast<TextRemoval>(&atomic) != nullptr; },
        [](const CompositeOperation& composite)
        {
            return std::any_of(composite.getParts().begin(), composite.getParts().end(),
                               [](const OperationUPtr& part) { return removesSlots(*part); });
        },
        [](const EmptyOperation&) { return false; }, [](const ShadowedOperation&) { return false; });
}

OperationUPtr markInsteadSingle(const AtomicOperation& atomic)
{
    const auto* removal = cast<TextRemoval>(&atomic);
    if (!removal)
    {
        return cloneOperation(atomic);
    }
    std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
    for (const auto& nested : removal->getNestedOperations())
    {
        nestedOperations.emplace_back(nested.getNodeAddress(), nested.getOperandType(), nested.getData(),
                                      nested.getRange());
    }
    auto marking = std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>>(
        std::move(nestedOperations));
    marking->inheritIDIfPossibleImpl(atomic);
    return marking;
}

/// The operation with markings in place of removals for good, which no document executes. The author of an insertion
/// that was refused may have removed and restored what it lay in: the elements then come back with that, and go.
OperationUPtr markInstead(const Operation& operation)
{
    return visitWith<OperationUPtr>(
        operation, [](const AtomicOperation& atomic) { return markInsteadSingle(atomic); },
        [](const CompositeOperation& composite) -> OperationUPtr
        {
            std::vector<OperationUPtr> parts;
            for (const OperationUPtr& part : composite.getParts())
            {
                parts.push_back(markInstead(*part));
            }
            auto marked = std::make_unique<CompositeOperation>(std::move(parts), composite.getKind());
            marked->inheritIDIfPossibleImpl(composite);
            return marked;
        },
        [](const EmptyOperation& empty) { return cloneOperation(empty); },
        [](const ShadowedOperation& shadowed) { return cloneOperation(shadowed); });
}

std::shared_ptr<Operation> makeSetting(const SetPropertyOperation& planned, const SetPropertyOperation& happened)
{
    auto setting = std::make_shared<SetPropertyOperation>(happened.getNodeAddress(), happened.getOperandType(),
                                                          happened.getPropertyID(), planned.getSharedNewValue(),
                                                          happened.getSharedNewValue());
    setting->inheritIDIfPossibleImpl(happened);
    return setting;
}

} // namespace

void Bridge::append(std::shared_ptr<const Operation> operation)
{
    if (cast<EmptyOperation>(operation.get()) || _typing.takeIn(*operation))
    {
        return;
    }
    closeTyping();
    if (!_typing.takeIn(*operation))
    {
        _passed.emplace_back(std::move(operation));
    }
}

void Bridge::closeTyping()
{
    for (OperationUPtr& operation : _typing.makeOperations())
    {
        _passed.emplace_back(std::shared_ptr<const Operation>(std::move(operation)));
    }
    _typing = ComposedTyping();
}

void Bridge::appendChange(const Operation& original, const Operation& planned, const Operation& happened)
{
    if (haveEqualEffects(planned, happened) || appendChangeOnNode(planned, happened))
    {
        return;
    }
    const auto* composite = cast<CompositeOperation>(&happened);
    if (composite && cast<AtomicOperation>(&planned))
    {
        // What was planned, and what came with it.
        appendChange(original, planned, *composite->getParts().front());
        for (std::size_t index = 1; index < composite->getParts().size(); ++index)
        {
            append(cloneOperation(*composite->getParts()[index]));
        }
        return;
    }
    if (appendPartialMarking(original, planned, happened))
    {
        return;
    }
    refuse(original);
    append(cloneOperation(happened));
}

/// Stands on the way from the operation's end to what was there before it, and not at the end of the bridge: what
/// somebody else did below an element that `original` removes isn't shadowed then, for the element was never gone.
void Bridge::refuse(const Operation& original)
{
    _passed = _passedBefore;
    _passed.emplace(_passed.begin(), OwnChange{makeReversal(original)});
}

/// As if the author had sent the part that happened and the rest as two operations.
bool Bridge::appendPartialMarking(const Operation& original, const Operation& planned, const Operation& happened)
{
    const auto parts = takeApart(original, planned, happened);
    if (!parts)
    {
        return false;
    }
    Bridge bridge(_transformer);
    bridge._passed = _passedBefore;
    if (!haveEqualEffects(*bridge.cross(*parts->_carriedOut), happened))
    {
        return false;
    }
    _passed = std::move(bridge._passed);
    _passed.emplace(_passed.begin(), OwnChange{makeReversal(*parts->_refused)});
    return true;
}

bool Bridge::appendChangeOnNode(const Operation& planned, const Operation& happened)
{
    const auto* plannedOnNode = cast<HierarchicalOperation>(&planned);
    const auto* happenedOnNode = cast<HierarchicalOperation>(&happened);
    if (!plannedOnNode || !happenedOnNode || !haveOneNode(*plannedOnNode, *happenedOnNode))
    {
        return false;
    }
    const auto* plannedInsertion = cast<ChangedInsertion::Insertion>(&planned);
    const auto* happenedInsertion = cast<ChangedInsertion::Insertion>(&happened);
    if (plannedInsertion && happenedInsertion)
    {
        closeTyping();
        _passed.emplace_back(ChangedInsertion(*plannedInsertion, *happenedInsertion));
        return true;
    }
    const auto* plannedSetting = cast<SetPropertyOperation>(&planned);
    const auto* happenedSetting = cast<SetPropertyOperation>(&happened);
    if (plannedSetting && happenedSetting && plannedSetting->getPropertyID() == happenedSetting->getPropertyID())
    {
        closeTyping();
        _passed.emplace_back(OwnChange{makeSetting(*plannedSetting, *happenedSetting)});
        return true;
    }
    return haveEqualPlaces(*plannedOnNode, *happenedOnNode);
}

OperationUPtr Bridge::cross(const Operation& operation)
{
    closeTyping();
    std::vector<Passed> passedBehind;
    passedBehind.reserve(_passed.size());
    OperationUPtr crossing = cloneOperation(operation);
    for (const Passed& passed : _passed)
    {
        crossing = crossOne(*crossing, passed, passedBehind);
    }
    _passedBefore = std::exchange(_passed, std::move(passedBehind));
    return crossing;
}

/// Gives `operation` past `passed`, and appends `passed` past `operation`.
OperationUPtr Bridge::crossOne(const Operation& operation, Passed passed, std::vector<Passed>& passedBehind) const
{
    OperationPtr otherBehind;
    const Overloaded crossEach{[&](const OperationPtr& other)
                               {
                                   OperationUPtr crossed =
                                       crossOperation(operation, other, TieResolveCondition::SecondWins, otherBehind);
                                   if (otherBehind)
                                   {
                                       passedBehind.emplace_back(std::move(otherBehind));
                                   }
                                   return crossed;
                               },
                               [&](const OwnChange& change)
                               {
                                   OperationUPtr crossed = crossOperation(operation, change._operation,
                                                                          TieResolveCondition::FirstWins, otherBehind);
                                   if (otherBehind)
                                   {
                                       passedBehind.emplace_back(OwnChange{std::move(otherBehind)});
                                   }
                                   return crossed;
                               },
                               [&](ChangedInsertion& changed)
                               {
                                   OperationUPtr crossed = changed.cross(operation, _transformer);
                                   if (!changed.isOver())
                                   {
                                       passedBehind.emplace_back(std::move(changed));
                                   }
                                   return crossed;
                               }};
    return std::visit(crossEach, passed);
}

/// Gives `operation` past `other`, and puts `other` past `operation` into `otherBehind`, unless nothing is left of it.
OperationUPtr Bridge::crossOperation(const Operation& operation, const OperationPtr& other,
                                     TieResolveCondition tieResolveCondition, OperationPtr& otherBehind) const
{
    OperationUPtr crossed = _transformer.include(operation, *other, tieResolveCondition);
    OperationUPtr behind = _transformer.include(*other, operation, getOpposite(tieResolveCondition));
    if (removesSlots(*crossed))
    {
        crossed = markInstead(*crossed);
        behind = markInstead(*behind);
    }
    if (!cast<EmptyOperation>(behind.get()))
    {
        otherBehind = std::move(behind);
    }
    return crossed;
}

void Bridge::follow(BaseClientEditingStateTransformer& transformer, Selections& selections)
{
    closeTyping();
    const auto followOperation = [&](const OperationPtr& operation)
    { includeInSelections(transformer, *operation, selections); };
    const Overloaded followEach{followOperation, [&](const OwnChange& change) { followOperation(change._operation); },
                                [&](const ChangedInsertion& changed)
                                {
                                    for (auto& [client, selection] : selections)
                                    {
                                        changed.follow(selection.getSelectionBegin());
                                        changed.follow(selection.getSelectionEnd());
                                    }
                                }};
    for (const Passed& passed : _passed)
    {
        std::visit(followEach, passed);
    }
}

} // namespace Zem::CollaborationSession

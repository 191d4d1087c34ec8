#include "Sharing/CS_Bridge.h"

#include "Editing/CS_Stretch.h"
#include "Sharing/CS_Looks.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_PartialMarking.h"
#include "Sharing/CS_SettlingTransformer.h"

#include "CE_InverseOperation.h"
#include "CE_MapOperation.h"
#include "CE_OperationEquality.h"
#include "CE_SetPropertyOperation.h"

#include "DClb_DocumentPositionTransformer.h"
#include "EditingState/DClb_DOMEditingStateTransformer.h"

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

/// Whether one may have become the other.
bool areOfOneKind(const Operation& planned, const Operation& happened)
{
    const auto* plannedOnNode = cast<HierarchicalOperation>(&planned);
    const auto* happenedOnNode = cast<HierarchicalOperation>(&happened);
    return plannedOnNode && happenedOnNode && typeid(planned) == typeid(happened) &&
           haveOneNode(*plannedOnNode, *happenedOnNode);
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

void Bridge::append(const Action& action)
{
    append(action._operation);
    if (action._meaning)
    {
        const auto& looks = action._meaning->_looks;
        _looks.insert(_looks.end(), looks.begin(), looks.end());
        const auto& typedApart = action._meaning->_typedApart;
        _typedApart.insert(_typedApart.end(), typedApart.begin(), typedApart.end());
    }
}

void Bridge::append(std::shared_ptr<const Operation> operation)
{
    const auto* composite = cast<CompositeOperation>(operation.get());
    if (composite && composite->getKind() == CompositeKind::Plain)
    {
        for (const OperationUPtr& part : composite->getParts())
        {
            append(cloneOperation(*part));
        }
        return;
    }
    moveMeaning(*operation);
    if (cast<EmptyOperation>(operation.get()) || _typing.takeIn(*operation))
    {
        return;
    }
    closeTyping();
    if (!_typing.takeIn(*operation))
    {
        _passed.push_back({std::move(operation)});
    }
}

void Bridge::appendOwn(std::shared_ptr<const Operation> operation)
{
    closeTyping();
    _passed.push_back({std::move(operation), TieResolveCondition::FirstWins});
}

Bridge::Step Bridge::makeOwnStep(OperationUPtr operation)
{
    return {OperationPtr(std::move(operation)), TieResolveCondition::FirstWins};
}

void Bridge::moveMeaning(const Operation& operation)
{
    std::erase_if(_looks, [&](LookSetting& setting) { return !moveStretch(setting._stretch, operation); });
    std::erase_if(_typedApart, [&](Stretch& stretch) { return !moveStretch(stretch, operation); });
}

void Bridge::overrideLooks(const std::vector<LookSetting>& looks)
{
    for (const LookSetting& look : looks)
    {
        _looks = withoutLater(std::move(_looks), look);
    }
}

void Bridge::closeTyping()
{
    for (OperationUPtr& operation : _typing.makeOperations())
    {
        _passed.push_back({OperationPtr(std::move(operation))});
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
        appendChangeAmongOthers(original, planned, composite->getParts());
        return;
    }
    if (appendPartialMarking(original, planned, happened))
    {
        return;
    }
    refuse(original);
    appendOwn(cloneOperation(happened));
}

/// `parts` are what became of `planned`, what had to be done for it before, and what came with it.
void Bridge::appendChangeAmongOthers(const Operation& original, const Operation& planned,
                                     const std::vector<OperationUPtr>& parts)
{
    const auto same = std::find_if(parts.begin(), parts.end(),
                                   [&](const OperationUPtr& part) { return areOfOneKind(planned, *part); });
    const auto change = same == parts.end() ? parts.begin() : same;
    OperationUPtr behind = cloneOperation(planned);
    for (auto part = parts.begin(); part != change; ++part)
    {
        appendOwn(_transformer.include(**part, *behind, TieResolveCondition::FirstWins));
        behind = _transformer.include(*behind, **part, TieResolveCondition::SecondWins);
    }
    appendChange(original, *behind, **change);
    for (auto part = change + 1; part != parts.end(); ++part)
    {
        appendOwn(cloneOperation(**part));
    }
}

/// Stands on the way from the operation's end to what was there before it, and not at the end of the bridge: what
/// somebody else did below an element that `original` removes isn't shadowed then, for the element was never gone.
void Bridge::refuse(const Operation& original)
{
    _passed = _passedBefore;
    leaveOut(original);
}

void Bridge::leaveOut(const Operation& original)
{
    closeTyping();
    _passed.insert(_passed.begin(), makeOwnStep(makeReversal(original)));
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
    leaveOut(*parts->_refused);
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
        _passed.push_back({ChangedInsertion(*plannedInsertion, *happenedInsertion)});
        return true;
    }
    const auto* plannedSetting = cast<SetPropertyOperation>(&planned);
    const auto* happenedSetting = cast<SetPropertyOperation>(&happened);
    if (plannedSetting && happenedSetting && plannedSetting->getPropertyID() == happenedSetting->getPropertyID())
    {
        appendOwn(makeSetting(*plannedSetting, *happenedSetting));
        return true;
    }
    return haveEqualPlaces(*plannedOnNode, *happenedOnNode);
}

OperationUPtr Bridge::cross(const Operation& operation, Values values)
{
    closeTyping();
    Steps behind;
    behind.reserve(_passed.size());
    OperationUPtr crossing = cloneOperation(operation);
    for (const Step& step : _passed)
    {
        crossing = crossStep(*crossing, step, values, behind);
    }
    _passedBefore = std::exchange(_passed, std::move(behind));
    return crossing;
}

/// Gives `operation` past `step`, and appends what is left of `step` past `operation`.
OperationUPtr Bridge::crossStep(const Operation& operation, Step step, Values values, Steps& behind) const
{
    if (auto* changed = std::get_if<ChangedInsertion>(&step._change))
    {
        OperationUPtr crossed = changed->cross(operation, _transformer);
        if (!changed->isOver())
        {
            behind.push_back(std::move(step));
        }
        return crossed;
    }
    const Operation& other = *std::get<OperationPtr>(step._change);
    // Of two things for one place the one that was there earlier stands in front, but of two values the later one
    // stands.
    const bool isLaterValue = values == Values::LaterStands && areSettingsOfOneThing(operation, other);
    const TieResolveCondition tie = isLaterValue ? TieResolveCondition::FirstWins : step._tie;
    OperationUPtr crossed = _transformer.include(operation, other, tie);
    OperationUPtr otherBehind = _transformer.include(other, operation, getOpposite(tie));
    if (removesSlots(*crossed))
    {
        crossed = markInstead(*crossed);
        otherBehind = markInstead(*otherBehind);
    }
    if (!cast<EmptyOperation>(otherBehind.get()))
    {
        behind.push_back({OperationPtr(std::move(otherBehind)), step._tie});
    }
    return crossed;
}

Bridge::Mark Bridge::getMark()
{
    closeTyping();
    Mark mark;
    mark._passed = _passed;
    mark._looks = _looks;
    mark._typedApart = _typedApart;
    return mark;
}

void Bridge::returnTo(Mark mark)
{
    _passed = std::move(mark._passed);
    _looks = std::move(mark._looks);
    _typedApart = std::move(mark._typedApart);
}

void Bridge::follow(BaseClientEditingStateTransformer& transformer, Selections& selections)
{
    closeTyping();
    follow(_passed, transformer, selections);
}

void Bridge::follow(const Steps& steps, BaseClientEditingStateTransformer& transformer, Selections& selections)
{
    for (const Step& step : steps)
    {
        if (const auto* changed = std::get_if<ChangedInsertion>(&step._change))
        {
            for (auto& [client, selection] : selections)
            {
                changed->follow(selection.getSelectionBegin());
                changed->follow(selection.getSelectionEnd());
            }
            continue;
        }
        includeInSelections(transformer, *std::get<OperationPtr>(step._change), selections);
    }
}

bool Bridge::follow(Stretch& stretch)
{
    closeTyping();
    return follow(_passed, stretch);
}

bool Bridge::followBefore(Stretch& stretch) const
{
    return follow(_passedBefore, stretch);
}

bool Bridge::follow(const Steps& steps, Stretch& stretch)
{
    DOMCollaboration::DOMEditingStateTransformer transformer(
        std::make_shared<DOMCollaboration::DocumentPositionTransformer>());
    Selections single = {{ClientID(), std::move(stretch)}};
    follow(steps, transformer, single);
    if (single.empty())
    {
        return false;
    }
    stretch = std::move(single.begin()->second);
    return true;
}

} // namespace Zem::CollaborationSession

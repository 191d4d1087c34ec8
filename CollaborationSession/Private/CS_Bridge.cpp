#include "CS_Bridge.h"

#include "CS_MoveSelections.h"

#include "CE_InverseOperation.h"
#include "CE_MapOperation.h"
#include "CE_OperationEquality.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <typeinfo>

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

void Bridge::appendChange(const Operation& planned, const Operation& happened)
{
    if (areDeeplyEqual(planned, happened) || appendChangeOnNode(planned, happened))
    {
        return;
    }
    const auto* composite = cast<CompositeOperation>(&happened);
    if (composite && cast<AtomicOperation>(&planned))
    {
        // What was planned, and what came with it.
        appendChange(planned, *composite->getParts().front());
        for (std::size_t index = 1; index < composite->getParts().size(); ++index)
        {
            append(cloneOperation(*composite->getParts()[index]));
        }
        return;
    }
    append(makeReversal(planned));
    append(cloneOperation(happened));
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
        append(makeSetting(*plannedSetting, *happenedSetting));
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
    _passed = std::move(passedBehind);
    return crossing;
}

/// Gives `operation` past `passed`, and appends `passed` past `operation`.
OperationUPtr Bridge::crossOne(const Operation& operation, Passed passed, std::vector<Passed>& passedBehind) const
{
    if (auto* changed = std::get_if<ChangedInsertion>(&passed))
    {
        OperationUPtr crossed = changed->cross(operation);
        passedBehind.push_back(std::move(passed));
        return crossed;
    }
    const auto& other = std::get<std::shared_ptr<const Operation>>(passed);
    OperationUPtr crossed = _transformer.include(operation, *other, TieResolveCondition::SecondWins);
    std::shared_ptr<const Operation> otherBehind =
        _transformer.include(*other, operation, TieResolveCondition::FirstWins);
    if (!cast<EmptyOperation>(otherBehind.get()))
    {
        passedBehind.emplace_back(std::move(otherBehind));
    }
    return crossed;
}

void Bridge::follow(BaseClientEditingStateTransformer& transformer, Selections& selections)
{
    closeTyping();
    for (const Passed& passed : _passed)
    {
        if (const auto* changed = std::get_if<ChangedInsertion>(&passed))
        {
            for (auto& [client, selection] : selections)
            {
                changed->follow(selection.getSelectionBegin());
                changed->follow(selection.getSelectionEnd());
            }
            continue;
        }
        includeInSelections(transformer, *std::get<std::shared_ptr<const Operation>>(passed), selections);
    }
}

} // namespace Zem::CollaborationSession

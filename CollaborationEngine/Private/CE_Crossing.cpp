#include "CE_Crossing.h"

#include "CE_DropTwins.h"
#include "CE_NodeOperands.h"
#include "CE_OperationKinds.h"
#include "CE_UnitFrame.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

void Crossing::cross(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const
{
    Parts firstResult;
    firstResult.reserve(first.size());
    for (std::size_t index = 0; index < first.size(); ++index)
    {
        const bool isLast = index + 1 == first.size();
        Parts row;
        row.push_back(std::move(first[index]));
        crossOne(row, second, tieResolveCondition, isSecondNeeded || !isLast);
        appendMoved(firstResult, row);
    }
    first = std::move(firstResult);
}

/// `first` is what became of one part.
void Crossing::crossOne(Parts& first, Parts& second, TieResolveCondition tieResolveCondition, bool isSecondNeeded) const
{
    Parts secondResult;
    secondResult.reserve(second.size());
    for (OperationUPtr& part : second)
    {
        Parts column;
        column.push_back(std::move(part));
        if (first.size() == 1)
        {
            crossCell(first, column, tieResolveCondition, isSecondNeeded);
        }
        else
        {
            cross(first, column, tieResolveCondition, isSecondNeeded);
        }
        appendMoved(secondResult, column);
    }
    second = std::move(secondResult);
}

void Crossing::crossCell(Parts& first, Parts& second, TieResolveCondition tieResolveCondition,
                         bool isSecondNeeded) const
{
    if (isUnit(*first.front()) || isUnit(*second.front()))
    {
        crossUnits(first, second, tieResolveCondition);
        return;
    }
    OperationUPtr firstResult = includeSingle(*first.front(), *second.front(), tieResolveCondition);
    firstResult->inheritIDIfPossibleImpl(*first.front());
    if (isSecondNeeded)
    {
        OperationUPtr secondResult = includeSingle(*second.front(), *first.front(), getOpposite(tieResolveCondition));
        secondResult->inheritIDIfPossibleImpl(*second.front());
        second = splitResult(std::move(secondResult));
    }
    first = splitResult(std::move(firstResult));
}

void Crossing::crossUnits(Parts& first, Parts& second, TieResolveCondition tieResolveCondition) const
{
    if (joinRestoring(first, second, tieResolveCondition) ||
        joinRestoring(second, first, getOpposite(tieResolveCondition)))
    {
        return;
    }
    UnitFrame firstFrame(*first.front());
    UnitFrame secondFrame(*second.front());
    firstFrame.crossChange(*second.front(), _transformer, tieResolveCondition);
    secondFrame.crossChange(*first.front(), _transformer, getOpposite(tieResolveCondition));
    Parts firstParts = takeUnitApart(std::move(first));
    Parts secondParts = takeUnitApart(std::move(second));
    const Parts firstReversals = makeReversals(firstParts);
    if (firstFrame.isUnit())
    {
        dropPartsOfRestored(firstParts, makeReversals(secondParts));
    }
    if (secondFrame.isUnit())
    {
        dropPartsOfRestored(secondParts, firstReversals);
    }
    dropTwins(firstParts, secondParts);
    cross(firstParts, secondParts, tieResolveCondition, true);
    first = std::move(firstFrame).putAround(std::move(firstParts));
    second = std::move(secondFrame).putAround(std::move(secondParts));
}

/// Drops the parts that a unit brings along for an element that the other side restores, too. Whatever restores the
/// element brings all that was done to it: in what it puts back, or along with it. That doesn't hold for the keys of
/// maps, under which each side may put a value of its own.
/// `reversals` take back what the other side does: a part of such an element would be shadowed by them.
void Crossing::dropPartsOfRestored(Parts& unit, const Parts& reversals) const
{
    const OperationNodeAddress restoredIn = getFirstSingle(*unit.front()).getNodeAddress();
    const auto isDoneByOther = [&](const OperationUPtr& part)
    {
        return std::any_of(reversals.begin(), reversals.end(),
                           [&](const OperationUPtr& reversal)
                           {
                               const HierarchicalOperation& killer = getFirstSingle(*reversal);
                               return killer.getFamily() != HierarchicalOperation::Family::Map &&
                                      killer.getNodeAddress() == restoredIn && isKilled(*part, *reversal);
                           });
    };
    std::erase_if(unit, isDoneByOther);
}

bool Crossing::isKilled(const Operation& part, const Operation& reversal) const
{
    const OperationNodeAddress& address = getFirstSingle(part).getNodeAddress();
    if (const auto* unit = getIf<CompositeOperation>(part))
    {
        // What it brings along lies below what it restores.
        return isKilled(*unit->getParts().front(), reversal);
    }
    if (address.getSize() <= getFirstSingle(reversal).getNodeAddress().getSize())
    {
        return false;
    }
    const OperationUPtr behind = includeSingle(part, reversal, TieResolveCondition::SecondWins);
    return countDeadPlaces(*behind) > countDeadPlaces(part);
}

/// If `restoring` is a unit whose restoring ends a shadow on `shadowed`, the latter joins it behind those that it
/// brings along already: it was made after these, as they were planned, and knows them.
bool Crossing::joinRestoring(Parts& restoring, Parts& shadowed, TieResolveCondition tieResolveCondition) const
{
    const unsigned long deadPlacesCount = countDeadPlaces(*shadowed.front());
    if (!isUnit(*restoring.front()) || deadPlacesCount == 0)
    {
        return false;
    }
    auto& unit = cast<CompositeOperation>(*restoring.front());
    ChangeOfRestoring& change = unit.getChange();
    const std::span<const OperationUPtr> planned = change.isKnown() ? getParts(change._planned) : unit.getParts();
    boost::optional<Parts> unshadowed = endShadows(*shadowed.front(), planned, getOpposite(tieResolveCondition));
    if (!unshadowed)
    {
        return false;
    }
    if (change.isKnown())
    {
        transformAgainstChange(*unshadowed, change, getOpposite(tieResolveCondition));
    }
    else if (unit.getKind() == CompositeKind::ChangedRestoring)
    {
        unshadowed = shadowForGood(*unshadowed);
    }
    for (const OperationUPtr& part : *unshadowed)
    {
        if (hasShadowEnded(*part, deadPlacesCount))
        {
            unit.getParts().push_back(cloneOperation(*part));
        }
    }
    shadowed = UnitFrame(*shadowed.front()).putAround(std::move(*unshadowed));
    return true;
}

/// The parts of `shadowed`, transformed against a restoring that ends a shadow on each; none if it doesn't.
boost::optional<OperationParts> Crossing::endShadows(const Operation& shadowed,
                                                     std::span<const OperationUPtr> restoring,
                                                     TieResolveCondition tieResolveCondition) const
{
    const unsigned long deadPlacesCount = countDeadPlaces(shadowed);
    Parts unshadowed;
    for (const OperationUPtr& shadowedPart : takeUnitApart(takeParts(shadowed)))
    {
        OperationUPtr pastRestoring = cloneOperation(*shadowedPart);
        for (const OperationUPtr& part : restoring)
        {
            if (countDeadPlaces(*pastRestoring) < deadPlacesCount)
            {
                break;
            }
            pastRestoring = _transformer.include(*pastRestoring, *part, tieResolveCondition);
        }
        if (!hasShadowEnded(*pastRestoring, deadPlacesCount))
        {
            return boost::none;
        }
        Parts parts = splitResult(std::move(pastRestoring));
        appendMoved(unshadowed, parts);
    }
    return unshadowed;
}

/// Transforms what joins a restoring, as that was planned, into what it has to be behind what happened.
void Crossing::transformAgainstChange(Parts& unshadowed, ChangeOfRestoring& change,
                                      TieResolveCondition tieResolveCondition) const
{
    Parts planned = takeUnitApart(takeParts(*change._planned));
    for (const OperationUPtr& part : unshadowed)
    {
        planned.push_back(cloneOperation(*part));
    }
    Parts difference = takeParts(*change._difference);
    cross(unshadowed, difference, tieResolveCondition, true);
    change = ChangeOfRestoring(std::make_unique<CompositeOperation>(std::move(planned), CompositeKind::Restoring),
                               makeOperationFromParts(std::move(difference)));
}

OperationUPtr Crossing::includeSingle(const Operation& first, const Operation& second,
                                      TieResolveCondition tieResolveCondition) const
{
    if (const auto* shadowed = getIf<ShadowedOperation>(second))
    {
        return _transformer.includeImpl(first, *shadowed, tieResolveCondition);
    }
    const AtomicOperation& secondAtomic = derefPtr(getIf<AtomicOperation>(second));
    if (const auto* shadowed = getIf<ShadowedOperation>(first))
    {
        return _transformer.includeImpl(*shadowed, secondAtomic, tieResolveCondition);
    }
    return _transformer.includeImpl(derefPtr(getIf<AtomicOperation>(first)), secondAtomic, tieResolveCondition);
}

} // namespace Zem::CollaborationEngine

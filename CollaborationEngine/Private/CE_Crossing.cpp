#include "CE_Crossing.h"

#include "CE_InverseOperation.h"
#include "CE_NodeOperands.h"
#include "CE_OperationKinds.h"

#include "Util_Cast.h"

#include <algorithm>
#include <iterator>

namespace Zem::CollaborationEngine
{

namespace
{

using Parts = Crossing::Parts;

void appendMoved(Parts& target, Parts& source)
{
    std::move(source.begin(), source.end(), std::back_inserter(target));
}

CompositeKind getKind(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    return composite ? composite->getKind() : CompositeKind::Plain;
}

bool isUnit(const Operation& operation)
{
    return getKind(operation) != CompositeKind::Plain;
}

/// Takes apart plain composites, whatever their nesting, with a stack of its own.
template<class Consume>
void forEachPart(const Operation& operation, const Consume& consume)
{
    std::vector<const Operation*> pending{&operation};
    while (!pending.empty())
    {
        const Operation* next = pending.back();
        pending.pop_back();
        const auto* composite = getIf<CompositeOperation>(*next);
        if (composite && !composite->bringsShadowedAlong())
        {
            const Parts& parts = composite->getParts();
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
            {
                pending.push_back(part->get());
            }
        }
        else if (!getIf<EmptyOperation>(*next))
        {
            consume(*next);
        }
    }
}

/// The parts of a single result, which is handed over.
Parts splitResult(OperationUPtr result)
{
    auto* composite = getIf<CompositeOperation>(*result);
    if (composite && !composite->bringsShadowedAlong())
    {
        return std::move(composite->getParts());
    }
    Parts parts;
    if (!getIf<EmptyOperation>(*result))
    {
        parts.push_back(std::move(result));
    }
    return parts;
}

/// The parts inside a unit; of any other operation, itself.
Parts takeUnitApart(Parts parts)
{
    if (parts.size() == 1 && isUnit(*parts.front()))
    {
        return std::move(cast<CompositeOperation>(*parts.front()).getParts());
    }
    return parts;
}

/// The operation itself, or the first part of it; of a shadowed one, the original.
const HierarchicalOperation& getFirstSingle(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    return composite ? getFirstSingle(*composite->getParts().front()) : makeNodeOperand(operation)._operation;
}

/// Takes units apart, too.
void appendSingles(OperationUPtr operation, Parts& singles)
{
    if (auto* composite = getIf<CompositeOperation>(*operation))
    {
        for (OperationUPtr& part : composite->getParts())
        {
            appendSingles(std::move(part), singles);
        }
    }
    else if (!getIf<EmptyOperation>(*operation))
    {
        singles.push_back(std::move(operation));
    }
}

Parts shadowForGood(const Parts& parts)
{
    Parts shadowed;
    for (const OperationUPtr& part : parts)
    {
        std::unique_ptr<AtomicOperation> original;
        getFirstSingle(*part).cloneTo(original);
        shadowed.push_back(std::make_unique<ShadowedOperation>(std::move(original)));
        shadowed.back()->inheritIDIfPossibleImpl(*part);
    }
    return shadowed;
}

Parts makeReversals(const Parts& parts)
{
    Parts reversals;
    for (const OperationUPtr& part : parts)
    {
        appendSingles(makeReversal(*part), reversals);
    }
    return reversals;
}

/// What holds the parts of a unit together.
class UnitFrame
{
public:
    explicit UnitFrame(const Operation& operation)
        : _kind(getKind(operation))
    {
        _id.inheritIDIfPossibleImpl(operation);
    }

    bool isUnit() const
    {
        return _kind != CompositeKind::Plain;
    }

    /// Makes the parts one unit again, if they were one.
    Parts putAround(Parts parts) const
    {
        const std::size_t smallestUnit = _kind == CompositeKind::ChangedRestoring ? 1 : 2;
        if (!isUnit() || parts.size() < smallestUnit)
        {
            return parts;
        }
        auto unit = std::make_unique<CompositeOperation>(std::move(parts), _kind);
        unit->inheritIDIfPossibleImpl(_id);
        Parts result;
        result.push_back(std::move(unit));
        return result;
    }

private:
    CompositeKind _kind;
    EmptyOperation _id;
};

} // namespace

Parts Crossing::takeParts(const Operation& operation)
{
    Parts parts;
    forEachPart(operation, [&](const Operation& part) { parts.push_back(cloneOperation(part)); });
    return parts;
}

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
    if (isSecondNeeded)
    {
        second = splitResult(includeSingle(*second.front(), *first.front(), getOpposite(tieResolveCondition)));
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
    const UnitFrame firstFrame(*first.front());
    const UnitFrame secondFrame(*second.front());
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
    cross(firstParts, secondParts, tieResolveCondition, true);
    first = firstFrame.putAround(std::move(firstParts));
    second = secondFrame.putAround(std::move(secondParts));
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
/// brings along already: it was made after these, and knows them.
bool Crossing::joinRestoring(Parts& restoring, Parts& shadowed, TieResolveCondition tieResolveCondition) const
{
    const unsigned long deadPlacesCount = countDeadPlaces(*shadowed.front());
    if (!isUnit(*restoring.front()) || deadPlacesCount == 0)
    {
        return false;
    }
    auto& unit = cast<CompositeOperation>(*restoring.front());
    Parts awakened;
    for (const OperationUPtr& shadowedPart : takeUnitApart(takeParts(*shadowed.front())))
    {
        OperationUPtr pastRestoring = cloneOperation(*shadowedPart);
        for (const OperationUPtr& part : unit.getParts())
        {
            if (countDeadPlaces(*pastRestoring) < deadPlacesCount)
            {
                break;
            }
            pastRestoring = _transformer.include(*pastRestoring, *part, getOpposite(tieResolveCondition));
        }
        if (!isAwakened(*pastRestoring, deadPlacesCount))
        {
            return false;
        }
        Parts parts = splitResult(std::move(pastRestoring));
        appendMoved(awakened, parts);
    }
    if (unit.getKind() == CompositeKind::ChangedRestoring)
    {
        shadowed = shadowForGood(takeUnitApart(std::move(shadowed)));
        return true;
    }
    for (const OperationUPtr& part : awakened)
    {
        unit.getParts().push_back(cloneOperation(*part));
    }
    shadowed = UnitFrame(*shadowed.front()).putAround(std::move(awakened));
    return true;
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

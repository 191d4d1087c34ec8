#include "CE_Crossing.h"

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

bool isUnit(const Operation& operation)
{
    const auto* composite = getIf<CompositeOperation>(operation);
    return composite && composite->bringsShadowedAlong();
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

/// What holds the parts of a unit together.
class UnitFrame
{
public:
    explicit UnitFrame(const Operation& operation)
        : _isUnit(CollaborationEngine::isUnit(operation))
    {
        _id.inheritIDIfPossibleImpl(operation);
    }

    bool isUnit() const
    {
        return _isUnit;
    }

    /// Makes the parts one unit again, if they were one.
    Parts putAround(Parts parts) const
    {
        if (!_isUnit || parts.size() < 2)
        {
            return parts;
        }
        auto unit = std::make_unique<CompositeOperation>(std::move(parts), true);
        unit->inheritIDIfPossibleImpl(_id);
        Parts result;
        result.push_back(std::move(unit));
        return result;
    }

private:
    bool _isUnit;
    EmptyOperation _id;
};

const HierarchicalOperation& getOriginal(const Operation& operation)
{
    return makeNodeOperand(operation)._operation;
}

/// Two restorings can bring the same operation along.
bool isSameOperation(const Operation& left, const Operation& right)
{
    return left.getID() && left.getID() == right.getID() &&
           getOriginal(left).getNodeAddress() == getOriginal(right).getNodeAddress();
}

/// Takes out of both what both bring along.
void dropCommonParts(Parts& first, Parts& second)
{
    for (auto part = first.begin(); part != first.end();)
    {
        const auto same = std::find_if(second.begin(), second.end(),
                                       [&](const OperationUPtr& other) { return isSameOperation(**part, *other); });
        if (same == second.end())
        {
            ++part;
            continue;
        }
        second.erase(same);
        part = first.erase(part);
    }
}

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
    if (firstFrame.isUnit() && secondFrame.isUnit())
    {
        dropCommonParts(firstParts, secondParts);
    }
    cross(firstParts, secondParts, tieResolveCondition, true);
    first = firstFrame.putAround(std::move(firstParts));
    second = secondFrame.putAround(std::move(secondParts));
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
        if (countDeadPlaces(*pastRestoring) >= deadPlacesCount)
        {
            return false;
        }
        Parts parts = splitResult(std::move(pastRestoring));
        appendMoved(awakened, parts);
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

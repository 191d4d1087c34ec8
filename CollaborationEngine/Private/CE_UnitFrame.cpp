#include "CE_UnitFrame.h"

#include "Util_Cast.h"

namespace Zem::CollaborationEngine
{

UnitFrame::UnitFrame(const Operation& operation)
    : _kind(getKind(operation))
{
    _id.inheritIDIfPossibleImpl(operation);
    if (_kind == CompositeKind::ChangedRestoring)
    {
        _change = ChangeOfRestoring(cast<CompositeOperation>(operation).getChange());
    }
}

void UnitFrame::crossChange(const Operation& other, const BaseOperationTransformer& transformer,
                            TieResolveCondition tieResolveCondition)
{
    if (!_change.isKnown())
    {
        return;
    }
    const OperationUPtr otherBehind = transformer.include(other, *_change._planned, getOpposite(tieResolveCondition));
    _change._planned = transformer.include(*_change._planned, other, tieResolveCondition);
    _change._difference = transformer.include(*_change._difference, *otherBehind, tieResolveCondition);
}

OperationParts UnitFrame::putAround(OperationParts parts) &&
{
    const bool isChanged = _kind == CompositeKind::ChangedRestoring;
    const std::size_t smallestUnit = isChanged ? 1 : 2;
    if (!isUnit() || parts.size() < smallestUnit)
    {
        return parts;
    }
    auto unit = isChanged ? std::make_unique<CompositeOperation>(std::move(parts), std::move(_change))
                          : std::make_unique<CompositeOperation>(std::move(parts), _kind);
    unit->inheritIDIfPossibleImpl(_id);
    OperationParts result;
    result.push_back(std::move(unit));
    return result;
}

} // namespace Zem::CollaborationEngine

#include "CE_SlotMapping.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

namespace
{

unsigned long mapSlotPastMove(unsigned long slot, unsigned long moved, unsigned long target)
{
    if (slot == moved)
    {
        return target;
    }
    const unsigned long withoutMoved = slot - (moved < slot ? 1 : 0);
    return withoutMoved + (target <= withoutMoved ? 1 : 0);
}

SlotPieces mapSlotsPastInsertion(const SlotPieces& slots, const SlotPieces& insertions)
{
    SlotPieces result;
    auto insertion = insertions.begin();
    unsigned long shift = 0;
    for (const SlotPiece& piece : slots)
    {
        unsigned long begin = piece._begin;
        while (begin < piece.getEnd())
        {
            for (; insertion != insertions.end() && insertion->_begin <= begin; ++insertion)
            {
                shift += insertion->_count;
            }
            const unsigned long end =
                insertion == insertions.end() ? piece.getEnd() : std::min(piece.getEnd(), insertion->_begin);
            SlotPiece part = getPart(piece, begin - piece._begin, end - begin);
            part._begin += shift;
            appendPiece(result, part);
            begin = end;
        }
    }
    return result;
}

SlotPieces mapSlotsPastRemoval(const SlotPieces& slots, const SlotPieces& removed)
{
    SlotPieces result;
    RemovalWalk walk(removed);
    forEachOverlap(slots, removed,
                   [&](SlotPiece part, const SlotPiece* hole)
                   {
                       if (!hole)
                       {
                           part._begin = walk.mapGap(part._begin);
                           appendPiece(result, part);
                       }
                   });
    return result;
}

SlotPieces mapSlotsPastMove(const SlotPieces& slots, unsigned long moved, unsigned long target)
{
    SlotPieces parts;
    const auto addStretch = [&](const SlotPiece& piece, unsigned long begin, unsigned long end)
    {
        while (begin < end)
        {
            // The stretch lies on one side of the moved slot; it is cut where that one comes to stand inside it.
            const unsigned long withoutMoved = begin - (moved < begin ? 1 : 0);
            const bool isCut = withoutMoved < target && target < withoutMoved + (end - begin);
            const unsigned long count = isCut ? target - withoutMoved : end - begin;
            SlotPiece part = getPart(piece, begin - piece._begin, count);
            part._begin = mapSlotPastMove(begin, moved, target);
            parts.push_back(part);
            begin += count;
        }
    };
    for (const SlotPiece& piece : slots)
    {
        const unsigned long cut = std::clamp(moved, piece._begin, piece.getEnd());
        const bool hasMoved = cut < piece.getEnd() && cut == moved;
        addStretch(piece, piece._begin, cut);
        if (hasMoved)
        {
            SlotPiece part = getPart(piece, cut - piece._begin, 1);
            part._begin = target;
            parts.push_back(part);
        }
        addStretch(piece, cut + (hasMoved ? 1 : 0), piece.getEnd());
    }
    std::sort(parts.begin(), parts.end(),
              [](const SlotPiece& left, const SlotPiece& right) { return left._begin < right._begin; });
    SlotPieces result;
    for (const SlotPiece& part : parts)
    {
        appendPiece(result, part);
    }
    return result;
}

} // namespace

RemovalWalk::RemovalWalk(const SlotPieces& removed)
    : _hole(removed.begin())
    , _end(removed.end())
{
}

unsigned long RemovalWalk::mapGap(unsigned long gap)
{
    for (; _hole != _end && _hole->getEnd() <= gap; ++_hole)
    {
        _removedInFront += _hole->_count;
    }
    const bool isInHole = _hole != _end && _hole->_begin < gap;
    return (isInHole ? _hole->_begin : gap) - _removedInFront;
}

boost::optional<unsigned long> mapSlot(unsigned long slot, const SlotOperation& operation)
{
    switch (operation._action)
    {
    case SlotAction::Insertion:
    {
        unsigned long result = slot;
        for (const SlotPiece& piece : operation._pieces)
        {
            result += piece._begin <= slot ? piece._count : 0;
        }
        return result;
    }
    case SlotAction::Removal:
        if (findPiece(slot, operation._pieces))
        {
            return boost::none;
        }
        return mapGapPastRemoval(slot, operation._pieces);
    case SlotAction::Move:
        return mapSlotPastMove(slot, operation._pieces.front()._begin, operation._target);
    case SlotAction::Marking:
    case SlotAction::Restoring:
    case SlotAction::Leaving:
    case SlotAction::Releasing:
        return slot;
    }
    ZEM_FAIL("The action isn't one of the matrix.");
}

unsigned long mapGapPastRemoval(unsigned long gap, const SlotPieces& removed)
{
    return RemovalWalk(removed).mapGap(gap);
}

const SlotPiece* findPiece(unsigned long slot, const SlotPieces& pieces)
{
    for (const SlotPiece& piece : pieces)
    {
        if (piece._begin <= slot && slot < piece.getEnd())
        {
            return &piece;
        }
    }
    return nullptr;
}

SlotPieces mapSlots(const SlotPieces& slots, const SlotOperation& operation)
{
    switch (operation._action)
    {
    case SlotAction::Insertion:
        return mapSlotsPastInsertion(slots, operation._pieces);
    case SlotAction::Removal:
        return mapSlotsPastRemoval(slots, operation._pieces);
    case SlotAction::Move:
        return mapSlotsPastMove(slots, operation._pieces.front()._begin, operation._target);
    case SlotAction::Marking:
    case SlotAction::Restoring:
    case SlotAction::Leaving:
    case SlotAction::Releasing:
        return slots;
    }
    ZEM_FAIL("The action isn't one of the matrix.");
}

SlotPiece getPart(const SlotPiece& piece, unsigned long offset, unsigned long count)
{
    SlotPiece part = piece;
    part._begin += offset;
    part._offset += offset;
    part._count = count;
    return part;
}

void appendPiece(SlotPieces& pieces, const SlotPiece& piece)
{
    if (!pieces.empty())
    {
        SlotPiece& last = pieces.back();
        const bool continues = last.getEnd() == piece._begin && last._items == piece._items &&
                               last._offset + last._count == piece._offset &&
                               last._holdersCount == piece._holdersCount && last._releasesAll == piece._releasesAll;
        if (continues)
        {
            last._count += piece._count;
            return;
        }
    }
    pieces.push_back(piece);
}

} // namespace Zem::CollaborationEngine

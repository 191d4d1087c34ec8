#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "DOM_PlaneSize.h"

#include "Util_Assert.h"

namespace Zem::DOMCollaboration
{

namespace PlaneWalk
{

namespace
{

// Each `fillPositionByPlaneIndex` looks for the element that stands `remaining` elements behind the first of a thing.
// If it is one of the thing's, the descriptor says so; otherwise the thing's elements are passed, and it returns false.

bool fillPositionByPlaneIndex(const DOM::Run& run, unsigned long& remaining, PlanePlace& descriptor)
{
    const unsigned long size = DOM::PlaneSize::of(run);
    if (remaining >= size)
    {
        remaining -= size;
        return false;
    }
    if (remaining > 0)
    {
        descriptor._kind = PlaceKind::Char;
        descriptor._byteIndex = remaining - 1;
        return true;
    }
    descriptor._kind = run.getKind() == DOM::RunKind::TextRun ? PlaceKind::TextRunTag : PlaceKind::AtomicRun;
    return true;
}

/// The rest of a paragraph, from the run of the descriptor to the mark.
bool fillPositionByPlaneIndex(const DOM::Paragraph& paragraph, unsigned long& remaining, PlanePlace& descriptor)
{
    const DOM::Runs& runs = paragraph.getRuns();
    for (; descriptor._runIndex < runs.size(); ++descriptor._runIndex)
    {
        if (fillPositionByPlaneIndex(derefPtr(runs[descriptor._runIndex]), remaining, descriptor))
        {
            return true;
        }
    }
    if (remaining > 0)
    {
        --remaining;
        return false;
    }
    descriptor._kind = PlaceKind::ParaMark;
    return true;
}

bool fillPositionByPlaneIndex(const DOM::Block& block, unsigned long& remaining, PlanePlace& descriptor)
{
    const bool isParagraph = block.getKind() == DOM::BlockKind::Paragraph;
    if (remaining == 0)
    {
        descriptor._kind = isParagraph ? PlaceKind::ParaTag : PlaceKind::AtomicBlock;
        return true;
    }
    --remaining;
    descriptor._runIndex = 0;
    return isParagraph && fillPositionByPlaneIndex(static_cast<const DOM::Paragraph&>(block), remaining, descriptor);
}

const DOM::Block& getBlock(const DOM::Blocks& blocks, unsigned long index)
{
    return derefPtr(blocks[index]);
}

const DOM::Block& getBlock(const ReadonlyVector<DOM::Blocks>& blocks, unsigned long index)
{
    return blocks[index];
}

/// From the beginning of the block of the descriptor on.
template<class Blocks>
boost::optional<PlanePlace> walkBlocks(const Blocks& blocks, unsigned long blockIndex, unsigned long remaining)
{
    for (; blockIndex < blocks.size(); ++blockIndex)
    {
        PlanePlace descriptor;
        descriptor._blockIndex = blockIndex;
        if (fillPositionByPlaneIndex(getBlock(blocks, blockIndex), remaining, descriptor))
        {
            return descriptor;
        }
    }
    return remaining == 0 ? boost::make_optional(PlanePlace{PlaceKind::TextEnd, blockIndex, 0, 0}) : boost::none;
}

/// The place in front of a run, or of the mark for the number of runs as `runIndex`.
PlanePlace getPlaceBeforeRun(const DOM::Blocks& blocks, unsigned long blockIndex, unsigned long runIndex)
{
    if (runIndex == 0)
    {
        return PlanePlace{PlaceKind::ParaTag, blockIndex, 0, 0};
    }
    const auto& paragraph = static_cast<const DOM::Paragraph&>(derefPtr(blocks[blockIndex]));
    PlanePlace place{PlaceKind::TextEnd, blockIndex, runIndex - 1, 0};
    const DOM::Run& previous = derefPtr(paragraph.getRuns()[place._runIndex]);
    unsigned long fromTagToLast = DOM::PlaneSize::of(previous) - 1;
    fillPositionByPlaneIndex(previous, fromTagToLast, place);
    return place;
}

PlanePlace getPlaceBeforeBlock(const DOM::Blocks& blocks, unsigned long blockIndex)
{
    ZEM_ASSERT(blockIndex > 0);
    const DOM::Block& previous = derefPtr(blocks[blockIndex - 1]);
    if (previous.getKind() != DOM::BlockKind::Paragraph)
    {
        return PlanePlace{PlaceKind::AtomicBlock, blockIndex - 1, 0, 0};
    }
    const unsigned long runsCount = static_cast<const DOM::Paragraph&>(previous).getRuns().size();
    return PlanePlace{PlaceKind::ParaMark, blockIndex - 1, runsCount, 0};
}

} // namespace

boost::optional<PlanePlace> find(const DOM::Blocks& blocks, IndexExcludingTombstones index)
{
    return walkBlocks(blocks, 0, index.get());
}

boost::optional<PlanePlace> find(const ReadonlyVector<DOM::Blocks>& blocks, IndexExcludingTombstones index)
{
    return walkBlocks(blocks, 0, index.get());
}

boost::optional<PlanePlace> findFrom(const DOM::Blocks& blocks, const PlanePlace& from, unsigned long distance)
{
    switch (from._kind)
    {
    case PlaceKind::TextEnd:
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaTag:
        return walkBlocks(blocks, from._blockIndex, distance);
    case PlaceKind::ParaMark:
    case PlaceKind::AtomicRun:
    case PlaceKind::TextRunTag:
    case PlaceKind::Char:
        break;
    default:
        ZEM_FAIL("Invalid enum value");
    }
    const auto& paragraph = static_cast<const DOM::Paragraph&>(derefPtr(blocks[from._blockIndex]));
    unsigned long remaining = from._kind == PlaceKind::Char ? distance + from._byteIndex + 1 : distance;
    PlanePlace descriptor{from._kind, from._blockIndex, from._runIndex, 0};
    return fillPositionByPlaneIndex(paragraph, remaining, descriptor)
               ? boost::make_optional(descriptor)
               : walkBlocks(blocks, from._blockIndex + 1, remaining);
}

PlanePlace getPlaceBefore(const DOM::Blocks& blocks, const PlanePlace& place)
{
    switch (place._kind)
    {
    case PlaceKind::TextEnd:
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaTag:
        return getPlaceBeforeBlock(blocks, place._blockIndex);
    case PlaceKind::ParaMark:
    case PlaceKind::AtomicRun:
    case PlaceKind::TextRunTag:
        return getPlaceBeforeRun(blocks, place._blockIndex, place._runIndex);
    case PlaceKind::Char:
        return place._byteIndex == 0
                   ? PlanePlace{PlaceKind::TextRunTag, place._blockIndex, place._runIndex, 0}
                   : PlanePlace{PlaceKind::Char, place._blockIndex, place._runIndex, place._byteIndex - 1};
    }
    ZEM_FAIL("Invalid enum value");
}

} // namespace PlaneWalk

namespace
{

PlanePlace requirePlace(const boost::optional<PlanePlace>& place)
{
    ZEM_ASSERT_MESSAGE(place, "Unexpected type in the source variant");
    return *place;
}

} // namespace

PlanePlace PlaneAnchor::find(const DOM::Blocks& blocks, IndexExcludingTombstones index)
{
    const unsigned long distanceInFront = index < _index ? (_index - index).get() : 0;
    if (_index.get() == 0 || distanceInFront > 2)
    {
        return requirePlace(PlaneWalk::find(blocks, index));
    }
    settle(blocks);
    if (distanceInFront == 2)
    {
        return PlaneWalk::getPlaceBefore(blocks, *_placeBefore);
    }
    return requirePlace(PlaneWalk::findFrom(blocks, *_placeBefore, (index - (_index - 1)).get()));
}

void PlaneAnchor::settleBehind(const DOM::Blocks& blocks, PlaneAnchor& other)
{
    ZEM_ASSERT(other._index <= _index);
    other.settle(blocks);
    if (other._placeBefore)
    {
        _placeBefore = requirePlace(PlaneWalk::findFrom(blocks, *other._placeBefore, (_index - other._index).get()));
    }
}

void PlaneAnchor::stepBack(const DOM::Blocks& blocks)
{
    ZEM_ASSERT(_index.get() > 0);
    --_index;
    _placeBefore = _placeBefore && _index.get() > 0
                       ? boost::make_optional(PlaneWalk::getPlaceBefore(blocks, *_placeBefore))
                       : boost::none;
}

void PlaneAnchor::settle(const DOM::Blocks& blocks)
{
    if (!_placeBefore && _index.get() > 0)
    {
        _placeBefore = requirePlace(PlaneWalk::find(blocks, _index - 1));
    }
}

} // namespace Zem::DOMCollaboration

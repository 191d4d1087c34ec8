#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_Assert.h"

namespace Zem::DOMCollaboration
{

namespace PlaneWalk
{

namespace
{

/// A walk forward: what is still to be passed, counted in elements from the one that it looks at next.
class Walker
{
public:
    Walker(const DOM::Blocks& blocks, unsigned long blockIndex, unsigned long remaining)
        : _blocks(blocks)
        , _blockIndex(blockIndex)
        , _remaining(remaining)
    {
    }

    /// Walks on from the beginning of the present block.
    boost::optional<PlanePlace> walkBlocks()
    {
        for (; _blockIndex < _blocks.size(); ++_blockIndex)
        {
            const DOM::Block& block = derefPtr(_blocks[_blockIndex]);
            if (_remaining == 0)
            {
                return makePlace(block.getKind() == DOM::BlockKind::Paragraph ? PlaceKind::ParaTag
                                                                              : PlaceKind::AtomicBlock);
            }
            --_remaining;
            if (block.getKind() != DOM::BlockKind::Paragraph)
            {
                continue;
            }
            if (const auto place = walkRuns(static_cast<const DOM::Paragraph&>(block), 0))
            {
                return place;
            }
        }
        return _remaining == 0 ? boost::make_optional(makePlace(PlaceKind::TextEnd)) : boost::none;
    }

    /// Walks on from the tag of run `runIndex` of `paragraph`, over its mark, and then over the blocks that follow.
    boost::optional<PlanePlace> walkOnFromRun(const DOM::Paragraph& paragraph, unsigned long runIndex)
    {
        if (const auto place = walkRuns(paragraph, runIndex))
        {
            return place;
        }
        ++_blockIndex;
        return walkBlocks();
    }

private:
    PlanePlace makePlace(PlaceKind kind, unsigned long runIndex = 0, unsigned long byteIndex = 0) const
    {
        return PlanePlace{kind, _blockIndex, runIndex, byteIndex};
    }

    /// The rest of a paragraph behind its tag; empty when the place lies behind its mark.
    boost::optional<PlanePlace> walkRuns(const DOM::Paragraph& paragraph, unsigned long runIndex)
    {
        const DOM::Runs& runs = paragraph.getRuns();
        for (; runIndex < runs.size(); ++runIndex)
        {
            const DOM::Run& run = derefPtr(runs[runIndex]);
            const unsigned long size = getSize(run);
            if (_remaining < size)
            {
                return makePlaceInRun(run, runIndex);
            }
            _remaining -= size;
        }
        if (_remaining == 0)
        {
            return makePlace(PlaceKind::ParaMark, runs.size());
        }
        --_remaining;
        return boost::none;
    }

    PlanePlace makePlaceInRun(const DOM::Run& run, unsigned long runIndex) const
    {
        if (_remaining > 0)
        {
            return makePlace(PlaceKind::Char, runIndex, _remaining - 1);
        }
        return makePlace(run.getKind() == DOM::RunKind::TextRun ? PlaceKind::TextRunTag : PlaceKind::AtomicRun,
                         runIndex);
    }

    const DOM::Blocks& _blocks;
    unsigned long _blockIndex;
    unsigned long _remaining;
};

} // namespace

unsigned long getSize(const DOM::Block& block)
{
    if (block.getKind() != DOM::BlockKind::Paragraph)
    {
        return 1;
    }
    unsigned long size = 2;
    for (const std::unique_ptr<DOM::Run>& run : static_cast<const DOM::Paragraph&>(block).getRuns())
    {
        size += getSize(derefPtr(run));
    }
    return size;
}

boost::optional<PlanePlace> find(const DOM::Blocks& blocks, IndexExcludingTombstones index)
{
    return Walker(blocks, 0, index.get()).walkBlocks();
}

boost::optional<PlanePlace> findFrom(const DOM::Blocks& blocks, const PlanePlace& from, unsigned long distance)
{
    switch (from._kind)
    {
    case PlaceKind::TextEnd:
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaTag:
        return Walker(blocks, from._blockIndex, distance).walkBlocks();
    case PlaceKind::ParaMark:
    case PlaceKind::AtomicRun:
    case PlaceKind::TextRunTag:
    case PlaceKind::Char:
        break;
    default:
        ZEM_FAIL("Invalid enum value");
    }
    const auto& paragraph = static_cast<const DOM::Paragraph&>(*blocks[from._blockIndex]);
    const unsigned long distanceFromTag = from._kind == PlaceKind::Char ? distance + from._byteIndex + 1 : distance;
    return Walker(blocks, from._blockIndex, distanceFromTag).walkOnFromRun(paragraph, from._runIndex);
}

PlanePlace getPlaceBeforeBlock(const DOM::Blocks& blocks, unsigned long blockIndex)
{
    const unsigned long previousIndex = blockIndex - 1;
    ZEM_ASSERT(previousIndex < blocks.size());
    const DOM::Block& previous = derefPtr(blocks[previousIndex]);
    if (previous.getKind() != DOM::BlockKind::Paragraph)
    {
        return PlanePlace{PlaceKind::AtomicBlock, previousIndex, 0, 0};
    }
    const unsigned long runsCount = static_cast<const DOM::Paragraph&>(previous).getRuns().size();
    return PlanePlace{PlaceKind::ParaMark, previousIndex, runsCount, 0};
}

PlanePlace getPlaceBeforeRun(const DOM::Blocks& blocks, unsigned long blockIndex, unsigned long runIndex)
{
    if (runIndex == 0)
    {
        return PlanePlace{PlaceKind::ParaTag, blockIndex, 0, 0};
    }
    const auto& paragraph = static_cast<const DOM::Paragraph&>(*blocks[blockIndex]);
    const unsigned long previousIndex = runIndex - 1;
    const DOM::Run& previous = derefPtr(paragraph.getRuns()[previousIndex]);
    const unsigned long size = getSize(previous);
    if (size > 1)
    {
        return PlanePlace{PlaceKind::Char, blockIndex, previousIndex, size - 2};
    }
    const bool isText = previous.getKind() == DOM::RunKind::TextRun;
    return PlanePlace{isText ? PlaceKind::TextRunTag : PlaceKind::AtomicRun, blockIndex, previousIndex, 0};
}

} // namespace PlaneWalk

PlanePlace PlaneAnchor::find(const DOM::Blocks& blocks, IndexExcludingTombstones index)
{
    const auto requirePlace = [](const boost::optional<PlanePlace>& place)
    {
        ZEM_ASSERT_MESSAGE(place, "Unexpected type in the source variant");
        return *place;
    };
    if (_index.get() == 0 || index < _index - 1)
    {
        return requirePlace(PlaneWalk::find(blocks, index));
    }
    const IndexExcludingTombstones indexBefore = _index - 1;
    if (!_placeBefore)
    {
        _placeBefore = requirePlace(PlaneWalk::find(blocks, indexBefore));
    }
    return requirePlace(PlaneWalk::findFrom(blocks, *_placeBefore, (index - indexBefore).get()));
}

} // namespace Zem::DOMCollaboration

#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include "DOM_PlaneSize.h"

#include "Util_Assert.h"

namespace Zem::DOMCollaboration::TextWithTombstonesPositionUtils
{

namespace
{

template<class T>
const T& derefOpt(const boost::optional<T>& opt)
{
    ZEM_ASSERT(opt);
    return *opt;
}

/// What each of the two traits does its own way: to find the parts of the tree by their indices.
template<bool isConst>
struct DOMParts
{
    using Blocks = std::conditional_t<isConst, const ReadonlyBlocks, DOM::Blocks>;
    using Traits = DOMTraits;

    ConstIf<isConst, DOM::Block>& getBlock(unsigned long blockIndex) const
    {
        if constexpr (isConst)
        {
            return _blocks[blockIndex];
        }
        else
        {
            return *_blocks[blockIndex];
        }
    }

    auto& getParagraph(unsigned long blockIndex) const
    {
        return static_cast<ConstIf<isConst, DOM::Paragraph>&>(getBlock(blockIndex));
    }

    auto& getRun(unsigned long blockIndex, unsigned long runIndex) const
    {
        return static_cast<ConstIf<isConst, DOM::Run>&>(*getParagraph(blockIndex).getRuns()[runIndex]);
    }

    auto& getTextRun(unsigned long blockIndex, unsigned long runIndex) const
    {
        return static_cast<ConstIf<isConst, DOM::TextRun>&>(getRun(blockIndex, runIndex));
    }

    Blocks& _blocks;
};

template<bool isConst>
struct WrapperParts
{
    using Traits = DOMWrappersTraits;

    auto getBlock(unsigned long blockIndex) const
    {
        return cast<GenericAtomicBlockWrapper<isConst>>(*_blocks.getElement(blockIndex));
    }

    auto getParagraph(unsigned long blockIndex) const
    {
        auto block = _blocks.getElement(blockIndex);
        return static_cast<GenericParagraphWrapper<isConst>&>(*block);
    }

    auto getRun(unsigned long blockIndex, unsigned long runIndex) const
    {
        auto run = getParagraph(blockIndex).getRuns().getElement(runIndex);
        return static_cast<GenericAtomicRunWrapper<isConst>&>(*run);
    }

    auto getTextRun(unsigned long blockIndex, unsigned long runIndex) const
    {
        auto run = getParagraph(blockIndex).getRuns().getElement(runIndex);
        return static_cast<GenericTextRunWrapper<isConst>&>(*run);
    }

    const GenericBlockCollectionWrapper<isConst>& _blocks;
};

/// Looks up the parts of the tree that stand at a place.
template<bool isConst, class Parts>
PositionDescriptor<isConst, typename Parts::Traits> makeDescriptor(const Parts& parts, const PlanePlace& place)
{
    PositionDescriptor<isConst, typename Parts::Traits> descriptor;
    descriptor._kind = place._kind;
    if (place._kind == PlaceKind::TextEnd)
    {
        return descriptor;
    }
    descriptor._blockIndex = place._blockIndex;
    if (place._kind == PlaceKind::AtomicBlock)
    {
        descriptor._atomicBlock.emplace(parts.getBlock(place._blockIndex));
        return descriptor;
    }
    descriptor._paragraph.emplace(parts.getParagraph(place._blockIndex));
    if (place._kind == PlaceKind::ParaTag || place._kind == PlaceKind::ParaMark)
    {
        return descriptor;
    }
    descriptor._runIndex = place._runIndex;
    if (place._kind == PlaceKind::AtomicRun)
    {
        descriptor._atomicRun.emplace(parts.getRun(place._blockIndex, place._runIndex));
        return descriptor;
    }
    descriptor._textRun.emplace(parts.getTextRun(place._blockIndex, place._runIndex));
    descriptor._byteIndex = place._byteIndex;
    return descriptor;
}

template<bool isConst, class Parts, class Blocks>
GenericPositionOpt<isConst, typename Parts::Traits> getPosition(const Parts& parts, const Blocks& blocks,
                                                                IndexExcludingTombstones index)
{
    using PositionOpt = GenericPositionOpt<isConst, typename Parts::Traits>;
    const boost::optional<PlanePlace> place = PlaneWalk::find(blocks, index);
    if (!place)
    {
        return PositionOpt();
    }
    return boost::apply_visitor([](const auto& alternative) { return PositionOpt(alternative); },
                                makePosition(makeDescriptor<isConst>(parts, *place)));
}

} // namespace

template<bool isConst, class Traits>
GenericPosition<isConst, Traits> makePosition(const PositionDescriptor<isConst, Traits>& descriptor)
{
    switch (descriptor._kind)
    {
    case PlaceKind::TextEnd:
        return GenericTextEndPosition<isConst, Traits>();
    case PlaceKind::AtomicBlock:
        return GenericAtomicBlockPosition<isConst, Traits>{derefOpt(descriptor._blockIndex),
                                                           derefOpt(descriptor._atomicBlock)};
    case PlaceKind::ParaTag:
        return GenericParaTagPosition<isConst, Traits>{derefOpt(descriptor._blockIndex),
                                                       derefOpt(descriptor._paragraph)};
    case PlaceKind::ParaMark:
        return GenericParaMarkPosition<isConst, Traits>{derefOpt(descriptor._blockIndex),
                                                        derefOpt(descriptor._paragraph)};
    case PlaceKind::AtomicRun:
        return GenericAtomicRunPosition<isConst, Traits>{
            derefOpt(descriptor._blockIndex), derefOpt(descriptor._paragraph), derefOpt(descriptor._runIndex),
            derefOpt(descriptor._atomicRun)};
    case PlaceKind::TextRunTag:
        return GenericTextRunTagPosition<isConst, Traits>{
            derefOpt(descriptor._blockIndex), derefOpt(descriptor._paragraph), derefOpt(descriptor._runIndex),
            derefOpt(descriptor._textRun)};
    case PlaceKind::Char:
        return GenericCharPosition<isConst, Traits>{derefOpt(descriptor._blockIndex), derefOpt(descriptor._paragraph),
                                                    derefOpt(descriptor._runIndex), derefOpt(descriptor._textRun),
                                                    derefOpt(descriptor._byteIndex)};
    }
    ZEM_FAIL("Invalid enum value");
}

template GenericPosition<true, DOMTraits> makePosition(const PositionDescriptor<true, DOMTraits>&);
template GenericPosition<false, DOMTraits> makePosition(const PositionDescriptor<false, DOMTraits>&);
template GenericPosition<true, DOMWrappersTraits> makePosition(const PositionDescriptor<true, DOMWrappersTraits>&);
template GenericPosition<false, DOMWrappersTraits> makePosition(const PositionDescriptor<false, DOMWrappersTraits>&);

GenericPositionOpt<true, DOMTraits> getElementPosition(const ReadonlyBlocks& blocks, IndexExcludingTombstones index)
{
    return getPosition<true>(DOMParts<true>{blocks}, blocks, index);
}

GenericPositionOpt<false, DOMTraits> getElementPosition(DOM::Blocks& blocks, IndexExcludingTombstones index)
{
    return getPosition<false>(DOMParts<false>{blocks}, blocks, index);
}

GenericPositionOpt<true, DOMWrappersTraits> getElementPosition(const GenericBlockCollectionWrapper<true>& blocks,
                                                               IndexExcludingTombstones index)
{
    return getPosition<true>(WrapperParts<true>{blocks}, blocks.getBlocks(), index);
}

GenericPositionOpt<false, DOMWrappersTraits> getElementPosition(const GenericBlockCollectionWrapper<false>& blocks,
                                                                IndexExcludingTombstones index)
{
    return getPosition<false>(WrapperParts<false>{blocks}, blocks.getBlocks(), index);
}

GenericPosition<false, DOMWrappersTraits> makePosition(const GenericBlockCollectionWrapper<false>& blocks,
                                                       const PlanePlace& place)
{
    return makePosition(makeDescriptor<false>(WrapperParts<false>{blocks}, place));
}

IndexExcludingTombstones getPlaneIndexOfBlock(const ReadonlyBlocks& blocks, unsigned long blockIndex)
{
    IndexExcludingTombstones planeIndex(0);
    for (unsigned long index = 0; index < blockIndex; ++index)
    {
        planeIndex += IndexExcludingTombstones(getPlaneSize(blocks[index]));
    }
    return planeIndex;
}

IndexExcludingTombstones getPlaneIndexOfRun(const ReadonlyRuns& runs, unsigned long runIndex)
{
    IndexExcludingTombstones planeIndex(1);
    for (unsigned long index = 0; index < runIndex; ++index)
    {
        planeIndex += IndexExcludingTombstones(getPlaneSize(runs[index]));
    }
    return planeIndex;
}

unsigned long getPlaneSize(const DOM::Block& block)
{
    return DOM::PlaneSize::of(block);
}

unsigned long getPlaneSize(const DOM::Run& run)
{
    return DOM::PlaneSize::of(run);
}

unsigned long getPlaneSize(const ReadonlyBlocks& blocks)
{
    return getPlaneIndexOfBlock(blocks, blocks.size()).get();
}

} // namespace Zem::DOMCollaboration::TextWithTombstonesPositionUtils

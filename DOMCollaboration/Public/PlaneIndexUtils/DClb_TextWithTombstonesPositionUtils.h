#pragma once

/// The arithmetic of the plane index: the position of something in the flat list that the engine sees, against its
/// place in the tree of blocks, runs and bytes. Plane indices exclude tombstones.

#include "PlaneIndexUtils/DClb_TextPositions.h"

#include "Util_ReadonlyVector.h"

#include <boost/optional.hpp>

namespace Zem::DOMCollaboration
{

using ReadonlyBlocks = ReadonlyVector<DOM::Blocks>;
using ReadonlyRuns = ReadonlyVector<DOM::Runs>;

/// A position under construction: what is known of it once its place is found, all of it optional but the kind.
template<bool isConst, class Traits>
struct PositionDescriptor
{
    PlaceKind _kind;
    boost::optional<unsigned long> _blockIndex;
    boost::optional<typename Traits::template Block<isConst>> _atomicBlock;
    boost::optional<typename Traits::template Paragraph<isConst>> _paragraph;
    boost::optional<unsigned long> _runIndex;
    boost::optional<typename Traits::template Run<isConst>> _atomicRun;
    boost::optional<typename Traits::template TextRun<isConst>> _textRun;
    boost::optional<unsigned long> _byteIndex;
};

namespace TextWithTombstonesPositionUtils
{

/// The position at a plane index, or blank beyond the end of the text. Linear in the blocks and runs passed; allocates
/// nothing. Fails: "plainPtr" on a null block or run that is passed.
ZEM_EXPORT GenericPositionOpt<true, DOMTraits> getElementPosition(const ReadonlyBlocks& blocks,
                                                                  IndexExcludingTombstones index);
ZEM_EXPORT GenericPositionOpt<false, DOMTraits> getElementPosition(DOM::Blocks& blocks, IndexExcludingTombstones index);
ZEM_EXPORT GenericPositionOpt<true, DOMWrappersTraits>
getElementPosition(const GenericBlockCollectionWrapper<true>& blocks, IndexExcludingTombstones index);
ZEM_EXPORT GenericPositionOpt<false, DOMWrappersTraits>
getElementPosition(const GenericBlockCollectionWrapper<false>& blocks, IndexExcludingTombstones index);

/// The position at a place that was found already.
ZEM_EXPORT GenericPosition<false, DOMWrappersTraits> makePosition(const GenericBlockCollectionWrapper<false>& blocks,
                                                                  const PlanePlace& place);

/// Builds the position from what is known of it. Fails: "opt" when a field that its kind has is missing; "Invalid enum
/// value" for a kind outside the enumeration.
template<bool isConst, class Traits>
GenericPosition<isConst, Traits> makePosition(const PositionDescriptor<isConst, Traits>& descriptor);

extern template ZEM_EXPORT GenericPosition<true, DOMTraits> makePosition(const PositionDescriptor<true, DOMTraits>&);
extern template ZEM_EXPORT GenericPosition<false, DOMTraits> makePosition(const PositionDescriptor<false, DOMTraits>&);
extern template ZEM_EXPORT GenericPosition<true, DOMWrappersTraits>
makePosition(const PositionDescriptor<true, DOMWrappersTraits>&);
extern template ZEM_EXPORT GenericPosition<false, DOMWrappersTraits>
makePosition(const PositionDescriptor<false, DOMWrappersTraits>&);

/// The sum of the plane sizes of the blocks before `blockIndex`. Fails: "index < size()" when there are fewer blocks.
ZEM_EXPORT IndexExcludingTombstones getPlaneIndexOfBlock(const ReadonlyBlocks& blocks, unsigned long blockIndex);

/// The plane index of a run inside its paragraph, counted from the paragraph's tag: 1 and the sum of the plane sizes of
/// the runs before it. Fails: "index < size()" when there are fewer.
ZEM_EXPORT IndexExcludingTombstones getPlaneIndexOfRun(const ReadonlyRuns& runs, unsigned long runIndex);

ZEM_EXPORT unsigned long getPlaneSize(const DOM::Block& block);
ZEM_EXPORT unsigned long getPlaneSize(const DOM::Run& run);
ZEM_EXPORT unsigned long getPlaneSize(const ReadonlyBlocks& blocks);

namespace Details
{

/// Reads a field from the alternative that the position holds.
/// Fails: "Unexpected type in the source variant" when that alternative has no such field.
template<class Result, class Position, class Getter>
Result getField(const Position& position, Getter getter)
{
    return boost::apply_visitor(
        [&](const auto& alternative) -> Result
        {
            if constexpr (std::is_invocable_v<Getter, decltype(alternative)>)
            {
                return getter(alternative);
            }
            else
            {
                ZEM_FAIL("Unexpected type in the source variant");
            }
        },
        position);
}

} // namespace Details

/// The fields of a position. Each fails on a position that has no such field.
template<bool isConst, class Traits>
typename Traits::template Paragraph<isConst> getParagraph(const GenericPosition<isConst, Traits>& position)
{
    return Details::getField<typename Traits::template Paragraph<isConst>>(
        position, [](const auto& alternative) -> decltype(alternative._paragraph) { return alternative._paragraph; });
}

template<bool isConst, class Traits>
typename Traits::template TextRun<isConst> getTextRun(const GenericPosition<isConst, Traits>& position)
{
    return Details::getField<typename Traits::template TextRun<isConst>>(
        position, [](const auto& alternative) -> decltype(alternative._textRun) { return alternative._textRun; });
}

template<bool isConst, class Traits>
unsigned long getBlockIndex(const GenericPosition<isConst, Traits>& position)
{
    return Details::getField<unsigned long>(
        position, [](const auto& alternative) -> decltype(alternative._blockIndex) { return alternative._blockIndex; });
}

template<bool isConst, class Traits>
unsigned long getRunIndex(const GenericPosition<isConst, Traits>& position)
{
    return Details::getField<unsigned long>(
        position, [](const auto& alternative) -> decltype(alternative._runIndex) { return alternative._runIndex; });
}

/// The same position, read-only.
template<bool isConst, class Traits>
GenericPosition<true, Traits> asConst(const GenericPosition<isConst, Traits>& position)
{
    using Constant = GenericPosition<true, Traits>;
    return boost::apply_visitor(
        Overloads{[](const GenericTextEndPosition<isConst, Traits>&) -> Constant
                  { return GenericTextEndPosition<true, Traits>(); },
                  [](const GenericAtomicBlockPosition<isConst, Traits>& block) -> Constant {
                      return GenericAtomicBlockPosition<true, Traits>{block._blockIndex, Traits::asConst(block._block)};
                  },
                  [](const GenericParaTagPosition<isConst, Traits>& tag) -> Constant {
                      return GenericParaTagPosition<true, Traits>{tag._blockIndex, Traits::asConst(tag._paragraph)};
                  },
                  [](const GenericParaMarkPosition<isConst, Traits>& mark) -> Constant {
                      return GenericParaMarkPosition<true, Traits>{mark._blockIndex, Traits::asConst(mark._paragraph)};
                  },
                  [](const GenericAtomicRunPosition<isConst, Traits>& run) -> Constant
                  {
                      return GenericAtomicRunPosition<true, Traits>{run._blockIndex, Traits::asConst(run._paragraph),
                                                                    run._runIndex, Traits::asConst(run._run)};
                  },
                  [](const GenericTextRunTagPosition<isConst, Traits>& tag) -> Constant
                  {
                      return GenericTextRunTagPosition<true, Traits>{tag._blockIndex, Traits::asConst(tag._paragraph),
                                                                     tag._runIndex, Traits::asConst(tag._textRun)};
                  },
                  [](const GenericCharPosition<isConst, Traits>& byte) -> Constant
                  {
                      return GenericCharPosition<true, Traits>{byte._blockIndex, Traits::asConst(byte._paragraph),
                                                               byte._runIndex, Traits::asConst(byte._textRun),
                                                               byte._byteIndex};
                  }},
        position);
}

} // namespace TextWithTombstonesPositionUtils

} // namespace Zem::DOMCollaboration

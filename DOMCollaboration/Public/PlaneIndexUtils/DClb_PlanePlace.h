#pragma once

/// Places of the plane, and the walk that finds them.
///
/// The plane is the flat sequence of the live elements of a text: a paragraph is its tag, its runs and its mark; a text
/// run is its tag and its bytes; everything else is one element.
///
///     plane index    0      1    2    3    4      5    6     7
///                    tag    run  'a'  'b'  mark   tag  mark  end      two paragraphs, "ab" and ""
///
/// A walk goes over blocks and runs, never over bytes, allocates nothing, and is linear in the blocks and runs passed.
/// It has no memory of its own: a place is found afresh after a change, or from a place that stands before the change.

#include "CU_Index.h"
#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Export.h"
#include "Util_ReadonlyVector.h"

#include <boost/optional.hpp>

namespace Zem::DOMCollaboration
{

using CollaborationUtils::IndexExcludingTombstones;

/// What stands at a place of the plane.
enum class PlaceKind : unsigned char
{
    TextEnd,
    AtomicBlock,
    ParaTag,
    ParaMark,
    AtomicRun,
    TextRunTag,
    Char
};

/// A place of the plane in terms of the tree. `_runIndex` and `_byteIndex` mean something only where the kind has a run
/// or a byte; a paragraph's mark has the number of its runs as `_runIndex`.
struct PlanePlace
{
    PlaceKind _kind = PlaceKind::TextEnd;
    unsigned long _blockIndex = 0;
    unsigned long _runIndex = 0;
    unsigned long _byteIndex = 0;

    friend bool operator==(const PlanePlace&, const PlanePlace&) = default;
};

namespace PlaneWalk
{

/// The place at `index`; empty beyond the end of the text. Fails: "plainPtr" on a null block or run that is passed.
ZEM_EXPORT boost::optional<PlanePlace> find(const DOM::Blocks& blocks, IndexExcludingTombstones index);
ZEM_EXPORT boost::optional<PlanePlace> find(const ReadonlyVector<DOM::Blocks>& blocks, IndexExcludingTombstones index);

/// The place `distance` elements behind `from`; empty beyond the end of the text. Cost: the runs and blocks between.
/// Requires: `from` is a place of `blocks` as they are now.
ZEM_EXPORT boost::optional<PlanePlace> findFrom(const DOM::Blocks& blocks, const PlanePlace& from,
                                                unsigned long distance);

/// The place just in front of `place`, which needn't be one itself any more: only what stands in front of it is looked
/// at. Cost: constant. Fails: "blockIndex > 0" for the first place of the text.
ZEM_EXPORT PlanePlace getPlaceBefore(const DOM::Blocks& blocks, const PlanePlace& place);

} // namespace PlaneWalk

/// Finds places near one index of the plane for the cost of one walk from the beginning of the text: the element in
/// front of that index is found once, and everything behind it from there. It stays good while the text changes only at
/// or behind the index, since elements in front of a change keep their places.
class ZEM_EXPORT PlaneAnchor
{
public:
    explicit PlaneAnchor(IndexExcludingTombstones index)
        : _index(index)
    {
    }

    IndexExcludingTombstones getIndex() const
    {
        return _index;
    }

    /// The place at `index`. One more than two in front of the anchor's index costs a walk from the beginning.
    /// Fails: "Unexpected type in the source variant" beyond the end of the text.
    PlanePlace find(const DOM::Blocks& blocks, IndexExcludingTombstones index);

    /// Finds the element in front of the anchor's index from that of `other`, whose index isn't behind this one's. So
    /// the anchors of many ranges cost one walk together. Cost: the runs and blocks between. Fails: "other._index <=
    /// _index"; "Unexpected type in the source variant" beyond the end of the text.
    void settleBehind(const DOM::Blocks& blocks, PlaneAnchor& other);

    /// Moves by one element towards the beginning. Cost: constant. Fails: "_index.get() > 0".
    void stepBack(const DOM::Blocks& blocks);

private:
    void settle(const DOM::Blocks& blocks);

    IndexExcludingTombstones _index;
    boost::optional<PlanePlace> _placeBefore;
};

} // namespace Zem::DOMCollaboration

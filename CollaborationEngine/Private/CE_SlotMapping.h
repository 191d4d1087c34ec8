#pragma once

/// Where slots and gaps are after an operation, and where two sets of slots overlap.

#include "CE_Slots.h"

#include <boost/optional.hpp>

#include <algorithm>

namespace Zem::CollaborationEngine
{

/// The index of a slot after an operation; empty if it went.
boost::optional<unsigned long> mapSlot(unsigned long slot, const SlotOperation& operation);

/// Tells the indices of ascending gaps after the removal of slots, in one walk over these.
class RemovalWalk
{
public:
    explicit RemovalWalk(const SlotPieces& removed);

    /// A gap inside a removed stretch falls to where that was. Requires: `gap` isn't lower than the one before it.
    unsigned long mapGap(unsigned long gap);

private:
    SlotPieces::const_iterator _hole;
    SlotPieces::const_iterator _end;
    unsigned long _removedInFront = 0;
};

/// The same for one gap alone.
unsigned long mapGapPastRemoval(unsigned long gap, const SlotPieces& removed);

/// The piece in which a slot lies; null if it lies in none.
const SlotPiece* findPiece(unsigned long slot, const SlotPieces& pieces);

/// The pieces of slots as they are after an operation that changes indices: they shift, split and drop out.
SlotPieces mapSlots(const SlotPieces& slots, const SlotOperation& operation);

/// The part of a piece that begins `offset` slots behind its beginning.
SlotPiece getPart(const SlotPiece& piece, unsigned long offset, unsigned long count);

/// Adds a piece that stands behind all others; where it continues the last one in every respect, that one grows.
void appendPiece(SlotPieces& pieces, const SlotPiece& piece);

/// Cuts `slots` along the borders of `others`, and calls `consume(piece, other)` for each part, ascending: `other` is
/// the piece that covers it, or null.
template<class Consume>
void forEachOverlap(const SlotPieces& slots, const SlotPieces& others, const Consume& consume)
{
    auto other = others.begin();
    for (const SlotPiece& piece : slots)
    {
        unsigned long begin = piece._begin;
        while (begin < piece.getEnd())
        {
            while (other != others.end() && other->getEnd() <= begin)
            {
                ++other;
            }
            const bool isCovered = other != others.end() && other->_begin <= begin;
            const unsigned long border =
                other == others.end() ? piece.getEnd() : (isCovered ? other->getEnd() : other->_begin);
            const unsigned long end = std::min(piece.getEnd(), border);
            consume(getPart(piece, begin - piece._begin, end - begin), isCovered ? &*other : nullptr);
            begin = end;
        }
    }
}

} // namespace Zem::CollaborationEngine

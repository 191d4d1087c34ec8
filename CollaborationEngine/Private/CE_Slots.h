#pragma once

/// What an operation does to a list, freed of its class: single-range and multirange list operations, and the rows and
/// the columns of a table all follow the rules of one matrix.

#include "CE_ItemsCollection.h"
#include "CE_Shadows.h"

#include <boost/container/small_vector.hpp>

namespace Zem::CollaborationEngine
{

/// The kinds of operation on a list, in the order of the rows and columns of the matrix.
enum class SlotAction
{
    Insertion,
    /// The reversal of an insertion: the slots go for good.
    Removal,
    Marking,
    Restoring,
    /// A deletion of slots that are dead already.
    Leaving,
    /// A restoring of slots that other deletions hold down still.
    Releasing,
    Move
};

constexpr unsigned long slotActionsCount = 7;

/// A stretch of neighbouring slots; for an insertion, the gap `_begin` and the number of slots that are to stand there.
struct SlotPiece
{
    // Copied member by member: the library copies vectors of trivial classes in a way that g++ 12 warns of wrongly.
    SlotPiece() = default;
    SlotPiece(const SlotPiece& other);
    SlotPiece& operator=(const SlotPiece& other);

    unsigned long getEnd() const
    {
        return _begin + _count;
    }

    Shadows getHolds() const
    {
        Shadows holds;
        holds._holdersCount = _holdersCount;
        holds._releasesAll = _releasesAll;
        return holds;
    }

    void setHolds(const Shadows& holds)
    {
        _holdersCount = holds._holdersCount;
        _releasesAll = holds._releasesAll;
    }

    unsigned long _begin = 0;
    unsigned long _count = 0;
    /// For a leaving, how many deletions held the slots before; for a releasing, how many hold them afterwards.
    unsigned long _holdersCount = 0;
    /// Whose items these are, and the number of the first of them there. Null where the operation carries none.
    const SharedConstPtr<ItemsCollection>* _items = nullptr;
    unsigned long _offset = 0;
    /// A releasing of all deletions that were known where it was made.
    bool _releasesAll = false;
};

inline SlotPiece::SlotPiece(const SlotPiece& other) = default;
inline SlotPiece& SlotPiece::operator=(const SlotPiece& other) = default;

using SlotPieces = boost::container::small_vector<SlotPiece, 4>;

/// The pieces ascend and don't overlap. All are in the coordinates of the state before the operation.
struct SlotOperation
{
    SlotAction _action = SlotAction::Insertion;
    SlotPieces _pieces;
    /// Where the slot of a move stands afterwards, which is its gap in the list without it.
    unsigned long _target = 0;
};

/// What becomes of an operation. Where there are several of them, none changes the indices of another.
using SlotOperations = boost::container::small_vector<SlotOperation, 2>;

} // namespace Zem::CollaborationEngine

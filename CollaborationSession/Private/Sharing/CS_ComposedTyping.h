#pragma once

#include "CE_ListMultirangeOperation.h"
#include "DClb_TextElement.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Many keystrokes in one text as two operations: one insertion of bytes, and one marking of bytes as removed.
///
///     abcd    x typed behind b, y behind that, y deleted, c deleted, z typed at the end
///     ab{xy}cd{z}    the insertion: two ranges in the slots of the state before
///     abx[y][c]dz    the marking: two ranges in the slots that the insertion leaves
///
/// It works because no marking moves a slot, and because bytes can come and go in any order in which no tag is touched:
/// the grammar of texts asks for a run in front of a byte, and no run loses its tag here. So a rebase of n keystrokes
/// past m others costs n and m, and not their product.
class ComposedTyping
{
public:
    /// Takes in an operation that was executed behind all that are in here. False, and nothing is taken in, if it isn't
    /// an insertion or marking of bytes alone, or one in another text. Cost: the ranges that are in here.
    bool takeIn(const CollaborationEngine::Operation& operation);

    /// Takes in all of an operation's parts, or nothing.
    bool takeInAll(const CollaborationEngine::Operation& operation);

    bool isEmpty() const
    {
        return !_model;
    }

    /// The insertion and the marking, each if there is one, with the ids of the first of its kind.
    std::vector<CollaborationEngine::OperationUPtr> makeOperations() const;

private:
    using Insert = CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>;
    using Mark = CollaborationEngine::ListModificationOperation<CollaborationEngine::MarkAsRemovedTag>;
    using Bytes = DOMCollaboration::TextWithTombstonesElementVector;

    /// Bytes of which the first stands at a slot; for an insertion that of the state before everything.
    struct Range
    {
        unsigned long _begin;
        Bytes _bytes;
    };

    template<class Nested>
    bool takeInRanges(const CollaborationEngine::ListMultirangeOperationImpl<Nested>& operation);
    void takeIn(const Insert& insertion);
    void takeIn(const Mark& marking);
    void makeRoomInMarked(unsigned long gap, unsigned long count);

    /// The node, and the type of it, of all operations.
    std::shared_ptr<const CollaborationEngine::HierarchicalOperation> _model;
    std::shared_ptr<const CollaborationEngine::Operation> _firstInsertion;
    std::shared_ptr<const CollaborationEngine::Operation> _firstMarking;
    /// Ascending. No two ranges of `_inserted` have one beginning.
    std::vector<Range> _inserted;
    std::vector<Range> _marked;
};

} // namespace Zem::CollaborationSession

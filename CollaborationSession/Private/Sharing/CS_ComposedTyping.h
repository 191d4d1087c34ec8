#pragma once

#include "CE_ListMultirangeOperation.h"
#include "DClb_TextElement.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <map>
#include <optional>
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
    /// an insertion or marking of bytes alone, or one in another text. Cost: the ranges of a marking, and for each the
    /// logarithm of how many are in here; of an insertion all ranges, once.
    bool takeIn(const CollaborationEngine::Operation& operation);

    /// Takes in all of an operation's parts, or nothing.
    bool takeInAll(const CollaborationEngine::Operation& operation);

    bool isEmpty() const
    {
        return !_node;
    }

    /// The insertion and the marking, each if there is one, with the ids of the first of its kind.
    std::vector<CollaborationEngine::OperationUPtr> makeOperations() const;

private:
    using Insert = CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>;
    using Mark = CollaborationEngine::ListModificationOperation<CollaborationEngine::MarkAsRemovedTag>;
    using Insertion = CollaborationEngine::ListMultirangeOperationImpl<Insert>;
    using Marking = CollaborationEngine::ListMultirangeOperationImpl<Mark>;
    using Bytes = DOMCollaboration::TextWithTombstonesElementVector;

    struct Node
    {
        CollaborationEngine::OperationNodeAddress _address;
        unsigned long _type;
    };

    /// The first operation of its kind.
    struct First
    {
        boost::optional<CollaborationEngine::Operation::Id> _id;
    };

    /// Bytes of which the first stands at a slot of the state before everything.
    struct Range
    {
        unsigned long _begin;
        Bytes _bytes;
    };

    /// By the slots of their first bytes, in the state behind everything.
    using Marked = std::map<unsigned long, Bytes>;

    static bool fits(const CollaborationEngine::Operation& operation, std::optional<Node>& node);
    static void append(const Bytes& bytes, std::size_t begin, std::size_t end, Bytes& target);
    void takeInFitting(const CollaborationEngine::Operation& operation);
    void takeInInsertions(const std::vector<Insert>& insertions);
    void takeInInsertion(const Insert& insertion);
    void takeInMarking(const Mark& marking);
    void makeRoomInMarked(const std::vector<Insert>& insertions);
    template<class Nested>
    Nested makeRange(unsigned long begin, const Bytes& bytes) const;
    template<class Nested>
    static CollaborationEngine::OperationUPtr makeOperation(std::vector<Nested> ranges, const First& first);

    /// That of all operations.
    std::optional<Node> _node;
    std::optional<First> _firstInsertion;
    std::optional<First> _firstMarking;
    /// Ascending. No two have one beginning.
    std::vector<Range> _inserted;
    Marked _marked;
};

} // namespace Zem::CollaborationSession

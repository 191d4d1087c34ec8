// Operations of several users on one real text, brought past each other by the document's transformer and run by its
// executor.

#include "DClb_DocumentOperationTransformer.h"
#include "DClb_DocumentPositionTransformer.h"

#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include "CE_InverseOperation.h"
#include "CE_NodeAddressWithTransformationData.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Zem::TestSupport
{

using namespace CollaborationEngine;
using DOMCollaboration::DocumentOperationTransformer;

namespace
{

constexpr auto late = TieResolveCondition::SecondWins;

/// A text with the history of what happened to it.
class TextHistory
{
public:
    explicit TextHistory(std::string_view notation)
        : _text(notation)
    {
    }

    /// Runs an operation that was made when `knownCount` operations stood in the history.
    TextHistory& run(OperationUPtr operation, std::size_t knownCount)
    {
        for (std::size_t index = knownCount; index < _history.size(); ++index)
        {
            operation = _transformer.include(*operation, *_history[index], late);
        }
        operation->setIDIfNeeded(_nextID);
        _text.after(std::move(operation));
        _history.push_back(cloneOperation(_text.getHappened()));
        return *this;
    }

    /// Undoes an operation of the history through all that came later.
    TextHistory& undo(std::size_t index)
    {
        return run(makeUndo(*_history[index], _transformer), index + 1);
    }

    TextHistory& is(std::string_view notation)
    {
        _text.is(notation);
        return *this;
    }

    const Operation& getHappened() const
    {
        return _text.getHappened();
    }

private:
    DocumentOperationTransformer _transformer;
    TextCase _text;
    std::vector<OperationUPtr> _history;
    unsigned long _nextID = 1;
};

} // namespace

TEST(ConcurrentText, UndoOfOneOfTwoDeletionsOfAWordLeavesItDeleted)
{
    for (const std::size_t undoneFirst : {0u, 1u})
    {
        TextHistory text("{|one two}");
        text.run(mark(5, 8), 0).run(mark(5, 8), 0).is("{|one[...]o}");
        text.undo(undoneFirst).is("{|one[...]o}");
        text.undo(1 - undoneFirst).is("{|one two}");
    }
}

TEST(ConcurrentText, SecondDeletionKeepsWhatTheFirstOneTookOut)
{
    TextHistory text("{|abcd}");
    text.run(mark(3, 4), 0).run(mark(2, 5), 0).is("{|[...]d}");
    const auto& happened = cast<CompositeOperation>(text.getHappened());
    ASSERT_EQ(2u, happened.getParts().size());
    EXPECT_EQ("mark 4:c 2:a", print(*happened.getParts()[0]));
    EXPECT_EQ("leave 3:b", print(*happened.getParts()[1]));
}

TEST(ConcurrentText, OverlappingDeletionsOfSeveralStretchesAreUndoneInAnyOrder)
{
    std::vector<std::size_t> order{0, 1, 2};
    do
    {
        TextHistory text("{|abcdefgh}");
        text.run(mark({{7, 9}, {2, 5}}), 0);
        text.run(mark({{6, 8}, {3, 4}}), 0);
        text.run(mark(3, 9), 0);
        text.is("{|[.......]h}");
        text.undo(order[0]).undo(order[1]).undo(order[2]).is("{|abcdefgh}");
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(ConcurrentText, TextTypedInsideADeletionStaysAndSoDoesItsUndo)
{
    TextHistory text("{|abcd}");
    text.run(mark(3, 5), 0).run(insert(4, "xy"), 0).is("{|a[.]xy[.]d}");
    text.undo(0).is("{|abxycd}");
    text.undo(1).is("{|ab[..]cd}");
}

TEST(ConcurrentText, TwoUsersJoinTheSameParagraphs)
{
    TextHistory text("{|ab}{|cd}");
    text.run(mark(4, 6), 0).run(mark(4, 6), 0).is("{|ab[..]|cd}");
    text.undo(0).is("{|ab[..]|cd}").undo(1).is("{|ab}{|cd}");
}

TEST(ConcurrentText, ARestoringPastADeletionOfTheSameWordLetsGoAndDoesNothing)
{
    TextHistory text("{|abcd}");
    text.run(mark(3, 5), 0);
    // One user restores the word while another one deletes it too.
    text.run(mark(3, 5), 0).run(restore(3, "bc"), 1).is("{|a[..]d}");
    EXPECT_TRUE(cast<ShadowedOperation>(&text.getHappened()));
    text.undo(1).is("{|abcd}");
}

TEST(ConcurrentText, ACaretInsidePendingTextSurvivesTheReversalOfWhatItStandsIn)
{
    const DOMCollaboration::DocumentPositionTransformer positions;
    const OperationUPtr pending = insert(3, "xyz");
    unsigned long id = 7;
    pending->setIDIfNeeded(id);
    OperationNodeAddress address = getTextAddress();
    address.appendItems(NodeAddressing::AddressInList(5));
    NodeAddressWithTransformationData caret(address);
    positions.exclude(*pending, caret);
    EXPECT_EQ(1u, caret.getRevertedInsertOperations().size());
    const OperationUPtr remote = insert(2, "12");
    positions.include(*remote, caret);
    const OperationUPtr rebased = DocumentOperationTransformer().include(*pending, *remote, late);
    positions.include(*rebased, caret);
    EXPECT_EQ(7u, caret.getAddress().getItemFromEndAs<NodeAddressing::AddressInList>(0)->getIndex());
    EXPECT_TRUE(caret.getRevertedInsertOperations().empty());
}

} // namespace Zem::TestSupport

#include "Sharing/CS_SectionColumns.h"
#include "Sharing/CS_SessionCase.h"

#include "TS_Assertions.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MultirangeOperationUtils.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyValues.h"
#include "DOM_RunProps.h"

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

/// Lets all messages travel; everybody must have `text` then.
void expectEnd(SessionCase& session, std::string_view text)
{
    session.settle();
    for (std::size_t who = 0; who < session.size(); ++who)
    {
        EXPECT_EQ(session[who].getText(), text) << "client " << who + 1;
    }
}

/// Undoes the first own operation of a client.
void undoFirst(SessionCase& session, std::size_t who)
{
    EXPECT_TRUE(session[who].undo(session[who].getActions().front()));
}

/// What a client has to send, the last operation of it replaced by one that no document takes: the operation is good
/// where it was made, and the server has to reject it.
ClientBatch takeSpoiltBatch(Participant& participant)
{
    ClientBatch batch = *participant.getClient().takeBatch();
    batch._actions.back() = {SessionCase::makeBadOperation(), nullptr};
    return batch;
}

/// The caret of a client, as a slot.
unsigned long getCaret(const Selection& selection)
{
    return boost::get<NodeAddressing::AddressInList>(selection.getSelectionBegin().getAddress().getItem(1)).getIndex();
}

unsigned long getOwnCaret(Participant& participant)
{
    return getCaret(*participant.getClient().findOwnSelection());
}

/// The caret of the client `owner`, as `viewer` sees it.
unsigned long getCaretOf(ClientID owner, Participant& viewer)
{
    return getCaret(viewer.getClient().getSelections().at(owner));
}

TEST(Session, WhatOneTypesReachesTheOther)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "xy");
    expectEnd(session, "axyb");
    EXPECT_EQ(session[0].getClient().getStatistics()._confirmedCount, 1u);
    EXPECT_EQ(session[0].getClient().getStatistics()._executedCount, 0u);
}

TEST(Session, InATieTheOneInTheHistoryGoesFirst)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    session[1].replace(1, 1, "y");
    session[1].send();
    expectEnd(session, "ayxb");
}

TEST(Session, BothDeleteTheSameAndNoMore)
{
    SessionCase session("{|abcdef}");
    session[0].replace(1, 4, "");
    session[1].replace(2, 5, "");
    expectEnd(session, "af");
}

TEST(Session, WordTypedIntoARemovedParagraphEndsAsOneWordInOneParagraph)
{
    SessionCase session("{|ab}{|cd}{|ef}");
    for (const char* letter : {"w", "o", "r", "d"})
    {
        const unsigned long offset = 4 + session[0].getText().size() - 8;
        session[0].replace(offset, offset, letter);
    }
    EXPECT_EQ(session[0].getText(), "ab\ncwordd\nef");
    session[1].replace(3, 6, "");
    session[1].send();
    expectEnd(session, "ab\nword\nef");
}

TEST(Session, WordTypedAloneIntoARemovedParagraphStaysOneParagraphLetterByLetter)
{
    SessionCase session("{|ab}{|cd}{|ef}");
    session[1].replace(3, 6, "");
    session[1].send();
    unsigned long offset = 4;
    for (const char* letter : {"w", "o", "r", "d"})
    {
        session[0].replace(offset, offset, letter);
        ++offset;
        session[0].send();
    }
    expectEnd(session, "ab\nword\nef");
}

TEST(Session, LateJoinerGetsWhatIsThere)
{
    SessionCase session("{|ab}", 1, {4});
    for (int round = 0; round < 10; ++round)
    {
        session[0].replace(1, 1, "x");
        session.settle();
    }
    session[0].replace(0, 0, "pending ");
    Participant& late = session.join();
    EXPECT_EQ(late.getText(), "axxxxxxxxxxb");
    late.replace(0, 1, "");
    session.settle();
    EXPECT_EQ(late.getText(), "pending xxxxxxxxxxb");
}

TEST(Session, ServerKeepsNoMoreHistoryThanItsClientsMayNeed)
{
    SessionCase session("{|ab}", 2, {10});
    for (int round = 0; round < 100; ++round)
    {
        session[0].replace(1, 1, "x");
        session.settle();
        session[1].replace(1, 2, "");
        session.settle();
    }
    EXPECT_EQ(session.getServer().getRevision(), 200u);
    EXPECT_LE(session.getServer().getKeptEntriesCount(), 20u);
}

TEST(Session, ReconnectingSendsAgainWhatTheServerHasNotGot)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    ASSERT_TRUE(session[0].getClient().takeBatch());
    session[0].disconnect();
    session[0].replace(2, 2, "y");
    session[1].replace(0, 0, "z");
    session[1].send();
    session[0].reconnect();
    expectEnd(session, "zaxyb");
}

TEST(Session, ReconnectingTakesInWhatTheServerHadGot)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    session[0].send();
    session[0].disconnect();
    session[0].replace(2, 2, "y");
    session[1].replace(0, 0, "z");
    session[1].send();
    session[0].reconnect();
    expectEnd(session, "zaxyb");
}

TEST(Session, BatchThatArrivesTwiceIsTakenInOnce)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    const auto batch = session[0].getClient().takeBatch();
    session.getServer().receive(1, *batch);
    session.getServer().receive(1, *batch);
    expectEnd(session, "axb");
}

TEST(Session, OperationThatFitsNoDocumentIsRejectedAndNobodyElseNotices)
{
    SessionCase session("{|ab}");
    ClientBatch batch;
    batch._actions.push_back({SessionCase::makeBadOperation(), nullptr});
    std::vector<ServerMessage> told;
    auto [id, snapshot] = session.getServer().join([&](const ServerMessage& message) { told.push_back(message); });
    session.getServer().receive(id, batch);
    ASSERT_EQ(told.size(), 1u);
    const HistoryEntry& entry = *std::get<ActionHappened>(told.front())._entry;
    EXPECT_EQ(entry._number, 1u);
    ASSERT_TRUE(entry._refusal);
    EXPECT_EQ(entry._refusal->_reason, RefusalReason::FitsNoDocument);
    EXPECT_FALSE(entry._refusal->_sentence.empty());
    EXPECT_TRUE(cast<EmptyOperation>(entry._action._operation.get()));
    expectEnd(session, "ab");
}

TEST(Session, AuthorOfARejectedOperationGoesOnWithoutIt)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "x");
    const ClientBatch batch = takeSpoiltBatch(session[0]);
    session[0].replace(0, 0, "y");
    session.getServer().receive(1, batch);
    expectEnd(session, "yab");
    const auto refusals = session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals.front()._action, session[0].getActions().front());
    EXPECT_FALSE(refusals.front()._refusal._sentence.empty());
    EXPECT_TRUE(session[0].getClient().takeRefusals().empty());
}

TEST(Session, SettingBehindARejectedOneOfTheSameAuthorCounts)
{
    using DOMCollaboration::PropertyId;
    const auto makeSize = [](float size)
    {
        const auto props = std::make_shared<DOM::RunProps>();
        props->_fontSize = size;
        return makeSharedConst<DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::RunPropertyId>>(props);
    };
    SessionCase session("{|ab}");
    session[0].setRunProperty(0, 2, PropertyId::RunPropertyId, makeSize(10));
    const ClientBatch batch = takeSpoiltBatch(session[0]);
    session[0].setRunProperty(0, 2, PropertyId::RunPropertyId, makeSize(12));
    session.getServer().receive(1, batch);
    session.settle();
    const std::string json = DOM::toJson(session.getServer().getDocument());
    EXPECT_NE(json.find("\"_fontSize\":{\"hasValue\":true,\"value\":12"), std::string::npos);
    EXPECT_EQ(DOM::toJson(session[1].getClient().getDocument()), json);
    EXPECT_EQ(session[0].getClient().takeRefusals().size(), 1u);
}

TEST(Session, RejectionThatWasLostWithTheConnectionIsToldAgain)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "x");
    const ClientBatch batch = takeSpoiltBatch(session[0]);
    session.getServer().receive(1, batch);
    session[0].disconnect();
    session[0].reconnect();
    expectEnd(session, "ab");
    EXPECT_EQ(session[0].getClient().takeRefusals().size(), 1u);
}

TEST(Session, OwnOperationThatFailsLeavesTheDocumentAsItWas)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    const OperationUPtr operation = SessionCase::makeBadOperation();
    OperationUPtr changedOp;
    EXPECT_THROW(session[0].getClient().getExecutor().executeAndChangeIfNeeded(*operation, changedOp),
                 AssertionFailure);
    EXPECT_EQ(session[0].getText(), "axb");
    EXPECT_EQ(session[0]._replacementsCount, 1);
    session[0].replace(3, 3, "y");
    expectEnd(session, "axby");
}

TEST(Session, BatchesThatNoClientCanHaveSentAreErrors)
{
    SessionCase session("{|ab}");
    Server& server = session.getServer();
    ClientBatch batch;
    batch._actions.push_back({std::make_shared<EmptyOperation>(), nullptr});
    EXPECT_THROW(server.receive(77, batch), InvalidBatchError);
    batch._base = 5;
    EXPECT_THROW(server.receive(1, batch), InvalidBatchError);
    batch._base = 0;
    batch._firstNumber = 2;
    EXPECT_THROW(server.receive(1, batch), InvalidBatchError);
    batch._firstNumber = 1;
    batch._actions.front() = Action();
    EXPECT_THROW(server.receive(1, batch), InvalidBatchError);
    EXPECT_THROW(server.reconnect(1, 1, [](const ServerMessage&) {}), InvalidBatchError);
    EXPECT_THROW(server.leave(77), InvalidBatchError);
    EXPECT_EQ(server.getRevision(), 0u);
}

TEST(Session, PendingOperationIsTakenBackUnlessItWasSent)
{
    SessionCase session("{|ab}");
    Client& client = session[0].getClient();
    TextEditor editor(client, TextEditor::getMainTextAddress());
    Operations typed = editor.replace(1, 1, "x");
    editor.takeBack(typed);
    EXPECT_TRUE(client.isQuiet());
    EXPECT_EQ(session[0].getText(), "ab");
    typed = editor.replace(1, 1, "x");
    session[0].send();
    EXPECT_ASSERTION(editor.takeBack(typed), "isLastUnsent");
}

TEST(Session, UndoOfADeletionLeavesWhatOthersDid)
{
    SessionCase session("{|abcdef}");
    session[0].replace(1, 5, "");
    session[1].replace(3, 3, "x");
    expectEnd(session, "axf");
    undoFirst(session, 0);
    expectEnd(session, "abcxdef");
}

TEST(Session, WordThatTwoDeletedStaysDeletedWhenOneTakesItBack)
{
    SessionCase session("{|one two}");
    session[0].replace(3, 7, "");
    session[1].replace(3, 7, "");
    session.settle();
    undoFirst(session, 0);
    expectEnd(session, "one");
    undoFirst(session, 1);
    expectEnd(session, "one two");
}

TEST(Session, UndoOfAnInsertionLeavesWhatOthersTypedInside)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "xyz");
    session.settle();
    session[1].replace(2, 2, "-");
    session.settle();
    undoFirst(session, 0);
    expectEnd(session, "a-b");
}

TEST(Session, DeletionCantBeTakenBackTwice)
{
    SessionCase session("{|one two}");
    session[0].replace(3, 7, "");
    session[1].replace(3, 7, "");
    session.settle();
    const auto deletion = session[0].getActions().front();
    EXPECT_TRUE(session[0].undo(deletion));
    EXPECT_FALSE(session[0].undo(deletion));
    session.settle();
    EXPECT_FALSE(session[0].undo(deletion));
    EXPECT_EQ(session[1].getText(), "one");
}

TEST(Session, UnknownOperationCantBeUndone)
{
    SessionCase session("{|ab}");
    EXPECT_FALSE(session[0].undo(12345));
    session[1].replace(0, 0, "x");
    session.settle();
    EXPECT_FALSE(session[0].undo(session[1].getActions().front() + 1));
}

TEST(Session, SelectionsOfOthersMoveWithTheText)
{
    SessionCase session("{|abcd}");
    session[0].putCaret(3);
    session.settle();
    ASSERT_EQ(session[1].getClient().getSelections().size(), 1u);
    EXPECT_EQ(getCaretOf(1, session[1]), 5u);

    session[1].replace(0, 0, "xy");
    EXPECT_EQ(getCaretOf(1, session[1]), 7u);
    session.settle();
    EXPECT_EQ(getOwnCaret(session[0]), 7u);
    EXPECT_EQ(getCaret(session.getServer().getSelections().at(1)), 7u);
}

TEST(Session, CaretInAPendingWordStaysAtItsLetterWhenTheWordGetsAParagraph)
{
    for (unsigned long letter = 0; letter < 4; ++letter)
    {
        SessionCase session("{|ab}{|cd}{|ef}");
        session[0].replace(4, 4, "word");
        session[0].putCaret(4 + letter);
        session[1].replace(3, 6, "");
        session[1].send();
        session[0].receive();
        EXPECT_EQ(session[0].show(), "{|ab}{[..]|word[.]}{|ef}");
        EXPECT_EQ(getOwnCaret(session[0]), 8u + letter);
        session.settle();
        EXPECT_EQ(getOwnCaret(session[0]), 8u + letter);
        EXPECT_EQ(getCaretOf(1, session[1]), 8u + letter);
    }
}

TEST(Session, CaretInsidePendingTextSurvivesEveryRebase)
{
    SessionCase session("{|abcd}");
    session[0].replace(2, 2, "xyz");
    session[0].putCaret(4);
    EXPECT_EQ(getOwnCaret(session[0]), 6u);
    for (unsigned long round = 1; round <= 3; ++round)
    {
        session[1].replace(0, 0, "-");
        session[1].send();
        session[0].receive();
        session[1].receive();
        EXPECT_EQ(getOwnCaret(session[0]), 6u + round);
    }
    session.settle();
    EXPECT_EQ(getCaretOf(1, session[1]), 9u);
}

// What the server had said of the lost one used to take the next one away.
TEST(Session, SelectionBehindOneThatWasLostSurvivesABrokenConnection)
{
    SessionCase session("{|ab}");
    session[1].putCaret(1);
    session.settle();
    const std::vector<ServerMessage> messages{SelectionMoved{0, 2, nullptr}};
    session[1].getClient().receive(messages);
    ASSERT_EQ(session[1].getClient().findOwnSelection(), nullptr);
    session[1].putCaret(2);
    session.settle();
    session[1].disconnect();
    session[1].reconnect();
    session.settle();
    EXPECT_NE(session[1].getClient().findOwnSelection(), nullptr);
}

TEST(Session, SelectionGoesWithItsClient)
{
    SessionCase session("{|abcd}", 3);
    session[0].putCaret(3);
    session.settle();
    session.getServer().leave(1);
    session[1].receive();
    EXPECT_TRUE(session[1].getClient().getSelections().empty());
}

// The farm found that the others were told, and a client that was away then wasn't.
TEST(Session, SelectionThatWentWhileAConnectionWasBrokenIsGoneBehindIt)
{
    SessionCase session("{|abcd}", 3);
    session[0].putCaret(3);
    session.settle();
    session[1].disconnect();
    session.getServer().leave(1);
    session[1].reconnect();
    EXPECT_TRUE(session[1].getClient().getSelections().empty());
}

TEST(Session, LateJoinerSeesTheSelections)
{
    SessionCase session("{|abcd}", 1);
    session[0].putCaret(2);
    session.settle();
    EXPECT_EQ(getCaretOf(1, session.join()), 4u);
}

} // namespace

} // namespace Zem::CollaborationSession

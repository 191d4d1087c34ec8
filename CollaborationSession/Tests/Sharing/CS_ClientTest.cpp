#include "Sharing/CS_MakeEntry.h"
#include "Sharing/CS_SessionCase.h"

#include "CE_AfterDocumentActionSignal.h"
#include "TS_Assertions.h"

#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include <algorithm>
#include <functional>
#include <random>
#include <stdexcept>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

using Counter = DOMCollaboration::SingleActionExecutorNotificationObserver<std::function<void()>>;

/// What a client that can't take something in must keep.
struct State
{
    std::string _json;
    std::size_t _pendingCount;
    Revision _revision;
    Selections _selections;
    Selections _ownSelection;

    explicit State(Participant& participant)
        : _json(participant.getJson())
        , _pendingCount(participant.getClient().getPendingCount())
        , _revision(participant.getClient().getRevision())
        , _selections(participant.getClient().getSelections())
    {
        if (const Selection* own = participant.getClient().findOwnSelection())
        {
            _ownSelection.emplace(participant.getClient().getID(), *own);
        }
    }

    friend bool operator==(const State&, const State&) = default;
};

TEST(Client, OwnOperationThatFailsTellsObserversNothingOfWhatIsExecutedAgain)
{
    SessionCase session("{|ab}{|cd}");
    // The index knows a document of one paragraph by now, the copy has two.
    session[0].replace(2, 3, "");
    const std::string before = session[0].getJson();
    unsigned long notificationsCount = 0;
    const auto counter = std::make_shared<Counter>([&] { ++notificationsCount; });
    session[0].getClient().getNotifications().add(counter);
    EXPECT_ANY_THROW(session[0].execute(*SessionCase::makeBadOperation()));
    EXPECT_EQ(session[0].getJson(), before);
    EXPECT_EQ(session[0]._replacementsCount, 1);
    EXPECT_EQ(notificationsCount, 0u);
    session[0].replace(4, 4, "x");
    session.settle();
    EXPECT_EQ(session[1].getText(), "abcdx");
}

/// Edits of two users, some of which are pending in the end.
void editAtRandom(SessionCase& session, std::mt19937_64& random)
{
    const auto pick = [&](unsigned long count)
    { return std::uniform_int_distribution<unsigned long>(0, count - 1)(random); };
    for (unsigned long step = 0; step < 40; ++step)
    {
        Participant& participant = session[step % 2];
        const unsigned long count = participant.getText().size();
        const unsigned long begin = pick(count + 1);
        static constexpr const char* texts[] = {"", "x", "y\nz", "\n\n", "abc"};
        participant.replace(begin, std::min(count, begin + pick(5)), texts[pick(std::size(texts))]);
        if (step % 7 == 0)
        {
            session.settle();
        }
        else if (step % 3 == 0)
        {
            participant.send();
            participant.receive();
        }
    }
}

TEST(Client, OwnOperationThatFailsLeavesAnyDocumentAsItWas)
{
    for (unsigned long seed = 1; seed <= 40 && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 random(seed);
        SessionCase session("{|ab}{|cdefgh}{|ef}{|xx}");
        editAtRandom(session, random);
        for (const std::size_t who : {0u, 1u})
        {
            const State before(session[who]);
            EXPECT_ANY_THROW(session[who].execute(*SessionCase::makeBadOperation()));
            EXPECT_TRUE(State(session[who]) == before);
            EXPECT_EQ(session[who]._replacementsCount, 1);
        }
        editAtRandom(session, random);
        session.settle();
    }
}

TEST(Client, EmptyEntriesAreErrorsAndNothingHappens)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    const State before(session[0]);
    const auto good = makeEntry(1, 2, 1, TestSupport::insert(2, "y"));
    const std::vector<ServerMessage> noEntry{good, ActionHappened{2, nullptr}};
    const std::vector<ServerMessage> noOperation{good, makeEntry(2, 2, 2, nullptr)};
    EXPECT_THROW(session[0].getClient().receive(noEntry), InvalidMessageError);
    EXPECT_THROW(session[0].getClient().receive(noOperation), InvalidMessageError);
    EXPECT_TRUE(State(session[0]) == before);
    EXPECT_EQ(session[0]._replacementsCount, 0);
}

TEST(Client, SnapshotsThatLackSomethingAreErrors)
{
    Snapshot snapshot;
    EXPECT_THROW(Client(1, snapshot), InvalidMessageError);
    snapshot._document = std::make_shared<const DOM::Document>(SessionCase::makeDocument("{|ab}"));
    EXPECT_NO_THROW(Client(1, snapshot));
    snapshot._entries = {nullptr};
    EXPECT_THROW(Client(1, snapshot), InvalidMessageError);
    snapshot._entries = {std::make_shared<HistoryEntry>()};
    EXPECT_THROW(Client(1, snapshot), InvalidMessageError);
}

/// A client with pending text and a caret in it, and a colleague's caret and batch.
class FailingReceipt : public testing::Test
{
protected:
    FailingReceipt()
    {
        _session[1].putCaret(4);
        _session.settle();
        _session[0].replace(1, 1, "xyz");
        _session[0].putCaret(2);
        _session[1].replace(2, 3, "");
        _batch = *_session[1].getClient().takeBatch();
    }

    ActionHappened makeGoodEntry() const
    {
        return makeEntry(1, 2, 1, _batch._actions.front()._operation);
    }

    template<class Receive>
    void expectThatNothingHappens(const Receive& receive)
    {
        const State before(_session[0]);
        receive();
        EXPECT_TRUE(State(_session[0]) == before);
        EXPECT_TRUE(_session[0].getClient().takeRefusals().empty());
    }

    void goOn()
    {
        _session.getServer().receive(2, _batch);
        _session.settle();
        EXPECT_EQ(_session[0].getText(), "axyzbcd");
    }

    void receiveWithFailingObserver(unsigned long failing);

    SessionCase _session{"{|ab}{|cd}"};
    ClientBatch _batch;
};

TEST_F(FailingReceipt, EntryThatFailsLeavesEverythingAsItWas)
{
    const std::vector<ServerMessage> messages{makeGoodEntry(), makeEntry(2, 2, 2, SessionCase::makeBadOperation())};
    expectThatNothingHappens([&] { EXPECT_ANY_THROW(_session[0].getClient().receive(messages)); });
    EXPECT_EQ(_session[0]._replacementsCount, 1);
    goOn();
}

TEST_F(FailingReceipt, EntryThatIsChangedLeavesEverythingAsItWas)
{
    const std::vector<ServerMessage> messages{makeGoodEntry(), makeEntry(2, 2, 2, TestSupport::insert(0, "x"))};
    expectThatNothingHappens([&] { EXPECT_ASSERTION(_session[0].getClient().receive(messages), "isAsItHappened"); });
    goOn();
}

TEST_F(FailingReceipt, OwnEntryThatWasntSentLeavesEverythingAsItWas)
{
    const std::vector<ServerMessage> messages{makeGoodEntry(), makeEntry(2, 1, 1, std::make_shared<EmptyOperation>())};
    expectThatNothingHappens([&] { EXPECT_ASSERTION(_session[0].getClient().receive(messages), "isUnderWay"); });
    goOn();
}

TEST_F(FailingReceipt, RejectionOfWhatWasntSentLeavesEverythingAsItWas)
{
    const std::vector<ServerMessage> messages{makeGoodEntry(), makeRefusal(2, 1, 1, "It wasn't sent.")};
    expectThatNothingHappens([&] { EXPECT_ASSERTION(_session[0].getClient().receive(messages), "isUnderWay"); });
    goOn();
}

TEST_F(FailingReceipt, WhatWasRejectedInFrontOfTheFailureIsPendingAgain)
{
    ClientBatch own = *_session[0].getClient().takeBatch();
    const std::vector<ServerMessage> messages{makeRefusal(1, 1, 1, "No."),
                                              makeEntry(2, 2, 1, SessionCase::makeBadOperation())};
    expectThatNothingHappens([&] { EXPECT_ANY_THROW(_session[0].getClient().receive(messages)); });
    EXPECT_FALSE(_session[0].getClient().takeBatch());
    _session.getServer().receive(1, own);
    goOn();
}

TEST_F(FailingReceipt, ConfirmationInFrontOfTheFailureStands)
{
    ClientBatch own = *_session[0].getClient().takeBatch();
    _session.getServer().receive(1, own);
    const std::vector<ServerMessage> messages{makeEntry(1, 1, 1, own._actions.front()._operation),
                                              makeEntry(2, 2, 1, SessionCase::makeBadOperation())};
    const std::string before = _session[0].getJson();
    EXPECT_ANY_THROW(_session[0].getClient().receive(messages));
    EXPECT_EQ(_session[0].getJson(), before);
    EXPECT_EQ(_session[0].getClient().getRevision(), 1u);
    EXPECT_EQ(_session[0].getClient().getPendingCount(), 0u);
}

TEST(Client, UndoThatWasRejectedInFrontOfAFailureIsStillTheOnlyOne)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    session.settle();
    const auto typed = session[0].getActions().front();
    EXPECT_TRUE(session[0].undo(typed));
    ASSERT_TRUE(session[0].getClient().takeBatch());
    const std::vector<ServerMessage> messages{makeRefusal(2, 1, 2, "No."),
                                              makeEntry(3, 2, 1, SessionCase::makeBadOperation())};
    EXPECT_ANY_THROW(session[0].getClient().receive(messages));
    EXPECT_FALSE(session[0].undo(typed));
}

/// Fails once, at a notification that is counted from 1 on.
std::shared_ptr<Counter> makeFailingObserver(unsigned long failing)
{
    return std::make_shared<Counter>(
        [failing, count = 0ul]() mutable
        {
            if (++count == failing)
            {
                throw std::runtime_error("An observer failed");
            }
        });
}

/// Lets one notification of the client's fail while it takes in a colleague's batch.
void FailingReceipt::receiveWithFailingObserver(unsigned long failing)
{
    _session.getServer().receive(2, _batch);
    Client& client = _session[0].getClient();
    const auto observer = makeFailingObserver(failing);
    client.getNotifications().add(observer);
    EXPECT_THROW(_session[0].receive(), std::runtime_error);
    EXPECT_EQ(_session[0].getText(), "axyzbcd");
    EXPECT_EQ(client.getRevision(), 1u);
    EXPECT_EQ(client.getPendingCount(), 1u);
    EXPECT_EQ(_session[0]._replacementsCount, 0);
    _session.settle();
    EXPECT_EQ(_session[1].getText(), "axyzbcd");
    EXPECT_TRUE(client.takeRefusals().empty());
}

TEST_F(FailingReceipt, ObserverThatThrowsWhilePendingTextIsTakenBackStopsNothing)
{
    receiveWithFailingObserver(1);
}

TEST_F(FailingReceipt, ObserverThatThrowsAtAnEntryStopsNothing)
{
    receiveWithFailingObserver(2);
}

TEST_F(FailingReceipt, ObserverThatThrowsAtPendingTextThatIsExecutedAgainGetsItNotRefused)
{
    receiveWithFailingObserver(3);
}

TEST_F(FailingReceipt, SlotThatThrowsAfterwardsStopsNothing)
{
    _session.getServer().receive(2, _batch);
    Client& client = _session[0].getClient();
    unsigned long raisedCount = 0;
    const boost::signals2::scoped_connection connection = client.getExecutor().getAfterDocumentActionSignal().connect(
        [&]
        {
            ++raisedCount;
            EXPECT_EQ(_session[0].getText(), "axyzbcd");
            throw std::runtime_error("The slot throws");
        });
    EXPECT_THROW(_session[0].receive(), std::runtime_error);
    EXPECT_EQ(raisedCount, 1u);
    EXPECT_EQ(_session[0].getText(), "axyzbcd");
    EXPECT_EQ(client.getPendingCount(), 1u);
    EXPECT_TRUE(client.takeRefusals().empty());
}

/// All that the server told a client, in its order.
std::vector<ServerMessage> listen(Server& server, const std::function<void()>& act)
{
    std::vector<ServerMessage> told;
    const ClientID id = server.join([&](const ServerMessage& message) { told.push_back(message); }).first;
    act();
    server.leave(id);
    return told;
}

TEST(Client, MessagesThatComeTwiceOrLateDoNothing)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "!");
    const std::vector<ServerMessage> told = listen(session.getServer(),
                                                   [&]
                                                   {
                                                       session[1].replace(1, 1, "x");
                                                       session[1].putCaret(2);
                                                       session[1].send();
                                                       session[1].receive();
                                                       session[1].replace(2, 2, "y");
                                                       session[1].send();
                                                   });
    session[0].receive();
    const State before(session[0]);
    session[0].getClient().receive(told);
    session[0].getClient().receive(std::span(told).first(1));
    EXPECT_TRUE(State(session[0]) == before);
    EXPECT_EQ(session[0].getText(), "axyb!");
    session.settle();
}

TEST(Client, AMessageInFrontOfOthersFailsAndDoesNothing)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "!");
    const State before(session[0]);
    const auto second = makeEntry(2, 2, 2, TestSupport::insert(3, "y"));
    const SelectionMoved early{1, 2, std::make_shared<const Selection>(Participant::makeCaret(2))};
    EXPECT_THROW(session[0].getClient().receive(std::vector<ServerMessage>{second}), InvalidMessageError);
    EXPECT_THROW(session[0].getClient().receive(std::vector<ServerMessage>{early}), InvalidMessageError);
    EXPECT_TRUE(State(session[0]) == before);
    session.settle();
}

TEST(Client, ABatchThatTheOldConnectionDeliversLateIsTakenInOnce)
{
    SessionCase session("{|ab}");
    session[0].replace(1, 1, "x");
    const auto late = session[0].getClient().takeBatch();
    session[0].disconnect();
    session[0].reconnect();
    session.getServer().receive(session[0].getClient().getID(), *late);
    session[0].replace(2, 2, "y");
    session.settle();
    session.getServer().receive(session[0].getClient().getID(), *late);
    session.settle();
    EXPECT_EQ(session[1].getText(), "axyb");
    EXPECT_TRUE(session[0].getClient().isQuiet());
}

/// Takes back the last pending operation, which is found by its id: those of a client are counted.
void takeBackLast(Client& client)
{
    Operation::Id id = client.getID() << 32U;
    for (const Operation::Id end = id + 100; id < end;)
    {
        EmptyOperation operation;
        operation.setIDIfNeeded(id);
        try
        {
            client.getExecutor().reverse(operation);
            return;
        }
        catch (const AssertionFailure&)
        {
            continue;
        }
    }
    FAIL() << "nothing is pending";
}

TEST(Client, AnUndoThatIsTakenBackCanBeDoneAgain)
{
    SessionCase session("{|ab}");
    Client& client = session[0].getClient();
    session[0].replace(1, 1, "x");
    session.settle();
    for (int round = 0; round < 3; ++round)
    {
        ASSERT_TRUE(client.undo());
        EXPECT_EQ(session[0].getText(), "ab");
        ASSERT_TRUE(client.redo());
        EXPECT_EQ(session[0].getText(), "axb");
    }
    ASSERT_TRUE(client.undo());
    takeBackLast(client);
    EXPECT_EQ(session[0].getText(), "axb");
    EXPECT_TRUE(client.undo());
    session.settle();
    EXPECT_EQ(session[1].getText(), "ab");
}

TEST(Client, SignalIsNotRaisedWhereNothingWasExecuted)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "y");
    session[0].send();
    unsigned long raisedCount = 0;
    const boost::signals2::scoped_connection connection =
        session[0].getClient().getExecutor().getAfterDocumentActionSignal().connect([&] { ++raisedCount; });
    session[0].receive();
    EXPECT_EQ(session[0].getClient().getPendingCount(), 0u);
    EXPECT_EQ(raisedCount, 0u);
}

TEST(Client, OwnOperationAtWhichAnObserverThrowsFails)
{
    SessionCase session("{|ab}");
    session[0].replace(2, 2, "y");
    const State before(session[0]);
    const auto observer = makeFailingObserver(1);
    session[0].getClient().getNotifications().add(observer);
    EXPECT_THROW(session[0].replace(1, 1, "x"), std::runtime_error);
    EXPECT_TRUE(State(session[0]) == before);
    session[0].replace(0, 0, "z");
    session.settle();
    EXPECT_EQ(session[1].getText(), "zaby");
}

TEST(Client, TakingBackThatFailsIsGotAroundByACopy)
{
    SessionCase session("{|ab}");
    Client& client = session[0].getClient();
    TextEditor editor(client.getAdapter(), client.getExecutor(), client.getNotifications(),
                      TextEditor::getMainTextAddress());
    session[0].replace(0, 0, "x");
    Operations typed = editor.replace(3, 3, "y");
    session[0].putCaret(4);
    const auto observer = makeFailingObserver(1);
    client.getNotifications().add(observer);
    editor.takeBack(typed);
    EXPECT_EQ(session[0].getText(), "xab");
    EXPECT_EQ(client.getPendingCount(), 1u);
    EXPECT_EQ(session[0]._replacementsCount, 1);
    session[0].replace(0, 0, "z");
    session.settle();
    EXPECT_EQ(session[1].getText(), "zxab");
}

/// A client that never sends, and so always has something pending.
class EverPending : public testing::Test
{
protected:
    static constexpr Revision interval = 8;

    EverPending()
        : _client(_session.join({interval}))
    {
        _client.replace(1, 1, "pending");
    }

    void typeElsewhere(unsigned long count)
    {
        for (unsigned long done = 0; done < count; ++done)
        {
            _session[0].replace(0, 0, "x");
            _session[0].send();
            _session[0].receive();
            _client.receive();
        }
    }

    SessionCase _session{"{|ab}", 1};
    Participant& _client;
};

TEST_F(EverPending, KeepsNoMoreThanTwoIntervalsOfTheHistory)
{
    std::size_t most = 0;
    for (int round = 0; round < 100; ++round)
    {
        typeElsewhere(1);
        most = std::max(most, _client.getClient().getKeptEntriesCount());
    }
    EXPECT_EQ(most, 2 * interval);
    EXPECT_EQ(_client._replacementsCount, 0);
}

TEST_F(EverPending, ReturnsToTheDocumentThatItHadWhenAnOperationFails)
{
    typeElsewhere(2 * interval + 1);
    ASSERT_EQ(_client.getClient().getKeptEntriesCount(), interval);
    const State before(_client);
    EXPECT_ANY_THROW(_client.execute(*SessionCase::makeBadOperation()));
    EXPECT_TRUE(State(_client) == before);
    EXPECT_EQ(_client.getClient().getStatistics()._replayedCount, interval);
    _session.settle();
    EXPECT_EQ(_session[0].getText(), std::string(2 * interval + 1, 'x') + "apendingb");
}

TEST_F(EverPending, StillKnowsWhatItUndid)
{
    const auto typed = _client.getActions().front();
    EXPECT_TRUE(_client.undo(typed));
    typeElsewhere(2 * interval + 1);
    ASSERT_EQ(_client.getClient().getKeptEntriesCount(), interval);
    EXPECT_FALSE(_client.undo(typed));
}

} // namespace

} // namespace Zem::CollaborationSession

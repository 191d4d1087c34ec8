#include "Sharing/CS_SectionColumns.h"
#include "Sharing/CS_SessionCase.h"

#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include <limits>
#include <stdexcept>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

using Counter = DOMCollaboration::SingleActionExecutorNotificationObserver<std::function<void()>>;

/// A good insertion, and one that fits no document.
std::shared_ptr<const Operation> makeHalfBadOperation()
{
    std::vector<OperationUPtr> parts;
    parts.push_back(TestSupport::insert(2, "x"));
    parts.push_back(SessionCase::makeBadOperation());
    return std::make_shared<CompositeOperation>(std::move(parts));
}

std::shared_ptr<const Meaning> allOrNothing()
{
    auto meaning = std::make_shared<Meaning>();
    meaning->_isAllOrNothing = true;
    return meaning;
}

/// A client that keeps to no rules but those of the protocol.
class HostileClient
{
public:
    explicit HostileClient(Server& server)
        : _server(server)
        , _id(server.join([this](const ServerMessage& message) { take(message); }).first)
    {
    }

    void send(std::shared_ptr<const Operation> operation, std::shared_ptr<const Meaning> meaning = nullptr)
    {
        ClientBatch batch;
        batch._base = _server.getRevision();
        batch._firstNumber = ++_sentCount;
        batch._actions.push_back({std::move(operation), std::move(meaning)});
        _server.receive(_id, batch);
    }

    ClientID getID() const
    {
        return _id;
    }

    const std::vector<Refusal>& getRefusals() const
    {
        return _refusals;
    }

private:
    void take(const ServerMessage& message)
    {
        const auto* happened = std::get_if<ActionHappened>(&message);
        if (happened && happened->_entry->_refusal)
        {
            _refusals.push_back(*happened->_entry->_refusal);
        }
    }

    Server& _server;
    std::vector<Refusal> _refusals;
    unsigned long _sentCount = 0;
    ClientID _id;
};

/// A client whose connection can break at any message.
class Listener
{
public:
    explicit Listener(Server& server)
        : _server(server)
        , _id(server.join(makeOutbox()).first)
    {
    }

    void reconnect(Revision revision)
    {
        _server.reconnect(_id, revision, makeOutbox());
    }

    ClientID getID() const
    {
        return _id;
    }

    bool _isBroken = false;
    unsigned long _attemptsCount = 0;
    std::vector<ServerMessage> _told;

private:
    Server::Outbox makeOutbox()
    {
        return [this](const ServerMessage& message)
        {
            ++_attemptsCount;
            if (_isBroken)
            {
                throw std::runtime_error("The connection broke");
            }
            _told.push_back(message);
        };
    }

    Server& _server;
    ClientID _id;
};

TEST(Server, ThrowingOutboxIsABrokenConnectionAndAllOthersGetTheOperation)
{
    SessionCase session("{|ab}", 1);
    Listener listener(session.getServer());
    Participant& behind = session.join();
    listener._isBroken = true;
    session[0].replace(1, 1, "x");
    ASSERT_NO_THROW(session[0].send());
    EXPECT_EQ(session.getServer().getRevision(), 1u);
    EXPECT_EQ(session.getServer().getStatistics()._rejectedCount, 0u);
    session.settle();
    EXPECT_EQ(behind.getText(), "axb");
    EXPECT_TRUE(session[0].getClient().takeRefusals().empty());
    EXPECT_EQ(listener._attemptsCount, 1u);
}

TEST(Server, ClientWhoseOutboxThrewGetsAllThatItLacksWhenItComesBack)
{
    SessionCase session("{|ab}", 1);
    Listener listener(session.getServer());
    listener._isBroken = true;
    session[0].replace(1, 1, "x");
    session.settle();
    session[0].replace(2, 2, "y");
    session.settle();
    listener._isBroken = false;
    listener.reconnect(0);
    ASSERT_EQ(listener._told.size(), 2u);
    EXPECT_EQ(std::get<ActionHappened>(listener._told[0])._entry->_number, 1u);
    EXPECT_EQ(std::get<ActionHappened>(listener._told[1])._entry->_number, 2u);
}

TEST(Server, OutboxThatThrowsWhileItsClientComesBackIsABrokenConnection)
{
    SessionCase session("{|ab}", 1);
    Listener listener(session.getServer());
    session.getServer().disconnect(listener.getID());
    session[0].replace(1, 1, "x");
    session.settle();
    session[0].replace(2, 2, "y");
    session.settle();
    listener._isBroken = true;
    ASSERT_NO_THROW(listener.reconnect(0));
    EXPECT_EQ(listener._attemptsCount, 1u);
    listener._isBroken = false;
    session[0].replace(0, 0, "z");
    session.settle();
    EXPECT_EQ(listener._attemptsCount, 1u);
}

TEST(Server, RejectionThatAThrowingOutboxLostIsToldWhenItsClientComesBack)
{
    SessionCase session("{|ab}", 1);
    Listener listener(session.getServer());
    listener._isBroken = true;
    ClientBatch batch;
    batch._actions.push_back({SessionCase::makeBadOperation(), nullptr});
    ASSERT_NO_THROW(session.getServer().receive(listener.getID(), batch));
    ASSERT_NO_THROW(listener.reconnect(0));
    listener._isBroken = false;
    listener.reconnect(0);
    ASSERT_EQ(listener._told.size(), 1u);
    EXPECT_EQ(std::get<ActionHappened>(listener._told.front())._entry->_number, 1u);
}

/// A batch comes to a server that has one operation of its client.
class BatchBehindAnother : public testing::Test
{
protected:
    BatchBehindAnother()
    {
        _session[0].replace(1, 1, "x");
        _session.settle();
        _batch._base = 1;
        _batch._actions = {{std::make_shared<EmptyOperation>(), nullptr},
                           {std::make_shared<EmptyOperation>(), nullptr}};
    }

    SessionCase _session{"{|ab}"};
    ClientBatch _batch;
};

TEST_F(BatchBehindAnother, WithNumbersThatWrapAroundIsAnError)
{
    for (const unsigned long wrapping : {std::numeric_limits<unsigned long>::max(), 0ul})
    {
        _batch._firstNumber = wrapping;
        EXPECT_THROW(_session.getServer().receive(1, _batch), InvalidBatchError) << wrapping;
        EXPECT_THROW(_session.getServer().receive(2, _batch), InvalidBatchError) << wrapping;
    }
    EXPECT_EQ(_session.getServer().getRevision(), 1u);
}

TEST_F(BatchBehindAnother, ThatArrivedOnlyInPartIsAnError)
{
    EXPECT_THROW(_session.getServer().receive(1, _batch), InvalidBatchError);
}

TEST(Server, RejectedOperationThatHadChangedAPartLeavesNoTrace)
{
    SessionCase session("{|ab}{|cd}");
    session[0].replace(2, 3, "");
    session.settle();
    Server& server = session.getServer();
    const std::string before = DOM::toJson(server.getDocument());
    HostileClient hostile(server);
    unsigned long notificationsCount = 0;
    const auto counter = std::make_shared<Counter>([&] { ++notificationsCount; });
    server.getNotifications().add(counter);
    std::vector<std::string> replacements;
    server.setOnDocumentReplaced([&] { replacements.push_back(DOM::toJson(server.getDocument())); });

    hostile.send(makeHalfBadOperation(), allOrNothing());

    EXPECT_EQ(DOM::toJson(server.getDocument()), before);
    // Of the part that was good, which came and went. The deletion that was executed again isn't told of.
    EXPECT_EQ(notificationsCount, 2u);
    EXPECT_EQ(replacements.size(), 1u);
    ASSERT_EQ(hostile.getRefusals().size(), 1u);
    EXPECT_EQ(hostile.getRefusals().front()._reason, RefusalReason::NotWhole);
    EXPECT_FALSE(hostile.getRefusals().front()._sentence.empty());
    session[1].replace(0, 0, "x");
    session.settle();
    EXPECT_EQ(session[0].getText(), "xabcd");
}

TEST(Server, APartThatFitsNoDocumentCostsThatPartAlone)
{
    SessionCase session("{|ab}");
    HostileClient hostile(session.getServer());
    hostile.send(makeHalfBadOperation());
    ASSERT_EQ(hostile.getRefusals().size(), 1u);
    EXPECT_EQ(hostile.getRefusals().front()._reason, RefusalReason::FitsNoDocument);
    session.settle();
    EXPECT_EQ(session[0].getText(), "xab");
}

TEST(Server, WhatAnObserverThrowsIsAFailureOfTheOperation)
{
    SessionCase session("{|ab}");
    Server& server = session.getServer();
    auto observer = std::make_shared<Counter>([] { throw std::runtime_error("An observer failed"); });
    server.getNotifications().add(observer);
    session[0].replace(1, 1, "x");
    session.settle();
    EXPECT_EQ(session[1].getText(), "ab");
    const auto refusals = session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals[0]._refusal._sentence, "An observer failed");
    observer.reset();
    session[0].replace(2, 2, "y");
    session.settle();
    EXPECT_EQ(session[1].getText(), "aby");
}

TEST(Server, ManyBadOperationsExecuteNoEntryAgainMoreThanOnce)
{
    SessionCase session("{|ab}");
    HostileClient hostile(session.getServer());
    for (unsigned long round = 1; round <= 10; ++round)
    {
        session[0].replace(1, 1, "x");
        session.settle();
    }
    for (unsigned long round = 1; round <= 5; ++round)
    {
        hostile.send(makeHalfBadOperation(), allOrNothing());
        // The entries of text, and those of which nothing happened, each once.
        EXPECT_EQ(session.getServer().getStatistics()._replayedCount, 10u + round - 1);
    }
    session[1].replace(0, 0, "y");
    session.settle();
    hostile.send(makeHalfBadOperation(), allOrNothing());
    EXPECT_EQ(session.getServer().getStatistics()._replayedCount, 16u);
    EXPECT_EQ(session.getServer().getStatistics()._rejectedCount, 6u);
    EXPECT_EQ(session.join().getText(), "yaxxxxxxxxxxb");
    session.settle();
}

TEST(Server, KeepsNoMoreHistoryWhenOperationsFailAllTheTime)
{
    SessionCase session("{|ab}", 2, {10});
    HostileClient hostile(session.getServer());
    for (std::size_t round = 0; round < 100; ++round)
    {
        session[round % 2].replace(1, 1, "x");
        session.settle();
        hostile.send(makeHalfBadOperation());
    }
    EXPECT_EQ(session.getServer().getRevision(), 200u);
    EXPECT_LE(session.getServer().getKeptEntriesCount(), 20u);
}

} // namespace

} // namespace Zem::CollaborationSession

#include "Sharing/CS_HostileClient.h"
#include "Sharing/CS_InvalidOperationError.h"
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

std::shared_ptr<const Operation> insertBefore(OperationUPtr operation)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(TestSupport::insert(2, "x"));
    parts.push_back(std::move(operation));
    return std::make_shared<CompositeOperation>(std::move(parts));
}

/// A good insertion, and one that fits no document.
std::shared_ptr<const Operation> makeHalfBadOperation()
{
    return insertBefore(SessionCase::makeBadOperation());
}

/// A good insertion, and one of which only its executor sees that it doesn't fit: text has no size of its own.
std::shared_ptr<const Operation> makeHalfFailingOperation()
{
    return insertBefore(SessionCase::makeFailingOperation());
}

std::shared_ptr<const Meaning> allOrNothing()
{
    auto meaning = std::make_shared<Meaning>();
    meaning->_isAllOrNothing = true;
    return meaning;
}

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
    // Of the part that was good. What was executed again without it isn't told of.
    EXPECT_EQ(notificationsCount, 1u);
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

TEST(Server, WhatDoesntFitTheDocumentIsRefusedAndNoDocumentIsMadeForIt)
{
    SessionCase session("{|ab}");
    HostileClient hostile(session.getServer());
    int replacementsCount = 0;
    session.getServer().setOnDocumentReplaced([&] { ++replacementsCount; });
    session[0].replace(0, 1, "");
    session.settle();
    std::vector<OperationUPtr> misfits;
    misfits.push_back(SessionCase::makeBadOperation());
    misfits.push_back(TestSupport::mark(2, 3));
    misfits.push_back(TestSupport::restore(3, "b"));
    for (const OperationUPtr& misfit : misfits)
    {
        hostile.send(cloneOperation(*misfit));
        ASSERT_FALSE(hostile.getRefusals().empty());
        EXPECT_EQ(hostile.getRefusals().back()._reason, RefusalReason::FitsNoDocument);
    }
    EXPECT_EQ(hostile.getRefusals().size(), misfits.size());
    EXPECT_EQ(hostile.getRefusals().front()._sentence, describe(OperationFault::NodeOfOtherType));
    EXPECT_EQ(replacementsCount, 0);
    EXPECT_EQ(session.getServer().getStatistics()._replayedCount, 0u);
    session.settle();
    EXPECT_EQ(session[1].getText(), "b");
}

/// An observer that throws something that is no exception, once it is told to.
class Thrower
{
public:
    explicit Thrower(Server& server)
        : _counter(std::make_shared<Counter>(
              [this]
              {
                  if (_throws)
                  {
                      throw 7;
                  }
              }))
    {
        server.getNotifications().add(_counter);
    }

    bool _throws = false;

private:
    std::shared_ptr<Counter> _counter;
};

TEST(Server, WhateverAnObserverThrowsLeavesNoChangeWithoutAnEntry)
{
    SessionCase session("{|abcd}");
    Thrower thrower(session.getServer());
    session[0].replace(1, 1, "x");
    session[1].replace(3, 3, "y");
    thrower._throws = true;
    session[0].send();
    thrower._throws = false;
    session.settle();
    EXPECT_EQ(session[1].getText(), "abcyd");
    EXPECT_EQ(session.getServer().getRevision(), 2u);
    const auto refusals = session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals[0]._refusal._reason, RefusalReason::FitsNoDocument);
    EXPECT_FALSE(refusals[0]._refusal._sentence.empty());
}

TEST(Server, WhateverAnObserverThrowsAtAPaintingLeavesItOut)
{
    SessionCase session("{|abcd}");
    Thrower thrower(session.getServer());
    session[0].setRunLook(1, 3, LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold));
    session[1].replace(2, 2, "y");
    session[1].send();
    thrower._throws = true;
    session[0].send();
    thrower._throws = false;
    session.settle();
    EXPECT_EQ(session[1].show(), session[0].show());
    EXPECT_EQ(session[1].getText(), "abycd");
    EXPECT_EQ(session[0].getClient().takeRefusals().size(), 1u);
    session[0].setRunLook(0, 5, LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold));
    session.settle();
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
        hostile.send(makeHalfFailingOperation(), allOrNothing());
        // The entries of text, and those of which nothing happened, each once.
        EXPECT_EQ(session.getServer().getStatistics()._replayedCount, 10u + round - 1);
    }
    session[1].replace(0, 0, "y");
    session.settle();
    hostile.send(makeHalfFailingOperation(), allOrNothing());
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
        hostile.send(makeHalfFailingOperation());
    }
    EXPECT_EQ(session.getServer().getRevision(), 200u);
    EXPECT_LE(session.getServer().getKeptEntriesCount(), 20u);
}

} // namespace

} // namespace Zem::CollaborationSession

// Operations of others that commute with what is pending: they are executed beside it, and nobody sees a difference.

#include "Sharing/CS_MakeEntry.h"
#include "Sharing/CS_NodeOperations.h"

#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"
#include "TS_Assertions.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;
using namespace NodeOperations;

/// An operation on a node that no other row's node lies in.
struct Edit
{
    const char* _name;
    OperationUPtr (*_make)();
};

const std::vector<Edit> edits = {
    {"Cell", [] { return inText(getCellText(0, 0), TestSupport::insert(0, "{|x}")); }},
    {"OtherCell", [] { return inText(getCellText(0, 1), TestSupport::insert(0, "{|y}")); }},
    {"Shape", [] { return inText(getShapeText(), TestSupport::insert(0, "{|z}")); }},
    {"Paragraph", [] { return setMarkSize(2, 12); }},
    {"Run", [] { return setRunSize(3, 14); }},
    {"OtherRun", [] { return setRunSize(8, 14); }},
    {"Section", [] { return setColumns(13, 2); }},
    {"Field", [] { return setComments({UUID()}); }},
    {"DocumentProperty", [] { return setTimeZone(60); }},
    {"Script", [] { return insertScript("a", "text"); }},
};

/// What a client with a pending operation sees when one of a colleague comes in.
struct Course
{
    std::vector<std::string> _states;
    unsigned long _besideCount = 0;
    unsigned long _rebasedCount = 0;

    Course(OperationUPtr pending, OperationUPtr remote, bool alwaysTakesBack)
    {
        ManyNodesSession session(3);
        Client& client = session[0].getClient();
        client.setAlwaysTakesBack(alwaysTakesBack);
        session[0].execute(*pending);
        session[1].execute(*remote);
        session[1].send();
        session[0].receive();
        _besideCount = client.getStatistics()._besidePendingCount;
        _rebasedCount = client.getStatistics()._rebasedCount;
        _states.push_back(session[0].getJson());
        session.settle();
        _states.push_back(session[0].getJson());
        EXPECT_TRUE(session[0].getClient().undo());
        session.settle();
        _states.push_back(session[2].getJson());
        EXPECT_TRUE(client.takeRefusals().empty());
    }
};

using Pair = std::pair<const Edit*, const Edit*>;

std::vector<Pair> getPairsOfDifferentNodes()
{
    std::vector<Pair> pairs;
    for (const Edit& pending : edits)
    {
        for (const Edit& remote : edits)
        {
            if (&pending != &remote)
            {
                pairs.emplace_back(&pending, &remote);
            }
        }
    }
    return pairs;
}

class PairOfNodes : public testing::TestWithParam<Pair>
{
protected:
    static Course play(bool alwaysTakesBack)
    {
        return Course(GetParam().first->_make(), GetParam().second->_make(), alwaysTakesBack);
    }
};

TEST_P(PairOfNodes, NeedsNothingTakenBackAndEndsEqual)
{
    const Course beside = play(false);
    const Course takenBack = play(true);
    EXPECT_EQ(beside._besideCount, 1u);
    EXPECT_EQ(beside._rebasedCount, 0u);
    EXPECT_EQ(takenBack._besideCount, 0u);
    EXPECT_EQ(takenBack._rebasedCount, 1u);
    EXPECT_EQ(beside._states, takenBack._states);
}

std::string getName(const testing::TestParamInfo<Pair>& info)
{
    return std::string(info.param.first->_name) + "And" + info.param.second->_name;
}

INSTANTIATE_TEST_SUITE_P(BesidePending, PairOfNodes, testing::ValuesIn(getPairsOfDifferentNodes()), getName);

/// How many of others' operations ran beside what was pending.
unsigned long countBeside(const OperationUPtr& pending, const OperationUPtr& remote)
{
    ManyNodesSession session;
    session[0].execute(*pending);
    session[1].execute(*remote);
    session[1].send();
    session[0].receive();
    EXPECT_EQ(session[0].getClient().getRevision(), 3u);
    return session[0].getClient().getStatistics()._besidePendingCount;
}

TEST(BesidePending, NothingRunsBesideAnEditOfItsOwnNode)
{
    for (const Edit& edit : edits)
    {
        EXPECT_EQ(countBeside(edit._make(), edit._make()), 0u) << edit._name;
    }
}

TEST(BesidePending, DeletionOfATableDoesNotRunBesideTheTextOfItsCell)
{
    EXPECT_EQ(countBeside(edits.front()._make(), TestSupport::mark(0, 1)), 0u);
    EXPECT_EQ(countBeside(TestSupport::mark(0, 1), edits.front()._make()), 0u);
}

TEST(BesidePending, TextInFrontOfATableDoesNotRunBesideTheTextOfItsCell)
{
    EXPECT_EQ(countBeside(edits.front()._make(), TestSupport::insert(0, "{}")), 0u);
}

TEST(BesidePending, CommutingOperationsBehindOneThatDoesntAreBroughtPastAsWell)
{
    ManyNodesSession session;
    session[0].execute(*inText(getCellText(0, 0), TestSupport::insert(0, "{|x}")));
    session[1].execute(*inText(getCellText(0, 1), TestSupport::insert(0, "{|y}")));
    session[1].replace(2, 2, "text");
    session[1].execute(*TestSupport::mark(0, 1));
    session[1].execute(*setTimeZone(60));
    session[1].send();
    session[0].receive();
    EXPECT_EQ(session[0].getClient().getStatistics()._besidePendingCount, 1u);
    EXPECT_EQ(session[0].getClient().getStatistics()._rebasedCount, 1u);
    session.settle();
}

TEST(BesidePending, OwnOperationIsConfirmedBehindOneThatRanBesideIt)
{
    ManyNodesSession session;
    session[0].execute(*setTimeZone(60));
    session[1].execute(*insertScript("a", "text"));
    session[1].send();
    session[0].send();
    session.settle();
    const Statistics& statistics = session[0].getClient().getStatistics();
    EXPECT_EQ(statistics._besidePendingCount, 1u);
    EXPECT_EQ(statistics._rebasedCount, 0u);
    EXPECT_EQ(statistics._confirmedCount, 3u);
}

TEST(BesidePending, ObserverThatThrowsStopsNothing)
{
    using Thrower = DOMCollaboration::SingleActionExecutorNotificationObserver<std::function<void()>>;
    ManyNodesSession session;
    session[0].execute(*setTimeZone(60));
    session[1].execute(*insertScript("a", "text"));
    session[1].send();
    const auto thrower = std::make_shared<Thrower>([] { throw std::runtime_error("The observer throws"); });
    session[0].getClient().getNotifications().add(thrower);
    EXPECT_THROW(session[0].receive(), std::runtime_error);
    EXPECT_EQ(session[0].getClient().getStatistics()._besidePendingCount, 1u);
    EXPECT_EQ(session[0].getClient().getPendingCount(), 1u);
    EXPECT_EQ(session[0]._replacementsCount, 0);
    session.settle();
    EXPECT_TRUE(session[0].getClient().takeRefusals().empty());
}

TEST(BesidePending, WithNothingPendingNothingIsCounted)
{
    ManyNodesSession session;
    session[1].execute(*setTimeZone(60));
    session.settle();
    EXPECT_EQ(session[0].getClient().getStatistics()._besidePendingCount, 0u);
    EXPECT_EQ(session[0].getClient().getStatistics()._executedCount, 1u);
}

TEST(BesidePending, DocumentIsMadeAgainWithWhatRanBesideAnOperation)
{
    ManyNodesSession session;
    session[0].execute(*setTimeZone(60));
    session[1].execute(*insertScript("a", "text"));
    session[1].send();
    session[0].receive();
    const std::string before = session[0].getJson();
    EXPECT_ANY_THROW(session[0].execute(*SessionCase::makeBadOperation()));
    EXPECT_EQ(session[0]._replacementsCount, 1);
    EXPECT_EQ(session[0].getJson(), before);
    session.settle();
}

TEST(BesidePending, OwnEntryThatWasntSentIsAnErrorThoughItWouldTouchNothing)
{
    ManyNodesSession session;
    const std::vector<ServerMessage> messages{makeEntry(3, 1, 3, setTimeZone(60))};
    EXPECT_ASSERTION(session[0].getClient().receive(messages), "isUnderWay");
    EXPECT_EQ(session[0].getClient().getRevision(), 2u);
}

TEST(BesidePending, WhatRanInFrontOfAFailureStands)
{
    ManyNodesSession session;
    session[0].execute(*setTimeZone(60));
    session[1].execute(*insertScript("a", "text"));
    const ClientBatch batch = *session[1].getClient().takeBatch();
    const std::vector<ServerMessage> messages{
        makeEntry(3, 2, 1, batch._actions.front()._operation),
        makeEntry(4, 2, 2, inText(getCellText(0, 0), TestSupport::insert(0, "x")))};
    Client& client = session[0].getClient();
    // A letter needs a run, which is found out when it has got one.
    EXPECT_ASSERTION(client.receive(messages), "isAsItHappened");
    EXPECT_EQ(client.getRevision(), 3u);
    EXPECT_EQ(client.getPendingCount(), 1u);
    session.getServer().receive(2, batch);
    session[1].receive();
    session[1].execute(*setTimeZone(60));
    EXPECT_EQ(session[0].getJson(), session[1].getJson());
}

} // namespace

} // namespace Zem::CollaborationSession

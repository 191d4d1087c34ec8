// What a server and its clients remember is bounded by their settings, however much happens.

#include "Sharing/CS_HostileClient.h"
#include "Sharing/CS_MakeEntry.h"
#include "Sharing/CS_SessionCase.h"
#include "Sharing/CS_UndoLog.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

namespace
{

TEST(BoundedMemory, OfAServerBySettingsWhileSomebodyLagsAndSomebodyIsRefused)
{
    ServerSettings settings;
    settings._checkpointInterval = 10;
    settings._keptEntriesCount = 30;
    settings._limits._members = 8;
    SessionCase session("{|ab}", 2, settings);
    Server& server = session.getServer();
    // It never says anything, and its base stands still.
    HostileClient silent(server);
    HostileClient refused(server);
    std::size_t greatest = 0;
    for (unsigned long round = 0; round < 150; ++round)
    {
        session[round % 2].replace(1, round % 3 == 0 ? 2 : 1, "x");
        refused.send(SessionCase::makeBadOperation());
        // Somebody comes, selects something and goes.
        HostileClient passing(server);
        passing.select(Participant::makeCaret(2), server.getRevision());
        server.leave(passing.getID());
        session.settle();
        greatest = std::max(greatest, server.getKeptEntriesCount());
    }
    EXPECT_EQ(server.getRevision(), 300u);
    EXPECT_LE(greatest, settings._keptEntriesCount + 2 * settings._checkpointInterval);
    EXPECT_TRUE(silent.isTooFarBehind());
    EXPECT_FALSE(refused.isTooFarBehind());
    EXPECT_TRUE(server.getSelections().empty());
}

TEST(BoundedMemory, OfSelectionsThatWentByTheNumberOfMembers)
{
    ServerSettings settings;
    settings._limits._members = 8;
    SessionCase session("{|ab}", 1, settings);
    Server& server = session.getServer();
    const ClientID absent = server.join([](const ServerMessage&) {}).first;
    for (int round = 0; round < 100; ++round)
    {
        HostileClient passing(server);
        passing.select(Participant::makeCaret(2), 0);
        server.leave(passing.getID());
    }
    std::size_t toldCount = 0;
    server.reconnect(absent, 0, [&](const ServerMessage&) { ++toldCount; });
    EXPECT_EQ(toldCount, settings._limits._members);
    server.leave(absent);
    session.settle();
}

TEST(BoundedMemory, OfAClientBySettings)
{
    ClientSettings settings;
    settings._checkpointInterval = 10;
    settings._undoCount = 20;
    settings._undoEntriesCount = 30;
    settings._refusalsCount = 5;
    SessionCase session("{|ab}", 1);
    Participant& user = session.join(settings);
    for (unsigned long round = 0; round < 120; ++round)
    {
        session[0].replace(1, 1, "y");
        user.replace(0, 0, "x");
        session[0].send();
        const auto batch = user.getClient().takeBatch();
        // The server gets something else, which it refuses.
        ClientBatch spoilt = *batch;
        spoilt._actions.front()._operation = SessionCase::makeBadOperation();
        session.getServer().receive(user.getClient().getID(), round % 2 == 0 ? spoilt : *batch);
        session.settle();
        ASSERT_LE(user.getClient().getKeptEntriesCount(), 2 * settings._checkpointInterval);
    }
    EXPECT_EQ(user.getClient().takeRefusals().size(), settings._refusalsCount);
    std::size_t undoneCount = 0;
    while (user.getClient().undo())
    {
        ++undoneCount;
    }
    EXPECT_GE(undoneCount, settings._undoCount / 2);
    EXPECT_LE(undoneCount, settings._undoCount);
    session.settle();
}

TEST(BoundedMemory, OfAnUndoLogByTheEntriesThatItKeeps)
{
    constexpr std::size_t keptCount = 30;
    const Replica replica(DocumentKind::Text, SessionCase::makeDocument("{|ab}"));
    UndoLog log(replica.getTransformer(), keptCount);
    for (unsigned long number = 1; number <= 3000; ++number)
    {
        const ActionHappened happened = makeEntry(number, 1, number, TestSupport::insert(2, "x"));
        log.pass(happened._entry);
        log.add(number, {happened._entry->_action._operation, nullptr, {}});
        if (number > 20)
        {
            log.forget(number - 20);
        }
        std::size_t count = 0;
        log.forEachEntry([&](const CollaborationEngine::Operation&) { return ++count > 0; });
        ASSERT_LE(count, keptCount + 64);
    }
}

} // namespace

} // namespace Zem::CollaborationSession

#include "Sharing/CS_Replica.h"

#include "Sharing/CS_SessionCase.h"

#include "TS_Assertions.h"

#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

using Counter = DOMCollaboration::SingleActionExecutorNotificationObserver<std::function<void()>>;

class ReplacedReplica : public testing::Test
{
protected:
    ReplacedReplica()
    {
        _replica.getNotifications().add(_counter);
        _replica.setOnDocumentReplaced([this] { _shownWhenReplaced.push_back(show()); });
    }

    std::string show() const
    {
        return TestSupport::print(_replica.getDocument().getTextWithTombstones());
    }

    Replica _replica{DocumentKind::Text, SessionCase::makeDocument("{|old}")};
    unsigned long _notificationsCount = 0;
    std::shared_ptr<Counter> _counter = std::make_shared<Counter>([this] { ++_notificationsCount; });
    std::vector<std::string> _shownWhenReplaced;
};

TEST_F(ReplacedReplica, TellsOfTheNewDocumentWhenItIsWholeAndNotOfTheWayThere)
{
    const OperationUPtr first = TestSupport::insert(4, "x");
    const OperationUPtr second = TestSupport::insert(5, "y");
    _replica.replaceDocument(SessionCase::makeDocument("{|ab}"), {first.get(), second.get()});
    EXPECT_EQ(show(), "{|abxy}");
    EXPECT_EQ(_shownWhenReplaced, std::vector<std::string>{"{|abxy}"});
    EXPECT_EQ(_notificationsCount, 0u);
}

TEST_F(ReplacedReplica, TellsOfWhatHappensInTheNewDocument)
{
    _replica.replaceDocument(SessionCase::makeDocument("{|ab}"), {});
    _replica.executeAgain(*TestSupport::insert(4, "x"));
    EXPECT_EQ(show(), "{|abx}");
    EXPECT_EQ(_notificationsCount, 1u);
}

TEST_F(ReplacedReplica, StaysAsItWasWhenAnOperationFails)
{
    const OperationUPtr good = TestSupport::insert(4, "x");
    const OperationUPtr bad = SessionCase::makeBadOperation();
    EXPECT_ANY_THROW(_replica.replaceDocument(SessionCase::makeDocument("{|ab}"), {good.get(), bad.get()}));
    EXPECT_EQ(show(), "{|old}");
    EXPECT_TRUE(_shownWhenReplaced.empty());
    EXPECT_EQ(_notificationsCount, 0u);
}

TEST_F(ReplacedReplica, StaysAsItWasWhenAnOperationIsChanged)
{
    // A letter needs a run.
    const OperationUPtr changed = TestSupport::insert(0, "x");
    EXPECT_ASSERTION(_replica.replaceDocument(SessionCase::makeDocument("{|ab}"), {changed.get()}), "isAsItHappened");
    EXPECT_EQ(show(), "{|old}");
}

} // namespace

} // namespace Zem::CollaborationSession

// What a client refuses of its own operations, once each, and why.

#include "Sharing/CS_MakeEntry.h"
#include "Sharing/CS_SectionColumns.h"
#include "Sharing/CS_SessionCase.h"

#include <memory>
#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

/// A pending setting that can't be brought past another one, and text behind it.
class SettingWithoutPlace : public testing::Test
{
protected:
    SettingWithoutPlace()
    {
        _session[0].execute(_twoColumns);
        _session[0].replace(1, 1, "x");
        _session[1].execute(_threeColumns);
        _batch = *_session[1].getClient().takeBatch();
    }

    OperationHappened makeOtherSetting() const
    {
        return makeEntry(2, 1, _batch._operations.front());
    }

    void receive(const std::vector<ServerMessage>& messages)
    {
        _session[0].getClient().receive(messages);
    }

    /// The refusals must be of the setting and of the text.
    void expectRefusals(const std::string& reasonOfTheSetting, const std::string& reasonOfTheText)
    {
        const auto refusals = _session[0].getClient().takeRefusals();
        ASSERT_EQ(refusals.size(), 2u);
        EXPECT_EQ(refusals[0]._operationID, *_twoColumns.getID());
        EXPECT_EQ(refusals[0]._reason, reasonOfTheSetting);
        EXPECT_EQ(refusals[1]._operationID, _session[0].getOperationIDs().front());
        EXPECT_EQ(refusals[1]._reason, reasonOfTheText);
        EXPECT_EQ(_session[0].show(), "{|ab}${|cd}");
    }

    SessionCase _session{"{|ab}${|cd}"};
    SetPropertyOperation _twoColumns = setSectionColumns(5, 2);
    SetPropertyOperation _threeColumns = setSectionColumns(5, 3);
    ClientBatch _batch;
};

TEST_F(SettingWithoutPlace, IsRefusedAndWhatWasMadeBehindItToo)
{
    receive({makeOtherSetting()});
    expectRefusals("Same node transformation should never happen for this node type.",
                   "It was made behind one that can't be placed any more.");
    _session.getServer().receive(2, _batch);
    _session.settle();
    EXPECT_EQ(_session[0].show(), "{|ab}${|cd}");
}

TEST_F(SettingWithoutPlace, IsRefusedOnceIfTheServerRejectsItAndWhatWasMadeBehindItForItsOwnReason)
{
    ASSERT_TRUE(_session[0].getClient().takeBatch());
    receive({makeOtherSetting(), OperationRejected{1, "No."}});
    expectRefusals("No.", "It was made behind one that can't be placed any more.");
}

TEST_F(SettingWithoutPlace, IsRefusedOnceIfTheServerRejectsItLater)
{
    ASSERT_TRUE(_session[0].getClient().takeBatch());
    receive({makeOtherSetting()});
    receive({OperationRejected{1, "No."}, OperationRejected{2, "It neither."}});
    expectRefusals("Same node transformation should never happen for this node type.",
                   "It was made behind one that can't be placed any more.");
    EXPECT_TRUE(_session[0].getClient().isQuiet());
}

TEST_F(SettingWithoutPlace, IsNotRefusedIfTheServerFoundOne)
{
    ASSERT_TRUE(_session[0].getClient().takeBatch());
    receive({makeOtherSetting(), makeEntry(1, 1, std::make_shared<EmptyOperation>())});
    const auto refusals = _session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals[0]._operationID, _session[0].getOperationIDs().front());
}

TEST(Refusals, RejectedOperationIsRefusedOnceAndWhatWasMadeBehindItGoesOn)
{
    SessionCase session("{|ab}${|cd}");
    session[0].replace(1, 1, "x");
    SetPropertyOperation twoColumns = setSectionColumns(6, 2);
    session[0].execute(twoColumns);
    session[0].replace(6, 6, "y");
    ASSERT_TRUE(session[0].getClient().takeBatch());
    const std::vector<ServerMessage> messages{OperationRejected{1, "No."}};
    session[0].getClient().receive(messages);
    const auto refusals = session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals[0]._operationID, session[0].getOperationIDs().front());
    EXPECT_EQ(refusals[0]._reason, "No.");
    EXPECT_EQ(session[0].show(), "{|ab}${|cyd}");
    EXPECT_EQ(session[0].getClient().getPendingCount(), 2u);
}

} // namespace

} // namespace Zem::CollaborationSession

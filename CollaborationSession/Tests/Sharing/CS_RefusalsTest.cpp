// What clients are told of their own actions of which less happened than was meant.

#include "Sharing/CS_MakeEntry.h"
#include "Sharing/CS_SectionColumns.h"
#include "Sharing/CS_SessionCase.h"

#include "DOM_SectionProps.h"
#include "DOM_SectionTag.h"

#include "Util_Cast.h"

#include <memory>
#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

// Nothing is told of it: of two values for one thing the later one stands, and what was typed behind either stays.
TEST(Refusals, TwoSettingsOfOneSectionLeaveTheLaterAndAllThatWasTypedBehind)
{
    for (const std::size_t later : {0u, 1u})
    {
        SessionCase session("{|ab}${|cd}");
        SetPropertyOperation columns[] = {setSectionColumns(5, 2), setSectionColumns(5, 3)};
        session[0].execute(columns[0]);
        session[0].replace(1, 1, "x");
        session[1].execute(columns[1]);
        session[1].replace(2, 2, "y");
        session[1 - later].send();
        session[later].send();
        session.settle();
        EXPECT_EQ(session[0].show(), "{|axby}${|cd}");
        EXPECT_TRUE(session[0].getClient().takeRefusals().empty());
        EXPECT_TRUE(session[1].getClient().takeRefusals().empty());
        SessionCase expected("{|axby}${|cd}", 1);
        SetPropertyOperation setting = setSectionColumns(7, later == 0 ? 2 : 3);
        expected[0].execute(setting);
        EXPECT_TRUE(session[0].getClient().getDocument() == expected[0].getClient().getDocument());
    }
}

TEST(Refusals, RefusedActionIsToldOnceAndWhatWasMadeBehindItGoesOn)
{
    SessionCase session("{|ab}${|cd}");
    session[0].replace(1, 1, "x");
    SetPropertyOperation twoColumns = setSectionColumns(6, 2);
    session[0].execute(twoColumns);
    session[0].replace(6, 6, "y");
    ASSERT_TRUE(session[0].getClient().takeBatch());
    std::vector<ServerMessage> messages;
    messages.emplace_back(makeRefusal(1, 1, 1, "No."));
    session[0].getClient().receive(messages);
    const auto refusals = session[0].getClient().takeRefusals();
    ASSERT_EQ(refusals.size(), 1u);
    EXPECT_EQ(refusals[0]._action, session[0].getActions().front());
    EXPECT_EQ(refusals[0]._refusal, (Refusal{RefusalReason::FitsNoDocument, "No."}));
    EXPECT_EQ(session[0].show(), "{|ab}${|cyd}");
    EXPECT_EQ(session[0].getClient().getPendingCount(), 2u);
}

} // namespace

} // namespace Zem::CollaborationSession

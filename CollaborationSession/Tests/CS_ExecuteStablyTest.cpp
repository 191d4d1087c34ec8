#include "CS_ExecuteStably.h"

#include "CS_EditorCase.h"
#include "CS_SessionCase.h"

#include "TS_TextCase.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationSession
{

namespace
{

using CollaborationEngine::OperationUPtr;

/// The repair drops the run's tag, and doesn't look at the paragraph in front again.
OperationUPtr makeInsertionThatIsRepairedTwice()
{
    return TestSupport::insert(4, "|{}");
}

} // namespace

TEST(ExecuteStably, OperationThatNeedsNoRepairRunsAsItStands)
{
    EditedDocument edited(TestSupport::makeText("{|ab|c}"));
    OperationUPtr changedOp;
    const auto restore = [] { FAIL(); };
    EXPECT_FALSE(executeStably(edited._executor, *TestSupport::insert(4, "xy"), changedOp, restore));
    EXPECT_EQ(TestSupport::print(edited.getText()), "{|abxy|c}");
}

TEST(ExecuteStably, WhatHappenedHappensAgainInAnEqualDocument)
{
    EditedDocument edited(TestSupport::makeText("{|ab|c}"));
    const DOM::Document before = edited._document;
    OperationUPtr changedOp;
    bool isRestored = false;
    const auto restore = [&]
    {
        isRestored = true;
        edited._document = before;
    };
    ASSERT_TRUE(executeStably(edited._executor, *makeInsertionThatIsRepairedTwice(), changedOp, restore));
    EXPECT_TRUE(isRestored);
    EXPECT_EQ(TestSupport::print(*changedOp), "insert 4:}{}{");
    EXPECT_EQ(TestSupport::print(edited.getText()), "{|ab}{}{|c}");

    EditedDocument other(TestSupport::makeText("{|ab|c}"));
    other.execute(std::move(changedOp));
    EXPECT_EQ(TestSupport::print(other.getText()), "{|ab}{}{|c}");
}

TEST(ExecuteStably, InsertionThatIsRepairedTwiceEndsEqualEverywhere)
{
    SessionCase session("{|ab|c}");
    OperationUPtr changedOp;
    EXPECT_TRUE(
        session[0].getClient().getExecutor().executeAndChangeIfNeeded(*makeInsertionThatIsRepairedTwice(), changedOp));
    session[1].replace(0, 0, "x");
    session.settle();
    EXPECT_EQ(session[1].show(), "{|xab}{}{|c}");
    EXPECT_TRUE(session[0].getClient().takeRefusals().empty());
}

} // namespace Zem::CollaborationSession

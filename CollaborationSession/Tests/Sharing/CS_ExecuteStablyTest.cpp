#include "Sharing/CS_ExecuteStably.h"

#include "Editing/CS_EditorCase.h"
#include "Sharing/CS_SessionCase.h"

#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include <gtest/gtest.h>

#include <stdexcept>

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
    DocumentUnderTest edited(TestSupport::makeText("{|ab|c}"));
    OperationUPtr changedOp;
    EXPECT_FALSE(executeStably(edited._executor, *TestSupport::insert(4, "xy"), changedOp));
    EXPECT_EQ(TestSupport::print(edited.getText()), "{|abxy|c}");
}

TEST(ExecuteStably, WhatHappenedHappensAgainInAnEqualDocument)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab|c}"));
    OperationUPtr changedOp;
    ASSERT_TRUE(executeStably(edited._executor, *makeInsertionThatIsRepairedTwice(), changedOp));
    EXPECT_EQ(TestSupport::print(*changedOp), "insert 4:}{}{");
    EXPECT_EQ(TestSupport::print(edited.getText()), "{|ab}{}{|c}");

    DocumentUnderTest other(TestSupport::makeText("{|ab|c}"));
    other.execute(std::move(changedOp));
    EXPECT_EQ(TestSupport::print(other.getText()), "{|ab}{}{|c}");
}

/// Makes something else of every operation, each time.
class NeverContent final : public CollaborationEngine::OperationExecutor
{
public:
    bool executeAndChangeIfNeeded(CollaborationEngine::Operation&, OperationUPtr& changedOp) override
    {
        ++_executedCount;
        changedOp = std::make_unique<CollaborationEngine::EmptyOperation>();
        return true;
    }

    void reverse(CollaborationEngine::Operation&) override
    {
        ++_reversedCount;
    }

    CollaborationEngine::AfterDocumentActionSignal& getAfterDocumentActionSignal() override
    {
        throw std::logic_error("Nobody listens");
    }

    int _executedCount = 0;
    int _reversedCount = 0;
};

TEST(ExecuteStably, OperationThatIsChangedEachTimeFails)
{
    NeverContent executor;
    OperationUPtr changedOp;
    CollaborationEngine::EmptyOperation operation;
    EXPECT_ASSERTION(executeStably(executor, operation, changedOp), "isStable");
    // Once as it came, and each of the eight attempts that it is given.
    EXPECT_EQ(executor._executedCount, 9);
    EXPECT_EQ(executor._reversedCount, 8);
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

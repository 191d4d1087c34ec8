#include "Sharing/CS_Checkpoint.h"

#include "Sharing/CS_SessionCase.h"

#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

constexpr Revision interval = 3;

/// A checkpoint of "{|ab}", and a replica of another document.
class CheckpointOfAText : public testing::Test
{
protected:
    void type(const char* letters)
    {
        for (const char* letter = letters; *letter; ++letter)
        {
            HistoryEntry entry;
            entry._action._operation = TestSupport::insert(2, std::string(1, *letter));
            _checkpoint.append(std::make_shared<const HistoryEntry>(std::move(entry)));
        }
    }

    std::string restore(const std::vector<OperationUPtr>& pending = {})
    {
        _checkpoint.restore(_replica, getPointers(pending));
        return show();
    }

    static std::vector<const Operation*> getPointers(const std::vector<OperationUPtr>& operations)
    {
        std::vector<const Operation*> pointers;
        for (const OperationUPtr& operation : operations)
        {
            pointers.push_back(operation.get());
        }
        return pointers;
    }

    std::string show() const
    {
        return TestSupport::print(_replica.getDocument().getTextWithTombstones());
    }

    std::size_t countEntries() const
    {
        return _checkpoint.getEntries().size();
    }

    Checkpoint _checkpoint{
        DocumentKind::Text, std::make_shared<const DOM::Document>(SessionCase::makeDocument("{|ab}")), {}, interval};
    Replica _replica{DocumentKind::Text, SessionCase::makeDocument("{|old}")};
};

TEST_F(CheckpointOfAText, RestoresTheDocumentBehindAllEntries)
{
    EXPECT_EQ(restore(), "{|ab}");
    type("xy");
    EXPECT_EQ(restore(), "{|yxab}");
    EXPECT_EQ(restore(), "{|yxab}");
}

TEST_F(CheckpointOfAText, RestoresWhatIsPendingBehindTheEntries)
{
    type("x");
    std::vector<OperationUPtr> pending;
    pending.push_back(TestSupport::insert(3, "1"));
    pending.push_back(TestSupport::insert(4, "2"));
    EXPECT_EQ(restore(pending), "{|x12ab}");
    EXPECT_EQ(countEntries(), 1u);
}

TEST_F(CheckpointOfAText, LeavesTheReplicaAsItIsWhenAnOperationFails)
{
    std::vector<OperationUPtr> pending;
    pending.push_back(SessionCase::makeBadOperation());
    EXPECT_ASSERTION(_checkpoint.restore(_replica, getPointers(pending)), "result");
    EXPECT_EQ(show(), "{|old}");
}

TEST_F(CheckpointOfAText, StaysUntilTheIntervalHasPassed)
{
    const DOM::Document current = SessionCase::makeDocument("{|new}");
    type("xy");
    EXPECT_FALSE(_checkpoint.renewIfDue(&current));
    EXPECT_EQ(restore(), "{|yxab}");
}

TEST_F(CheckpointOfAText, TakesTheCurrentDocumentBehindTheInterval)
{
    const DOM::Document current = SessionCase::makeDocument("{|new}");
    type("xyz");
    EXPECT_TRUE(_checkpoint.renewIfDue(&current));
    EXPECT_EQ(countEntries(), 0u);
    EXPECT_EQ(restore(), "{|new}");
}

TEST_F(CheckpointOfAText, IsBroughtUpToDateByItselfBehindTwoIntervals)
{
    type("uvwxyz");
    EXPECT_FALSE(_checkpoint.renewIfDue(nullptr));
    EXPECT_EQ(countEntries(), 2 * interval);
    type("1");
    EXPECT_TRUE(_checkpoint.renewIfDue(nullptr));
    EXPECT_EQ(countEntries(), interval);
    EXPECT_EQ(restore(), "{|1zyxwvuab}");
}

TEST_F(CheckpointOfAText, BeginsWithWhatHappenedToItsDocument)
{
    type("xy");
    const Checkpoint other(DocumentKind::Text,
                           std::make_shared<const DOM::Document>(SessionCase::makeDocument("{|cd}")),
                           _checkpoint.getEntries(), interval);
    other.restore(_replica, {});
    EXPECT_EQ(show(), "{|yxcd}");
}

} // namespace

} // namespace Zem::CollaborationSession

#include "Editing/CS_ObserverFanOut.h"

#include "CE_DataValue.h"
#include "DOM_Comment.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Note.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_Runs.h"
#include "DOM_SparseData.h"
#include "DOM_Table.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace Zem::CollaborationSession
{

using DOMCollaboration::SingleActionExecutorNotificationObserver;

namespace
{

using Counter = SingleActionExecutorNotificationObserver<std::function<void()>>;

TEST(ObserverFanOut, PassesOnToAllInTheirOrder)
{
    std::string calls;
    const auto first = std::make_shared<Counter>([&] { calls += '1'; });
    const auto second = std::make_shared<Counter>([&] { calls += '2'; });
    ObserverFanOut fanOut;
    fanOut.add(first);
    fanOut.add(second);
    fanOut.onScriptInserted("name");
    fanOut.onDocumentPropsChanged(1);
    EXPECT_EQ("1212", calls);
}

TEST(ObserverFanOut, PassesOverThoseThatAreGone)
{
    int callsCount = 0;
    auto gone = std::make_shared<Counter>([&] { callsCount += 100; });
    const auto stays = std::make_shared<Counter>([&] { ++callsCount; });
    ObserverFanOut fanOut;
    fanOut.add(gone);
    fanOut.add(stays);
    gone.reset();
    fanOut.onScriptRemoved("name");
    EXPECT_EQ(1, callsCount);
    const auto late = std::make_shared<Counter>([&] { ++callsCount; });
    fanOut.add(late);
    fanOut.onScriptRemoved("name");
    EXPECT_EQ(3, callsCount);
}

/// Two observers that throw, in front of one that counts its calls.
class ThrowingObservers : public testing::Test
{
protected:
    ThrowingObservers()
    {
        _fanOut.add(_first);
        _fanOut.add(_second);
        _fanOut.add(_counter);
    }

    ObserverFanOut _fanOut;
    int _callsCount = 0;
    std::shared_ptr<Counter> _first = std::make_shared<Counter>([] { throw std::runtime_error("first"); });
    std::shared_ptr<Counter> _second = std::make_shared<Counter>([] { throw std::logic_error("second"); });
    std::shared_ptr<Counter> _counter = std::make_shared<Counter>([this] { ++_callsCount; });
};

TEST_F(ThrowingObservers, KeepNothingFromTheOthersAndTheFirstExceptionGoesOn)
{
    EXPECT_THROW(_fanOut.onScriptInserted("name"), std::runtime_error);
    EXPECT_EQ(_callsCount, 1);
    _first.reset();
    EXPECT_THROW(_fanOut.onScriptInserted("name"), std::logic_error);
    EXPECT_EQ(_callsCount, 2);
}

TEST_F(ThrowingObservers, AreHeardOfBehindAPostponement)
{
    {
        const ObserverFanOut::Postponement postponement(_fanOut);
        EXPECT_NO_THROW(postponement.rethrow());
        EXPECT_NO_THROW(_fanOut.onScriptInserted("name"));
        _first.reset();
        EXPECT_NO_THROW(_fanOut.onScriptInserted("name"));
        EXPECT_EQ(_callsCount, 2);
        EXPECT_THROW(postponement.rethrow(), std::runtime_error);
    }
    EXPECT_THROW(_fanOut.onScriptInserted("name"), std::logic_error);
    const ObserverFanOut::Postponement next(_fanOut);
    EXPECT_NO_THROW(next.rethrow());
}

TEST_F(ThrowingObservers, TakeNoSecondPostponement)
{
    const ObserverFanOut::Postponement postponement(_fanOut);
    EXPECT_ASSERTION(ObserverFanOut::Postponement second(_fanOut), "isAlone");
    EXPECT_NO_THROW(_fanOut.onScriptInserted("name"));
}

TEST(ObserverFanOut, PassesEachNotificationOnOnce)
{
    unsigned long callsCount = 0;
    const auto counter = std::make_shared<Counter>([&] { ++callsCount; });
    ObserverFanOut fanOut;
    fanOut.add(counter);

    const DOM::NativeNodeAddress address;
    const CollaborationUtils::IndexExcludingTombstones index(0);
    const CollaborationUtils::IndexRange<unsigned long> range(0, 1);
    const CollaborationEngine::SimpleDataValue<bool> value(true);
    const UUID uuid;
    const DOM::Runs runs;
    const DOM::Blocks blocks;
    const std::vector<std::unique_ptr<DOM::ConditionalFormat>> formats;
    const std::vector<std::unique_ptr<DOM::Frame>> frames;
    const std::vector<std::function<void()>> notifications{
        [&] { fanOut.onRunPropsChanged(address, 1); },
        [&] { fanOut.onParaPropsChanged(address, 1); },
        [&] { fanOut.onFramePropsChanged(address, 1); },
        [&] { fanOut.onCellPropsChanged(address, value, value, 1); },
        [&] { fanOut.onHeaderFooterPairPropsChanged(address, 1); },
        [&] { fanOut.onDocumentPropsChanged(1); },
        [&] { fanOut.onCharsRemoved(address, index, "a"); },
        [&] { fanOut.onCharsInserted(address, range); },
        [&] { fanOut.onRunsRemoved(address, index, ReadonlyVector<DOM::Runs>(runs)); },
        [&] { fanOut.onRunsInserted(address, range); },
        [&] { fanOut.onBlocksRemoved(address, index, ReadonlyVector<DOM::Blocks>(blocks)); },
        [&] { fanOut.onBlocksInserted(address, range); },
        [&] { fanOut.onBlockMoved(address, index, index); },
        [&] { fanOut.onRowStyleChanged(address, RowIndex(0), 1); },
        [&] { fanOut.onRowRemoved(address, RowIndex(0), DOM::SparseData<DOM::RowStyle>()); },
        [&] { fanOut.onRowInserted(address, RowIndex(0)); },
        [&] { fanOut.onColumnStyleChanged(address, ColumnIndex(0), 1); },
        [&] { fanOut.onColumnRemoved(address, ColumnIndex(0), DOM::SparseData<DOM::ColumnStyle>()); },
        [&] { fanOut.onColumnInserted(address, ColumnIndex(0)); },
        [&] { fanOut.onHeaderFooterInserted(uuid); },
        [&] { fanOut.onHeaderFooterRemoved(DOM::HeaderFooterPair()); },
        [&] { fanOut.onConditionalFormatMoved(address, index, index); },
        [&]
        {
            fanOut.onConditionalFormatsRemoved(
                address, index, ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>(formats));
        },
        [&] { fanOut.onConditionalFormatsInserted(address, range); },
        [&] { fanOut.onConditionalFormatChanged(address, 1); },
        [&]
        { fanOut.onFramesRemoved(address, index, ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>(frames)); },
        [&] { fanOut.onFramesInserted(address, range); },
        [&] { fanOut.onTablePropsChanged(address, 1, value, value); },
        [&] { fanOut.onScriptRemoved("name"); },
        [&] { fanOut.onScriptInserted("name"); },
        [&] { fanOut.onCommentInserted(uuid); },
        [&] { fanOut.onCommentRemoved(DOM::Comment()); },
        [&] { fanOut.onCommentPropsChanged(uuid, 1); },
        [&] { fanOut.onNoteInserted(uuid); },
        [&] { fanOut.onNoteRemoved(DOM::Note()); },
        [&] { fanOut.onNotePropsChanged(uuid, 1); },
        [&] { fanOut.onFieldBlockPropsChanged(address, 1); },
        [&] { fanOut.onSectionPropsChanged(address, 1); },
        [&] { fanOut.onTextStyleInserted(uuid); },
        [&] { fanOut.onTextStyleRemoved(DOM::NamedTextStyle()); },
        [&] { fanOut.onTextStylePropsChanged(uuid, 1); },
        [&] { fanOut.onTableStyleInserted(uuid); },
        [&] { fanOut.onTableStyleRemoved(DOM::NamedTableStyle()); },
        [&] { fanOut.onTableStylePropsChanged(uuid, 1); },
    };
    for (unsigned long done = 0; done < notifications.size(); ++done)
    {
        notifications[done]();
        EXPECT_EQ(done + 1, callsCount);
    }
}

} // namespace

} // namespace Zem::CollaborationSession

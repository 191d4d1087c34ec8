#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include "TS_Assertions.h"

#include "CE_DataValue.h"
#include "DOM_Comment.h"
#include "DOM_ConditionalFormat.h"
#include "DOM_Frame.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Note.h"
#include "DOM_Run.h"
#include "DOM_SparseData.h"

#include <gtest/gtest.h>

#include <functional>

namespace Zem::DOMCollaboration
{

namespace
{

using Notification = std::function<void(ExecutorNotificationObserver&)>;

/// The arguments of all notifications; none of them is looked at.
struct Arguments
{
    DOM::NativeNodeAddress _address;
    CollaborationUtils::IndexExcludingTombstones _index;
    CollaborationUtils::IndexRange<unsigned long> _range;
    CollaborationEngine::SimpleDataValue<int> _value;
    std::string _text;
    UUID _uuid;
    DOM::Runs _runs;
    DOM::Blocks _blocks;
    std::vector<std::unique_ptr<DOM::ConditionalFormat>> _formats;
    std::vector<std::unique_ptr<DOM::Frame>> _frames;
    DOM::SparseRowData _row;
    DOM::SparseColumnData _column;
};

/// Every operation of all interfaces, in the order of the interfaces.
std::vector<Notification> makeAllNotifications(const Arguments& a)
{
    using Observer = ExecutorNotificationObserver;
    return {
        [&](Observer& o) { o.onRunPropsChanged(a._address, 0); },
        [&](Observer& o) { o.onParaPropsChanged(a._address, 0); },
        [&](Observer& o) { o.onFramePropsChanged(a._address, 0); },
        [&](Observer& o) { o.onCellPropsChanged(a._address, a._value, a._value, 0); },
        [&](Observer& o) { o.onHeaderFooterPairPropsChanged(a._address, 0); },
        [&](Observer& o) { o.onDocumentPropsChanged(0); },
        [&](Observer& o) { o.onCharsRemoved(a._address, a._index, a._text); },
        [&](Observer& o) { o.onCharsInserted(a._address, a._range); },
        [&](Observer& o) { o.onRunsRemoved(a._address, a._index, ReadonlyVector<DOM::Runs>(a._runs)); },
        [&](Observer& o) { o.onRunsInserted(a._address, a._range); },
        [&](Observer& o) { o.onBlocksRemoved(a._address, a._index, ReadonlyVector<DOM::Blocks>(a._blocks)); },
        [&](Observer& o) { o.onBlocksInserted(a._address, a._range); },
        [&](Observer& o) { o.onBlockMoved(a._address, a._index, a._index); },
        [&](Observer& o) { o.onRowStyleChanged(a._address, RowIndex(0), 0); },
        [&](Observer& o) { o.onRowRemoved(a._address, RowIndex(0), a._row); },
        [&](Observer& o) { o.onRowInserted(a._address, RowIndex(0)); },
        [&](Observer& o) { o.onColumnStyleChanged(a._address, ColumnIndex(0), 0); },
        [&](Observer& o) { o.onColumnRemoved(a._address, ColumnIndex(0), a._column); },
        [&](Observer& o) { o.onColumnInserted(a._address, ColumnIndex(0)); },
        [&](Observer& o) { o.onHeaderFooterInserted(a._uuid); },
        [&](Observer& o) { o.onHeaderFooterRemoved(DOM::HeaderFooterPair()); },
        [&](Observer& o) { o.onConditionalFormatMoved(a._address, a._index, a._index); },
        [&](Observer& o)
        { o.onConditionalFormatsRemoved(a._address, a._index, ReadonlyVector<decltype(a._formats)>(a._formats)); },
        [&](Observer& o) { o.onConditionalFormatsInserted(a._address, a._range); },
        [&](Observer& o) { o.onConditionalFormatChanged(a._address, 0); },
        [&](Observer& o) { o.onFramesRemoved(a._address, a._index, ReadonlyVector<decltype(a._frames)>(a._frames)); },
        [&](Observer& o) { o.onFramesInserted(a._address, a._range); },
        [&](Observer& o) { o.onTablePropsChanged(a._address, 0, a._value, a._value); },
        [&](Observer& o) { o.onScriptRemoved(a._text); },
        [&](Observer& o) { o.onScriptInserted(a._text); },
        [&](Observer& o) { o.onCommentInserted(a._uuid); },
        [&](Observer& o) { o.onCommentRemoved(DOM::Comment()); },
        [&](Observer& o) { o.onCommentPropsChanged(a._uuid, 0); },
        [&](Observer& o) { o.onNoteInserted(a._uuid); },
        [&](Observer& o) { o.onNoteRemoved(DOM::Note()); },
        [&](Observer& o) { o.onNotePropsChanged(a._uuid, 0); },
        [&](Observer& o) { o.onFieldBlockPropsChanged(a._address, 0); },
        [&](Observer& o) { o.onSectionPropsChanged(a._address, 0); },
        [&](Observer& o) { o.onTextStyleInserted(a._uuid); },
        [&](Observer& o) { o.onTextStyleRemoved(DOM::NamedTextStyle()); },
        [&](Observer& o) { o.onTextStylePropsChanged(a._uuid, 0); },
        [&](Observer& o) { o.onTableStyleInserted(a._uuid); },
        [&](Observer& o) { o.onTableStyleRemoved(DOM::NamedTableStyle()); },
        [&](Observer& o) { o.onTableStylePropsChanged(a._uuid, 0); },
    };
}

/// Where a base begins in the observer.
template<class Base>
const char* getBegin(const ExecutorNotificationObserver& observer)
{
    return reinterpret_cast<const char*>(static_cast<const Base*>(&observer));
}

template<class... Bases>
void expectOrder(const ExecutorNotificationObserver& observer)
{
    const std::vector<const char*> begins{getBegin<Bases>(observer)...};
    for (std::size_t index = 1; index < begins.size(); ++index)
    {
        EXPECT_LT(begins[index - 1], begins[index]) << "base " << index;
    }
}

} // namespace

TEST(ExecutorNotificationObserver, EmptyObserverReturnsFromEveryNotification)
{
    const Arguments arguments;
    const auto observer = makeEmptyExecutorNotificationObserver();
    for (const Notification& notification : makeAllNotifications(arguments))
    {
        EXPECT_NO_THROW(notification(*observer));
    }
}

TEST(ExecutorNotificationObserver, AssertObserverFailsAtEveryNotification)
{
    const Arguments arguments;
    const auto observer = makeAssertExecutorNotificationObserver();
    for (const Notification& notification : makeAllNotifications(arguments))
    {
        EXPECT_ASSERTION(notification(*observer), "Unexpected observer call.");
    }
}

TEST(ExecutorNotificationObserver, SingleActionRunsOnceForEveryNotification)
{
    const Arguments arguments;
    int callsCount = 0;
    auto action = [&callsCount] { ++callsCount; };
    SingleActionExecutorNotificationObserver<decltype(action)> observer(action);
    int expectedCount = 0;
    for (const Notification& notification : makeAllNotifications(arguments))
    {
        notification(observer);
        EXPECT_EQ(++expectedCount, callsCount);
    }
    EXPECT_EQ(44, callsCount);
}

TEST(ExecutorNotificationObserver, EachCallMakesAnotherObject)
{
    EXPECT_NE(makeEmptyExecutorNotificationObserver(), makeEmptyExecutorNotificationObserver());
    EXPECT_NE(makeAssertExecutorNotificationObserver(), makeAssertExecutorNotificationObserver());
}

TEST(ExecutorNotificationObserver, InterfacesStandInTheirFixedOrder)
{
    const auto observer = makeEmptyExecutorNotificationObserver();
    expectOrder<RunPropsChangedObserver, ParaPropsChangedObserver, FramePropsChangedObserver, CellPropsChangedObserver,
                HeaderFooterPairPropsChangedObserver, DocumentPropsChangedObserver, CharCollectionChangedObserver,
                RunCollectionChangedObserver, BlockCollectionChangedObserver, CellCollectionChangedObserver,
                HeaderFooterCollectionChangedObserver, ConditionalFormatCollectionChangedObserver,
                ConditionalFormatChangedObserver, FrameCollectionChangedObserver, TablePropsChangedObserver,
                ScriptCollectionChangedObserver, CommentCollectionChangedObserver, CommentPropsChangedObserver,
                NoteCollectionChangedObserver, NotePropsChangedObserver, FieldBlockPropsChangedObserver,
                SectionPropsChangedObserver, TextStyleCollectionChangedObserver, TextStylePropsChangedObserver,
                TableStyleCollectionChangedObserver, TableStylePropsChangedObserver>(*observer);
    EXPECT_EQ(getBegin<TextWithTombstonesChangedObserver>(*observer),
              getBegin<CharCollectionChangedObserver>(*observer));
}

} // namespace Zem::DOMCollaboration

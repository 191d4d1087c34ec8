#include "NodeOperationExecutors/DClb_PropertyExecutorFixture.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct RunNode
{
    static constexpr unsigned long place = 1;
    static constexpr OperationDOMNodeType type = OperationDOMNodeType::Run;
    static constexpr const char* address = "BlockCollection/0/RunCollection/0";
    static constexpr const char* notification = "onRunPropsChanged";
};

constexpr const char* drawingAddress = "BlockCollection/0/RunCollection/1";

class RunOperationExecutorTest : public PropertyExecutorFixture<RunNode>
{
protected:
    const DOM::RunStyle& getStyle()
    {
        return getTextRun().getSharedStyle()->get();
    }

    template<PropertyId id>
    void expectDrawingLaws(PropertyValueType<id> oldValue, PropertyValueType<id> newValue)
    {
        auto operation = makeOperation<id>(std::move(oldValue), std::move(newValue), drawingPlace);
        expectLaws(operation, makeLines<id>(drawingAddress), makeLines<id>(drawingAddress));
    }
};

std::shared_ptr<const DOM::RunProps> makeRunProps(float fontSize)
{
    auto props = std::make_shared<DOM::RunProps>();
    props->_fontSize = fontSize;
    return props;
}

} // namespace

TEST_F(RunOperationExecutorTest, SetsRunPropsInTheSharedStyle)
{
    const auto props = makeRunProps(12);
    expectPropertyLaws<PropertyId::RunPropertyId>(nullptr, props);
    EXPECT_EQ(props, getStyle().getRunProps());
}

TEST_F(RunOperationExecutorTest, ReplacesRunPropsAndPutsTheOldOnesBack)
{
    const auto old = makeRunProps(9);
    auto first = makeOperation<PropertyId::RunPropertyId>(nullptr, old);
    execute(first);
    _observer->takeLines();
    auto second = makeOperation<PropertyId::RunPropertyId>(old, makeRunProps(12));
    execute(second);
    _executor.reverse(second);
    EXPECT_EQ(old, getStyle().getRunProps());
    EXPECT_EQ(2u, _observer->takeLines().size()) << "a reverse notifies once more";
}

TEST_F(RunOperationExecutorTest, SetsTrackedRunProps)
{
    const auto tracked = std::make_shared<DOM::TrackedObject<DOM::RunPropsConstPtr>>(makeRunProps(12));
    expectPropertyLaws<PropertyId::RunTrackedPropsId>(nullptr, tracked);
    EXPECT_EQ(tracked, getStyle().getTrackedRunProps());
}

TEST_F(RunOperationExecutorTest, SetsTrackedAction)
{
    const auto action = std::make_shared<DOM::TrackedObject<DOM::TrackChangesType>>(DOM::TrackChangesType::Insertion);
    expectPropertyLaws<PropertyId::TrackedActionId>(nullptr, action);
    EXPECT_EQ(action, getStyle().getTrackedAction());
}

TEST_F(RunOperationExecutorTest, SetsParentStyle)
{
    expectPropertyLaws<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
    EXPECT_EQ(makeTestUUID(1), getStyle().getParentUUID());
}

TEST_F(RunOperationExecutorTest, SetsTrackedParentStyle)
{
    const auto tracked = std::make_shared<DOM::TrackedObject<UUID>>(makeTestUUID(1));
    expectPropertyLaws<PropertyId::TrackedParentStyleId>(nullptr, tracked);
    EXPECT_EQ(tracked, getStyle().getTrackedParent());
}

TEST_F(RunOperationExecutorTest, SetsHyperlink)
{
    const auto link = std::make_shared<DOM::Hyperlink>("https://example.org");
    expectPropertyLaws<PropertyId::HyperlinkId>(nullptr, link);
    EXPECT_EQ(link, getStyle().getHyperlink());
}

TEST_F(RunOperationExecutorTest, SetsCommentUUIDs)
{
    const std::vector<UUID> uuids{makeTestUUID(2), makeTestUUID(1)};
    expectPropertyLaws<PropertyId::CommentUUIDsId>({}, uuids);
    EXPECT_EQ(uuids, getStyle().getCommentUUIDs());
}

TEST_F(RunOperationExecutorTest, LeavesTheOtherMembersOfTheStyle)
{
    auto parent = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
    execute(parent);
    auto props = makeOperation<PropertyId::RunPropertyId>(nullptr, makeRunProps(12));
    execute(props);
    EXPECT_EQ(makeTestUUID(1), getStyle().getParentUUID());
}

TEST_F(RunOperationExecutorTest, AStyleThatIsBackAtItsDefaultsIsTheDefaultStyleOfTheFactory)
{
    auto there = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
    auto back = makeOperation<PropertyId::ParentStyleId>(makeTestUUID(1), UUID());
    execute(there);
    execute(back);
    ASSERT_TRUE(getTextRun().getSharedStyle());
    EXPECT_EQ(_document.getSharedObjectFactory().create(DOM::RunStyle()), getTextRun().getSharedStyle());
    execute(there);
    _executor.reverse(there);
    EXPECT_EQ(_document.getSharedObjectFactory().create(DOM::RunStyle()), getTextRun().getSharedStyle());
}

TEST_F(RunOperationExecutorTest, TakesBackAChangeOfTheDefaultStyleExactly)
{
    getTextRun().getSharedStyle() = _document.getSharedObjectFactory().create(DOM::RunStyle());
    expectPropertyLaws<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
}

TEST_F(RunOperationExecutorTest, PointsRunsOfOneLookAtOneStyle)
{
    auto onTextRun = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
    auto onDrawing = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1), drawingPlace);
    execute(onTextRun);
    execute(onDrawing);
    EXPECT_EQ(getTextRun().getSharedStyle(), getParagraph().getRuns()[1]->getSharedStyle());
}

TEST_F(RunOperationExecutorTest, SetsTheExtentOfADrawing)
{
    const Size2D<float> extent{30, 20};
    expectDrawingLaws<PropertyId::ExtentId>(boost::none, extent);
    EXPECT_TRUE(extent == getDrawnFrame().getExtent());
}

TEST_F(RunOperationExecutorTest, SetsTheAnchorOfADrawingByItsAlternative)
{
    expectDrawingLaws<PropertyId::AnchorId>(DOM::TextAnchor(), DOM::OneCellAnchor());
    EXPECT_TRUE(boost::get<DOM::OneCellAnchor>(&getDrawnFrame().getAnchor()));
}

TEST_F(RunOperationExecutorTest, ExtentAndAnchorOfATextRunAreABadCast)
{
    auto extent = makeOperation<PropertyId::ExtentId>(boost::none, boost::none);
    auto anchor = makeOperation<PropertyId::AnchorId>(DOM::Anchor(), DOM::Anchor());
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(extent, changedOp), std::bad_cast);
    EXPECT_THROW(_executor.reverse(extent), std::bad_cast);
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(anchor, changedOp), std::bad_cast);
    EXPECT_EQ(Lines(), _observer->takeLines());
}

TEST_F(RunOperationExecutorTest, RefusesWhatIsNotOfARun)
{
    expectFailures(PropertyId::RunPropertyId, PropertyId::ParaPropertyId, "Unrecognized PropertyIdType");
}

TEST_F(RunOperationExecutorTest, RefusesAPlaceWithoutARun)
{
    auto operation = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1), paragraphPlace);
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), "result");
}

TEST_F(RunOperationExecutorTest, NeedsALiveObserver)
{
    expectLiveObserverNeeded(makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1)));
}

} // namespace Zem::DOMCollaboration

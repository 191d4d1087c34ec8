#include "NodeOperationExecutors/DClb_PropertyExecutorFixture.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct ParagraphNode
{
    static constexpr unsigned long place = 0;
    static constexpr OperationDOMNodeType type = OperationDOMNodeType::ParagraphTag;
    static constexpr const char* address = "BlockCollection/0";
    static constexpr const char* notification = "onParaPropsChanged";
};

class ParagraphOperationExecutorTest : public PropertyExecutorFixture<ParagraphNode>
{
protected:
    const DOM::ParagraphStyle& getStyle()
    {
        return getParagraph().getSharedStyle()->get();
    }

    const DOM::RunStyle& getMarkStyle()
    {
        return getParagraph().getSharedParaMarkStyle()->get();
    }
};

DOM::RunPropsConstPtr makeBold()
{
    auto props = std::make_shared<DOM::RunProps>();
    props->_weight = DOM::FontWeight::Bold;
    return props;
}

DOM::NumberingRef makeNumberingRef(unsigned char level)
{
    DOM::NumberingRef numRef;
    numRef._listUUID = makeTestUUID(7);
    numRef._level = level;
    return numRef;
}

} // namespace

TEST_F(ParagraphOperationExecutorTest, RunPropertyGoesToTheMarkAlone)
{
    const auto props = makeBold();
    expectPropertyLaws<PropertyId::RunPropertyId>(nullptr, props);
    EXPECT_EQ(props, getMarkStyle().getRunProps());
    EXPECT_FALSE(getParagraph().getSharedStyle());
}

TEST_F(ParagraphOperationExecutorTest, ParagraphRunPropertyGoesToTheParagraphAlone)
{
    const auto props = makeBold();
    expectPropertyLaws<PropertyId::ParagraphRunPropertyId>(nullptr, props);
    EXPECT_EQ(props, getStyle().getRunProps());
    EXPECT_FALSE(getParagraph().getSharedParaMarkStyle());
}

TEST_F(ParagraphOperationExecutorTest, SetsTrackedRunPropsOfTheMark)
{
    const auto tracked = std::make_shared<DOM::TrackedObject<DOM::RunPropsConstPtr>>(makeBold());
    expectPropertyLaws<PropertyId::RunTrackedPropsId>(nullptr, tracked);
    EXPECT_EQ(tracked, getMarkStyle().getTrackedRunProps());
}

TEST_F(ParagraphOperationExecutorTest, SetsTrackedActionOfTheMark)
{
    const auto action = std::make_shared<DOM::TrackedObject<DOM::TrackChangesType>>(DOM::TrackChangesType::Deletion);
    expectPropertyLaws<PropertyId::TrackedActionId>(nullptr, action);
    EXPECT_EQ(action, getMarkStyle().getTrackedAction());
}

TEST_F(ParagraphOperationExecutorTest, SetsHyperlinkOfTheMark)
{
    const auto link = std::make_shared<DOM::Hyperlink>("https://example.org");
    expectPropertyLaws<PropertyId::HyperlinkId>(nullptr, link);
    EXPECT_EQ(link, getMarkStyle().getHyperlink());
}

TEST_F(ParagraphOperationExecutorTest, SetsCommentUUIDsOfTheMark)
{
    expectPropertyLaws<PropertyId::CommentUUIDsId>({}, {makeTestUUID(1)});
    EXPECT_EQ(std::vector<UUID>{makeTestUUID(1)}, getMarkStyle().getCommentUUIDs());
}

TEST_F(ParagraphOperationExecutorTest, SetsParaProps)
{
    const auto props = std::make_shared<DOM::ParaProps>();
    expectPropertyLaws<PropertyId::ParaPropertyId>(nullptr, props);
    EXPECT_EQ(props, getStyle().getParaProps());
}

TEST_F(ParagraphOperationExecutorTest, SetsTrackedParaProps)
{
    const auto tracked = std::make_shared<DOM::TrackedObject<DOM::ParaPropsConstPtr>>();
    expectPropertyLaws<PropertyId::ParaTrackedPropsId>(nullptr, tracked);
    EXPECT_EQ(tracked, getStyle().getTrackedParaProps());
}

TEST_F(ParagraphOperationExecutorTest, SetsParentStyleOfTheParagraph)
{
    expectPropertyLaws<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1));
    EXPECT_EQ(makeTestUUID(1), getStyle().getParentUUID());
}

TEST_F(ParagraphOperationExecutorTest, SetsTrackedParentStyleOfTheParagraph)
{
    const auto tracked = std::make_shared<DOM::TrackedObject<UUID>>(makeTestUUID(1));
    expectPropertyLaws<PropertyId::TrackedParentStyleId>(nullptr, tracked);
    EXPECT_EQ(tracked, getStyle().getTrackedParent());
}

TEST_F(ParagraphOperationExecutorTest, SetsAndClearsTheNumbering)
{
    expectPropertyLaws<PropertyId::NumRefId>(boost::none, makeNumberingRef(1));
    ASSERT_TRUE(getParagraph().getNumRef());
    EXPECT_EQ(makeNumberingRef(1), *getParagraph().getNumRef());
    expectPropertyLaws<PropertyId::NumRefId>(makeNumberingRef(1), boost::none);
    EXPECT_FALSE(getParagraph().getNumRef());
}

TEST_F(ParagraphOperationExecutorTest, KeepsTheNumberingObjectThatIsThere)
{
    getParagraph().getNumRef() = std::make_unique<DOM::NumberingRef>(makeNumberingRef(1));
    const DOM::NumberingRef* numRef = getParagraph().getNumRef().get();
    expectPropertyLaws<PropertyId::NumRefId>(makeNumberingRef(1), makeNumberingRef(2));
    EXPECT_EQ(numRef, getParagraph().getNumRef().get());
    EXPECT_EQ(makeNumberingRef(2), *numRef);
}

TEST_F(ParagraphOperationExecutorTest, RefusesWhatIsNotOfAParagraph)
{
    expectFailures(PropertyId::RunPropertyId, PropertyId::ExtentId, "Unrecognized PropertyIdType");
}

TEST_F(ParagraphOperationExecutorTest, RefusesAPlaceWithoutAParagraph)
{
    auto operation = makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1), textRunPlace);
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(operation, changedOp), std::bad_cast);
}

TEST_F(ParagraphOperationExecutorTest, NeedsALiveObserver)
{
    expectLiveObserverNeeded(makeOperation<PropertyId::ParentStyleId>(UUID(), makeTestUUID(1)));
}

} // namespace Zem::DOMCollaboration

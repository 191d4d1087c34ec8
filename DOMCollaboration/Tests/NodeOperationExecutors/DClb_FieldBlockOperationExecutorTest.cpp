#include "NodeOperationExecutors/DClb_PropertyExecutorFixture.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct FieldBlockNode
{
    static constexpr unsigned long place = 6;
    static constexpr OperationDOMNodeType type = OperationDOMNodeType::FieldBlock;
    static constexpr const char* address = "BlockCollection/1";
    static constexpr const char* notification = "onFieldBlockPropsChanged";
};

class FieldBlockOperationExecutorTest : public PropertyExecutorFixture<FieldBlockNode>
{
protected:
    using FieldInfo = DOM::FieldBlock::FieldInfo;

    void expectFieldValueLaws(FieldInfo newValue)
    {
        const FieldInfo copy(newValue);
        expectPropertyLaws<PropertyId::FieldValueId>(getFieldBlock().getFieldInfo(), std::move(newValue));
        EXPECT_TRUE(areDeeplyEqual(copy, getFieldBlock().getFieldInfo()));
    }
};

} // namespace

TEST_F(FieldBlockOperationExecutorTest, SetsHyperlink)
{
    const auto link = std::make_shared<DOM::Hyperlink>("https://example.org");
    expectPropertyLaws<PropertyId::HyperlinkId>(nullptr, link);
    EXPECT_EQ(link, getFieldBlock().getHyperlink());
}

TEST_F(FieldBlockOperationExecutorTest, SetsCommentUUIDs)
{
    expectPropertyLaws<PropertyId::CommentUUIDsId>({}, {makeTestUUID(1), makeTestUUID(2)});
    EXPECT_EQ((std::vector<UUID>{makeTestUUID(1), makeTestUUID(2)}), getFieldBlock().getCommentUUIDs());
}

TEST_F(FieldBlockOperationExecutorTest, SetsAFieldValueOfEachAlternative)
{
    expectFieldValueLaws(DOM::Formula("A1+1"));
    expectFieldValueLaws(DOM::ArrayFormulaShift(1, 2));
    expectFieldValueLaws(DOM::BlockValue<FloatNumber>(FloatNumber(1.5)));
    expectFieldValueLaws(DOM::BlockValue<DOM::FormulaErrorType>(DOM::FormulaErrorType::UnknownName));
    expectFieldValueLaws(DOM::BlockValue<bool>(true));
    expectFieldValueLaws(DOM::TableOfContentsInfo());
}

TEST_F(FieldBlockOperationExecutorTest, AssignsWithinOneAlternative)
{
    expectFieldValueLaws(DOM::Formula("A1"));
    expectFieldValueLaws(DOM::Formula("A2"));
}

TEST_F(FieldBlockOperationExecutorTest, RefusesWhatIsNotOfAFieldBlock)
{
    expectFailures(PropertyId::FieldValueId, PropertyId::RunPropertyId, "Unsupported property id");
}

TEST_F(FieldBlockOperationExecutorTest, NeedsALiveObserver)
{
    expectLiveObserverNeeded(
        makeOperation<PropertyId::FieldValueId>(getFieldBlock().getFieldInfo(), DOM::BlockValue<bool>(true)));
}

} // namespace Zem::DOMCollaboration

#include "NodeOperationExecutors/DClb_PropertyExecutorFixture.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct SectionTagNode
{
    static constexpr unsigned long place = 7;
    static constexpr OperationDOMNodeType type = OperationDOMNodeType::SectionTag;
    static constexpr const char* address = "BlockCollection/2";
    static constexpr const char* notification = "onSectionPropsChanged";
};

class SectionPropsOperationExecutorTest : public PropertyExecutorFixture<SectionTagNode>
{
};

DOM::SectionProps makeSectionProps(unsigned char columnsCount)
{
    DOM::SectionProps props;
    props._columnsCount = columnsCount;
    return props;
}

} // namespace

TEST_F(SectionPropsOperationExecutorTest, SetsSectionProps)
{
    expectPropertyLaws<PropertyId::SectionPropsId>(DOM::SectionProps(), makeSectionProps(2));
    EXPECT_TRUE(makeSectionProps(2) == getSectionTag().getSectionProps());
}

TEST_F(SectionPropsOperationExecutorTest, RefusesWhatIsNotOfASection)
{
    expectFailures(PropertyId::SectionPropsId, PropertyId::PagePropsId, "Unrecognized PropertyIdType");
}

TEST_F(SectionPropsOperationExecutorTest, NeedsALiveObserver)
{
    expectLiveObserverNeeded(makeOperation<PropertyId::SectionPropsId>(DOM::SectionProps(), makeSectionProps(2)));
}

} // namespace Zem::DOMCollaboration

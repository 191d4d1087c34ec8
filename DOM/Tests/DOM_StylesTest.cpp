#include "DOM_NumberingRef.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_TrackedObject.h"
#include "DOM_ValueTypeTest.h"

#include <limits>

namespace Zem::DOM::Tests
{

using StyleTypes = ::testing::Types<TimeZone, UserInfo, DateTime, TrackChangesInfo, TrackedObject<RunPropsConstPtr>,
                                    TrackedObject<ParaPropsConstPtr>, TrackedObject<TrackChangesType>,
                                    TrackedObject<UUID>, Hyperlink, NumberingRef, RunStyle, ParagraphStyle>;
INSTANTIATE_TYPED_TEST_SUITE_P(Styles, ValueType, StyleTypes);

TEST(TrackedObject, HasADefaultInfoAndANullValueByDefault)
{
    const TrackedObject<RunPropsConstPtr> tracked;
    ASSERT_TRUE(tracked._info);
    EXPECT_TRUE(*tracked._info == TrackChangesInfo());
    EXPECT_FALSE(tracked._value);
}

TEST(TrackedObject, ComparesThePresenceOfItsInfo)
{
    const TrackedObject<UUID> withInfo;
    const TrackedObject<UUID> withoutInfo(UUID(), boost::none);
    EXPECT_FALSE(withInfo == withoutInfo);
}

TEST(TrackedObject, ComparesItsValueDeeply)
{
    const TrackedObject<RunPropsConstPtr> left(std::make_shared<const RunProps>());
    const TrackedObject<RunPropsConstPtr> right(std::make_shared<const RunProps>());
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left == TrackedObject<RunPropsConstPtr>());
}

TEST(RunProps, AreUnequalIfAFontSizeIsNaN)
{
    RunProps props;
    props._fontSize = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(props == RunProps(props));
}

TEST(DateTime, KeepsTheSignOfItsOffset)
{
    DateTime moment;
    moment._timeZone = TimeZone(-210);
    EXPECT_EQ(-210, fromJson<DateTime>(Zem::toJson(moment))._timeZone.getOffset());
}

} // namespace Zem::DOM::Tests

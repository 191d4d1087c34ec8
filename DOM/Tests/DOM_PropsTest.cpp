#include "DOM_PageProps.h"
#include "DOM_ParaProps.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunProps.h"
#include "DOM_RunStyle.h"
#include "DOM_SectionProps.h"
#include "DOM_ValueTypeTest.h"

namespace Zem::DOM::Tests
{

using PropsTypes =
    ::testing::Types<RGBAColor, ThemeColor, Border, RunProps, TabStop, ParaProps, PageProps, SectionProps>;
INSTANTIATE_TYPED_TEST_SUITE_P(Props, ValueType, PropsTypes);

template<class T>
class HashedType : public ::testing::Test
{
};

using HashedTypes = ::testing::Types<RunProps, ParaProps, RunStyle, ParagraphStyle>;
TYPED_TEST_SUITE(HashedType, HashedTypes);

TYPED_TEST(HashedType, HashesEqualContentAlike)
{
    const TypeParam object = makeChanged(TypeParam());
    const TypeParam remade = makeChanged(TypeParam());
    ASSERT_TRUE(object == remade);
    EXPECT_EQ(deepHash(object), deepHash(remade));
}

TYPED_TEST(HashedType, HashesEveryField)
{
    const TypeParam object = makeChanged(TypeParam());
    forEachFieldChanged(object, [&](const char* name, const TypeParam& changed)
                        { EXPECT_NE(deepHash(object), deepHash(changed)) << name; });
}

TEST(RunProps, HasNoFieldSetByDefault)
{
    const RunProps props;
    EXPECT_FALSE(props._fontName || props._fontSize || props._weight || props._color || props._isHidden);
}

} // namespace Zem::DOM::Tests

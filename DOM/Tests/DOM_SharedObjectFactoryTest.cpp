#include "DOM_SharedObjectFactory.h"
#include "DOM_FieldChanges.h"
#include "DOM_SetToSharedStyle.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

RunStyle makeStyle(float fontSize)
{
    RunProps props;
    props._fontSize = fontSize;
    RunStyle style;
    style.setRunProps(std::make_shared<const RunProps>(props));
    return style;
}

} // namespace

template<class T>
class InternedStyle : public ::testing::Test
{
};

using InternedStyles = ::testing::Types<CellStyle, ParagraphStyle, RunStyle, TableStyle, RowStyle, ColumnStyle>;
TYPED_TEST_SUITE(InternedStyle, InternedStyles);

TYPED_TEST(InternedStyle, IsOneObjectForEqualContent)
{
    const SharedObjectFactory factory;
    const auto first = factory.create(makeChanged(TypeParam()));
    EXPECT_EQ(first, factory.create(makeChanged(TypeParam())));
    EXPECT_TRUE(first->get() == makeChanged(TypeParam()));
    EXPECT_EQ(1u, factory.getStylesCount());
}

TYPED_TEST(InternedStyle, IsAnotherObjectOnceAnyFieldIsChanged)
{
    const SharedObjectFactory factory;
    const TypeParam style = makeChanged(TypeParam());
    const auto shared = factory.create(style);
    forEachFieldChanged(style, [&](const char* name, const TypeParam& changed)
                        { EXPECT_NE(shared, factory.create(changed)) << name; });
}

TYPED_TEST(InternedStyle, IsNoneWhereItIsTheDefaultOne)
{
    const SharedObjectFactory factory;
    const SharedStyleConstIPtr<TypeParam> none;
    const auto byDefault = factory.create(TypeParam());
    const auto changed = factory.create(makeChanged(TypeParam()));
    EXPECT_TRUE(areDeeplyEqual(none, byDefault));
    EXPECT_TRUE(areDeeplyEqual(byDefault, none));
    EXPECT_EQ(deepHash(none), deepHash(byDefault));
    EXPECT_FALSE(areDeeplyEqual(none, changed));
    EXPECT_FALSE(areDeeplyEqual(changed, none));
    EXPECT_TRUE(isDefaultStyle(none));
    EXPECT_TRUE(isDefaultStyle(byDefault));
    EXPECT_FALSE(isDefaultStyle(changed));
}

TEST(SharedObjectFactory, KeepsStylesInUse)
{
    const SharedObjectFactory factory;
    std::vector<SharedStyleConstIPtr<RunStyle>> used;
    for (int index = 0; index < 1000; ++index)
    {
        used.push_back(factory.create(makeStyle(static_cast<float>(index))));
    }
    for (int index = 0; index < 1000; ++index)
    {
        EXPECT_EQ(used[static_cast<std::size_t>(index)], factory.create(makeStyle(static_cast<float>(index))));
    }
    EXPECT_EQ(1000u, factory.getStylesCount());
}

TEST(SharedObjectFactory, DropsStylesThatNobodyUses)
{
    const SharedObjectFactory factory;
    std::vector<SharedStyleConstIPtr<RunStyle>> used;
    for (int index = 0; index < 100; ++index)
    {
        used.push_back(factory.create(makeStyle(static_cast<float>(index))));
    }
    for (int index = 0; index < 100000; ++index)
    {
        factory.create(makeStyle(static_cast<float>(1000 + index)));
        ASSERT_LE(factory.getStylesCount(), 2u * 100 + 64);
    }
    EXPECT_EQ(used[7], factory.create(makeStyle(7)));
}

TEST(SharedObjectFactory, LeavesStylesToTheirUsersWhenItDies)
{
    SharedStyleConstIPtr<RunStyle> style;
    {
        const SharedObjectFactory factory;
        style = factory.create(makeStyle(5));
    }
    EXPECT_TRUE(style->get() == makeStyle(5));
    EXPECT_EQ(1u, style->use_count());
}

TEST(SharedObjectFactory, KnowsTheStylesInUseOfTheFactoryItIsCopiedFrom)
{
    const SharedObjectFactory factory;
    const auto used = factory.create(makeStyle(5));
    factory.create(makeStyle(6));
    const SharedObjectFactory copy = factory;
    EXPECT_EQ(1u, copy.getStylesCount());
    EXPECT_EQ(used, copy.create(makeStyle(5)));
    copy.create(makeStyle(7));
    EXPECT_EQ(2u, factory.getStylesCount());

    SharedObjectFactory assigned;
    const auto own = assigned.create(makeStyle(8));
    assigned = copy;
    EXPECT_NE(own, assigned.create(makeStyle(8)));
    EXPECT_EQ(used, assigned.create(makeStyle(5)));
}

TEST(SharedObjectFactory, CanGoOnAfterItWasMovedFrom)
{
    SharedObjectFactory factory;
    const auto style = factory.create(makeStyle(5));
    const SharedObjectFactory moved = std::move(factory);
    EXPECT_EQ(style, moved.create(makeStyle(5)));
    EXPECT_EQ(0u, factory.getStylesCount());
    EXPECT_NE(style, factory.create(makeStyle(5)));
}

TEST(DerefSharedStyle, HoldsOneDefaultStyleForEachType)
{
    EXPECT_EQ(&derefSharedStyle(SharedStyleConstIPtr<RunStyle>()), &derefSharedStyle(SharedStyleConstIPtr<RunStyle>()));
    EXPECT_TRUE(derefSharedStyle(SharedStyleConstIPtr<RunStyle>()) == RunStyle());
    const SharedStyleConstIPtr<RunStyle> style(new SharedStyle<RunStyle>(makeStyle(5)));
    EXPECT_EQ(&style->get(), &derefSharedStyle(style));
}

TEST(SetToSharedStyle, PointsAtTheStyleThatDiffersByTheSetters)
{
    using namespace SetToSharedStyleDetails;
    const SharedObjectFactory factory;
    const UUID parent = UUID::generate();
    const auto before = factory.create(makeStyle(5));
    SharedStyleConstIPtr<RunStyle> style = before;
    const auto props = makeStyle(6).getRunProps();
    setToSharedStyleVariadicImpl(factory, style, setter(&RunStyle::setRunProps, props),
                                 setter(&RunStyle::setParentUUID, parent));
    RunStyle wanted = makeStyle(6);
    wanted.setParentUUID(parent);
    EXPECT_EQ(factory.create(wanted), style);
    EXPECT_TRUE(before->get() == makeStyle(5));
}

TEST(SetToSharedStyle, BeginsWithTheDefaultStyleAtNull)
{
    using namespace SetToSharedStyleDetails;
    const SharedObjectFactory factory;
    SharedStyleConstIPtr<ParagraphStyle> style;
    const UUID parent = UUID::generate();
    setToSharedStyleVariadicImpl(factory, style, [&](ParagraphStyle& changed) { changed.setParentUUID(parent); });
    ParagraphStyle wanted;
    wanted.setParentUUID(parent);
    ASSERT_TRUE(style);
    EXPECT_TRUE(style->get() == wanted);
}

} // namespace Zem::DOM::Tests

#include "DOM_Theme.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zem::DOM::Tests
{

namespace
{

RGBAColor resolve(ThemeColorSlot slot, float tint)
{
    Theme theme;
    theme._accent3 = RGBAColor{100, 0, 255, 128};
    ColorMap map;
    map._accent1 = PaletteColor::Accent3;
    return resolveColor(ThemeColor{slot, tint}, theme, map);
}

} // namespace

TEST(ResolveColor, KeepsAFixedColor)
{
    const RGBAColor color{1, 2, 3, 4};
    EXPECT_TRUE(resolveColor(color, Theme(), ColorMap()) == color);
}

TEST(ResolveColor, GoesThroughTheColorMap)
{
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, 0) == (RGBAColor{100, 0, 255, 128}));
    EXPECT_TRUE(resolve(ThemeColorSlot::Text1, 0) == Theme()._dark1);
    EXPECT_TRUE(resolve(ThemeColorSlot::FollowedHyperlink, 0) == Theme()._followedHyperlink);
}

TEST(ResolveColor, TintsTowardsBlackAndWhite)
{
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, -0.5f) == (RGBAColor{50, 0, 128, 128}));
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, 0.5f) == (RGBAColor{178, 128, 255, 128}));
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, -7) == (RGBAColor{0, 0, 0, 128}));
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, 7) == (RGBAColor{255, 255, 255, 128}));
    EXPECT_TRUE(resolve(ThemeColorSlot::Accent1, std::numeric_limits<float>::quiet_NaN()) ==
                (RGBAColor{100, 0, 255, 128}));
}

TEST(ColorMap, ShowsAllSlotsByDefault)
{
    const ColorMap map;
    EXPECT_EQ(PaletteColor::Light1, map.getColor(ThemeColorSlot::Background1));
    EXPECT_EQ(PaletteColor::Dark1, map.getColor(ThemeColorSlot::Text1));
    EXPECT_EQ(PaletteColor::Accent6, map.getColor(ThemeColorSlot::Accent6));
}

} // namespace Zem::DOM::Tests

#include "DOM_Theme.h"

#include "Util_Assert.h"
#include "Util_Visitor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace Zem::DOM
{

namespace
{

/// In the order of `PaletteColor`.
constexpr std::array paletteMembers{&Theme::_dark1,   &Theme::_light1,  &Theme::_dark2,     &Theme::_light2,
                                    &Theme::_accent1, &Theme::_accent2, &Theme::_accent3,   &Theme::_accent4,
                                    &Theme::_accent5, &Theme::_accent6, &Theme::_hyperlink, &Theme::_followedHyperlink};

static_assert(paletteMembers.size() == static_cast<std::size_t>(getLastEnumerator(PaletteColor())) + 1);

/// In the order of `ThemeColorSlot`.
constexpr std::array slotMembers{&ColorMap::_background1, &ColorMap::_text1,     &ColorMap::_background2,
                                 &ColorMap::_text2,       &ColorMap::_accent1,   &ColorMap::_accent2,
                                 &ColorMap::_accent3,     &ColorMap::_accent4,   &ColorMap::_accent5,
                                 &ColorMap::_accent6,     &ColorMap::_hyperlink, &ColorMap::_followedHyperlink};

static_assert(slotMembers.size() == static_cast<std::size_t>(getLastEnumerator(ThemeColorSlot())) + 1);

/// `part` on its way to black, at a tint of -1, or to white, at 1; tints beyond these are no more than they.
unsigned char getTinted(unsigned char part, float tint)
{
    const float bounded = std::clamp(std::isnan(tint) ? 0.0f : tint, -1.0f, 1.0f);
    const float value = static_cast<float>(part);
    const float tinted = bounded < 0 ? value * (1 + bounded) : value + (255 - value) * bounded;
    return static_cast<unsigned char>(std::lround(tinted));
}

} // namespace

const RGBAColor& Theme::getColor(PaletteColor color) const
{
    const auto index = static_cast<std::size_t>(color);
    ZEM_ASSERT(index < paletteMembers.size());
    return this->*paletteMembers[index];
}

PaletteColor ColorMap::getColor(ThemeColorSlot slot) const
{
    const auto index = static_cast<std::size_t>(slot);
    ZEM_ASSERT(index < slotMembers.size());
    return this->*slotMembers[index];
}

RGBAColor resolveColor(const Color& color, const Theme& theme, const ColorMap& colorMap)
{
    return boost::apply_visitor(Overloads{[](const RGBAColor& fixed) { return fixed; },
                                          [&](const ThemeColor& themeColor)
                                          {
                                              RGBAColor result = theme.getColor(colorMap.getColor(themeColor._slot));
                                              for (unsigned char* part : {&result._red, &result._green, &result._blue})
                                              {
                                                  *part = getTinted(*part, themeColor._tint);
                                              }
                                              return result;
                                          }},
                                color);
}

} // namespace Zem::DOM

#pragma once

#include "DOM_Color.h"

#include "Util_Export.h"

#include <string>

namespace Zem::DOM
{

/// The colours of a theme's own palette.
enum class PaletteColor : unsigned char
{
    Dark1,
    Light1,
    Dark2,
    Light2,
    Accent1,
    Accent2,
    Accent3,
    Accent4,
    Accent5,
    Accent6,
    Hyperlink,
    FollowedHyperlink
};

constexpr PaletteColor getLastEnumerator(PaletteColor)
{
    return PaletteColor::FollowedHyperlink;
}

/// The palette and the fonts that a document's looks are made from.
struct ZEM_EXPORT Theme
{
    std::string _name;
    std::string _headingFontName;
    std::string _bodyFontName;
    RGBAColor _dark1{0x00, 0x00, 0x00, 0xFF};
    RGBAColor _light1{0xFF, 0xFF, 0xFF, 0xFF};
    RGBAColor _dark2{0x3B, 0x40, 0x4A, 0xFF};
    RGBAColor _light2{0xEC, 0xEE, 0xF1, 0xFF};
    RGBAColor _accent1{0x2F, 0x6D, 0xB5, 0xFF};
    RGBAColor _accent2{0xD9, 0x6B, 0x27, 0xFF};
    RGBAColor _accent3{0x7A, 0x7F, 0x87, 0xFF};
    RGBAColor _accent4{0xE0, 0xB0, 0x20, 0xFF};
    RGBAColor _accent5{0x3E, 0x8F, 0x6B, 0xFF};
    RGBAColor _accent6{0x8A, 0x4F, 0x9E, 0xFF};
    RGBAColor _hyperlink{0x10, 0x55, 0xCC, 0xFF};
    RGBAColor _followedHyperlink{0x70, 0x3A, 0x8C, 0xFF};

    const RGBAColor& getColor(PaletteColor color) const;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_name", &Theme::_name), field("_headingFontName", &Theme::_headingFontName),
                               field("_bodyFontName", &Theme::_bodyFontName), field("_dark1", &Theme::_dark1),
                               field("_light1", &Theme::_light1), field("_dark2", &Theme::_dark2),
                               field("_light2", &Theme::_light2), field("_accent1", &Theme::_accent1),
                               field("_accent2", &Theme::_accent2), field("_accent3", &Theme::_accent3),
                               field("_accent4", &Theme::_accent4), field("_accent5", &Theme::_accent5),
                               field("_accent6", &Theme::_accent6), field("_hyperlink", &Theme::_hyperlink),
                               field("_followedHyperlink", &Theme::_followedHyperlink));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// Which colour of the palette stands in each slot that colours name.
struct ZEM_EXPORT ColorMap
{
    PaletteColor _background1 = PaletteColor::Light1;
    PaletteColor _text1 = PaletteColor::Dark1;
    PaletteColor _background2 = PaletteColor::Light2;
    PaletteColor _text2 = PaletteColor::Dark2;
    PaletteColor _accent1 = PaletteColor::Accent1;
    PaletteColor _accent2 = PaletteColor::Accent2;
    PaletteColor _accent3 = PaletteColor::Accent3;
    PaletteColor _accent4 = PaletteColor::Accent4;
    PaletteColor _accent5 = PaletteColor::Accent5;
    PaletteColor _accent6 = PaletteColor::Accent6;
    PaletteColor _hyperlink = PaletteColor::Hyperlink;
    PaletteColor _followedHyperlink = PaletteColor::FollowedHyperlink;

    PaletteColor getColor(ThemeColorSlot slot) const;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_background1", &ColorMap::_background1), field("_text1", &ColorMap::_text1),
                               field("_background2", &ColorMap::_background2), field("_text2", &ColorMap::_text2),
                               field("_accent1", &ColorMap::_accent1), field("_accent2", &ColorMap::_accent2),
                               field("_accent3", &ColorMap::_accent3), field("_accent4", &ColorMap::_accent4),
                               field("_accent5", &ColorMap::_accent5), field("_accent6", &ColorMap::_accent6),
                               field("_hyperlink", &ColorMap::_hyperlink),
                               field("_followedHyperlink", &ColorMap::_followedHyperlink));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// The fixed colour that `color` is under a theme and a colour map.
ZEM_EXPORT RGBAColor resolveColor(const Color& color, const Theme& theme, const ColorMap& colorMap);

} // namespace Zem::DOM

#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_Fields.h"

#include <boost/variant.hpp>

namespace Zem::DOM
{

/// A fixed colour; each part goes from 0 to 255, and an `_alpha` of 255 hides what lies below.
struct ZEM_EXPORT RGBAColor
{
    unsigned char _red = 0;
    unsigned char _green = 0;
    unsigned char _blue = 0;
    unsigned char _alpha = 255;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_red", &RGBAColor::_red), field("_green", &RGBAColor::_green),
                               field("_blue", &RGBAColor::_blue), field("_alpha", &RGBAColor::_alpha));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// The places of a theme's palette that a colour can name; `ColorMap` says which of the theme's colours stands there.
enum class ThemeColorSlot : unsigned char
{
    Background1,
    Text1,
    Background2,
    Text2,
    Accent1,
    Accent2,
    Accent3,
    Accent4,
    Accent5,
    Accent6,
    Hyperlink,
    FollowedHyperlink
};

constexpr ThemeColorSlot getLastEnumerator(ThemeColorSlot)
{
    return ThemeColorSlot::FollowedHyperlink;
}

/// A colour that follows the theme. `_tint` goes from -1, black, through 0, the theme's colour itself, to 1, white.
struct ZEM_EXPORT ThemeColor
{
    ThemeColorSlot _slot = ThemeColorSlot::Text1;
    float _tint = 0;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_slot", &ThemeColor::_slot), field("_tint", &ThemeColor::_tint));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using Color = boost::variant<RGBAColor, ThemeColor>;

} // namespace Zem::DOM

#pragma once

#include "DOM_Color.h"

#include "Util_BoolOpt.h"
#include "Util_Export.h"

#include <boost/optional.hpp>

#include <memory>
#include <string>

namespace Zem::DOM
{

enum class FontWeight : unsigned char
{
    Thin,
    Light,
    Regular,
    Medium,
    SemiBold,
    Bold,
    Black
};

constexpr FontWeight getLastEnumerator(FontWeight)
{
    return FontWeight::Black;
}

enum class FontSlant : unsigned char
{
    Upright,
    Italic,
    Oblique
};

constexpr FontSlant getLastEnumerator(FontSlant)
{
    return FontSlant::Oblique;
}

enum class UnderlineType : unsigned char
{
    None,
    Single,
    WordsOnly,
    Double,
    Thick,
    Dotted,
    Dashed,
    DashDot,
    Wave
};

constexpr UnderlineType getLastEnumerator(UnderlineType)
{
    return UnderlineType::Wave;
}

enum class StrikeType : unsigned char
{
    None,
    Single,
    Double
};

constexpr StrikeType getLastEnumerator(StrikeType)
{
    return StrikeType::Double;
}

enum class VerticalPosition : unsigned char
{
    Baseline,
    Superscript,
    Subscript
};

constexpr VerticalPosition getLastEnumerator(VerticalPosition)
{
    return VerticalPosition::Subscript;
}

enum class LetterCase : unsigned char
{
    AsTyped,
    AllCaps,
    SmallCaps
};

constexpr LetterCase getLastEnumerator(LetterCase)
{
    return LetterCase::SmallCaps;
}

/// How characters look. A field without a value inherits it. Lengths are in points.
struct ZEM_EXPORT RunProps
{
    boost::optional<std::string> _fontName;
    boost::optional<float> _fontSize;
    boost::optional<FontWeight> _weight;
    boost::optional<FontSlant> _slant;
    boost::optional<UnderlineType> _underline;
    boost::optional<Color> _underlineColor;
    boost::optional<StrikeType> _strike;
    boost::optional<Color> _color;
    boost::optional<Color> _highlight;
    /// A language tag such as "de-AT".
    boost::optional<std::string> _language;
    boost::optional<VerticalPosition> _verticalPosition;
    /// Upwards from the base line.
    boost::optional<float> _baselineShift;
    boost::optional<LetterCase> _letterCase;
    /// Added between characters.
    boost::optional<float> _letterSpacing;
    /// The smallest font size at which pairs of letters are kerned.
    boost::optional<float> _kerningFrom;
    /// The width of the letters in per cent of the font's own.
    boost::optional<float> _horizontalScale;
    BoolOpt _isHidden;
    BoolOpt _isOutlined;
    BoolOpt _hasShadow;
    BoolOpt _isRightToLeft;
    /// Not looked at by the spelling checker.
    BoolOpt _isProofingOff;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_fontName", &RunProps::_fontName), field("_fontSize", &RunProps::_fontSize),
            field("_weight", &RunProps::_weight), field("_slant", &RunProps::_slant),
            field("_underline", &RunProps::_underline), field("_underlineColor", &RunProps::_underlineColor),
            field("_strike", &RunProps::_strike), field("_color", &RunProps::_color),
            field("_highlight", &RunProps::_highlight), field("_language", &RunProps::_language),
            field("_verticalPosition", &RunProps::_verticalPosition),
            field("_baselineShift", &RunProps::_baselineShift), field("_letterCase", &RunProps::_letterCase),
            field("_letterSpacing", &RunProps::_letterSpacing), field("_kerningFrom", &RunProps::_kerningFrom),
            field("_horizontalScale", &RunProps::_horizontalScale), field("_isHidden", &RunProps::_isHidden),
            field("_isOutlined", &RunProps::_isOutlined), field("_hasShadow", &RunProps::_hasShadow),
            field("_isRightToLeft", &RunProps::_isRightToLeft), field("_isProofingOff", &RunProps::_isProofingOff));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using RunPropsConstPtr = std::shared_ptr<const RunProps>;

} // namespace Zem::DOM

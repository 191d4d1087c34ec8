#pragma once

#include "DOM_Border.h"

#include "Util_BoolOpt.h"
#include "Util_Export.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Zem::DOM
{

enum class ParagraphAlignment : unsigned char
{
    Left,
    Center,
    Right,
    Justify,
    Distribute
};

constexpr ParagraphAlignment getLastEnumerator(ParagraphAlignment)
{
    return ParagraphAlignment::Distribute;
}

/// What a line height counts: times the font's own, points at least, points exactly.
enum class LineHeightRule : unsigned char
{
    Multiple,
    AtLeast,
    Exact
};

constexpr LineHeightRule getLastEnumerator(LineHeightRule)
{
    return LineHeightRule::Exact;
}

enum class TextDirection : unsigned char
{
    LeftToRight,
    RightToLeft
};

constexpr TextDirection getLastEnumerator(TextDirection)
{
    return TextDirection::RightToLeft;
}

enum class TabAlignment : unsigned char
{
    Left,
    Center,
    Right,
    Decimal,
    Bar
};

constexpr TabAlignment getLastEnumerator(TabAlignment)
{
    return TabAlignment::Bar;
}

enum class TabLeader : unsigned char
{
    None,
    Dots,
    Hyphens,
    Underscores,
    MiddleDots
};

constexpr TabLeader getLastEnumerator(TabLeader)
{
    return TabLeader::MiddleDots;
}

/// Where a tabulator leads to, in points from the edge of the text.
struct ZEM_EXPORT TabStop
{
    float _position = 0;
    TabAlignment _alignment = TabAlignment::Left;
    TabLeader _leader = TabLeader::None;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_position", &TabStop::_position), field("_alignment", &TabStop::_alignment),
                               field("_leader", &TabStop::_leader));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// How a paragraph is set. A field without a value inherits it. Lengths are in points.
struct ZEM_EXPORT ParaProps
{
    boost::optional<ParagraphAlignment> _alignment;
    boost::optional<float> _leftIndent;
    boost::optional<float> _rightIndent;
    /// Relative to `_leftIndent`; negative for a hanging indent.
    boost::optional<float> _firstLineIndent;
    boost::optional<float> _spacingBefore;
    boost::optional<float> _spacingAfter;
    /// No spacing between neighbours of one style.
    BoolOpt _isSpacingContextual;
    boost::optional<float> _lineHeight;
    boost::optional<LineHeightRule> _lineHeightRule;
    BoolOpt _isKeptWithNext;
    BoolOpt _areLinesKeptTogether;
    BoolOpt _hasWidowControl;
    BoolOpt _hasPageBreakBefore;
    BoolOpt _isHyphenationOff;
    boost::optional<std::vector<TabStop>> _tabStops;
    boost::optional<Border> _topBorder;
    boost::optional<Border> _bottomBorder;
    boost::optional<Border> _leftBorder;
    boost::optional<Border> _rightBorder;
    /// Between neighbours of equal borders.
    boost::optional<Border> _betweenBorder;
    boost::optional<Color> _shading;
    /// 0 for the highest level; 9 for text that isn't a part of the outline.
    boost::optional<unsigned char> _outlineLevel;
    boost::optional<TextDirection> _direction;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_alignment", &ParaProps::_alignment), field("_leftIndent", &ParaProps::_leftIndent),
            field("_rightIndent", &ParaProps::_rightIndent), field("_firstLineIndent", &ParaProps::_firstLineIndent),
            field("_spacingBefore", &ParaProps::_spacingBefore), field("_spacingAfter", &ParaProps::_spacingAfter),
            field("_isSpacingContextual", &ParaProps::_isSpacingContextual),
            field("_lineHeight", &ParaProps::_lineHeight), field("_lineHeightRule", &ParaProps::_lineHeightRule),
            field("_isKeptWithNext", &ParaProps::_isKeptWithNext),
            field("_areLinesKeptTogether", &ParaProps::_areLinesKeptTogether),
            field("_hasWidowControl", &ParaProps::_hasWidowControl),
            field("_hasPageBreakBefore", &ParaProps::_hasPageBreakBefore),
            field("_isHyphenationOff", &ParaProps::_isHyphenationOff), field("_tabStops", &ParaProps::_tabStops),
            field("_topBorder", &ParaProps::_topBorder), field("_bottomBorder", &ParaProps::_bottomBorder),
            field("_leftBorder", &ParaProps::_leftBorder), field("_rightBorder", &ParaProps::_rightBorder),
            field("_betweenBorder", &ParaProps::_betweenBorder), field("_shading", &ParaProps::_shading),
            field("_outlineLevel", &ParaProps::_outlineLevel), field("_direction", &ParaProps::_direction));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using ParaPropsConstPtr = std::shared_ptr<const ParaProps>;

} // namespace Zem::DOM

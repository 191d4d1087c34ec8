#pragma once

/// The ways in which a frame is tied to its surroundings. Lengths are in points.

#include "DOM_FieldOperators.h"

#include "Util_TableIndices.h"

#include <boost/variant.hpp>

#include <tuple>

namespace Zem::DOM
{

/// How text flows around a frame.
enum class TextWrapping : unsigned char
{
    Inline,
    Square,
    TopAndBottom,
    BehindText,
    InFrontOfText
};

constexpr TextWrapping getLastEnumerator(TextWrapping)
{
    return TextWrapping::InFrontOfText;
}

/// What the horizontal offset of a frame is counted from.
enum class HorizontalOrigin : unsigned char
{
    Character,
    Column,
    Margin,
    Page
};

constexpr HorizontalOrigin getLastEnumerator(HorizontalOrigin)
{
    return HorizontalOrigin::Page;
}

/// What the vertical offset of a frame is counted from.
enum class VerticalOrigin : unsigned char
{
    Line,
    Paragraph,
    Margin,
    Page
};

constexpr VerticalOrigin getLastEnumerator(VerticalOrigin)
{
    return VerticalOrigin::Page;
}

/// A frame in a text: inline, or placed in relation to where it is anchored.
struct TextAnchor
{
    TextWrapping _wrapping = TextWrapping::Inline;
    HorizontalOrigin _horizontalOrigin = HorizontalOrigin::Column;
    VerticalOrigin _verticalOrigin = VerticalOrigin::Paragraph;
    /// To the right, then down; without meaning for an inline frame.
    Size2D<float> _offset;
    /// The least distance between the frame and the text around it.
    float _textDistance = 0;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_wrapping", &TextAnchor::_wrapping), field("_horizontalOrigin", &TextAnchor::_horizontalOrigin),
            field("_verticalOrigin", &TextAnchor::_verticalOrigin), field("_offset", &TextAnchor::_offset),
            field("_textDistance", &TextAnchor::_textDistance));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A frame at a fixed place of a slide or of a worksheet.
struct AbsoluteAnchor
{
    /// From the left edge, then from the top.
    Size2D<float> _offset;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_offset", &AbsoluteAnchor::_offset));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A place in a table: a cell, and an offset from its left top corner.
struct CellCorner
{
    CellIndex _cell;
    /// To the right, then down.
    Size2D<float> _offset;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_cell", &CellCorner::_cell), field("_offset", &CellCorner::_offset));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A frame that moves with a cell and keeps its extent.
struct OneCellAnchor
{
    CellCorner _from;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_from", &OneCellAnchor::_from));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// What a frame between two cells follows.
enum class CellsFollowing : unsigned char
{
    MoveAndResize,
    MoveOnly,
    Stay
};

constexpr CellsFollowing getLastEnumerator(CellsFollowing)
{
    return CellsFollowing::Stay;
}

/// A frame that is stretched between two cells.
struct TwoCellAnchor
{
    CellCorner _from;
    CellCorner _to;
    CellsFollowing _following = CellsFollowing::MoveAndResize;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_from", &TwoCellAnchor::_from), field("_to", &TwoCellAnchor::_to),
                               field("_following", &TwoCellAnchor::_following));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using Anchor = boost::variant<TextAnchor, AbsoluteAnchor, OneCellAnchor, TwoCellAnchor>;

} // namespace Zem::DOM

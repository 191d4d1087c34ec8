#pragma once

#include "DOM_Border.h"
#include "DOM_Color.h"
#include "DOM_FieldOperators.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"

#include "Util_BoolOpt.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace Zem::DOM
{

/// `General` aligns by what the cell holds: text to the left, numbers to the right, errors and truth values in the
/// middle.
enum class CellHorizontalAlignment : unsigned char
{
    General,
    Left,
    Center,
    Right,
    Justify,
    Fill,
    CenterAcross
};

constexpr CellHorizontalAlignment getLastEnumerator(CellHorizontalAlignment)
{
    return CellHorizontalAlignment::CenterAcross;
}

enum class CellVerticalAlignment : unsigned char
{
    Top,
    Center,
    Bottom,
    Justify
};

constexpr CellVerticalAlignment getLastEnumerator(CellVerticalAlignment)
{
    return CellVerticalAlignment::Justify;
}

/// What becomes of a text that is wider than its cell.
enum class CellTextOverflow : unsigned char
{
    Spill,
    Wrap,
    ShrinkToFit,
    Clip
};

constexpr CellTextOverflow getLastEnumerator(CellTextOverflow)
{
    return CellTextOverflow::Clip;
}

/// The edges of a cell and its diagonals; an unset one is inherited.
struct CellBorders
{
    boost::optional<Border> _left;
    boost::optional<Border> _top;
    boost::optional<Border> _right;
    boost::optional<Border> _bottom;
    boost::optional<Border> _diagonalDown;
    boost::optional<Border> _diagonalUp;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_left", &CellBorders::_left), field("_top", &CellBorders::_top),
                               field("_right", &CellBorders::_right), field("_bottom", &CellBorders::_bottom),
                               field("_diagonalDown", &CellBorders::_diagonalDown),
                               field("_diagonalUp", &CellBorders::_diagonalUp));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// The distances between a cell's edges and its content, in points.
struct CellMargins
{
    boost::optional<float> _left;
    boost::optional<float> _top;
    boost::optional<float> _right;
    boost::optional<float> _bottom;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_left", &CellMargins::_left), field("_top", &CellMargins::_top),
                               field("_right", &CellMargins::_right), field("_bottom", &CellMargins::_bottom));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// How a cell looks; an unset field is inherited.
struct CellProps
{
    boost::optional<CellHorizontalAlignment> _horizontalAlignment;
    boost::optional<CellVerticalAlignment> _verticalAlignment;
    boost::optional<CellTextOverflow> _textOverflow;
    /// In degrees, against the clock.
    boost::optional<float> _textRotation;
    /// In points, on the side that the text is aligned to.
    boost::optional<float> _indent;
    boost::optional<Color> _fillColor;
    CellBorders _borders;
    CellMargins _margins;
    /// A format code such as "0.00%".
    boost::optional<std::string> _numberFormat;
    /// Whether the cell is read-only while its sheet is protected.
    BoolOpt _isLocked;
    /// Whether a protected sheet keeps the cell's formula from being seen.
    BoolOpt _isFormulaHidden;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_horizontalAlignment", &CellProps::_horizontalAlignment),
            field("_verticalAlignment", &CellProps::_verticalAlignment),
            field("_textOverflow", &CellProps::_textOverflow), field("_textRotation", &CellProps::_textRotation),
            field("_indent", &CellProps::_indent), field("_fillColor", &CellProps::_fillColor),
            field("_borders", &CellProps::_borders), field("_margins", &CellProps::_margins),
            field("_numberFormat", &CellProps::_numberFormat), field("_isLocked", &CellProps::_isLocked),
            field("_isFormulaHidden", &CellProps::_isFormulaHidden));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using CellPropsConstPtr = std::shared_ptr<const CellProps>;

/// The style of a cell: its own properties, those of its text, and the named style that it inherits from. Null pointers
/// and a nil parent stand for none.
class CellStyle
{
public:
    const CellPropsConstPtr& getCellProps() const
    {
        return _cellProps;
    }

    void setCellProps(CellPropsConstPtr props)
    {
        _cellProps = std::move(props);
    }

    const RunPropsConstPtr& getRunProps() const
    {
        return _runProps;
    }

    void setRunProps(RunPropsConstPtr props)
    {
        _runProps = std::move(props);
    }

    const ParaPropsConstPtr& getParaProps() const
    {
        return _paraProps;
    }

    void setParaProps(ParaPropsConstPtr props)
    {
        _paraProps = std::move(props);
    }

    const UUID& getParentUUID() const
    {
        return _parentUUID;
    }

    void setParentUUID(const UUID& uuid)
    {
        _parentUUID = uuid;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_cellProps", &CellStyle::_cellProps), field("_runProps", &CellStyle::_runProps),
                               field("_paraProps", &CellStyle::_paraProps),
                               field("_parentUUID", &CellStyle::_parentUUID));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    CellPropsConstPtr _cellProps;
    RunPropsConstPtr _runProps;
    ParaPropsConstPtr _paraProps;
    UUID _parentUUID;
};

} // namespace Zem::DOM

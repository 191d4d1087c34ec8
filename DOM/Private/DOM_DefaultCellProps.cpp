#include "DOM_DefaultCellProps.h"

namespace Zem::DOM
{

namespace
{

CellMargins makeMargins(float horizontal, float vertical)
{
    CellMargins margins;
    margins._left = horizontal;
    margins._right = horizontal;
    margins._top = vertical;
    margins._bottom = vertical;
    return margins;
}

/// What all kinds of document have in common: plain text, no fill, no borders.
CellProps makePlainProps()
{
    CellProps props;
    props._horizontalAlignment = CellHorizontalAlignment::General;
    props._verticalAlignment = CellVerticalAlignment::Top;
    props._textOverflow = CellTextOverflow::Wrap;
    props._textRotation = 0.0F;
    props._indent = 0.0F;
    props._fillColor = RGBAColor{255, 255, 255, 0};
    for (boost::optional<Border> CellBorders::*edge :
         {&CellBorders::_left, &CellBorders::_top, &CellBorders::_right, &CellBorders::_bottom,
          &CellBorders::_diagonalDown, &CellBorders::_diagonalUp})
    {
        props._borders.*edge = Border();
    }
    props._numberFormat = std::string("General");
    props._isLocked = false;
    props._isFormulaHidden = false;
    return props;
}

CellPropsConstPtr makePresentationProps()
{
    CellProps props = makePlainProps();
    props._margins = makeMargins(7, 4);
    return std::make_shared<const CellProps>(std::move(props));
}

CellPropsConstPtr makeWordProps()
{
    CellProps props = makePlainProps();
    props._horizontalAlignment = CellHorizontalAlignment::Left;
    props._margins = makeMargins(5, 0);
    return std::make_shared<const CellProps>(std::move(props));
}

/// Text runs over its neighbours as long as these are empty, and cells are locked once a sheet is protected.
CellPropsConstPtr makeWorksheetProps()
{
    CellProps props = makePlainProps();
    props._verticalAlignment = CellVerticalAlignment::Bottom;
    props._textOverflow = CellTextOverflow::Spill;
    props._margins = makeMargins(2, 1);
    props._isLocked = true;
    return std::make_shared<const CellProps>(std::move(props));
}

} // namespace

const CellPropsConstPtr& getDefaultCellProps()
{
    static const CellPropsConstPtr props = makePresentationProps();
    return props;
}

const CellPropsConstPtr& getWordDefaultCellProps()
{
    static const CellPropsConstPtr props = makeWordProps();
    return props;
}

const CellPropsConstPtr& getWorksheetDefaultCellProps()
{
    static const CellPropsConstPtr props = makeWorksheetProps();
    return props;
}

} // namespace Zem::DOM

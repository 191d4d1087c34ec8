#pragma once

#include "DOM_Border.h"
#include "DOM_CellStyle.h"
#include "DOM_Color.h"
#include "DOM_FieldOperators.h"

#include "Util_BoolOpt.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

#include <memory>
#include <tuple>
#include <utility>

namespace Zem::DOM
{

enum class TableAlignment : unsigned char
{
    Left,
    Center,
    Right
};

constexpr TableAlignment getLastEnumerator(TableAlignment)
{
    return TableAlignment::Right;
}

/// The edges of a table, and those between its cells; an unset one is inherited.
struct TableBorders
{
    boost::optional<Border> _left;
    boost::optional<Border> _top;
    boost::optional<Border> _right;
    boost::optional<Border> _bottom;
    boost::optional<Border> _betweenRows;
    boost::optional<Border> _betweenColumns;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_left", &TableBorders::_left), field("_top", &TableBorders::_top),
                               field("_right", &TableBorders::_right), field("_bottom", &TableBorders::_bottom),
                               field("_betweenRows", &TableBorders::_betweenRows),
                               field("_betweenColumns", &TableBorders::_betweenColumns));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// How a table looks as a whole; an unset field is inherited. Lengths are in points.
struct TableProps
{
    /// Whether a worksheet is shown; it is unless it was hidden.
    bool isVisible() const
    {
        return !_isVisible || *_isVisible;
    }

    BoolOpt _isVisible;
    BoolOpt _areGridLinesShown;
    /// The colour of a worksheet's tab.
    boost::optional<Color> _tabColor;
    boost::optional<float> _width;
    boost::optional<TableAlignment> _alignment;
    /// From the edge of the text.
    boost::optional<float> _indent;
    boost::optional<float> _cellSpacing;
    boost::optional<Color> _fillColor;
    TableBorders _borders;
    CellMargins _cellMargins;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_isVisible", &TableProps::_isVisible), field("_areGridLinesShown", &TableProps::_areGridLinesShown),
            field("_tabColor", &TableProps::_tabColor), field("_width", &TableProps::_width),
            field("_alignment", &TableProps::_alignment), field("_indent", &TableProps::_indent),
            field("_cellSpacing", &TableProps::_cellSpacing), field("_fillColor", &TableProps::_fillColor),
            field("_borders", &TableProps::_borders), field("_cellMargins", &TableProps::_cellMargins));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using TablePropsConstPtr = std::shared_ptr<const TableProps>;

/// The style of a table: its properties and the named style that it inherits from. A null pointer and a nil parent
/// stand for none.
class TableStyle
{
public:
    const TablePropsConstPtr& getTableProps() const
    {
        return _tableProps;
    }

    void setTableProps(TablePropsConstPtr props)
    {
        _tableProps = std::move(props);
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
        return std::make_tuple(field("_tableProps", &TableStyle::_tableProps),
                               field("_parentUUID", &TableStyle::_parentUUID));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    TablePropsConstPtr _tableProps;
    UUID _parentUUID;
};

} // namespace Zem::DOM

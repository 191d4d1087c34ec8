#pragma once

#include "DOM_Color.h"
#include "DOM_FieldOperators.h"
#include "DOM_FormulaSyntaxTree.h"
#include "DOM_GraphicalObject.h"

#include "Util_Export.h"

#include <boost/optional.hpp>

#include <string>
#include <tuple>
#include <vector>

namespace Zem::DOM
{

enum class ChartType : unsigned char
{
    Column,
    Bar,
    Line,
    Area,
    Pie,
    Doughnut,
    Scatter,
    Radar
};

constexpr ChartType getLastEnumerator(ChartType)
{
    return ChartType::Radar;
}

/// How the series of a chart stand to each other.
enum class ChartGrouping : unsigned char
{
    SideBySide,
    Stacked,
    StackedToHundredPercent
};

constexpr ChartGrouping getLastEnumerator(ChartGrouping)
{
    return ChartGrouping::StackedToHundredPercent;
}

enum class ChartLegendPosition : unsigned char
{
    Left,
    Top,
    Right,
    Bottom
};

constexpr ChartLegendPosition getLastEnumerator(ChartLegendPosition)
{
    return ChartLegendPosition::Bottom;
}

/// One row of numbers of a chart, and where they come from.
struct ChartSeries
{
    std::string _name;
    /// The cells that name the values; empty if these are counted.
    boost::optional<FormulaSyntaxTree::CellRange> _categories;
    FormulaSyntaxTree::CellRange _values;
    /// Empty if the theme decides.
    boost::optional<Color> _color;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_name", &ChartSeries::_name), field("_categories", &ChartSeries::_categories),
                               field("_values", &ChartSeries::_values), field("_color", &ChartSeries::_color));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// One axis of a chart. Unset limits are worked out from the values.
struct ChartAxis
{
    std::string _title;
    boost::optional<float> _minimum;
    boost::optional<float> _maximum;
    bool _areGridLinesShown = false;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_title", &ChartAxis::_title), field("_minimum", &ChartAxis::_minimum),
                               field("_maximum", &ChartAxis::_maximum),
                               field("_areGridLinesShown", &ChartAxis::_areGridLinesShown));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A chart with all that belongs to it.
class ZEM_EXPORT ChartSpace final : public GraphicalObjectImpl<ChartSpace, GraphicalObjectKind::Chart>
{
public:
    static constexpr auto fields()
    {
        return std::make_tuple(field("_type", &ChartSpace::_type), field("_grouping", &ChartSpace::_grouping),
                               field("_title", &ChartSpace::_title), field("_series", &ChartSpace::_series),
                               field("_categoryAxis", &ChartSpace::_categoryAxis),
                               field("_valueAxis", &ChartSpace::_valueAxis),
                               field("_legendPosition", &ChartSpace::_legendPosition));
    }

    template<class Archive>
    void serialize(Archive& archive);

    ChartType _type = ChartType::Column;
    ChartGrouping _grouping = ChartGrouping::SideBySide;
    std::string _title;
    std::vector<ChartSeries> _series;
    ChartAxis _categoryAxis;
    ChartAxis _valueAxis;
    /// Empty for a chart without a legend.
    boost::optional<ChartLegendPosition> _legendPosition;
};

} // namespace Zem::DOM

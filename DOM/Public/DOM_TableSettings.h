#pragma once

#include "DOM_FieldOperators.h"

#include <tuple>

namespace Zem::DOM
{

/// On which side of a group of rows or columns its summary stands.
struct GroupingProps
{
    bool _isSummaryBelow = true;
    bool _isSummaryRight = true;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_isSummaryBelow", &GroupingProps::_isSummaryBelow),
                               field("_isSummaryRight", &GroupingProps::_isSummaryRight));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// How a worksheet is shown.
struct TableSettings
{
    /// Whether a cell whose value is 0 shows it.
    bool _showZeroValue = true;
    GroupingProps _groupingProps;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_showZeroValue", &TableSettings::_showZeroValue),
                               field("_groupingProps", &TableSettings::_groupingProps));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOM

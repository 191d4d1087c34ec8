#pragma once

#include "DOM_FieldOperators.h"

#include "Util_TableIndices.h"

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Zem::DOM
{

/// What the filter of one column lets through.
struct ColumnFilter
{
    /// The column, counted from the first column of the filter's range.
    unsigned long _column = 0;
    /// The texts of the cells whose rows stay visible.
    std::vector<std::string> _shownValues;
    /// Whether rows with an empty cell in this column stay visible.
    bool _areBlanksShown = true;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_column", &ColumnFilter::_column),
                               field("_shownValues", &ColumnFilter::_shownValues),
                               field("_areBlanksShown", &ColumnFilter::_areBlanksShown));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// The filter of a table: the range that it works on, and what it hides there. The range is one of live indices, and
/// stays where it is when rows and columns come and go before it.
class TableFilterInfo
{
public:
    TableFilterInfo() = default;

    explicit TableFilterInfo(const TableRange& filterRange)
        : _filterRange(filterRange)
    {
    }

    const TableRange& getFilterRange() const
    {
        return _filterRange;
    }

    /// Columns that filter nothing have no entry.
    const std::vector<ColumnFilter>& getColumnFilters() const
    {
        return _columnFilters;
    }

    void setColumnFilters(std::vector<ColumnFilter> columnFilters)
    {
        _columnFilters = std::move(columnFilters);
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_filterRange", &TableFilterInfo::_filterRange),
                               field("_columnFilters", &TableFilterInfo::_columnFilters));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    TableRange _filterRange;
    std::vector<ColumnFilter> _columnFilters;
};

} // namespace Zem::DOM

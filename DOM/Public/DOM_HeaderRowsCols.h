#pragma once

#include "DOM_FieldOperators.h"

#include <tuple>

namespace Zem::DOM
{

/// How many of a table's first rows are repeated on top of every page, and how many of its first columns to the left.
class HeaderRowsCols
{
public:
    HeaderRowsCols() = default;

    HeaderRowsCols(unsigned long rowsCount, unsigned long colsCount)
        : _rowsCount(rowsCount)
        , _colsCount(colsCount)
    {
    }

    unsigned long getRowsCount() const
    {
        return _rowsCount;
    }

    unsigned long getColsCount() const
    {
        return _colsCount;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_rowsCount", &HeaderRowsCols::_rowsCount),
                               field("_colsCount", &HeaderRowsCols::_colsCount));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    unsigned long _rowsCount = 0;
    unsigned long _colsCount = 0;
};

} // namespace Zem::DOM

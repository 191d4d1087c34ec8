#pragma once

#include "DOM_FieldOperators.h"

#include <tuple>

namespace Zem::DOM
{

/// How many rows below and columns to the right of its own the root of a merge captures; a default one captures
/// nothing, and its cell isn't merged.
class CellMergeProps
{
public:
    CellMergeProps() = default;

    CellMergeProps(unsigned long capturedRowsCount, unsigned long capturedColsCount)
        : _capturedRowsCount(capturedRowsCount)
        , _capturedColsCount(capturedColsCount)
    {
    }

    unsigned long getCapturedRowsCount() const
    {
        return _capturedRowsCount;
    }

    unsigned long getCapturedColsCount() const
    {
        return _capturedColsCount;
    }

    /// Whether the cell captures any other.
    bool isMerge() const
    {
        return _capturedRowsCount > 0 || _capturedColsCount > 0;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_capturedRowsCount", &CellMergeProps::_capturedRowsCount),
                               field("_capturedColsCount", &CellMergeProps::_capturedColsCount));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    unsigned long _capturedRowsCount = 0;
    unsigned long _capturedColsCount = 0;
};

} // namespace Zem::DOM

#pragma once

#include "DOM_Table.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"

namespace Zem::DOM
{

/// What a table must not be made to look like.
class ZEM_EXPORT BusinessLogicChecks
{
public:
    BusinessLogicChecks() = delete;

    /// Whether the ranges overlap and `second` reaches out of `first`.
    static bool isIntersectedAndNotContained(const TableRange& first, const TableRange& second);

    /// Whether a merge of the table has a position in `range` and reaches out of it.
    static bool isMergedRangeIntersectedAndOutOfRangeExists(const Table& table, const TableRange& range);
};

} // namespace Zem::DOM

#include "DOM_BusinessLogicChecks.h"

#include <algorithm>

namespace Zem::DOM
{

bool BusinessLogicChecks::isIntersectedAndNotContained(const TableRange& first, const TableRange& second)
{
    return first.intersects(second) && !first.contains(second);
}

bool BusinessLogicChecks::isMergedRangeIntersectedAndOutOfRangeExists(const Table& table, const TableRange& range)
{
    const std::vector<TableRange> mergedRanges = table.getMergedRangesInRange(range);
    return std::any_of(mergedRanges.begin(), mergedRanges.end(),
                       [&](const TableRange& merged) { return !range.contains(merged); });
}

} // namespace Zem::DOM

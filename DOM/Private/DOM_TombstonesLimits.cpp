#include "DOM_TombstonesLimits.h"

#include "Util_BaseRuntimeError.h"

namespace Zem::DOM::TombstonesLimits
{

unsigned long getSlotsBeforeLastTombstone(const CollaborationUtils::TombstonesStorage& tombstones)
{
    const auto ranges = tombstones.getRanges();
    return ranges.empty() ? 0 : ranges.back().getEnd().get() - tombstones.getTombstonesCount();
}

std::optional<std::string> findMisfit(const CollaborationUtils::TombstonesStorage& tombstones, unsigned long liveCount)
{
    if (tombstones.getTombstonesCount() > maximalCount)
    {
        return "There are " + std::to_string(tombstones.getTombstonesCount()) +
               " tombstones, more than a list can have.";
    }
    const unsigned long needed = getSlotsBeforeLastTombstone(tombstones);
    if (liveCount < needed)
    {
        return "The last tombstone stands behind " + std::to_string(needed) + " live slots, but there are " +
               std::to_string(liveCount) + ".";
    }
    return std::nullopt;
}

void requireFit(const CollaborationUtils::TombstonesStorage& tombstones, unsigned long liveCount)
{
    if (const std::optional<std::string> misfit = findMisfit(tombstones, liveCount))
    {
        throw BaseRuntimeError(*misfit);
    }
}

} // namespace Zem::DOM::TombstonesLimits

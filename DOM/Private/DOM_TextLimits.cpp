#include "DOM_TextLimits.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include "Util_BaseRuntimeError.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace Zem::DOM::TextLimits
{

namespace
{

unsigned long getSlotsCount(const Run& run)
{
    return run.getKind() == RunKind::TextRun ? 1 + static_cast<const TextRun&>(run).getText().size() : 1;
}

template<class Elements>
void requireNoNullElement(const Elements& elements, const char* kind)
{
    const auto null = std::find(elements.begin(), elements.end(), nullptr);
    if (null != elements.end())
    {
        throw BaseRuntimeError("Null " + std::string(kind) + " at place " + std::to_string(null - elements.begin()));
    }
}

} // namespace

unsigned long getSlotsCount(const Block& block)
{
    if (block.getKind() != BlockKind::Paragraph)
    {
        return 1;
    }
    const Runs& runs = static_cast<const Paragraph&>(block).getRuns();
    return std::accumulate(runs.begin(), runs.end(), 2UL,
                           [](unsigned long count, const auto& run) { return count + getSlotsCount(*run); });
}

unsigned long getSlotsBeforeLastTombstone(const CollaborationUtils::TombstonesStorage& tombstones)
{
    const auto ranges = tombstones.getRanges();
    return ranges.empty() ? 0 : ranges.back().getEnd().get() - tombstones.getTombstonesCount();
}

void requireNoNull(const Blocks& blocks)
{
    requireNoNullElement(blocks, "block");
}

void requireNoNull(const Runs& runs)
{
    requireNoNullElement(runs, "run");
}

void requireSound(const TextWithTombstones& text)
{
    requireNoNull(text.getBlocks());
    const unsigned long needed = getSlotsBeforeLastTombstone(text.getTombstones());
    unsigned long count = 0;
    for (const auto& block : text.getBlocks())
    {
        if (count >= needed)
        {
            return;
        }
        count += getSlotsCount(*block);
    }
    if (count < needed)
    {
        throw BaseRuntimeError("The tombstones of a text need " + std::to_string(needed) + " live slots, there are " +
                               std::to_string(count));
    }
}

} // namespace Zem::DOM::TextLimits

#include "DOM_TextLimits.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_TombstonesLimits.h"

#include "Util_BaseRuntimeError.h"

#include <numeric>
#include <optional>
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
    if (const std::optional<unsigned long> null = TombstonesLimits::findNull(elements))
    {
        throw BaseRuntimeError("Null " + std::string(kind) + " at place " + std::to_string(*null));
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

unsigned long getSlotsCount(const Blocks& blocks)
{
    return std::accumulate(blocks.begin(), blocks.end(), 0UL,
                           [](unsigned long count, const auto& block) { return count + getSlotsCount(*block); });
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
    if (text.getTombstones().getTombstonesCount() > 0)
    {
        TombstonesLimits::requireFit(text.getTombstones(), getSlotsCount(text.getBlocks()));
    }
}

} // namespace Zem::DOM::TextLimits

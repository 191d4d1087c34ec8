#include "DOM_TextLimits.h"
#include "DOM_PlaneSize.h"
#include "DOM_TombstonesLimits.h"

#include "Util_BaseRuntimeError.h"

#include <optional>
#include <string>

namespace Zem::DOM::TextLimits
{

namespace
{

template<class Elements>
void requireNoNullElement(const Elements& elements, const char* kind)
{
    if (const std::optional<unsigned long> null = TombstonesLimits::findNull(elements))
    {
        throw BaseRuntimeError("Null " + std::string(kind) + " at place " + std::to_string(*null));
    }
}

} // namespace

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
        TombstonesLimits::requireFit(text.getTombstones(), PlaneSize::of(text.getBlocks()));
    }
}

} // namespace Zem::DOM::TextLimits

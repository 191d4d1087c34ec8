#include "DOM_PlaneSize.h"

#include "Util_Assert.h"

namespace Zem::DOM::PlaneSize
{

unsigned long of(const Block& block)
{
    if (block.getKind() != BlockKind::Paragraph)
    {
        return 1;
    }
    unsigned long size = ofTagAndMark;
    for (const std::unique_ptr<Run>& run : static_cast<const Paragraph&>(block).getRuns())
    {
        size += of(derefPtr(run));
    }
    return size;
}

unsigned long of(const Blocks& blocks)
{
    unsigned long size = 0;
    for (const std::unique_ptr<Block>& block : blocks)
    {
        size += of(derefPtr(block));
    }
    return size;
}

} // namespace Zem::DOM::PlaneSize

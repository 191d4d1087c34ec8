#include "DClb_FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace
{

/// How many allocations of this thread still succeed before one fails; negative when none is to fail.
thread_local long allowedAllocationsCount = -1;

} // namespace

void* operator new(std::size_t size)
{
    const bool isToFail = allowedAllocationsCount == 0;
    allowedAllocationsCount -= allowedAllocationsCount >= 0 ? 1 : 0;
    void* const memory = isToFail ? nullptr : std::malloc(size > 0 ? size : 1);
    if (!memory)
    {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace Zem::DOMCollaboration
{

FailingAllocation::FailingAllocation(unsigned int allowedCount)
{
    allowedAllocationsCount = static_cast<long>(allowedCount);
}

FailingAllocation::~FailingAllocation()
{
    allowedAllocationsCount = -1;
}

} // namespace Zem::DOMCollaboration

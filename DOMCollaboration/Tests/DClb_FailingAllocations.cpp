#include "DClb_FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace
{

/// How many allocations of this thread still succeed before one fails; negative when none is to fail.
thread_local long allowedAllocationsCount = -1;

/// Null where none is left.
void* allocate(std::size_t size) noexcept
{
    const bool isToFail = allowedAllocationsCount == 0;
    allowedAllocationsCount -= allowedAllocationsCount >= 0 ? 1 : 0;
    return isToFail ? nullptr : std::malloc(size > 0 ? size : 1);
}

} // namespace

void* operator new(std::size_t size)
{
    void* const memory = allocate(size);
    if (!memory)
    {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
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

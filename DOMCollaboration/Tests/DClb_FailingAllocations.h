#pragma once

namespace Zem::DOMCollaboration
{

/// While it stands, an allocation of this thread fails: that behind the next `allowedCount` ones, and only that one.
class FailingAllocation
{
public:
    explicit FailingAllocation(unsigned int allowedCount);
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;
    ~FailingAllocation();
};

} // namespace Zem::DOMCollaboration

#pragma once

#include "Sharing/CS_AdmissionLimits.h"
#include "Sharing/CS_InvalidOperationError.h"

namespace Zem::CollaborationSession
{

/// Fails: `InvalidOperationError` unless `condition` holds.
inline void requireSound(bool condition, OperationFault fault)
{
    if (!condition)
    {
        throw InvalidOperationError(fault);
    }
}

/// What is left of something that there may be only so much of.
class Allowance
{
public:
    Allowance(unsigned long limit, OperationFault fault)
        : _left(limit)
        , _fault(fault)
    {
    }

    /// Fails: `InvalidOperationError` when there isn't as much left.
    void spend(unsigned long amount)
    {
        requireSound(amount <= _left, _fault);
        _left -= amount;
    }

    unsigned long getLeft() const
    {
        return _left;
    }

private:
    unsigned long _left;
    OperationFault _fault;
};

/// What one batch may cost. Everything that is looked at is paid for, so that a look never takes longer than that.
struct AdmissionBudget
{
    explicit AdmissionBudget(const AdmissionLimits& limits)
        : _operations(limits._operations, OperationFault::TooManyOperations)
        , _ranges(limits._ranges, OperationFault::TooManyRanges)
        , _elements(limits._elements, OperationFault::TooManyElements)
        , _bytes(limits._bytes, OperationFault::TooManyBytes)
        , _namedSlots(limits._namedSlots, OperationFault::TooManyNamedSlots)
    {
    }

    Allowance _operations;
    Allowance _ranges;
    Allowance _elements;
    Allowance _bytes;
    Allowance _namedSlots;
};

} // namespace Zem::CollaborationSession

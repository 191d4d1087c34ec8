#pragma once

#include "CE_Operation.h"

namespace Zem::CollaborationEngine
{

/// Whether two operations are of one kind, aimed at one node, and say the same: ranges, items and values compared
/// deeply, captured data and shadows included. Their ids don't count.
/// Cost: linear in what they carry. Fails: `std::bad_cast` for an atomic operation that isn't of a known family.
ZEM_EXPORT bool areDeeplyEqual(const Operation& first, const Operation& second);

/// Like `areDeeplyEqual`, but what an operation took out of a document when it ran doesn't count: the elements and
/// values that a marking, removal or restoring replaced, and the old value of a property. Of insertions and settings,
/// what they bring in counts.
ZEM_EXPORT bool haveEqualEffects(const Operation& first, const Operation& second);

} // namespace Zem::CollaborationEngine

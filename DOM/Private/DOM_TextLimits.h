#pragma once

/// What a reader requires of a text.

#include "DOM_Block.h"
#include "DOM_Run.h"
#include "DOM_TextWithTombstones.h"

namespace Zem::DOM::TextLimits
{

/// Fail: `BaseRuntimeError`, naming the place, when an element is null.
void requireNoNull(const Blocks& blocks);
void requireNoNull(const Runs& runs);

/// Fails: `BaseRuntimeError` when a block is null, or the tombstones don't fit the slots.
void requireSound(const TextWithTombstones& text);

} // namespace Zem::DOM::TextLimits

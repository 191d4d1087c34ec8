#pragma once

/// How many slots there are in a text, and what a reader requires of one.

#include "DOM_Block.h"
#include "DOM_Run.h"
#include "DOM_TextWithTombstones.h"

namespace Zem::DOM::TextLimits
{

/// How many live slots a block takes in the flat form of its text. Linear in the runs of a paragraph.
/// Requires: the block has no null run.
unsigned long getSlotsCount(const Block& block);

/// The same for all blocks. Requires: no block and no run is null.
unsigned long getSlotsCount(const Blocks& blocks);

/// Fail: `BaseRuntimeError`, naming the place, when an element is null.
void requireNoNull(const Blocks& blocks);
void requireNoNull(const Runs& runs);

/// Fails: `BaseRuntimeError` when a block is null, or the tombstones don't fit the slots.
void requireSound(const TextWithTombstones& text);

} // namespace Zem::DOM::TextLimits

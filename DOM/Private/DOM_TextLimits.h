#pragma once

/// What must hold of a text for its tombstones to mean anything. Used by readers, which refuse other texts, and by
/// `checkInvariants`.

#include "DOM_Block.h"
#include "DOM_Run.h"
#include "DOM_TextWithTombstones.h"

namespace Zem::DOM::TextLimits
{

/// How many live slots a block takes in the flat form of its text. Linear in the runs of a paragraph.
/// Requires: the block has no null run.
unsigned long getSlotsCount(const Block& block);

/// How many live slots stand in front of the last tombstone.
unsigned long getSlotsBeforeLastTombstone(const CollaborationUtils::TombstonesStorage& tombstones);

/// Fail: `BaseRuntimeError`, naming the place, when an element is null.
void requireNoNull(const Blocks& blocks);
void requireNoNull(const Runs& runs);

/// Fails: `BaseRuntimeError` when a block is null, or a tombstone stands behind more live slots than there are.
void requireSound(const TextWithTombstones& text);

} // namespace Zem::DOM::TextLimits

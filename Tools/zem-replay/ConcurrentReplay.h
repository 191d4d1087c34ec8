#pragma once

#include "Replay.h"

namespace ZemReplay
{

/// Plays a history of several users as often as the options say: each user has a client of his own, and makes each
/// transaction when that client has just what he knew then. Compares all replicas with each other in the end, and their
/// text with what it is to be.
/// Fails: `FailedComparison`, naming the history and the place; `BadTrace` for a position outside of the text.
ConcurrentResult replayConcurrently(const Trace& trace, const Options& options);

} // namespace ZemReplay

#pragma once

#include "Sharing/CS_FitIntoText.h"

#include <memory>
#include <optional>
#include <vector>

namespace Zem::CollaborationSession
{

/// New tags and marks for something that can't come back because those that it stood in are gone for good, or were
/// never there: somebody parted the text around it while it was removed.
///
///     wo [|word] Enter    {}{}     o and r come back in paragraphs, the rest of whose runs was never parted
struct MissingStructure
{
    /// Null if nothing is missing, or no structure helps. It is whole by itself: it comes in before anything is back.
    std::unique_ptr<TextInsertion> _insertion;
    /// Removes a byte of it that has the place of what is to come back, as no run is empty. Null if there is none.
    std::unique_ptr<TextMarking> _removal;
    /// Whether it stands for what was to come back: of line breaks one is like the other.
    bool _isInstead = false;
};

/// `single` brings back one element, or bytes that were neighbours, which can't come back as they are. Tags get the
/// looks that are known of dead ones in front, or else of what is around them.
/// Cost: a walk to the place. `findDead` is asked for dead slots in front of it, up to a live element.
MissingStructure findMissingStructure(const DOM::TextWithTombstones& text, const TextRestoring& single,
                                      FindDead findDead);

/// What `slots`, which ascend, are in `restoring`: an operation for each element, and for bytes that are neighbours.
std::vector<std::unique_ptr<TextRestoring>>
takeSingles(const TextRestoring& restoring, const std::vector<CollaborationEngine::IndexRange<unsigned long>>& slots);

} // namespace Zem::CollaborationSession

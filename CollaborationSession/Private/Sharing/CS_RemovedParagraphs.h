#pragma once

#include "Sharing/CS_FitIntoText.h"

#include "CE_OperationNodeAddress.h"

#include "Util_CallableRef.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Gives what is known of a dead slot, seen from another that is dead, too: see `DeadElement::_wasLive`.
using FindDeadSeenFrom = CallableRef<boost::optional<DeadElement>(unsigned long slot, unsigned long seenFrom)>;

/// The tags and marks of the removed paragraphs that `insertion` was typed into: what brings them back, so that it
/// comes in where it was typed, and what else stood there can come back around it. Null if there are none, or nothing
/// is known of them. `typings` has one for each nested insertion.
///
/// Only what was live together with the anchor counts: that is what the author saw.
/// Cost: a walk to each nested insertion. `findDead` is asked for dead slots between two live elements, and only where
/// no paragraph is open.
std::unique_ptr<TextRestoring> findRemovedParagraphs(const DOM::TextWithTombstones& text,
                                                     const TextInsertion& insertion, const std::vector<Typing>& typings,
                                                     FindDeadSeenFrom findDead);

/// Marks again what `restoring` brought back.
std::unique_ptr<TextMarking> makeMarkingOf(const TextRestoring& restoring);

} // namespace Zem::CollaborationSession

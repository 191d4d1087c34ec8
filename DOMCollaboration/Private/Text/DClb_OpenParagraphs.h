#pragma once

/// What the grammar of the plane lets through, and the tree can't hold: a paragraph that is still open where a block or
/// the end of the text follows.
///
///     {|a~#      an atomic block may stand behind an atomic run
///     {{}        the tag of an empty text run was dropped, and its neighbours aren't checked again
///
/// The tree shows the mark of such a paragraph all the same. Without a slot for it every slot behind would name the
/// element in front of its own; so what the grammar has let through is completed or refused here.

#include "Text/DClb_TextBusinessRules.h"

namespace Zem::DOMCollaboration::TextBusinessRules
{

/// Whether `elements`, put in at `startIndex`, would leave a paragraph open.
bool leavesParagraphOpen(const TextWithTombstonesElementVector& elements, IndexExcludingTombstones startIndex,
                         const TextSurroundings& surroundings);

/// Whether the removal of the plane range [begin, end) would leave a paragraph open.
bool leavesParagraphOpen(IndexExcludingTombstones rangeBegin, IndexExcludingTombstones rangeEnd,
                         const TextSurroundings& surroundings);

/// Adds the mark of each paragraph that `elements`, put in at `startIndex`, would leave open. Returns whether it added
/// any.
bool closeOpenParagraphs(TextWithTombstonesElementVector& elements, IndexExcludingTombstones startIndex,
                         const TextSurroundings& surroundings);

} // namespace Zem::DOMCollaboration::TextBusinessRules

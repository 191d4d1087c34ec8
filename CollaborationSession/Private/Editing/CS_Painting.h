#pragma once

/// Gives what stands in a stretch of a text another look. Everything is found from the tree and its tombstones, so that
/// no index of characters is needed: it runs wherever the document is.
///
/// Where the change holds already, there is no operation. So it can be run again, on what a text has become meanwhile.

#include "Editing/CS_LookChange.h"
#include "Editing/CS_TextCommands.h"

#include "CE_OperationNodeAddress.h"
#include "DOM_TextWithTombstones.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include <optional>
#include <vector>

namespace Zem::CollaborationSession
{

/// Elements [begin, end) of the plane, and what stands at the first. The end may lie behind that of the text.
struct PlaneStretch
{
    unsigned long _begin = 0;
    unsigned long _end = 0;
    DOMCollaboration::PlanePlace _first;
    /// Where it was meant to begin and end, both inside, dead elements included, if that is known.
    std::optional<unsigned long> _firstSlot;
    std::optional<unsigned long> _lastSlot;
};

/// Cost: one walk over the blocks, and the runs of one paragraph.
PlaneStretch findStretch(const DOM::TextWithTombstones& text, unsigned long begin, unsigned long end);

/// The live elements between two slots, both inside; either may be dead, and if all are, the stretch is empty. Cost: as
/// `findStretch`, and a logarithm.
PlaneStretch findStretchBetweenSlots(const DOM::TextWithTombstones& text, unsigned long firstSlot,
                                     unsigned long lastSlot);

/// Neighbouring things that looked alike before: characters, or paragraphs with their tags and marks. The slots of the
/// first and the last, both inside, are those behind the operations.
struct LookPiece
{
    unsigned long _firstSlot;
    unsigned long _lastSlot;
    /// Of the whole property.
    SharedConstPtr<CollaborationEngine::DataValue> _oldValue;
};

struct Painting
{
    /// At most one insertion, of new tags, and then the settings.
    Operations _operations;
    /// Ascending; only what changes is in them.
    std::vector<LookPiece> _pieces;
};

/// Makes all characters in a stretch look as `change` says. A run that lies only partly in it is parted by new tags,
/// which look like the run. A run without characters has no look that anybody could see, and is left alone.
///
/// Cost: what lies in the stretch, and a logarithm of the number of ranges of tombstones for each run that changes.
/// Fails: `InvalidEditError` for a property that runs haven't.
Painting paintRuns(const DOM::TextWithTombstones& text, const CollaborationEngine::OperationNodeAddress& address,
                   const PlaneStretch& stretch, const LookChange& change);

/// The same for all paragraphs of which the stretch has an element, or between whose tag and mark it lies if it is
/// empty. Properties of runs mean the style of the paragraph's mark. Cost: as `paintRuns`, and the paragraphs at both
/// ends whole. Fails: `InvalidEditError` for a property that paragraphs haven't.
Painting paintParagraphs(const DOM::TextWithTombstones& text, const CollaborationEngine::OperationNodeAddress& address,
                         const PlaneStretch& stretch, const LookChange& change);

/// Paints what lives of the slots from `firstSlot` to `lastSlot`. Where nothing does, nothing is painted, though the
/// place may lie in a paragraph: whether that is the one that was meant can't be told any more.
/// Cost: as `findStretchBetweenSlots` and the painting. Fails: as `paintRuns` and `paintParagraphs`.
Painting paintStretch(const DOM::TextWithTombstones& text, const CollaborationEngine::OperationNodeAddress& address,
                      unsigned long firstSlot, unsigned long lastSlot, LookTarget target, const LookChange& change);

} // namespace Zem::CollaborationSession

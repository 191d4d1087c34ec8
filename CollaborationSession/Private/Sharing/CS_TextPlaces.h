#pragma once

/// Places of a text one after the other, and what may stand beside what: what those who plan an operation on a text
/// ask of it.

#include "Editing/CS_TypedStyle.h"

#include "CE_ListMultirangeOperation.h"
#include "DClb_TextElement.h"
#include "DOM_Paragraph.h"
#include "DOM_TextWithTombstones.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_CallableRef.h"

#include <optional>

namespace Zem::CollaborationSession
{

/// What stands at the end of a stretch of text that is read from its beginning.
enum class TextState : unsigned char
{
    /// Between blocks.
    Closed,
    /// In a paragraph, in no text run: behind its tag, or behind an atomic run.
    Open,
    /// Behind a text run's tag, which needs a byte.
    Tag,
    /// Behind a byte.
    Run
};

/// The state behind an element that comes in `state`; nothing where it can't stand. The end of a text, `TextEnd`, can
/// stand where a block can. An atomic run leaves its paragraph open, whatever follows.
std::optional<TextState> step(TextState state, DOMCollaboration::PlaceKind kind);

/// The state behind an element of a text; behind `TextEnd`, which stands for its beginning, too.
TextState getStateBehind(DOMCollaboration::PlaceKind kind);

/// The kind of an element that travels.
DOMCollaboration::PlaceKind getKind(const DOMCollaboration::TextWithTombstonesElement& element);

bool areLooksEqual(const RunStylePtr& left, const RunStylePtr& right);

/// Finds places of a text. Those that ascend, or stand one in front of the last one, cost the runs and blocks between;
/// others a walk from the beginning. The text must not change meanwhile.
class TextPlaces
{
public:
    /// `text` is referred to.
    explicit TextPlaces(const DOM::TextWithTombstones& text)
        : _text(text)
    {
    }

    /// The place at a plane index. Fails: "place" beyond the end of the text.
    DOMCollaboration::PlanePlace find(unsigned long element);

    /// The place in front of a plane index; `TextEnd` in front of the first.
    DOMCollaboration::PlanePlace findBefore(unsigned long element);

    /// The place in front of one that stands at a plane index; `TextEnd` in front of the first. Cost: constant.
    DOMCollaboration::PlanePlace getPlaceBefore(const DOMCollaboration::PlanePlace& place, unsigned long element) const;

    /// How many elements, from the place on, are bytes of one run; 1 for any other place.
    unsigned long countBytesFrom(const DOMCollaboration::PlanePlace& place) const;

    /// Requires: the place stands in a paragraph.
    const DOM::Paragraph& getParagraph(const DOMCollaboration::PlanePlace& place) const;

    /// The run of a place; null if there is none.
    const DOM::Run* findRun(const DOMCollaboration::PlanePlace& place) const;

    /// Requires: the place stands in a run.
    const RunStylePtr& getLook(const DOMCollaboration::PlanePlace& place) const;

    /// Whether `behind`, a byte of another run, would look different behind `front`, which is in a text run.
    bool wouldChangeLook(const DOMCollaboration::PlanePlace& front, const DOMCollaboration::PlanePlace& behind) const;

    /// The slot of a live element; for the number of elements of the text that behind all its slots.
    unsigned long getSlot(unsigned long element) const;

    /// Calls `callable` with the ranges of slots of elements [begin, end), ascending; tombstones lie between them.
    void forEachRangeOfSlots(unsigned long begin, unsigned long end,
                             CallableRef<void(const CollaborationEngine::IndexRange<unsigned long>&)> callable) const;

    /// The plane index of a slot, if that is live.
    std::optional<unsigned long> getElement(unsigned long slot) const;

    /// The plane index at which an element at a slot stands or would stand.
    unsigned long getGap(unsigned long slot) const;

private:
    const DOM::TextWithTombstones& _text;
    unsigned long _element = 0;
    std::optional<DOMCollaboration::PlanePlace> _place;
};

} // namespace Zem::CollaborationSession

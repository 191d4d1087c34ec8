#pragma once

/// Texts as one line. `{` is a paragraph's tag and `}` its mark, `|` a text run's tag, other characters are the bytes
/// of the run, `~` is an atomic run (a tabulator), `#` an atomic block (a shape), `$` a section tag, `[...]` are dead
/// slots, and `<x>` names the slot that follows it.
///
///     "{|ab[cd]e}{}"      two paragraphs: "abe", between whose b and e two slots are dead, and an empty one
///     "{|ab[}{]|cd}"      the same text as "{|ab|cd}", with two dead slots inside
///
/// What a dead slot held isn't in the document, so that texts are compared, and printed, with a dot for each dead slot.

#include "DClb_TextElement.h"

#include "DOM_TextWithTombstones.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Zem::TestSupport
{

/// One slot of a text, as a naive model keeps it: its element while it is live.
struct ModelSlot
{
    DOMCollaboration::TextWithTombstonesElement _element;
    bool _isLive = true;
};

/// A text as a plain vector of slots.
using ModelText = std::vector<ModelSlot>;

/// A text read from the notation: its slots (dead ones with what the notation shows inside the brackets), and the slots
/// that are named.
struct NotatedText
{
    ModelText _slots;
    std::map<std::string, unsigned long> _positions;
};

/// Fails a test precondition (throws `std::invalid_argument`) on brackets that don't match.
NotatedText parseSlots(std::string_view notation);

/// The document form of the live slots. Throws `std::invalid_argument` when they break the grammar of texts.
DOM::TextWithTombstones makeText(const ModelText& slots);
DOM::TextWithTombstones makeText(std::string_view notation);

/// The elements of a stretch of text, all live.
DOMCollaboration::TextWithTombstonesElementVector makeElements(std::string_view notation);

/// The flat form of a text's live elements, in plane order; runs and blocks without what they hold, as in operations.
DOMCollaboration::TextWithTombstonesElementVector flatten(const DOM::TextWithTombstones& text);

/// One character for an element, as in the notation.
char printElement(const DOMCollaboration::TextWithTombstonesElement& element);
std::string print(const DOMCollaboration::TextWithTombstonesElementVector& elements);

/// A text in the notation, with a dot for each dead slot.
std::string print(const DOM::TextWithTombstones& text);
std::string print(const ModelText& slots);

/// The notation with a dot for each dead slot, and without names, as `print` would give it.
std::string normalize(std::string_view notation);

} // namespace Zem::TestSupport

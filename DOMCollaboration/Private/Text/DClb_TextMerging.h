#pragma once

/// Putting bytes and runs in behind a position. An insertion and the rest that a removal leaves share it.

#include "PlaneIndexUtils/DClb_TextPositions.h"

#include <string>

namespace Zem::DOMCollaboration
{

using TextPosition = GenericPosition<false, DOMWrappersTraits>;

/// Inserts bytes behind the tag of a text run or behind a byte. `mustBeAtEnd` requires that nothing follows in the run.
/// Fails: "Invalid element type" at any other position; "byteIndex == textRunString.getSize()".
void insertText(const TextPosition& position, const std::string& text, bool mustBeAtEnd);

/// Inserts runs behind a paragraph's tag or behind the run of the position. `mustBeAtEnd` requires that nothing follows
/// in the paragraph. Fails: "Invalid element type" at any other position; "runIndex == paraRuns.getSize()".
void insertRuns(const TextPosition& position, DOM::Runs runs, bool mustBeAtEnd);

} // namespace Zem::DOMCollaboration

#pragma once

#include "DOM_Document.h"
#include "DOM_TextWithTombstones.h"

#include "Util_Export.h"

#include <string>
#include <vector>

namespace Zem::DOM
{

/// What is wrong with a text and all that lies in it, one sentence each; empty for a sound one.
///
///     1. No block and no run is null.
///     2. The tables in it are sound, and so are the texts of cells and shapes, and the blocks of pivot tables' values.
///     3. The record of the tombstones is sound.
///     4. No tombstone stands behind more live slots than the text has, and all slots can be counted.
///
/// A text run may be without text: its tag stands alone. Styles need not be interned: those that an operation brought
/// are objects of their own.
///
/// Fails: as `TombstonesStorage::checkInvariants`, when the handler of failed assertions doesn't throw.
ZEM_EXPORT std::vector<std::string> checkInvariants(const TextWithTombstones& text);

/// The same for a document.
///
///     1. The main text, headers and footers are sound, and so are the blocks of comments and notes.
///     2. Each element of a container lies under its own UUID.
ZEM_EXPORT std::vector<std::string> checkInvariants(const Document& document);

} // namespace Zem::DOM

#pragma once

/// How deep texts lie in each other: a table has texts in its cells, a shape has one, and in each of them there can be
/// tables and shapes again. Whoever walks a document, copies it or writes it calls itself for each text, and a file
/// that is nested too deeply isn't read (Util_JsonText.h). So whoever puts blocks into a text first asks here.

#include "DOM_Block.h"

#include "Util_Export.h"

namespace Zem::DOM
{

/// So many texts may lie in each other, the outermost included, for an insertion to be allowed. A document in which so
/// many do can be written and read, and so can an operation that carries all of it.
constexpr unsigned long maximalTextNesting = 50;

/// How many texts lie in each other inside `block` at most; 0 for a block that has none. Texts of pivot tables count.
/// Cost: all cells and blocks inside. Requires: `block` is nested no deeper than JSON can be.
ZEM_EXPORT unsigned long getTextNesting(const Block& block);

} // namespace Zem::DOM

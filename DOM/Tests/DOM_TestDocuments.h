#pragma once

/// Documents that have something of every kind, for tests.

#include "DOM_Document.h"

#include <memory>
#include <string>

namespace Zem::DOM::Tests
{

/// A paragraph of one text run.
std::unique_ptr<Block> makeParagraph(const std::string& text);

/// A text with a block of every kind, a run of every kind, shared styles, and tombstones.
TextWithTombstones makeText(const SharedObjectFactory& factory);

/// A document with something in each of its parts.
Document makeDocument();

} // namespace Zem::DOM::Tests

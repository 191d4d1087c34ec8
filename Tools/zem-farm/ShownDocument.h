#pragma once

/// Texts of documents, and settings of looks, as the judge is told of them.

#include "Judge.h"

#include "DOM_TextWithTombstones.h"
#include "Editing/CS_LookChange.h"

namespace ZemFarm
{

/// Requires: the text has paragraphs of text alone, and one at least. Fails: `Misjudged` otherwise.
ShownText showText(const Zem::DOM::TextWithTombstones& text);

/// What a setting gives to the runs or paragraphs that it is for.
Fields showFields(const Zem::CollaborationSession::LookChange& change, bool isOfParagraphs);

/// The characters of a string, each by itself.
std::vector<std::string> splitCharacters(std::string_view text);

} // namespace ZemFarm

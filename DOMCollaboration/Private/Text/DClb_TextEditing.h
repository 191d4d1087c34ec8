#pragma once

/// Putting flat elements into the tree of a text, and taking them out. Both work on one range of the plane, through the
/// wrappers, which tell the observer; the slots are the business of `changeSlots`. Both require what the rules of
/// DClb_TextBusinessRules.h have let through.

#include "Text/DClb_InsertionData.h"
#include "Text/DClb_TextRanges.h"
#include "TextWrappers/DClb_BlockWrappers.h"

namespace Zem::DOMCollaboration
{

/// Puts the range's data, taken apart, in at the range's start index. What stands behind that index in its paragraph or
/// run moves behind the data where the data ends the one or the other.
/// Fails: "Invalid element type", "data.beginString.empty() && data.beginRuns.empty()",
/// "!lastParagraph.get().getRuns().empty()", "byteIndex == textRunString.getSize()", "runIndex == paraRuns.getSize()";
/// `std::bad_cast` where the last block of the data, or its last run, can't take what moves.
void insertElements(const GenericBlockCollectionWrapper<false>& blocks, RangeInfo& range, InsertionData data);

/// Takes the elements of the range out, and leaves them in its data, in plane order and without children, in the form
/// in which `insertElements` can put them back. What the range leaves of a paragraph or run joins what stands in front
/// of it. Fails: "beginIndex < endIndex", "Unexpected rich text end", "runsToMerge.empty()", "elementsToRemove <
/// charPos.byteIndex + 1 || charPos.byteIndex + 1 < runSize", "textToMerge.empty() && runsToMerge.empty()".
void extractElements(const GenericBlockCollectionWrapper<false>& blocks, RangeInfo& range);

} // namespace Zem::DOMCollaboration

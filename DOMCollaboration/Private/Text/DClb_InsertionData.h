#pragma once

#include "DClb_TextElement.h"

#include <string>

namespace Zem::DOMCollaboration
{

/// The elements of an insertion as parts of the tree: bytes for the run in front of it, runs for the paragraph in front
/// of it, and blocks. The parts are the document's own: it shares nothing with the elements.
struct InsertionData
{
    std::string beginString;
    DOM::Runs beginRuns;
    DOM::Blocks blocks;
};

/// Fails: "currentPara" for a run outside of a paragraph, "plainPtr" for a byte outside of a text run and for a missing
/// block or run; "paragraph.getRuns().empty()" and "textRun.getText().empty()" for elements that carry children;
/// `BadNumCastError` for an element that is no byte.
InsertionData takeApart(const TextWithTombstonesElementVector& elements);

} // namespace Zem::DOMCollaboration

#pragma once

#include "DOM_Run.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"

namespace Zem::CollaborationSession
{

using RunStylePtr = DOM::SharedStyleConstIPtr<DOM::RunStyle>;

/// The style of what is typed between a character of each run: that of `model`, but with the link and the comments that
/// both sides have, for these don't grow at their ends. A null run stands for no character.
RunStylePtr makeTypedStyle(const RunStylePtr& model, const DOM::Run* inFront, const DOM::Run* behind);

} // namespace Zem::CollaborationSession

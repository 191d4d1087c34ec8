#pragma once

/// How deep what is put into a text would lie (DOM_TextNesting.h).

#include "Text/DClb_TextContents.h"

#include "DOM_NativeNodeAddress.h"

namespace Zem::DOMCollaboration
{

/// Whether more texts than are allowed would lie in each other, if the text at `address` got what the operation
/// carries. Cost: all cells and blocks that it carries. Fails: "plainPtr" on missing data or blocks; `std::bad_cast` on
/// items that aren't text elements.
template<class Operation>
bool isNestedTooDeeply(const DOM::NativeNodeAddress& address,
                       const CollaborationEngine::ListMultirangeOperationImpl<Operation>& operation);

} // namespace Zem::DOMCollaboration

#pragma once

/// Who shares a document, and what they have selected.

#include "EditingState/DClb_DOMEditingState.h"

#include <map>

namespace Zem::CollaborationSession
{

/// The server gives a number to each client that joins, from 1 on. None is given twice.
using ClientID = unsigned long;

/// In the coordinates of operations. What callers count in characters, `TextEditor` converts.
using Selection = DOMCollaboration::DOMEditingStateWithTS;
using Selections = std::map<ClientID, Selection>;

} // namespace Zem::CollaborationSession

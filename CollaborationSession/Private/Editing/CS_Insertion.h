#pragma once

/// Which elements come when characters are typed, and where.

#include "Editing/CS_Deletion.h"

#include "CE_Operation.h"

#include <string_view>

namespace Zem::CollaborationSession
{

/// The insertion of `characters` in front of character `offset`, once `deletion`, which begins there, is done. Null
/// when there is nothing to insert. Requires: `offset` is inside the text, `characters` are UTF-8.
CollaborationEngine::OperationUPtr planInsertion(const CharacterIndex& index, const Deletion& deletion,
                                                 unsigned long offset, std::string_view characters);

} // namespace Zem::CollaborationSession

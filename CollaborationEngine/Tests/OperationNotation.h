#pragma once

#include "CE_Operation.h"

#include <string>

namespace Zem::CollaborationEngine::Testing
{

/// What an operation is and does, in one line.
std::string describe(const Operation& operation);

} // namespace Zem::CollaborationEngine::Testing

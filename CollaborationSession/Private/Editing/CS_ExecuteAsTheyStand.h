#pragma once

#include "CE_OperationExecutor.h"

#include <vector>

namespace Zem::CollaborationSession
{

/// Executes the operations of a command, one behind the other. Fails: `InvalidEditError` if the document makes
/// something else of one; what was executed is taken back then. Failures of the executor go on, and may leave a part.
void executeAsTheyStand(CollaborationEngine::OperationExecutor& executor,
                        std::vector<CollaborationEngine::OperationUPtr>& operations);

} // namespace Zem::CollaborationSession

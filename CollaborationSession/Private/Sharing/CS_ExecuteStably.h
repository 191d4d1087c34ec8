#pragma once

#include "CE_OperationExecutor.h"

namespace Zem::CollaborationSession
{

/// Executes an operation like `OperationExecutor::executeAndChangeIfNeeded`, but so that what happened is what happens
/// wherever it is executed in an equal document. The repair of a text's grammar looks at an element once only: where it
/// drops one, those that meet there may not fit, and a second repair would change the operation again. It is taken
/// back then, and the second one is what happens.
/// Fails: "isStable" if that doesn't come to an end. Cost: of an operation that is changed, three times its execution.
bool executeStably(CollaborationEngine::OperationExecutor& executor, CollaborationEngine::Operation& operation,
                   CollaborationEngine::OperationUPtr& changedOp);

} // namespace Zem::CollaborationSession

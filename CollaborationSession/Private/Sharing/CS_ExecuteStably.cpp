#include "Sharing/CS_ExecuteStably.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// Each repair leaves fewer places to repair; two have been enough for all that was seen.
constexpr int attemptsCount = 8;

} // namespace

bool executeStably(OperationExecutor& executor, Operation& operation, OperationUPtr& changedOp)
{
    if (!executor.executeAndChangeIfNeeded(operation, changedOp))
    {
        return false;
    }
    for (int attempt = 0; attempt < attemptsCount; ++attempt)
    {
        executor.reverse(*changedOp);
        OperationUPtr changedAgain;
        if (!executor.executeAndChangeIfNeeded(*changedOp, changedAgain))
        {
            return true;
        }
        changedOp = std::move(changedAgain);
    }
    ZEM_FAIL("isStable");
}

} // namespace Zem::CollaborationSession

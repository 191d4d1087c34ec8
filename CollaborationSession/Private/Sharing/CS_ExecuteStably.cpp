#include "Sharing/CS_ExecuteStably.h"

#include "Util_Assert.h"

#include <exception>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// Each repair leaves fewer places to repair; two have been enough for all that was seen.
constexpr int attemptsCount = 8;

void takeBack(OperationExecutor& executor, Operation& operation, CallableRef<void()> restoreDocument)
{
    try
    {
        executor.reverse(operation);
    }
    catch (const std::exception&)
    {
        restoreDocument();
    }
}

} // namespace

bool executeStably(OperationExecutor& executor, Operation& operation, OperationUPtr& changedOp,
                   CallableRef<void()> restoreDocument)
{
    if (!executor.executeAndChangeIfNeeded(operation, changedOp))
    {
        return false;
    }
    for (int attempt = 0; attempt < attemptsCount; ++attempt)
    {
        takeBack(executor, *changedOp, restoreDocument);
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

#include "Editing/CS_ExecuteAsTheyStand.h"

#include "Editing/CS_InvalidEditError.h"

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

void executeAsTheyStand(OperationExecutor& executor, std::vector<OperationUPtr>& operations)
{
    for (std::size_t index = 0; index < operations.size(); ++index)
    {
        OperationUPtr changedOp;
        if (!executor.executeAndChangeIfNeeded(*operations[index], changedOp))
        {
            continue;
        }
        executor.reverse(*changedOp);
        while (index-- > 0)
        {
            executor.reverse(*operations[index]);
        }
        throw InvalidEditError("The text doesn't take the edit");
    }
}

} // namespace Zem::CollaborationSession

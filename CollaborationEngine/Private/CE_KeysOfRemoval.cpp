#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

/// It keeps the value that the other one captured, where it did.
OperationUPtr includeKeyRemovalPastRemoval(const NodeOperand& first, const NodeOperand& second, TieResolveCondition)
{
    const auto& captured = getRemovedValue(second);
    return makeKeyLeaving(first, captured ? captured : getRemovedValue(first), 1);
}

} // namespace Zem::CollaborationEngine

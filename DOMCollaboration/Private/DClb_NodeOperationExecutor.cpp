#include "DClb_NodeOperationExecutor.h"

namespace Zem::DOMCollaboration
{

NodeOperationExecutor::~NodeOperationExecutor() = default;

void NodeOperationExecutor::requireOwnOperandType(const CollaborationEngine::HierarchicalOperation& operation) const
{
    ZEM_ASSERT_MESSAGE(operation.getOperandType() == getNodeType(),
                       "operation.getOperandType() == convertOperationNodeType(getNodeType())");
}

} // namespace Zem::DOMCollaboration

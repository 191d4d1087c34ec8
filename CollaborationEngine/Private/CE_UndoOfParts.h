#pragma once

#include "CE_BaseOperationTransformer.h"
#include "CE_OperationParts.h"

namespace Zem::CollaborationEngine
{

/// What undoes `parts`, which ran in their order: an operation for each of them, without id, the last part's first.
OperationParts undoParts(const OperationParts& parts, const BaseOperationTransformer& transformer);

} // namespace Zem::CollaborationEngine

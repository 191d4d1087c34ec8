#pragma once

#include "CS_Messages.h"

#include "CE_BaseClientEditingStateTransformer.h"

namespace Zem::CollaborationSession
{

/// Each moves all selections across an operation. One that leads nowhere, which only a stranger's can, is dropped: it
/// is nobody's concern but its owner's.
void includeInSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                         const CollaborationEngine::Operation& operation, Selections& selections);
void excludeFromSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                           const CollaborationEngine::Operation& operation, Selections& selections);

} // namespace Zem::CollaborationSession

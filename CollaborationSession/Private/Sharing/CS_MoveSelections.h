#pragma once

#include "Editing/CS_Action.h"

#include "CE_BaseClientEditingStateTransformer.h"

namespace Zem::CollaborationSession
{

/// Each moves all selections across an operation. One that leads nowhere, which only a stranger's can, is dropped: it
/// is nobody's concern but its owner's.
void includeInSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                         const CollaborationEngine::Operation& operation, Selections& selections);
void excludeFromSelections(CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                           const CollaborationEngine::Operation& operation, Selections& selections);

/// Positions that lie in an insertion that was taken back, and that the text now made something else of: they remember
/// the elements of `planned`, and now remember the same ones of `happened`. To be called before that is included.
void followChangedInsertion(const CollaborationEngine::Operation& planned,
                            const CollaborationEngine::Operation& happened, Selections& selections);

} // namespace Zem::CollaborationSession

#pragma once

#include "CS_Bridge.h"

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Makes the undo of an operation out of the history: looks for the operation, and brings what undoes it past all that
/// came later.
///
/// An operation that was shadowed where it first stands took effect, and captured data, only when a restoring brought
/// it along. It is undone from there.
class UndoSearch
{
public:
    UndoSearch(const CollaborationEngine::BaseOperationTransformer& transformer, CollaborationEngine::Operation::Id id)
        : _transformer(transformer)
        , _id(id)
    {
    }

    /// Goes on with what happened next. `isOwn` says whether it can be the operation, and not only bring it along.
    void pass(const CollaborationEngine::Operation& operation, bool isOwn);

    /// Null if the operation hasn't come by, or if its undo can't be brought past what came later.
    CollaborationEngine::OperationUPtr makeUndo() const;

private:
    using OperationPtrs = std::vector<std::shared_ptr<const CollaborationEngine::Operation>>;

    void splitAtPieces(const CollaborationEngine::Operation& operation,
                       std::vector<CollaborationEngine::OperationUPtr>& pieces, OperationPtrs& behind) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    CollaborationEngine::Operation::Id _id;
    CollaborationEngine::OperationUPtr _undone;
    OperationPtrs _later;
};

} // namespace Zem::CollaborationSession

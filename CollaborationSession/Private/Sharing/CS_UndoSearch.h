#pragma once

#include "Sharing/CS_Bridge.h"

#include <memory>
#include <set>
#include <vector>

namespace Zem::CollaborationSession
{

/// Makes the undo of an operation out of the history: looks for the operation, and brings what undoes it past all that
/// came later.
///
/// An operation that was shadowed where it first stands took effect, and captured data, only when a restoring brought
/// all of it along. It is undone from there.
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

    void beginAt(CollaborationEngine::OperationUPtr undone, OperationPtrs later);
    bool isDormant(const CollaborationEngine::Operation& operation) const;
    void splitAtPieces(const CollaborationEngine::Operation& operation,
                       std::vector<CollaborationEngine::OperationUPtr>& pieces, OperationPtrs& behind) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    CollaborationEngine::Operation::Id _id;
    CollaborationEngine::OperationUPtr _undone;
    /// The ids of all of it, if all of it was shadowed; none otherwise.
    std::set<CollaborationEngine::Operation::Id> _dormantIDs;
    OperationPtrs _later;
};

} // namespace Zem::CollaborationSession

#pragma once

#include "Sharing/CS_Bridge.h"

#include <memory>
#include <set>
#include <vector>

namespace Zem::CollaborationSession
{

/// Makes the undo of an operation, brought past all that came later.
///
/// An operation that was shadowed where it first stands took effect, and captured data, only when a restoring brought
/// all of it along. It is undone from there.
class UndoSearch
{
public:
    using OperationPtr = std::shared_ptr<const CollaborationEngine::Operation>;

    UndoSearch(const CollaborationEngine::BaseOperationTransformer& transformer, OperationPtr undone);

    /// Goes on with what happened next.
    void pass(OperationPtr operation);

    /// Empty if it can't be brought past what came later.
    OperationPtr makeUndo() const;

private:
    using OperationPtrs = std::vector<OperationPtr>;

    void beginAt(OperationPtr undone, OperationPtrs later);
    bool isDormant(const CollaborationEngine::Operation& operation) const;
    void splitAtPieces(const CollaborationEngine::Operation& operation,
                       std::vector<CollaborationEngine::OperationUPtr>& pieces, OperationPtrs& behind) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    OperationPtr _undone;
    /// The ids of all of it, if all of it was shadowed; none otherwise.
    std::set<CollaborationEngine::Operation::Id> _dormantIDs;
    OperationPtrs _later;
};

} // namespace Zem::CollaborationSession

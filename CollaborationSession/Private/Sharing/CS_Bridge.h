#pragma once

#include "Sharing/CS_ChangedInsertion.h"
#include "Sharing/CS_ComposedTyping.h"
#include "Sharing/CS_Messages.h"

#include "CE_BaseClientEditingStateTransformer.h"
#include "CE_BaseOperationTransformer.h"

#include <memory>
#include <variant>
#include <vector>

namespace Zem::CollaborationSession
{

/// Operations that ran beside those of somebody else. Each of the latter crosses the bridge in turn: it is brought past
/// all that stands on it, and all of that is brought past it, so that the bridge always begins where the next operation
/// begins.
///
///        b1   b2   b3            the bridge, what happened meanwhile
///      o----o----o----o
///   a1 |    |    |    | a1'      cross(a1) gives a1'; the bridge is then the lower line
///      o----o----o----o
///   a2 |    |    |    | a2'
///      o----o----o----o
///
/// Where the document made something else of a1', the way from a1' to that is appended. Keystrokes that are appended
/// one behind the other stand here as two operations.
class Bridge
{
public:
    explicit Bridge(const CollaborationEngine::BaseOperationTransformer& transformer)
        : _transformer(transformer)
    {
    }

    void append(std::shared_ptr<const CollaborationEngine::Operation> operation);

    /// Appends the way from `planned`, the last that crossed, to what became of it. `original` is what `planned` was
    /// before it crossed. Elements that both insert keep their identity, and of a marking that happened in part only
    /// the rest is taken back. Where nothing better is known, `original` is refused and `happened` is done.
    void appendChange(const CollaborationEngine::Operation& original, const CollaborationEngine::Operation& planned,
                      const CollaborationEngine::Operation& happened);

    /// Takes back `original`, the last that crossed: it didn't happen, and the bridge stands where it stood before.
    void refuse(const CollaborationEngine::Operation& original);

    /// `operation` past all that stands here, of which others' operations go first in a tie. If a transformation fails,
    /// the bridge is as it was. Cost: two transformations for each operation that stands here.
    CollaborationEngine::OperationUPtr cross(const CollaborationEngine::Operation& operation);

    /// Moves selections along the bridge.
    void follow(CollaborationEngine::BaseClientEditingStateTransformer& transformer, Selections& selections);

private:
    using OperationPtr = std::shared_ptr<const CollaborationEngine::Operation>;

    /// What became of an operation of the author whose operations cross. The later ones were made behind it, and so
    /// they go first in a tie: what sets a property again is what counts.
    struct OwnChange
    {
        OperationPtr _operation;
    };

    using Passed = std::variant<OperationPtr, OwnChange, ChangedInsertion>;

    void closeTyping();
    bool appendChangeOnNode(const CollaborationEngine::Operation& planned,
                            const CollaborationEngine::Operation& happened);
    bool appendPartialMarking(const CollaborationEngine::Operation& original,
                              const CollaborationEngine::Operation& planned,
                              const CollaborationEngine::Operation& happened);
    CollaborationEngine::OperationUPtr crossOperation(const CollaborationEngine::Operation& operation,
                                                      const OperationPtr& other,
                                                      CollaborationEngine::TieResolveCondition tieResolveCondition,
                                                      OperationPtr& otherBehind) const;
    CollaborationEngine::OperationUPtr crossOne(const CollaborationEngine::Operation& operation, Passed passed,
                                                std::vector<Passed>& passedBehind) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    std::vector<Passed> _passed;
    /// What `_passed` was before the last operation crossed.
    std::vector<Passed> _passedBefore;
    /// What stands behind `_passed`.
    ComposedTyping _typing;
};

} // namespace Zem::CollaborationSession

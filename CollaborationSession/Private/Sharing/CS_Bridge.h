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
    using OperationPtr = std::shared_ptr<const CollaborationEngine::Operation>;

    /// A step of the way. The tie is that of what crosses: it gives way to others, and goes before what became of the
    /// same author's earlier operations, which it was made behind.
    struct Step
    {
        std::variant<OperationPtr, ChangedInsertion> _change;
        CollaborationEngine::TieResolveCondition _tie = CollaborationEngine::TieResolveCondition::SecondWins;
    };

    using Steps = std::vector<Step>;

public:
    /// Of two values for one thing, which the operations that cross bring.
    enum class Values
    {
        /// The later value stands: that of what crosses.
        LaterStands,
        /// What crosses is an undo, which changes only what nobody else has set since.
        Yields
    };

    explicit Bridge(const CollaborationEngine::BaseOperationTransformer& transformer)
        : _transformer(transformer)
    {
    }

    /// What somebody else did, behind all that stands here.
    void append(const Action& action);
    void append(std::shared_ptr<const CollaborationEngine::Operation> operation);

    /// What came of the author's last action beside what was planned. What the author did later goes first in a tie:
    /// who sets a property again means that.
    void appendOwn(std::shared_ptr<const CollaborationEngine::Operation> operation);

    /// Appends the way from `planned`, the last that crossed, to what became of it. `original` is what `planned` was
    /// before it crossed. Elements that both insert keep their identity, and of a marking that happened in part only
    /// the rest is taken back. Where nothing better is known, `original` is refused and `happened` is done.
    void appendChange(const CollaborationEngine::Operation& original, const CollaborationEngine::Operation& planned,
                      const CollaborationEngine::Operation& happened);

    /// Takes back `original`, the last that crossed: it didn't happen, and the bridge stands where it stood before.
    void refuse(const CollaborationEngine::Operation& original);

    /// `original` doesn't cross, but what was made behind it does. Fails: as `makeReversal`; the bridge is as it was.
    void leaveOut(const CollaborationEngine::Operation& original);

    /// `operation` past all that stands here, of which others' operations go first in a tie. If a transformation fails,
    /// the bridge is as it was. Cost: two transformations for each operation that stands here.
    CollaborationEngine::OperationUPtr cross(const CollaborationEngine::Operation& operation,
                                             Values values = Values::LaterStands);

    /// Whether something stands here, so that what crosses may become another.
    bool isClear() const
    {
        return _passed.empty() && _typing.isEmpty();
    }

    /// What something has to cross. Typing stands for two steps at most.
    std::size_t getStepsCount() const
    {
        return _passed.size() + (_typing.isEmpty() ? 0 : 2);
    }

    /// What stands here, to return to when an action is to be left out as a whole.
    class Mark
    {
        friend Bridge;

        Steps _passed;
        std::vector<LookSetting> _looks;
        std::vector<Stretch> _typedApart;
    };

    Mark getMark();
    void returnTo(Mark mark);

    /// Moves selections along the bridge.
    void follow(CollaborationEngine::BaseClientEditingStateTransformer& transformer, Selections& selections);

    /// Moves a stretch along the bridge. False if it is gone.
    bool follow(Stretch& stretch);

    /// The same along the bridge as it was before the last operation crossed.
    bool followBefore(Stretch& stretch) const;

    /// What others have painted, in the state behind the bridge.
    const std::vector<LookSetting>& getLooks() const
    {
        return _looks;
    }

    /// Where others typed apart from what they typed behind (`Meaning::_typedApart`), in that state.
    const std::vector<Stretch>& getTypedApart() const
    {
        return _typedApart;
    }

    /// Says that the author has painted `looks`, behind the bridge: they stand, whatever others painted there.
    void overrideLooks(const std::vector<LookSetting>& looks);

    /// Says that `operation` was executed behind the bridge.
    void moveMeaning(const CollaborationEngine::Operation& operation);

private:
    static Step makeOwnStep(CollaborationEngine::OperationUPtr operation);
    static void follow(const Steps& steps, CollaborationEngine::BaseClientEditingStateTransformer& transformer,
                       Selections& selections);
    static bool follow(const Steps& steps, Stretch& stretch);
    void closeTyping();
    void appendChangeAmongOthers(const CollaborationEngine::Operation& original,
                                 const CollaborationEngine::Operation& planned,
                                 const std::vector<CollaborationEngine::OperationUPtr>& parts);
    bool appendChangeOnNode(const CollaborationEngine::Operation& planned,
                            const CollaborationEngine::Operation& happened);
    bool appendPartialMarking(const CollaborationEngine::Operation& original,
                              const CollaborationEngine::Operation& planned,
                              const CollaborationEngine::Operation& happened);
    CollaborationEngine::OperationUPtr crossStep(const CollaborationEngine::Operation& operation, Step step,
                                                 Values values, Steps& behind) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    Steps _passed;
    /// What `_passed` was before the last operation crossed.
    Steps _passedBefore;
    /// What stands behind `_passed`.
    ComposedTyping _typing;
    std::vector<LookSetting> _looks;
    std::vector<Stretch> _typedApart;
};

} // namespace Zem::CollaborationSession

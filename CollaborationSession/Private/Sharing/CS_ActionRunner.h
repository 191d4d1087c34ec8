#pragma once

#include "Sharing/CS_Admission.h"
#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_FitIntoText.h"
#include "Sharing/CS_Replica.h"
#include "Sharing/CS_Statistics.h"

#include "Util_CallableRef.h"

#include <span>
#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

/// Carries actions out on a replica, each brought past what stands on a bridge. The server and the clients use it
/// alike, so that a user sees what will be.
///
/// An operation that met others' is fitted into the text as it stands: see CS_FitIntoText.h. What was painted is
/// painted again, on whatever runs and paragraphs the stretch has by now. Where the bridge is clear nothing of that is
/// asked for.
class ActionRunner
{
public:
    using OperationPtr = std::shared_ptr<const CollaborationEngine::Operation>;

    /// Whose document it is.
    class Host
    {
    public:
        virtual ~Host() = default;

        /// `happened` was executed, in place of `planned`.
        virtual void onCarriedOut(const CollaborationEngine::Operation& planned,
                                  const CollaborationEngine::Operation& happened) = 0;

        /// What was carried out is taken back, the last first.
        virtual void onTakenBack(const CollaborationEngine::Operation& happened) = 0;

        /// An operation failed, and may have changed a part. Makes the document again as it was before the action,
        /// behind `done`, what has happened of that.
        virtual void restore(std::span<const OperationPtr> done) = 0;

        /// Whether another operation is tried, which is to be brought past so many ranges. If not, none that follows
        /// is either.
        virtual bool mayTry(unsigned long)
        {
            return true;
        }

        /// Passes what happened before the action, from the newest to the oldest that is known, until `pass` is false.
        virtual void forEachBefore(CallableRef<bool(const CollaborationEngine::Operation&)> pass) const = 0;
    };

    struct Outcome
    {
        /// What really happened; an `EmptyOperation` if nothing did.
        Action _happened;
        boost::optional<Refusal> _refusal;
        /// What others had painted before, in the state behind it; empty if the action paints nothing.
        std::vector<LookSetting> _looksOfOthers;
    };

    ActionRunner(Replica& replica, Bridge& bridge, Statistics& statistics, Host& host);

    /// Runs `action`, made in the state in which the bridge begins; the bridge then begins behind it. What can't happen
    /// is left out; of an action that is all or nothing all is.
    /// Cost: that of `Bridge::cross` and of the execution of its operations, and of the walk to each place that met.
    ///
    /// What an executor or an observer throws is a failure of the operation that is carried out; of one that failed
    /// nothing happens. Fails: as the host, and if the bridge can't follow what became of an operation; `giveUp` is to
    /// be called then.
    Outcome run(const Action& action);

    /// Takes back what was carried out of an action of which `run` has failed.
    void giveUp();

    /// Lets the next action be fitted into the document as it stands even if the bridge is clear. An undo is made out
    /// of what is remembered, and not for the text as it is.
    void fitAlways()
    {
        _hasMet = true;
    }

private:
    using Operation = CollaborationEngine::Operation;
    using OperationUPtr = CollaborationEngine::OperationUPtr;

    void runParts(const Operation& operation);
    void runPart(const Operation& part);
    OperationUPtr place(const Operation& part);
    bool isPainted(const Operation& planned) const;
    void carryOut(const Operation& part, OperationUPtr planned);
    void carryOutFitted(const Operation& planned, const Operation& part);
    OperationUPtr fit(const Operation& planned) const;
    bool carryOutTyping(const Operation& planned, const Operation& part);
    void rememberTypedApart(std::size_t doneBefore, const std::vector<Typing>& typings);
    boost::optional<std::vector<Typing>> findTypings(const TextInsertion& planned, const TextInsertion& original) const;
    bool carryOutRestoring(const Operation& planned);
    void bringBack(const DOM::TextWithTombstones& text, const TextRestoring& single);
    FittedRestoring fitBack(const DOM::TextWithTombstones& text, const TextRestoring& restoring) const;
    OperationUPtr pass(OperationUPtr operation, std::size_t doneBefore) const;
    boost::optional<DeadElement> findDead(const CollaborationEngine::OperationNodeAddress& text, unsigned long slot,
                                          unsigned long seenFrom) const;
    void execute(OperationUPtr planned);
    OperationUPtr joinDone(std::size_t begin) const;
    void forget(std::size_t doneCount);
    void restore(std::size_t doneCount);
    std::vector<LookSetting> paintAll();
    void paintLooksOfOthers();
    std::vector<LookSetting> paintMeaning();
    std::vector<LookSetting> paint(std::vector<LookSetting> looks);
    bool changesStructureOf(const CollaborationEngine::OperationNodeAddress& text) const;
    void refuse(RefusalReason reason, const std::string& sentence);
    OperationPtr makeOperation(const Action& action) const;
    Outcome makeOutcome(const Action& action, std::vector<LookSetting> painted);

    Replica& _replica;
    Bridge& _bridge;
    Statistics& _statistics;
    Host& _host;
    /// Leaves out what doesn't fit the document as it stands.
    AdmittingExecutor _executor;
    const Meaning* _meaning = nullptr;
    /// Whether operations of others have come in since the action was made.
    bool _hasMet = false;
    std::vector<OperationPtr> _done;
    /// Where what was done stands apart from what it was typed behind: `Meaning::_typedApart`, behind that.
    std::vector<Stretch> _typedApart;
    std::vector<LookSetting> _looksOfOthers;
    boost::optional<Refusal> _refusal;
};

} // namespace Zem::CollaborationSession

#pragma once

/// The client of a shared document. Its own operations run at once and are pending until the server has them in its
/// history. When the history grows, the client takes its pending operations back, executes what really happened, brings
/// the pending ones past that, and executes them again; what can't touch them runs beside them. So every replica
/// executes one history, and is equal to every other as soon as nothing is pending.
///
/// While a batch is under way the client sends no other; what is typed meanwhile goes with the next.

#include "Editing/CS_EditedDocument.h"
#include "Sharing/CS_Messages.h"
#include "Sharing/CS_Replica.h"
#include "Sharing/CS_Statistics.h"

#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

#include <boost/optional.hpp>

#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace Zem::CollaborationSession
{

class ActionRunner;
class ChangedNodes;
class Checkpoint;
class UndoLog;

/// A message or a snapshot that no server can have sent.
class ZEM_EXPORT InvalidMessageError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

/// A client's own count of what its user did, from 1 on.
using ActionID = unsigned long;

/// Actions of a user that became one: keystrokes that go out together, or a single action.
struct ActionRange
{
    ActionID _first = 0;
    ActionID _last = 0;
};

/// Sensible for a client with a screen; each may be chosen anew.
struct ClientSettings
{
    /// How many entries of the history come in before the client takes a new copy of the document, to which it returns
    /// when an operation fails.
    Revision _checkpointInterval = 4096;
    /// How many own actions can be undone, however much others did since.
    std::size_t _undoCount = 1000;
    /// How many entries are kept for the undo, at least: what undoes older ones is kept up to date instead.
    std::size_t _undoEntriesCount = 1U << 16;
    /// How many refusals wait for `takeRefusals`; beyond that the oldest are forgotten.
    std::size_t _refusalsCount = 1000;
};

/// It is used by one thread at a time. The process needs an assertion handler that throws (`throwAssertionFailure`).
class ZEM_EXPORT Client final : public EditedDocument
{
public:
    /// An own action of which less happened than was meant.
    struct RefusedAction
    {
        ActionID _action = 0;
        Refusal _refusal;
    };

    /// Joins with what the server gave. The snapshot's document is copied.
    /// Fails: `InvalidMessageError` for a snapshot without a document, or with an empty entry;
    /// `NoThrowingHandlerError` in a process whose failed assertions don't throw.
    Client(ClientID id, const Snapshot& snapshot, ClientSettings settings = {});
    ~Client() override;

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    ClientID getID() const override
    {
        return _id;
    }

    const DOM::Document& getDocument() const
    {
        return _replica.getDocument();
    }

    const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& getAdapter() const override
    {
        return _replica.getAdapter();
    }

    /// Tells of every change of the document, but for a replacement of the whole (`setOnDocumentReplaced`).
    ObserverFanOut& getNotifications() override
    {
        return _replica.getNotifications();
    }

    const CollaborationEngine::BaseOperationTransformer& getTransformer() const
    {
        return _replica.getTransformer();
    }

    /// Executes operations of the user's own, each of them an action: it becomes pending, with an id. One that fails
    /// leaves the document as it was, and the exception goes on; so does what an observer throws, which is a failure
    /// here. A reverse takes back the last pending operation while nothing was sent or has come in since: fails with
    /// "isLastUnsent" otherwise.
    CollaborationEngine::OperationExecutor& getExecutor();

    /// Carries out one action of the user: `operations`, one behind the other, which are left as they were executed. It
    /// becomes pending, unless there is no operation. Fails: `InvalidEditError` if the document doesn't take an
    /// operation as it stands, and as the executor; all is as it was then.
    void perform(Operations& operations, std::shared_ptr<const Meaning> meaning) override;

    /// Fails: "isLastUnsent" unless `operations` are the last action, and nothing was sent or has come in since.
    void takeBack(Operations& operations) override;

    /// The id of the last own action; 0 if there was none.
    ActionID getLastAction() const
    {
        return _lastAction;
    }

    /// Undoes the last own action that is not undone, or the one that is named; keystrokes that went out as one are
    /// undone as one. What others did stands, and what others changed since stays as they have it. The undo is an own
    /// action, too, and to redo is to undo that. False if there is nothing to undo: the action isn't among the last
    /// (`ClientSettings`), was refused, or is undone already.
    /// Cost: a transformation for each later operation, keystrokes in a row counting as two.
    bool undo();
    bool undo(ActionID action);

    /// Undoes the last undo, unless something else was done since.
    bool redo();

    /// Called when the document was replaced by an equal one, or one without an operation that failed: whoever keeps
    /// something about it looks again. No notification tells of the way from the one to the other. It must neither
    /// throw nor call what changes the client. Editors of the client follow by themselves.
    void setOnDocumentReplaced(std::function<void()> onDocumentReplaced)
    {
        _onDocumentReplaced = std::move(onDocumentReplaced);
    }

    void addReplacementObserver(const std::shared_ptr<ReplacementObserver>& observer) override;

    /// Whether neighbouring keystrokes go to the server, and into the history, as one action; they do unless this is
    /// called. Whoever needs every keystroke in the history turns it off.
    void setComposesTyping(bool composesTyping)
    {
        _composesTyping = composesTyping;
    }

    /// Whether the pending operations are taken back whatever comes in. Unless this is called, an operation that
    /// certainly commutes with all of them, because it keeps to another node, is executed where it finds them. The
    /// documents are equal either way.
    void setAlwaysTakesBack(bool alwaysTakesBack)
    {
        _alwaysTakesBack = alwaysTakesBack;
    }

    /// How many entries of the history the client has.
    Revision getRevision() const
    {
        return _revision;
    }

    /// How many entries of the history are kept: never more than twice the checkpoint interval behind a `receive`.
    std::size_t getKeptEntriesCount() const;

    /// How many own actions aren't in the history yet.
    std::size_t getPendingCount() const
    {
        return _pending.size();
    }

    /// Whether there is nothing to send and nothing to wait for.
    bool isQuiet() const
    {
        return _pending.empty() && !_isSelectionNew;
    }

    /// These, the oldest first. Those of which nothing is left, and which needn't be sent any more, aren't among them.
    std::vector<ActionRange> getPendingActions() const;

    /// Which own action another one undoes; 0 if it is no undo, or isn't known any more.
    ActionID getUndone(ActionID action) const;

    /// What is to be sent now, if anything: all pending actions and the selection, unless a batch is under way; or
    /// an empty batch now and then, by which the server knows what it needn't keep.
    boost::optional<ClientBatch> takeBatch();

    /// Takes in what the server told, in its order. What this costs is paid once for all messages of a call. A message
    /// that came before is passed over.
    /// Fails: `InvalidMessageError` for a message with an empty entry, in which case nothing has happened, and for one
    /// behind a gap. For what the server of this document can't have told next: "isUnderWay" for an own action that
    /// wasn't sent, "isAsItHappened" or the failure of an executor for an entry that doesn't fit. All is then as it was
    /// before that message or, once pending operations were taken back, before the first message for which they were:
    /// the document, the pending actions, selections and refusals. `getRevision` tells how far that is.
    /// An observer that throws stops nothing and gets nothing refused: all messages are taken in, all observers are
    /// told, and then the first exception goes on to the caller, unless the call fails by itself. The executor's signal
    /// is raised once, behind all messages, if any of them was executed. Neither may call what changes the client
    /// ("isAlone").
    void receive(std::span<const ServerMessage> messages);

    /// The connection broke, and a new one is there: after the server's `reconnect` with `getRevision()` and its
    /// messages, the batch that was under way is sent again by `takeBatch`, unless it came back meanwhile.
    void resume();

    /// Whether the server has told that it doesn't keep any more what this client lacks.
    bool isTooFarBehind() const
    {
        return _isTooFarBehind;
    }

    /// The own selection, in the coordinates of the document as it stands, pending operations included.
    void setSelection(Selection selection) override;
    const Selection* findOwnSelection() const;
    const Selection* findSelection(ClientID owner) const override;

    /// Those of the others, in the coordinates of the document as it stands.
    const Selections& getSelections() const override
    {
        return _selections;
    }

    /// What less happened of than was meant, since the last call.
    std::vector<RefusedAction> takeRefusals();

    const Statistics& getStatistics() const
    {
        return _statistics;
    }

private:
    class LocalExecutor;
    class Rebase;
    class Receipt;
    class RunnerHost;

    /// An own action that isn't in the history yet, as it was executed here. Composed keystrokes have several ids.
    struct Pending
    {
        CollaborationEngine::OperationUPtr _operation;
        std::shared_ptr<const Meaning> _meaning;
        ActionID _firstID = 0;
        ActionID _lastID = 0;
        /// For its undo, if it gave something another look.
        std::vector<LookSetting> _formerLooks;
    };

    /// An own action that may be undone.
    struct OwnAction
    {
        ActionID _firstID = 0;
        ActionID _lastID = 0;
        /// What it undoes, or 0.
        ActionID _undoes = 0;
        /// What undid it, or 0.
        ActionID _undoneBy = 0;
    };

    using OwnActions = std::deque<OwnAction>;

    bool executeOwn(CollaborationEngine::Operation& operation, CollaborationEngine::OperationUPtr& changedOp);
    void reverseOwn(const CollaborationEngine::Operation& operation);
    void takeBackLast();
    void addPending(CollaborationEngine::OperationUPtr happened, std::shared_ptr<const Meaning> meaning,
                    ActionID undoes = 0);
    static std::shared_ptr<const Meaning> joinTypings(std::shared_ptr<const Meaning> burst, const Pending& next);
    void composeTyping();
    void joinOwnActions();
    void forgetOldActions();
    const ChangedNodes& getPendingNodes();
    void append(const HistoryEntryPtr& entry);
    void acknowledge(Pending pending, const HistoryEntryPtr& entry);
    void dropRefused();
    std::vector<Action> getPendingFrom(std::size_t index) const;
    boost::optional<Action> makeUndo(ActionID action) const;
    OwnActions::iterator findPlace(ActionID action);
    OwnActions::const_iterator findPlace(ActionID action) const;
    OwnAction* findOwnAction(ActionID action);
    const OwnAction* findOwnAction(ActionID action) const;
    OwnAction& getLastOfChain(OwnAction& action);
    bool isEffective(const OwnAction& action);
    bool undo(OwnAction& undone);
    void refuse(const Pending& pending, const Refusal& refusal);
    void forgetAction(ActionID action);
    void restoreDocument(std::span<const std::shared_ptr<const CollaborationEngine::Operation>> behindPending = {});
    void tellReplacement();
    void takeCheckpointIfDue();
    void includeInAll(const CollaborationEngine::Operation& operation);
    void excludeFromAll(const CollaborationEngine::Operation& operation);

    ClientID _id;
    ClientSettings _settings;
    Replica _replica;
    DOMCollaboration::DOMEditingStateTransformer _selectionTransformer;
    std::unique_ptr<LocalExecutor> _executor;
    Revision _revision;
    /// The newest revision that the server knows this client to have.
    Revision _toldRevision;
    /// The oldest first; those that are under way stand in front. One of these of which nothing is left is empty: its
    /// place is kept for what the server says.
    std::deque<Pending> _pending;
    /// The nodes of these, and maybe more; null until somebody asks for them.
    std::unique_ptr<ChangedNodes> _pendingNodes;
    std::size_t _underWayCount = 0;
    /// What is under way went out on a connection that broke, and is sent again.
    bool _isToBeSentAgain = false;
    bool _isTooFarBehind = false;
    /// The number of the last action that was sent.
    unsigned long _lastNumber = 0;
    ActionID _lastAction = 0;
    CollaborationEngine::Operation::Id _nextOperationID;
    std::unique_ptr<Checkpoint> _checkpoint;
    std::unique_ptr<UndoLog> _undoLog;
    /// In ascending order of their ids.
    OwnActions _ownActions;
    std::function<void()> _onDocumentReplaced;
    std::vector<std::weak_ptr<ReplacementObserver>> _replacementObservers;
    Selections _selections;
    /// Empty, or the own one.
    Selections _ownSelection;
    bool _isSelectionNew = false;
    bool _composesTyping = true;
    bool _alwaysTakesBack = false;
    std::deque<RefusedAction> _refusals;
    Statistics _statistics;
};

} // namespace Zem::CollaborationSession

#pragma once

/// The client of a shared document. Its own operations run at once and are pending until the server has them in its
/// history. When the history grows, the client takes its pending operations back, executes what really happened, brings
/// the pending ones past that, and executes them again; what can't touch them runs beside them. So every replica
/// executes one history, and is equal to every other as soon as nothing is pending.
///
/// While a batch is under way the client sends no other; what is typed meanwhile goes with the next.

#include "Sharing/CS_Messages.h"
#include "Sharing/CS_Replica.h"
#include "Sharing/CS_Statistics.h"

#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

#include <boost/optional.hpp>

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <vector>

namespace Zem::CollaborationSession
{

class ChangedNodes;
class Checkpoint;

/// A message or a snapshot that no server can have sent.
class ZEM_EXPORT InvalidMessageError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

/// It is used by one thread at a time. The process needs an assertion handler that throws (`throwAssertionFailure`).
class ZEM_EXPORT Client
{
public:
    /// An own operation that isn't to be, under the id that it was given when it was executed. Of composed keystrokes
    /// it is the id of the first insertion, or of the first deletion.
    struct Refusal
    {
        CollaborationEngine::Operation::Id _operationID;
        std::string _reason;
    };

    /// How many entries of the history come in before the client takes a new copy of the document, to which it returns
    /// when an operation fails.
    static constexpr Revision defaultCheckpointInterval = 4096;

    /// Joins with what the server gave. The snapshot's document is copied.
    /// Fails: `InvalidMessageError` for a snapshot without a document, or with an empty entry.
    Client(ClientID id, const Snapshot& snapshot, Revision checkpointInterval = defaultCheckpointInterval);
    ~Client();

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    ClientID getID() const
    {
        return _id;
    }

    const DOM::Document& getDocument() const
    {
        return _replica.getDocument();
    }

    const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& getAdapter() const
    {
        return _replica.getAdapter();
    }

    /// Tells of every change of the document, but for a replacement of the whole (`setOnDocumentReplaced`).
    ObserverFanOut& getNotifications()
    {
        return _replica.getNotifications();
    }

    const CollaborationEngine::BaseOperationTransformer& getTransformer() const
    {
        return _replica.getTransformer();
    }

    /// Executes the user's own operations: each becomes pending, with an id. One that fails leaves the document as it
    /// was, and the exception goes on; so does what an observer throws, which is a failure here. A reverse takes back
    /// the last pending operation while nothing was sent or has come in since: fails with "isLastUnsent" otherwise.
    /// What can't be taken back exactly, or because an observer throws, is left out of a new copy of the document.
    CollaborationEngine::OperationExecutor& getExecutor();

    /// An operation that undoes an own one, brought past all that came later, own and others': to be executed next, as
    /// any own operation. What others did stands. Null if the client doesn't know the operation: it is too old (not
    /// among the last thousands), was refused, or went into another one of composed keystrokes; or if its undo can't be
    /// brought past what came later, as with a section's properties that were set again. Null also if an undo of
    /// it was made before, and not refused: a deletion that is taken back twice would take back someone else's of the
    /// same text. To redo is to undo the undo.
    /// Cost: a transformation for each later operation, keystrokes in a row counting as two.
    CollaborationEngine::OperationUPtr makeUndo(CollaborationEngine::Operation::Id operationID);

    /// Called when the document was replaced by an equal one, or one without an operation that failed: whoever keeps
    /// something about it looks again. No notification tells of the way from the one to the other. It must neither
    /// throw nor call what changes the client.
    void setOnDocumentReplaced(std::function<void()> onDocumentReplaced)
    {
        _replica.setOnDocumentReplaced(std::move(onDocumentReplaced));
    }

    /// Whether neighbouring keystrokes go to the server, and into the history, as one operation; they do unless this is
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

    /// How many operations of the history the client has.
    Revision getRevision() const
    {
        return _revision;
    }

    /// How many entries of the history are kept: never more than twice the checkpoint interval behind a `receive`.
    std::size_t getKeptEntriesCount() const;

    /// How many own operations aren't in the history yet.
    std::size_t getPendingCount() const
    {
        return _pending.size();
    }

    /// Whether there is nothing to send and nothing to wait for.
    bool isQuiet() const
    {
        return _pending.empty() && !_isSelectionNew;
    }

    /// What is to be sent now, if anything: all pending operations and the selection, unless a batch is under way; or
    /// an empty batch now and then, by which the server knows what it needn't keep.
    boost::optional<ClientBatch> takeBatch();

    /// Takes in what the server told, in its order. What this costs is paid once for all messages of a call.
    /// Fails: `InvalidMessageError` for a message with an empty entry; nothing has happened then. For what the server
    /// of this document can't have told next: "isUnderWay" for an own operation that wasn't sent, "isAsItHappened" or
    /// the failure of an executor for an entry that doesn't fit. All is then as it was before that message or,
    /// once pending operations were taken back, before the first message for which they were: the document, the pending
    /// operations, selections and refusals. `getRevision` tells how far that is.
    /// An observer that throws stops nothing and gets nothing refused: all messages are taken in, all observers are
    /// told, and then the first exception goes on to the caller, unless the call fails by itself. The executor's signal
    /// is raised once, behind all messages, if any of them was executed. Neither may call what changes the client
    /// ("isAlone").
    void receive(std::span<const ServerMessage> messages);

    /// The connection broke, and a new one is there: after the server's `reconnect` with `getRevision()` and its
    /// messages, the batch that was under way is sent again by `takeBatch`, if the server hasn't got it.
    void resume();

    /// The own selection, in the coordinates of the document as it stands, pending operations included.
    void setSelection(Selection selection);
    const Selection* findOwnSelection() const;

    /// Those of the others, in the coordinates of the document as it stands.
    const Selections& getSelections() const
    {
        return _selections;
    }

    /// What was refused since the last call.
    std::vector<Refusal> takeRefusals();

    const Statistics& getStatistics() const
    {
        return _statistics;
    }

private:
    class LocalExecutor;
    class Rebase;
    class Receipt;
    class Savepoint;

    bool executeOwn(CollaborationEngine::Operation& operation, CollaborationEngine::OperationUPtr& changedOp);
    void reverseOwn(const CollaborationEngine::Operation& operation);
    void composeTyping();
    const ChangedNodes& getPendingNodes();
    void append(const HistoryEntryPtr& entry);
    void refuse(const CollaborationEngine::Operation& operation, const std::string& reason);
    void forgetUndoing(const CollaborationEngine::Operation& operation);
    void restoreDocument(std::span<const CollaborationEngine::OperationUPtr> pending);
    void takeCheckpointIfDue();
    void forgetOldUndoings();
    void includeInAll(const CollaborationEngine::Operation& operation);
    void excludeFromAll(const CollaborationEngine::Operation& operation);

    ClientID _id;
    Replica _replica;
    DOMCollaboration::DOMEditingStateTransformer _selectionTransformer;
    std::unique_ptr<LocalExecutor> _executor;
    Revision _revision;
    /// The newest revision that the server knows this client to have.
    Revision _toldRevision;
    /// The oldest first; those that are under way stand in front. One of these that was refused here is empty: its
    /// place is kept for what the server says.
    std::vector<CollaborationEngine::OperationUPtr> _pending;
    /// The nodes of these, and maybe more; null until somebody asks for them.
    std::unique_ptr<ChangedNodes> _pendingNodes;
    std::size_t _underWayCount = 0;
    /// The number of the last operation that was sent.
    unsigned long _lastNumber = 0;
    CollaborationEngine::Operation::Id _nextOperationID;
    std::unique_ptr<Checkpoint> _checkpoint;
    /// What was undone, and the id of what undid it.
    std::map<CollaborationEngine::Operation::Id, CollaborationEngine::Operation::Id> _undoings;
    Selections _selections;
    /// Empty, or the own one.
    Selections _ownSelection;
    bool _isSelectionNew = false;
    bool _composesTyping = true;
    bool _alwaysTakesBack = false;
    std::vector<Refusal> _refusals;
    Statistics _statistics;
};

} // namespace Zem::CollaborationSession

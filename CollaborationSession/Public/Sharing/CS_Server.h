#pragma once

/// The server of one document. It owns the one history: it brings what comes in past what happened meanwhile, executes
/// it, and tells all clients what really happened. How clients follow is told in CS_Client.h.

#include "Sharing/CS_AdmissionLimits.h"
#include "Sharing/CS_Messages.h"
#include "Sharing/CS_Replica.h"
#include "Sharing/CS_Statistics.h"

#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <utility>

namespace Zem::CollaborationSession
{

class Bridge;

/// A batch that no client of this server can have sent.
class ZEM_EXPORT InvalidBatchError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

/// Sensible for a server of many documents; each may be chosen anew.
struct ServerSettings
{
    /// How many actions happen before the server takes a new copy of the document, from which clients join and to which
    /// it returns when an operation fails.
    Revision _checkpointInterval = 4096;
    /// How many entries of the history are kept for clients that lag behind, at least. Who needs older ones is told so,
    /// and joins anew.
    Revision _keptEntriesCount = 1U << 16;
    /// How much a client may ask for at once.
    AdmissionLimits _limits = AdmissionLimits();
};

/// It is used by one thread at a time. The process needs an assertion handler that throws (`throwAssertionFailure`),
/// so that an operation that fits no document costs that operation alone.
class ZEM_EXPORT Server
{
public:
    /// Takes a message to a client, in the order of the calls. It must not call the server. One that throws is a
    /// connection that broke: the exception goes no further, and the server goes on as behind `disconnect`.
    using Outbox = std::function<void(const ServerMessage&)>;

    /// Takes a copy of `document`, revision 0.
    /// Fails: `NoThrowingHandlerError` in a process whose failed assertions don't throw.
    Server(DocumentKind kind, const DOM::Document& document, ServerSettings settings = {});
    ~Server();

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// A client comes in. Everything that happens from now on goes to `outbox`.
    /// Fails: `InvalidBatchError` if there are as many clients as may be (`AdmissionLimits`).
    /// Cost: no more than the last entries of the history; the document is shared.
    std::pair<ClientID, Snapshot> join(Outbox outbox);

    /// The connection of a client is gone; messages for it are no longer sent, and its selection is kept. What it
    /// hasn't got stays here until it comes back or leaves, or lags too far behind.
    void disconnect(ClientID client);

    /// A client that has the history up to `revision` comes back. It is sent all that it lacks, through `outbox`; or
    /// that it is too far behind.
    /// Fails: `InvalidBatchError` for an unknown client, and for a revision that it can't have.
    void reconnect(ClientID client, Revision revision, Outbox outbox);

    /// A client that is too far behind joins anew, under its old number. Fails: `InvalidBatchError` for an unknown one.
    Snapshot rejoin(ClientID client, Outbox outbox);

    /// A client goes for good.
    void leave(ClientID client);

    /// Takes in what a client did: each action comes back to all as one entry of the history, with what happened of it.
    /// What an operation can't do is left out, and its author is told why; everything else goes on. Actions that
    /// arrived before are passed over, and so is all that a client sends who is too far behind.
    ///
    /// Fails: `InvalidBatchError` for an unknown client, a base that the client can't have or that lies in front of its
    /// own last action, a number that leaves a gap, and an action without an operation; `InvalidOperationError` for an
    /// operation, a selection or a look that no client of this library makes, or that is beyond a limit. Nothing has
    /// happened then, and nobody else notices.
    ///
    /// A client that lets its batches be brought past too many entries without coming nearer (`AdmissionLimits`) is
    /// told that it is too far behind.
    ///
    /// Cost: of a transformation for each pair of an operation and what happened since the base; and the execution.
    /// What doesn't fit the document costs a look. An operation that fails all the same costs two copies of the
    /// document, as does an action that is all or nothing and can't happen; and however many fail, no entry of the
    /// history is executed again more than once.
    void receive(ClientID client, const ClientBatch& batch);

    const DOM::Document& getDocument() const
    {
        return _replica.getDocument();
    }

    /// Tells of every change of the document, but for a replacement of the whole (`setOnDocumentReplaced`). What an
    /// observer throws is a failure of the operation.
    ObserverFanOut& getNotifications()
    {
        return _replica.getNotifications();
    }

    /// Called when the document was replaced by one without an operation that failed: whoever keeps something about it
    /// looks again. It must not throw.
    void setOnDocumentReplaced(std::function<void()> onDocumentReplaced)
    {
        _replica.setOnDocumentReplaced(std::move(onDocumentReplaced));
    }

    Revision getRevision() const
    {
        return _firstRevision + _history.size();
    }

    const Selections& getSelections() const
    {
        return _selections;
    }

    const Statistics& getStatistics() const
    {
        return _statistics;
    }

    /// How many entries of the history are kept: those since the copy of the document, and since the oldest base of a
    /// client that isn't too far behind.
    std::size_t getKeptEntriesCount() const
    {
        return _history.size();
    }

private:
    class RunnerHost;

    struct ConnectedClient
    {
        Outbox _outbox;
        /// The client has at least that much of the history.
        Revision _base = 0;
        /// The number of its last action that was taken in.
        unsigned long _lastNumber = 0;
        /// The revision with its last action, which it had before it sent anything else.
        Revision _lastOwn = 0;
        /// How many entries its batches were brought past lately, and up to which revision that is reckoned.
        unsigned long _passedCount = 0;
        Revision _reckoned = 0;
        bool _isTooFarBehind = false;
    };

    ConnectedClient& findClient(ClientID client);
    void requireValid(const ConnectedClient& client, const ClientBatch& batch) const;
    void requireAdmissible(ClientID author, const ClientBatch& batch) const;
    bool mayPass(ConnectedClient& client, Revision base) const;
    void declareTooFarBehind(ConnectedClient& client);
    static void send(ConnectedClient& client, const ServerMessage& message);
    void sendToAll(const ServerMessage& message);
    void sendSelections(ConnectedClient& client, ClientID clientID);
    Snapshot makeSnapshot() const;
    Bridge makeBridge(Revision base) const;
    void takeInActions(ClientID author, ConnectedClient& client, const ClientBatch& batch, Bridge& bridge);
    void append(HistoryEntry entry);
    void takeInSelection(ClientID client, const Selection& selection, Bridge& bridge);
    void loseSelection(ClientID client);
    void restoreDocument(std::span<const std::shared_ptr<const CollaborationEngine::Operation>> done);
    void takeCheckpoint();
    void trimHistory();
    bool lagsTooFar(const ConnectedClient& client) const;

    Replica _replica;
    DOMCollaboration::DOMEditingStateTransformer _selectionTransformer;
    std::deque<HistoryEntryPtr> _history;
    /// How many entries were dropped in front of `_history`.
    Revision _firstRevision = 0;
    std::shared_ptr<const DOM::Document> _checkpoint;
    Revision _checkpointRevision = 0;
    ServerSettings _settings;
    /// No list of the document ever had more slots.
    unsigned long _slotsBound = 0;
    std::map<ClientID, ConnectedClient> _clients;
    Selections _selections;
    /// Whose selection went with them, and at which revision: a client whose connection broke may not know. There are
    /// no more than members, the last ones.
    std::map<ClientID, Revision> _lostSelections;
    ClientID _lastClient = 0;
    Statistics _statistics;
};

} // namespace Zem::CollaborationSession

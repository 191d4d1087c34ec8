#pragma once

/// The server of one document. It owns the one history: it brings what comes in past what happened meanwhile, executes
/// it, and tells all clients what really happened. How clients follow is told in CS_Client.h.

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
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

class Bridge;

/// A batch that no client of this server can have sent.
class ZEM_EXPORT InvalidBatchError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

/// It is used by one thread at a time. The process needs an assertion handler that throws (`throwAssertionFailure`),
/// so that an operation that fits no document costs that operation alone.
class ZEM_EXPORT Server
{
public:
    /// Takes a message to a client, in the order of the calls. It must not call the server. One that throws is a
    /// connection that broke: the exception goes no further, and the server goes on as behind `disconnect`.
    using Outbox = std::function<void(const ServerMessage&)>;

    /// How many operations run before the server takes a new copy of the document, from which clients join and to which
    /// it returns when an operation fails.
    static constexpr Revision defaultCheckpointInterval = 4096;

    /// Takes a copy of `document`, revision 0.
    Server(DocumentKind kind, const DOM::Document& document, Revision checkpointInterval = defaultCheckpointInterval);
    ~Server();

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// A client comes in. Everything that happens from now on goes to `outbox`.
    /// Cost: no more than the last entries of the history; the document is shared.
    std::pair<ClientID, Snapshot> join(Outbox outbox);

    /// The connection of a client is gone; messages for it are no longer sent, and its selection is kept. What it
    /// hasn't got stays here until it comes back or leaves.
    void disconnect(ClientID client);

    /// A client that has the history up to `revision` comes back. It is sent all that it lacks, through `outbox`.
    /// Fails: `InvalidBatchError` for an unknown client, and for a revision that it can't have.
    void reconnect(ClientID client, Revision revision, Outbox outbox);

    /// A client goes for good.
    void leave(ClientID client);

    /// Takes in what a client did. An operation that fails is rejected, and its author is told why; those behind it in
    /// the batch go on without it. Operations that arrived before are passed over.
    /// Fails: `InvalidBatchError` for an unknown client, a base that the client can't have, a number that leaves a gap,
    /// and a null operation; nothing has happened then.
    /// Cost: of a transformation for each pair of an operation and what happened since the base; and the execution. An
    /// operation that fails costs two copies of the document, and however many fail, no entry of the history is
    /// executed again more than once.
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

    /// How many entries of the history are kept: those since the copy of the document and since the oldest base of a
    /// client.
    std::size_t getKeptEntriesCount() const
    {
        return _history.size();
    }

private:
    struct ConnectedClient
    {
        Outbox _outbox;
        /// The client has at least that much of the history.
        Revision _base = 0;
        /// The number of its last operation that was taken in.
        unsigned long _lastNumber = 0;
        /// Rejections that it may not know yet, with the revision at which they were.
        std::vector<std::pair<Revision, OperationRejected>> _rejections;
    };

    ConnectedClient& findClient(ClientID client);
    void requireValid(const ConnectedClient& client, const ClientBatch& batch) const;
    static void send(ConnectedClient& client, const ServerMessage& message);
    void sendToAll(const ServerMessage& message);
    bool takeIn(ClientID author, unsigned long number, const CollaborationEngine::Operation& operation, Bridge& bridge);
    CollaborationEngine::OperationUPtr execute(ClientID author, unsigned long number,
                                               const CollaborationEngine::Operation& original,
                                               CollaborationEngine::OperationUPtr planned, Bridge& bridge);
    bool reject(ClientID author, unsigned long number, const std::string& reason);
    void append(ClientID author, unsigned long number, CollaborationEngine::OperationUPtr operation);
    void takeInSelection(ClientID client, const Selection* selection, Bridge& bridge);
    void restoreDocument();
    void takeCheckpoint();
    void trimHistory();

    Replica _replica;
    DOMCollaboration::DOMEditingStateTransformer _selectionTransformer;
    std::deque<HistoryEntryPtr> _history;
    /// How many entries were dropped in front of `_history`.
    Revision _firstRevision = 0;
    std::shared_ptr<const DOM::Document> _checkpoint;
    Revision _checkpointRevision = 0;
    Revision _checkpointInterval;
    std::map<ClientID, ConnectedClient> _clients;
    Selections _selections;
    /// Whose selection went with them, and at which revision: a client whose connection broke may not know.
    std::vector<std::pair<Revision, ClientID>> _lostSelections;
    ClientID _lastClient = 0;
    Statistics _statistics;
};

} // namespace Zem::CollaborationSession

#include "Sharing/CS_Server.h"

#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_ExecuteStably.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Stopwatch.h"

#include "CE_InverseOperation.h"
#include "DClb_DocumentPositionTransformer.h"

#include "Util_Cast.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Server::Server(DocumentKind kind, const DOM::Document& document, Revision checkpointInterval)
    : _replica(kind, document)
    , _selectionTransformer(std::make_shared<DOMCollaboration::DocumentPositionTransformer>())
    , _checkpointInterval(checkpointInterval)
{
    takeCheckpoint();
}

Server::~Server() = default;

std::pair<ClientID, Snapshot> Server::join(Outbox outbox)
{
    ConnectedClient client;
    client._outbox = std::move(outbox);
    client._base = _checkpointRevision;
    _clients.emplace(++_lastClient, std::move(client));
    const auto firstEntry = _history.begin() + static_cast<std::ptrdiff_t>(_checkpointRevision - _firstRevision);
    return {_lastClient,
            Snapshot{_replica.getKind(), _checkpoint, _checkpointRevision, {firstEntry, _history.end()}, _selections}};
}

void Server::disconnect(ClientID client)
{
    findClient(client)._outbox = nullptr;
}

void Server::reconnect(ClientID clientID, Revision revision, Outbox outbox)
{
    ConnectedClient& client = findClient(clientID);
    if (revision < client._base || revision > getRevision())
    {
        throw InvalidBatchError("Client " + std::to_string(clientID) + " can't have revision " +
                                std::to_string(revision));
    }
    client._outbox = std::move(outbox);
    auto rejection = client._rejections.begin();
    for (Revision current = revision;; ++current)
    {
        for (; rejection != client._rejections.end() && rejection->first <= current; ++rejection)
        {
            send(client, rejection->second);
        }
        if (current == getRevision())
        {
            break;
        }
        send(client, OperationHappened{_history[current - _firstRevision]});
    }
    // The client tells its own selection again, and hears then where that is.
    for (const auto& [leftAt, owner] : _lostSelections)
    {
        if (leftAt >= client._base && owner != clientID)
        {
            send(client, SelectionMoved{owner, nullptr});
        }
    }
    for (const auto& [owner, selection] : _selections)
    {
        if (owner != clientID)
        {
            send(client, SelectionMoved{owner, std::make_shared<Selection>(selection)});
        }
    }
}

void Server::leave(ClientID client)
{
    findClient(client);
    _clients.erase(client);
    if (_selections.erase(client) > 0)
    {
        _lostSelections.emplace_back(getRevision(), client);
        sendToAll(SelectionMoved{client, nullptr});
    }
    trimHistory();
}

void Server::receive(ClientID clientID, const ClientBatch& batch)
{
    ConnectedClient& client = findClient(clientID);
    const std::size_t count = batch._operations.size();
    const bool hasArrivedBefore = count > 0 && batch._firstNumber > 0 && batch._firstNumber <= client._lastNumber &&
                                  count - 1 <= client._lastNumber - batch._firstNumber;
    if (hasArrivedBefore)
    {
        return;
    }
    requireValid(client, batch);
    client._base = batch._base;
    std::erase_if(client._rejections, [&](const auto& rejection) { return rejection.first < batch._base; });

    Bridge bridge(_replica.getTransformer());
    for (Revision revision = batch._base; revision < getRevision(); ++revision)
    {
        bridge.append(std::shared_ptr<const Operation>(_history[revision - _firstRevision]->_operation));
    }
    bool isBridgeWhole = true;
    for (const auto& operation : batch._operations)
    {
        const unsigned long number = ++client._lastNumber;
        isBridgeWhole = isBridgeWhole ? takeIn(clientID, number, *operation, bridge)
                                      : reject(clientID, number, "It was made behind one that fits no document.");
    }
    if (batch._selection)
    {
        takeInSelection(clientID, isBridgeWhole ? batch._selection.get() : nullptr, bridge);
    }
    if (getRevision() - _checkpointRevision >= _checkpointInterval)
    {
        takeCheckpoint();
    }
}

/// Whether the bridge still begins where the next operation begins.
bool Server::takeIn(ClientID author, unsigned long number, const Operation& operation, Bridge& bridge)
{
    OperationUPtr planned;
    try
    {
        const Stopwatch stopwatch(_statistics._transformingTime);
        planned = bridge.cross(operation);
    }
    catch (const std::exception& error)
    {
        return reject(author, number, error.what());
    }
    if (OperationUPtr happened = execute(author, number, operation, std::move(planned), bridge))
    {
        append(author, number, std::move(happened));
        return true;
    }
    try
    {
        bridge.refuse(operation);
        return true;
    }
    catch (const std::exception&)
    {
        // An operation that can't even be taken back: nothing that was made behind it can be placed.
        return false;
    }
}

/// What happened. Null if `planned` failed: the document is as it was before, and the author knows.
OperationUPtr Server::execute(ClientID author, unsigned long number, const Operation& original, OperationUPtr planned,
                              Bridge& bridge)
{
    try
    {
        const Stopwatch stopwatch(_statistics._executingTime);
        OperationUPtr changed;
        if (!executeStably(_replica.getExecutor(), *planned, changed, [this] { restoreDocument(); }))
        {
            return planned;
        }
        bridge.appendChange(original, *planned, *changed);
        ++_statistics._changedCount;
        return changed;
    }
    catch (const std::exception& error)
    {
        restoreDocument();
        reject(author, number, error.what());
        return nullptr;
    }
}

/// False, for the sake of its callers.
bool Server::reject(ClientID author, unsigned long number, const std::string& reason)
{
    ++_statistics._rejectedCount;
    ConnectedClient& client = findClient(author);
    const OperationRejected rejection{number, reason};
    client._rejections.emplace_back(getRevision(), rejection);
    send(client, rejection);
    return false;
}

void Server::append(ClientID author, unsigned long number, OperationUPtr operation)
{
    ++_statistics._executedCount;
    _statistics._shadowedCount += cast<ShadowedOperation>(operation.get()) ? 1 : 0;
    includeInSelections(_selectionTransformer, *operation, _selections);
    auto entry = std::make_shared<HistoryEntry>(HistoryEntry{author, number, std::move(operation)});
    _history.push_back(entry);
    sendToAll(OperationHappened{std::move(entry)});
}

/// Null for one that can't be placed. The owner hears of it, too, so that all have the same.
void Server::takeInSelection(ClientID client, const Selection* selection, Bridge& bridge)
{
    _selections.erase(client);
    if (selection)
    {
        Selections moved = {{client, *selection}};
        bridge.follow(_selectionTransformer, moved);
        _selections.merge(moved);
    }
    const auto placed = _selections.find(client);
    if (placed == _selections.end())
    {
        _lostSelections.emplace_back(getRevision(), client);
        sendToAll(SelectionMoved{client, nullptr});
        return;
    }
    placed->second.clearCache();
    sendToAll(SelectionMoved{client, std::make_shared<const Selection>(placed->second)});
}

Server::ConnectedClient& Server::findClient(ClientID client)
{
    const auto found = _clients.find(client);
    if (found == _clients.end())
    {
        throw InvalidBatchError("There is no client " + std::to_string(client));
    }
    return found->second;
}

void Server::requireValid(const ConnectedClient& client, const ClientBatch& batch) const
{
    if (batch._base < client._base || batch._base > getRevision())
    {
        throw InvalidBatchError("A batch can't stand on revision " + std::to_string(batch._base));
    }
    if (batch._firstNumber != client._lastNumber + 1)
    {
        throw InvalidBatchError("Operation " + std::to_string(client._lastNumber + 1) + " was expected, not " +
                                std::to_string(batch._firstNumber));
    }
    if (std::find(batch._operations.begin(), batch._operations.end(), nullptr) != batch._operations.end())
    {
        throw InvalidBatchError("A batch holds no null operations");
    }
}

/// The message isn't lost with a connection that breaks: it is among what `reconnect` sends.
void Server::send(ConnectedClient& client, const ServerMessage& message)
{
    if (!client._outbox)
    {
        return;
    }
    try
    {
        client._outbox(message);
    }
    catch (...)
    {
        client._outbox = nullptr;
    }
}

void Server::sendToAll(const ServerMessage& message)
{
    for (auto& [id, client] : _clients)
    {
        send(client, message);
    }
}

/// A failed execution may have changed a part: the document is made again from the copy and what happened since. A new
/// copy then keeps the next failure from executing the same entries again.
void Server::restoreDocument()
{
    std::vector<const Operation*> operations;
    for (Revision revision = _checkpointRevision; revision < getRevision(); ++revision)
    {
        operations.push_back(_history[revision - _firstRevision]->_operation.get());
    }
    _replica.replaceDocument(*_checkpoint, operations);
    _statistics._replayedCount += operations.size();
    if (!operations.empty())
    {
        takeCheckpoint();
    }
}

void Server::takeCheckpoint()
{
    _checkpoint = std::make_shared<const DOM::Document>(_replica.getDocument());
    _checkpointRevision = getRevision();
    trimHistory();
}

void Server::trimHistory()
{
    Revision oldest = _checkpointRevision;
    for (const auto& [id, client] : _clients)
    {
        oldest = std::min(oldest, client._base);
    }
    std::erase_if(_lostSelections, [oldest](const auto& lost) { return lost.first < oldest; });
    _history.erase(_history.begin(), _history.begin() + static_cast<std::ptrdiff_t>(oldest - _firstRevision));
    _firstRevision = oldest;
}

} // namespace Zem::CollaborationSession

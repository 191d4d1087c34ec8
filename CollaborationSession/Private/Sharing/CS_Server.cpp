#include "Sharing/CS_Server.h"

#include "Sharing/CS_ActionRunner.h"
#include "Sharing/CS_Admission.h"
#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_DescribeException.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_RequireThrowingHandler.h"

#include "DClb_DocumentPositionTransformer.h"

#include "Util_Cast.h"

#include <algorithm>
#include <string>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// How many passes of an entry are a client's due for each entry by which the history grows.
constexpr unsigned long forgottenPasses = 64;

} // namespace

Server::Server(DocumentKind kind, const DOM::Document& document, ServerSettings settings)
    : _replica(kind, document)
    , _selectionTransformer(std::make_shared<DOMCollaboration::DocumentPositionTransformer>())
    , _settings(settings)
    , _slotsBound(countSlots(document))
{
    requireThrowingHandler();
    takeCheckpoint();
}

Server::~Server() = default;

std::pair<ClientID, Snapshot> Server::join(Outbox outbox)
{
    if (_clients.size() >= _settings._limits._members || _lastClient >= highestClientID)
    {
        throw InvalidBatchError("The document is shared by as many clients as may be");
    }
    ConnectedClient client;
    client._outbox = std::move(outbox);
    client._base = getRevision();
    _clients.emplace(++_lastClient, std::move(client));
    return {_lastClient, makeSnapshot()};
}

Snapshot Server::rejoin(ClientID clientID, Outbox outbox)
{
    ConnectedClient& client = findClient(clientID);
    client._outbox = std::move(outbox);
    client._base = getRevision();
    client._isTooFarBehind = false;
    client._passedCount = 0;
    return makeSnapshot();
}

Snapshot Server::makeSnapshot() const
{
    const auto firstEntry = _history.begin() + static_cast<std::ptrdiff_t>(_checkpointRevision - _firstRevision);
    return {_replica.getKind(), _checkpoint, _checkpointRevision, {firstEntry, _history.end()}, _selections};
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
    if (client._isTooFarBehind)
    {
        declareTooFarBehind(client);
        return;
    }
    for (Revision current = revision; current < getRevision(); ++current)
    {
        send(client, ActionHappened{current + 1, _history[current - _firstRevision]});
    }
    sendSelections(client, clientID);
}

/// The client tells its own selection again, and hears then where that is.
void Server::sendSelections(ConnectedClient& client, ClientID clientID)
{
    for (const auto& [owner, leftAt] : _lostSelections)
    {
        if (leftAt >= client._base && owner != clientID)
        {
            send(client, SelectionMoved{getRevision(), owner, nullptr});
        }
    }
    for (const auto& [owner, selection] : _selections)
    {
        if (owner != clientID)
        {
            send(client, SelectionMoved{getRevision(), owner, std::make_shared<Selection>(selection)});
        }
    }
}

void Server::leave(ClientID client)
{
    findClient(client);
    _clients.erase(client);
    if (_selections.contains(client))
    {
        loseSelection(client);
    }
    trimHistory();
}

void Server::receive(ClientID clientID, const ClientBatch& batch)
{
    ConnectedClient& client = findClient(clientID);
    const std::size_t count = batch._actions.size();
    const bool hasArrivedBefore = count > 0 && batch._firstNumber > 0 && batch._firstNumber <= client._lastNumber &&
                                  count - 1 <= client._lastNumber - batch._firstNumber;
    if (hasArrivedBefore || client._isTooFarBehind)
    {
        return;
    }
    requireValid(client, batch);
    requireAdmissible(clientID, batch);
    client._base = batch._base;
    if (!batch._actions.empty() || batch._selection)
    {
        if (!mayPass(client, batch._base))
        {
            declareTooFarBehind(client);
            return;
        }
        Bridge bridge = makeBridge(batch._base);
        takeInActions(clientID, client, batch, bridge);
        if (batch._selection)
        {
            takeInSelection(clientID, *batch._selection, bridge);
        }
    }
    if (getRevision() - _checkpointRevision >= _settings._checkpointInterval)
    {
        takeCheckpoint();
    }
}

/// What happened since a revision.
Bridge Server::makeBridge(Revision base) const
{
    Bridge bridge(_replica.getTransformer());
    for (Revision revision = base; revision < getRevision(); ++revision)
    {
        bridge.append(_history[revision - _firstRevision]->_action);
    }
    return bridge;
}

class Server::RunnerHost final : public ActionRunner::Host
{
public:
    explicit RunnerHost(Server& server)
        : _server(server)
    {
    }

    void onCarriedOut(const Operation&, const Operation& happened) override
    {
        includeInSelections(_server._selectionTransformer, happened, _server._selections);
    }

    void onTakenBack(const Operation& happened) override
    {
        excludeFromSelections(_server._selectionTransformer, happened, _server._selections);
    }

    void restore(std::span<const ActionRunner::OperationPtr> done) override
    {
        ++_restoredCount;
        _server.restoreDocument(done);
    }

    bool mayTry(unsigned long passedRangesCount) override
    {
        const AdmissionLimits& limits = _server._settings._limits;
        _isEnough = _isEnough || _restoredCount >= limits._failures ||
                    passedRangesCount > limits._passedRanges - _passedRangesCount;
        _passedRangesCount += _isEnough ? 0 : passedRangesCount;
        return !_isEnough;
    }

    void forEachBefore(CallableRef<bool(const Operation&)> pass) const override
    {
        const auto& history = _server._history;
        for (auto entry = history.rbegin(); entry != history.rend(); ++entry)
        {
            if (!pass(*(*entry)->_action._operation))
            {
                return;
            }
        }
    }

private:
    Server& _server;
    // For one batch.
    unsigned long _restoredCount = 0;
    unsigned long _passedRangesCount = 0;
    bool _isEnough = false;
};

/// Each action becomes an entry, whatever comes of it. Where the bridge is lost, nothing behind has a place any more.
void Server::takeInActions(ClientID author, ConnectedClient& client, const ClientBatch& batch, Bridge& bridge)
{
    RunnerHost host(*this);
    boost::optional<Refusal> lost;
    for (const Action& action : batch._actions)
    {
        ActionRunner::Outcome outcome;
        outcome._happened._operation = std::make_shared<EmptyOperation>();
        outcome._refusal = lost;
        ActionRunner runner(_replica, bridge, _statistics, host);
        try
        {
            outcome = lost ? std::move(outcome) : runner.run(action);
        }
        catch (...)
        {
            lost = Refusal{RefusalReason::HasNoPlace, describeCurrentException()};
            outcome._refusal = lost;
            runner.giveUp();
        }
        append({author, ++client._lastNumber, std::move(outcome._happened), std::move(outcome._refusal)});
        client._lastOwn = getRevision();
    }
}

void Server::append(HistoryEntry entry)
{
    ++_statistics._executedCount;
    _slotsBound += countInsertedSlots(*entry._action._operation);
    _history.push_back(std::make_shared<HistoryEntry>(std::move(entry)));
    sendToAll(ActionHappened{getRevision(), _history.back()});
}

/// The owner hears of it, too, so that all have the same.
void Server::takeInSelection(ClientID client, const Selection& selection, Bridge& bridge)
{
    _selections.erase(client);
    Selections moved = {{client, selection}};
    bridge.follow(_selectionTransformer, moved);
    if (moved.empty() || findMisfit(moved.begin()->second, *_replica.getAdapter()))
    {
        loseSelection(client);
        return;
    }
    moved.begin()->second.clearCache();
    sendToAll(SelectionMoved{getRevision(), client, std::make_shared<const Selection>(moved.begin()->second)});
    _selections.merge(moved);
}

void Server::loseSelection(ClientID client)
{
    _selections.erase(client);
    _lostSelections[client] = getRevision();
    if (_lostSelections.size() > _settings._limits._members)
    {
        const auto isOlder = [](const auto& left, const auto& right) { return left.second < right.second; };
        _lostSelections.erase(std::min_element(_lostSelections.begin(), _lostSelections.end(), isOlder));
    }
    sendToAll(SelectionMoved{getRevision(), client, nullptr});
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
    if (!batch._actions.empty() && batch._base < client._lastOwn)
    {
        throw InvalidBatchError("A client has what it sent before, in revision " + std::to_string(client._lastOwn));
    }
    if (batch._firstNumber != client._lastNumber + 1)
    {
        throw InvalidBatchError("Action " + std::to_string(client._lastNumber + 1) + " was expected, not " +
                                std::to_string(batch._firstNumber));
    }
    if (std::any_of(batch._actions.begin(), batch._actions.end(),
                    [](const Action& action) { return !action._operation; }))
    {
        throw InvalidBatchError("Each action of a batch has an operation");
    }
}

/// Nothing is done with what a stranger sends before it was looked at.
void Server::requireAdmissible(ClientID author, const ClientBatch& batch) const
{
    BatchAdmission admission(author, _slotsBound, _settings._limits);
    for (const Action& action : batch._actions)
    {
        // Of an undo all that is left may be what it brings along of somebody else's.
        admission.requireWellFormed(*action._operation, action._meaning && action._meaning->_isUndo);
        if (action._meaning)
        {
            admission.requireWellFormed(*action._meaning);
        }
    }
    if (batch._selection)
    {
        admission.requireWellFormed(*batch._selection);
    }
}

/// Who comes nearer again as fast as the history grows isn't held up, however far behind it is.
bool Server::mayPass(ConnectedClient& client, Revision base) const
{
    const unsigned long forgotten = forgottenPasses * (getRevision() - client._reckoned);
    client._passedCount -= std::min(client._passedCount, forgotten);
    client._passedCount += getRevision() - base;
    client._reckoned = getRevision();
    return client._passedCount <= _settings._limits._lag;
}

void Server::declareTooFarBehind(ConnectedClient& client)
{
    send(client, TooFarBehind{getRevision()});
    client._isTooFarBehind = true;
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
        if (!client._isTooFarBehind)
        {
            send(client, message);
        }
    }
}

/// A failed execution may have changed a part: the document is made again from the copy and what happened since. The
/// copy is brought up to date, so that the next failure doesn't execute the same entries again.
void Server::restoreDocument(std::span<const ActionRunner::OperationPtr> done)
{
    std::vector<const Operation*> operations;
    for (Revision revision = _checkpointRevision; revision < getRevision(); ++revision)
    {
        operations.push_back(_history[revision - _firstRevision]->_action._operation.get());
    }
    _statistics._replayedCount += operations.size();
    if (!operations.empty())
    {
        _checkpoint =
            std::make_shared<const DOM::Document>(Replica::replay(_replica.getKind(), *_checkpoint, operations));
        _checkpointRevision = getRevision();
        trimHistory();
    }
    operations.clear();
    for (const ActionRunner::OperationPtr& operation : done)
    {
        operations.push_back(operation.get());
    }
    _replica.replaceDocument(*_checkpoint, operations);
}

void Server::takeCheckpoint()
{
    _checkpoint = std::make_shared<const DOM::Document>(_replica.getDocument());
    _checkpointRevision = getRevision();
    trimHistory();
}

bool Server::lagsTooFar(const ConnectedClient& client) const
{
    return getRevision() - client._base > _settings._keptEntriesCount && client._base < _checkpointRevision;
}

void Server::trimHistory()
{
    Revision oldest = _checkpointRevision;
    for (auto& [id, client] : _clients)
    {
        if (!client._isTooFarBehind && lagsTooFar(client))
        {
            declareTooFarBehind(client);
        }
        oldest = client._isTooFarBehind ? oldest : std::min(oldest, client._base);
    }
    std::erase_if(_lostSelections, [oldest](const auto& lost) { return lost.second < oldest; });
    _history.erase(_history.begin(), _history.begin() + static_cast<std::ptrdiff_t>(oldest - _firstRevision));
    _firstRevision = oldest;
}

} // namespace Zem::CollaborationSession

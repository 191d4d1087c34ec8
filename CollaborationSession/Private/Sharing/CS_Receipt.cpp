#include "Sharing/CS_Receipt.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Stopwatch.h"

#include "CE_OperationEquality.h"

#include <utility>
#include <variant>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

void Client::Receipt::takeIn(std::span<const ServerMessage> messages)
{
    for (const ServerMessage& message : messages)
    {
        std::visit([this](const auto& told) { takeIn(told); }, message);
    }
    if (_rebase)
    {
        _rebase->finish();
    }
}

void Client::Receipt::giveUp()
{
    if (_savepoint)
    {
        std::move(*_savepoint).restore(_client);
    }
}

void Client::Receipt::takeIn(const OperationHappened& happened)
{
    if (_rebase)
    {
        _rebase->takeIn(happened._entry);
    }
    else if (confirms(*happened._entry))
    {
        confirm(happened._entry);
    }
    else if (isBesidePending(*happened._entry))
    {
        executeBesidePending(happened._entry);
    }
    else
    {
        getRebase().takeIn(happened._entry);
    }
}

void Client::Receipt::takeIn(const OperationRejected& rejected)
{
    // One that came in before the connection broke may come again.
    if (rejected._number > _client._lastNumber - _client._underWayCount)
    {
        getRebase().takeIn(rejected);
    }
}

/// It comes in the state of the server: what is pending, and in the document, is what it has to be moved past.
void Client::Receipt::takeIn(const SelectionMoved& moved)
{
    const bool isOwn = moved._client == _client._id;
    if (isOwn && _client._isSelectionNew)
    {
        return;
    }
    Selections& selections = isOwn ? _client._ownSelection : _client._selections;
    selections.erase(moved._client);
    if (!moved._selection)
    {
        return;
    }
    Selections single = {{moved._client, *moved._selection}};
    if (!_rebase)
    {
        for (const OperationUPtr& operation : _client._pending)
        {
            includeInSelections(_client._selectionTransformer, *operation, single);
        }
    }
    selections.merge(single);
}

/// Whether the entry is the oldest own operation, as it stands here.
bool Client::Receipt::confirms(const HistoryEntry& entry) const
{
    return entry._author == _client._id && _client._underWayCount > 0 &&
           areDeeplyEqual(*_client._pending.front(), *entry._operation);
}

void Client::Receipt::confirm(const HistoryEntryPtr& entry)
{
    _client._pending.erase(_client._pending.begin());
    if (_client._pending.empty())
    {
        _client._pendingNodes.reset();
    }
    --_client._underWayCount;
    ++_client._statistics._confirmedCount;
    _client.append(entry);
}

bool Client::Receipt::isBesidePending(const HistoryEntry& entry) const
{
    return !_client._alwaysTakesBack && entry._author != _client._id &&
           _client.getPendingNodes().commuteWith(*entry._operation);
}

/// Both orders of the operation and of what is pending make one document, so that the entry may stand in front of these
/// in all that is remembered.
void Client::Receipt::executeBesidePending(const HistoryEntryPtr& entry)
{
    _hasExecuted = true;
    try
    {
        const Stopwatch stopwatch(_client._statistics._executingTime);
        _client._replica.executeAgain(*entry->_operation);
    }
    catch (...)
    {
        _client.restoreDocument(_client._pending);
        throw;
    }
    _client.includeInAll(*entry->_operation);
    ++_client._statistics._executedCount;
    _client._statistics._besidePendingCount += _client._pending.empty() ? 0 : 1;
    _client.append(entry);
}

Client::Rebase& Client::Receipt::getRebase()
{
    if (!_rebase)
    {
        _hasExecuted = true;
        _savepoint.emplace(_client);
        _rebase.emplace(_client);
    }
    return *_rebase;
}

} // namespace Zem::CollaborationSession

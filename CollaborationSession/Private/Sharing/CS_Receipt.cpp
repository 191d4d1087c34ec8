#include "Sharing/CS_Receipt.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Stopwatch.h"

#include "CE_OperationEquality.h"

#include <string>
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

/// How much of the history was taken in.
Revision Client::Receipt::getRevision() const
{
    return _client._revision + (_rebase ? _rebase->getEntriesCount() : 0);
}

/// False for what came before. Fails: `InvalidMessageError` for what lies behind a gap.
bool Client::Receipt::isNext(Revision revision) const
{
    if (revision > getRevision() + 1)
    {
        throw InvalidMessageError("Revision " + std::to_string(getRevision() + 1) + " was expected, not " +
                                  std::to_string(revision));
    }
    return revision == getRevision() + 1;
}

void Client::Receipt::takeIn(const ActionHappened& happened)
{
    if (!isNext(happened._revision))
    {
        return;
    }
    if (_rebase)
    {
        _rebase->takeIn(happened._entry);
    }
    else if (isAcknowledgement(*happened._entry))
    {
        acknowledge(happened._entry);
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

void Client::Receipt::takeIn(const TooFarBehind& tooFarBehind)
{
    _client._isTooFarBehind = _client._isTooFarBehind || getRevision() < tooFarBehind._revision;
}

/// It comes in the state of the server: what is pending, and in the document, is what it has to be moved past.
void Client::Receipt::takeIn(const SelectionMoved& moved)
{
    if (isNext(moved._revision + 1))
    {
        const bool isOwn = moved._client == _client._id;
        if (isOwn && _client._isSelectionNew)
        {
            return;
        }
        if (_rebase)
        {
            _rebase->takeIn(moved);
            return;
        }
        Selections& selections = isOwn ? _client._ownSelection : _client._selections;
        selections.erase(moved._client);
        if (moved._selection)
        {
            Selections single = {{moved._client, *moved._selection}};
            for (const Pending& pending : _client._pending)
            {
                includeInSelections(_client._selectionTransformer, *pending._operation, single);
            }
            selections.merge(single);
        }
    }
}

/// Whether the entry is the oldest own action, as it stands here.
bool Client::Receipt::isAcknowledgement(const HistoryEntry& entry) const
{
    return entry._author == _client._id && _client._underWayCount > 0 &&
           areDeeplyEqual(*_client._pending.front()._operation, *entry._action._operation);
}

void Client::Receipt::acknowledge(const HistoryEntryPtr& entry)
{
    _client.acknowledge(std::move(_client._pending.front()), entry);
    _client._pending.erase(_client._pending.begin());
    if (_client._pending.empty())
    {
        _client._pendingNodes.reset();
    }
    --_client._underWayCount;
    ++_client._statistics._confirmedCount;
}

bool Client::Receipt::isBesidePending(const HistoryEntry& entry) const
{
    return !_client._alwaysTakesBack && entry._author != _client._id &&
           _client.getPendingNodes().commuteWith(*entry._action._operation);
}

/// Both orders of the operation and of what is pending make one document, so that the entry may stand in front of these
/// in all that is remembered.
void Client::Receipt::executeBesidePending(const HistoryEntryPtr& entry)
{
    _hasExecuted = true;
    try
    {
        const Stopwatch stopwatch(_client._statistics._executingTime);
        _client._replica.executeAgain(*entry->_action._operation);
    }
    catch (...)
    {
        _client.restoreDocument();
        throw;
    }
    _client.includeInAll(*entry->_action._operation);
    ++_client._statistics._executedCount;
    _client._statistics._besidePendingCount += _client._pending.empty() ? 0 : 1;
    _client.append(entry);
}

Client::Rebase& Client::Receipt::getRebase()
{
    if (!_rebase)
    {
        _hasExecuted = true;
        _rebase = std::make_unique<Rebase>(_client);
    }
    return *_rebase;
}

} // namespace Zem::CollaborationSession

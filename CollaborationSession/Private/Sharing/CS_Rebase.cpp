#include "Sharing/CS_Rebase.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_Checkpoint.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Stopwatch.h"
#include "Sharing/CS_UndoLog.h"

#include "CE_OperationEquality.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Client::Rebase::Rebase(Client& client)
    : _client(client)
    , _bridge(client.getTransformer())
    , _selections(client._selections)
    , _ownSelection(client._ownSelection)
{
    _client.composeTyping();
    _client._pendingNodes.reset();
    takeBackPending();
}

Client::Rebase::~Rebase()
{
    if (!_isFinished)
    {
        _client.restoreDocument();
    }
}

void Client::Rebase::takeBackPending()
{
    const Stopwatch stopwatch(_client._statistics._reversingTime);
    for (auto pending = _client._pending.rbegin(); pending != _client._pending.rend(); ++pending)
    {
        onTakenBack(*pending->_operation);
    }
    try
    {
        for (auto pending = _client._pending.rbegin(); pending != _client._pending.rend(); ++pending)
        {
            _client._replica.getExecutor().reverse(*pending->_operation);
        }
    }
    catch (...)
    {
        // Every operation that ran can be taken back; a document that doesn't let it isn't what it should be. The copy
        // is, and `Statistics` tells that it was needed.
        restore({});
    }
}

void Client::Rebase::takeIn(const HistoryEntryPtr& entry)
{
    const bool isOwn = entry->_author == _client._id;
    const bool isUnderWay = !isOwn || _acknowledgedCount < _client._underWayCount;
    ZEM_ASSERT(isUnderWay);
    if (isOwn)
    {
        std::vector<LookSetting> formerLooks = takeInOwn(*entry);
        _entries.push_back({entry, static_cast<std::ptrdiff_t>(_acknowledgedCount++), std::move(formerLooks)});
    }
    else
    {
        takeInOther(*entry);
        _entries.push_back({entry, -1, {}});
    }
    ++_client._statistics._executedCount;
}

void Client::Rebase::takeInOther(const HistoryEntry& entry)
{
    const Stopwatch stopwatch(_client._statistics._executingTime);
    _client._replica.executeAgain(*entry._action._operation);
    onCarriedOut(*entry._action._operation, *entry._action._operation);
    _bridge.append(entry._action);
}

/// What the server made of the action is mostly what this client makes of it.
std::vector<LookSetting> Client::Rebase::takeInOwn(const HistoryEntry& entry)
{
    const Action own = getAction(_acknowledgedCount);
    Bridge::Mark before = _bridge.getMark();
    ActionRunner::Outcome predicted = ActionRunner(_client._replica, _bridge, _client._statistics, *this).run(own);
    if (!areDeeplyEqual(*predicted._happened._operation, *entry._action._operation))
    {
        executeInstead(own, *predicted._happened._operation, std::move(before), *entry._action._operation);
        predicted._looksOfOthers = _bridge.getLooks();
        if (entry._action._meaning)
        {
            _bridge.overrideLooks(entry._action._meaning->_looks);
        }
    }
    return findFormerLooks(_client._pending[_acknowledgedCount], entry._action, predicted._looksOfOthers);
}

/// What it had before what was given another look by `happened`. Where nobody else painted meanwhile, that is what the
/// author saw, also of what has no look at the moment, because it is dead, or had this one by the time it ran again.
std::vector<LookSetting> Client::Rebase::findFormerLooks(const Pending& pending, const Action& happened,
                                                         const std::vector<LookSetting>& looksOfOthers)
{
    if (!happened._meaning)
    {
        return {};
    }
    std::vector<LookSetting> seen = pending._formerLooks;
    std::erase_if(seen, [&](LookSetting& look) { return !_bridge.follow(look._stretch); });
    for (const LookSetting& others : looksOfOthers)
    {
        seen = withoutLater(std::move(seen), others);
    }
    std::vector<LookSetting> former =
        CollaborationSession::findFormerLooks(_client.getAdapter(), *happened._operation, *happened._meaning);
    for (const LookSetting& found : former)
    {
        seen = withoutLater(std::move(seen), found);
    }
    former.insert(former.end(), seen.begin(), seen.end());
    return former;
}

void Client::Rebase::executeInstead(const Action& own, const Operation& predicted, Bridge::Mark before,
                                    const Operation& happened)
{
    _client._replica.getExecutor().reverse(*cloneOperation(predicted));
    onTakenBack(predicted);
    _bridge.returnTo(std::move(before));
    const bool isUndo = own._meaning && own._meaning->_isUndo;
    const OperationUPtr planned =
        _bridge.cross(*own._operation, isUndo ? Bridge::Values::Yields : Bridge::Values::LaterStands);
    _client._replica.executeAgain(happened);
    onCarriedOut(*planned, happened);
    _bridge.appendChange(*own._operation, *planned, happened);
}

/// It comes in the state of the history, in which the document is.
void Client::Rebase::takeIn(const SelectionMoved& moved)
{
    Selections& selections = moved._client == _client._id ? _ownSelection : _selections;
    selections.erase(moved._client);
    if (moved._selection)
    {
        selections.emplace(moved._client, *moved._selection);
    }
}

Action Client::Rebase::getAction(std::size_t index) const
{
    const Pending& pending = _client._pending[index];
    return {cloneOperation(*pending._operation), pending._meaning};
}

void Client::Rebase::finish()
{
    for (std::size_t index = _acknowledgedCount; index < _client._pending.size(); ++index)
    {
        runAgain(index);
    }
    _isFinished = true;
    commit();
}

void Client::Rebase::runAgain(std::size_t index)
{
    ++_client._statistics._rebasedCount;
    ActionRunner::Outcome outcome =
        ActionRunner(_client._replica, _bridge, _client._statistics, *this).run(getAction(index));
    const Pending& pending = _client._pending[index];
    _again.push_back({cloneOperation(*outcome._happened._operation), outcome._happened._meaning, pending._firstID,
                      pending._lastID, findFormerLooks(pending, outcome._happened, outcome._looksOfOthers)});
    // What is under way, the server judges.
    if (outcome._refusal && index >= _client._underWayCount)
    {
        _refusals.emplace_back(index, *outcome._refusal);
    }
}

void Client::Rebase::commit()
{
    for (Entry& entry : _entries)
    {
        if (entry._acknowledged < 0)
        {
            _client.append(entry._entry);
        }
        else
        {
            Pending& acknowledged = _client._pending[static_cast<std::size_t>(entry._acknowledged)];
            acknowledged._formerLooks = std::move(entry._formerLooks);
            _client.acknowledge(std::move(acknowledged), entry._entry);
        }
    }
    for (const auto& [index, refusal] : _refusals)
    {
        _client.refuse(_client._pending[index], refusal);
    }
    _client._underWayCount -= _acknowledgedCount;
    _client._selections = std::move(_selections);
    _client._ownSelection = std::move(_ownSelection);
    _client._pending = std::move(_again);
    _client.dropRefused();
}

void Client::Rebase::onCarriedOut(const Operation& planned, const Operation& happened)
{
    followChangedInsertion(planned, happened, _ownSelection);
    includeInSelections(_client._selectionTransformer, happened, _selections);
    includeInSelections(_client._selectionTransformer, happened, _ownSelection);
}

void Client::Rebase::onTakenBack(const Operation& happened)
{
    excludeFromSelections(_client._selectionTransformer, happened, _selections);
    excludeFromSelections(_client._selectionTransformer, happened, _ownSelection);
}

void Client::Rebase::forEachBefore(CallableRef<bool(const Operation&)> pass) const
{
    for (auto pending = _again.rbegin(); pending != _again.rend(); ++pending)
    {
        if (!pass(*pending->_operation))
        {
            return;
        }
    }
    for (auto entry = _entries.rbegin(); entry != _entries.rend(); ++entry)
    {
        if (!pass(*entry->_entry->_action._operation))
        {
            return;
        }
    }
    _client._undoLog->forEachEntry(pass);
}

/// The client's copy, what has come in since, and what of the pending actions has run again.
void Client::Rebase::restore(std::span<const ActionRunner::OperationPtr> done)
{
    std::vector<const Operation*> operations;
    for (const Entry& entry : _entries)
    {
        operations.push_back(entry._entry->_action._operation.get());
    }
    for (const Pending& pending : _again)
    {
        operations.push_back(pending._operation.get());
    }
    for (const ActionRunner::OperationPtr& operation : done)
    {
        operations.push_back(operation.get());
    }
    _client._statistics._replayedCount += _client._checkpoint->getEntries().size();
    _client._checkpoint->restore(_client._replica, operations);
}

} // namespace Zem::CollaborationSession

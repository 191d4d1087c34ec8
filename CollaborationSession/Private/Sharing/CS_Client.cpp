#include "Sharing/CS_Client.h"

#include "Editing/CS_ExecuteAsTheyStand.h"
#include "Editing/CS_InvalidEditError.h"
#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_Checkpoint.h"
#include "Sharing/CS_ExecuteStably.h"
#include "Sharing/CS_Looks.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Receipt.h"
#include "Sharing/CS_RequireThrowingHandler.h"
#include "Sharing/CS_UndoLog.h"

#include "CE_AfterDocumentActionSignal.h"
#include "DClb_DocumentPositionTransformer.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// How many entries pass before the client tells what it has if it has nothing else to tell.
constexpr Revision tellInterval = 1024;

/// Each client has ids of its own: those of client n begin at n times this. All stay below 2^53.
constexpr Operation::Id operationIDsOfAClient = Operation::Id(1) << 32;

void requireWhole(const HistoryEntryPtr& entry)
{
    if (!entry || !entry->_action._operation)
    {
        throw InvalidMessageError("An entry of the history holds an operation");
    }
}

const Snapshot& requireWhole(const Snapshot& snapshot)
{
    if (!snapshot._document)
    {
        throw InvalidMessageError("A snapshot holds a document");
    }
    for (const HistoryEntryPtr& entry : snapshot._entries)
    {
        requireWhole(entry);
    }
    return snapshot;
}

void requireWhole(std::span<const ServerMessage> messages)
{
    for (const ServerMessage& message : messages)
    {
        if (const auto* happened = std::get_if<ActionHappened>(&message))
        {
            requireWhole(happened->_entry);
        }
    }
}

} // namespace

class Client::LocalExecutor final : public OperationExecutor
{
public:
    explicit LocalExecutor(Client& client)
        : _client(client)
    {
    }

    bool executeAndChangeIfNeeded(Operation& operation, OperationUPtr& changedOp) override
    {
        return _client.executeOwn(operation, changedOp);
    }

    void reverse(Operation& operation) override
    {
        _client.reverseOwn(operation);
    }

    AfterDocumentActionSignal& getAfterDocumentActionSignal() override
    {
        return _client._replica.getExecutor().getAfterDocumentActionSignal();
    }

private:
    Client& _client;
};

Client::Client(ClientID id, const Snapshot& snapshot, ClientSettings settings)
    : _id(id)
    , _settings(settings)
    , _replica(snapshot._kind, *requireWhole(snapshot)._document)
    , _selectionTransformer(std::make_shared<DOMCollaboration::DocumentPositionTransformer>())
    , _executor(std::make_unique<LocalExecutor>(*this))
    , _revision(snapshot._revision + snapshot._entries.size())
    , _toldRevision(snapshot._revision)
    , _nextOperationID(id * operationIDsOfAClient)
    , _checkpoint(std::make_unique<Checkpoint>(snapshot._kind, snapshot._document, snapshot._entries,
                                               settings._checkpointInterval))
    , _undoLog(std::make_unique<UndoLog>(_replica.getTransformer(), settings._undoEntriesCount))
    , _selections(snapshot._selections)
{
    requireThrowingHandler();
    _replica.setOnDocumentReplaced([this] { tellReplacement(); });
    for (const HistoryEntryPtr& entry : _checkpoint->getEntries())
    {
        _replica.executeAgain(*entry->_action._operation);
    }
}

Client::~Client() = default;

OperationExecutor& Client::getExecutor()
{
    return *_executor;
}

std::size_t Client::getKeptEntriesCount() const
{
    return _checkpoint->getEntries().size();
}

std::vector<ActionRange> Client::getPendingActions() const
{
    std::vector<ActionRange> actions;
    for (std::size_t index = 0; index < _pending.size(); ++index)
    {
        if (index < _underWayCount || !cast<EmptyOperation>(_pending[index]._operation.get()))
        {
            actions.push_back({_pending[index]._firstID, _pending[index]._lastID});
        }
    }
    return actions;
}

boost::optional<ClientBatch> Client::takeBatch()
{
    if (_isTooFarBehind || (_underWayCount > 0 && !_isToBeSentAgain))
    {
        return boost::none;
    }
    if (_underWayCount == 0)
    {
        dropRefused();
        if (isQuiet() && _revision - _toldRevision < tellInterval)
        {
            return boost::none;
        }
        composeTyping();
        _underWayCount = _pending.size();
        _lastNumber += _underWayCount;
    }
    _isToBeSentAgain = false;
    ClientBatch batch;
    batch._base = _revision;
    batch._firstNumber = _lastNumber - _underWayCount + 1;
    batch._actions.reserve(_underWayCount);
    for (std::size_t index = 0; index < _underWayCount; ++index)
    {
        batch._actions.push_back({cloneOperation(*_pending[index]._operation), _pending[index]._meaning});
    }
    if (_isSelectionNew && findOwnSelection() && _underWayCount == _pending.size())
    {
        batch._selection = std::make_shared<const Selection>(*findOwnSelection());
        _isSelectionNew = false;
    }
    _toldRevision = _revision;
    return batch;
}

void Client::receive(std::span<const ServerMessage> messages)
{
    requireWhole(messages);
    // What happened has happened, whatever an observer makes of it.
    ObserverFanOut::Postponement postponement(_replica.getNotifications());
    Receipt receipt(*this);
    {
        const auto silence = _replica.getExecutor().getSetSilentModeGuard();
        receipt.takeIn(messages);
    }
    takeCheckpointIfDue();
    if (receipt.hasExecuted())
    {
        postponement.tell([this] { _replica.getExecutor().getAfterDocumentActionSignal()(); });
    }
    postponement.rethrow();
}

void Client::resume()
{
    _isToBeSentAgain = _underWayCount > 0;
    _isSelectionNew = findOwnSelection() != nullptr;
}

void Client::setSelection(Selection selection)
{
    _ownSelection.insert_or_assign(_id, std::move(selection));
    _isSelectionNew = true;
}

const Selection* Client::findOwnSelection() const
{
    return _ownSelection.empty() ? nullptr : &_ownSelection.begin()->second;
}

const Selection* Client::findSelection(ClientID owner) const
{
    const auto found = _selections.find(owner);
    return owner == _id ? findOwnSelection() : found == _selections.end() ? nullptr : &found->second;
}

void Client::addReplacementObserver(const std::shared_ptr<ReplacementObserver>& observer)
{
    std::erase_if(_replacementObservers, [](const auto& other) { return other.expired(); });
    _replacementObservers.push_back(observer);
}

void Client::tellReplacement()
{
    for (const auto& weakObserver : _replacementObservers)
    {
        if (const auto observer = weakObserver.lock())
        {
            observer->onDocumentReplaced();
        }
    }
    if (_onDocumentReplaced)
    {
        _onDocumentReplaced();
    }
}

std::vector<Client::RefusedAction> Client::takeRefusals()
{
    std::vector<RefusedAction> refusals(_refusals.begin(), _refusals.end());
    _refusals.clear();
    return refusals;
}

bool Client::executeOwn(Operation& operation, OperationUPtr& changedOp)
{
    operation.setIDIfNeeded(_nextOperationID);
    bool isChanged = false;
    try
    {
        isChanged = executeStably(_replica.getExecutor(), operation, changedOp);
    }
    catch (...)
    {
        restoreDocument();
        throw;
    }
    addPending(cloneOperation(isChanged ? *changedOp : operation), nullptr);
    return isChanged;
}

void Client::perform(Operations& operations, std::shared_ptr<const Meaning> meaning)
{
    for (const OperationUPtr& operation : operations)
    {
        operation->setIDIfNeeded(_nextOperationID);
    }
    try
    {
        executeAsTheyStand(_replica.getExecutor(), operations);
    }
    catch (const InvalidEditError&)
    {
        throw;
    }
    catch (...)
    {
        restoreDocument();
        throw;
    }
    if (!operations.empty())
    {
        std::vector<OperationUPtr> parts;
        for (const OperationUPtr& operation : operations)
        {
            parts.push_back(cloneOperation(*operation));
        }
        OperationUPtr happened = makeOperationFromParts(std::move(parts));
        happened->setIDIfNeeded(_nextOperationID);
        addPending(std::move(happened), std::move(meaning));
    }
}

void Client::addPending(OperationUPtr happened, std::shared_ptr<const Meaning> meaning, ActionID undoes)
{
    includeInAll(*happened);
    if (_pendingNodes)
    {
        _pendingNodes->add(*happened);
    }
    ++_lastAction;
    std::vector<LookSetting> formerLooks =
        meaning ? findFormerLooks(_replica.getAdapter(), *happened, *meaning) : std::vector<LookSetting>();
    _pending.push_back({std::move(happened), std::move(meaning), _lastAction, _lastAction, std::move(formerLooks)});
    _ownActions.push_back({_lastAction, _lastAction, undoes, 0});
    forgetOldActions();
}

void Client::reverseOwn(const Operation& operation)
{
    const bool isLastUnsent =
        _pending.size() > _underWayCount && _pending.back()._operation->getID() == operation.getID();
    ZEM_ASSERT(isLastUnsent);
    takeBackLast();
}

void Client::takeBack(Operations& operations)
{
    const auto getLastID = [](const Operation& operation)
    {
        const auto* composite = cast<CompositeOperation>(&operation);
        return composite ? composite->getParts().back()->getID() : operation.getID();
    };
    const bool isLastUnsent = !operations.empty() && _pending.size() > _underWayCount &&
                              getLastID(*_pending.back()._operation) == operations.back()->getID();
    ZEM_ASSERT(isLastUnsent);
    takeBackLast();
}

void Client::takeBackLast()
{
    excludeFromAll(*_pending.back()._operation);
    _pendingNodes.reset();
    const Pending last = std::move(_pending.back());
    _pending.pop_back();
    forgetAction(last._lastID);
    try
    {
        _replica.getExecutor().reverse(*last._operation);
    }
    catch (...)
    {
        // What an observer makes of it doesn't bring the action back.
        restoreDocument();
    }
}

/// They are remembered until pending operations are taken back. What was acknowledged meanwhile is no harm among them.
const ChangedNodes& Client::getPendingNodes()
{
    if (!_pendingNodes)
    {
        _pendingNodes = std::make_unique<ChangedNodes>();
        for (const Pending& pending : _pending)
        {
            _pendingNodes->add(*pending._operation);
        }
    }
    return *_pendingNodes;
}

/// The history has grown by what is in the document already.
void Client::append(const HistoryEntryPtr& entry)
{
    ++_revision;
    _checkpoint->append(entry);
    _undoLog->pass(entry);
}

/// An own action is in the history: `pending`, as it stood here, or what the server made of it.
void Client::acknowledge(Pending pending, const HistoryEntryPtr& entry)
{
    append(entry);
    if (entry->_refusal)
    {
        refuse(pending, *entry->_refusal);
    }
    const bool mayBeUndone = findOwnAction(pending._lastID) != nullptr;
    if (isNothing(entry->_action))
    {
        forgetAction(pending._lastID);
    }
    else if (mayBeUndone)
    {
        _undoLog->add(pending._lastID,
                      {entry->_action._operation, entry->_action._meaning, std::move(pending._formerLooks)});
    }
}

void Client::refuse(const Pending& pending, const Refusal& refusal)
{
    _refusals.push_back({pending._lastID, refusal});
    if (_refusals.size() > _settings._refusalsCount)
    {
        _refusals.pop_front();
    }
}

/// What nothing is left of isn't sent. Of what is under way the place is kept for what the server says.
void Client::dropRefused()
{
    for (std::size_t index = _underWayCount; index < _pending.size();)
    {
        if (cast<EmptyOperation>(_pending[index]._operation.get()))
        {
            forgetAction(_pending[index]._lastID);
            _pending.erase(_pending.begin() + static_cast<std::ptrdiff_t>(index));
            continue;
        }
        ++index;
    }
}

/// Makes the document again: the copy, what happened since, the pending operations as they stand, and what was done of
/// an action that isn't among these yet.
void Client::restoreDocument(std::span<const std::shared_ptr<const Operation>> behindPending)
{
    _statistics._replayedCount += _checkpoint->getEntries().size();
    std::vector<const Operation*> operations;
    for (const Pending& pending : _pending)
    {
        operations.push_back(pending._operation.get());
    }
    for (const auto& operation : behindPending)
    {
        operations.push_back(operation.get());
    }
    _checkpoint->restore(_replica, operations);
}

/// A document with pending operations is that of no revision.
void Client::takeCheckpointIfDue()
{
    _checkpoint->renewIfDue(_pending.empty() ? &_replica.getDocument() : nullptr);
}

void Client::includeInAll(const Operation& operation)
{
    includeInSelections(_selectionTransformer, operation, _selections);
    includeInSelections(_selectionTransformer, operation, _ownSelection);
}

void Client::excludeFromAll(const Operation& operation)
{
    excludeFromSelections(_selectionTransformer, operation, _selections);
    excludeFromSelections(_selectionTransformer, operation, _ownSelection);
}

} // namespace Zem::CollaborationSession

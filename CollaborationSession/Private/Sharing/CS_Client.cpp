#include "Sharing/CS_Client.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_Checkpoint.h"
#include "Sharing/CS_ComposedTyping.h"
#include "Sharing/CS_ExecuteStably.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Receipt.h"
#include "Sharing/CS_UndoSearch.h"

#include "CE_AfterDocumentActionSignal.h"
#include "DClb_DocumentPositionTransformer.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <set>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// How many entries pass before the client tells what it has if it has nothing else to tell.
constexpr Revision tellInterval = 1024;

/// Each client has ids of its own: those of client n begin at n times this.
constexpr Operation::Id operationIDsOfAClient = Operation::Id(1) << 40;

void requireWhole(const HistoryEntryPtr& entry)
{
    if (!entry || !entry->_operation)
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
        if (const auto* happened = std::get_if<OperationHappened>(&message))
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

Client::Client(ClientID id, const Snapshot& snapshot, Revision checkpointInterval)
    : _id(id)
    , _replica(snapshot._kind, *requireWhole(snapshot)._document)
    , _selectionTransformer(std::make_shared<DOMCollaboration::DocumentPositionTransformer>())
    , _executor(std::make_unique<LocalExecutor>(*this))
    , _revision(snapshot._revision + snapshot._entries.size())
    , _toldRevision(snapshot._revision)
    , _nextOperationID(id * operationIDsOfAClient)
    , _checkpoint(
          std::make_unique<Checkpoint>(snapshot._kind, snapshot._document, snapshot._entries, checkpointInterval))
    , _selections(snapshot._selections)
{
    for (const HistoryEntryPtr& entry : _checkpoint->getEntries())
    {
        _replica.executeAgain(*entry->_operation);
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

OperationUPtr Client::makeUndo(Operation::Id operationID)
{
    if (_undoings.contains(operationID))
    {
        return nullptr;
    }
    UndoSearch search(_replica.getTransformer(), operationID);
    for (const HistoryEntryPtr& entry : _checkpoint->getEntries())
    {
        search.pass(*entry->_operation, entry->_author == _id);
    }
    for (const OperationUPtr& operation : _pending)
    {
        search.pass(*operation, true);
    }
    OperationUPtr undoing = search.makeUndo();
    if (!undoing)
    {
        return nullptr;
    }
    undoing->setIDIfNeeded(_nextOperationID);
    _undoings.emplace(operationID, *undoing->getID());
    return undoing;
}

boost::optional<ClientBatch> Client::takeBatch()
{
    if (_underWayCount > 0)
    {
        return boost::none;
    }
    std::erase_if(_pending, [](const OperationUPtr& operation) { return cast<EmptyOperation>(operation.get()); });
    if (isQuiet() && _revision - _toldRevision < tellInterval)
    {
        return boost::none;
    }
    composeTyping();
    ClientBatch batch;
    batch._base = _revision;
    batch._firstNumber = _lastNumber + 1;
    batch._operations.reserve(_pending.size());
    for (const OperationUPtr& operation : _pending)
    {
        batch._operations.push_back(cloneOperation(*operation));
    }
    if (_isSelectionNew && findOwnSelection())
    {
        batch._selection = std::make_shared<const Selection>(*findOwnSelection());
    }
    _lastNumber += _pending.size();
    _underWayCount = _pending.size();
    _toldRevision = _revision;
    _isSelectionNew = false;
    return batch;
}

void Client::receive(std::span<const ServerMessage> messages)
{
    requireWhole(messages);
    // What happened has happened, whatever an observer makes of it.
    ObserverFanOut::Postponement postponement(_replica.getNotifications());
    Receipt receipt(*this);
    try
    {
        const auto silence = _replica.getExecutor().getSetSilentModeGuard();
        receipt.takeIn(messages);
    }
    catch (...)
    {
        receipt.giveUp();
        throw;
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
    _lastNumber -= _underWayCount;
    _underWayCount = 0;
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

std::vector<Client::Refusal> Client::takeRefusals()
{
    return std::exchange(_refusals, {});
}

bool Client::executeOwn(Operation& operation, OperationUPtr& changedOp)
{
    operation.setIDIfNeeded(_nextOperationID);
    bool isChanged = false;
    try
    {
        isChanged = executeStably(_replica.getExecutor(), operation, changedOp, [this] { restoreDocument(_pending); });
    }
    catch (...)
    {
        forgetUndoing(operation);
        restoreDocument(_pending);
        throw;
    }
    const Operation& happened = isChanged ? *changedOp : operation;
    includeInAll(happened);
    _pending.push_back(cloneOperation(happened));
    if (_pendingNodes)
    {
        _pendingNodes->add(happened);
    }
    return isChanged;
}

void Client::reverseOwn(const Operation& operation)
{
    const bool isLastUnsent = _pending.size() > _underWayCount && _pending.back()->getID() == operation.getID();
    ZEM_ASSERT(isLastUnsent);
    excludeFromAll(*_pending.back());
    _pendingNodes.reset();
    try
    {
        _replica.getExecutor().reverse(*_pending.back());
        _pending.pop_back();
    }
    catch (...)
    {
        // Some deletions can't be taken back exactly (see Rebase).
        _pending.pop_back();
        restoreDocument(_pending);
    }
}

/// What is under way stays as the server gets it.
void Client::composeTyping()
{
    if (_composesTyping)
    {
        composeNeighbours(_pending, _underWayCount);
    }
}

/// They are remembered until pending operations are taken back. What was confirmed meanwhile is no harm among them.
const ChangedNodes& Client::getPendingNodes()
{
    if (!_pendingNodes)
    {
        _pendingNodes = std::make_unique<ChangedNodes>(_pending);
    }
    return *_pendingNodes;
}

/// The history has grown by what is in the document already.
void Client::append(const HistoryEntryPtr& entry)
{
    ++_revision;
    _checkpoint->append(entry);
}

/// What was refused here before has no id any more: its author isn't told again when the server rejects it, too.
void Client::refuse(const Operation& operation, const std::string& reason)
{
    if (const auto id = operation.getID())
    {
        _refusals.push_back({*id, reason});
    }
    forgetUndoing(operation);
}

/// If `operation` undid something, that may be undone again.
void Client::forgetUndoing(const Operation& operation)
{
    std::erase_if(_undoings, [&](const auto& undoing) { return undoing.second == operation.getID(); });
}

/// Makes the document again: the copy, what happened since, and the pending operations as they stand.
void Client::restoreDocument(std::span<const OperationUPtr> pending)
{
    _statistics._replayedCount += _checkpoint->getEntries().size();
    _checkpoint->restore(_replica, pending);
}

/// A document with pending operations is that of no revision.
void Client::takeCheckpointIfDue()
{
    if (_checkpoint->renewIfDue(_pending.empty() ? &_replica.getDocument() : nullptr))
    {
        forgetOldUndoings();
    }
}

/// Nobody can undo an operation that is neither kept nor pending any more.
void Client::forgetOldUndoings()
{
    std::set<Operation::Id> knownIDs;
    const auto addID = [&](const Operation& operation)
    {
        if (const auto id = operation.getID())
        {
            knownIDs.insert(*id);
        }
    };
    for (const HistoryEntryPtr& entry : _checkpoint->getEntries())
    {
        addID(*entry->_operation);
    }
    for (const OperationUPtr& operation : _pending)
    {
        addID(*operation);
    }
    std::erase_if(_undoings, [&](const auto& undoing) { return !knownIDs.contains(undoing.first); });
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

#include "CS_Client.h"

#include "CS_Bridge.h"
#include "CS_ComposedTyping.h"
#include "CS_ExecuteStably.h"
#include "CS_MoveSelections.h"
#include "CS_Overloaded.h"
#include "CS_Rebase.h"
#include "CS_Savepoint.h"
#include "CS_Stopwatch.h"

#include "CE_InverseOperation.h"
#include "CE_OperationEquality.h"
#include "DClb_DocumentPositionTransformer.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <iterator>
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
    , _checkpoint(snapshot._document)
    , _entriesSinceCheckpoint(snapshot._entries)
    , _checkpointInterval(checkpointInterval)
    , _selections(snapshot._selections)
{
    for (const HistoryEntryPtr& entry : _entriesSinceCheckpoint)
    {
        _replica.executeAgain(*entry->_operation);
    }
}

Client::~Client() = default;

OperationExecutor& Client::getExecutor()
{
    return *_executor;
}

OperationUPtr Client::makeUndo(Operation::Id operationID)
{
    if (_undoings.contains(operationID))
    {
        return nullptr;
    }
    const Operation* undone = nullptr;
    Bridge later(_replica.getTransformer());
    const auto pass = [&](const Operation& operation, bool isOwn)
    {
        if (undone)
        {
            later.append(cloneOperation(operation));
        }
        else if (isOwn && operation.getID() == operationID)
        {
            undone = &operation;
        }
    };
    for (const HistoryEntryPtr& entry : _entriesSinceCheckpoint)
    {
        pass(*entry->_operation, entry->_author == _id);
    }
    for (const OperationUPtr& operation : _pending)
    {
        pass(*operation, true);
    }
    if (!undone)
    {
        return nullptr;
    }
    OperationUPtr undoing;
    try
    {
        undoing = later.cross(*CollaborationEngine::makeUndo(*undone, _replica.getTransformer()));
    }
    catch (const std::exception&)
    {
        // Some nodes take only one setting at a time: theirs can't be brought past another.
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
    boost::optional<Savepoint> savepoint;
    try
    {
        takeIn(messages, savepoint);
    }
    catch (...)
    {
        if (savepoint)
        {
            std::move(*savepoint).restore(*this);
        }
        throw;
    }
    takeCheckpointIfDue();
}

/// `savepoint` is made before anything that may fail.
void Client::takeIn(std::span<const ServerMessage> messages, boost::optional<Savepoint>& savepoint)
{
    boost::optional<Rebase> rebase;
    const auto rebasing = [&]() -> Rebase&
    {
        if (!rebase)
        {
            savepoint.emplace(*this);
            rebase.emplace(*this);
        }
        return *rebase;
    };
    const Overloaded takeIn{[&](const OperationHappened& happened)
                            {
                                if (!rebase && confirms(happened))
                                {
                                    confirm(happened._entry);
                                    return;
                                }
                                rebasing().takeIn(happened._entry);
                            },
                            [&](const OperationRejected& rejected)
                            {
                                // One that came in before the connection broke may come again.
                                if (rejected._number > _lastNumber - _underWayCount)
                                {
                                    rebasing().takeIn(rejected);
                                }
                            },
                            [&](const SelectionMoved& moved)
                            { takeInSelection(moved, rebase ? std::span<const OperationUPtr>() : _pending); }};
    for (const ServerMessage& message : messages)
    {
        std::visit(takeIn, message);
    }
    if (rebase)
    {
        rebase->finish();
    }
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
    return isChanged;
}

void Client::reverseOwn(const Operation& operation)
{
    const bool isLastUnsent = _pending.size() > _underWayCount && _pending.back()->getID() == operation.getID();
    ZEM_ASSERT(isLastUnsent);
    excludeFromAll(*_pending.back());
    try
    {
        _replica.getExecutor().reverse(*_pending.back());
        _pending.pop_back();
    }
    catch (const std::exception&)
    {
        // Some deletions can't be taken back exactly (see Rebase).
        _pending.pop_back();
        restoreDocument(_pending);
    }
}

/// Puts neighbouring keystrokes among the operations that aren't under way together.
void Client::composeTyping()
{
    if (!_composesTyping || _pending.size() < _underWayCount + 2)
    {
        return;
    }
    const auto firstUnsent = _pending.begin() + static_cast<std::ptrdiff_t>(_underWayCount);
    std::vector<OperationUPtr> composed;
    ComposedTyping typing;
    const auto close = [&]
    {
        for (OperationUPtr& operation : typing.makeOperations())
        {
            composed.push_back(std::move(operation));
        }
        typing = ComposedTyping();
    };
    for (auto operation = firstUnsent; operation != _pending.end(); ++operation)
    {
        if (typing.takeIn(**operation))
        {
            continue;
        }
        close();
        if (!typing.takeIn(**operation))
        {
            composed.push_back(std::move(*operation));
        }
    }
    close();
    _pending.erase(firstUnsent, _pending.end());
    std::move(composed.begin(), composed.end(), std::back_inserter(_pending));
}

/// Whether the entry is the oldest own operation, as it stands here.
bool Client::confirms(const OperationHappened& happened) const
{
    return happened._entry->_author == _id && _underWayCount > 0 &&
           areDeeplyEqual(*_pending.front(), *happened._entry->_operation);
}

void Client::confirm(const HistoryEntryPtr& entry)
{
    _pending.erase(_pending.begin());
    --_underWayCount;
    ++_revision;
    ++_statistics._confirmedCount;
    _entriesSinceCheckpoint.push_back(entry);
}

/// `pending` are the operations that are in the document and that the server doesn't know.
void Client::takeInSelection(const SelectionMoved& moved, std::span<const OperationUPtr> pending)
{
    const bool isOwn = moved._client == _id;
    if (isOwn && _isSelectionNew)
    {
        return;
    }
    Selections& selections = isOwn ? _ownSelection : _selections;
    selections.erase(moved._client);
    if (!moved._selection)
    {
        return;
    }
    Selections single = {{moved._client, *moved._selection}};
    for (const OperationUPtr& operation : pending)
    {
        includeInSelections(_selectionTransformer, *operation, single);
    }
    selections.merge(single);
}

/// The first reason counts: what the server rejected often can't be placed here either.
void Client::refuse(const Operation& operation, const std::string& reason)
{
    const auto id = operation.getID();
    const auto isOfOperation = [&](const Refusal& refusal) { return refusal._operationID == id; };
    if (id && std::none_of(_refusals.begin(), _refusals.end(), isOfOperation))
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
    std::vector<const Operation*> operations = getOldestEntries(_entriesSinceCheckpoint.size());
    _statistics._replayedCount += operations.size();
    for (const OperationUPtr& operation : pending)
    {
        operations.push_back(operation.get());
    }
    _replica.replaceDocument(*_checkpoint, operations);
}

std::vector<const Operation*> Client::getOldestEntries(std::size_t count) const
{
    std::vector<const Operation*> operations;
    operations.reserve(count);
    for (std::size_t index = 0; index < count; ++index)
    {
        operations.push_back(_entriesSinceCheckpoint[index]->_operation.get());
    }
    return operations;
}

/// A document with pending operations is that of no revision. While it never comes to be without them, the copy is
/// brought up to date by itself.
void Client::takeCheckpointIfDue()
{
    const std::size_t count = _entriesSinceCheckpoint.size();
    const std::size_t passedCount = count - std::min<std::size_t>(count, _checkpointInterval);
    if (_pending.empty() && count >= _checkpointInterval)
    {
        _checkpoint = std::make_shared<const DOM::Document>(_replica.getDocument());
        forgetOldestEntries(count);
    }
    else if (passedCount > _checkpointInterval)
    {
        _checkpoint = std::make_shared<const DOM::Document>(
            Replica::replay(_replica.getKind(), *_checkpoint, getOldestEntries(passedCount)));
        forgetOldestEntries(passedCount);
    }
}

/// Forgets what was undone, too, of operations that nobody can undo any more.
void Client::forgetOldestEntries(std::size_t count)
{
    _entriesSinceCheckpoint.erase(_entriesSinceCheckpoint.begin(),
                                  _entriesSinceCheckpoint.begin() + static_cast<std::ptrdiff_t>(count));
    std::set<Operation::Id> knownIDs;
    const auto addID = [&](const Operation& operation)
    {
        if (const auto id = operation.getID())
        {
            knownIDs.insert(*id);
        }
    };
    for (const HistoryEntryPtr& entry : _entriesSinceCheckpoint)
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

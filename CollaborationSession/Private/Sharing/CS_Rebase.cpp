#include "Sharing/CS_Rebase.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_ExecuteStably.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_Stopwatch.h"

#include "CE_InverseOperation.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <exception>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Client::Rebase::Rebase(Client& client)
    : _client(client)
    , _bridge(client.getTransformer())
{
    const Stopwatch stopwatch(_client._statistics._reversingTime);
    _client.composeTyping();
    _client._pendingNodes.reset();
    for (auto pending = _client._pending.rbegin(); pending != _client._pending.rend(); ++pending)
    {
        _client.excludeFromAll(**pending);
    }
    try
    {
        for (auto pending = _client._pending.rbegin(); pending != _client._pending.rend(); ++pending)
        {
            _client._replica.getExecutor().reverse(**pending);
        }
    }
    catch (const std::exception&)
    {
        // The grammar of texts lets a paragraph stay open behind an atomic run that an atomic block follows. What
        // closed it can't be taken back then.
        _client.restoreDocument({});
    }
}

void Client::Rebase::takeIn(const HistoryEntryPtr& entry)
{
    const bool isOwn = entry->_author == _client._id;
    const OperationUPtr oldest = isOwn ? takeOldest() : nullptr;
    const OperationUPtr planned = isOwn ? place(*oldest)._planned : nullptr;
    {
        const Stopwatch stopwatch(_client._statistics._executingTime);
        _client._replica.executeAgain(*entry->_operation);
    }
    if (planned)
    {
        followChangedInsertion(*planned, *entry->_operation, _client._ownSelection);
    }
    _client.includeInAll(*entry->_operation);
    ++_client._statistics._executedCount;
    _client.append(entry);
    if (!isOwn)
    {
        _bridge.append(std::shared_ptr<const Operation>(entry->_operation));
    }
    else if (planned)
    {
        _bridge.appendChange(*oldest, *planned, *entry->_operation);
    }
}

void Client::Rebase::takeIn(const OperationRejected& rejection)
{
    const OperationUPtr oldest = takeOldest();
    _client.refuse(*oldest, rejection._reason);
    if (place(*oldest)._planned)
    {
        leaveOut(*oldest);
    }
}

void Client::Rebase::finish()
{
    std::vector<OperationUPtr> pending = std::move(_client._pending);
    _client._pending.clear();
    for (std::size_t index = 0; index < pending.size(); ++index)
    {
        OperationUPtr happened = doAgain(*pending[index]);
        if (!happened && index < _client._underWayCount)
        {
            happened = std::make_unique<EmptyOperation>();
        }
        if (happened)
        {
            _again.push_back(std::move(happened));
        }
    }
    _client._pending = std::move(_again);
}

/// The oldest pending operation, which is under way no more.
OperationUPtr Client::Rebase::takeOldest()
{
    const bool isUnderWay = _client._underWayCount > 0;
    ZEM_ASSERT(isUnderWay);
    OperationUPtr oldest = std::move(_client._pending.front());
    _client._pending.erase(_client._pending.begin());
    --_client._underWayCount;
    return oldest;
}

/// Nothing that was made behind an operation that can't be placed can be placed either.
Client::Rebase::Placement Client::Rebase::place(const Operation& operation)
{
    const Stopwatch stopwatch(_client._statistics._transformingTime);
    if (!_isBridgeWhole)
    {
        return {nullptr, "It was made behind one that can't be placed any more."};
    }
    try
    {
        return {_bridge.cross(operation), std::string()};
    }
    catch (const std::exception& error)
    {
        _isBridgeWhole = false;
        return {nullptr, error.what()};
    }
}

/// What happened; null if the operation was refused.
OperationUPtr Client::Rebase::doAgain(const Operation& operation)
{
    Placement placement = place(operation);
    if (!placement._planned)
    {
        _client.refuse(operation, placement._whyNot);
        return nullptr;
    }
    return executeAgain(operation, std::move(placement._planned));
}

/// What happened; null if the document refused it with a failure.
OperationUPtr Client::Rebase::executeAgain(const Operation& original, OperationUPtr planned)
{
    Statistics& statistics = _client._statistics;
    ++statistics._rebasedCount;
    statistics._shadowedCount += cast<ShadowedOperation>(planned.get()) ? 1 : 0;
    OperationUPtr changed;
    try
    {
        const Stopwatch stopwatch(statistics._executingTime);
        executeStably(_client._replica.getExecutor(), *planned, changed, [this] { _client.restoreDocument(_again); });
    }
    catch (const std::exception& error)
    {
        ++statistics._rejectedCount;
        _client.refuse(*planned, error.what());
        _client.restoreDocument(_again);
        leaveOut(original);
        return nullptr;
    }
    if (changed)
    {
        ++statistics._changedCount;
        _bridge.appendChange(original, *planned, *changed);
        followChangedInsertion(*planned, *changed, _client._ownSelection);
        planned = std::move(changed);
    }
    _client.includeInAll(*planned);
    return planned;
}

/// What was made behind an operation goes on without it.
void Client::Rebase::leaveOut(const Operation& original)
{
    try
    {
        _bridge.refuse(original);
    }
    catch (const std::exception&)
    {
        _isBridgeWhole = false;
    }
}

} // namespace Zem::CollaborationSession

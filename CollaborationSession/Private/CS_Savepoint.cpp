#include "CS_Savepoint.h"

#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Client::Savepoint::Savepoint(const Client& client)
    : _underWayCount(client._underWayCount)
    , _revision(client._revision)
    , _entriesCount(client._entriesSinceCheckpoint.size())
    , _undoings(client._undoings)
    , _selections(client._selections)
    , _ownSelection(client._ownSelection)
    , _refusalsCount(client._refusals.size())
{
    _pending.reserve(client._pending.size());
    for (const OperationUPtr& operation : client._pending)
    {
        _pending.push_back(cloneOperation(*operation));
    }
}

void Client::Savepoint::restore(Client& client) &&
{
    const auto cut = [](auto& container, std::size_t count)
    { container.erase(container.begin() + static_cast<std::ptrdiff_t>(count), container.end()); };
    client._pending = std::move(_pending);
    client._underWayCount = _underWayCount;
    client._revision = _revision;
    cut(client._entriesSinceCheckpoint, _entriesCount);
    client._undoings = std::move(_undoings);
    client._selections = std::move(_selections);
    client._ownSelection = std::move(_ownSelection);
    cut(client._refusals, _refusalsCount);
    client.restoreDocument(client._pending);
}

} // namespace Zem::CollaborationSession

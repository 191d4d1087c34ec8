#include "Sharing/CS_Savepoint.h"

#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_Checkpoint.h"

#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Client::Savepoint::Savepoint(const Client& client)
    : _underWayCount(client._underWayCount)
    , _revision(client._revision)
    , _entriesCount(client._checkpoint->getEntries().size())
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
    client._pending = std::move(_pending);
    client._pendingNodes.reset();
    client._underWayCount = _underWayCount;
    client._revision = _revision;
    client._checkpoint->shrink(_entriesCount);
    client._undoings = std::move(_undoings);
    client._selections = std::move(_selections);
    client._ownSelection = std::move(_ownSelection);
    client._refusals.erase(client._refusals.begin() + static_cast<std::ptrdiff_t>(_refusalsCount),
                           client._refusals.end());
    client.restoreDocument(client._pending);
}

} // namespace Zem::CollaborationSession

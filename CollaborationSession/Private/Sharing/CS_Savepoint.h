#pragma once

#include "Sharing/CS_Client.h"

#include <map>
#include <vector>

namespace Zem::CollaborationSession
{

/// What a client is before it takes pending operations back, to return to if what comes in can't be taken in.
/// Cost: copies of the pending operations, without what they insert, and of the selections.
class Client::Savepoint
{
public:
    explicit Savepoint(const Client& client);

    /// Makes the client, its document included, what it was. Requires: it has taken no checkpoint since.
    void restore(Client& client) &&;

private:
    std::vector<CollaborationEngine::OperationUPtr> _pending;
    std::size_t _underWayCount;
    Revision _revision;
    std::size_t _entriesCount;
    std::map<CollaborationEngine::Operation::Id, CollaborationEngine::Operation::Id> _undoings;
    Selections _selections;
    Selections _ownSelection;
    std::size_t _refusalsCount;
};

} // namespace Zem::CollaborationSession

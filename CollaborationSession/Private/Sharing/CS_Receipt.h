#pragma once

#include "Sharing/CS_Client.h"
#include "Sharing/CS_Rebase.h"
#include "Sharing/CS_Savepoint.h"

#include <boost/optional.hpp>

#include <span>

namespace Zem::CollaborationSession
{

/// What a client does with the messages of one call. An entry of the history takes the cheapest road that is open to
/// it: an own operation that came back equal is merely confirmed, and one that commutes with all that is pending is
/// executed beside that. For any other entry the pending operations are taken back, and stay so for all that follow.
class Client::Receipt
{
public:
    explicit Receipt(Client& client)
        : _client(client)
    {
    }

    void takeIn(std::span<const ServerMessage> messages);

    /// Whether anything was executed, or taken back.
    bool hasExecuted() const
    {
        return _hasExecuted;
    }

    /// Behind a `takeIn` that failed: makes the client what it was when the pending operations were taken back.
    void giveUp();

private:
    void takeIn(const OperationHappened& happened);
    void takeIn(const OperationRejected& rejected);
    void takeIn(const SelectionMoved& moved);
    bool confirms(const HistoryEntry& entry) const;
    void confirm(const HistoryEntryPtr& entry);
    bool isBesidePending(const HistoryEntry& entry) const;
    void executeBesidePending(const HistoryEntryPtr& entry);
    Rebase& getRebase();

    Client& _client;
    bool _hasExecuted = false;
    /// Made before anything that the rebase changes.
    boost::optional<Savepoint> _savepoint;
    boost::optional<Rebase> _rebase;
};

} // namespace Zem::CollaborationSession

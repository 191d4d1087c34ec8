#pragma once

#include "Sharing/CS_Client.h"
#include "Sharing/CS_Rebase.h"

#include <memory>
#include <span>

namespace Zem::CollaborationSession
{

/// What a client does with the messages of one call. An entry of the history takes the cheapest road that is open to
/// it: an own action that came back equal is merely acknowledged, and one that commutes with all that is pending is
/// executed beside that. For any other entry the pending actions are rebased, with all entries that follow.
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

private:
    void takeIn(const ActionHappened& happened);
    void takeIn(const SelectionMoved& moved);
    void takeIn(const TooFarBehind& tooFarBehind);
    Revision getRevision() const;
    bool isNext(Revision revision) const;
    bool isAcknowledgement(const HistoryEntry& entry) const;
    void acknowledge(const HistoryEntryPtr& entry);
    bool isBesidePending(const HistoryEntry& entry) const;
    void executeBesidePending(const HistoryEntryPtr& entry);
    Rebase& getRebase();

    Client& _client;
    bool _hasExecuted = false;
    std::unique_ptr<Rebase> _rebase;
};

} // namespace Zem::CollaborationSession

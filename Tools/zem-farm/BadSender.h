#pragma once

#include "Sharing/CS_Server.h"

#include <deque>
#include <memory>
#include <string>

namespace ZemFarm
{

/// A connection that sends operations which are malformed, or fit no document. The server must reject the former, and
/// refuse the latter, and nothing else may change.
class BadSender
{
public:
    explicit BadSender(Zem::CollaborationSession::Server& server);

    /// Lets a few messages arrive, and sends a bad operation on what it knows then. Answers what went wrong, or
    /// nothing.
    std::string send(unsigned long seed);

private:
    std::size_t countUpToOwnAnswer() const;
    void receive(std::size_t count);
    bool isTakenIn(const Zem::CollaborationSession::ClientBatch& batch);
    std::string findFaultOfRejection(Zem::CollaborationSession::Revision before) const;
    std::string findFaultOfAnswer(Zem::CollaborationSession::Revision before) const;

    Zem::CollaborationSession::Server& _server;
    std::shared_ptr<std::deque<Zem::CollaborationSession::ServerMessage>> _inbox;
    Zem::CollaborationSession::ClientID _id = 0;
    Zem::CollaborationSession::Revision _revision = 0;
    unsigned long _lastNumber = 0;
};

} // namespace ZemFarm

#pragma once

#include "Script.h"
#include "Tally.h"

#include "Sharing/CS_Server.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

namespace ZemFarm
{

class HostileOperations;
class Random;

/// A connection over which anything may come: batches, selections and meanings of which now and then every field is
/// garbage. The server must turn a batch away as a whole, or answer each of its actions, and nobody else may notice.
class HostileSender
{
public:
    /// What it does is counted in `tally`.
    HostileSender(Zem::CollaborationSession::Server& server, Zem::CollaborationSession::DocumentKind kind,
                  Tally& tally);

    HostileSender(const HostileSender&) = delete;
    HostileSender& operator=(const HostileSender&) = delete;

    /// Lets a few messages arrive, and sends a batch. Answers what went wrong, or nothing.
    std::string send(std::uint64_t seed);

private:
    void receive(std::size_t count);
    void join();
    Zem::CollaborationSession::ClientBatch makeBatch(HostileOperations& operations, Random& random);
    std::shared_ptr<const Zem::CollaborationSession::Meaning> makeMeaning(HostileOperations& operations,
                                                                          Random& random) const;
    bool isTakenIn(const Zem::CollaborationSession::ClientBatch& batch);
    std::string findFaultOfAnswer(const Zem::CollaborationSession::ClientBatch& batch,
                                  Zem::CollaborationSession::Revision before);

    Zem::CollaborationSession::Server& _server;
    Zem::CollaborationSession::DocumentKind _kind;
    Tally& _tally;
    std::shared_ptr<std::deque<Zem::CollaborationSession::ServerMessage>> _inbox;
    Zem::CollaborationSession::ClientID _id = 0;
    Zem::CollaborationSession::Revision _revision = 0;
    unsigned long _lastNumber = 0;
};

} // namespace ZemFarm

#pragma once

#include "Sharing/CS_Server.h"

#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace Zem::CollaborationSession
{

/// A client that keeps to no rules but those of the protocol.
class HostileClient
{
public:
    explicit HostileClient(Server& server)
        : _server(server)
        , _id(server.join([this](const ServerMessage& message) { take(message); }).first)
    {
    }

    using OperationPtr = std::shared_ptr<const CollaborationEngine::Operation>;

    void send(OperationPtr operation, std::shared_ptr<const Meaning> meaning = nullptr)
    {
        sendAll({{std::move(operation), std::move(meaning)}}, _server.getRevision());
    }

    void sendAll(std::vector<Action> actions, Revision base)
    {
        ClientBatch batch;
        batch._base = base;
        batch._firstNumber = _sentCount + 1;
        batch._actions = std::move(actions);
        _server.receive(_id, batch);
        _sentCount += batch._actions.size();
    }

    void select(const Selection& selection, Revision base)
    {
        ClientBatch batch;
        batch._base = base;
        batch._firstNumber = _sentCount + 1;
        batch._selection = std::make_shared<const Selection>(selection);
        _server.receive(_id, batch);
    }

    ClientID getID() const
    {
        return _id;
    }

    const std::vector<Refusal>& getRefusals() const
    {
        return _refusals;
    }

    bool isTooFarBehind() const
    {
        return _isTooFarBehind;
    }

private:
    void take(const ServerMessage& message)
    {
        _isTooFarBehind = _isTooFarBehind || std::get_if<TooFarBehind>(&message);
        const auto* happened = std::get_if<ActionHappened>(&message);
        if (happened && happened->_entry->_refusal)
        {
            _refusals.push_back(*happened->_entry->_refusal);
        }
    }

    Server& _server;
    std::vector<Refusal> _refusals;
    unsigned long _sentCount = 0;
    bool _isTooFarBehind = false;
    ClientID _id;
};

} // namespace Zem::CollaborationSession

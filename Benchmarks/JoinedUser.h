#pragma once

/// A user who joined a server, and the text that is typed into.

#include "Editing/CS_TextEditor.h"
#include "Sharing/CS_Client.h"
#include "Sharing/CS_Server.h"

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// What the server tells waits until `receive` is called.
class JoinedUser
{
public:
    JoinedUser(Server& server, CollaborationEngine::OperationNodeAddress text)
        : _client(join(server))
        , _editor(*_client, std::move(text))
    {
    }

    Client& getClient()
    {
        return *_client;
    }

    TextEditor& getEditor()
    {
        return _editor;
    }

    void send(Server& server)
    {
        if (const auto batch = _client->takeBatch())
        {
            server.receive(_client->getID(), *batch);
        }
    }

    /// Takes in all messages in one call, or each in a call of its own.
    void receive(bool oneByOne = false)
    {
        const std::size_t step = oneByOne ? 1 : _inbox.size();
        for (std::size_t begin = 0; begin < _inbox.size(); begin += step)
        {
            _client->receive({_inbox.data() + begin, step});
        }
        _inbox.clear();
    }

private:
    std::unique_ptr<Client> join(Server& server)
    {
        auto [id, snapshot] = server.join([this](const ServerMessage& message) { _inbox.push_back(message); });
        return std::make_unique<Client>(id, snapshot);
    }

    std::vector<ServerMessage> _inbox;
    std::unique_ptr<Client> _client;
    TextEditor _editor;
};

} // namespace Zem::CollaborationSession

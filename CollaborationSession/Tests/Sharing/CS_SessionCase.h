#pragma once

/// A server and clients who edit one text, with messages that travel when a test wants them to.

#include "Editing/CS_Characters.h"
#include "Editing/CS_TextEditor.h"
#include "Sharing/CS_Client.h"
#include "Sharing/CS_Server.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyValues.h"
#include "DOM_CheckInvariants.h"
#include "DOM_DocumentJson.h"
#include "TS_TextCase.h"
#include "TS_TextNotation.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zem::CollaborationSession
{

/// A client with an editor of the main text, and what is under way to it.
class Participant
{
public:
    explicit Participant(Server& server, ClientSettings settings = {})
        : _server(server)
        , _inbox(std::make_shared<std::deque<ServerMessage>>())
        , _client(join(settings))
        , _editor(std::make_unique<TextEditor>(*_client, TextEditor::getMainTextAddress()))
    {
        _client->setOnDocumentReplaced([this] { ++_replacementsCount; });
    }

    Client& getClient()
    {
        return *_client;
    }

    TextEditor& getEditor()
    {
        return *_editor;
    }

    /// Remembers what it did, for `undo`.
    void replace(unsigned long begin, unsigned long end, std::string_view text)
    {
        remember([&] { _editor->replace(begin, end, text); });
    }

    void setRunProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                        const SharedConstPtr<CollaborationEngine::DataValue>& value)
    {
        remember([&] { _editor->setRunProperty(begin, end, propertyId, value); });
    }

    void setParagraphProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                              const SharedConstPtr<CollaborationEngine::DataValue>& value)
    {
        remember([&] { _editor->setParagraphProperty(begin, end, propertyId, value); });
    }

    void setRunLook(unsigned long begin, unsigned long end, const LookChange& change)
    {
        remember([&] { _editor->setRunLook(begin, end, change); });
    }

    void setParagraphLook(unsigned long begin, unsigned long end, const LookChange& change)
    {
        remember([&] { _editor->setParagraphLook(begin, end, change); });
    }

    /// The ids of the own actions, the oldest first.
    const std::vector<ActionID>& getActions() const
    {
        return _actions;
    }

    /// Undoes an own action; says whether there was anything to undo.
    bool undo(ActionID action)
    {
        return _client->undo(action);
    }

    std::string getText() const
    {
        return getCharacters(_client->getDocument().getTextWithTombstones());
    }

    /// The text in the notation of tests.
    std::string show() const
    {
        return TestSupport::print(_client->getDocument().getTextWithTombstones());
    }

    /// Puts the caret behind a number of characters.
    void putCaret(unsigned long offset)
    {
        const auto& tombstones = _client->getDocument().getTextWithTombstones().getTombstones();
        const unsigned long element = _editor->getIndex().convertToElement(offset);
        _client->setSelection(
            makeCaret(tombstones.convertIndex(CollaborationUtils::IndexExcludingTombstones(element)).get()));
    }

    static Selection makeCaret(unsigned long slot)
    {
        CollaborationEngine::OperationNodeAddress address = TextEditor::getMainTextAddress();
        address.appendItems(NodeAddressing::AddressInList(slot));
        const Selection::SelectionPosition position(address);
        return Selection(DOMCollaboration::SelectionMode::Text, position, position);
    }

    /// Executes an own operation that no editor makes.
    void execute(CollaborationEngine::Operation& operation)
    {
        CollaborationEngine::OperationUPtr changedOp;
        _client->getExecutor().executeAndChangeIfNeeded(operation, changedOp);
    }

    /// The document, byte for byte.
    std::string getJson() const
    {
        return DOM::toJson(_client->getDocument());
    }

    /// Hands what there is to send to the server.
    void send()
    {
        if (const auto batch = _client->takeBatch())
        {
            _server.receive(_client->getID(), *batch);
        }
    }

    /// Takes in what the server told, all of it or so many messages.
    void receive(std::size_t count = ~std::size_t(0))
    {
        count = std::min(count, _inbox->size());
        const std::vector<ServerMessage> messages(_inbox->begin(),
                                                  _inbox->begin() + static_cast<std::ptrdiff_t>(count));
        _inbox->erase(_inbox->begin(), _inbox->begin() + static_cast<std::ptrdiff_t>(count));
        _client->receive(messages);
        if (_client->getPendingCount() > 0 || !messages.empty())
        {
            _editor->getIndex().checkInvariants();
        }
    }

    std::size_t getInboxSize() const
    {
        return _inbox->size();
    }

    /// The connection breaks: what is under way to the client is lost.
    void disconnect()
    {
        _server.disconnect(_client->getID());
        _inbox->clear();
    }

    void reconnect()
    {
        _server.reconnect(_client->getID(), _client->getRevision(), makeOutbox(_inbox));
        receive();
        _client->resume();
    }

    int _replacementsCount = 0;

private:
    template<class Edit>
    void remember(const Edit& edit)
    {
        const ActionID before = _client->getLastAction();
        edit();
        if (_client->getLastAction() != before)
        {
            _actions.push_back(_client->getLastAction());
        }
    }

    static Server::Outbox makeOutbox(const std::shared_ptr<std::deque<ServerMessage>>& inbox)
    {
        return [inbox](const ServerMessage& message) { inbox->push_back(message); };
    }

    std::unique_ptr<Client> join(const ClientSettings& settings)
    {
        auto [id, snapshot] = _server.join(makeOutbox(_inbox));
        return std::make_unique<Client>(id, snapshot, settings);
    }

    Server& _server;
    std::shared_ptr<std::deque<ServerMessage>> _inbox;
    std::unique_ptr<Client> _client;
    std::unique_ptr<TextEditor> _editor;
    std::vector<ActionID> _actions;
};

class SessionCase
{
public:
    explicit SessionCase(std::string_view notation, std::size_t clientsCount = 2, ServerSettings settings = {})
        : _server(DocumentKind::Text, makeDocument(notation), settings)
    {
        for (std::size_t index = 0; index < clientsCount; ++index)
        {
            join();
        }
    }

    Participant& join(ClientSettings settings = {})
    {
        _participants.push_back(std::make_unique<Participant>(_server, settings));
        return *_participants.back();
    }

    Participant& operator[](std::size_t index)
    {
        return *_participants[index];
    }

    std::size_t size() const
    {
        return _participants.size();
    }

    Server& getServer()
    {
        return _server;
    }

    /// Lets messages travel until nobody has anything to say, and requires that all documents are equal then, and that
    /// each selection is the same at its owner, at the server and at all others.
    void settle()
    {
        for (bool isQuiet = false; !isQuiet;)
        {
            isQuiet = true;
            for (const auto& participant : _participants)
            {
                participant->send();
                participant->receive();
            }
            for (const auto& participant : _participants)
            {
                isQuiet = isQuiet && participant->getInboxSize() == 0 && participant->getClient().isQuiet();
            }
        }
        for (const auto& participant : _participants)
        {
            const DOM::Document& document = participant->getClient().getDocument();
            ASSERT_EQ(participant->show(), TestSupport::print(_server.getDocument().getTextWithTombstones()));
            ASSERT_TRUE(document == _server.getDocument());
            ASSERT_TRUE(DOM::toJson(document) == DOM::toJson(_server.getDocument()));
            ASSERT_TRUE(checkInvariants(document).empty());
            ASSERT_TRUE(getAllSelections(participant->getClient()) == _server.getSelections());
        }
    }

    static DOM::Document makeDocument(std::string_view notation)
    {
        DOM::Document document;
        document.getTextWithTombstones() = TestSupport::makeText(notation);
        return document;
    }

    /// An operation that is well formed, and fits no document: a setting of a run where no run is.
    static CollaborationEngine::OperationUPtr makeBadOperation()
    {
        using Value = DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::RunPropertyId>;
        return setRun<PropertyId::RunPropertyId>(0, makeSharedConst<Value>(nullptr),
                                                 makeSharedConst<Value>(std::make_shared<DOM::RunProps>()));
    }

    /// One of which only the executor sees that it doesn't fit: the size of a run of text, which stands at slot 1.
    static CollaborationEngine::OperationUPtr makeFailingOperation()
    {
        using Value = DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::ExtentId>;
        return setRun<PropertyId::ExtentId>(1, makeSharedConst<Value>(), makeSharedConst<Value>());
    }

private:
    using PropertyId = DOMCollaboration::PropertyId;

    template<PropertyId property, class Value>
    static CollaborationEngine::OperationUPtr setRun(unsigned long slot, Value oldValue, Value newValue)
    {
        CollaborationEngine::OperationNodeAddress address = TextEditor::getMainTextAddress();
        address.appendItems(NodeAddressing::AddressInList(slot));
        return std::make_unique<CollaborationEngine::SetPropertyOperation>(
            std::move(address), DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::Run),
            DOMCollaboration::convertPropertyId(property), std::move(oldValue), std::move(newValue));
    }

    static Selections getAllSelections(const Client& client)
    {
        Selections selections = client.getSelections();
        if (const Selection* own = client.findOwnSelection())
        {
            selections.emplace(client.getID(), *own);
        }
        return selections;
    }

    Server _server;
    std::vector<std::unique_ptr<Participant>> _participants;
};

} // namespace Zem::CollaborationSession

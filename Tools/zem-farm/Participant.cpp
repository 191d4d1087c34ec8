#include "Participant.h"

#include "Describe.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;
using Zem::CollaborationEngine::OperationUPtr;

namespace
{

constexpr std::size_t maxRememberedCount = 60;

/// The entry of an own action of which less happened than was meant. Null if the message tells of none.
const HistoryEntry* findOwnRefusal(ClientID author, const ServerMessage& message)
{
    const auto* happened = std::get_if<ActionHappened>(&message);
    const bool isRefusal = happened && happened->_entry->_author == author && happened->_entry->_refusal;
    return isRefusal ? happened->_entry.get() : nullptr;
}

} // namespace

Participant::Participant(Server& server, const Setup& setup, bool composesTyping, Tally& tally,
                         JudgedSession* judgedSession)
    : _server(server)
    , _setup(setup)
    , _tally(tally)
{
    auto [id, snapshot] = server.join(makeOutbox());
    _client = std::make_unique<Client>(id, snapshot);
    _client->setComposesTyping(composesTyping);
    _client->setOnDocumentReplaced([this] { ++_tally._remadeByClientsCount; });
    if (judgedSession)
    {
        _witness = std::make_unique<Witness>(*judgedSession, *_client);
    }
    if (getKind() == DocumentKind::Workbook)
    {
        return;
    }
    _mainEditor = std::make_unique<TextEditor>(*_client, TextEditor::getMainTextAddress());
}

void Participant::execute(Operation& operation)
{
    _notes += _takesNotes ? "  " + describe(operation) : "";
    OperationUPtr changedOperation;
    const bool isChanged = _client->getExecutor().executeAndChangeIfNeeded(operation, changedOperation);
    ++_executedCount;
    _notes += _takesNotes && isChanged ? " became " + describe(*changedOperation) : "";
    rememberLastAction();
}

void Participant::edit(const Address& address, const Edit& edit)
{
    const auto note = [this](const Operations& operations)
    {
        for (const OperationUPtr& operation : operations)
        {
            ++_executedCount;
            _notes += _takesNotes ? "  " + describe(*operation) : "";
        }
        rememberLastAction();
    };
    if (_takesNotes)
    {
        const Zem::CollaborationSession::TextInDocument text(_client->getAdapter(), address);
        _notes += "  in " + describe(address) + ' ' + print(text.getText());
    }
    if (_mainEditor && address == TextEditor::getMainTextAddress())
    {
        Editor editor(*_mainEditor, _witness.get());
        note(edit(editor));
        return;
    }
    TextEditor textEditor(*_client, address);
    Editor editor(textEditor, _witness.get());
    note(edit(editor));
}

void Participant::undo()
{
    const bool isDone = _client->undo();
    noteUndoing("undo", isDone);
    if (_witness)
    {
        isDone ? _witness->tellUndo() : _witness->tellNoUndo();
    }
}

void Participant::redo()
{
    const bool isDone = _client->redo();
    noteUndoing("redo", isDone);
    if (_witness && isDone)
    {
        _witness->tellUndoing();
    }
}

void Participant::undo(ActionID action)
{
    const bool isDone = _client->undo(action);
    noteUndoing("undo " + std::to_string(action), isDone);
    if (_witness)
    {
        isDone ? _witness->tellUndoing() : _witness->tellNoUndoOf(action);
    }
}

void Participant::noteUndoing(const std::string& what, bool isDone)
{
    _executedCount += isDone ? 1 : 0;
    _notes += _takesNotes ? "  " + what + (isDone ? "" : ": nothing") : "";
    rememberLastAction();
}

void Participant::rememberLastAction()
{
    const ActionID action = _client->getLastAction();
    const bool isNew = action > 0 && (_rememberedActions.empty() || _rememberedActions.back() != action);
    if (isNew)
    {
        _rememberedActions.push_back(action);
    }
    if (_rememberedActions.size() > maxRememberedCount)
    {
        _rememberedActions.pop_front();
    }
}

unsigned long Participant::takeExecutedCount()
{
    return std::exchange(_executedCount, 0);
}

std::string Participant::takeNotes()
{
    return std::exchange(_notes, {});
}

void Participant::send()
{
    if (!_isConnected)
    {
        return;
    }
    if (auto batch = _client->takeBatch())
    {
        if (_witness)
        {
            _witness->noteBatch(*batch);
        }
        _toServer.push_back(std::move(*batch));
    }
}

void Participant::deliverToServer(std::size_t count)
{
    for (; count > 0 && !_toServer.empty(); --count)
    {
        const ClientBatch batch = std::move(_toServer.front());
        _toServer.pop_front();
        _tally._transformedCount += batch._base < _server.getRevision() ? batch._actions.size() : 0;
        const Revision revisionBefore = _server.getRevision();
        _server.receive(_client->getID(), batch);
        if (_witness)
        {
            _witness->noteArrival(batch, revisionBefore, _server.getRevision());
        }
    }
}

void Participant::deliverToClient(std::size_t count)
{
    count = std::min(count, _toClient.size());
    const auto end = _toClient.begin() + static_cast<std::ptrdiff_t>(count);
    const std::vector<ServerMessage> messages(_toClient.begin(), end);
    _toClient.erase(_toClient.begin(), end);
    noteMessages(messages);
    _client->receive(messages);
    for (const ServerMessage& message : messages)
    {
        _toldCount += findOwnRefusal(_client->getID(), message) ? 1 : 0;
    }
    countRefusals();
}

void Participant::countRefusals()
{
    for (const Client::RefusedAction& refused : _client->takeRefusals())
    {
        ++_learntCount;
        count(refused._refusal, _tally._refused);
    }
}

void Participant::noteMessages(const std::vector<ServerMessage>& messages)
{
    if (!_takesNotes)
    {
        return;
    }
    for (const ServerMessage& message : messages)
    {
        if (const auto* happened = std::get_if<ActionHappened>(&message))
        {
            const HistoryEntry& entry = *happened->_entry;
            _notes += "  gets " + std::to_string(entry._author) + '.' + std::to_string(entry._number) + ' ' +
                      describe(*entry._action._operation);
        }
    }
}

void Participant::disconnect()
{
    _server.disconnect(_client->getID());
    _toServer.clear();
    _toClient.clear();
    _isConnected = false;
}

void Participant::reconnect()
{
    _server.reconnect(_client->getID(), _client->getRevision(), makeOutbox());
    _isConnected = true;
    ++_tally._reconnectsCount;
    deliverToClient(_toClient.size());
    _client->resume();
    countRefusals();
}

void Participant::checkIndex()
{
    if (_mainEditor)
    {
        _mainEditor->getIndex().checkInvariants();
    }
}

Server::Outbox Participant::makeOutbox()
{
    return [this](const ServerMessage& message) { takeFromServer(message); };
}

void Participant::takeFromServer(const ServerMessage& message)
{
    // Counted here, because the author may go before it arrives; and it comes again when the connection broke.
    const HistoryEntry* refused = findOwnRefusal(_client->getID(), message);
    if (refused && refused->_number > _lastRejected)
    {
        _lastRejected = refused->_number;
        count(*refused->_refusal, _tally._rejected);
    }
    _toClient.push_back(message);
}

} // namespace ZemFarm

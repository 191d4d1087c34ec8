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

} // namespace

Participant::Participant(Server& server, const Setup& setup, bool composesTyping, Tally& tally)
    : _server(server)
    , _setup(setup)
    , _tally(tally)
{
    auto [id, snapshot] = server.join(makeOutbox());
    _client = std::make_unique<Client>(id, snapshot);
    _client->setComposesTyping(composesTyping);
    if (getKind() == DocumentKind::Workbook)
    {
        return;
    }
    _mainEditor = std::make_unique<TextEditor>(_client->getAdapter(), _client->getExecutor(),
                                               _client->getNotifications(), TextEditor::getMainTextAddress());
    _client->setOnDocumentReplaced([this] { _mainEditor->reload(); });
}

void Participant::execute(Operation& operation, bool mayBeUndone)
{
    _notes += _takesNotes ? "  " + describe(operation) : "";
    OperationUPtr changedOperation;
    const bool isChanged = _client->getExecutor().executeAndChangeIfNeeded(operation, changedOperation);
    ++_executedCount;
    _notes += _takesNotes && isChanged ? " became " + describe(*changedOperation) : "";
    if (mayBeUndone)
    {
        remember(operation);
    }
}

void Participant::edit(const Address& address, const Edit& edit)
{
    const auto note = [this](const Operations& operations)
    {
        for (const OperationUPtr& operation : operations)
        {
            ++_executedCount;
            remember(*operation);
            _notes += _takesNotes ? "  " + describe(*operation) : "";
        }
    };
    if (_takesNotes)
    {
        const Zem::CollaborationSession::TextInDocument text(_client->getAdapter(), address);
        _notes += "  in " + describe(address) + ' ' + print(text.getText());
    }
    if (_mainEditor && address == TextEditor::getMainTextAddress())
    {
        note(edit(*_mainEditor));
        return;
    }
    TextEditor editor(_client->getAdapter(), _client->getExecutor(), _client->getNotifications(), address);
    note(edit(editor));
}

void Participant::remember(const Operation& operation)
{
    if (const auto id = operation.getID())
    {
        _rememberedOperations.push_back(*id);
    }
    if (_rememberedOperations.size() > maxRememberedCount)
    {
        _rememberedOperations.pop_front();
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
        _toServer.push_back(std::move(*batch));
    }
}

void Participant::deliverToServer(std::size_t count)
{
    for (; count > 0 && !_toServer.empty(); --count)
    {
        const ClientBatch batch = std::move(_toServer.front());
        _toServer.pop_front();
        _tally._transformedCount += batch._base < _server.getRevision() ? batch._operations.size() : 0;
        _server.receive(_client->getID(), batch);
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
    countRefusals();
}

void Participant::countRefusals()
{
    for (const Client::Refusal& refusal : _client->takeRefusals())
    {
        ++_tally._refused[refusal._reason];
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
        if (const auto* happened = std::get_if<OperationHappened>(&message))
        {
            const HistoryEntry& entry = *happened->_entry;
            _notes += "  gets " + std::to_string(entry._author) + '.' + std::to_string(entry._number) + ' ' +
                      describe(*entry._operation);
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
    const auto* rejected = std::get_if<OperationRejected>(&message);
    if (rejected && rejected->_number > _lastRejected)
    {
        _lastRejected = rejected->_number;
        ++_tally._rejected[rejected->_reason];
    }
    _toClient.push_back(message);
}

} // namespace ZemFarm

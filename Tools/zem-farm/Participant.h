#pragma once

#include "Editor.h"
#include "JudgedSession.h"
#include "Script.h"
#include "Tally.h"
#include "Texts.h"

#include "Editing/CS_TextEditor.h"
#include "Sharing/CS_Client.h"
#include "Sharing/CS_Server.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZemFarm
{

/// A client of a session, with what is under way on its connection: each direction keeps its order, and delivers when
/// it is told to.
class Participant
{
public:
    using ActionID = Zem::CollaborationSession::ActionID;
    using Operation = Zem::CollaborationEngine::Operation;
    using TextEditor = Zem::CollaborationSession::TextEditor;
    using Edit = std::function<Zem::CollaborationSession::Operations(Editor&)>;

    /// What it does is counted in `tally`, and told to the judge of the session, if there is one. It stays where it is:
    /// the server holds an outbox that leads to it.
    Participant(Zem::CollaborationSession::Server& server, const Setup& setup, bool composesTyping, Tally& tally,
                JudgedSession* judgedSession = nullptr);

    Participant(const Participant&) = delete;
    Participant& operator=(const Participant&) = delete;

    Zem::CollaborationSession::Client& getClient()
    {
        return *_client;
    }

    const Zem::DOM::Document& getDocument() const
    {
        return _client->getDocument();
    }

    DocumentKind getKind() const
    {
        return _setup._kind;
    }

    const Setup& getSetup() const
    {
        return _setup;
    }

    /// Executes an own operation, as an action of its own.
    void execute(Operation& operation);

    /// Edits the text of an address.
    void edit(const Address& address, const Edit& edit);

    /// Undoes or redoes by the keyboard, or undoes one of the remembered actions.
    void undo();
    void redo();
    void undo(ActionID action);

    /// The last own actions, the oldest first.
    const std::deque<ActionID>& getRememberedActions() const
    {
        return _rememberedActions;
    }

    /// Forgets what was executed since the last call, and says how many operations that were. An undo counts as one.
    unsigned long takeExecutedCount();

    /// What was executed and came in since the last call, in words; empty unless notes were asked for.
    std::string takeNotes();

    void setTakesNotes(bool takesNotes)
    {
        _takesNotes = takesNotes;
    }

    /// Hands over what there is to send, if the client is connected.
    void send();

    /// Lets so many batches or messages arrive.
    void deliverToServer(std::size_t count);
    void deliverToClient(std::size_t count);

    std::size_t getBatchesCount() const
    {
        return _toServer.size();
    }

    std::size_t getMessagesCount() const
    {
        return _toClient.size();
    }

    bool isConnected() const
    {
        return _isConnected;
    }

    /// What is under way is lost. Requires: it is connected.
    void disconnect();

    /// Requires: it isn't connected.
    void reconnect();

    /// Whether the author learnt of each refusal that the server told of.
    bool hasLearntRefusals() const
    {
        return _toldCount <= _learntCount;
    }

    /// Asserts that the index of the main text's editor counts what a recount counts.
    void checkIndex();

private:
    Zem::CollaborationSession::Server::Outbox makeOutbox();
    void takeFromServer(const Zem::CollaborationSession::ServerMessage& message);
    void countRefusals();
    void rememberLastAction();
    void noteUndoing(const std::string& what, bool isDone);
    void noteMessages(const std::vector<Zem::CollaborationSession::ServerMessage>& messages);

    Zem::CollaborationSession::Server& _server;
    Setup _setup;
    Tally& _tally;
    std::deque<Zem::CollaborationSession::ClientBatch> _toServer;
    std::deque<Zem::CollaborationSession::ServerMessage> _toClient;
    /// The number of the last action of which the server told that less happened.
    unsigned long _lastRejected = 0;
    /// Of how many actions the server told the author so, and how many refusals he learnt.
    unsigned long _toldCount = 0;
    unsigned long _learntCount = 0;
    std::unique_ptr<Zem::CollaborationSession::Client> _client;
    /// Null if nobody judges.
    std::unique_ptr<Witness> _witness;
    /// Null in a workbook, whose main text is no text to edit.
    std::unique_ptr<TextEditor> _mainEditor;
    std::deque<ActionID> _rememberedActions;
    unsigned long _executedCount = 0;
    std::string _notes;
    bool _takesNotes = false;
    bool _isConnected = true;
};

} // namespace ZemFarm

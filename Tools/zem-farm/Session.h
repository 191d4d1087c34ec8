#pragma once

#include "BadSender.h"
#include "HostileSender.h"
#include "Participant.h"
#include "Script.h"
#include "Tally.h"

#include "Sharing/CS_Server.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace ZemFarm
{

/// Documents that didn't agree, or an exception that should have been none.
class Failure : public std::runtime_error
{
public:
    /// `kind` is what failures of one cause have in common. The message becomes one line, whatever is in it.
    Failure(std::string kind, const std::string& message);

    const std::string& getKind() const
    {
        return _kind;
    }

private:
    std::string _kind;
};

/// A server and its clients, to whom things happen step by step.
class Session
{
public:
    /// Fails: `Failure`, for a document with which no session begins.
    explicit Session(const Setup& setup);

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Does a step, or passes it over if it can't be done. Fails: `Failure`.
    void apply(const Step& step);

    /// The clients that are there, by their numbers in the script.
    const std::map<unsigned long, std::unique_ptr<Participant>>& getParticipants() const
    {
        return _participants;
    }

    /// The document of the server.
    const Zem::DOM::Document& getDocument() const
    {
        return _server->getDocument();
    }

    /// What was done so far.
    Tally getTally() const;

    unsigned long getOperationsCount() const
    {
        return _tally._operationsCount;
    }

    /// How often everything was compared, a comparison that is under way included.
    unsigned long getRoundsCount() const
    {
        return _tally._roundsCount;
    }

    /// What clients executed and got since the last call, in words. Empty unless `setTakesNotes(true)` was called
    /// before they came.
    std::string takeNotes();

    void setTakesNotes(bool takesNotes)
    {
        _takesNotes = takesNotes;
    }

private:
    void applyUnchecked(const Step& step);
    void applyTo(Participant& participant, const Step& step);
    void join(const Step& step);
    void leave(unsigned long client);
    void make(Participant& participant, const Step& step);
    void select(Participant& participant, unsigned long seed);
    void sendBadOperation(unsigned long seed);
    void sendAnything(unsigned long seed);
    void settle();
    void deliverEverything();
    bool isQuiet() const;
    void compare(unsigned long number, Participant& participant) const;
    void compareSelections(const std::string& name, const Zem::CollaborationSession::Client& client) const;
    void judge();
    void checkRefusals() const;
    void checkRemadeDocuments() const;
    static void addClientStatistics(const Zem::CollaborationSession::Statistics& statistics, Tally& tally);

    Setup _setup;
    Tally _tally;
    /// Null if nobody judges.
    std::unique_ptr<JudgedSession> _judgedSession;
    std::unique_ptr<Zem::CollaborationSession::Server> _server;
    std::map<unsigned long, std::unique_ptr<Participant>> _participants;
    std::unique_ptr<BadSender> _badSender;
    std::unique_ptr<HostileSender> _hostileSender;
    bool _takesNotes = false;
};

} // namespace ZemFarm

#pragma once

#include "Sharing/CS_Refusal.h"

#include <map>
#include <string>

namespace ZemFarm
{

using Zem::CollaborationSession::Refusal;
using Zem::CollaborationSession::RefusalReason;

/// In a few words.
const char* describe(RefusalReason reason);

/// Actions of which less happened than was meant, for one reason.
struct RefusedActions
{
    unsigned long _count = 0;
    /// What the author of the first one was told.
    std::string _sentence;
};

using RefusalCounts = std::map<RefusalReason, RefusedActions>;

void count(const Refusal& refusal, RefusalCounts& counts);

/// What sessions came to, in numbers.
struct Tally
{
    using Counts = std::map<std::string, unsigned long>;

    void add(const Tally& other);

    unsigned long _sessionsCount = 0;
    /// Clients that came, among them those that came when others had done something, and those that left for good.
    unsigned long _joinsCount = 0;
    unsigned long _lateJoinsCount = 0;
    unsigned long _leavesCount = 0;
    unsigned long _reconnectsCount = 0;
    /// How often everything was compared.
    unsigned long _roundsCount = 0;
    /// How often a document was compared with what was meant.
    unsigned long _judgedCount = 0;
    unsigned long _selectionsCount = 0;
    /// Those that authors executed.
    unsigned long _operationsCount = 0;
    Counts _operationsByGenerator;
    /// Edits that a text didn't take when they were made.
    unsigned long _declinedCount = 0;
    /// How many actions came to the server behind others that their authors didn't know.
    unsigned long _transformedCount = 0;
    /// Those that the server's document made something else of, and those that it found shadowed.
    unsigned long _changedCount = 0;
    unsigned long _shadowedCount = 0;
    /// Bad operations that were sent on purpose; the server must have rejected them all.
    unsigned long _badCount = 0;
    /// Batches of strangers, and those among them that the server turned away as a whole; the actions of the others,
    /// and those among them of which less happened than they say.
    unsigned long _hostileBatchesCount = 0;
    unsigned long _turnedAwayCount = 0;
    unsigned long _hostileActionsCount = 0;
    unsigned long _hostileRefusedCount = 0;
    /// The actions of the participants of which less happened at the server than was meant.
    RefusalCounts _rejected;
    /// The same as their authors learnt it: from the server, or from their own client.
    RefusalCounts _refused;
    /// How often the document of the server, or of a client, was made again from a copy because an operation failed,
    /// and how many entries of the history were executed again for that.
    unsigned long _remadeAtServerCount = 0;
    unsigned long _remadeByClientsCount = 0;
    unsigned long _replayedCount = 0;
    /// Pending actions of all clients that were brought past others.
    unsigned long _rebasedCount = 0;
    /// Entries of the history that clients executed, and those among them for which nothing pending was taken back.
    unsigned long _executedCount = 0;
    unsigned long _besidePendingCount = 0;
};

unsigned long getTotal(const RefusalCounts& counts);

/// A table of all of it, over so many seconds.
std::string format(const Tally& tally, double seconds);

} // namespace ZemFarm

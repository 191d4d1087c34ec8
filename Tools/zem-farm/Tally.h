#pragma once

#include <map>
#include <string>

namespace ZemFarm
{

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
    unsigned long _selectionsCount = 0;
    /// Those that authors executed.
    unsigned long _operationsCount = 0;
    Counts _operationsByGenerator;
    /// Edits that a text didn't take when they were made.
    unsigned long _declinedCount = 0;
    /// How many operations came to the server behind others that their authors didn't know.
    unsigned long _transformedCount = 0;
    /// Those that the server's document made something else of, and those that it found shadowed.
    unsigned long _changedCount = 0;
    unsigned long _shadowedCount = 0;
    /// Bad operations that were sent on purpose; the server must have rejected them all.
    unsigned long _badCount = 0;
    /// By the reason, those of the participants that the server rejected.
    Counts _rejected;
    /// By the reason, those that weren't to be, as their authors learnt it: rejected by the server, or taken back by
    /// the author's client itself.
    Counts _refused;
    /// Pending operations of all clients that were brought past others.
    unsigned long _rebasedCount = 0;
    /// Operations of the history that clients executed, and those among them for which nothing pending was taken back.
    unsigned long _executedCount = 0;
    unsigned long _besidePendingCount = 0;
};

unsigned long getTotal(const Tally::Counts& counts);

/// A table of all of it, over so many seconds.
std::string format(const Tally& tally, double seconds);

} // namespace ZemFarm

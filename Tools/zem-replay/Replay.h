#pragma once

#include "Options.h"
#include "Trace.h"

#include "Sharing/CS_Statistics.h"

#include <chrono>
#include <ctime>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZemReplay
{

/// A comparison that didn't hold.
class FailedComparison : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// How long something took, in seconds: by the clock on the wall, and of the processor's time. On a machine that does
/// other things at the same time, only the second says something of the program.
struct Duration
{
    double _wall = 0;
    double _processor = 0;
};

/// What a history came to. There is one duration for each time that it was played.
struct ReplayResult
{
    std::string _name;
    unsigned long _operationsCount = 0;
    std::vector<Duration> _playTimes;
    std::vector<Duration> _reverseTimes;
    std::vector<Duration> _againTimes;
    unsigned long _charactersCount = 0;
    unsigned long _paragraphsCount = 0;
    unsigned long _slotsCount = 0;
    unsigned long _deadRangesCount = 0;
};

/// What a history of several users came to, over all replicas of the last time that it was played.
struct ConcurrentResult
{
    std::string _name;
    unsigned long _replicasCount = 0;
    /// What the users made.
    unsigned long _operationsCount = 0;
    std::vector<Duration> _times;
    Zem::CollaborationSession::Statistics _work;
    unsigned long _charactersCount = 0;
    unsigned long _tombstonesCount = 0;
};

/// Plays a history as often as the options say, each time on a new document, and compares what they want compared.
/// Fails: `FailedComparison`, naming the history and the place.
ReplayResult replay(const Trace& trace, const Options& options);

/// Where two texts differ first.
std::string describeDifference(const std::string& actual, const std::string& expected);

/// How long some work takes.
template<class Work>
Duration measure(Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t processorBegin = std::clock();
    work();
    Duration duration;
    duration._processor = static_cast<double>(std::clock() - processorBegin) / CLOCKS_PER_SEC;
    duration._wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return duration;
}

/// The results as tables, with the greatest amount of memory that the process had so far.
std::string formatTables(const std::vector<ReplayResult>& results,
                         const std::vector<ConcurrentResult>& concurrentResults, bool hasReverse);

} // namespace ZemReplay

#pragma once

#include "Options.h"
#include "Trace.h"

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

/// What a history came to. Times are in seconds, one for each time that it was played.
struct ReplayResult
{
    std::string _name;
    unsigned long _operationsCount = 0;
    std::vector<double> _playTimes;
    std::vector<double> _reverseTimes;
    std::vector<double> _againTimes;
    unsigned long _charactersCount = 0;
    unsigned long _paragraphsCount = 0;
    unsigned long _slotsCount = 0;
    unsigned long _deadRangesCount = 0;
};

/// Plays a history as often as the options say, each time on a new document, and compares what they want compared.
/// Fails: `FailedComparison`, naming the history and the place.
ReplayResult replay(const Trace& trace, const Options& options);

/// The results as a table, with the greatest amount of memory that the process had so far.
std::string formatTable(const std::vector<ReplayResult>& results, bool hasReverse);

} // namespace ZemReplay

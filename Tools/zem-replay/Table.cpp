#include "Replay.h"

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

namespace ZemReplay
{

namespace
{

double getBest(const std::vector<Duration>& durations, double Duration::*clock)
{
    double best = durations.front().*clock;
    for (const Duration& duration : durations)
    {
        best = std::min(best, duration.*clock);
    }
    return best;
}

double getMedian(const std::vector<Duration>& durations)
{
    std::vector<double> times;
    for (const Duration& duration : durations)
    {
        times.push_back(duration._wall);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::string formatRate(unsigned long count, double time)
{
    return std::to_string(time > 0 ? static_cast<unsigned long>(static_cast<double>(count) / time) : 0);
}

/// The name of a file without its folders.
std::string getShortName(const std::string& name)
{
    return name.substr(name.rfind('/') + 1);
}

using Row = std::vector<std::string>;

Row makeHeading(bool hasReverse)
{
    Row row{"history", "operations", "best op/s", "median op/s", "op/CPU s"};
    if (hasReverse)
    {
        row.insert(row.end(), {"back op/s", "back op/CPU s", "again op/s", "again op/CPU s"});
    }
    row.insert(row.end(), {"characters", "paragraphs", "slots", "dead ranges"});
    return row;
}

Row makeRow(const ReplayResult& result, bool hasReverse)
{
    const unsigned long count = result._operationsCount;
    Row row{getShortName(result._name), std::to_string(count)};
    const auto addBest = [&](const std::vector<Duration>& durations, double Duration::*clock)
    { row.push_back(formatRate(count, getBest(durations, clock))); };
    addBest(result._playTimes, &Duration::_wall);
    row.push_back(formatRate(count, getMedian(result._playTimes)));
    addBest(result._playTimes, &Duration::_processor);
    if (hasReverse)
    {
        for (const auto* durations : {&result._reverseTimes, &result._againTimes})
        {
            addBest(*durations, &Duration::_wall);
            addBest(*durations, &Duration::_processor);
        }
    }
    for (const unsigned long number :
         {result._charactersCount, result._paragraphsCount, result._slotsCount, result._deadRangesCount})
    {
        row.push_back(std::to_string(number));
    }
    return row;
}

Row makeConcurrentHeading()
{
    return {"history", "replicas",        "operations",   "best ms",      "median ms",  "op/s over all",
            "rebased", "transforming ms", "reversing ms", "executing ms", "characters", "tombstones"};
}

std::string formatMilliseconds(double seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", seconds * 1000);
    return text;
}

/// Each operation is done in every replica.
Row makeConcurrentRow(const ConcurrentResult& result)
{
    const double best = getBest(result._times, &Duration::_wall);
    const Zem::CollaborationSession::Statistics& work = result._work;
    return {getShortName(result._name),
            std::to_string(result._replicasCount),
            std::to_string(result._operationsCount),
            formatMilliseconds(best),
            formatMilliseconds(getMedian(result._times)),
            formatRate(result._operationsCount * result._replicasCount, best),
            std::to_string(work._rebasedCount),
            formatMilliseconds(work._transformingTime),
            formatMilliseconds(work._reversingTime),
            formatMilliseconds(work._executingTime),
            std::to_string(result._charactersCount),
            std::to_string(result._tombstonesCount)};
}

std::string formatRows(const std::vector<Row>& rows)
{
    std::string table;
    for (const Row& row : rows)
    {
        for (std::size_t column = 0; column < row.size(); ++column)
        {
            std::size_t width = 0;
            for (const Row& other : rows)
            {
                width = std::max(width, other[column].size());
            }
            const std::string padding(width - row[column].size(), ' ');
            table += column == 0 ? row[column] + padding : "  " + padding + row[column];
        }
        table += '\n';
    }
    return table;
}

std::string formatPeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    char line[64];
    std::snprintf(line, sizeof line, "peak memory: %.1f MiB\n", static_cast<double>(usage.ru_maxrss) / 1024);
    return line;
}

} // namespace

std::string formatTables(const std::vector<ReplayResult>& results,
                         const std::vector<ConcurrentResult>& concurrentResults, bool hasReverse)
{
    std::vector<Row> rows{makeHeading(hasReverse)};
    for (const ReplayResult& result : results)
    {
        rows.push_back(makeRow(result, hasReverse));
    }
    std::vector<Row> concurrentRows{makeConcurrentHeading()};
    for (const ConcurrentResult& result : concurrentResults)
    {
        concurrentRows.push_back(makeConcurrentRow(result));
    }
    return (results.empty() ? "" : formatRows(rows)) + (concurrentResults.empty() ? "" : formatRows(concurrentRows)) +
           formatPeakMemory();
}

} // namespace ZemReplay

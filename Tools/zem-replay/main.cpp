#include "ConcurrentReplay.h"
#include "Options.h"
#include "Replay.h"
#include "Trace.h"

#include "Util_Assert.h"

#include <cstdio>
#include <exception>

namespace
{

constexpr int failedComparison = 1;
constexpr int badInput = 2;

int printError(const char* message, int exitCode)
{
    std::fprintf(stderr, "zem-replay: %s\n", message);
    return exitCode;
}

int run(const ZemReplay::Options& options)
{
    std::vector<ZemReplay::ReplayResult> results;
    std::vector<ZemReplay::ConcurrentResult> concurrentResults;
    if (options._fileNames.empty())
    {
        results.push_back(replay(ZemReplay::generateTrace(options._seed, options._generatedCount), options));
    }
    for (const std::string& fileName : options._fileNames)
    {
        const ZemReplay::Trace trace = ZemReplay::readTrace(fileName);
        if (trace._kind == ZemReplay::TraceKind::Sequential)
        {
            results.push_back(replay(trace, options));
        }
        else
        {
            concurrentResults.push_back(replayConcurrently(trace, options));
        }
    }
    std::fputs(formatTables(results, concurrentResults, options._reverses).c_str(), stdout);
    std::puts("every comparison held");
    return 0;
}

} // namespace

int main(int argumentsCount, char** arguments)
{
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    try
    {
        const ZemReplay::Options options = ZemReplay::readOptions(argumentsCount, arguments);
        if (options._wantsHelp)
        {
            std::fputs(ZemReplay::helpText, stdout);
            return 0;
        }
        return run(options);
    }
    catch (const ZemReplay::BadOptions& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const ZemReplay::BadTrace& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const std::exception& error)
    {
        return printError(error.what(), failedComparison);
    }
}

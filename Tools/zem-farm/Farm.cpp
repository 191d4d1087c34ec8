#include "Farm.h"

#include "Filters.h"
#include "Playing.h"
#include "Progress.h"
#include "Shrink.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <optional>
#include <stdexcept>

namespace ZemFarm
{

namespace
{

constexpr unsigned long maxSessionLength = 500;
constexpr unsigned long minSessionLength = 200;

constexpr std::array<DocumentKind, 3> kinds = {DocumentKind::Text, DocumentKind::Workbook, DocumentKind::Presentation};

using Clock = std::chrono::steady_clock;

double getSecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// What went wrong in one of the sessions of a run.
struct FailedSession
{
    Plan _plan;
    Failure _failure;
    unsigned long _round;
    Script _script;
};

std::optional<FailedSession> runSession(const Plan& plan, Tally& tally)
{
    Driver driver(plan);
    try
    {
        driver.run();
        tally.add(driver.getTally());
        return std::nullopt;
    }
    catch (const Failure& failure)
    {
        return FailedSession{plan, failure, driver.getRoundsCount(), driver.getScript()};
    }
}

/// The one line about a failure, and the shrunk script, if it is asked for.
void report(const std::string& line, const Script& script, bool shrinks)
{
    std::fprintf(stderr, "zem-farm: %s\n", line.c_str());
    if (shrinks)
    {
        std::fputs(annotate(shrink(script)).c_str(), stdout);
    }
}

std::string formatProgress(const Options& options, const Tally& tally, double seconds)
{
    std::string line = "session " + std::to_string(tally._sessionsCount + 1) + ", " +
                       std::to_string(tally._operationsCount) + " operations";
    if (options._minutes)
    {
        std::array<char, 64> time{};
        std::snprintf(time.data(), time.size(), ", %.1f of %.1f minutes", seconds / 60, *options._minutes);
        return line + time.data();
    }
    if (options._hostileCount > 0)
    {
        return line + ", " + std::to_string(tally._hostileBatchesCount) + " of " +
               std::to_string(options._hostileCount) + " batches of strangers";
    }
    return line + " of " + std::to_string(options._operationsCount);
}

} // namespace

Plan makePlan(const Options& options, unsigned long number, unsigned long restCount)
{
    Plan plan;
    plan._kind = options._kind ? *options._kind : kinds[number % kinds.size()];
    plan._clientsCount = options._clientsCount;
    plan._seed = options._seed;
    plan._isJudged = options._isJudged;
    plan._without = options._without;
    plan._operationsCount = std::min(restCount, maxSessionLength);
    plan._isHostile = options._hostileCount > 0;
    if (number > 0)
    {
        plan._seed = mixSeeds(options._seed, number);
        Random random(mixSeeds(plan._seed, number));
        // Most often few clients.
        const unsigned long fewest = std::min(2UL, options._clientsCount);
        const unsigned long most = fewest + random.pick(options._clientsCount - fewest + 1);
        plan._clientsCount = fewest + random.pick(most - fewest + 1);
        const unsigned long length = minSessionLength + random.pick(maxSessionLength - minSessionLength + 1);
        plan._operationsCount = std::min(restCount, length);
    }
    return plan;
}

std::string printCommand(const Plan& plan)
{
    std::string without;
    for (const std::string& name : plan._without)
    {
        without += " --without " + name;
    }
    return std::string("--kind ") + getName(plan._kind) + " --clients " + std::to_string(plan._clientsCount) +
           " --operations " + std::to_string(plan._operationsCount) + " --seed " + std::to_string(plan._seed) +
           (plan._isHostile ? " --hostile 1" : "") + (plan._isJudged ? " --judge" : "") + without;
}

namespace
{

/// Does all sessions that the options ask for. Answers the first one that failed.
std::optional<FailedSession> runAll(const Options& options, Clock::time_point begin, Tally& tally)
{
    Progress progress;
    const auto countRest = [&]
    {
        if (options._minutes)
        {
            return getSecondsSince(begin) < 60 * *options._minutes ? maxSessionLength : 0;
        }
        if (options._hostileCount > 0)
        {
            return tally._hostileBatchesCount < options._hostileCount ? options._operationsCount : 0;
        }
        return options._operationsCount - std::min(options._operationsCount, tally._operationsCount);
    };
    for (unsigned long rest = countRest(); rest > 0; rest = countRest())
    {
        progress.show(formatProgress(options, tally, getSecondsSince(begin)));
        if (auto failed = runSession(makePlan(options, tally._sessionsCount, rest), tally))
        {
            return failed;
        }
    }
    return std::nullopt;
}

} // namespace

bool runSessions(const Options& options)
{
    const auto begin = Clock::now();
    Tally tally;
    if (const auto failed = runAll(options, begin, tally))
    {
        report("round " + std::to_string(failed->_round) + ": " + failed->_failure.what() + "; again: zem-farm " +
                   printCommand(failed->_plan),
               failed->_script, options._shrinks);
        return false;
    }
    std::fputs(format(tally, getSecondsSince(begin)).c_str(), stdout);
    std::fputs(formatFilters(options).c_str(), stdout);
    std::puts("all documents agreed");
    return true;
}

bool runScript(const Script& script, bool shrinks)
{
    const std::unique_ptr<Failure> failure = findFailure(script);
    if (!failure)
    {
        std::puts("all documents agreed");
        return true;
    }
    report(failure->what(), script, shrinks);
    return false;
}

Script shrink(Script script)
{
    Progress progress;
    const std::unique_ptr<Failure> original = findFailure(script);
    if (!original)
    {
        throw std::runtime_error("played again as a script, the session didn't fail");
    }
    const auto fails = [&](const Script& candidate)
    {
        const std::unique_ptr<Failure> failure = findFailure(candidate);
        return failure && failure->getKind() == original->getKind();
    };
    const auto failsWithSteps = [&](const std::vector<Step>& steps)
    {
        progress.show("shrinking: " + std::to_string(steps.size()) + " steps");
        return fails({script._setup, steps});
    };
    script._steps = shrink(std::move(script._steps), failsWithSteps);
    for (unsigned long size = 0; size < script._setup._documentSize; ++size)
    {
        Script smaller = script;
        smaller._setup._documentSize = size;
        if (fails(smaller))
        {
            script = std::move(smaller);
        }
    }
    script._steps = shrink(std::move(script._steps), failsWithSteps);
    return script;
}

} // namespace ZemFarm

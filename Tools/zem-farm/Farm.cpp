#include "Farm.h"

#include "Progress.h"
#include "Shrink.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

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

void printScript(Script script, bool shrinks)
{
    if (shrinks)
    {
        std::fputs(annotate(shrink(std::move(script))).c_str(), stdout);
    }
}

/// The one line about a failure.
void report(const Failure& failure, unsigned long round, const std::string& again)
{
    std::fprintf(stderr, "zem-farm: round %lu: %s; again: zem-farm %s\n", round, failure.what(), again.c_str());
}

bool runSession(const Plan& plan, bool shrinks, Tally& tally)
{
    Driver driver(plan);
    try
    {
        driver.run();
        tally.add(driver.getSession().getTally());
        return true;
    }
    catch (const Failure& failure)
    {
        report(failure, driver.getSession().getRoundsCount(), printCommand(plan));
        printScript(driver.getScript(), shrinks);
        return false;
    }
}

std::string formatProgress(const Options& options, const Tally& tally, double seconds)
{
    std::string line = "session " + std::to_string(tally._sessionsCount + 1) + ", " +
                       std::to_string(tally._operationsCount) + " operations";
    if (options._minutes)
    {
        return line + ", " + std::to_string(static_cast<unsigned long>(seconds / 60)) + " of " +
               std::to_string(static_cast<unsigned long>(*options._minutes)) + " minutes";
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
    plan._operationsCount = std::min(restCount, maxSessionLength);
    if (number > 0)
    {
        plan._seed = mixSeeds(options._seed, number);
        Random random(mixSeeds(plan._seed, number));
        // Most often few clients.
        const unsigned long most = 2 + random.pick(options._clientsCount - 1);
        plan._clientsCount = 2 + random.pick(most - 1);
        const unsigned long length = minSessionLength + random.pick(maxSessionLength - minSessionLength + 1);
        plan._operationsCount = std::min(restCount, length);
    }
    return plan;
}

std::string printCommand(const Plan& plan)
{
    return std::string("--kind ") + getName(plan._kind) + " --clients " + std::to_string(plan._clientsCount) +
           " --operations " + std::to_string(plan._operationsCount) + " --seed " + std::to_string(plan._seed);
}

bool runSessions(const Options& options)
{
    const auto begin = Clock::now();
    Tally tally;
    {
        Progress progress;
        const auto countRest = [&]
        {
            if (options._minutes)
            {
                return getSecondsSince(begin) < 60 * *options._minutes ? maxSessionLength : 0;
            }
            return options._operationsCount - std::min(options._operationsCount, tally._operationsCount);
        };
        for (unsigned long rest = countRest(); rest > 0; rest = countRest())
        {
            progress.show(formatProgress(options, tally, getSecondsSince(begin)));
            if (!runSession(makePlan(options, tally._sessionsCount, rest), options._shrinks, tally))
            {
                return false;
            }
        }
    }
    std::fputs(format(tally, getSecondsSince(begin)).c_str(), stdout);
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
    std::fprintf(stderr, "zem-farm: %s\n", failure->what());
    printScript(script, shrinks);
    return false;
}

Script shrink(Script script)
{
    Progress progress;
    const std::unique_ptr<Failure> original = findFailure(script);
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

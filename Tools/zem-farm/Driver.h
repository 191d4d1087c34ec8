#pragma once

#include "Random.h"
#include "Script.h"
#include "Session.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZemFarm
{

/// What a random session is made from.
struct Plan
{
    DocumentKind _kind = DocumentKind::Text;
    unsigned long _clientsCount = 2;
    unsigned long _operationsCount = 0;
    std::uint64_t _seed = 0;
    /// Whether a stranger sends anything, in every second turn.
    bool _isHostile = false;
    bool _isJudged = false;
    /// Names of the generators that take no part.
    std::vector<std::string> _without = {};
};

/// Thinks up a session step by step, does it, and writes it down.
class Driver
{
public:
    explicit Driver(const Plan& plan);

    /// Fails: `Failure`. The script then ends with the step that failed, and has none if the session couldn't begin.
    void run();

    const Script& getScript() const
    {
        return _script;
    }

    /// What was done so far.
    Tally getTally() const;

    /// How often everything was compared, a comparison that is under way included.
    unsigned long getRoundsCount() const;

private:
    static Script makeScript(const Plan& plan, Random& random);

    void apply(Step step);
    void joinOne();
    void takeTurn();
    bool takeRareTurn();
    void takeTurnOf(unsigned long client, const Participant& participant);

    Plan _plan;
    Random _random;
    Script _script;
    /// Null until `run` begins.
    std::unique_ptr<Session> _session;
    unsigned long _lastClient = 0;
    /// At how many operations everything is compared next.
    unsigned long _nextRound = 0;
};

} // namespace ZemFarm

#include "Driver.h"

#include "Generators.h"

#include <array>
#include <iterator>

namespace ZemFarm
{

namespace
{

constexpr std::array<unsigned long, 4> checkpointIntervals = {4, 16, 64, 4096};

/// Once in how many turns something rare happens: somebody comes or goes, or sends what is bad.
constexpr unsigned long rareTurn = 60;

/// How many operations are made between two comparisons.
constexpr unsigned long maxRoundLength = 80;

} // namespace

Driver::Driver(const Plan& plan)
    : _plan(plan)
    , _random(plan._seed)
    , _script(makeScript(plan, _random))
{
}

Script Driver::makeScript(const Plan& plan, Random& random)
{
    Script script;
    script._setup._kind = plan._kind;
    script._setup._isJudged = plan._isJudged;
    script._setup._documentSeed = random.makeSeed();
    script._setup._documentSize = plan._kind == DocumentKind::Workbook ? 1 + random.pick(2) : random.pick(7);
    script._setup._checkpointInterval = random.pickFrom(checkpointIntervals);
    return script;
}

void Driver::run()
{
    _session = std::make_unique<Session>(_script._setup);
    const unsigned long lateCount = _plan._clientsCount > 1 ? _random.pick(std::min(3UL, _plan._clientsCount - 1)) : 0;
    while (_lastClient < _plan._clientsCount - lateCount)
    {
        joinOne();
    }
    while (_session->getOperationsCount() < _plan._operationsCount)
    {
        takeTurn();
    }
    while (_lastClient < _plan._clientsCount)
    {
        joinOne();
    }
    apply(Step());
}

Tally Driver::getTally() const
{
    return _session ? _session->getTally() : Tally();
}

unsigned long Driver::getRoundsCount() const
{
    return _session ? _session->getRoundsCount() : 0;
}

void Driver::apply(Step step)
{
    _script._steps.push_back(std::move(step));
    _session->apply(_script._steps.back());
}

void Driver::joinOne()
{
    apply({StepKind::Join, ++_lastClient, "", _random.pick(4) == 0 ? 0UL : 1UL});
}

void Driver::takeTurn()
{
    if (_session->getOperationsCount() >= _nextRound)
    {
        _nextRound = _session->getOperationsCount() + 1 + _random.pick(maxRoundLength);
        apply(Step());
    }
    if (_plan._isHostile && _random.isOnceIn(2))
    {
        apply({StepKind::Hostile, 0, "", _random.makeSeed()});
        return;
    }
    if (_random.isOnceIn(rareTurn) && takeRareTurn())
    {
        return;
    }
    const auto& participants = _session->getParticipants();
    const auto picked = std::next(participants.begin(), static_cast<long>(_random.pick(participants.size())));
    takeTurnOf(picked->first, *picked->second);
}

/// Whether something happened.
bool Driver::takeRareTurn()
{
    switch (_random.pick(6))
    {
    case 0:
        if (_lastClient < _plan._clientsCount)
        {
            joinOne();
            return true;
        }
        return false;
    case 1:
        if (_session->getParticipants().size() > 2 && _random.isOnceIn(3))
        {
            const auto last = std::prev(_session->getParticipants().end());
            apply({StepKind::Leave, last->first, "", 0});
            return true;
        }
        return false;
    case 2:
        apply({StepKind::Bad, 0, "", _random.makeSeed()});
        return true;
    default:
        return false;
    }
}

void Driver::takeTurnOf(unsigned long client, const Participant& participant)
{
    if (!participant.isConnected() && _random.isOnceIn(8))
    {
        apply({StepKind::Reconnect, client, "", 0});
        return;
    }
    switch (_random.pick(16))
    {
    case 0:
    case 1:
    case 2:
        apply({StepKind::Send, client, "", 0});
        return;
    case 3:
    case 4:
        apply({StepKind::ToServer, client, "", 1});
        return;
    case 5:
    case 6:
    case 7:
        apply({StepKind::ToClient, client, "", 1 + _random.pick(_random.isOnceIn(3) ? 20 : 3)});
        return;
    case 8:
        apply({StepKind::Select, client, "", _random.makeSeed()});
        return;
    case 9:
        if (participant.isConnected() && _random.isOnceIn(8))
        {
            apply({StepKind::Disconnect, client, "", 0});
        }
        return;
    default:
        apply({StepKind::Do, client, pickGenerator({_plan._kind, _plan._isJudged, _plan._without}, _random)._name,
               _random.makeSeed()});
    }
}

} // namespace ZemFarm

#pragma once

namespace Zem::CollaborationEngine
{

/// Which of two operations goes first where they clash exactly, in `include(first, second, ...)`. The one that goes
/// first wins: its items stand in front, its move target and its value stay. The operation that is in the history goes
/// first.
enum class TieResolveCondition
{
    FirstWins,
    SecondWins
};

/// The same decision seen from the other operation.
constexpr TieResolveCondition getOpposite(TieResolveCondition condition)
{
    return condition == TieResolveCondition::FirstWins ? TieResolveCondition::SecondWins
                                                       : TieResolveCondition::FirstWins;
}

} // namespace Zem::CollaborationEngine

#pragma once

/// The pairs of a matrix by name, such as "marking past restoring".

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

namespace Zem::CollaborationEngine::Testing
{

using Pairs = std::set<std::string>;
using ActionNames = std::vector<std::string>;

inline const ActionNames slotActionNames{"insertion", "removal",   "marking", "restoring",
                                         "leaving",   "releasing", "move"};

/// The pairs for whose rule `isWanted` is true. The names are those of the actions, in their order.
template<class Action, class GetRule, class IsWanted>
Pairs findPairs(const ActionNames& names, const GetRule& getRule, const IsWanted& isWanted)
{
    Pairs pairs;
    for (unsigned long first = 0; first < names.size(); ++first)
    {
        for (unsigned long second = 0; second < names.size(); ++second)
        {
            if (isWanted(getRule(static_cast<Action>(first), static_cast<Action>(second))))
            {
                pairs.insert(names[first] + " past " + names[second]);
            }
        }
    }
    return pairs;
}

/// The pairs whose left operand stays as it is.
template<class Action, class GetRule>
Pairs findPairsWithoutRule(const ActionNames& names, const GetRule& getRule)
{
    return findPairs<Action>(names, getRule, [](const auto& rule) { return !rule; });
}

/// Each of the first past each of the second.
inline Pairs makePairs(const ActionNames& firsts, const ActionNames& seconds)
{
    Pairs pairs;
    for (const std::string& first : firsts)
    {
        for (const std::string& second : seconds)
        {
            pairs.insert(first + " past " + second);
        }
    }
    return pairs;
}

inline Pairs joinPairs(std::initializer_list<Pairs> groups)
{
    Pairs joined;
    for (const Pairs& group : groups)
    {
        joined.insert(group.begin(), group.end());
    }
    return joined;
}

} // namespace Zem::CollaborationEngine::Testing

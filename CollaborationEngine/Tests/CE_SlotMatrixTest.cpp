#include "CE_SlotMatrix.h"

#include "CE_MapMatrix.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

const std::vector<std::string> slotActionNames{"insertion", "removal",   "marking", "restoring",
                                               "leaving",   "releasing", "move"};
const std::vector<std::string> mapActionNames{"insertion", "removal", "leaving", "releasing"};

using Pairs = std::set<std::string>;

template<class Action, class GetRule>
Pairs findPairsWithoutRule(const std::vector<std::string>& names, const GetRule& getRule)
{
    Pairs pairs;
    for (unsigned long first = 0; first < names.size(); ++first)
    {
        for (unsigned long second = 0; second < names.size(); ++second)
        {
            if (!getRule(static_cast<Action>(first), static_cast<Action>(second)))
            {
                pairs.insert(names[first] + " past " + names[second]);
            }
        }
    }
    return pairs;
}

} // namespace

TEST(SlotMatrix, EachDefaultIsADecision)
{
    const Pairs indicesStay{"insertion past marking",   "insertion past restoring", "insertion past leaving",
                            "insertion past releasing", "removal past marking",     "removal past restoring",
                            "removal past leaving",     "removal past releasing",   "move past marking",
                            "move past restoring",      "move past leaving",        "move past releasing"};
    const Pairs liveAndDeadSlotsAreDisjoint{"marking past restoring", "marking past leaving", "marking past releasing",
                                            "restoring past marking", "leaving past marking", "releasing past marking"};
    const Pairs aRestoringEndsWhatTheReleasingLeaves{"restoring past releasing"};
    Pairs expected = indicesStay;
    expected.insert(liveAndDeadSlotsAreDisjoint.begin(), liveAndDeadSlotsAreDisjoint.end());
    expected.insert(aRestoringEndsWhatTheReleasingLeaves.begin(), aRestoringEndsWhatTheReleasingLeaves.end());
    EXPECT_EQ(slotActionNames.size(), slotActionsCount);
    EXPECT_EQ(findPairsWithoutRule<SlotAction>(slotActionNames, &getSlotPairRule), expected);
}

TEST(MapMatrix, EachDefaultIsADecision)
{
    const Pairs expected{"insertion past removal",  "removal past insertion", "removal past leaving",
                         "removal past releasing",  "leaving past removal",   "releasing past removal",
                         "insertion past releasing"};
    EXPECT_EQ(mapActionNames.size(), mapActionsCount);
    EXPECT_EQ(findPairsWithoutRule<MapAction>(mapActionNames, &getMapPairRule), expected);
}

} // namespace Zem::CollaborationEngine::Testing

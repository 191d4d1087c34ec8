#include "CE_SlotMatrix.h"

#include "MatrixPairs.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

TEST(SlotMatrix, EachDefaultIsADecision)
{
    const Pairs indicesStay =
        makePairs({"insertion", "removal", "move"}, {"marking", "restoring", "leaving", "releasing"});
    const Pairs liveAndDeadSlotsAreDisjoint =
        joinPairs({makePairs({"marking"}, {"restoring", "leaving", "releasing"}),
                   makePairs({"restoring", "leaving", "releasing"}, {"marking"})});
    const Pairs aRestoringEndsWhatTheReleasingLeaves{"restoring past releasing"};
    EXPECT_EQ(slotActionNames.size(), slotActionsCount);
    EXPECT_EQ(findPairsWithoutRule<SlotAction>(slotActionNames, &getSlotPairRule),
              joinPairs({indicesStay, liveAndDeadSlotsAreDisjoint, aRestoringEndsWhatTheReleasingLeaves}));
}

} // namespace Zem::CollaborationEngine::Testing

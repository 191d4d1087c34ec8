#include "CE_MapMatrix.h"

#include "MatrixPairs.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

TEST(MapMatrix, EachDefaultIsADecision)
{
    const ActionNames names{"insertion", "removal", "leaving", "releasing"};
    const Pairs keysInTheMapAndOutOfItAreDisjoint =
        joinPairs({makePairs({"removal"}, {"insertion", "leaving", "releasing"}),
                   makePairs({"insertion", "leaving", "releasing"}, {"removal"})});
    const Pairs anInsertionEndsWhatTheReleasingLeaves{"insertion past releasing"};
    EXPECT_EQ(names.size(), mapActionsCount);
    EXPECT_EQ(findPairsWithoutRule<MapAction>(names, &getMapPairRule),
              joinPairs({keysInTheMapAndOutOfItAreDisjoint, anInsertionEndsWhatTheReleasingLeaves}));
}

} // namespace Zem::CollaborationEngine::Testing

#include "CE_MapMatrix.h"

#include "MatrixPairs.h"
#include "TreeModel.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

const ActionNames names{"insertion", "removal", "leaving", "releasing"};

}

TEST(MapAction, IsThatOfTheOperationAndOfWhatHoldsItDown)
{
    Shadows held;
    held._holdersCount = 1;
    const auto getName = [](const MapOperation& operation, const Shadows* shadows) {
        return names.at(static_cast<unsigned long>(getMapAction(NodeOperand{operation, shadows})));
    };
    const MapInsert insertion(mapAddress(), ElementMapType, makeKey("a"), nullptr);
    EXPECT_EQ(getName(insertion, nullptr), "insertion");
    EXPECT_EQ(getName(insertion, &held), "releasing");
    EXPECT_EQ(getName(MapRemove(mapAddress(), ElementMapType, makeKey("a"), nullptr), nullptr), "removal");
    EXPECT_EQ(getName(MapLeaveRemovedOperation(mapAddress(), ElementMapType, makeKey("a"), nullptr, 1), nullptr),
              "leaving");
}

TEST(MapMatrix, EachDefaultIsADecision)
{
    const Pairs keysInTheMapAndOutOfItAreDisjoint =
        joinPairs({makePairs({"removal"}, {"insertion", "leaving", "releasing"}),
                   makePairs({"insertion", "leaving", "releasing"}, {"removal"})});
    const Pairs anInsertionEndsWhatTheReleasingLeaves{"insertion past releasing"};
    EXPECT_EQ(names.size(), mapActionsCount);
    EXPECT_EQ(findPairsWithoutRule<MapAction>(names, &getMapPairRule),
              joinPairs({keysInTheMapAndOutOfItAreDisjoint, anInsertionEndsWhatTheReleasingLeaves}));
}

} // namespace Zem::CollaborationEngine::Testing

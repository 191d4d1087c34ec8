#include "CE_ListSlots.h"
#include "CE_TableSlots.h"

#include "OperationNotation.h"
#include "SlotModel.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

TEST(DescribeSlots, MoveOfSeveralSlotsFails)
{
    const ListMoveOperation move(makeListAddress(Family::SingleRange), listType, Range::fromCount(1, 2), 1);
    EXPECT_ASSERTION(describeSlots(move, nullptr), "range.getCount() == 1u");
}

TEST(DescribeSlots, MoveToAPlaceInFrontOfTheFirstFails)
{
    EXPECT_ASSERTION(describeSlots(cast<ListOperation>(*makeMove(1, ~0ul)), nullptr), "isTargetInRange");
    EXPECT_ASSERTION(describeSlots(NestedTableOperation(RowOrColumnMoveOperation(1, -2)), nullptr), "isTargetInRange");
    EXPECT_EQ(describeSlots(cast<ListOperation>(*makeMove(1, 0)), nullptr)._target, 0u);
    EXPECT_EQ(describeSlots(cast<ListOperation>(*makeMove(1, 1)), nullptr)._target, 1u);
}

TEST(DescribeSlots, RestoringThatIsHeldDownIsAReleasing)
{
    const OperationUPtr restoring = makeListOperation<Restore>(Family::SingleRange, {{2, 3, "cde"}});
    Shadows shadows;
    EXPECT_EQ(describeSlots(cast<ListOperation>(*restoring), &shadows)._action, SlotAction::Restoring);
    shadows._holdersCount = 2;
    const SlotOperation slots = describeSlots(cast<ListOperation>(*restoring), &shadows);
    EXPECT_EQ(slots._action, SlotAction::Releasing);
    EXPECT_EQ(slots._pieces.front()._holdersCount, 2u);
    EXPECT_EQ(slots._pieces.front().getEnd(), 5u);
}

} // namespace Zem::CollaborationEngine::Testing

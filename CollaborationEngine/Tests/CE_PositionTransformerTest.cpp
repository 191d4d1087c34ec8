#include "CE_PositionTransformer.h"

#include "CE_ListMultirangeTransformers.h"
#include "CE_ListTransformers.h"
#include "CasesCount.h"
#include "OperationNotation.h"
#include "Position.h"
#include "SlotCases.h"
#include "TreeModel.h"

#include "TS_Assertions.h"

#include <iostream>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using NodeAddressing::AddressInList;
using NodeAddressing::AddressInTable;

OperationNodeAddress makePlace(Family family, unsigned long index)
{
    return makeListAddress(family).appendItems(AddressInList(index));
}

class PositionTransformerTest : public testing::Test
{
protected:
    PositionTransformerTest()
    {
        _transformer.registerNodePositionTransformer(listType, std::make_shared<ListNodePositionTransformer>());
        _transformer.registerNodePositionTransformer(textType,
                                                     std::make_shared<ListMultirangeNodePositionTransformer>());
    }

    unsigned long includeInText(unsigned long index, const Operation& operation, bool sticks = false)
    {
        Position position(makePlace(Family::Multirange, index), sticks);
        _transformer.include(operation, position);
        return position.getIndex();
    }

    PositionTransformer _transformer;
};

template<class T>
OperationUPtr makeText(const std::vector<Stretch>& stretches, Operation::Id id = 7)
{
    OperationUPtr operation = makeListOperation<T>(Family::Multirange, stretches);
    operation->setIDIfNeeded(id);
    return operation;
}

} // namespace

TEST_F(PositionTransformerTest, InsertionAtThePositionMovesItUnlessItSticksToThePrevious)
{
    const OperationUPtr insertion = makeText<Insert>({{2, 3, "xyz"}});
    EXPECT_EQ(includeInText(1, *insertion), 1u);
    EXPECT_EQ(includeInText(2, *insertion), 5u);
    EXPECT_EQ(includeInText(3, *insertion), 6u);
    EXPECT_EQ(includeInText(2, *insertion, true), 2u);
    EXPECT_EQ(includeInText(3, *insertion, true), 6u);
}

TEST_F(PositionTransformerTest, MarkingLeavesItOnItsDeadSlot)
{
    EXPECT_EQ(includeInText(2, *makeText<MarkAsRemoved>({{1, 3, "bcd"}})), 2u);
}

TEST_F(PositionTransformerTest, PositionReturnsIntoAnInsertionThatIsIncludedAgain)
{
    const OperationUPtr insertion = makeText<Insert>({{1, 2, "xy"}, {3, 2, "zw"}});
    for (const bool sticks : {false, true})
    {
        for (unsigned long index = 0; index <= 8; ++index)
        {
            Position position(makePlace(Family::Multirange, index), sticks);
            _transformer.exclude(*insertion, position);
            _transformer.include(*makeText<Insert>({{0, 5, "12345"}}, 8), position);
            const OperationUPtr shifted = makeText<Insert>({{6, 2, "xy"}, {8, 2, "zw"}});
            _transformer.include(*shifted, position);
            const bool isInFront = index == 0 && sticks;
            EXPECT_EQ(position.getIndex(), index + (isInFront ? 0 : 5)) << index << " " << sticks;
            EXPECT_TRUE(position.getRevertedInsertOperations().empty());
        }
    }
}

TEST_F(PositionTransformerTest, RevertedInsertionsAreAStack)
{
    const OperationUPtr outer = makeText<Insert>({{0, 2, "ab"}}, 1);
    const OperationUPtr inner = makeText<Insert>({{1, 1, "c"}}, 2);
    Position position(makePlace(Family::Multirange, 1), false);
    _transformer.exclude(*inner, position);
    _transformer.exclude(*outer, position);
    ASSERT_EQ(position.getRevertedInsertOperations().size(), 2u);
    const RevertedInsertOperationInfo& latest = position.getRevertedInsertOperations().back();
    EXPECT_EQ(latest._operationID, 1u);
    EXPECT_EQ(latest._container, makeListAddress(Family::Multirange));
    EXPECT_EQ(latest._chunkIndex, 1u);
    EXPECT_EQ(latest._indexOfItemInCollection, 1u);
    EXPECT_EQ(position.getIndex(), 0u);
    _transformer.include(*outer, position);
    _transformer.include(*inner, position);
    EXPECT_EQ(position.getIndex(), 1u);
}

TEST_F(PositionTransformerTest, CleaningForgetsRevertedInsertionsAndKeepsTheAddress)
{
    const OperationUPtr insertion = makeText<Insert>({{0, 2, "ab"}});
    Position position(makePlace(Family::Multirange, 1), false);
    _transformer.exclude(*insertion, position);
    position.cleanRevertedOperationsStack();
    EXPECT_TRUE(position.getRevertedInsertOperations().empty());
    EXPECT_EQ(position.getIndex(), 0u);
    _transformer.include(*insertion, position);
    EXPECT_EQ(position.getIndex(), 2u);
}

TEST_F(PositionTransformerTest, EmptyAndShadowedOperationsAndOtherNodesLeaveIt)
{
    Position position(makePlace(Family::Multirange, 1), false);
    _transformer.include(EmptyOperation(), position);
    _transformer.include(ShadowedOperation(dynamicUPtrCheckedCast<AtomicOperation>(makeText<Insert>({{0, 1, "a"}}))),
                         position);
    _transformer.include(*makeListOperation<Insert>(Family::SingleRange, {{0, 1, "a"}}), position);
    EXPECT_EQ(position.getIndex(), 1u);
}

TEST_F(PositionTransformerTest, UnregisteredNodeTypeFails)
{
    const PositionTransformer empty;
    Position position(makePlace(Family::Multirange, 1), false);
    EXPECT_ASSERTION(empty.include(*makeText<Insert>({{0, 1, "a"}}), position),
                     "transformerIt != _nodePositionTransformers.end()");
    EXPECT_EQ(empty.findNodePositionTransformer(textType), nullptr);
    EXPECT_NE(_transformer.findNodePositionTransformer(textType), nullptr);
    EXPECT_ASSERTION(_transformer.registerNodePositionTransformer(
                         textType, std::make_shared<ListMultirangeNodePositionTransformer>()),
                     "isNew");
    EXPECT_ASSERTION(_transformer.registerNodePositionTransformer(3, nullptr), "plainPtr");
}

TEST_F(PositionTransformerTest, IncludingAndExcludingAnyOperationGivesThePositionBack)
{
    unsigned long casesCount = 0;
    for (const Family family : {Family::SingleRange, Family::Multirange})
    {
        for (unsigned long size = 0; size <= 4; ++size)
        {
            for (const SlotModel& state : makeStates(size, 1))
            {
                for (const OperationUPtr& operation : makeOperations(state, family, '1', {}))
                {
                    unsigned long id = 1;
                    operation->setIDIfNeeded(id);
                    for (unsigned long index = 0; index < 2 * (size + 1); ++index)
                    {
                        ++casesCount;
                        Position position(makePlace(family, index / 2), index % 2 == 0);
                        const Position before = position;
                        _transformer.include(*operation, position);
                        _transformer.exclude(*operation, position);
                        ASSERT_EQ(position.getIndex(), before.getIndex()) << describe(*operation);
                        ASSERT_TRUE(position.getRevertedInsertOperations().empty());
                    }
                }
            }
        }
    }
    std::cout << "  " << casesCount << " cases\n";
    countCases(casesCount);
}

TEST_F(PositionTransformerTest, PositionFollowsTheElementOnWhichItStands)
{
    const auto items = [](const SlotModel& model)
    {
        std::string text;
        for (const Slot& slot : model.getSlots())
        {
            text += slot._identity;
        }
        return text;
    };
    unsigned long casesCount = 0;
    for (const Family family : {Family::SingleRange, Family::Multirange})
    {
        for (const SlotModel& state : makeStates(4, 1))
        {
            for (const OperationUPtr& operation : makeOperations(state, family, '1', {}))
            {
                SlotModel after = state;
                after.apply(*operation);
                for (unsigned long index = 0; index < 4; ++index)
                {
                    ++casesCount;
                    Position position(makePlace(family, index), false);
                    _transformer.include(*operation, position);
                    const auto expected = items(after).find(items(state)[index]);
                    if (expected != std::string::npos)
                    {
                        EXPECT_EQ(position.getIndex(), expected) << describe(*operation);
                    }
                }
            }
        }
    }
    countCases(casesCount);
}

TEST(PositionInTree, ChunksBelowATakenBackRowWaitForIt)
{
    const auto transformer = makeTreePositionTransformer();
    const auto makeRowInsertion = [](unsigned long index)
    {
        auto operation = std::make_unique<TableRowOperation>(
            tableAddress(), CellTableType,
            TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>(index, nullptr));
        unsigned long id = 5;
        operation->setIDIfNeeded(id);
        return operation;
    };
    Position position(textAddress(cellAddress(1, 2)).appendItems(AddressInList(3)), false);
    const OperationNodeAddress before = position.getAddress();
    transformer->exclude(*makeRowInsertion(1), position);
    const ListMultirangeOperationImpl<Insert> inOtherRow({Insert(
        textAddress(cellAddress(1, 2)), ElementTextType, makeElementItems({makeElement(1)}), Range::fromCount(0, 1))});
    transformer->include(inOtherRow, position);
    transformer->include(*makeRowInsertion(1), position);
    EXPECT_EQ(position.getAddress(), before);
    EXPECT_TRUE(position.getRevertedInsertOperations().empty());
}

TEST(PositionInTree, PositionFollowsColumnsAndKeepsMapKeys)
{
    const auto transformer = makeTreePositionTransformer();
    Position position(textAddress(cellAddress(1, 2)).appendItems(AddressInList(3)), false);
    transformer->include(TableColumnOperation(tableAddress(), CellTableType, RowOrColumnMoveOperation(2, -2)),
                         position);
    EXPECT_EQ(derefPtr(position.getAddress().getItemFromEndAs<AddressInTable>(2)).getColumn().get(), 0u);
    Position inMap(textAddress(mapElementAddress("a")).appendItems(AddressInList(3)), false);
    const OperationNodeAddress before = inMap.getAddress();
    transformer->include(MapInsertOrRemoveOperation<MapRemoveTag>(mapAddress(), ElementMapType, makeKey("a"), nullptr),
                         inMap);
    EXPECT_EQ(inMap.getAddress(), before);
}

TEST(PositionInTree, PositionInAReplacedTextGoesToItsBeginning)
{
    const auto transformer = makeTreePositionTransformer();
    Position position(textAddress(cellAddress(1, 2)).appendItems(AddressInList(3)), false);
    const SetPropertyOperation replacement(cellAddress(1, 2), ElementType, WholeTextProperty,
                                           makeSharedConst<SimpleDataValue<TreeText>>(),
                                           makeSharedConst<SimpleDataValue<TreeText>>());
    transformer->include(replacement, position);
    EXPECT_EQ(position.getIndex(), 0u);
}

} // namespace Zem::CollaborationEngine::Testing

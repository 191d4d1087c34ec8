#include "CE_MultirangeOperationUtils.h"

#include "SlotModel.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using MultirangeOperationUtils::mergeOperations;

template<class T>
OperationUPtr makeText(const std::vector<Stretch>& stretches)
{
    return makeListOperation<T>(Family::Multirange, stretches);
}

template<class... Parts>
OperationUPtr makeComposite(Parts... operations)
{
    std::vector<OperationUPtr> parts;
    (parts.push_back(std::move(operations)), ...);
    return std::make_unique<CompositeOperation>(std::move(parts));
}

std::string merged(OperationUPtr operation, bool keepsPieceBorders = false)
{
    return describe(*mergeOperations(std::move(operation), keepsPieceBorders));
}

} // namespace

TEST(MultirangeOperationUtils, JoinsNeighboursWithTheirItems)
{
    EXPECT_EQ(merged(makeText<MarkAsRemoved>({{0, 1, "a"}, {1, 2, "bc"}, {4, 1, "e"}})),
              "/2 multi{mark(4,1, e) mark(0,3, abc) }");
    EXPECT_EQ(merged(makeText<Insert>({{2, 1, "x"}, {2, 2, "yz"}})), "/2 multi{insert(2,3, xyz) }");
}

TEST(MultirangeOperationUtils, JoinsWithoutItemsWhereAPieceHasNone)
{
    EXPECT_EQ(merged(makeText<MarkAsRemoved>({{0, 1, "a"}, {1, 1, ""}})), "/2 multi{mark(0,2) }");
}

TEST(MultirangeOperationUtils, LeavingsWithDifferentHoldersStayApart)
{
    EXPECT_EQ(merged(makeText<Leave>({{0, 1, "a", 1}, {1, 1, "b", 2}})),
              "/2 multi{leave(1,1, holders 2, b) leave(0,1, holders 1, a) }");
}

TEST(MultirangeOperationUtils, BordersStayWhereTheyAreWanted)
{
    EXPECT_EQ(merged(makeText<MarkAsRemoved>({{0, 1, "a"}, {1, 1, "b"}}), true),
              "/2 multi{mark(1,1, b) mark(0,1, a) }");
}

TEST(MultirangeOperationUtils, PiecesStandFromHighToLow)
{
    EXPECT_EQ(merged(makeText<Restore>({{4, 1, "e"}, {0, 1, "a"}})), "/2 multi{restore(4,1, e) restore(0,1, a) }");
}

TEST(MultirangeOperationUtils, PartsOfOneKindBecomeOne)
{
    EXPECT_EQ(merged(makeComposite(makeText<MarkAsRemoved>({{0, 1, "a"}}), std::make_unique<EmptyOperation>(),
                                   makeText<MarkAsRemoved>({{1, 1, "b"}}))),
              "/2 multi{mark(0,2, ab) }");
    EXPECT_EQ(merged(makeComposite(makeText<Remove>({{4, 1, "e"}}), makeText<Remove>({{0, 1, "a"}}))),
              "/2 multi{remove(4,1, e) remove(0,1, a) }");
}

TEST(MultirangeOperationUtils, PartsThatDependOnEachOthersPlacesStayApart)
{
    EXPECT_EQ(merged(makeComposite(makeText<Insert>({{0, 1, "a"}}), makeText<Insert>({{3, 1, "b"}}))),
              "[/2 multi{insert(0,1, a) }; /2 multi{insert(3,1, b) }; ]");
}

TEST(MultirangeOperationUtils, PartsOfTwoKindsOrOfTwoOperationsStayApart)
{
    EXPECT_EQ(merged(makeComposite(makeText<MarkAsRemoved>({{0, 1, "a"}}), makeText<Leave>({{1, 1, "b", 1}}))),
              "[/2 multi{mark(0,1, a) }; /2 multi{leave(1,1, holders 1, b) }; ]");
    unsigned long nextID = 1;
    OperationUPtr composite =
        makeComposite(makeText<MarkAsRemoved>({{0, 1, "a"}}), makeText<MarkAsRemoved>({{1, 1, "b"}}));
    composite->setIDIfNeeded(nextID);
    EXPECT_EQ(merged(std::move(composite)), "[/2 multi{mark(0,1, a) }; /2 multi{mark(1,1, b) }; ]");
}

TEST(MultirangeOperationUtils, WhatIsNotMultirangeComesBackUntouched)
{
    OperationUPtr single = makeListOperation<Insert>(Family::SingleRange, {{0, 1, "a"}});
    const Operation* before = single.get();
    single = mergeOperations(std::move(single), false);
    EXPECT_EQ(single.get(), before);
    OperationUPtr composite = makeComposite(std::move(single), std::make_unique<EmptyOperation>());
    before = composite.get();
    composite = mergeOperations(std::move(composite), false);
    EXPECT_EQ(composite.get(), before);
    EXPECT_EQ(describe(*composite), "[/1 insert(0,1, a); nothing; ]");
}

TEST(MultirangeOperationUtils, MergedOperationsKeepTheirId)
{
    unsigned long nextID = 6;
    OperationUPtr operation = makeText<MarkAsRemoved>({{0, 1, "a"}, {1, 1, "b"}});
    operation->setIDIfNeeded(nextID);
    EXPECT_EQ(mergeOperations(std::move(operation), false)->getID().value_or(0), 6u);
}

TEST(MultirangeOperationUtils, CompositeOfOnePartKeepsItsId)
{
    unsigned long nextID = 6;
    OperationUPtr composite = makeComposite(makeText<MarkAsRemoved>({{0, 1, "a"}}), std::make_unique<EmptyOperation>());
    composite->setIDIfNeeded(nextID);
    EXPECT_EQ(mergeOperations(std::move(composite), false)->getID().value_or(0), 6u);
}

TEST(MultirangeOperationUtils, OverlappingRangesFail)
{
    EXPECT_ASSERTION(makeListTransformer()->include(*makeText<MarkAsRemoved>({{0, 2, "ab"}, {1, 1, "b"}}),
                                                    *makeText<Insert>({{0, 1, "x"}}), TieResolveCondition::FirstWins),
                     "areRangesDescending");
}

} // namespace Zem::CollaborationEngine::Testing

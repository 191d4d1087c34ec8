#include "CE_Operation.h"

#include "OperationNotation.h"
#include "SlotModel.h"
#include "TreeModel.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

std::unique_ptr<AtomicOperation> makeMarking(unsigned long begin = 0)
{
    return dynamicUPtrCheckedCast<AtomicOperation>(
        makeListOperation<MarkAsRemoved>(Family::SingleRange, {{begin, 1, "a"}}));
}

OperationUPtr makeComposite()
{
    std::vector<OperationUPtr> parts;
    parts.push_back(makeMarking(0));
    parts.push_back(makeMarking(1));
    return std::make_unique<CompositeOperation>(std::move(parts));
}

OperationUPtr identityOf(const Operation& operation)
{
    return operation.getPseudoIdentity(*makeListTransformer());
}

} // namespace

TEST(Operation, IdIsGivenOnce)
{
    unsigned long nextID = 5;
    const auto operation = makeMarking();
    EXPECT_FALSE(operation->getID());
    operation->setIDIfNeeded(nextID);
    operation->setIDIfNeeded(nextID);
    EXPECT_EQ(operation->getID().value_or(0), 5u);
    EXPECT_EQ(nextID, 6u);
}

TEST(Operation, IdIsInheritedOnlyWhereThereIsNone)
{
    unsigned long nextID = 5;
    const auto first = makeMarking();
    const auto second = makeMarking();
    first->inheritIDIfPossibleImpl(*second);
    EXPECT_FALSE(first->getID());
    second->setIDIfNeeded(nextID);
    first->inheritIDIfPossibleImpl(*second);
    EXPECT_EQ(first->getID().value_or(0), 5u);
    const auto third = makeMarking();
    third->setIDIfNeeded(nextID);
    third->inheritIDIfPossibleImpl(*second);
    EXPECT_EQ(third->getID().value_or(0), 6u);
}

TEST(Operation, ClonesKeepIdAndContent)
{
    unsigned long nextID = 5;
    const OperationUPtr composite = makeComposite();
    composite->setIDIfNeeded(nextID);
    const OperationUPtr clone = cloneOperation(*composite);
    EXPECT_EQ(clone->getID().value_or(0), composite->getID().value_or(1));
    EXPECT_EQ(describe(*clone), describe(*composite));
    std::shared_ptr<Operation> sharedClone;
    composite->cloneTo(sharedClone);
    EXPECT_EQ(describe(*sharedClone), describe(*composite));
}

TEST(Operation, PseudoIdentitiesStandForDeletionsAlone)
{
    EXPECT_EQ(describe(*identityOf(*makeMarking())), "/1 leave(0,1, holders 0, a)");
    EXPECT_EQ(describe(*identityOf(*makeListOperation<Leave>(Family::SingleRange, {{0, 1, "a", 2}}))),
              "/1 leave(0,1, holders 0, a)");
    EXPECT_EQ(describe(*identityOf(*makeListOperation<Insert>(Family::Multirange, {{0, 1, "a"}}))), "nothing");
    EXPECT_EQ(describe(*identityOf(*makeComposite())), "[/1 leave(0,1, holders 0, a); /1 leave(1,1, holders 0, a); ]");
    const MapInsertOrRemoveOperation<MapRemoveTag> removal(mapAddress(), ElementMapType, makeKey("a"), nullptr);
    EXPECT_EQ(describe(*identityOf(removal)), "/4 leave holders 0(a)");
}

TEST(CompositeOperation, PartsHaveIdsOfTheirOwnOrInheritTheWholes)
{
    unsigned long nextID = 5;
    auto composite = dynamicUPtrCheckedCast<CompositeOperation>(makeComposite());
    composite->setIDIfNeeded(nextID);
    EXPECT_EQ(composite->getID().value_or(0), 5u);
    EXPECT_EQ(composite->getParts()[0]->getID().value_or(0), 6u);
    EXPECT_EQ(composite->getParts()[1]->getID().value_or(0), 7u);
    auto other = dynamicUPtrCheckedCast<CompositeOperation>(makeComposite());
    other->inheritIDIfPossibleImpl(*composite);
    EXPECT_EQ(other->getParts()[1]->getID().value_or(0), 5u);
}

TEST(CompositeOperation, NullPartFails)
{
    std::vector<OperationUPtr> parts(1);
    EXPECT_ASSERTION(CompositeOperation(std::move(parts)), "plainPtr");
}

TEST(CompositeOperation, RestoringWithoutPartsFails)
{
    using Parts = std::vector<OperationUPtr>;
    constexpr const char* message = "kind == CompositeKind::Plain || !_parts.empty()";
    EXPECT_ASSERTION(CompositeOperation(Parts(), CompositeKind::Restoring), message);
    EXPECT_ASSERTION(CompositeOperation(Parts(), CompositeKind::ChangedRestoring), message);
    EXPECT_ASSERTION(CompositeOperation(Parts(), ChangeOfRestoring()), message);
    EXPECT_TRUE(CompositeOperation(Parts()).getParts().empty());
}

TEST(CompositeOperation, NullPartFailsWhateverTheKind)
{
    std::vector<OperationUPtr> parts(1);
    EXPECT_ASSERTION(CompositeOperation(std::move(parts), CompositeKind::Restoring), "plainPtr");
}

TEST(CompositeOperation, MakingOneOutOfPartsFailsForANullPart)
{
    EXPECT_ASSERTION(makeOperationFromParts(std::vector<OperationUPtr>(1)), "plainPtr");
    std::vector<OperationUPtr> parts;
    parts.push_back(makeMarking());
    parts.push_back(nullptr);
    EXPECT_ASSERTION(makeOperationFromParts(std::move(parts)), "plainPtr");
}

TEST(CompositeOperation, WhatBecameOfAnOperationBearsItsId)
{
    unsigned long nextID = 5;
    const OperationUPtr original = makeComposite();
    EXPECT_FALSE(withIDOf(*original, makeMarking())->getID()) << "there is none yet";
    original->setIDIfNeeded(nextID);
    const OperationUPtr unnamed = withIDOf(*original, makeMarking());
    EXPECT_EQ(describe(*unnamed), "/1 mark(0,1, a)");
    EXPECT_EQ(unnamed->getID().value_or(0), 5u);
    const OperationUPtr named = withIDOf(*original, cloneOperation(*cast<CompositeOperation>(*original).getParts()[0]));
    EXPECT_EQ(describe(*named), "[/1 mark(0,1, a); ]");
    EXPECT_EQ(named->getID().value_or(0), 5u);
    EXPECT_EQ(cast<CompositeOperation>(*named).getParts()[0]->getID().value_or(0), 6u);
}

TEST(CompositeOperation, MakingOneOutOfPartsTakesPlainCompositesApart)
{
    std::vector<OperationUPtr> parts;
    EXPECT_EQ(describe(*makeOperationFromParts({})), "nothing");
    parts.push_back(makeMarking());
    EXPECT_EQ(describe(*makeOperationFromParts(std::move(parts))), "/1 mark(0,1, a)");
    std::vector<OperationUPtr> nested;
    nested.push_back(makeComposite());
    nested.push_back(std::make_unique<EmptyOperation>());
    nested.push_back(makeMarking(2));
    EXPECT_EQ(describe(*makeOperationFromParts(std::move(nested))),
              "[/1 mark(0,1, a); /1 mark(1,1, a); /1 mark(2,1, a); ]");
}

TEST(CompositeOperation, MakingOneOutOfPartsKeepsTogetherWhatARestoringBringsAlong)
{
    auto inner = dynamicUPtrCheckedCast<CompositeOperation>(makeComposite());
    std::vector<OperationUPtr> parts;
    parts.push_back(std::make_unique<CompositeOperation>(std::move(inner->getParts()), CompositeKind::Restoring));
    parts.push_back(makeMarking(2));
    EXPECT_EQ(describe(*makeOperationFromParts(std::move(parts))),
              "[brings[/1 mark(0,1, a); /1 mark(1,1, a); ]; /1 mark(2,1, a); ]");
}

TEST(ShadowedOperation, NullOriginalFails)
{
    EXPECT_ASSERTION(ShadowedOperation(nullptr), "plainPtr");
}

TEST(ShadowedOperation, BearsTheIdOfTheOriginal)
{
    unsigned long nextID = 5;
    auto original = makeMarking();
    original->setIDIfNeeded(nextID);
    EXPECT_EQ(ShadowedOperation(std::move(original)).getID().value_or(0), 5u);
}

TEST(ListMultirangeOperation, NoRangeFails)
{
    EXPECT_ASSERTION(ListMultirangeOperationImpl<Insert>(std::vector<Insert>()), "!nestedOperations.empty()");
}

TEST(ListMultirangeOperation, NewAddressReachesTheNestedOperations)
{
    ListMultirangeOperationImpl<Insert> operation(
        {Insert(makeListAddress(Family::Multirange), textType, makeItems("a"), Range(0, 1))});
    operation.setNodeAddress(makeListAddress(Family::SingleRange));
    EXPECT_EQ(operation.getNestedOperations()[0].getNodeAddress(), makeListAddress(Family::SingleRange));
}

TEST(SetPropertyOperation, NullValueFails)
{
    EXPECT_ASSERTION(SetPropertyOperation(OperationNodeAddress(), 1, 2, nullptr, makeSharedConst<IntValue>(1)),
                     "plainPtr");
    EXPECT_ASSERTION(SetPropertyOperation(OperationNodeAddress(), 1, 2, makeSharedConst<IntValue>(1), nullptr),
                     "plainPtr");
    SetPropertyOperation operation(OperationNodeAddress(), 1, 2, makeSharedConst<IntValue>(1),
                                   makeSharedConst<IntValue>(2));
    EXPECT_ASSERTION(operation.setOldValue(nullptr), "plainPtr");
    EXPECT_ASSERTION(SetRowOrColumnPropertyOperation(0, 1, nullptr, makeSharedConst<IntValue>(1)), "plainPtr");
}

TEST(OperationNodeAddress, ChunkOfAnotherKindIsNull)
{
    const OperationNodeAddress address = listElementAddress(3);
    EXPECT_EQ(address.getItemFromEndAs<NodeAddressing::AddressInMap>(0), nullptr);
    EXPECT_EQ(address.getItemFromEndAs<NodeAddressing::AddressInList>(0)->getIndex(), 3u);
}

} // namespace Zem::CollaborationEngine::Testing

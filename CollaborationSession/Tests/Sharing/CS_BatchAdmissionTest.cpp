#include "Sharing/CS_HostileCase.h"

#include "TS_Assertions.h"

#include <set>

namespace Zem::CollaborationSession
{

using namespace HostileCase;
using TestSupport::insert;
using TestSupport::mark;
using TestSupport::restore;

namespace
{

OperationUPtr makeUnit(std::vector<OperationUPtr> parts)
{
    return compose(std::move(parts), CompositeKind::Restoring);
}

OperationUPtr makeChanged(OperationUPtr planned, OperationUPtr way)
{
    return std::make_unique<CompositeOperation>(makeParts(restore(1, "a")),
                                                ChangeOfRestoring(std::move(planned), std::move(way)));
}

Selection makeSelection(const OperationNodeAddress& address)
{
    const Selection::SelectionPosition position(address);
    return Selection(SelectionMode::Text, position, position);
}

std::optional<OperationFault> findFault(const Selection& selection, const AdmissionLimits& limits = {})
{
    try
    {
        BatchAdmission(author, slotsBound, limits).requireWellFormed(selection);
        return std::nullopt;
    }
    catch (const InvalidOperationError& error)
    {
        return error.getFault();
    }
}

using HostileCase::findFault;

} // namespace

// What is as it should be.

TEST(BatchAdmission, TakesWhatUsersDo)
{
    EXPECT_EQ(findFault(insert({{5, "x"}, {5, "y"}, {0, "{|~}"}})), noFault);
    EXPECT_EQ(findFault(mark({{7, 9}, {3, 7}})), noFault);
    EXPECT_EQ(findFault(restore(3, "ab")), noFault);
    EXPECT_EQ(findFault(make<Leave>(nullptr, 3, 5)), noFault);
    EXPECT_EQ(findFault(setRunSize(3, 12)), noFault);
    EXPECT_EQ(findFault(setMarkSize(3, 12)), noFault);
    EXPECT_EQ(findFault(setColumns(3, 2)), noFault);
    EXPECT_EQ(findFault(setComments({UUID()})), noFault);
    EXPECT_EQ(findFault(setTimeZone(60)), noFault);
    EXPECT_EQ(findFault(insertScript("a", "b")), noFault);
    EXPECT_EQ(findFault(onScripts<MapRemoveTag>(makeStringKey("a"), nullptr)), noFault);
    EXPECT_EQ(findFault(EmptyOperation()), noFault);
    EXPECT_EQ(findFault(compose(makeParts(insert(0, "x"), mark(0, 1)))), noFault);
    EXPECT_EQ(findFault(shadow(mark(0, 1), Shadows{})), noFault);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "a"), insert(1, "x")))), noFault);
    EXPECT_EQ(findFault(makeChanged(restore(1, "a"), compose(makeParts(mark(1, 2), restore(1, "a"))))), noFault);
}

TEST(BatchAdmission, WhatABatchInsertsGivesTheNextOnesRoom)
{
    BatchAdmission batch(author, 2);
    EXPECT_THROW(batch.requireWellFormed(*mark(4, 5)), InvalidOperationError);
    batch.requireWellFormed(*insert(0, "xyz"));
    EXPECT_EQ(batch.getSlotsBound(), 5u);
    batch.requireWellFormed(*mark(4, 5));
    batch.requireWellFormed(*compose(makeParts(insert(5, "x"), mark(5, 6))));
}

TEST(BatchAdmission, RangesOfOneInsertionStandInOneState)
{
    EXPECT_THROW(BatchAdmission(author, 2).requireWellFormed(*insert({{3, "x"}, {0, "xyz"}})), InvalidOperationError);
    BatchAdmission batch(author, 3);
    batch.requireWellFormed(*insert({{3, "x"}, {0, "xyz"}}));
    EXPECT_EQ(batch.getSlotsBound(), 7u);
}

TEST(BatchAdmission, AuthorMustHaveIDs)
{
    EXPECT_ASSERTION(BatchAdmission(highestClientID + 1, 0), "author <= highestClientID");
}

// What is composed of others.

TEST(BatchAdmission, RefusesMissingParts)
{
    auto parts = makeParts(mark(0, 1), mark(0, 1));
    CompositeOperation composite(std::move(parts));
    composite.getParts().back().reset();
    EXPECT_EQ(findFault(composite), OperationFault::MissingPart);
}

TEST(BatchAdmission, RefusesEmptyCompositesAndUnits)
{
    // A unit that is made with parts can lose them.
    const auto makeEmptyUnit = []
    {
        auto unit = makeUnit(makeParts(restore(1, "a")));
        cast<CompositeOperation>(*unit).getParts().clear();
        return unit;
    };
    EXPECT_EQ(findFault(CompositeOperation()), OperationFault::EmptyComposite);
    EXPECT_EQ(findFault(makeEmptyUnit()), OperationFault::EmptyComposite);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "a"), makeEmptyUnit()))), OperationFault::EmptyComposite);
    EXPECT_EQ(findFault(makeChanged(makeEmptyUnit(), mark(0, 1))), OperationFault::EmptyComposite);
}

TEST(BatchAdmission, RefusesPartsOfUnitsThatDoNothing)
{
    EXPECT_EQ(findFault(makeUnit(makeParts(std::make_unique<EmptyOperation>()))), OperationFault::EmptyPartOfUnit);
    EXPECT_EQ(findFault(makeUnit(makeParts(makeUnit(makeParts(std::make_unique<EmptyOperation>()))))),
              OperationFault::EmptyPartOfUnit);
    EXPECT_EQ(findFault(compose(makeParts(std::make_unique<EmptyOperation>()))), noFault);
}

TEST(BatchAdmission, RefusesPartsOfUnitsThatAreComposedAndNoUnits)
{
    EXPECT_EQ(findFault(makeUnit(makeParts(compose(makeParts(restore(1, "a")))))), OperationFault::CompositePartOfUnit);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "a"), compose(makeParts(mark(0, 1)))))),
              OperationFault::CompositePartOfUnit);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "a"), makeUnit(makeParts(restore(2, "b")))))), noFault);
    EXPECT_EQ(findFault(compose(makeParts(compose(makeParts(mark(0, 1)))))), noFault);
}

TEST(BatchAdmission, RefusesUnknownKindsOfComposites)
{
    EXPECT_EQ(findFault(compose(makeParts(mark(0, 1)), static_cast<CompositeKind>(17))),
              OperationFault::UnknownCompositeKind);
}

TEST(BatchAdmission, RefusesChangesOfWhatIsNoChangedRestoring)
{
    CompositeOperation composite(makeParts(mark(0, 1)));
    composite.getChange() = ChangeOfRestoring(mark(0, 1), mark(0, 1));
    EXPECT_EQ(findFault(composite), OperationFault::UnexpectedChange);

    CompositeOperation withoutWay(makeParts(mark(0, 1)), ChangeOfRestoring(mark(0, 1), mark(0, 1)));
    withoutWay.getChange()._difference.reset();
    EXPECT_EQ(findFault(withoutWay), OperationFault::UnexpectedChange);
}

TEST(BatchAdmission, RefusesTooManyOperationsInOneBatch)
{
    AdmissionLimits limits;
    limits._operations = 3;
    EXPECT_EQ(findFault(compose(makeParts(mark(0, 1), mark(1, 2))), limits), noFault);
    EXPECT_EQ(findFault(compose(makeParts(mark(0, 1), mark(1, 2), mark(2, 3))), limits),
              OperationFault::TooManyOperations);
    BatchAdmission batch(author, slotsBound, limits);
    for (int count = 0; count < 3; ++count)
    {
        batch.requireWellFormed(*mark(0, 1));
    }
    EXPECT_THROW(batch.requireWellFormed(*mark(0, 1)), InvalidOperationError);
}

TEST(BatchAdmission, RefusesCompositesThatLieTooDeep)
{
    const auto nest = [](unsigned long depth)
    {
        OperationUPtr operation = mark(0, 1);
        for (; depth > 0; --depth)
        {
            operation = compose(makeParts(std::move(operation)));
        }
        return operation;
    };
    EXPECT_EQ(findFault(nest(16)), noFault);
    EXPECT_EQ(findFault(nest(17)), OperationFault::CompositesTooDeep);
    EXPECT_EQ(findFault(nest(5000)), OperationFault::CompositesTooDeep);
}

TEST(BatchAdmission, RefusesChangesThatLieTooDeep)
{
    OperationUPtr operation = mark(0, 1);
    for (int depth = 0; depth < 17; ++depth)
    {
        operation = makeChanged(restore(0, "a"), std::move(operation));
    }
    EXPECT_EQ(findFault(operation), OperationFault::CompositesTooDeep);
}

// What an operation is aimed at.

TEST(BatchAdmission, RefusesUnknownTypesOfNode)
{
    std::vector<Mark> ranges{makeRange<Mark>(nullptr, 0, 1, getMainText(), 35)};
    EXPECT_EQ(findFault(makeRanges(std::move(ranges))), OperationFault::UnknownNodeType);
}

TEST(BatchAdmission, RefusesOperationsThatTheTypeOfNodeDoesNotTake)
{
    std::vector<Mark> ranges{makeRange<Mark>(nullptr, 0, 1, getMainText(), number(OperationDOMNodeType::Run))};
    EXPECT_EQ(findFault(makeRanges(std::move(ranges))), OperationFault::WrongOperation);
    EXPECT_EQ(findFault(makeRange<Mark>(nullptr, 0, 1)), OperationFault::WrongOperation);
}

TEST(BatchAdmission, RefusesTypesOfNodeThatTakeNoOperations)
{
    std::vector<Mark> ranges{makeRange<Mark>(nullptr, 0, 1, getMainText(), number(OperationDOMNodeType::Char))};
    EXPECT_EQ(findFault(makeRanges(std::move(ranges))), OperationFault::NodeTypeWithoutOperations);
    EXPECT_EQ(findFault(makeRange<Mark>(nullptr, 0, 1, {}, number(OperationDOMNodeType::FrameCollection))),
              OperationFault::NodeTypeWithoutOperations);
}

TEST(BatchAdmission, RefusesRemovalsForGood)
{
    EXPECT_EQ(findFault(make<Remove>(makeItems("a"), 0, 1)), OperationFault::RemovalForGood);
    EXPECT_EQ(findFault(shadow(make<Remove>(makeItems("a"), 0, 1), Shadows{})), OperationFault::RemovalForGood);
    EXPECT_EQ(findFault(makeUnit(makeParts(make<Remove>(nullptr, 0, 1)))), OperationFault::RemovalForGood);
    EXPECT_EQ(findFault(makeChanged(make<Remove>(nullptr, 0, 1), mark(0, 1))), OperationFault::RemovalForGood);
    EXPECT_EQ(findFault(onRow(RowOrColumnRemoveOperation(0, nullptr))), OperationFault::RemovalForGood);
    // It may stand in the way from what was to be to what happened, which nobody executes.
    EXPECT_EQ(findFault(makeChanged(mark(0, 1), make<Remove>(nullptr, 0, 1))), noFault);
}

TEST(BatchAdmission, RefusesIDsOfOthers)
{
    const Operation::Id own = getFirstOperationID(author);
    const Operation::Id foreign = getFirstOperationID(author + 1);
    EXPECT_EQ(findFault(withID(mark(0, 1), own)), noFault);
    EXPECT_EQ(findFault(withID(mark(0, 1), foreign - 1)), noFault);
    EXPECT_EQ(findFault(withID(mark(0, 1), own - 1)), OperationFault::ForeignID);
    EXPECT_EQ(findFault(withID(mark(0, 1), foreign)), OperationFault::ForeignID);
    EXPECT_EQ(findFault(compose(makeParts(withID(mark(0, 1), foreign)))), OperationFault::ForeignID);
    EXPECT_EQ(findFault(shadow(withID(mark(0, 1), foreign), Shadows{})), OperationFault::ForeignID);
}

TEST(BatchAdmission, RestoringsBringOperationsOfOthersAlongThatLieInWhatComesBack)
{
    const Operation::Id foreign = getFirstOperationID(author + 1);
    const auto inElement = [&](unsigned long slot)
    {
        OperationNodeAddress text = getElement(slot);
        text.appendItems(makeChunk(OperationDOMNodeType::TextWithTombstones));
        return withID(inText(text, insert(0, "x")), foreign);
    };
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "#"), inElement(1)))), noFault);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "##"), inElement(2)))), noFault);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "#"), makeUnit(makeParts(inElement(1)))))), noFault);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "#"), shadow(inElement(1), makeShadow(1))))), noFault);
    for (const unsigned long slot : {0ul, 2ul})
    {
        EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "#"), inElement(slot)))), OperationFault::ForeignID);
    }
    // It lies beside what comes back, or in front of it, or nothing comes back.
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "a"), withID(insert(1, "x"), foreign)))),
              OperationFault::ForeignID);
    EXPECT_EQ(findFault(makeUnit(makeParts(inElement(1), restore(1, "#")))), OperationFault::ForeignID);
    EXPECT_EQ(findFault(makeUnit(makeParts(inElement(1)))), OperationFault::ForeignID);
    EXPECT_EQ(findFault(compose(makeParts(restore(1, "#"), inElement(1)))), OperationFault::ForeignID);
    EXPECT_EQ(findFault(makeUnit(makeParts(withID(restore(1, "a"), foreign), insert(1, "x")))),
              OperationFault::ForeignID);
    EXPECT_EQ(findFault(makeUnit(makeParts(restore(1, "#"), withID(setRunOn(getElement(1)), 1ul << 53U)))),
              OperationFault::ForeignID);
}

TEST(BatchAdmission, RefusesIDsOfRowsThatAreNotTheAuthorsOwn)
{
    EXPECT_EQ(findFault(onRow(InsertLine(0, makeRow(getFirstOperationID(author + 1))))), OperationFault::ForeignID);
}

TEST(BatchAdmission, RefusesAddressesOfTooManySteps)
{
    OperationNodeAddress address = getMainText();
    while (address.getSize() < 65)
    {
        address.appendItems(makeChunk(OperationDOMNodeType::TextWithTombstones));
    }
    EXPECT_EQ(findFault(setRunOn(address)), OperationFault::AddressTooDeep);
    EXPECT_EQ(findFault(setRunOn(address.getTrimmedAtEnd(1))), noFault);
}

TEST(BatchAdmission, RefusesStepsIntoMapsWithoutKeys)
{
    EXPECT_EQ(findFault(setRunOn(getMainText().appendItems(NodeAddressing::AddressInMap()))),
              OperationFault::AddressWithoutKey);
}

TEST(BatchAdmission, RefusesStepsToUnknownTypesOfNode)
{
    EXPECT_EQ(findFault(setRunOn(getMainText().appendItems(OperationNodeAddress::FixedChunk(35)))),
              OperationFault::AddressWithUnknownType);
}

TEST(BatchAdmission, RefusesIndicesThatNoListHas)
{
    EXPECT_EQ(findFault(mark(99, 100)), noFault);
    EXPECT_EQ(findFault(mark(0, 101)), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(mark(0, 1ul << 62U)), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(restore(100, "a")), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(insert(101, "a")), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(make<Insert>(makeItems("a"), greatest - 1, greatest)), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(make<Leave>(nullptr, 5, greatest)), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(setRunOn(getElement(greatest))), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(setRunOn(getCellText(greatest, 0))), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(setRunOn(getCellText(0, greatest))), OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(onRow(MarkLine(greatest, nullptr))), OperationFault::IndexTooHigh);
}

TEST(BatchAdmission, NoListHasMoreSlotsThanTheLimit)
{
    AdmissionLimits limits;
    limits._slots = 10;
    EXPECT_EQ(findFault(mark(9, 10), limits), noFault);
    EXPECT_EQ(findFault(mark(9, 11), limits), OperationFault::IndexTooHigh);
}

TEST(BatchAdmission, RefusesToNameTooManySlots)
{
    AdmissionLimits limits;
    limits._namedSlots = 50;
    EXPECT_EQ(findFault(mark({{60, 80}, {10, 40}}), limits), noFault);
    EXPECT_EQ(findFault(mark({{60, 81}, {10, 40}}), limits), OperationFault::TooManyNamedSlots);
}

// Ranges.

TEST(BatchAdmission, RefusesOperationsOnNoRanges)
{
    ListMultirangeOperationImpl<Mark> operation({makeRange<Mark>(nullptr, 0, 1)});
    operation.getNestedOperations().clear();
    EXPECT_EQ(findFault(operation), OperationFault::MissingRanges);
}

TEST(BatchAdmission, RefusesTooManyRanges)
{
    AdmissionLimits limits;
    limits._ranges = 2;
    EXPECT_EQ(findFault(mark({{5, 6}, {3, 4}}), limits), noFault);
    EXPECT_EQ(findFault(mark({{5, 6}, {3, 4}, {1, 2}}), limits), OperationFault::TooManyRanges);
}

TEST(BatchAdmission, RefusesRangesOnDifferentNodes)
{
    std::vector<Mark> onTwoTexts{makeRange<Mark>(nullptr, 3, 4), makeRange<Mark>(nullptr, 0, 1, getShapeText())};
    EXPECT_EQ(findFault(makeRanges(std::move(onTwoTexts))), OperationFault::RangesOnDifferentNodes);
    std::vector<Mark> onTwoTypes{makeRange<Mark>(nullptr, 3, 4),
                                 makeRange<Mark>(nullptr, 0, 1, getMainText(), number(OperationDOMNodeType::Run))};
    EXPECT_EQ(findFault(makeRanges(std::move(onTwoTypes))), OperationFault::RangesOnDifferentNodes);
}

TEST(BatchAdmission, RefusesRangesWithIDsOfTheirOwn)
{
    std::vector<Mark> ranges{makeRange<Mark>(nullptr, 3, 4)};
    Operation::Id id = getFirstOperationID(author);
    ranges.front().setIDIfNeeded(id);
    EXPECT_EQ(findFault(makeRanges(ranges)), OperationFault::RangesWithOwnIDs);
    EXPECT_EQ(findFault(withID(makeRanges(ranges), getFirstOperationID(author))), noFault);
}

TEST(BatchAdmission, RefusesRangesThatDoNotDescend)
{
    EXPECT_EQ(findFault(mark({{1, 2}, {3, 4}})), OperationFault::RangesNotDescending);
    EXPECT_EQ(findFault(mark({{3, 5}, {2, 4}})), OperationFault::RangesNotDescending);
    EXPECT_EQ(findFault(insert({{1, "a"}, {3, "b"}})), OperationFault::RangesNotDescending);
    std::vector<Leave> leavings{makeRange<Leave>(nullptr, 1, 2), makeRange<Leave>(nullptr, 3, 4)};
    EXPECT_EQ(findFault(makeRanges(leavings)), OperationFault::RangesNotDescending);
    EXPECT_EQ(findFault(shadow(makeRanges(leavings), Shadows{})), OperationFault::RangesNotDescending);
}

TEST(BatchAdmission, RefusesMovesOfSeveralSlots)
{
    constexpr unsigned long nodeType = number(OperationDOMNodeType::WorksheetCollection);
    EXPECT_EQ(findFault(ListMoveOperation({}, nodeType, Range(0, 2), 1)), OperationFault::MoveOfSeveral);
}

TEST(BatchAdmission, RefusesMovesOutOfTheirLists)
{
    constexpr unsigned long nodeType = number(OperationDOMNodeType::WorksheetCollection);
    const auto findMoveFault = [&](unsigned long slot, long offset)
    { return findFault(ListMoveOperation({}, nodeType, Range(slot, slot + 1), offset)); };
    EXPECT_EQ(findMoveFault(5, -6), OperationFault::MoveOutOfList);
    EXPECT_EQ(findMoveFault(5, 96), OperationFault::MoveOutOfList);
    EXPECT_EQ(findMoveFault(5, std::numeric_limits<long>::min()), OperationFault::MoveOutOfList);
    EXPECT_EQ(findMoveFault(5, std::numeric_limits<long>::max()), OperationFault::MoveOutOfList);
    EXPECT_EQ(findFault(onRow(RowOrColumnMoveOperation(5, -6))), OperationFault::MoveOutOfList);
    // Nobody executes those that stay inside so far.
    EXPECT_EQ(findMoveFault(5, -5), OperationFault::NodeTypeWithoutOperations);
    EXPECT_EQ(findFault(onRow(RowOrColumnMoveOperation(5, 3))), OperationFault::NodeTypeWithoutOperations);
}

// What keeps an operation from having an effect.

TEST(BatchAdmission, TakesShadowsOnTheWayOfAnOperation)
{
    const OperationUPtr inCell = inText(getCellText(0, 0), mark(0, 1));
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(1))), noFault);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(3, DeadPlace::Kind::Row))), noFault);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(3, DeadPlace::Kind::Column))), noFault);
}

TEST(BatchAdmission, RefusesShadowsThatAreNotOnTheWay)
{
    const OperationUPtr inCell = inText(getCellText(0, 0), mark(0, 1));
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(0))), OperationFault::ShadowOutsideAddress);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(1, DeadPlace::Kind::Row))), OperationFault::ShadowOutsideAddress);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(3))), OperationFault::ShadowOutsideAddress);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(5, DeadPlace::Kind::Row))), OperationFault::ShadowOutsideAddress);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(greatest))), OperationFault::ShadowOutsideAddress);
    EXPECT_EQ(findFault(shadow(inCell, makeShadow(1, static_cast<DeadPlace::Kind>(9)))),
              OperationFault::ShadowOutsideAddress);
}

TEST(BatchAdmission, RefusesMoreShadowsThanPlaces)
{
    Shadows shadows;
    shadows._deadPlaces.resize(13, DeadPlace{1, DeadPlace::Kind::Element, nullptr});
    const OperationUPtr inCell = inText(getCellText(0, 0), mark(0, 1));
    EXPECT_EQ(findFault(shadow(inCell, shadows)), OperationFault::TooManyShadows);
}

TEST(BatchAdmission, RefusesWrongValuesInShadows)
{
    Shadows shadows = makeShadow(1);
    shadows._deadPlaces.front()._removedValue = makeSharedConst<SimpleDataValue<int>>(1);
    EXPECT_EQ(findFault(shadow(inText(getCellText(0, 0), mark(0, 1)), shadows)), OperationFault::WrongData);
}

TEST(BatchAdmission, RefusesTooManyHolders)
{
    constexpr unsigned long tooMany = (1ul << 20U) + 1;
    const std::vector<Leave> ranges{Leave(getMainText(), textType, nullptr, Range(0, 1), tooMany)};
    EXPECT_EQ(findFault(makeRanges(ranges)), OperationFault::TooManyHolders);
    const auto scripts = makeFixed(OperationDOMNodeType::ScriptCollection);
    EXPECT_EQ(findFault(MapLeaveRemovedOperation(scripts, number(OperationDOMNodeType::ScriptCollection),
                                                 makeStringKey("a"), nullptr, greatest)),
              OperationFault::TooManyHolders);
    EXPECT_EQ(findFault(onRow(RowOrColumnLeaveTombstoneOperation(0, nullptr, greatest))),
              OperationFault::TooManyHolders);
    Shadows shadows;
    shadows._holdersCount = greatest;
    EXPECT_EQ(findFault(shadow(restore(0, "a"), shadows)), OperationFault::TooManyHolders);
}

TEST(BatchAdmission, RefusesHoldersOfWhatIsNotRestored)
{
    Shadows shadows;
    shadows._holdersCount = 1;
    EXPECT_EQ(findFault(shadow(restore(0, "a"), shadows)), noFault);
    EXPECT_EQ(findFault(shadow(insertScript("a", ""), shadows)), noFault);
    EXPECT_EQ(findFault(shadow(mark(0, 1), shadows)), OperationFault::HoldersOfOtherOperation);
    EXPECT_EQ(findFault(shadow(setRunSize(3, 1), shadows)), OperationFault::HoldersOfOtherOperation);
    EXPECT_EQ(findFault(shadow(onRow(MarkLine(0, nullptr)), shadows)), OperationFault::NodeTypeWithoutOperations);
}

// Selections.

TEST(BatchAdmission, TakesSelections)
{
    EXPECT_EQ(findFault(makeSelection(getElement(100))), noFault);
    EXPECT_EQ(findFault(makeSelection(getCellText(1, 1))), noFault);
    Selection selection = makeSelection(getElement(3));
    selection.getSelectionEnd().getRevertedInsertOperations().push_back({getMainText(), 7, 1, 5});
    EXPECT_EQ(findFault(selection), noFault);
}

TEST(BatchAdmission, RefusesUnknownModesOfSelections)
{
    Selection selection = makeSelection(getElement(3));
    selection.setSelectionMode(static_cast<SelectionMode>(3));
    EXPECT_EQ(findFault(selection), OperationFault::UnknownSelectionMode);
}

TEST(BatchAdmission, RefusesSelectionsAtPlacesThatNoListHas)
{
    EXPECT_EQ(findFault(makeSelection(getElement(101))), OperationFault::IndexTooHigh);
    Selection selection = makeSelection(getElement(3));
    selection.getSelectionEnd().getAddress() = getElement(greatest);
    EXPECT_EQ(findFault(selection), OperationFault::IndexTooHigh);
    selection = makeSelection(getElement(3));
    selection.getSelectionBegin().getRevertedInsertOperations().push_back({getMainText(), 7, 1, greatest});
    EXPECT_EQ(findFault(selection), OperationFault::IndexTooHigh);
}

TEST(BatchAdmission, RefusesSelectionsThatRememberTooMuch)
{
    Selection selection = makeSelection(getElement(3));
    selection.getSelectionBegin().getRevertedInsertOperations().resize(1025);
    EXPECT_EQ(findFault(selection), OperationFault::TooManyRevertedInsertions);
}

TEST(BatchAdmission, RefusesSelectionsThatRememberWhatIsNotOnTheirWay)
{
    Selection selection = makeSelection(getElement(3));
    auto& reverted = selection.getSelectionBegin().getRevertedInsertOperations();
    reverted.push_back({getMainText(), 7, 0, 5});
    EXPECT_EQ(findFault(selection), OperationFault::RevertedInsertionOutsideAddress);
    reverted.back() = {getCellText(0, 0), 7, 5, 5};
    EXPECT_EQ(findFault(selection), OperationFault::RevertedInsertionOutsideAddress);
    reverted.back() = {getMainText(), greatest, 1, 5};
    EXPECT_EQ(findFault(selection), OperationFault::ForeignID);
}

TEST(InvalidOperationError, TellsEachFaultInASentenceOfItsOwn)
{
    std::set<std::string> sentences;
    for (unsigned number = 0; number <= static_cast<unsigned>(getLastEnumerator(OperationFault())); ++number)
    {
        sentences.insert(describe(static_cast<OperationFault>(number)));
    }
    EXPECT_EQ(sentences.size(), static_cast<unsigned>(getLastEnumerator(OperationFault())) + 1);
    EXPECT_EQ(sentences.count(""), 0u);
    EXPECT_ASSERTION(describe(static_cast<OperationFault>(200)), "Invalid enum value");
}

} // namespace Zem::CollaborationSession

#include "CE_Crossing.h"

#include "CE_InverseOperation.h"
#include "OperationNotation.h"
#include "TreeReplica.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

constexpr auto late = TieResolveCondition::SecondWins;

OperationUPtr replaceText(OperationNodeAddress element, int name)
{
    return SetPropertyOperation::makeNewSetPropertyOperation(
        std::move(element), ElementType, WholeTextProperty, std::make_unique<SimpleDataValue<TreeText>>(),
        std::make_unique<SimpleDataValue<TreeText>>(TreeText{TreeSlot{name, true, makeElement(name)}}));
}

/// Row 0 is dead; in a cell of it a slot was marked, edited by who didn't know that, and restored again while the row
/// was dead.
class RestoringInsideADeadRow : public testing::Test
{
protected:
    RestoringInsideADeadRow()
    {
        _replica.run(markText(cellAddress(0, 1), 0));
        _replica.run(_replica.pastHistory(insertText(_element, 0, 900, 4), 0));
        _replica.run(row(RowMark(0, nullptr)));
        _replica.undo(0);
    }

    static OperationUPtr makeUnit(OperationUPtr restoring, OperationUPtr broughtAlong)
    {
        std::vector<OperationUPtr> parts;
        parts.push_back(std::move(restoring));
        parts.push_back(std::move(broughtAlong));
        return std::make_unique<CompositeOperation>(std::move(parts), CompositeKind::Restoring);
    }

    /// What brings the row back, and as one part of its own what brings the slot and its edit back.
    OperationUPtr makeNestedUnit() const
    {
        const OperationUPtr flat = _replica.makeUndoOf(2);
        const std::vector<OperationUPtr>& parts = cast<CompositeOperation>(*flat).getParts();
        return makeUnit(cloneOperation(*parts.at(0)),
                        makeUnit(cloneOperation(*parts.at(1)), cloneOperation(*parts.at(2))));
    }

    OperationUPtr shadowByRow(const Operation& operation) const
    {
        return _transformer->include(operation, *row(RowMark(0, nullptr)), late);
    }

    const TreeElement& getCell() const
    {
        return _replica.getDocument()._table._cells.at({61, 72});
    }

    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    OperationNodeAddress _element = textElementAddress(cellAddress(0, 1), 0);
    TreeReplica _replica;
};

} // namespace

TEST(Crossing, WhatIsLeftOfACompositeBearsItsId)
{
    const auto restore = [](unsigned long slot)
    {
        return std::make_unique<ListModificationOperation<RestoreTag>>(listAddress(), ElementListType,
                                                                       makeElementItems({makeElement(1)}),
                                                                       IndexRange<unsigned long>::fromCount(slot, 1));
    };
    std::vector<OperationUPtr> parts;
    parts.push_back(restore(1));
    parts.push_back(markElement(0));
    CompositeOperation first(std::move(parts));
    unsigned long nextID = 5;
    first.setIDIfNeeded(nextID);
    const auto transformer = makeTreeTransformer();
    const OperationUPtr left = transformer->include(first, *restore(1), late);
    EXPECT_EQ(describe(*left), "[" + describe(*markElement(0)) + "; ]");
    EXPECT_EQ(left->getID().value_or(0), 5u);
    EXPECT_EQ(cast<CompositeOperation>(*left).getParts()[0]->getID().value_or(0), 7u);
    const OperationUPtr leftLater = transformer->include(*left, *restore(1), late);
    EXPECT_EQ(describe(*leftLater), describe(*left)) << "and stays of one part";
    EXPECT_EQ(makeReversal(*left)->getID().value_or(0), 5u);
    EXPECT_EQ(left->getPseudoIdentity(*transformer)->getID().value_or(0), 5u);
}

TEST(Crossing, CompositeOfWhichNothingIsLeftKeepsItsId)
{
    const auto restore = std::make_unique<ListModificationOperation<RestoreTag>>(
        listAddress(), ElementListType, makeElementItems({makeElement(1)}), IndexRange<unsigned long>::fromCount(1, 1));
    std::vector<OperationUPtr> parts;
    parts.push_back(cloneOperation(*restore));
    CompositeOperation first(std::move(parts));
    unsigned long nextID = 5;
    first.setIDIfNeeded(nextID);
    const OperationUPtr left = makeTreeTransformer()->include(first, *restore, late);
    EXPECT_EQ(describe(*left), "nothing");
    EXPECT_EQ(left->getID().value_or(0), 5u);
}

// A composite without parts fits no unit: what a unit restores is told by its first part.
TEST(Crossing, UnitThatBeginsWithACompositeWithoutPartsFails)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(std::make_unique<CompositeOperation>());
    const CompositeOperation unit(std::move(parts), CompositeKind::Restoring);
    EXPECT_ASSERTION(makeTreeTransformer()->include(unit, *markElement(0), late), "!composite->getParts().empty()");
}

TEST(Crossing, EditThatASettingOfTheWholeTextShadowedForGoodIsNotBroughtAlong)
{
    const auto transformer = makeTreeTransformer();
    for (const bool isEditFirst : {true, false})
    {
        TreeReplica replica;
        replica.run(markElement(0));
        const OperationUPtr edit = replica.pastHistory(insertText(listElementAddress(0), 0, 900, 4), 0);
        const OperationUPtr setting = replica.pastHistory(replaceText(listElementAddress(0), 800), 0);
        const OperationUPtr settingPastEdit = transformer->include(*setting, *edit, late);
        const OperationUPtr editPastSetting = transformer->include(*edit, *setting, late);
        EXPECT_EQ(describe(*settingPastEdit), "shadowed(/1[0] set(property 2), dead at 1)");
        EXPECT_EQ(describe(*editPastSetting), "shadowed(/1[0]/2 multi{insert(0,1, 1 items) })");
        replica.run(cloneOperation(isEditFirst ? *edit : *setting));
        replica.run(cloneOperation(isEditFirst ? *settingPastEdit : *editPastSetting));
        EXPECT_EQ(
            describe(*replica.makeUndoOf(0)),
            isEditFirst
                ? "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(0,1, 1 items) }; /1[0] set(property 2); ]"
                : "brings[/1 restore(0,1, 1 items); /1[0] set(property 2); ]");
        replica.undo(0);
        EXPECT_EQ(textOf(replica.getDocument()._list[0]._element), "800 ");
    }
}

TEST(Crossing, RestoringPastARestoringOfTheSameElementDoesNothingASecondTime)
{
    const auto transformer = makeTreeTransformer();
    TreeReplica replica;
    replica.run(markElement(0));
    const OperationUPtr plain = replica.makeUndoOf(0);
    replica.run(replica.pastHistory(insertText(listElementAddress(0), 0, 900, 4), 0));
    const OperationUPtr unit = replica.makeUndoOf(0);
    ASSERT_EQ(describe(*unit), "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(0,1, 1 items) }; ]");
    for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
    {
        EXPECT_EQ(describe(*transformer->include(*unit, *plain, tie)), "nothing");
        EXPECT_EQ(describe(*transformer->include(*plain, *unit, tie)), "nothing");
        EXPECT_EQ(describe(*transformer->include(*unit, *unit, tie)), "nothing");
    }
}

TEST(Crossing, RestoringOfAnotherElementTakesNothingFromAUnit)
{
    const auto transformer = makeTreeTransformer();
    TreeReplica replica;
    replica.run(markElement(0));
    replica.run(markElement(1));
    replica.run(replica.pastHistory(insertText(listElementAddress(0), 0, 900, 4), 0));
    const OperationUPtr unit = replica.makeUndoOf(0);
    EXPECT_EQ(describe(*transformer->include(*unit, *replica.makeUndoOf(1), late)), describe(*unit));
}

TEST(Crossing, PartsKeepTheirIds)
{
    const auto transformer = makeTreeTransformer();
    TreeReplica replica;
    replica.run(markText(listElementAddress(0), 0));
    std::vector<OperationUPtr> parts;
    parts.push_back(replica.makeUndoOf(0));
    parts.push_back(insertText(listElementAddress(1), 0, 900, 8));
    unsigned long nextID = 7;
    parts.front()->setIDIfNeeded(nextID);
    const OperationUPtr result =
        transformer->include(*transformer->include(CompositeOperation(std::move(parts)),
                                                   *insertText(listElementAddress(0), 0, 901, 5), late),
                             *markElement(0), late);
    const std::vector<OperationUPtr>& pastBoth = cast<CompositeOperation>(*result).getParts();
    ASSERT_EQ(describe(*result), "[shadowed(/1[0]/2 multi{restore(1,1, 1 items) }, dead at 1); "
                                 "/1[1]/2 multi{insert(0,1, 1 items) }; ]");
    EXPECT_EQ(pastBoth.at(0)->getID().value_or(0), 7u);
    EXPECT_EQ(pastBoth.at(1)->getID().value_or(0), 8u);
}

/// A row and a column were removed, and then the cell in which they cross was edited by who didn't know that.
class EditWhereADeadRowAndColumnCross : public testing::Test
{
protected:
    EditWhereADeadRowAndColumnCross()
    {
        _replica.run(row(RowMark(0, nullptr)));
        _replica.run(_replica.pastHistory(column(RowMark(0, nullptr)), 0));
        _replica.run(_replica.pastHistory(insertText(cellAddress(0, 0), 0, 900, 4), 0));
    }

    std::string getText() const
    {
        return textOf(_replica.getDocument()._table._cells.at({61, 71}));
    }

    TreeReplica _replica;
};

TEST_F(EditWhereADeadRowAndColumnCross, ComesBackOnceWithTheLastOfThem)
{
    _replica.undo(0);
    EXPECT_EQ(describe(*_replica.makeUndoOf(1)),
              "brings[/6 column restore(0, cells 0 1); /6[0,0]/2 multi{insert(0,1, 1 items) }; ]");
    _replica.undo(1);
    EXPECT_EQ(getText(), "900 61710 61711 ");
}

TEST_F(EditWhereADeadRowAndColumnCross, ComesBackOnceIfBothAreUndoneAtOnce)
{
    const OperationUPtr columnBack = _replica.makeUndoOf(1);
    _replica.undo(0);
    _replica.run(_replica.pastHistory(cloneOperation(*columnBack), 3));
    EXPECT_EQ(getText(), "900 61710 61711 ");
}

TEST_F(EditWhereADeadRowAndColumnCross, SeveralComeBackInTheirOrder)
{
    _replica.run(_replica.pastHistory(insertText(cellAddress(0, 0), 0, 901, 5), 0));
    const OperationUPtr rowBack = _replica.makeUndoOf(0);
    _replica.undo(1);
    _replica.run(_replica.pastHistory(cloneOperation(*rowBack), 4));
    EXPECT_EQ(getText(), "900 901 61710 61711 ");
}

TEST(Crossing, EditBetweenTheRemovalsOfItsRowAndItsColumnComesBackOnceWithTheOneBehind)
{
    for (const bool isRowFirst : {true, false})
    {
        TreeReplica replica;
        replica.run(row(RowMark(0, nullptr)));
        replica.run(replica.pastHistory(insertText(cellAddress(0, 0), 0, 900, 4), 0));
        replica.run(replica.pastHistory(column(RowMark(0, nullptr)), 0));
        replica.run(replica.pastHistory(insertText(cellAddress(0, 0), 0, 901, 5), 0));
        replica.undo(isRowFirst ? 0 : 2);
        replica.undo(isRowFirst ? 2 : 0);
        EXPECT_EQ(textOf(replica.getDocument()._table._cells.at({61, 71})), "900 901 61710 61711 ");
    }
}

TEST_F(RestoringInsideADeadRow, KeepsItsEditWhenTheRowIsRestoredPastIt)
{
    EXPECT_EQ(describe(*_replica.makeUndoOf(2)),
              "brings[/6 row restore(0, cells 0 1); /6[0,1]/2 multi{restore(0,1, 1 items) }; "
              "/6[0,1]/2[0]/2 multi{insert(0,1, 1 items) }; ]");
    _replica.undo(2);
    EXPECT_EQ(textOf(getCell()), "61720 61721 ");
    EXPECT_EQ(textOf(getCell()._text[0]._element), "900 ");
}

TEST_F(RestoringInsideADeadRow, LaterMarkingOfWhatTheEditMadeFindsItLive)
{
    _replica.run(shadowByRow(*markText(_element, 0)));
    _replica.undo(2);
    EXPECT_EQ(textOf(getCell()._text[0]._element), "dead ");
}

TEST_F(RestoringInsideADeadRow, UnitInAUnitIsCarriedOutAndTakenBack)
{
    TreeDocument document = _replica.getDocument();
    const OperationUPtr nested = makeNestedUnit();
    BaseOperationExecutor executor(std::make_unique<TreeExecutor>(document), _transformer);
    OperationUPtr changedOp;
    EXPECT_FALSE(executor.executeAndChangeIfNeeded(*nested, changedOp));
    EXPECT_EQ(textOf(document._table._cells.at({61, 72})._text[0]._element), "900 ");
    executor.reverse(*nested);
    EXPECT_EQ(document, _replica.getDocument());
}

TEST_F(RestoringInsideADeadRow, UnitInAUnitFollowsWhatComesInFrontOfIt)
{
    using RowInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
    const OperationUPtr insertion = row(RowInsert(0, makeSharedConst<RowOrColumn>()));
    EXPECT_EQ(describe(*_transformer->include(*makeNestedUnit(), *insertion, late)),
              "brings[/6 row restore(1, cells 0 1); brings[/6[1,1]/2 multi{restore(0,1, 1 items) }; "
              "/6[1,1]/2[0]/2 multi{insert(0,1, 1 items) }; ]; ]");
    EXPECT_EQ(describe(*_transformer->include(*insertion, *makeNestedUnit(), late)), "/6 row insert(0)");
}

TEST_F(RestoringInsideADeadRow, UnitInAUnitPastARestoringOfTheSameRowDoesNothingASecondTime)
{
    const OperationUPtr plain = makeUndo(*_replica.getHistory()[2], *_transformer);
    ASSERT_EQ(describe(*plain), "/6 row restore(0, cells 0 1)");
    EXPECT_EQ(describe(*_transformer->include(*makeNestedUnit(), *plain, late)), "nothing");
    EXPECT_EQ(describe(*_transformer->include(*plain, *makeNestedUnit(), late)), "nothing");
}

TEST_F(RestoringInsideADeadRow, ShadowedOperationJoinsAUnitInAUnitBehindItsParts)
{
    const OperationUPtr marking = shadowByRow(*markText(_element, 0));
    EXPECT_EQ(describe(*_transformer->include(*makeNestedUnit(), *marking, late)),
              "brings[/6 row restore(0, cells 0 1); brings[/6[0,1]/2 multi{restore(0,1, 1 items) }; "
              "/6[0,1]/2[0]/2 multi{insert(0,1, 1 items) }; ]; /6[0,1]/2[0]/2 multi{mark(0,1) }; ]");
}

} // namespace Zem::CollaborationEngine::Testing

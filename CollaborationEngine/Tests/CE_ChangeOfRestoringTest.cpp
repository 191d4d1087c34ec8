// Restorings that bring along what the document makes something else of, and what was done in the dead element by those
// who didn't know that.

#include "CE_InverseOperation.h"
#include "CE_MultirangeOperationUtils.h"
#include "CE_OperationEquality.h"
#include "OperationNotation.h"
#include "TreeReplica.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

constexpr auto late = TieResolveCondition::SecondWins;

using TextInsert = ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;

constexpr Operation::Id repairedID = 4;

/// Where the operation with that id is to insert something, two other elements go in at gap 2. Element 1 is never
/// restored, and of elements 0 and 1 only the former.
class RepairingExecutor final : public AtomicOperationExecutor
{
public:
    explicit RepairingExecutor(TreeDocument& document)
        : _executor(document)
    {
    }

    bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) override
    {
        if (describe(operation) == "/1 restore(1,1, 1 items)")
        {
            changedOp = std::make_unique<EmptyOperation>();
            return true;
        }
        if (describe(operation) == "/1 restore(0,2, 2 items)")
        {
            OperationUPtr first = std::make_unique<ListModificationOperation<RestoreTag>>(
                listAddress(), ElementListType, makeElementItems({makeTreeDocument()._list[0]._element}),
                IndexRange<unsigned long>::fromCount(0, 1));
            _executor.executeAndChangeIfNeeded(cast<AtomicOperation>(*first), changedOp);
            changedOp = std::move(first);
            return true;
        }
        if (operation.getID() != repairedID)
        {
            return _executor.executeAndChangeIfNeeded(operation, changedOp);
        }
        OperationUPtr repaired =
            MultirangeOperationUtils::makeMultirangeOperationFromSingle(ListModificationOperation<InsertTag>(
                cast<TextInsert>(operation).getNodeAddress(), ElementTextType,
                makeElementItems({makeElement(950), makeElement(951)}), IndexRange<unsigned long>::fromCount(2, 2)));
        _executor.executeAndChangeIfNeeded(cast<AtomicOperation>(*repaired), changedOp);
        changedOp = std::move(repaired);
        return true;
    }

    void reverse(AtomicOperation& operation) override
    {
        _executor.reverse(operation);
    }

private:
    TreeExecutor _executor;
};

/// An element was removed, and somebody who didn't know that put another one into its text.
class ChangeOfRestoringTest : public testing::Test
{
protected:
    void removeAndEdit(unsigned long element)
    {
        _replica.run(markElement(element));
        _replica.run(_replica.pastHistory(insertText(listElementAddress(element), 0, 900, repairedID), 0));
    }

    /// In the state before all that.
    static OperationUPtr insertBetween()
    {
        return insertText(listElementAddress(0), 1, 910, 5);
    }

    std::string getText() const
    {
        return textOf(_replica.getDocument()._list[0]._element);
    }

    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    TreeReplica _replica{[](TreeDocument& document) { return std::make_unique<RepairingExecutor>(document); }};
};

} // namespace

TEST_F(ChangeOfRestoringTest, EditsThatCameLateFindTheirPlaceBehindWhatHappened)
{
    removeAndEdit(0);
    _replica.undo(0);
    EXPECT_EQ(describe(*_replica.getHistory().back()),
              "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(2,2, 2 items) }; ]");
    EXPECT_EQ(getText(), "10 11 950 951 ");
    _replica.run(_replica.pastHistory(insertText(listElementAddress(0), 2, 911, 6), 0));
    EXPECT_EQ(getText(), "10 11 950 951 911 ");
    _replica.run(_replica.pastHistory(insertBetween(), 0));
    EXPECT_EQ(getText(), "10 910 11 950 951 911 ");
}

TEST_F(ChangeOfRestoringTest, BringsThemAlongInTheOtherOrder)
{
    removeAndEdit(0);
    const OperationUPtr edit = _replica.pastHistory(insertBetween(), 0);
    _replica.undo(0);
    const OperationUPtr behindEdit =
        _transformer->include(*_replica.getHistory().back(), *edit, TieResolveCondition::FirstWins);
    EXPECT_EQ(describe(*behindEdit), "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(2,2, 2 items) }; "
                                     "/1[0]/2 multi{insert(1,1, 1 items) }; ]");
    TreeReplica other;
    other.run(cloneOperation(*_replica.getHistory()[0]));
    other.run(cloneOperation(*_replica.getHistory()[1]));
    other.run(cloneOperation(*edit));
    other.run(cloneOperation(*behindEdit));
    _replica.run(_replica.pastHistory(cloneOperation(*edit), 2));
    EXPECT_EQ(other.getDocument(), _replica.getDocument());
}

TEST_F(ChangeOfRestoringTest, FollowsOtherOperations)
{
    removeAndEdit(0);
    const OperationUPtr edit = _replica.pastHistory(insertBetween(), 0);
    _replica.undo(0);
    const OperationUPtr move = std::make_unique<ListMoveOperation>(listAddress(), ElementListType,
                                                                   IndexRange<unsigned long>::fromCount(0, 1), 2);
    const OperationUPtr restoring = _transformer->include(*_replica.getHistory().back(), *move, late);
    const OperationUPtr later = _transformer->include(*_transformer->include(*edit, *move, late), *restoring, late);
    EXPECT_EQ(describe(*later), "/1[2]/2 multi{insert(1,1, 1 items) }");
}

TEST_F(ChangeOfRestoringTest, WhatWasDoneToElementsThatDidntHappenIsLeftOut)
{
    removeAndEdit(0);
    const OperationUPtr marking =
        _transformer->include(*markText(listElementAddress(0), 0), *_replica.getHistory()[0], late);
    const OperationUPtr below = _transformer->include(
        *insertText(textElementAddress(listElementAddress(0), 0), 0, 920, 7), *_replica.getHistory()[0], late);
    _replica.undo(0);
    EXPECT_EQ(describe(*_replica.pastHistory(cloneOperation(*marking), 2)), "nothing");
    EXPECT_EQ(describe(*_replica.pastHistory(cloneOperation(*below), 2)),
              "shadowed(/1[0]/2[0]/2 multi{insert(0,1, 1 items) })");
}

TEST_F(ChangeOfRestoringTest, RestoringThatDidntHappenLeavesAllShadowed)
{
    removeAndEdit(1);
    const OperationUPtr edit = _replica.pastHistory(insertText(listElementAddress(1), 1, 910, 5), 0);
    _replica.undo(0);
    EXPECT_EQ(describe(*_replica.getHistory().back()), "nothing");
    _replica.run(_replica.pastHistory(cloneOperation(*edit), 2));
    EXPECT_EQ(describe(*_replica.makeUndoOf(0)),
              "brings[/1 restore(1,1, 1 items); /1[1]/2 multi{insert(0,1, 1 items) }; "
              "/1[1]/2 multi{insert(2,1, 1 items) }; ]");
}

TEST_F(ChangeOfRestoringTest, RestoringThatHappenedInPartLeavesTheRestShadowed)
{
    _replica.run(std::make_unique<ListModificationOperation<MarkAsRemovedTag>>(
        listAddress(), ElementListType, IndexRange<unsigned long>::fromCount(0, 2)));
    for (const unsigned long element : {0ul, 1ul})
    {
        _replica.run(_replica.pastHistory(insertText(listElementAddress(element), 0, 900, 8 + element), 0));
    }
    const OperationUPtr inFirst = _replica.pastHistory(insertText(listElementAddress(0), 1, 910, 10), 0);
    const OperationUPtr inSecond = _replica.pastHistory(insertText(listElementAddress(1), 1, 910, 11), 0);
    _replica.undo(0);
    const std::string happened = "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(0,1, 1 items) }; ]";
    EXPECT_EQ(describe(*_replica.getHistory().back()), happened);
    EXPECT_EQ(describe(*_replica.pastHistory(cloneOperation(*inSecond), 3)), describe(*inSecond));
    EXPECT_EQ(describe(*_transformer->include(*_replica.getHistory().back(), *inSecond, late)), happened);
    _replica.run(_replica.pastHistory(cloneOperation(*inFirst), 3));
    EXPECT_EQ(getText(), "900 10 910 11 ");
}

TEST_F(ChangeOfRestoringTest, OneThatIsChangedAgainGoesTheWholeWay)
{
    removeAndEdit(0);
    const OperationUPtr edit = _replica.pastHistory(insertBetween(), 0);
    TreeReplica plain;
    plain.run(cloneOperation(*_replica.getHistory()[0]));
    plain.run(cloneOperation(*_replica.getHistory()[1]));
    OperationUPtr planned = plain.makeUndoOf(0);
    TreeDocument document = plain.getDocument();
    BaseOperationExecutor executor(std::make_unique<RepairingExecutor>(document), _transformer);
    OperationUPtr changed;
    ASSERT_TRUE(executor.executeAndChangeIfNeeded(*planned, changed));
    executor.reverse(*changed);
    OperationUPtr changedAgain;
    ASSERT_TRUE(executor.executeAndChangeIfNeeded(*changed, changedAgain));
    EXPECT_EQ(describe(*_transformer->include(*edit, *changedAgain, late)), "/1[0]/2 multi{insert(1,1, 1 items) }");
    EXPECT_TRUE(haveEqualEffects(*changed, *changedAgain));
    EXPECT_FALSE(areDeeplyEqual(*changed, *changedAgain));
}

// What was planned can come apart past what others did. It used to stay in one piece that nothing could be brought
// past.
TEST_F(ChangeOfRestoringTest, IsJoinedWhereThePlanCameApart)
{
    removeAndEdit(0);
    const OperationUPtr edit = _replica.pastHistory(insertBetween(), 0);
    OperationUPtr planned = _replica.makeUndoOf(0);
    std::vector<OperationUPtr> plannedParts = std::move(cast<CompositeOperation>(*planned).getParts());
    std::vector<OperationUPtr> parts;
    parts.push_back(cloneOperation(*plannedParts.at(0)));
    OperationUPtr way = makeReversal(*plannedParts.at(1));
    const CompositeOperation changed(
        std::move(parts),
        ChangeOfRestoring(std::make_unique<CompositeOperation>(std::move(plannedParts)), std::move(way)));
    const OperationUPtr joined = _transformer->include(changed, *edit, late);
    const OperationUPtr next = _transformer->include(*joined, *insertText(listElementAddress(1), 0, 930, 9), late);
    EXPECT_EQ(describe(*next), "brings[/1 restore(0,1, 1 items); /1[0]/2 multi{insert(1,1, 1 items) }; ]");
}

TEST_F(ChangeOfRestoringTest, MergingRangesKeepsIt)
{
    removeAndEdit(0);
    const OperationUPtr edit = _replica.pastHistory(insertBetween(), 0);
    _replica.undo(0);
    const OperationUPtr merged =
        MultirangeOperationUtils::mergeOperations(cloneOperation(*_replica.getHistory().back()), false);
    EXPECT_EQ(describe(*_transformer->include(*edit, *merged, late)), "/1[0]/2 multi{insert(1,1, 1 items) }");
}

} // namespace Zem::CollaborationEngine::Testing

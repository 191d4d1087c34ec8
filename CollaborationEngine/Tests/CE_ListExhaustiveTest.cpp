// All small lists, all operations that are legal in them, all pairs, both ties; and all triples without moves (of those
// in four slots an even sample in sanitized builds, which take eight times as long).

#include "CE_InverseOperation.h"
#include "CE_ListSlots.h"
#include "CasesCount.h"
#include "SlotCases.h"

#include "Util_Assert.h"

#include <gtest/gtest.h>

#include <iostream>
#include <set>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

bool isOf(const Operation& operation, const std::string& kind)
{
    return describe(operation).find(kind + "(") != std::string::npos;
}

/// What was removed for good comes back without its history, and a restoring ends deletions that nobody counts any
/// more. A slot that is moved back may stand on the other side of what was inserted beside it, or stay where another
/// move of it was lost.
bool isUndoneExactly(const Operation& first, const Operation& second)
{
    const bool areMoves = isOf(first, "move") && (isOf(second, "insert") || isOf(second, "move"));
    return !isOf(first, "remove") && !isOf(first, "restore") && !areMoves;
}

SlotAction getAction(const Operation& operation)
{
    const NodeOperand operand = makeNodeOperand(operation);
    if (const auto* list = cast<ListOperation>(&operand._operation))
    {
        return describeSlots(*list, operand._shadows)._action;
    }
    return describeSlots(cast<ListMultirangeOperation>(operand._operation), operand._shadows)._action;
}

const std::vector<std::string> slotActionNames{"insertion", "removal",   "marking", "restoring",
                                               "leaving",   "releasing", "move"};

std::string getActionName(const Operation& operation)
{
    return slotActionNames.at(static_cast<unsigned long>(getAction(operation)));
}

/// Of the triples in four slots, a sanitized build tries every so many.
constexpr unsigned long sampleStep = isSanitizedBuild ? 8 : 1;

class Exhaustive : public testing::TestWithParam<Family>
{
protected:
    ~Exhaustive() override
    {
        std::cout << "  " << _casesCount << " cases\n";
        countCases(_casesCount);
    }

    SlotModel applied(const SlotModel& state, Operation& operation)
    {
        SlotModel after = state;
        after.apply(operation);
        return after;
    }

    OperationUPtr include(const Operation& first, const Operation& second, TieResolveCondition tie)
    {
        return MultirangeOperationUtils::mergeOperations(_transformer->include(first, second, tie), false);
    }

    template<class Check>
    void forEachState(const Check& check)
    {
        for (unsigned long size = 0; size <= 4; ++size)
        {
            const unsigned long maximumHolders = size <= 1 ? 3 : (size <= 3 ? 2 : 1);
            for (const SlotModel& state : makeStates(size, maximumHolders))
            {
                check(state);
                if (HasFailure())
                {
                    return;
                }
            }
        }
    }

    /// Calls `check` for each pair of legal operations, both of which have been executed once.
    template<class Check>
    void forEachPair(OperationKinds kinds, const Check& check)
    {
        forEachState(
            [&](const SlotModel& state)
            {
                const auto firsts = makeExecuted(state, '1', kinds);
                const auto seconds = makeExecuted(state, '5', kinds);
                for (const OperationUPtr& first : firsts)
                {
                    for (const OperationUPtr& second : seconds)
                    {
                        for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
                        {
                            ++_casesCount;
                            checkGuarded(state, {first.get(), second.get()},
                                         [&] { check(state, *first, *second, tie); });
                        }
                    }
                }
            });
    }

    template<class Check>
    void checkGuarded(const SlotModel& state, const std::vector<Operation*>& operations, const Check& check)
    {
        if (HasFailure())
        {
            return;
        }
        try
        {
            check();
        }
        catch (const std::logic_error& error)
        {
            ADD_FAILURE() << error.what();
        }
        if (HasFailure())
        {
            std::string text;
            for (const Operation* operation : operations)
            {
                text += "\n  " + describe(*operation);
            }
            ADD_FAILURE() << "in " << state.toString() << text;
        }
    }

    bool hasEffectOf(const SlotModel& state, Operation& operation, Operation& other)
    {
        try
        {
            return applied(state, operation) == applied(state, other);
        }
        catch (const IllegalOperation&)
        {
            return false;
        }
    }

    std::vector<OperationUPtr> makeExecuted(const SlotModel& state, char firstItem, OperationKinds kinds)
    {
        auto operations = makeOperations(state, GetParam(), firstItem, kinds);
        for (const OperationUPtr& operation : operations)
        {
            applied(state, *operation);
        }
        return operations;
    }

    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeListTransformer();
    unsigned long _casesCount = 0;
};

} // namespace

TEST_P(Exhaustive, BothOrdersOfTwoOperationsGiveOneList)
{
    std::set<std::pair<SlotAction, SlotAction>> metPairs;
    forEachPair({},
                [&](const SlotModel& state, Operation& first, Operation& second, TieResolveCondition tie)
                {
                    metPairs.insert({getAction(first), getAction(second)});
                    const OperationUPtr firstAfter = include(first, second, tie);
                    const OperationUPtr secondAfter = include(second, first, getOpposite(tie));
                    SlotModel one = applied(applied(state, first), *secondAfter);
                    SlotModel other = applied(applied(state, second), *firstAfter);
                    EXPECT_EQ(one, other) << one.toString() << " and " << other.toString() << "\n  "
                                          << describe(*firstAfter) << "\n  " << describe(*secondAfter);
                });
    const unsigned long actionsCount = slotActionsCount - (GetParam() == Family::SingleRange ? 0 : 1);
    EXPECT_EQ(metPairs.size(), actionsCount * actionsCount) << "each cell of the matrix is met; no text moves";
}

// The second operation came later and stands in the history, so that it wins what ties there are.
TEST_P(Exhaustive, UndoingOneOfTwoLeavesTheOther)
{
    forEachPair({},
                [&](const SlotModel& state, Operation& first, Operation& second, TieResolveCondition tie)
                {
                    const OperationUPtr secondAfter = include(second, first, getOpposite(tie));
                    const SlotModel both = applied(applied(state, first), *secondAfter);
                    const auto late = TieResolveCondition::SecondWins;
                    const OperationUPtr undo = include(*makeUndo(first, *_transformer), *secondAfter, late);
                    applied(both, *undo);
                    const OperationUPtr reversal = include(*makeReversal(first), *secondAfter, late);
                    const SlotModel undone = applied(both, *reversal);
                    if (isUndoneExactly(first, second))
                    {
                        const SlotModel expected = applied(state, second);
                        EXPECT_EQ(undone, expected)
                            << undone.toString() << " and not " << expected.toString() << "\n  " << describe(*reversal);
                    }
                });
}

// Reversing takes the operations back in the order in which they came, newest first.
TEST_P(Exhaustive, ReversingBothOfTwoGivesTheListBack)
{
    const OperationKinds kinds{false, true};
    forEachPair(kinds,
                [&](const SlotModel& state, Operation& first, Operation& second, TieResolveCondition tie)
                {
                    if (state.getHighestHoldersCount() > 1)
                    {
                        return;
                    }
                    const OperationUPtr secondAfter = include(second, first, getOpposite(tie));
                    SlotModel model = applied(applied(state, first), *secondAfter);
                    model.apply(*makeReversal(*secondAfter));
                    model.apply(*makeReversal(first));
                    EXPECT_EQ(model.toString(), state.toString());
                });
}

// What an operation was comes back once the other one is taken back, but for what is decided to be so:
TEST_P(Exhaustive, PastAnOperationAndItsReversalAnOperationIsItself)
{
    std::set<std::string> expected{
        // Of two restorings of a slot the second has nothing left to do, and stays so.
        "restoring past restoring",
        // A restoring ends all deletions, and what takes it back is one marking: those that waited count anew.
        "leaving past restoring", "releasing past restoring", "restoring past releasing"};
    if (GetParam() == Family::SingleRange)
    {
        // A gap at a slot that moves goes with one of its neighbours, and on the way back can't tell with which.
        expected.insert("insertion past move");
        // A move that another one of the same slot has beaten stays lost.
        expected.insert("move past move");
    }
    std::set<std::string> changed;
    forEachPair({false, true},
                [&](const SlotModel& state, Operation& first, Operation& second, TieResolveCondition tie)
                {
                    const OperationUPtr back = include(*include(first, second, tie), *makeReversal(second), tie);
                    if (!hasEffectOf(state, *back, first))
                    {
                        changed.insert(getActionName(first) + " past " + getActionName(second));
                    }
                });
    EXPECT_EQ(changed, expected);
}

TEST_P(Exhaustive, PseudoIdentitiesAndEmptyOperationsAreNeutral)
{
    forEachPair({},
                [&](const SlotModel&, Operation& first, Operation& second, TieResolveCondition tie)
                {
                    const OperationUPtr identity = second.getPseudoIdentity(*_transformer);
                    EXPECT_EQ(describe(*_transformer->include(first, *identity, tie)), describe(first));
                    EXPECT_EQ(describe(*_transformer->include(first, EmptyOperation(), tie)), describe(first));
                    EXPECT_EQ(describe(*_transformer->include(EmptyOperation(), second, tie)), "nothing");
                });
}

TEST_P(Exhaustive, ThreeOperationsMeetPastTwoOrders)
{
    const OperationKinds kinds{false, false};
    constexpr unsigned long maximumSize = 4;
    unsigned long triplesCount = 0;
    if (sampleStep > 1)
    {
        std::cout << "  one of " << sampleStep << " triples in " << maximumSize << " slots\n";
    }
    const auto late = TieResolveCondition::SecondWins;
    for (unsigned long size = 0; size <= maximumSize; ++size)
    {
        for (const SlotModel& state : makeStates(size, 1))
        {
            const auto firsts = makeExecuted(state, '1', kinds);
            const auto seconds = makeExecuted(state, '5', kinds);
            const auto thirds = makeExecuted(state, 'A', kinds);
            for (const OperationUPtr& first : firsts)
            {
                for (const OperationUPtr& second : seconds)
                {
                    const OperationUPtr firstAfter = include(*first, *second, getOpposite(late));
                    const OperationUPtr secondAfter = include(*second, *first, late);
                    const SlotModel both = applied(applied(state, *first), *secondAfter);
                    applied(applied(state, *second), *firstAfter);
                    for (const OperationUPtr& third : thirds)
                    {
                        if (size == maximumSize && triplesCount++ % sampleStep != 0)
                        {
                            continue;
                        }
                        ++_casesCount;
                        checkGuarded(state, {first.get(), second.get(), third.get()},
                                     [&]
                                     {
                                         const auto one = include(*include(*third, *first, late), *secondAfter, late);
                                         const auto other = include(*include(*third, *second, late), *firstAfter, late);
                                         const SlotModel oneModel = applied(both, *one);
                                         const SlotModel otherModel = applied(both, *other);
                                         EXPECT_EQ(oneModel, otherModel)
                                             << oneModel.toString() << " and " << otherModel.toString();
                                     });
                        if (HasFailure())
                        {
                            return;
                        }
                    }
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, Exhaustive, testing::Values(Family::SingleRange, Family::Multirange),
                         [](const testing::TestParamInfo<Family>& family)
                         { return family.param == Family::SingleRange ? "SingleRange" : "Multirange"; });

} // namespace Zem::CollaborationEngine::Testing

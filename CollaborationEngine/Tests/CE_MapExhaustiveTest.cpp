// All small maps, all operations that are legal in them, all pairs, both ties.

#include "CasesCount.h"
#include "KeyModel.h"

#include "CE_InverseOperation.h"
#include "CE_MapMatrix.h"
#include "CE_MapTransformers.h"
#include "CE_OperationEquality.h"

#include <gtest/gtest.h>

#include <iostream>
#include <set>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

class MapExhaustive : public testing::Test
{
protected:
    MapExhaustive()
    {
        _transformer.registerSameNodeTransformer(mapType, std::make_shared<MapSameNodeTransformer>());
    }

    ~MapExhaustive() override
    {
        std::cout << "  " << _casesCount << " cases\n";
        countCases(_casesCount);
    }

    static KeyModel applied(const KeyModel& state, Operation& operation)
    {
        KeyModel after = state;
        after.apply(operation);
        return after;
    }

    static bool hasEffectOf(const KeyModel& state, Operation& operation, Operation& other)
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

    static std::vector<OperationUPtr> makeExecuted(const KeyModel& state, char newValue)
    {
        auto operations = makeMapOperations(state, newValue);
        for (const OperationUPtr& operation : operations)
        {
            applied(state, *operation);
        }
        return operations;
    }

    /// Calls `check` for each pair of legal operations, both of which have been executed once, with both ties.
    template<class Check>
    void forEachPair(const Check& check)
    {
        for (unsigned long keysCount = 1; keysCount <= 4; ++keysCount)
        {
            for (const KeyModel& state : makeKeyStates(keysCount, keysCount <= 3 ? 3 : 1))
            {
                const auto firsts = makeExecuted(state, '1');
                const auto seconds = makeExecuted(state, '5');
                for (const OperationUPtr& first : firsts)
                {
                    for (const OperationUPtr& second : seconds)
                    {
                        checkBothTies(state, *first, *second, check);
                        if (HasFailure())
                        {
                            return;
                        }
                    }
                }
            }
        }
    }

    template<class Check>
    void checkBothTies(const KeyModel& state, Operation& first, Operation& second, const Check& check)
    {
        SCOPED_TRACE(state.toString() + "\n  " + describe(first) + "\n  " + describe(second));
        for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
        {
            ++_casesCount;
            ASSERT_NO_THROW(check(state, first, second, tie));
        }
    }

    HierarchicalOperationTransformer _transformer;
    unsigned long _casesCount = 0;
};

/// An insertion, or a releasing.
bool bringsValue(const Operation& operation)
{
    return describe(operation).find("insert(") != std::string::npos;
}

std::string getActionName(const Operation& operation)
{
    const std::vector<std::string> names{"insertion", "removal", "leaving", "releasing"};
    return names.at(static_cast<unsigned long>(getMapAction(makeNodeOperand(operation))));
}

} // namespace

TEST_F(MapExhaustive, BothOrdersOfTwoOperationsGiveOneMap)
{
    std::set<std::pair<MapAction, MapAction>> metPairs;
    forEachPair(
        [&](const KeyModel& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            metPairs.insert({getMapAction(makeNodeOperand(first)), getMapAction(makeNodeOperand(second))});
            const OperationUPtr firstAfter = _transformer.include(first, second, tie);
            const OperationUPtr secondAfter = _transformer.include(second, first, getOpposite(tie));
            const KeyModel one = applied(applied(state, first), *secondAfter);
            const KeyModel other = applied(applied(state, second), *firstAfter);
            EXPECT_EQ(one, other) << one.toString() << " and " << other.toString();
        });
    EXPECT_EQ(metPairs.size(), mapActionsCount * mapActionsCount);
}

// An insertion ends removals that nobody counts any more, so that its undoing can't bring them back; and what undoes a
// releasing deletes again what others have inserted.
TEST_F(MapExhaustive, UndoingOneOfTwoLeavesTheOther)
{
    forEachPair(
        [&](const KeyModel& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr secondAfter = _transformer.include(second, first, getOpposite(tie));
            const KeyModel both = applied(applied(state, first), *secondAfter);
            const OperationUPtr undo =
                _transformer.include(*makeUndo(first, _transformer), *secondAfter, TieResolveCondition::SecondWins);
            const KeyModel undone = applied(both, *undo);
            if (!bringsValue(first))
            {
                EXPECT_EQ(undone, applied(state, second)) << undone.toString() << " by " << describe(*undo);
            }
        });
}

TEST_F(MapExhaustive, ReversingBothOfTwoGivesTheMapBack)
{
    forEachPair(
        [&](const KeyModel& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            if (state.getHighestHoldersCount() > 1)
            {
                return;
            }
            const OperationUPtr secondAfter = _transformer.include(second, first, getOpposite(tie));
            KeyModel model = applied(applied(state, first), *secondAfter);
            model.apply(*makeReversal(*secondAfter));
            model.apply(*makeReversal(first));
            EXPECT_TRUE(model.hasValuesOf(state)) << model.toString();
        });
}

// What an operation was comes back once the other one is taken back, but for what is decided to be so:
TEST_F(MapExhaustive, PastAnOperationAndItsReversalAnOperationIsItself)
{
    const std::set<std::string> expected{
        // Of two values for a key one is lost, or its insertion has become a removal of the other's with an insertion.
        "insertion past insertion", "releasing past insertion", "insertion past releasing",
        // What brings a value in ends all removals, and what takes it back is one removal: those that waited count
        // anew.
        "leaving past insertion", "leaving past releasing", "releasing past releasing"};
    std::set<std::string> changed;
    forEachPair(
        [&](const KeyModel& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr pastSecond = _transformer.include(first, second, tie);
            const OperationUPtr back = _transformer.include(*pastSecond, *makeReversal(second), tie);
            if (!hasEffectOf(state, *back, first))
            {
                changed.insert(getActionName(first) + " past " + getActionName(second));
            }
        });
    EXPECT_EQ(changed, expected);
}

TEST_F(MapExhaustive, PseudoIdentitiesAndEmptyOperationsAreNeutral)
{
    forEachPair(
        [&](const KeyModel&, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr identity = second.getPseudoIdentity(_transformer);
            EXPECT_TRUE(areDeeplyEqual(*_transformer.include(first, *identity, tie), first)) << describe(*identity);
            EXPECT_TRUE(areDeeplyEqual(*_transformer.include(first, EmptyOperation(), tie), first));
        });
}

} // namespace Zem::CollaborationEngine::Testing

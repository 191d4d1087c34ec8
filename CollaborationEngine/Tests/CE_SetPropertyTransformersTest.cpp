#include "CE_SetPropertyTransformers.h"

#include "CE_OperationEquality.h"
#include "TreeModel.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

const auto bothTies = {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins};

SetPropertyOperation makeSetting(unsigned long propertyId, int oldValue, int newValue)
{
    return SetPropertyOperation(listElementAddress(0), ElementType, propertyId, makeSharedConst<IntValue>(oldValue),
                                makeSharedConst<IntValue>(newValue));
}

} // namespace

// There is no matrix: two settings are of one property or of two.
TEST(SetPropertySameNode, DifferentPropertiesStayAsTheyAre)
{
    const SetPropertyOperation first = makeSetting(WholeProperty, 0, 1);
    const SetPropertyOperation second = makeSetting(PairProperty, 0, 2);
    for (const auto tie : bothTies)
    {
        EXPECT_TRUE(areDeeplyEqual(*makeTreeTransformer()->include(first, second, tie), first));
    }
}

TEST(SetPropertySameNode, OnePropertyIsMergedIntoTheWinnersValueAndKnowsWhatTheOtherLeft)
{
    const SetPropertyOperation first = makeSetting(WholeProperty, 0, 1);
    const SetPropertyOperation second = makeSetting(WholeProperty, 0, 2);
    for (const auto tie : bothTies)
    {
        const OperationUPtr result = makeTreeTransformer()->include(first, second, tie);
        const SetPropertyOperation expected =
            makeSetting(WholeProperty, 2, tie == TieResolveCondition::FirstWins ? 1 : 2);
        EXPECT_TRUE(areDeeplyEqual(*result, expected));
    }
}

TEST(SetPropertySameNode, SettingThatChangesNothingLeavesTheOtherOnesValue)
{
    const SetPropertyOperation idle = makeSetting(WholeProperty, 0, 0);
    const SetPropertyOperation other = makeSetting(WholeProperty, 0, 2);
    for (const auto tie : bothTies)
    {
        EXPECT_TRUE(
            areDeeplyEqual(*makeTreeTransformer()->include(idle, other, tie), makeSetting(WholeProperty, 2, 2)));
    }
}

} // namespace Zem::CollaborationEngine::Testing

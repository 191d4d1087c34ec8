#include "Shrink.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <set>

namespace ZemFarm
{

namespace
{

using Numbers = std::vector<int>;

Numbers makeNumbers(int count)
{
    Numbers numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

bool hasAll(const Numbers& numbers, const std::set<int>& needed)
{
    const std::set<int> present(numbers.begin(), numbers.end());
    return std::includes(present.begin(), present.end(), needed.begin(), needed.end());
}

TEST(Shrink, LeavesWhatTheFailureNeedsInItsOrder)
{
    const auto fails = [](const Numbers& numbers) { return hasAll(numbers, {3, 400, 401, 999}); };
    EXPECT_EQ((Numbers{3, 400, 401, 999}), shrink(makeNumbers(1000), fails));
}

TEST(Shrink, LeavesNothingWhereNothingIsNeeded)
{
    EXPECT_EQ(Numbers(), shrink(makeNumbers(77), [](const Numbers&) { return true; }));
    EXPECT_EQ(Numbers(), shrink(Numbers(), [](const Numbers&) { return true; }));
}

TEST(Shrink, LeavesAllWhereAllIsNeeded)
{
    const auto fails = [](const Numbers& numbers) { return numbers.size() == 9; };
    EXPECT_EQ(makeNumbers(9), shrink(makeNumbers(9), fails));
}

TEST(Shrink, FindsWhatCanGoOnlyOnceSomethingElseHasGone)
{
    // Of two neighbours, the second can't be left alone: it goes only behind the first.
    const auto fails = [](const Numbers& numbers)
    {
        bool isWhole = true;
        for (const int number : numbers)
        {
            isWhole = isWhole && (number % 2 == 1 || hasAll(numbers, {number + 1}));
        }
        return isWhole && hasAll(numbers, {11});
    };
    EXPECT_EQ(Numbers{11}, shrink(makeNumbers(64), fails));
}

/// Random failures that need one of several sets of numbers, and a certain count of others: of what is left, nothing
/// can be left out alone.
TEST(Shrink, LeavesNoElementThatCouldGoAlone)
{
    for (unsigned int seed = 0; seed < 200; ++seed)
    {
        SCOPED_TRACE(seed);
        std::mt19937_64 random(seed);
        std::vector<std::set<int>> alternatives(1 + random() % 3);
        for (std::set<int>& needed : alternatives)
        {
            for (std::size_t count = 1 + random() % 6; count > 0; --count)
            {
                needed.insert(static_cast<int>(random() % 100));
            }
        }
        const std::size_t least = random() % 10;
        const auto fails = [&](const Numbers& numbers)
        {
            return numbers.size() >= least && std::any_of(alternatives.begin(), alternatives.end(),
                                                          [&](const auto& needed) { return hasAll(numbers, needed); });
        };
        const Numbers left = shrink(makeNumbers(100), fails);
        EXPECT_TRUE(fails(left));
        EXPECT_TRUE(std::is_sorted(left.begin(), left.end()));
        for (std::size_t index = 0; index < left.size(); ++index)
        {
            EXPECT_FALSE(fails(leaveOut(left, index, index + 1))) << left[index];
        }
    }
}

TEST(Shrink, TriesGreatPiecesFirst)
{
    unsigned int callsCount = 0;
    const auto fails = [&](const Numbers& numbers)
    {
        ++callsCount;
        return hasAll(numbers, {4000});
    };
    EXPECT_EQ(Numbers{4000}, shrink(makeNumbers(5000), fails));
    EXPECT_LT(callsCount, 100U);
}

} // namespace

} // namespace ZemFarm

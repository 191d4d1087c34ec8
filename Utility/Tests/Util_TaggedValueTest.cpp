#include "Util_TaggedValue.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <unordered_set>

using namespace Zem;

namespace
{

struct AppleTag
{
};

struct PearTag
{
};

using Apples = TaggedValue<unsigned long, AppleTag>;
using Pears = TaggedValue<unsigned long, PearTag>;

} // namespace

TEST(TaggedValue, ConvertsExplicitlyOnly)
{
    static_assert(std::is_constructible_v<Apples, unsigned long>);
    static_assert(!std::is_convertible_v<unsigned long, Apples>);
    static_assert(!std::is_convertible_v<Apples, unsigned long>);
    static_assert(!std::is_constructible_v<Apples, Pears>);
    static_assert(!std::is_assignable_v<Apples&, Pears>);
    EXPECT_EQ(0UL, Apples().get());
    EXPECT_EQ(7UL, Apples{7}.get());
}

TEST(TaggedValue, CountsAndCompares)
{
    Apples apples{5};
    EXPECT_EQ(Apples{8}, apples + Apples{3});
    EXPECT_EQ(Apples{8}, apples + 3UL);
    EXPECT_EQ(Apples{2}, apples - Apples{3});
    EXPECT_EQ(Apples{2}, apples - 3UL);
    EXPECT_EQ(Apples{6}, ++apples);
    EXPECT_EQ(Apples{5}, --apples);
    EXPECT_EQ(Apples{9}, apples += Apples{4});
    EXPECT_EQ(Apples{7}, apples -= Apples{2});
    EXPECT_LT(Apples{1}, Apples{2});
    EXPECT_GE(Apples{2}, Apples{2});
    EXPECT_NE(Apples{1}, Apples{2});
}

TEST(TaggedValue, HashesAsItsValue)
{
    EXPECT_EQ(std::hash<unsigned long>{}(7), std::hash<Apples>{}(Apples{7}));
    EXPECT_EQ(boost::hash<unsigned long>{}(7), hash_value(Apples{7}));
    const std::unordered_set<Apples> set{Apples{1}, Apples{2}, Apples{1}};
    EXPECT_EQ(2U, set.size());
}

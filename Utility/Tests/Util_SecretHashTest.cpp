#include "Util_SecretHash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <set>
#include <unordered_map>

using namespace Zem;

TEST(SecretHash, StaysTheSameInAProcess)
{
    EXPECT_EQ(secretHash(7), secretHash(7));
    EXPECT_EQ(secretHash(7), SecretHasher()(7));
}

TEST(SecretHash, KeepsValuesApart)
{
    std::set<std::uint64_t> hashes;
    for (std::uint64_t value = 0; value < 10000; ++value)
    {
        hashes.insert(secretHash(value));
        hashes.insert(secretHash(value << 40));
    }
    EXPECT_EQ(19999u, hashes.size()) << "0 is in both";
}

TEST(SecretHash, SpreadsMultiplesOfTheNumberOfBuckets)
{
    constexpr std::uint64_t count = 5000;
    std::unordered_map<std::uint64_t, int, SecretHasher> map;
    map.reserve(count);
    const std::uint64_t step = map.bucket_count();
    for (std::uint64_t index = 0; index < count; ++index)
    {
        map.emplace(index * step, 0);
    }
    ASSERT_EQ(step, map.bucket_count());
    std::size_t longest = 0;
    for (std::size_t bucket = 0; bucket < map.bucket_count(); ++bucket)
    {
        longest = std::max(longest, map.bucket_size(bucket));
    }
    EXPECT_LT(longest, 30u);
}

TEST(SecretHash, FlipsHalfTheBitsForOne)
{
    int flipped = 0;
    for (int bit = 0; bit < 64; ++bit)
    {
        flipped += std::popcount(secretHash(12345) ^ secretHash(12345 ^ (std::uint64_t(1) << bit)));
    }
    EXPECT_GT(flipped, 64 * 24);
    EXPECT_LT(flipped, 64 * 40);
}

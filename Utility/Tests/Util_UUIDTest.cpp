#include "Util_UUID.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

using namespace Zem;

TEST(UUID, IsNilAtFirst)
{
    EXPECT_TRUE(UUID().isNil());
    EXPECT_EQ("00000000-0000-0000-0000-000000000000", UUID().toString());
    EXPECT_FALSE(UUID::generate().isNil());
}

TEST(UUID, HasATextOfGroupedLowerCaseDigits)
{
    const UUID uuid({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xFE, 0xDC, 0xBA, 0x98, 0x76, 0x54, 0x32, 0x10});
    EXPECT_EQ("01234567-89ab-cdef-fedc-ba9876543210", uuid.toString());
    EXPECT_EQ(uuid, UUID::fromString("01234567-89ab-cdef-fedc-ba9876543210"));
    EXPECT_EQ(uuid, UUID::fromString("01234567-89AB-CDEF-FEDC-BA9876543210"));
}

TEST(UUID, RefusesAnyOtherText)
{
    for (const std::string text :
         {"", "0", "01234567-89ab-cdef-fedc-ba987654321", "01234567-89ab-cdef-fedc-ba98765432100",
          "0123456789abcdeffedcba9876543210", "01234567-89ab-cdef-fedc-ba987654321g",
          "01234567089ab-cdef-fedc-ba9876543210", "{01234567-89ab-cdef-fedc-ba9876543210}",
          "01234567-89ab-cdef-fedc-ba98765432-0", "-1234567-89ab-cdef-fedc-ba9876543210"})
    {
        EXPECT_EQ(std::nullopt, UUID::fromString(text)) << text;
    }
    EXPECT_EQ(std::nullopt, UUID::fromString(std::string(36, '\0')));
}

TEST(UUID, GeneratesRandomOnesOfVersionFour)
{
    std::set<UUID> uuids;
    for (int i = 0; i < 10000; ++i)
    {
        const UUID uuid = UUID::generate();
        ASSERT_EQ(0x40, uuid.getBytes()[6] & 0xF0);
        ASSERT_EQ(0x80, uuid.getBytes()[8] & 0xC0);
        ASSERT_EQ(uuid, UUID::fromString(uuid.toString()));
        uuids.insert(uuid);
    }
    EXPECT_EQ(10000U, uuids.size());
}

TEST(UUID, VariesInAllItsOtherBits)
{
    UUID::Bytes everSet{};
    UUID::Bytes everClear{};
    for (int i = 0; i < 1000; ++i)
    {
        const UUID uuid = UUID::generate();
        for (std::size_t byte = 0; byte < everSet.size(); ++byte)
        {
            everSet[byte] |= uuid.getBytes()[byte];
            everClear[byte] |= static_cast<std::uint8_t>(~uuid.getBytes()[byte]);
        }
    }
    EXPECT_EQ((UUID::Bytes{255, 255, 255, 255, 255, 255, 0x4F, 255, 0xBF, 255, 255, 255, 255, 255, 255, 255}), everSet);
    EXPECT_EQ((UUID::Bytes{255, 255, 255, 255, 255, 255, 0xBF, 255, 0x7F, 255, 255, 255, 255, 255, 255, 255}),
              everClear);
}

TEST(UUID, ThreadsGenerateDifferentOnes)
{
    std::vector<std::vector<UUID>> generated(4);
    std::vector<std::thread> threads;
    for (std::vector<UUID>& uuids : generated)
    {
        threads.emplace_back(
            [&uuids]
            {
                for (int i = 0; i < 500; ++i)
                {
                    uuids.push_back(UUID::generate());
                }
            });
    }
    std::set<UUID> all;
    for (std::size_t i = 0; i < threads.size(); ++i)
    {
        threads[i].join();
        all.insert(generated[i].begin(), generated[i].end());
    }
    EXPECT_EQ(2000U, all.size());
}

TEST(UUID, OrdersByItsBytesAndHashesByThem)
{
    const UUID low({0, 1});
    const UUID high({1, 0});
    EXPECT_LT(low, high);
    EXPECT_LT(UUID(), low);
    EXPECT_EQ(hash_value(low), hash_value(UUID({0, 1})));
    EXPECT_NE(hash_value(low), hash_value(high));
    EXPECT_EQ(2U, (std::unordered_set<UUID>{low, high, low}.size()));
}

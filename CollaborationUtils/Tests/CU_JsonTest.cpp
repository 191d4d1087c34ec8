#include "CU_Json.h"

#include "Util_JsonText.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace Zem;
using namespace Zem::CollaborationUtils;

namespace
{

using PlacesRange = TombstonesStorage::PlacesRange;

PlacesRange range(unsigned long begin, unsigned long end)
{
    return {IndexIncludingTombstones{begin}, IndexIncludingTombstones{end}};
}

/// A range as it stands in an array of ranges.
std::string rangeJson(unsigned long begin, unsigned long end)
{
    return R"({"_begin":{"_value":)" + std::to_string(begin) + R"(},"_end":{"_value":)" + std::to_string(end) + "}}";
}

template<class T>
void expectForm(const T& value, const std::string& json)
{
    EXPECT_EQ(json, toJson(value));
    EXPECT_EQ(value, fromJson<T>(json));
}

} // namespace

TEST(CollaborationUtilsJson, IndicesAreObjects)
{
    expectForm(IndexIncludingTombstones{5}, R"({"_value":5})");
    expectForm(IndexExcludingTombstones{5}, R"({"_value":5})");
    expectForm(SignedIndexIncludingTombstones{-5}, R"({"_value":-5})");
}

TEST(CollaborationUtilsJson, ARangeHoldsItsEndsAsTheyAre)
{
    expectForm(IndexRange<unsigned long>(2, 5), R"({"_begin":2,"_end":5})");
    expectForm(range(2, 5), rangeJson(2, 5));
    expectForm(range(0, ~0UL), rangeJson(0, ~0UL));
}

TEST(CollaborationUtilsJson, ARangeThatDoesNotIncreaseFailsItsAssertion)
{
    EXPECT_ASSERTION(fromJson<IndexRange<unsigned long>>(R"({"_begin":5,"_end":5})"), "_begin < _end");
    EXPECT_ASSERTION(fromJson<IndexRange<unsigned long>>(R"({"_begin":5,"_end":2})"), "_begin < _end");
    EXPECT_ASSERTION(fromJson<PlacesRange>(rangeJson(3, 3)), "_begin < _end");
    EXPECT_ASSERTION(fromJson<TombstonesStorage>(R"({"_tombstones":[)" + rangeJson(3, 3) + "]}"), "_begin < _end");
}

TEST(CollaborationUtilsJson, AStorageIsTheListOfItsRanges)
{
    expectForm(TombstonesStorage(), R"({"_tombstones":[]})");
    expectForm(TombstonesStorage({range(1, 3), range(6, 7)}),
               R"({"_tombstones":[)" + rangeJson(1, 3) + "," + rangeJson(6, 7) + "]}");
}

TEST(CollaborationUtilsJson, AStorageJoinsRangesThatTouch)
{
    const auto storage =
        fromJson<TombstonesStorage>(R"({"_tombstones":[)" + rangeJson(1, 3) + "," + rangeJson(3, 7) + "]}");
    EXPECT_EQ(TombstonesStorage({range(1, 7)}), storage);
    storage.checkInvariants();
}

TEST(CollaborationUtilsJson, AStorageRefusesRangesThatOverlapOrDescend)
{
    const auto expectRefused = [](const std::string& first, const std::string& second, const std::string& message)
    {
        try
        {
            fromJson<TombstonesStorage>(R"({"_tombstones":[)" + first + "," + second + "]}");
            ADD_FAILURE() << first << " and " << second << " were read";
        }
        catch (const cereal::Exception& exception)
        {
            EXPECT_EQ(message, exception.what());
        }
    };
    expectRefused(rangeJson(1, 3), rangeJson(2, 7),
                  "The range of tombstones that begins at 2 doesn't lie behind the one before it, which ends at 3");
    expectRefused(rangeJson(5, 6), rangeJson(1, 2),
                  "The range of tombstones that begins at 1 doesn't lie behind the one before it, which ends at 6");
}

TEST(CollaborationUtilsJson, ACollectionIsItsElementsThenItsTombstones)
{
    std::vector<std::unique_ptr<int>> elements;
    elements.push_back(std::make_unique<int>(7));
    const CollectionWithTombstones collection(std::move(elements), TombstonesStorage({range(1, 2)}));
    const std::string json = R"({"_elements":[{"ptr_wrapper":{"valid":1,"data":7}}],"_tombstones":{"_tombstones":[)" +
                             rangeJson(1, 2) + "]}}";
    expectForm(collection, json);
    expectForm(CollectionWithTombstones<std::vector<std::unique_ptr<int>>>(),
               R"({"_elements":[],"_tombstones":{"_tombstones":[]}})");
}

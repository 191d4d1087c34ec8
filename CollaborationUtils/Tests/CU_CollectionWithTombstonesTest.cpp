#include "CU_CollectionWithTombstones.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace Zem;
using namespace Zem::CollaborationUtils;

namespace
{

using Elements = std::vector<std::unique_ptr<int>>;
using Collection = CollectionWithTombstones<Elements>;
using Place = IndexIncludingTombstones;
using LiveIndex = IndexExcludingTombstones;
using Diff = SignedIndexIncludingTombstones;

constexpr const char* targetInside =
    "numCast<SignedIndexIncludingTombstones>(oldPosition) + diff >= SignedIndexIncludingTombstones{0} && "
    "numCast<SignedIndexIncludingTombstones>(oldPosition) + diff < "
    "numCast<SignedIndexIncludingTombstones>(getAllElementsCount())";

/// A collection of 0, 1, 2… with these dead places among them.
Collection makeCollection(int count, std::vector<unsigned long> deadPlaces)
{
    Elements elements;
    for (int i = 0; i < count; ++i)
    {
        elements.push_back(std::make_unique<int>(i));
    }
    TombstonesStorage tombstones;
    for (const unsigned long place : deadPlaces)
    {
        tombstones.replaceWithTombstone(Place{place});
    }
    return Collection(std::move(elements), std::move(tombstones));
}

std::vector<int> valuesOf(const Collection& collection)
{
    std::vector<int> values;
    for (const auto& element : collection.getElements())
    {
        values.push_back(*element);
    }
    return values;
}

} // namespace

TEST(CollectionWithTombstones, CountsLiveElementsAndAllPlaces)
{
    const Collection collection = makeCollection(3, {1, 4});
    EXPECT_EQ(LiveIndex{3}, collection.getLiveElementsCount());
    EXPECT_EQ(Place{5}, collection.getAllElementsCount());
    EXPECT_EQ(Place{0}, Collection().getAllElementsCount());
}

TEST(CollectionWithTombstones, ACopyHasElementsOfItsOwn)
{
    const Collection original = makeCollection(3, {1});
    Collection copy = original;
    EXPECT_EQ(original, copy);
    *copy.getElements()[2] = 77;
    EXPECT_EQ((std::vector<int>{0, 1, 2}), valuesOf(original));
    EXPECT_NE(original, copy);
    copy = original;
    EXPECT_EQ(original, copy);
}

TEST(CollectionWithTombstones, ComparesElementsAndTombstones)
{
    EXPECT_EQ(makeCollection(2, {1}), makeCollection(2, {1}));
    EXPECT_NE(makeCollection(2, {1}), makeCollection(2, {0}));
    EXPECT_NE(makeCollection(2, {1}), makeCollection(3, {1}));
}

TEST(CollectionWithTombstones, MovesAnElementWithItsPlace)
{
    Collection collection = makeCollection(4, {1});
    EXPECT_EQ(std::pair(LiveIndex{0}, LiveIndex{2}), collection.moveElement(Place{0}, Diff{3}));
    EXPECT_EQ((std::vector<int>{1, 2, 0, 3}), valuesOf(collection));
    EXPECT_EQ(std::pair(LiveIndex{2}, LiveIndex{0}), collection.moveElement(Place{3}, Diff{-3}));
    EXPECT_EQ(makeCollection(4, {1}), collection);
}

TEST(CollectionWithTombstones, AMoveThatKeepsTheLiveIndexMovesNoElement)
{
    Collection collection = makeCollection(3, {1});
    EXPECT_EQ(std::pair(LiveIndex{0}, LiveIndex{0}), collection.moveElement(Place{0}, Diff{1}));
    EXPECT_EQ(makeCollection(3, {0}), collection);
}

TEST(CollectionWithTombstones, MovingATombstoneMovesNoElement)
{
    Collection collection = makeCollection(3, {1});
    EXPECT_EQ(std::nullopt, collection.moveElement(Place{1}, Diff{2}));
    EXPECT_EQ(makeCollection(3, {3}), collection);
}

TEST(CollectionWithTombstones, AMoveReachesTheLastPlaceAndNoFurther)
{
    Collection collection = makeCollection(3, {1, 4});
    EXPECT_ASSERTION(collection.moveElement(Place{0}, Diff{5}), targetInside);
    EXPECT_ASSERTION(collection.moveElement(Place{0}, Diff{-1}), targetInside);
    EXPECT_EQ(makeCollection(3, {1, 4}), collection);

    EXPECT_EQ(std::pair(LiveIndex{0}, LiveIndex{2}), collection.moveElement(Place{0}, Diff{4}));
    EXPECT_EQ((std::vector<int>{1, 2, 0}), valuesOf(collection));
}

TEST(CollectionWithTombstones, AMoveThatNoNumberHoldsIsRefused)
{
    Collection collection = makeCollection(3, {});
    EXPECT_ASSERTION(collection.moveElement(Place{1}, Diff{std::numeric_limits<long>::max()}), targetInside);
    EXPECT_THROW(collection.moveElement(Place{~0UL}, Diff{-1}), BadNumCastError);
}

TEST(CollectionWithTombstones, APlaceBehindTheElementsIsOutOfRange)
{
    Collection collection = makeCollection(3, {2});
    EXPECT_THROW(collection.moveElement(Place{5}, Diff{-4}), std::out_of_range);
    EXPECT_EQ(makeCollection(3, {2}), collection);
}

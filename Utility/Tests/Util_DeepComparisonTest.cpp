#include "Util_DeepComparison.h"

#include "Util_BoolOpt.h"
#include "Util_FloatNumber.h"
#include "Util_TableIndices.h"
#include "Util_UUIDable.h"

#include <boost/container/map.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace Zem;

namespace
{

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

struct Counted : boost::intrusive_ref_counter<Counted>
{
    explicit Counted(int value)
        : _value(value)
    {
    }

    friend bool operator==(const Counted& left, const Counted& right)
    {
        return left._value == right._value;
    }

    int _value;
};

/// A null pointer to it stands for the one without a value.
struct WithNull : boost::intrusive_ref_counter<WithNull>
{
    explicit WithNull(int value = 0)
        : _value(value)
    {
    }

    static const WithNull& getObjectForNull()
    {
        static const WithNull object;
        return object;
    }

    friend bool operator==(const WithNull& left, const WithNull& right)
    {
        return left._value == right._value;
    }

    friend std::size_t hash_value(const WithNull& object)
    {
        return boost::hash<int>{}(object._value);
    }

    int _value;
};

template<class Pointer>
void expectComparedByContent(const Pointer& one, const Pointer& likeOne, const Pointer& two)
{
    ASSERT_NE(one.get(), likeOne.get());
    EXPECT_TRUE(areDeeplyEqual(one, one));
    EXPECT_TRUE(areDeeplyEqual(one, likeOne));
    EXPECT_FALSE(areDeeplyEqual(one, two));
    EXPECT_FALSE(areDeeplyEqual(one, Pointer()));
    EXPECT_FALSE(areDeeplyEqual(Pointer(), one));
    EXPECT_TRUE(areDeeplyEqual(Pointer(), Pointer()));
}

/// Equal contents must have equal hashes; these unequal ones happen to have unequal ones.
template<class T>
void expectHashedByContent(const T& one, const T& likeOne, const T& two)
{
    EXPECT_TRUE(areDeeplyEqual(one, likeOne));
    EXPECT_FALSE(areDeeplyEqual(one, two));
    EXPECT_EQ(deepHash(one), deepHash(likeOne));
    EXPECT_NE(deepHash(one), deepHash(two));
}

std::vector<std::unique_ptr<int>> pointersTo(std::vector<int> values)
{
    std::vector<std::unique_ptr<int>> pointers;
    for (const int value : values)
    {
        pointers.push_back(std::make_unique<int>(value));
    }
    return pointers;
}

template<class Map>
Map mapOf(int key, int value)
{
    Map map;
    map.emplace(key, std::make_unique<int>(value));
    return map;
}

} // namespace

namespace Zem
{

struct Mixture
{
    static constexpr auto fields()
    {
        return std::make_tuple(field("_pointer", &Mixture::_pointer), field("_number", &Mixture::_number),
                               field("_row", &Mixture::_row));
    }

    std::shared_ptr<const std::string> _pointer;
    boost::optional<float> _number;
    RowIndex _row;
};

} // namespace Zem

TEST(DeepComparison, PointersCountAsTheirPointees)
{
    expectComparedByContent(std::make_unique<int>(1), std::make_unique<int>(1), std::make_unique<int>(2));
    expectComparedByContent(std::make_shared<const int>(1), std::make_shared<const int>(1),
                            std::make_shared<const int>(2));
    expectComparedByContent(makeSharedConst<int>(1), makeSharedConst<int>(1), makeSharedConst<int>(2));
    using CountedPtr = boost::intrusive_ptr<const Counted>;
    expectComparedByContent(CountedPtr(new Counted(1)), CountedPtr(new Counted(1)), CountedPtr(new Counted(2)));
}

TEST(DeepComparison, PointersToPointersAreFollowedToTheEnd)
{
    const auto pointerTo = [](int value)
    { return std::make_unique<std::unique_ptr<int>>(std::make_unique<int>(value)); };
    EXPECT_TRUE(areDeeplyEqual(pointerTo(1), pointerTo(1)));
    EXPECT_FALSE(areDeeplyEqual(pointerTo(1), pointerTo(2)));
}

TEST(DeepComparison, VectorsCompareElementByElement)
{
    EXPECT_TRUE(areDeeplyEqual(pointersTo({1, 2}), pointersTo({1, 2})));
    EXPECT_FALSE(areDeeplyEqual(pointersTo({1, 2}), pointersTo({1, 3})));
    EXPECT_FALSE(areDeeplyEqual(pointersTo({1, 2}), pointersTo({1})));
    EXPECT_FALSE(areDeeplyEqual(pointersTo({1}), pointersTo({1, 2})));
    EXPECT_TRUE(areDeeplyEqual(pointersTo({}), pointersTo({})));
}

TEST(DeepComparison, MapsCompareKeysAndValues)
{
    using StdMap = std::map<int, std::unique_ptr<int>>;
    using BoostMap = boost::container::map<int, std::unique_ptr<int>>;
    expectHashedByContent(mapOf<StdMap>(1, 5), mapOf<StdMap>(1, 5), mapOf<StdMap>(1, 6));
    expectHashedByContent(mapOf<BoostMap>(1, 5), mapOf<BoostMap>(1, 5), mapOf<BoostMap>(1, 6));
    EXPECT_FALSE(areDeeplyEqual(mapOf<StdMap>(1, 5), mapOf<StdMap>(2, 5)));
    EXPECT_FALSE(areDeeplyEqual(mapOf<StdMap>(1, 5), StdMap()));
}

TEST(DeepComparison, VariantsCompareAlternativeAndValue)
{
    using Variant = boost::variant<int, long, std::shared_ptr<int>>;
    EXPECT_TRUE(areDeeplyEqual(Variant(1), Variant(1)));
    EXPECT_FALSE(areDeeplyEqual(Variant(1), Variant(2)));
    EXPECT_FALSE(areDeeplyEqual(Variant(1), Variant(1L)));
    expectHashedByContent(Variant(std::make_shared<int>(1)), Variant(std::make_shared<int>(1)),
                          Variant(std::make_shared<int>(2)));
    EXPECT_NE(deepHash(Variant(1)), deepHash(Variant(1L)));
}

TEST(DeepComparison, OptionalsCompareValuesIfBothHaveThem)
{
    using Optional = boost::optional<std::shared_ptr<int>>;
    expectHashedByContent(Optional(std::make_shared<int>(1)), Optional(std::make_shared<int>(1)), Optional());
    EXPECT_FALSE(areDeeplyEqual(Optional(), Optional(std::shared_ptr<int>())));
    EXPECT_TRUE(areDeeplyEqual(Optional(), Optional()));
    using StdOptional = std::optional<std::shared_ptr<int>>;
    expectHashedByContent(StdOptional(std::make_shared<int>(1)), StdOptional(std::make_shared<int>(1)), StdOptional());
}

TEST(DeepComparison, PairsCompareBothSides)
{
    using Pair = std::pair<std::shared_ptr<int>, int>;
    expectHashedByContent(Pair(std::make_shared<int>(1), 2), Pair(std::make_shared<int>(1), 2),
                          Pair(std::make_shared<int>(1), 3));
    EXPECT_FALSE(areDeeplyEqual(Pair(std::make_shared<int>(1), 2), Pair(std::make_shared<int>(9), 2)));
}

TEST(DeepComparison, ANaNIsUnequalToItself)
{
    EXPECT_FALSE(areDeeplyEqual(notANumber, notANumber));
    EXPECT_FALSE(areDeeplyEqual(boost::optional<float>(notANumber), boost::optional<float>(notANumber)));
    EXPECT_FALSE(areDeeplyEqual(std::vector<float>{notANumber}, std::vector<float>{notANumber}));
    EXPECT_FALSE(areDeeplyEqual(boost::variant<int, float>(notANumber), boost::variant<int, float>(notANumber)));
    EXPECT_FALSE(FloatNumber(notANumber) == FloatNumber(notANumber));
    EXPECT_FALSE(areDeeplyEqual(std::make_shared<float>(notANumber), std::make_shared<float>(notANumber)));
    const auto shared = std::make_shared<float>(notANumber);
    EXPECT_TRUE(areDeeplyEqual(shared, shared));
}

TEST(DeepComparison, ZerosOfBothSignsAreEqualAndHashAlike)
{
    EXPECT_TRUE(areDeeplyEqual(0.0, -0.0));
    EXPECT_EQ(deepHash(0.0), deepHash(-0.0));
    EXPECT_EQ(deepHash(FloatNumber(0.0)), deepHash(FloatNumber(-0.0)));
}

TEST(DeepComparison, ClassesCompareAndHashByTheirFields)
{
    const auto make = [](const char* text, boost::optional<float> number, unsigned long row) {
        return Mixture{std::make_shared<const std::string>(text), number, RowIndex{row}};
    };
    expectHashedByContent(make("a", 1.5F, 2), make("a", 1.5F, 2), make("b", 1.5F, 2));
    expectHashedByContent(make("a", 1.5F, 2), make("a", 1.5F, 2), make("a", boost::none, 2));
    expectHashedByContent(make("a", 1.5F, 2), make("a", 1.5F, 2), make("a", 1.5F, 3));
    EXPECT_TRUE(make("a", 1.5F, 2) == make("a", 1.5F, 2));
    EXPECT_TRUE(make("a", 1.5F, 2) != make("a", 1.5F, 3));
    EXPECT_FALSE(make("a", notANumber, 2) == make("a", notANumber, 2));
}

TEST(DeepComparison, OwnSmallTypesHash)
{
    expectHashedByContent(RowIndex{1}, RowIndex{1}, RowIndex{2});
    expectHashedByContent(BoolOpt(true), BoolOpt(true), BoolOpt());
    expectHashedByContent(Size2D<unsigned>{1, 2}, Size2D<unsigned>{1, 2}, Size2D<unsigned>{2, 1});
    expectHashedByContent(UUID({1}), UUID({1}), UUID({2}));
    const UUIDable original;
    expectHashedByContent(original, UUIDable(original), UUIDable());
}

TEST(DeepComparison, TakesNullForTheObjectThatItStandsFor)
{
    using Pointer = boost::intrusive_ptr<const WithNull>;
    const Pointer null;
    const Pointer likeNull(new WithNull());
    const Pointer other(new WithNull(1));
    EXPECT_TRUE(areDeeplyEqual(null, likeNull));
    EXPECT_TRUE(areDeeplyEqual(likeNull, null));
    EXPECT_TRUE(areDeeplyEqual(null, null));
    EXPECT_FALSE(areDeeplyEqual(null, other));
    EXPECT_FALSE(areDeeplyEqual(other, null));
    EXPECT_TRUE(areDeeplyEqual(std::vector<Pointer>{null}, std::vector<Pointer>{likeNull}));
    EXPECT_EQ(deepHash(null), deepHash(likeNull));
    EXPECT_NE(deepHash(null), deepHash(other));
    EXPECT_TRUE(areDeeplyEqual(std::shared_ptr<const WithNull>(), std::make_shared<const WithNull>()));
}

TEST(DeepComparison, PointersByThemselvesAreUnequalWhereExactlyOneIsNull)
{
    using Pointer = boost::intrusive_ptr<const WithNull>;
    using ComparisonDetails::arePointersDeeplyEqual;
    const Pointer null;
    const Pointer likeNull(new WithNull());
    EXPECT_FALSE(arePointersDeeplyEqual(null, likeNull));
    EXPECT_FALSE(arePointersDeeplyEqual(likeNull, null));
    EXPECT_TRUE(arePointersDeeplyEqual(null, null));
    EXPECT_TRUE(arePointersDeeplyEqual(likeNull, Pointer(new WithNull())));
    EXPECT_FALSE(arePointersDeeplyEqual(likeNull, Pointer(new WithNull(1))));
}

TEST(DeepComparison, HashesTellContentsApartThatFlattenToOne)
{
    using Vectors = std::vector<std::vector<int>>;
    EXPECT_NE(deepHash(Vectors{{1}, {2}}), deepHash(Vectors{{1, 2}, {}}));
    EXPECT_NE(deepHash(boost::optional<int>()), deepHash(boost::optional<int>(0)));
}

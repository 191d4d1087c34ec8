#include "Util_Cast.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

using namespace Zem;

namespace
{

struct Animal
{
    virtual ~Animal() = default;
};

struct Cat : Animal
{
};

struct Dog : Animal
{
};

struct FirstTag
{
};

using Unsigned = TaggedValue<unsigned long, FirstTag>;
using Signed = TaggedValue<long, FirstTag>;

/// Parses with an end position; empty, or the number and the position.
std::optional<std::pair<long, unsigned long>> parseBeginning(const std::string& text, int base = 10)
{
    unsigned long end = 77;
    const std::optional<long> number = strToLong(text, &end, base);
    return number ? std::optional(std::pair(*number, end)) : std::nullopt;
}

} // namespace

TEST(Cast, AReferenceOfTheWrongKindIsABadCast)
{
    Cat cat;
    Animal& animal = cat;
    const Animal& constAnimal = cat;
    EXPECT_EQ(&cat, &cast<Cat>(animal));
    EXPECT_EQ(&cat, &cast<Cat>(constAnimal));
    static_assert(std::is_same_v<const Cat&, decltype(cast<Cat>(constAnimal))>);
    EXPECT_THROW(cast<Dog>(animal), std::bad_cast);
    EXPECT_THROW(cast<Dog>(constAnimal), std::bad_cast);
}

TEST(Cast, APointerOfTheWrongKindIsNull)
{
    Cat cat;
    Animal* animal = &cat;
    const Animal* constAnimal = &cat;
    EXPECT_EQ(&cat, cast<Cat>(animal));
    EXPECT_EQ(&cat, cast<Cat>(constAnimal));
    EXPECT_EQ(nullptr, cast<Dog>(animal));
    EXPECT_EQ(nullptr, cast<Cat>(static_cast<Animal*>(nullptr)));
}

TEST(Cast, AnOwnerKeepsAnObjectOfTheWrongKind)
{
    std::unique_ptr<Animal> animal = std::make_unique<Cat>();
    Animal* const address = animal.get();
    EXPECT_THROW(dynamicUPtrCheckedCast<Dog>(std::move(animal)), std::bad_cast);
    EXPECT_EQ(address, animal.get());

    const std::unique_ptr<Cat> cat = dynamicUPtrCheckedCast<Cat>(std::move(animal));
    EXPECT_EQ(address, cat.get());
    EXPECT_EQ(nullptr, animal);
    EXPECT_ASSERTION(dynamicUPtrCheckedCast<Cat>(std::move(animal)), "plainPtr");
}

TEST(NumCast, KeepsANumberThatFits)
{
    EXPECT_EQ(5U, numCast<unsigned>(5L));
    EXPECT_EQ(-5, numCast<int>(-5L));
    EXPECT_EQ(LONG_MAX, numCast<long>(static_cast<unsigned long>(LONG_MAX)));
    EXPECT_EQ(Signed{5}, numCast<Signed>(Unsigned{5}));
    EXPECT_EQ(Unsigned{5}, numCast<Unsigned>(Signed{5}));
    static_assert(numCast<short>(200L) == 200);
    static_assert(numCast<Signed>(Unsigned{7}) == Signed{7});
}

TEST(NumCast, RefusesANumberThatDoesNotFit)
{
    EXPECT_THROW(numCast<unsigned>(-1), BadNumCastError);
    EXPECT_THROW(numCast<int>(1L + std::numeric_limits<int>::max()), BadNumCastError);
    EXPECT_THROW(numCast<long>(ULONG_MAX), BadNumCastError);
    EXPECT_THROW(numCast<Unsigned>(Signed{-1}), BadNumCastError);
    EXPECT_THROW(numCast<Signed>(Unsigned{ULONG_MAX}), BadNumCastError);
    EXPECT_THROW(numCast<unsigned>(-1), BaseRuntimeError);
}

TEST(ByteCast, AnElementOfMinusOneIsTheByte255)
{
    const char byte = byteCast(-1);
    EXPECT_EQ(0xFF, static_cast<unsigned char>(byte));
    EXPECT_EQ(-1, static_cast<short>(byte));
}

TEST(ByteCast, EveryByteGoesThereAndBack)
{
    for (int value = 0; value < 256; ++value)
    {
        const char byte = static_cast<char>(value);
        EXPECT_EQ(byte, byteCast(static_cast<short>(byte)));
    }
}

TEST(ByteCast, AnElementOutsideAByteIsRefused)
{
    EXPECT_THROW(byteCast(200), BadNumCastError);
    EXPECT_THROW(byteCast(128), BadNumCastError);
    EXPECT_THROW(byteCast(-129), BadNumCastError);
    EXPECT_EQ(127, byteCast(127));
    EXPECT_EQ(-128, byteCast(-128));
}

TEST(StrToLong, ReadsAWholeText)
{
    EXPECT_EQ(12, strToLong("12", nullptr, 10));
    EXPECT_EQ(-12, strToLong("-12", nullptr, 10));
    EXPECT_EQ(255, strToLong("ff", nullptr, 16));
    EXPECT_EQ(8, strToLong("010", nullptr, 0));
    EXPECT_EQ(LONG_MAX, strToLong(std::to_string(LONG_MAX), nullptr, 10));
}

TEST(StrToLong, IsEmptyOnFailure)
{
    EXPECT_EQ(std::nullopt, strToLong("", nullptr, 10));
    EXPECT_EQ(std::nullopt, strToLong("abc", nullptr, 10));
    EXPECT_EQ(std::nullopt, strToLong("12a", nullptr, 10));
    EXPECT_EQ(std::nullopt, strToLong(std::string("12\0", 3), nullptr, 10));
    EXPECT_EQ(std::nullopt, strToLong("9223372036854775808", nullptr, 10));
    EXPECT_EQ(std::nullopt, strToLong("-9223372036854775809", nullptr, 10));
}

TEST(StrToLong, TellsWhereTheNumberEnds)
{
    EXPECT_EQ(std::pair(12L, 2UL), parseBeginning("12a"));
    EXPECT_EQ(std::pair(12L, 2UL), parseBeginning("12"));
    EXPECT_EQ(std::pair(-7L, 4UL), parseBeginning("  -7 8"));
    EXPECT_EQ(std::nullopt, parseBeginning("a12"));
    EXPECT_EQ(std::nullopt, parseBeginning("99999999999999999999"));
}

TEST(StrToLong, AsksForABaseThatThereIs)
{
    const std::string message = "base == 0 || (2 <= base && base <= 36)";
    EXPECT_ASSERTION(strToLong("12", nullptr, 1), message);
    EXPECT_ASSERTION(strToLong("12", nullptr, 37), message);
    EXPECT_ASSERTION(strToLong("12", nullptr, -10), message);
}

#include "Util_Json.h"

#include "Util_DeepComparison.h"
#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

using namespace Zem;

namespace
{

/// Expects that `value` is written as `json`, and that this is read as an equal value, which is written alike.
template<class T>
void expectForm(const T& value, const std::string& json)
{
    EXPECT_EQ(json, toJson(value));
    const T read = fromJson<T>(json);
    EXPECT_TRUE(areDeeplyEqual(value, read)) << json;
    EXPECT_EQ(json, toJson(read));
}

/// Expects that reading a `T` from `json` throws an `Exception` that says `message`.
template<class T, class Exception = cereal::Exception>
void expectRefused(const std::string& json, const std::string& message)
{
    try
    {
        fromJson<T>(json);
        ADD_FAILURE() << json << " was read";
    }
    catch (const Exception& exception)
    {
        EXPECT_EQ(message, exception.what()) << json;
    }
}

enum class Alignment : std::uint8_t
{
    Left,
    Right
};

struct Colour
{
    static constexpr auto fields()
    {
        return std::make_tuple(field("_name", &Colour::_name), field("_strength", &Colour::_strength));
    }

    template<class Archive>
    void serialize(Archive& archive)
    {
        serializeFields(archive, *this);
    }

    std::string _name;
    int _strength = 0;
};

bool operator==(const Colour& left, const Colour& right)
{
    return DefineDeepComparisonDetails::areMembersDeeplyEqual(left, right);
}

/// A value that can hold a pointer to another one.
struct Link
{
    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::make_nvp("_next", _next));
    }

    std::shared_ptr<const Link> _next;
};

class Shape
{
public:
    virtual ~Shape() = default;

    template<class Archive>
    void serialize(Archive&)
    {
    }

    friend bool operator==(const Shape& left, const Shape& right)
    {
        return typeid(left) == typeid(right) && left.isEqual(right);
    }

private:
    virtual bool isEqual(const Shape& other) const = 0;
};

class Circle : public Shape
{
public:
    explicit Circle(int radius = 0)
        : _radius(radius)
    {
    }

    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::base_class<Shape>(this), cereal::make_nvp("_radius", _radius));
    }

private:
    bool isEqual(const Shape& other) const override
    {
        return static_cast<const Circle&>(other)._radius == _radius;
    }

    int _radius;
};

class Square : public Shape
{
public:
    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::base_class<Shape>(this));
    }

private:
    bool isEqual(const Shape&) const override
    {
        return true;
    }
};

constexpr const char* textOfUUID = "01234567-89ab-cdef-fedc-ba9876543210";

UUID makeUUID()
{
    return *UUID::fromString(textOfUUID);
}

} // namespace

CEREAL_REGISTER_TYPE_WITH_NAME(Circle, "Test::Circle")
CEREAL_REGISTER_TYPE_WITH_NAME(Square, "Test::Square")

TEST(Json, NumbersAreDecimalWhateverTheirWidth)
{
    expectForm(std::numeric_limits<unsigned long>::max(), "18446744073709551615");
    expectForm(std::numeric_limits<long>::min(), "-9223372036854775808");
    expectForm(static_cast<short>(-61), "-61");
    expectForm(static_cast<std::uint8_t>(255), "255");
    expectForm(static_cast<signed char>(-1), "-1");
    expectForm('A', "65");
    expectForm(true, "true");
    expectForm(0.1, "0.1");
    expectForm(1.0F, "1.0");
    expectForm(std::numeric_limits<double>::denorm_min(), "5e-324");
    expectForm(std::numeric_limits<double>::max(), "1.7976931348623157e308");
}

namespace
{

/// Expects that neither archive takes a number that isn't finite.
template<class Number>
void expectFiniteNumbersOnly(const std::string& greatest)
{
    using Limits = std::numeric_limits<Number>;
    expectForm(Limits::max(), greatest);
    EXPECT_EQ(Limits::lowest(), fromJson<Number>(toJson(Limits::lowest())));
    const auto message = [](const std::string& number)
    { return "The number " + number + " isn't finite, or too large for its type"; };
    expectRefused<Number>("Infinity", message("inf"));
    expectRefused<Number>("-Infinity", message("-inf"));
    expectRefused<std::vector<Number>>("[NaN]", message("nan"));
    expectRefused<boost::optional<Number>>(R"({"hasValue":true,"value":Inf})", message("inf"));
    for (const Number number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
    {
        EXPECT_THROW(toJson(number), cereal::Exception) << number;
        EXPECT_THROW(toJson(std::vector<Number>{1, number}), cereal::Exception) << number;
    }
}

} // namespace

TEST(Json, FloatsThatAreNotFiniteAreRefusedInAndOut)
{
    expectFiniteNumbersOnly<double>("1.7976931348623157e308");
    expectFiniteNumbersOnly<float>("3.4028234663852887e38");
    expectRefused<float>("1e300", "The number 1e+300 isn't finite, or too large for its type");
    EXPECT_THROW(fromJson<double>("1e400"), cereal::Exception);
    EXPECT_THROW(fromJson<BoolOpt>(R"({"value":NaN})"), cereal::Exception);
}

TEST(Json, ZerosCanDropTheirSigns)
{
    EXPECT_EQ("-0.0", toJson(-0.0));
    EXPECT_EQ("0.0", dropSignsOfZeros(toJson(-0.0)));
    EXPECT_EQ("[0.0,0.0,-0.05,-0.0001,10.0]", dropSignsOfZeros(toJson(std::vector<double>{-0.0, 0, -0.05, -1e-4, 10})));
    const std::string strings = toJson(std::vector<std::string>{"-0.0", "[-0.0,-0.0]", "\"-0.0", ""});
    EXPECT_EQ(strings, dropSignsOfZeros(strings));
}

TEST(Json, EnumerationsAreNumbers)
{
    expectForm(Alignment::Right, "1");
}

TEST(Json, StringsKeepEveryByte)
{
    std::string all;
    for (int value = 0; value < 256; ++value)
    {
        all.push_back(static_cast<char>(value));
    }
    EXPECT_EQ(all, fromJson<std::string>(toJson(all)));
    expectForm(std::string("a\0b", 3), R"("a\u0000b")");
    expectForm(std::string(R"(\" {[,:)"), R"("\\\" {[,:")");
    expectForm(std::map<std::string, std::string>{{std::string("\0", 1), ""}}, R"([{"key":"\u0000","value":""}])");
}

TEST(Json, AnOptionalWritesItsValueOnlyIfItHasOne)
{
    expectForm(boost::optional<int>(5), R"({"hasValue":true,"value":5})");
    expectForm(boost::optional<int>(), R"({"hasValue":false})");
    expectForm(boost::optional<boost::optional<int>>(boost::optional<int>()),
               R"({"hasValue":true,"value":{"hasValue":false}})");
}

TEST(Json, AVariantWritesItsAlternative)
{
    using Variant = boost::variant<int, std::string, std::vector<int>>;
    expectForm(Variant(5), R"({"which":0,"data":5})");
    expectForm(Variant(std::string("x")), R"({"which":1,"data":"x"})");
    expectForm(Variant(std::vector<int>{1, 2}), R"({"which":2,"data":[1,2]})");
}

TEST(Json, AVariantRefusesAnAlternativeThatItDoesNotHave)
{
    const std::string message = "Invalid 'which' selector when deserializing boost::variant";
    using Variant = boost::variant<int, std::string>;
    for (const char* which : {"2", "3", "-1", "-2147483648", "2147483647"})
    {
        expectRefused<Variant>(R"({"which":)" + std::string(which) + R"(,"data":0})", message);
    }
}

TEST(Json, ATaggedValueIsAnObject)
{
    expectForm(RowIndex{7}, R"({"_value":7})");
    expectForm(ColumnIndex{~0UL}, R"({"_value":18446744073709551615})");
}

TEST(Json, ABoolOptIsANumber)
{
    expectForm(BoolOpt(true), R"({"value":1})");
    expectForm(BoolOpt(false), R"({"value":0})");
    expectForm(BoolOpt(), R"({"value":-1})");
}

TEST(Json, ABoolOptTakesAnyOtherNumberAsNoValue)
{
    for (const char* number : {"2", "-2", "127", "256", "257", "-256", "99999999999", "18446744073709551615", "0.5"})
    {
        EXPECT_EQ(BoolOpt(), fromJson<BoolOpt>(R"({"value":)" + std::string(number) + "}")) << number;
    }
    EXPECT_THROW(fromJson<BoolOpt>(R"({"value":true})"), cereal::RapidJSONException);
}

TEST(Json, ASizeIsTwoUnnamedMembers)
{
    expectForm(Size2D<float>{1.5F, 2}, R"({"value0":1.5,"value1":2.0})");
    expectForm(Size2D<unsigned>{1, 2}, R"({"value0":1,"value1":2})");
}

TEST(Json, ACellIndexKeepsTheDotsInItsKeys)
{
    expectForm(CellIndex(RowIndex{1}, ColumnIndex{2}),
               R"({"cellIndices.rowIndex":{"_value":1},"cellIndices.colIndex":{"_value":2}})");
}

TEST(Json, ATableRangeIsItsFourFields)
{
    expectForm(TableRange(RowIndex{1}, ColumnIndex{2}, RowIndex{3}, ColumnIndex{4}),
               R"({"_beginRow":{"_value":1},"_beginColumn":{"_value":2},)"
               R"("_endRow":{"_value":3},"_endColumn":{"_value":4}})");
}

TEST(Json, ATableRangeMustNotBeEmpty)
{
    const auto json = [](const char* endRow, const char* endColumn)
    {
        return R"({"_beginRow":{"_value":1},"_beginColumn":{"_value":2},"_endRow":{"_value":)" + std::string(endRow) +
               R"(},"_endColumn":{"_value":)" + endColumn + "}}";
    };
    expectRefused<TableRange>(json("1", "4"), "A table range has no rows from 1 to 1");
    expectRefused<TableRange>(json("3", "0"), "A table range has no columns from 2 to 0");
}

TEST(Json, AUUIDIsItsTextInAnObject)
{
    expectForm(makeUUID(), R"({"_value":"01234567-89ab-cdef-fedc-ba9876543210"})");
    expectForm(UUIDable(makeUUID()), R"({"_uuid":{"_value":"01234567-89ab-cdef-fedc-ba9876543210"}})");
}

TEST(Json, AMalformedUUIDIsRefusedByName)
{
    expectRefused<UUID>(R"({"_value":"01234567"})", R"("01234567" is not a UUID)");
    expectRefused<UUID>(R"({"_value":""})", R"("" is not a UUID)");
}

TEST(Json, AFloatNumberIsAnObject)
{
    expectForm(FloatNumber(1.5), R"({"_value":1.5})");
}

TEST(Json, AClassMayBeItsListOfFields)
{
    expectForm(Colour{"red", 3}, R"({"_name":"red","_strength":3})");
}

TEST(Json, ContainersAreArrays)
{
    expectForm(std::vector<int>{}, "[]");
    expectForm(std::vector<RowIndex>{RowIndex{1}}, R"([{"_value":1}])");
    expectForm(std::map<RowIndex, std::string>{{RowIndex{1}, "one"}}, R"([{"key":{"_value":1},"value":"one"}])");
    expectForm(std::pair<int, bool>(1, true), R"({"first":1,"second":true})");
}

TEST(Json, NamedMembersAreFoundWhereverTheyStand)
{
    EXPECT_EQ((Colour{"red", 3}), fromJson<Colour>(R"({"_strength":3,"more":[{}],"_name":"red"})"));
}

TEST(Json, AMissingKeyIsRefusedByName)
{
    expectRefused<Colour>(R"({"_name":"red"})", "JSON Parsing failed - provided NVP (_strength) not found");
    expectRefused<RowIndex>("{}", "JSON Parsing failed - provided NVP (_value) not found");
    expectRefused<RowIndex>("[]", "JSON Parsing failed - provided NVP (_value) not found");
    expectRefused<Colour>("[1,2]", "JSON Parsing failed - provided NVP (_name) not found");
}

TEST(Json, AMemberOfTheWrongTypeFailsTheParsersTest)
{
    const auto expectFailure = [](auto value, const std::string& json, const std::string& test) {
        expectRefused<decltype(value), cereal::RapidJSONException>(json,
                                                                   "rapidjson internal assertion failure: " + test);
    };
    expectFailure(short(), R"("5")", "data_.f.flags & kIntFlag");
    expectFailure(int(), "5000000000", "data_.f.flags & kIntFlag");
    expectFailure(int(), "1.5", "data_.f.flags & kIntFlag");
    expectFailure(std::uint8_t(), "-1", "data_.f.flags & kUintFlag");
    expectFailure(RowIndex(), R"({"_value":-1})", "data_.f.flags & kUint64Flag");
    expectFailure(std::string(), "5", "IsString()");
    expectFailure(Colour(), "5", "IsObject()");
    expectFailure(std::vector<int>(), "{}", "IsArray()");
    expectFailure(bool(), "1", "IsBool()");
}

TEST(Json, ASmallNumberThatDoesNotFitIsRefused)
{
    const auto expectFailure = [](auto value, const std::string& number) {
        expectRefused<decltype(value)>(number, "The number " + number + " doesn't fit the member that it is read into");
    };
    expectFailure(short(), "32768");
    expectFailure(short(), "-32769");
    expectFailure(std::uint8_t(), "256");
    expectFailure(std::int8_t(), "-129");
    expectFailure(std::uint16_t(), "65536");
    expectFailure(char(), "128");
    expectFailure(Alignment(), "257");
}

TEST(Json, AUniquePointerWritesWhetherThereIsAnObject)
{
    expectForm(std::make_unique<int>(5), R"({"ptr_wrapper":{"valid":1,"data":5}})");
    expectForm(std::unique_ptr<int>(), R"({"ptr_wrapper":{"valid":0}})");
}

TEST(Json, ASharedPointerWritesItsObjectOnceAndReadsOneObject)
{
    const auto colour = std::make_shared<const Colour>(Colour{"red", 3});
    const std::vector<std::shared_ptr<const Colour>> pointers{colour, nullptr, colour};
    const std::string json = R"([{"ptr_wrapper":{"id":2147483649,"data":{"_name":"red","_strength":3}}},)"
                             R"({"ptr_wrapper":{"id":0}},{"ptr_wrapper":{"id":1}}])";
    expectForm(pointers, json);
    const auto read = fromJson<std::vector<std::shared_ptr<const Colour>>>(json);
    EXPECT_EQ(read[0].get(), read[2].get());
    EXPECT_EQ(2, read[0].use_count());
}

TEST(Json, ASharedConstPtrIsAMemberAroundItsPointer)
{
    expectForm(makeSharedConst<int>(5), R"({"_value":{"ptr_wrapper":{"id":2147483649,"data":5}}})");
    expectForm(SharedConstPtr<int>(), R"({"_value":{"ptr_wrapper":{"id":0}}})");
}

TEST(Json, APolymorphicPointerWritesTheNameOfItsClass)
{
    const SharedConstPtr<Shape> circle = std::make_shared<const Circle>(3);
    expectForm(circle, R"({"_value":{"polymorphic_id":2147483649,"polymorphic_name":"Test::Circle",)"
                       R"("ptr_wrapper":{"id":2147483649,"data":{"value0":{},"_radius":3}}}})");
    const std::vector<SharedConstPtr<Shape>> shapes{circle, makeSharedConst<Square>(), circle};
    const auto read = fromJson<std::vector<SharedConstPtr<Shape>>>(toJson(shapes));
    EXPECT_TRUE(areDeeplyEqual(shapes, read));
    EXPECT_EQ(read[0], read[2]);
}

TEST(Json, AnUnknownPointerIsRefusedByItsId)
{
    const std::string message = "Error while trying to deserialize a smart pointer. Could not find id 7";
    expectRefused<std::shared_ptr<const int>>(R"({"ptr_wrapper":{"id":7}})", message);
    expectRefused<SharedConstPtr<int>>(R"({"_value":{"ptr_wrapper":{"id":7}}})", message);
}

TEST(Json, APointerToAnObjectOfAnotherClassIsRefused)
{
    const std::string message =
        "Error while trying to deserialize a smart pointer. Id 1 belongs to an object of another class";
    using Pointers = std::pair<std::shared_ptr<const int>, std::shared_ptr<const Colour>>;
    expectRefused<Pointers>(R"({"first":{"ptr_wrapper":{"id":2147483649,"data":5}},"second":{"ptr_wrapper":{"id":1}}})",
                            message);
    expectRefused<std::vector<std::shared_ptr<const Shape>>>(
        R"([{"polymorphic_id":2147483649,"polymorphic_name":"Test::Circle",)"
        R"("ptr_wrapper":{"id":2147483649,"data":{"value0":{},"_radius":3}}},)"
        R"({"polymorphic_id":2147483650,"polymorphic_name":"Test::Square","ptr_wrapper":{"id":1}}])",
        message);
}

TEST(Json, AnObjectCannotContainItself)
{
    expectRefused<std::shared_ptr<const Link>>(
        R"({"ptr_wrapper":{"id":2147483649,"data":{"_next":{"ptr_wrapper":{"id":1}}}}})",
        "Error while trying to deserialize a smart pointer. Could not find id 1");
}

TEST(Json, AFailedWriteLeavesTheProcessAlone)
{
    class Unregistered : public Shape
    {
    private:
        bool isEqual(const Shape&) const override
        {
            return true;
        }
    };
    const std::vector<SharedConstPtr<Shape>> shapes{makeSharedConst<Circle>(), makeSharedConst<Unregistered>()};
    EXPECT_THROW(toJson(shapes), cereal::Exception);
}

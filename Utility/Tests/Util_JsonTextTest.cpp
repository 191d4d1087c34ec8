#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace Zem;

namespace
{

/// A value as deep as its text.
struct Nest
{
    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::make_nvp("_inner", _inner));
    }

    std::vector<Nest> _inner;
};

/// As many brackets as `depth`, opened and closed.
std::string brackets(unsigned long depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

/// The text of a `Nest`, in which there are `depth` arrays and objects inside each other.
std::string nest(unsigned long depth)
{
    std::string text = R"({"_inner":[]})";
    for (unsigned long i = 2; i < depth; i += 2)
    {
        text = R"({"_inner":[)" + text + "]}";
    }
    return text;
}

using Table = std::map<std::string, std::vector<boost::variant<int, std::string, std::shared_ptr<const UUID>>>>;

Table makeTable()
{
    const auto uuid = std::make_shared<const UUID>(UUID::generate());
    return {{"first", {1, std::string("a\"b\\"), uuid}}, {"second", {uuid}}, {"third", {}}};
}

/// Reads `text` as several types; the only exceptions allowed are those that say that it can't be.
void expectReadOrRefused(const std::string& text)
{
    const auto read = [&](auto value)
    {
        try
        {
            fromJson<decltype(value)>(text);
        }
        catch (const cereal::Exception&)
        {
        }
    };
    read(Table());
    read(int());
    read(std::string());
    read(std::vector<boost::optional<double>>());
    read(CellIndex());
    read(UUID());
    read(Nest());
}

} // namespace

TEST(JsonText, IsOneLineWithoutBlanks)
{
    EXPECT_EQ(R"([{"key":"a b\n","value":[1,2]}])", toJson(std::map<std::string, std::vector<int>>{{"a b\n", {1, 2}}}));
    EXPECT_EQ("5", toJson(5));
}

TEST(JsonText, MayBeReadWithBlanks)
{
    EXPECT_EQ((std::vector<int>{1, 2}), fromJson<std::vector<int>>(" [ 1 ,\n 2 ]\t"));
    EXPECT_EQ(5, fromJson<int>("\n5 "));
}

TEST(JsonText, RefusesWhatIsNotJson)
{
    for (const char* text :
         {"", " ", "{", "[1", "[1,]", R"({"_value")", R"({"_value":})", "nul", R"("open)", "1 2", "]", "}{",
          R"({"_value":1}})", R"({"_value":1},{})", R"(1,"more":2)", "1}", R"([1]])", "\xFF", "'1'"})
    {
        EXPECT_THROW(fromJson<RowIndex>(text), cereal::Exception) << text;
        EXPECT_THROW(fromJson<int>(text), cereal::Exception) << text;
        EXPECT_THROW(fromJson<std::vector<int>>(text), cereal::Exception) << text;
    }
}

TEST(JsonText, RefusesEveryBeginningOfAText)
{
    const std::string text = toJson(makeTable());
    for (std::size_t length = 0; length < text.size(); ++length)
    {
        EXPECT_THROW(fromJson<Table>(text.substr(0, length)), cereal::Exception) << text.substr(0, length);
    }
}

TEST(JsonText, ReadsOrRefusesTextsWithRandomChanges)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    const std::string original = toJson(makeTable());
    const std::string alphabet = "{}[]\",:0123456789-+.eE\\tfnu aN\x01\x80\xFF";
    for (int round = 0; round < 4000; ++round)
    {
        std::string text = original;
        for (auto changes = 1 + random() % 4; changes > 0; --changes)
        {
            const std::size_t position = random() % text.size();
            const char character = alphabet[random() % alphabet.size()];
            switch (random() % 3)
            {
            case 0:
                text[position] = character;
                break;
            case 1:
                text.insert(position, 1, character);
                break;
            default:
                text.erase(position, 1 + random() % 5);
                break;
            }
        }
        expectReadOrRefused(text);
    }
}

TEST(JsonText, ReadsOrRefusesRandomText)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937_64 random(seed);
    const std::string alphabet = "{}[]\",:01-.e\\tn ";
    for (int round = 0; round < 4000; ++round)
    {
        std::string text;
        for (auto length = random() % 20; length > 0; --length)
        {
            text.push_back(alphabet[random() % alphabet.size()]);
        }
        expectReadOrRefused(text);
    }
}

TEST(JsonText, ReadsAsDeepAsItAllows)
{
    const std::string deepest = nest(maximalJsonNesting);
    EXPECT_NO_THROW(requireBoundedJsonNesting(deepest));
    EXPECT_EQ(deepest, toJson(fromJson<Nest>(deepest)));
}

TEST(JsonText, RefusesDeeperNestingBeforeItReads)
{
    const std::string message = "The JSON text is nested deeper than 1000 levels";
    const auto messageFor = [](const std::string& text)
    {
        try
        {
            fromJson<Nest>(text);
            return std::string();
        }
        catch (const cereal::Exception& exception)
        {
            return std::string(exception.what());
        }
    };
    EXPECT_EQ(message, messageFor(nest(maximalJsonNesting + 2)));
    EXPECT_EQ(message, messageFor(brackets(maximalJsonNesting + 1)));
    EXPECT_EQ(message, messageFor(std::string(10'000'000, '[')));
    EXPECT_EQ(message, messageFor(std::string(10'000'000, '{')));
    EXPECT_NO_THROW(requireBoundedJsonNesting(brackets(maximalJsonNesting)));
}

TEST(JsonText, BracketsInsideStringsAreNotNesting)
{
    const std::string text = R"(\")" + std::string(5000, '[') + R"(\\)";
    EXPECT_EQ(text, fromJson<std::string>(toJson(text)));
    EXPECT_NO_THROW(requireBoundedJsonNesting(toJson(text)));
    EXPECT_THROW(requireBoundedJsonNesting(R"("\\")" + std::string(5000, '[')), cereal::Exception);
}

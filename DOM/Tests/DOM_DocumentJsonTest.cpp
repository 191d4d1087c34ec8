#include "DOM_DocumentJson.h"
#include "DOM_Blocks.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Json.h"
#include "DOM_Runs.h"
#include "DOM_TestDocuments.h"

#include "TS_Assertions.h"
#include "Util_JsonText.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

/// What was wrong with a document's text; empty if nothing.
std::string getError(const std::string& json)
{
    try
    {
        const Document document = fromJson(json);
        const std::vector<std::string> problems = checkInvariants(document);
        EXPECT_EQ(std::vector<std::string>(), problems) << json;
        EXPECT_TRUE(fromJson(toJson(document)) == document) << json;
        return {};
    }
    catch (const std::runtime_error& error)
    {
        return error.what()[0] == '\0' ? "an error without a text" : error.what();
    }
    catch (const AssertionFailure& failure)
    {
        return failure.what();
    }
}

std::string replaceFirst(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t begin = text.find(from);
    EXPECT_NE(std::string::npos, begin) << from;
    return text.replace(begin, from.size(), to);
}

const std::string& getDocumentJson()
{
    static const std::string json = toJson(makeDocument());
    return json;
}

const Run& getRun(const Document& document, std::size_t index)
{
    const auto& blocks = document.getTextWithTombstones().getBlocks();
    return *static_cast<const Paragraph&>(*blocks.front()).getRuns().at(index);
}

} // namespace

TEST(DocumentJson, GivesBackAnEqualDocument)
{
    const Document document = makeDocument();
    EXPECT_TRUE(fromJson(toJson(document)) == document);
    EXPECT_TRUE(fromJson(toJson(Document())) == Document());
}

TEST(DocumentJson, GivesBackAnEqualTextAndTable)
{
    const SharedObjectFactory factory;
    const TextWithTombstones text = makeText(factory);
    EXPECT_TRUE(textFromJson(toJson(text)) == text);
    Table table(3, 4);
    table.getOrCreateCell(RowIndex(1), ColumnIndex(2)).getTextWithTombstones() = makeText(factory);
    EXPECT_TRUE(tableFromJson(toJson(table)) == table);
}

TEST(DocumentJson, InternsTheStylesThatItReads)
{
    Document document = makeDocument();
    // An equal style of another origin, which an archive that knows nothing of equal styles writes a second time.
    auto& paragraph = static_cast<Paragraph&>(*document.getTextWithTombstones().getBlocks().front());
    auto& style = paragraph.getRuns()[1]->getSharedStyle();
    style.reset(new SharedStyle<RunStyle>(style->get()));
    ASSERT_NE(getRun(document, 0).getSharedStyle(), getRun(document, 1).getSharedStyle());

    const Document read = fromJson(Zem::toJson<Document>(document));
    EXPECT_TRUE(read == document);
    const auto& readStyle = getRun(read, 0).getSharedStyle();
    EXPECT_EQ(readStyle, getRun(read, 1).getSharedStyle());
    EXPECT_EQ(readStyle, read.getSharedObjectFactory().create(readStyle->get()));
}

TEST(DocumentJson, KeepsBytesThatAreNoWholeCharacter)
{
    Document document;
    document.getTextWithTombstones().getBlocks().push_back(makeParagraph(std::string("\xC3\0\x9F\xFF", 4)));
    EXPECT_TRUE(fromJson(toJson(document)) == document);
}

// Documents from strangers.

TEST(DocumentJson, RefusesEveryTruncation)
{
    const std::string& json = getDocumentJson();
    const std::size_t step = 1 + json.size() / 1500;
    for (std::size_t size = 0; size < json.size(); size += step)
    {
        EXPECT_NE("", getError(json.substr(0, size))) << size;
    }
    EXPECT_NE("", getError(json.substr(0, json.size() - 1)));
}

TEST(DocumentJson, RefusesOtherJson)
{
    for (const char* text : {"", " ", "{}", "[]", "null", "1", "\"\"", "{\"_text\":null}", "{\"_text\":[]}", "{}{}"})
    {
        EXPECT_NE("", getError(text)) << text;
    }
}

TEST(DocumentJson, RefusesNestingWithoutBound)
{
    EXPECT_NE("", getError(std::string(10000000, '[')));
    std::string shapes;
    for (int index = 0; index < 100000; ++index)
    {
        shapes += R"({"_text":{"_blocks":[)";
    }
    EXPECT_NE("", getError(shapes));
}

namespace
{

/// A shape in whose text there is a shape, and so on.
Document makeNestedDocument(int depth)
{
    Document document;
    TextWithTombstones* text = &document.getTextWithTombstones();
    for (int count = 0; count < depth; ++count)
    {
        auto shape = std::make_unique<Shape>();
        TextWithTombstones* const inner = &shape->getTextWithTombstones();
        text->getBlocks().push_back(std::move(shape));
        text = inner;
    }
    return document;
}

bool canBeWritten(const Document& document)
{
    try
    {
        toJson(document);
        return true;
    }
    catch (const std::runtime_error& error)
    {
        EXPECT_STREQ("The JSON text is nested deeper than 1000 levels", error.what());
        return false;
    }
}

} // namespace

TEST(DocumentJson, ReadsWhateverItWritesAndWritesNothingDeeper)
{
    int depth = 1;
    while (canBeWritten(makeNestedDocument(depth + 1)))
    {
        ++depth;
    }
    EXPECT_GT(depth, 100);
    const Document deepest = makeNestedDocument(depth);
    EXPECT_TRUE(fromJson(toJson(deepest)) == deepest);
    EXPECT_FALSE(canBeWritten(makeNestedDocument(1000)));
}

TEST(DocumentJson, RefusesIdsThatWereNeverSeen)
{
    const std::string null = R"("_sharedStyle":{"id":0})";
    EXPECT_EQ("Error while trying to deserialize a smart pointer. Could not find id 77",
              getError(replaceFirst(getDocumentJson(), null, R"("_sharedStyle":{"id":77})")));
}

TEST(DocumentJson, RefusesNullBlocksAndRuns)
{
    const std::string json = toJson(Document());
    EXPECT_EQ("Null block at place 0",
              getError(replaceFirst(json, R"("_blocks":[])", R"("_blocks":[{"polymorphic_id":0}])")));
    Document document;
    document.getTextWithTombstones().getBlocks().push_back(std::make_unique<Paragraph>());
    EXPECT_EQ("Null run at place 0",
              getError(replaceFirst(toJson(document), R"("_runs":[])", R"("_runs":[{"polymorphic_id":0}])")));
    Document commented;
    commented.getComments().insert(Comment());
    const std::string comments = toJson(commented);
    const std::size_t place = comments.find(R"("_blocks":[])", comments.find("_comments"));
    EXPECT_EQ("Null block at place 0",
              getError(std::string(comments).replace(place, 12, R"("_blocks":[{"polymorphic_id":0}])")));
}

TEST(DocumentJson, RefusesTombstonesThatDoNotIncrease)
{
    const auto withRanges = [](const std::string& ranges)
    {
        Document document;
        document.getTextWithTombstones().getBlocks().push_back(makeParagraph("0123456789"));
        return replaceFirst(toJson(document), R"({"_tombstones":[]})", R"({"_tombstones":[)" + ranges + "]}");
    };
    const auto range = [](const std::string& begin, const std::string& end)
    { return R"({"_begin":{"_value":)" + begin + R"(},"_end":{"_value":)" + end + "}}"; };

    EXPECT_EQ("", getError(withRanges(range("1", "2"))));
    EXPECT_EQ("_begin < _end", getError(withRanges(range("2", "2"))));
    EXPECT_EQ("_begin < _end", getError(withRanges(range("2", "1"))));
    EXPECT_NE("", getError(withRanges(range("4", "5") + "," + range("1", "2"))));
    EXPECT_NE("", getError(withRanges(range("1", "5") + "," + range("2", "6"))));
    EXPECT_NE("", getError(withRanges(range("-1", "5"))));
}

TEST(DocumentJson, RefusesTombstonesBehindMoreSlotsThanThereAre)
{
    const std::string json = toJson(Document());
    const auto withRange = [&](const std::string& range)
    { return getError(replaceFirst(json, R"({"_tombstones":[]})", R"({"_tombstones":[)" + range + "]}")); };
    EXPECT_EQ("", withRange(R"({"_begin":{"_value":0},"_end":{"_value":1152921504606846976}})"));
    EXPECT_EQ("The last tombstone stands behind 1152921504606846976 live slots, but there are 0.",
              withRange(R"({"_begin":{"_value":1152921504606846976},"_end":{"_value":1152921504606846977}})"));
}

TEST(DocumentJson, RefusesMoreTombstonesThanCanBeCounted)
{
    const auto withEnd = [](const std::string& end)
    {
        Document document;
        document.getTextWithTombstones().getBlocks().push_back(makeParagraph("0123456789"));
        return getError(replaceFirst(toJson(document), R"({"_tombstones":[]})",
                                     R"({"_tombstones":[{"_begin":{"_value":0},"_end":{"_value":)" + end + "}}]}"));
    };
    EXPECT_EQ("", withEnd("4611686018427387904"));
    EXPECT_EQ("There are 4611686018427387905 tombstones, more than a list can have.", withEnd("4611686018427387905"));
    EXPECT_EQ("There are 18446744073709551615 tombstones, more than a list can have.", withEnd("18446744073709551615"));
}

TEST(DocumentJson, GivesBackNoStyleAndTheDefaultStyleAsEqualDocuments)
{
    Document none;
    none.getTextWithTombstones().getBlocks().push_back(makeParagraph("text"));
    Document byDefault = none;
    auto& paragraph = static_cast<Paragraph&>(*byDefault.getTextWithTombstones().getBlocks().front());
    paragraph.getSharedStyle() = byDefault.getSharedObjectFactory().create(ParagraphStyle());
    paragraph.getSharedParaMarkStyle() = byDefault.getSharedObjectFactory().create(RunStyle());
    paragraph.getRuns().front()->getSharedStyle() = byDefault.getSharedObjectFactory().create(RunStyle());
    EXPECT_TRUE(none == byDefault);
    EXPECT_TRUE(fromJson(Zem::toJson<Document>(byDefault)) == none);
    EXPECT_TRUE(fromJson(toJson(none)) == byDefault);
}

TEST(DocumentJson, GivesBackTextRunsWithoutText)
{
    Document document;
    document.getTextWithTombstones().getBlocks().push_back(makeParagraph(""));
    EXPECT_TRUE(fromJson(toJson(document)) == document);
}

TEST(DocumentJson, RefusesNumbersThatAreTooBig)
{
    const std::string key = R"("_columnsCount":{"hasValue":true,"value":2})";
    for (const char* number : {"256", "-1", "1152921504606846976", "1e300", "\"2\"", "null", "2.5"})
    {
        EXPECT_NE("",
                  getError(replaceFirst(getDocumentJson(), key,
                                        std::string(R"("_columnsCount":{"hasValue":true,"value":)") + number + "}")))
            << number;
    }
}

TEST(DocumentJson, RefusesNumbersThatAreNotFinite)
{
    Document document;
    auto shape = std::make_unique<Shape>();
    shape->setSize(Size2D<float>{2.5F, 3});
    document.getTextWithTombstones().getBlocks().push_back(std::move(shape));
    const std::string json = toJson(document);
    ASSERT_EQ("", getError(json));
    for (const char* number : {"NaN", "Infinity", "-Infinity", "1e300", "1e400"})
    {
        EXPECT_NE("", getError(replaceFirst(json, "2.5", number))) << number;
    }
    static_cast<Shape&>(*document.getTextWithTombstones().getBlocks().front())
        .setSize(Size2D<float>{std::numeric_limits<float>::infinity(), 3});
    EXPECT_THROW(toJson(document), std::runtime_error);
}

namespace
{

/// Changes a few bytes, or copies a stretch over another.
std::string mutate(std::string json, std::mt19937_64& random)
{
    static const std::string interesting = "0123456789-\"{}[]:,.eE\\ntrue_";
    const auto pick = [&](std::size_t count)
    { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); };
    for (std::size_t count = 1 + pick(3); count > 0; --count)
    {
        const std::size_t place = pick(json.size());
        if (pick(4) == 0)
        {
            const std::size_t from = pick(json.size());
            json.replace(place, pick(40), json.substr(from, pick(40)));
            continue;
        }
        static const std::vector<std::string> numbers{"NaN", "Inf", "-Infinity", "1e300", "-1e-400", "1e999"};
        if (pick(4) == 0)
        {
            const std::size_t end = json.find_first_not_of("0123456789.eE-", place);
            json.replace(place, end == std::string::npos ? 0 : end - place, numbers[pick(numbers.size())]);
            continue;
        }
        json[place] = interesting[pick(interesting.size())];
    }
    return json;
}

} // namespace

TEST(DocumentJson, ReadsOrRefusesWhatIsDamaged)
{
    const std::string& json = getDocumentJson();
    const std::uint64_t seed = 20240229;
    std::mt19937_64 random(seed);
    int readCount = 0;
    for (int count = 0; count < 1500; ++count)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", document " + std::to_string(count));
        readCount += getError(mutate(json, random)).empty() ? 1 : 0;
    }
    // Where the damage lies inside a text or a number, the document is a good one.
    EXPECT_GT(readCount, 0);
    EXPECT_LT(readCount, 1500);
}

} // namespace Zem::DOM::Tests

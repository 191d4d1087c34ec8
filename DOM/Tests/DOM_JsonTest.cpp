#include "DOM_Json.h"
#include "DOM_BlockValue.h"
#include "DOM_Blocks.h"
#include "DOM_Comment.h"
#include "DOM_FormulaSyntaxTree.h"
#include "DOM_Hyperlink.h"
#include "DOM_Note.h"
#include "DOM_PageNumber.h"
#include "DOM_Runs.h"

#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

const std::string nilUUID = Zem::toJson(UUID());
const std::string first = "2147483649";
const std::string second = "2147483650";
const std::string noOptional = R"({"hasValue":false})";
const std::string emptyProps = Zem::toJson(RunProps());

template<class T>
void expectJson(const std::string& text, const T& value)
{
    EXPECT_EQ(text, Zem::toJson(value));
    EXPECT_TRUE(areDeeplyEqual(value, Zem::fromJson<T>(text)));
}

template<class T>
std::string getReadError(const std::string& text)
{
    try
    {
        static_cast<void>(Zem::fromJson<T>(text));
        return "no error";
    }
    catch (const std::runtime_error& error)
    {
        return error.what();
    }
}

// Inside a test, `Run` is a function of the test's own class.
using RunPtr = std::unique_ptr<Run>;
using SharedRun = std::shared_ptr<const Run>;

/// Writes and reads an object through both kinds of pointer to its base, and returns the name of its class.
template<class Base>
std::string getWrittenName(std::unique_ptr<Base> object)
{
    const std::string json = Zem::toJson(object);
    EXPECT_TRUE(areDeeplyEqual(object, Zem::fromJson<std::unique_ptr<Base>>(json))) << json;
    const std::shared_ptr<const Base> shared = std::move(object);
    EXPECT_TRUE(areDeeplyEqual(shared, Zem::fromJson<std::shared_ptr<const Base>>(Zem::toJson(shared))));
    const std::string key = R"("polymorphic_name":")";
    const std::size_t begin = json.find(key) + key.size();
    return json.substr(begin, json.find('"', begin) - begin);
}

} // namespace

TEST(Json, WritesTheAuthorAndTimeOfAChange)
{
    TrackChangesInfo info;
    expectJson(R"({"_userInfo":{"hasValue":false},"_dateTime":{"hasValue":false}})", info);
    info._userInfo = UserInfo("Ann", "ann@example.org");
    DateTime moment;
    moment._year = Year(2024);
    moment._month = Month(2);
    moment._day = Day(29);
    moment._hours = Hours(23);
    moment._minutes = Minutes(59);
    moment._seconds = Seconds(58);
    moment._timeZone = TimeZone(-90);
    info._dateTime = moment;
    expectJson(R"({"_userInfo":{"hasValue":true,"value":{"_name":"Ann","_email":"ann@example.org"}},)"
               R"("_dateTime":{"hasValue":true,"value":{"_year":{"_value":2024},"_month":{"_value":2},)"
               R"("_day":{"_value":29},"_hours":{"_value":23},"_minutes":{"_value":59},"_seconds":{"_value":58},)"
               R"("_timeZone":{"_offset":-90}}}})",
               info);
}

TEST(Json, WritesTrackedObjects)
{
    expectJson(R"({"_info":{"hasValue":false},"_value":2})",
               TrackedObject<TrackChangesType>(TrackChangesType::Deletion, boost::none));
    expectJson(R"({"_info":{"hasValue":false},"_value":)" + nilUUID + "}", TrackedObject<UUID>(UUID(), boost::none));
    expectJson(R"({"_info":{"hasValue":false},"_value":{"ptr_wrapper":{"id":0}}})",
               TrackedObject<RunPropsConstPtr>(nullptr, boost::none));
}

TEST(Json, WritesHyperlinks)
{
    Hyperlink link("https://example.org/");
    link.setAnchor("top");
    link.setTooltip("Go");
    expectJson(R"({"_url":"https://example.org/","_anchor":"top","_tooltip":"Go"})", link);
}

TEST(Json, WritesPageNumbers)
{
    PageNumber number;
    number._alignment = PageNumberAlignment::Right;
    number._format = NumberFormat::LowerRoman;
    expectJson(R"({"_alignment":2,"_style":)" + Zem::toJson(RunStyle()) + R"(,"_format":{"hasValue":true,"value":3}})",
               number);
}

TEST(Json, WritesBlockValues)
{
    expectJson(R"({"_value":{"_value":0.5}})", BlockValue<FloatNumber>(FloatNumber(0.5)));
    expectJson(R"({"_value":7})", BlockValue<FormulaErrorType>(FormulaErrorType::CircularReference));
    expectJson(R"({"_value":true})", BlockValue<bool>(true));
}

TEST(Json, WritesComments)
{
    Comment comment{UUID()};
    comment.setResolved(true);
    expectJson(R"({"value0":)" + Zem::toJson(UUIDable(UUID())) +
                   R"(,"_info":{"_userInfo":{"hasValue":false},"_dateTime":{"hasValue":false}},"_blocks":[],)"
                   R"("_nextCommentUUID":)" +
                   nilUUID + R"(,"_isResolved":true})",
               comment);
}

TEST(Json, WritesNotes)
{
    Note note{UUID()};
    note.setExtent(Size2D<float>{1.5f, 2});
    note.setAlwaysVisible(true);
    expectJson(R"({"value0":)" + Zem::toJson(UUIDable(UUID())) +
                   R"(,"_blocks":[],"_extent":{"hasValue":true,"value":{"value0":1.5,"value1":2.0}},)"
                   R"("_alwaysVisible":true})",
               note);
}

TEST(Json, WritesCellRanges)
{
    using namespace FormulaSyntaxTree;
    CellRange range(TableAddress(std::string("S")), {{ColumnIndex(1), true}, {ColumnID(2), false}},
                    {{RowIndex(3), false}, {RowID(4), true}});
    range.setSecondTableAddress(UUID());
    expectJson(R"({"value0":{},"_firstTableAddress":{"which":0,"data":"S"},"_secondTableAddress":{"which":1,"data":)" +
                   nilUUID +
                   R"(},"_columns":{"first":{"_id":{"which":0,"data":{"_value":1}},"_isFixed":true},)"
                   R"("second":{"_id":{"which":1,"data":{"_value":2}},"_isFixed":false}},)"
                   R"("_rows":{"first":{"_id":{"which":0,"data":{"_value":3}},"_isFixed":false},)"
                   R"("second":{"_id":{"which":1,"data":{"_value":4}},"_isFixed":true}}})",
               range);
}

TEST(Json, WritesATextWithoutTombstones)
{
    expectJson(R"({"_blocks":[],"_tombstones":{"_tombstones":[]}})", TextWithTombstones());
}

TEST(Json, WritesTheTombstonesOfAText)
{
    TextWithTombstones text;
    text.getBlocks().push_back(std::make_unique<SectionTag>());
    text.getTombstones().insertElements(CollaborationUtils::IndexIncludingTombstones(0), 3);
    text.getTombstones().replaceWithTombstones(CollaborationUtils::IndexIncludingTombstones(1), 2);
    const std::string json = Zem::toJson(text);
    EXPECT_NE(std::string::npos,
              json.find(R"("_tombstones":{"_tombstones":[{"_begin":{"_value":1},"_end":{"_value":3}}]})"))
        << json;
    EXPECT_TRUE(Zem::fromJson<TextWithTombstones>(json) == text);
}

// Shared styles and properties.

TEST(Json, WritesANullStyleAsIdZero)
{
    expectJson(R"({"id":0})", SharedStyleConstIPtr<RunStyle>());
}

TEST(Json, WritesAStyleInItsWrappers)
{
    expectJson(R"({"id":)" + first + R"(,"value0":{"ptr_wrapper":{"valid":1,"data":{"_style":)" +
                   Zem::toJson(ParagraphStyle()) + "}}}}",
               SharedStyleConstIPtr<ParagraphStyle>(new SharedStyle<ParagraphStyle>(ParagraphStyle())));
}

TEST(Json, WritesASharedStyleOnceForAnArchive)
{
    using Style = SharedStyleConstIPtr<ParagraphStyle>;
    const Style style(new SharedStyle<ParagraphStyle>(ParagraphStyle()));
    const Style equal(new SharedStyle<ParagraphStyle>(ParagraphStyle()));
    const std::vector<Style> styles{style, equal, style};
    const std::string json = Zem::toJson(styles);
    EXPECT_TRUE(json.ends_with(R"(,{"id":1}])")) << json;
    const auto read = Zem::fromJson<std::vector<Style>>(json);
    ASSERT_EQ(3u, read.size());
    EXPECT_EQ(read[0], read[2]);
    EXPECT_NE(read[0], read[1]);
    EXPECT_EQ(2u, read[0]->use_count());
}

TEST(Json, ReadsAStyleThatIsNotValidAsNull)
{
    using Styles = std::vector<SharedStyleConstIPtr<RunStyle>>;
    const auto read =
        Zem::fromJson<Styles>(R"([{"id":)" + first + R"(,"value0":{"ptr_wrapper":{"valid":0}}},{"id":1}])");
    EXPECT_EQ(Styles(2), read);
}

TEST(Json, RefusesTheIdOfAnotherKindOfStyle)
{
    Paragraph paragraph;
    paragraph.getSharedStyle().reset(new SharedStyle<ParagraphStyle>(ParagraphStyle()));
    std::string json = Zem::toJson(paragraph);
    const std::string null = R"("_sharedParaMarkStyle":{"id":0})";
    ASSERT_NE(std::string::npos, json.find(null));
    json.replace(json.find(null), null.size(), R"("_sharedParaMarkStyle":{"id":1})");
    EXPECT_NE("no error", getReadError<Paragraph>(json));
}

TEST(Json, LetsTwoRunsShareTheirProperties)
{
    const auto props = std::make_shared<const RunProps>();
    Runs runs;
    for (int index = 0; index < 2; ++index)
    {
        RunStyle style;
        style.setRunProps(props);
        style.setParentUUID(UUID(UUID::Bytes{static_cast<unsigned char>(index)}));
        runs.push_back(std::make_unique<TabRun>());
        runs.back()->getSharedStyle().reset(new SharedStyle<RunStyle>(style));
    }
    const std::string json = Zem::toJson(runs);
    EXPECT_EQ(json.find(emptyProps), json.rfind(emptyProps)) << json;
    const Runs read = Zem::fromJson<Runs>(json);
    EXPECT_TRUE(areDeeplyEqual(runs, read));
    EXPECT_EQ(read[0]->getSharedStyle()->get().getRunProps(), read[1]->getSharedStyle()->get().getRunProps());
}

// Polymorphic pointers.

TEST(Json, NamesTheClassOfABlockOnceForAnArchive)
{
    Blocks blocks;
    blocks.push_back(std::make_unique<Paragraph>());
    blocks.push_back(nullptr);
    blocks.push_back(std::make_unique<SectionTag>());
    blocks.push_back(std::make_unique<Paragraph>());
    const std::string paragraph = R"("ptr_wrapper":{"valid":1,"data":)" + Zem::toJson(Paragraph()) + "}}";
    const std::string tag = R"("ptr_wrapper":{"valid":1,"data":)" + Zem::toJson(SectionTag()) + "}}";
    expectJson(R"([{"polymorphic_id":)" + first + R"(,"polymorphic_name":"Zem::DOM::Paragraph",)" + paragraph +
                   R"(,{"polymorphic_id":0},{"polymorphic_id":)" + second +
                   R"(,"polymorphic_name":"Zem::DOM::SectionTag",)" + tag + R"(,{"polymorphic_id":1,)" + paragraph +
                   "]",
               blocks);
}

TEST(Json, WritesASharedRunWithAnId)
{
    const std::vector<SharedRun> runs(2, std::make_shared<const TextRun>("a"));
    const std::string json = Zem::toJson(runs);
    EXPECT_EQ(R"([{"polymorphic_id":)" + first + R"(,"polymorphic_name":"Zem::DOM::TextRun","ptr_wrapper":{"id":)" +
                  first + R"(,"data":)" + Zem::toJson(TextRun("a")) +
                  R"(}},{"polymorphic_id":1,"ptr_wrapper":{"id":1}}])",
              json);
    const auto read = Zem::fromJson<std::vector<SharedRun>>(json);
    ASSERT_TRUE(read[0]);
    EXPECT_TRUE(*read[0] == *runs[0]);
    EXPECT_EQ(read[0], read[1]);
}

TEST(Json, NamesEveryKindOfBlock)
{
    EXPECT_EQ("Zem::DOM::Paragraph", getWrittenName<Block>(std::make_unique<Paragraph>()));
    EXPECT_EQ("Zem::DOM::Table", getWrittenName<Block>(std::make_unique<Table>()));
    EXPECT_EQ("Zem::DOM::SectionTag", getWrittenName<Block>(std::make_unique<SectionTag>()));
    EXPECT_EQ("Zem::DOM::Shape", getWrittenName<Block>(std::make_unique<Shape>()));
    EXPECT_EQ("Zem::DOM::FieldBlock", getWrittenName<Block>(std::make_unique<FieldBlock>()));
}

TEST(Json, NamesEveryKindOfRun)
{
    EXPECT_EQ("Zem::DOM::TextRun", getWrittenName<RunPtr::element_type>(std::make_unique<TextRun>("a")));
    EXPECT_EQ("Zem::DOM::TabRun", getWrittenName<RunPtr::element_type>(std::make_unique<TabRun>()));
    EXPECT_EQ("Zem::DOM::BreakRun", getWrittenName<RunPtr::element_type>(std::make_unique<BreakRun>(BreakType::Page)));
    EXPECT_EQ("Zem::DOM::DrawingRun", getWrittenName<RunPtr::element_type>(std::make_unique<DrawingRun>()));
    EXPECT_EQ("Zem::DOM::BookmarkRun",
              getWrittenName<RunPtr::element_type>(std::make_unique<BookmarkRun>("b", BookmarkEdge::End)));
    EXPECT_EQ("Zem::DOM::FieldRun",
              getWrittenName<RunPtr::element_type>(std::make_unique<FieldRun>(FieldType::Title, "f")));
    EXPECT_EQ("Zem::DOM::AnchorRun",
              getWrittenName<RunPtr::element_type>(std::make_unique<AnchorRun>(UUID::generate())));
}

TEST(Json, ReadsANameByTheNumberThatItsArchiveGaveIt)
{
    const std::string runData = R"("ptr_wrapper":{"valid":1,"data":)" + Zem::toJson(TabRun()) + "}}";
    const Runs read = Zem::fromJson<Runs>(R"([{"polymorphic_id":2147483690,"polymorphic_name":"Zem::DOM::TabRun",)" +
                                          runData + R"(,{"polymorphic_id":42,)" + runData + "]");
    ASSERT_EQ(2u, read.size());
    EXPECT_EQ(RunKind::TabRun, read[1]->getKind());
}

TEST(Json, RefusesUnknownClasses)
{
    using BlockPtr = std::unique_ptr<Block>;
    const std::string data = R"("ptr_wrapper":{"valid":1,"data":)" + Zem::toJson(TextRun()) + "}}";
    EXPECT_TRUE(getReadError<BlockPtr>(R"({"polymorphic_id":)" + first + R"(,"polymorphic_name":"Nobody",)" + data)
                    .starts_with("Trying to load an unregistered polymorphic type (Nobody)."));
    EXPECT_TRUE(
        getReadError<BlockPtr>(R"({"polymorphic_id":)" + first + R"(,"polymorphic_name":"Zem::DOM::TextRun",)" + data)
            .starts_with("Trying to load an unregistered polymorphic type (Zem::DOM::TextRun)."));
    EXPECT_EQ("Error while trying to deserialize a polymorphic pointer. Could not find type id 7",
              getReadError<BlockPtr>(R"({"polymorphic_id":7,)" + data));
    EXPECT_EQ("Cannot load a polymorphic type that is not default constructable and does not have a "
              "load_and_construct function",
              getReadError<BlockPtr>(R"({"polymorphic_id":1073741824,)" + data));
}

TEST(Json, RefusesToWriteABlockOfNoKnownClass)
{
    class StrangeBlock final : public BlockImpl<StrangeBlock, BlockKind::Paragraph>
    {
    public:
        bool operator==(const StrangeBlock&) const
        {
            return true;
        }
    };
    const std::unique_ptr<Block> block = std::make_unique<StrangeBlock>();
    try
    {
        static_cast<void>(Zem::toJson(block));
        ADD_FAILURE();
    }
    catch (const cereal::Exception& error)
    {
        EXPECT_TRUE(std::string(error.what()).starts_with("Trying to save an unregistered polymorphic type ("));
        EXPECT_NE(std::string::npos, std::string(error.what()).find("StrangeBlock"));
    }
}

// Numbers that are no values of their types.

TEST(Json, RefusesNumbersOutsideAnEnumeration)
{
    EXPECT_EQ("Invalid enumerator 8, the last one is 7", getReadError<BlockValue<FormulaErrorType>>(R"({"_value":8})"));
    EXPECT_EQ("no error", getReadError<BlockValue<FormulaErrorType>>(R"({"_value":7})"));
    EXPECT_NE("no error", getReadError<BlockValue<FormulaErrorType>>(R"({"_value":263})"));
    EXPECT_NE("no error", getReadError<BlockValue<FormulaErrorType>>(R"({"_value":-1})"));
    EXPECT_EQ("Invalid enumerator 5, the last one is 4",
              getReadError<TrackedObject<TrackChangesType>>(R"({"_info":{"hasValue":false},"_value":5})"));
}

TEST(Json, RefusesValuesOfAnotherType)
{
    EXPECT_NE("no error", getReadError<Hyperlink>(R"({"_url":1,"_anchor":"","_tooltip":""})"));
    EXPECT_NE("no error", getReadError<BlockValue<bool>>(R"({"_value":1})"));
    EXPECT_NE("no error", getReadError<BlockValue<bool>>("[]"));
}

TEST(Json, NamesAMissingKey)
{
    EXPECT_EQ("JSON Parsing failed - provided NVP (_anchor) not found",
              getReadError<Hyperlink>(R"({"_url":"","_tooltip":""})"));
}

} // namespace Zem::DOM::Tests

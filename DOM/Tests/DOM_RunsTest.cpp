#include "DOM_Runs.h"
#include "DOM_RunStyle.h"

#include "Util_DeepCopy.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <utility>

namespace Zem::DOM::Tests
{

namespace
{

Runs makeRunOfEachKind()
{
    Runs runs;
    runs.push_back(std::make_unique<TextRun>("text"));
    runs.push_back(std::make_unique<TabRun>());
    runs.push_back(std::make_unique<BreakRun>(BreakType::Page));
    runs.push_back(std::make_unique<DrawingRun>());
    runs.push_back(std::make_unique<BookmarkRun>("name", BookmarkEdge::Begin));
    runs.push_back(std::make_unique<FieldRun>(FieldType::Author, "format"));
    runs.push_back(std::make_unique<AnchorRun>(UUID::generate()));
    return runs;
}

SharedStyleConstIPtr<RunStyle> makeStyle(unsigned char parent)
{
    RunStyle style;
    style.setParentUUID(UUID(UUID::Bytes{parent}));
    return SharedStyleConstIPtr<RunStyle>(new SharedStyle<RunStyle>(style));
}

} // namespace

TEST(Runs, AreEqualToOthersOfTheirKindAndContentOnly)
{
    const Runs runs = makeRunOfEachKind();
    const Runs copies = deepCopy(runs);
    for (std::size_t left = 0; left < runs.size(); ++left)
    {
        for (std::size_t right = 0; right < runs.size(); ++right)
        {
            EXPECT_EQ(left == right, *runs[left] == *copies[right]) << left << ' ' << right;
        }
    }
}

TEST(Runs, AreClonedAsTheirOwnKind)
{
    for (const auto& run : makeRunOfEachKind())
    {
        run->getSharedStyle() = makeStyle(1);
        std::unique_ptr<Runs::value_type::element_type> unique;
        run->cloneTo(unique);
        std::shared_ptr<Runs::value_type::element_type> shared;
        run->cloneTo(shared);
        EXPECT_TRUE(*unique == *run);
        EXPECT_TRUE(*shared == *run);
        EXPECT_EQ(run->getSharedStyle(), unique->getSharedStyle());
        const auto& original = *run;
        const auto& clone = *unique;
        EXPECT_EQ(typeid(original), typeid(clone));
    }
}

TEST(Runs, CompareTheirStylesByContent)
{
    for (const auto& run : makeRunOfEachKind())
    {
        const auto other = deepCopy(run);
        run->getSharedStyle() = makeStyle(1);
        EXPECT_FALSE(*run == *other);
        EXPECT_FALSE(areStylesEqual(*run, *other));
        other->getSharedStyle() = makeStyle(1);
        EXPECT_TRUE(*run == *other);
        EXPECT_TRUE(areStylesEqual(*run, *other));
        other->getSharedStyle() = makeStyle(2);
        EXPECT_FALSE(*run == *other);
    }
}

TEST(Runs, AreUnequalByAnyPartOfTheirContent)
{
    EXPECT_FALSE(TextRun("a") == TextRun("b"));
    EXPECT_FALSE(BreakRun(BreakType::Line) == BreakRun(BreakType::Page));
    EXPECT_FALSE(BookmarkRun("a", BookmarkEdge::Begin) == BookmarkRun("b", BookmarkEdge::Begin));
    EXPECT_FALSE(BookmarkRun("a", BookmarkEdge::Begin) == BookmarkRun("a", BookmarkEdge::End));
    EXPECT_FALSE(FieldRun(FieldType::Date, "a") == FieldRun(FieldType::Time, "a"));
    EXPECT_FALSE(FieldRun(FieldType::Date, "a") == FieldRun(FieldType::Date, "b"));
    EXPECT_FALSE(AnchorRun(UUID()) == AnchorRun(UUID::generate()));
    DrawingRun drawing;
    drawing.getFrame().setExtent(Size2D<float>{1, 2});
    EXPECT_FALSE(drawing == DrawingRun());
}

TEST(TextRun, HandsItsTextOut)
{
    TextRun run("text");
    EXPECT_EQ("text", run.takeText());
    EXPECT_EQ("", run.getText());
    run.setText("other");
    EXPECT_EQ("other", run.getText());
}

TEST(VisitRun, CallsTheOneForTheKind)
{
    std::string kinds;
    for (const auto& run : makeRunOfEachKind())
    {
        const auto& constRun = std::as_const(*run);
        kinds += visitRun(
            constRun, [](const TextRun&) { return 'x'; }, [](const TabRun&) { return 't'; },
            [](const BreakRun&) { return 'b'; }, [](const DrawingRun&) { return 'd'; },
            [](const BookmarkRun&) { return 'k'; }, [](const FieldRun&) { return 'f'; },
            [](const AnchorRun&) { return 'a'; });
    }
    EXPECT_EQ("xtbdkfa", kinds);
}

} // namespace Zem::DOM::Tests

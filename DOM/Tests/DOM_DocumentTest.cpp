#include "DOM_Document.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_TestDocuments.h"
#include "DOM_ValueTypeTest.h"

#include <utility>

namespace Zem::DOM::Tests
{

using DocumentTypes =
    ::testing::Types<NamedTextStyle, TablePartStyles, NamedTableStyle, Styles, Theme, ColorMap, Document>;
INSTANTIATE_TYPED_TEST_SUITE_P(Documents, ValueType, DocumentTypes);

namespace
{

TextRun& getFirstRun(Document& document)
{
    auto& paragraph = static_cast<Paragraph&>(*document.getTextWithTombstones().getBlocks().front());
    return static_cast<TextRun&>(*paragraph.getRuns().front());
}

} // namespace

TEST(Document, IsEqualToItsCopy)
{
    const Document document = makeDocument();
    EXPECT_EQ(std::vector<std::string>(), checkInvariants(document));
    const Document copy = document;
    EXPECT_TRUE(copy == document);
    EXPECT_FALSE(copy == Document());
}

TEST(Document, IsCopiedDeeplyButForStyles)
{
    Document document = makeDocument();
    Document copy = document;
    EXPECT_EQ(getFirstRun(document).getSharedStyle(), getFirstRun(copy).getSharedStyle());
    getFirstRun(document).setText("changed");
    EXPECT_FALSE(copy == document);
    EXPECT_NE("changed", getFirstRun(copy).getText());
}

TEST(Document, ComparesStylesByTheirContent)
{
    Document document = makeDocument();
    Document copy = document;
    auto& style = getFirstRun(copy).getSharedStyle();
    style.reset(new SharedStyle<RunStyle>(style->get()));
    EXPECT_TRUE(copy == document);
    style.reset(new SharedStyle<RunStyle>(RunStyle()));
    EXPECT_FALSE(copy == document);
}

TEST(Document, InternsInItsCopyWhatTheOriginalInterned)
{
    Document document = makeDocument();
    const Document copy = document;
    const auto& style = getFirstRun(document).getSharedStyle();
    EXPECT_EQ(style, copy.getSharedObjectFactory().create(style->get()));
}

TEST(Document, KeepsItsFactoryWhenItIsMoved)
{
    Document document = makeDocument();
    const auto style = getFirstRun(document).getSharedStyle();
    const Document copy = document;
    const Document moved = std::move(document);
    EXPECT_TRUE(moved == copy);
    EXPECT_EQ(style, moved.getSharedObjectFactory().create(style->get()));
}

TEST(Document, DoesNotCompareItsFactory)
{
    const Document document;
    document.getSharedObjectFactory().create(RunStyle());
    EXPECT_TRUE(document == Document());
}

TEST(StyleName, IsResolvedToItsText)
{
    NamedTextStyle style;
    EXPECT_FALSE(resolveNamedStyleName(style));
    style.setName(PredefinedStyleName::Heading9);
    EXPECT_EQ("Heading 9", resolveNamedStyleName(style).value());
    style.setName(std::string("Mine"));
    EXPECT_EQ("Mine", resolveNamedStyleName(style).value());
    NamedTableStyle tableStyle;
    EXPECT_FALSE(resolveNamedStyleName(tableStyle));
    tableStyle.setName(PredefinedStyleName::TableGrid);
    EXPECT_EQ("Table Grid", resolveNamedStyleName(tableStyle).value());
}

TEST(StyleName, HasAnotherTextForEachPredefinedName)
{
    std::set<std::string> texts;
    for (int number = 0; number <= static_cast<int>(getLastEnumerator(PredefinedStyleName())); ++number)
    {
        EXPECT_TRUE(texts.insert(getText(static_cast<PredefinedStyleName>(number))).second) << number;
    }
}

TEST(NamedTextStyle, IsCopiedWithItsNumbering)
{
    NamedTextStyle style;
    style.getNumRef() = std::make_unique<NumberingRef>();
    NamedTextStyle copy = style;
    copy.getNumRef()->_level = 3;
    EXPECT_EQ(0, style.getNumRef()->_level);
    EXPECT_EQ(style.getUUID(), copy.getUUID());
}

} // namespace Zem::DOM::Tests

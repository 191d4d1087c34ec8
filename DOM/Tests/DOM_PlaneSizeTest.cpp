#include "DOM_PlaneSize.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

namespace Zem::DOM
{

TEST(PlaneSizes, ARunTakesItsTagAndItsBytes)
{
    EXPECT_EQ(1u, PlaneSize::of(TextRun()));
    EXPECT_EQ(4u, PlaneSize::of(TextRun("a\xC3\xA4")));
    EXPECT_EQ(1u, PlaneSize::of(TabRun()));
}

TEST(PlaneSizes, AParagraphTakesItsTagItsRunsAndItsMark)
{
    Paragraph paragraph;
    EXPECT_EQ(2u, PlaneSize::of(paragraph));
    paragraph.getRuns().push_back(std::make_unique<TextRun>("ab"));
    paragraph.getRuns().push_back(std::make_unique<TabRun>());
    EXPECT_EQ(6u, PlaneSize::of(paragraph));
    EXPECT_EQ(1u, PlaneSize::of(SectionTag()));
}

TEST(PlaneSizes, ATextTakesItsBlocks)
{
    Blocks blocks;
    EXPECT_EQ(0u, PlaneSize::of(blocks));
    blocks.push_back(std::make_unique<Paragraph>());
    blocks.push_back(std::make_unique<SectionTag>());
    EXPECT_EQ(3u, PlaneSize::of(blocks));
}

TEST(PlaneSizes, NullPartsFail)
{
    Blocks blocks(1);
    EXPECT_ASSERTION(PlaneSize::of(blocks), "plainPtr");
    Paragraph paragraph;
    paragraph.getRuns().resize(1);
    EXPECT_ASSERTION(PlaneSize::of(paragraph), "plainPtr");
}

} // namespace Zem::DOM

#include "Text/DClb_InsertionData.h"

#include "TS_Assertions.h"
#include "TS_TextNotation.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

using TestSupport::makeElements;

namespace
{

InsertionData takeApart(std::string_view notation)
{
    return DOMCollaboration::takeApart(makeElements(notation));
}

const DOM::TextRun& getTextRun(const DOM::Runs& runs, unsigned long index)
{
    return cast<DOM::TextRun>(*runs.at(index));
}

} // namespace

TEST(InsertionData, AreBytesThenRunsThenBlocks)
{
    const InsertionData data = takeApart("ab|c~|d}{|e}#{~");
    EXPECT_EQ("ab", data.beginString);
    ASSERT_EQ(3u, data.beginRuns.size());
    EXPECT_EQ("c", getTextRun(data.beginRuns, 0).getText());
    EXPECT_EQ("d", getTextRun(data.beginRuns, 2).getText());
    ASSERT_EQ(3u, data.blocks.size());
    EXPECT_EQ("e", getTextRun(cast<DOM::Paragraph>(*data.blocks[0]).getRuns(), 0).getText());
    EXPECT_EQ(1u, cast<DOM::Paragraph>(*data.blocks[2]).getRuns().size());
}

TEST(InsertionData, ShareNothingWithTheElements)
{
    const TextWithTombstonesElementVector elements = makeElements("|a{");
    const InsertionData data = DOMCollaboration::takeApart(elements);
    const auto& run = boost::get<SharedConstPtr<DOM::Run>>(elements[0]);
    EXPECT_NE(run.get(), data.beginRuns[0].get());
    EXPECT_EQ("", cast<DOM::TextRun>(*run).getText());
    EXPECT_NE(boost::get<SharedConstPtr<DOM::Block>>(elements[2]).get(), data.blocks[0].get());
}

TEST(InsertionData, ARunNeedsAParagraph)
{
    EXPECT_ASSERTION(takeApart("}|"), "currentPara");
    EXPECT_ASSERTION(takeApart("#~"), "currentPara");
    EXPECT_ASSERTION(takeApart("{}~"), "currentPara");
}

TEST(InsertionData, AByteBehindTheFirstOnesNeedsATextRun)
{
    for (const char* notation : {"~a", "}a", "{a", "#a", "|a}b", "{|a{b"})
    {
        SCOPED_TRACE(notation);
        EXPECT_ASSERTION(takeApart(notation), "plainPtr");
    }
}

TEST(InsertionData, MissingBlocksAndRunsFail)
{
    EXPECT_ASSERTION(DOMCollaboration::takeApart({SharedConstPtr<DOM::Block>()}), "plainPtr");
    EXPECT_ASSERTION(DOMCollaboration::takeApart({SharedConstPtr<DOM::Run>()}), "plainPtr");
}

TEST(InsertionData, ElementsCarryNoChildren)
{
    auto paragraph = std::make_shared<DOM::Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
    EXPECT_ASSERTION(DOMCollaboration::takeApart({SharedConstPtr<DOM::Block>(paragraph)}),
                     "paragraph.getRuns().empty()");
    auto textRun = std::make_shared<DOM::TextRun>();
    textRun->setText("a");
    EXPECT_ASSERTION(DOMCollaboration::takeApart({SharedConstPtr<DOM::Run>(textRun)}), "textRun.getText().empty()");
}

TEST(InsertionData, WhatIsNoByteFailsWhereverItStands)
{
    for (const char* notation : {"", "|", "{|"})
    {
        for (const int value : {200, -129})
        {
            TextWithTombstonesElementVector elements = makeElements(notation);
            elements.push_back(static_cast<short>(value));
            EXPECT_THROW(DOMCollaboration::takeApart(elements), BadNumCastError) << notation << value;
        }
    }
}

} // namespace Zem::DOMCollaboration

// What putting elements in and taking them out require of each other, without the rules that otherwise see to it.

#include "Text/DClb_TextEditing.h"

#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"
#include "TS_Assertions.h"
#include "TS_RecordingObserver.h"
#include "TS_TextCase.h"
#include "Text/DClb_TextMerging.h"

#include "DOM_Runs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Zem::DOMCollaboration
{

namespace
{

using TestSupport::getTextAddress;
using TestSupport::makeElements;

/// A text that is changed behind the back of its slots; only the tree is printed.
class TextEditing : public testing::Test
{
protected:
    using Insertion = CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>;

    static RangeInfo makeRange(unsigned long index, unsigned long size)
    {
        static Insertion operation(getTextAddress(), 34, IndexRange<unsigned long>(0, 1));
        return RangeInfo(IndexExcludingTombstones(index), size, operation);
    }

    GenericBlockCollectionWrapper<false> getBlocks(std::string_view notation)
    {
        _text = TestSupport::makeText(notation);
        return GenericTextWithTombstonesWrapper<false>(_text, _target).getBlocks();
    }

    std::string insertAt(std::string_view notation, unsigned long index, std::string_view elements)
    {
        RangeInfo range = makeRange(index, elements.size());
        insertElements(getBlocks(notation), range, takeApart(makeElements(elements)));
        return TestSupport::print(_text);
    }

    /// What was taken out; the text has the rest.
    std::string extract(std::string_view notation, unsigned long begin, unsigned long end)
    {
        RangeInfo range = makeRange(begin, end - begin);
        extractElements(getBlocks(notation), range);
        EXPECT_EQ(end - begin, range.getSize());
        return TestSupport::print(range._data);
    }

    TextPosition getPosition(std::string_view notation, unsigned long index)
    {
        return VariantOptDetails::convertVariant<TextPosition>(
            TextWithTombstonesPositionUtils::getElementPosition(getBlocks(notation), IndexExcludingTombstones(index)));
    }

    /// What the observer hears of a stretch that is taken out, by the name of the notification.
    std::vector<std::string> listen(std::string_view notation, unsigned long begin, unsigned long end)
    {
        const auto observer = std::make_shared<TestSupport::RecordingObserver>();
        _target._observer = observer;
        extract(notation, begin, end);
        std::vector<std::string> names;
        for (const std::string& line : observer->takeLines())
        {
            names.push_back(line.substr(0, line.find('(')));
        }
        return names;
    }

    DOM::TextWithTombstones _text;
    TextNotificationTarget _target;
};

DOM::Runs makeRuns()
{
    DOM::Runs runs;
    runs.push_back(std::make_unique<DOM::TabRun>());
    return runs;
}

} // namespace

TEST_F(TextEditing, WhatIsTakenOutComesBackAsItWas)
{
    EXPECT_EQ("b}#{|c", extract("{|ab}#{|cd}", 3, 9));
    EXPECT_EQ("{|ad}", TestSupport::print(_text)) << "the last byte joins the first run";
    EXPECT_EQ("{|ab}#{|cd}", insertAt("{|ad}", 3, "b}#{|c"));
}

TEST_F(TextEditing, NeitherBytesNorRunsStandAtTheBeginningOfAText)
{
    const char* const message = "data.beginString.empty() && data.beginRuns.empty()";
    EXPECT_ASSERTION(insertAt("{|a}", 0, "x"), message);
    EXPECT_ASSERTION(insertAt("{|a}", 0, "|x"), message);
    EXPECT_EQ("{|a}", TestSupport::print(_text));
}

TEST_F(TextEditing, BytesStandBehindATagOfATextRunOrAByte)
{
    const char* const message = "Invalid element type";
    EXPECT_ASSERTION(insertAt("{|a}", 1, "x"), message);
    EXPECT_ASSERTION(insertAt("{|a}", 4, "x"), message);
    EXPECT_ASSERTION(insertAt("#", 1, "x"), message);
    EXPECT_ASSERTION(insertAt("{~}", 2, "x"), message);
    EXPECT_ASSERTION(insertText(getPosition("{}", 2), "x", false), message);
}

TEST_F(TextEditing, RunsStandInAParagraph)
{
    const char* const message = "Invalid element type";
    EXPECT_ASSERTION(insertAt("{|a}", 4, "|x"), message);
    EXPECT_ASSERTION(insertAt("#", 1, "~"), message);
    EXPECT_ASSERTION(insertRuns(getPosition("{}", 2), makeRuns(), false), message);
}

TEST_F(TextEditing, WhatEndsARunOrAParagraphStandsAtItsEnd)
{
    EXPECT_ASSERTION(insertText(getPosition("{|ab}", 1), "x", true), "byteIndex == textRunString.getSize()");
    EXPECT_ASSERTION(insertText(getPosition("{|ab}", 2), "x", true), "byteIndex == textRunString.getSize()");
    EXPECT_ASSERTION(insertRuns(getPosition("{|ab}", 0), makeRuns(), true), "runIndex == paraRuns.getSize()");
    EXPECT_ASSERTION(insertRuns(getPosition("{~|ab}", 1), makeRuns(), true), "runIndex == paraRuns.getSize()");
    insertText(getPosition("{|ab}", 3), "x", true);
    EXPECT_EQ("{|abx}", TestSupport::print(_text));
    insertRuns(getPosition("{~|ab}", 4), makeRuns(), true);
    EXPECT_EQ("{~|ab~}", TestSupport::print(_text));
}

TEST_F(TextEditing, TheTailOfARunNeedsATextRunAtTheEndOfTheData)
{
    EXPECT_ASSERTION(insertAt("{|ab}", 3, "}{"), "!lastParagraph.get().getRuns().empty()");
    EXPECT_THROW(insertAt("{|ab}", 3, "}{~"), std::bad_cast);
    EXPECT_THROW(insertAt("{|ab}", 3, "}#"), std::bad_cast);
    EXPECT_THROW(insertAt("{|ab}", 3, "~"), std::bad_cast);
    EXPECT_EQ("{|ab}", TestSupport::print(_text));
}

TEST_F(TextEditing, BeyondTheEndNothingIsPutIn)
{
    EXPECT_ASSERTION(insertAt("{|ab}", 6, "{}"), "Unexpected type in the source variant");
    EXPECT_EQ("{|ab}", TestSupport::print(_text));
}

TEST_F(TextEditing, TheObserverIsToldOfEachBlockFromTheLastToTheFirst)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ((Lines{"onBlocksRemoved", "onBlocksRemoved", "onRunsRemoved", "onBlocksRemoved"}),
              listen("{}{~}#{}{}", 2, 8));
    EXPECT_EQ((Lines{"onRunsRemoved", "onBlocksRemoved", "onBlocksRemoved", "onRunsInserted"}),
              listen("{|ab}{}{~}", 4, 8));
}

TEST_F(TextEditing, TheRunsOfAParagraphGoInOneStep)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ((Lines{"onRunsRemoved"}), listen("{|ab~|cd~}", 1, 9));
    EXPECT_EQ((Lines{"onCharsRemoved", "onRunsRemoved", "onCharsRemoved", "onCharsInserted"}),
              listen("{|ab~~|cd}", 3, 8));
    EXPECT_EQ("{|ad}", TestSupport::print(_text));
    EXPECT_EQ((Lines{"onRunsRemoved", "onBlocksRemoved"}), listen("{}{|ab~|cd}", 2, 11));
    EXPECT_EQ("~|ab~", extract("{|x~|ab~|y}", 3, 8));
    EXPECT_EQ("{|x|y}", TestSupport::print(_text));
}

TEST_F(TextEditing, ManyBlocksGoInOneStep)
{
    constexpr unsigned long count = 100;
    std::string stretch;
    for (unsigned long block = 0; block < count; ++block)
    {
        stretch += block % 2 == 0 ? "{~}" : "#";
    }
    const auto names = listen("{|ab}" + stretch + "{}", 5, 5 + stretch.size());
    EXPECT_EQ(count / 2, static_cast<unsigned long>(std::count(names.begin(), names.end(), "onRunsRemoved")));
    EXPECT_EQ(1, std::count(names.begin(), names.end(), "onBlocksRemoved"));
    EXPECT_EQ("onBlocksRemoved", names.back());
    EXPECT_EQ("{|ab}{}", TestSupport::print(_text));
    EXPECT_EQ(stretch, extract(stretch, 0, stretch.size()));
}

TEST_F(TextEditing, NothingCanNotBeTakenOut)
{
    EXPECT_ASSERTION(extract("{|ab}", 2, 2), "beginIndex < endIndex");
}

TEST_F(TextEditing, TheEndOfATextCanNotBeTakenOut)
{
    EXPECT_ASSERTION(extract("{|ab}", 3, 6), "Unexpected rich text end");
    EXPECT_ASSERTION(extract("{|ab}", 3, 7), "Unexpected type in the source variant");
    EXPECT_EQ("{|ab}", TestSupport::print(_text));
}

TEST_F(TextEditing, ARunDoesNotLoseAllItsTextAndKeepItsTag)
{
    const char* const message = "elementsToRemove < charPos.byteIndex + 1 || charPos.byteIndex + 1 < runSize";
    EXPECT_ASSERTION(extract("{|ab}", 2, 4), message);
    EXPECT_EQ("{|ab}", TestSupport::print(_text));
    EXPECT_EQ("ab|", extract("{|ab|cd}", 2, 5)) << "the bytes behind the range join the tag at once";
    EXPECT_EQ("{|cd}", TestSupport::print(_text));
}

TEST_F(TextEditing, WhatATagLeavesBehindNeedsSomethingInFront)
{
    const char* const message = "textToMerge.empty() && runsToMerge.empty()";
    EXPECT_ASSERTION(extract("{~}", 0, 1), message);
    EXPECT_ASSERTION(extract("{|ab}", 0, 2), message);
    EXPECT_ASSERTION(extract("{|ab}", 0, 3), message);
}

TEST_F(TextEditing, WhatATagLeavesBehindNeedsAFittingPlaceInFront)
{
    EXPECT_ASSERTION(extract("#{~}", 1, 2), "Invalid element type");
    EXPECT_ASSERTION(extract("{|ab}", 1, 2), "Invalid element type");
}

} // namespace Zem::DOMCollaboration

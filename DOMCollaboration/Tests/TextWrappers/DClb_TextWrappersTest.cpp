#include "DClb_FailingAllocations.h"
#include "TS_Assertions.h"
#include "TS_RecordingObserver.h"
#include "TS_TextNotation.h"
#include "TextWrappers/DClb_BlockWrappers.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using Lines = std::vector<std::string>;

class TextWrappers : public testing::Test
{
protected:
    GenericBlockCollectionWrapper<false> getBlocks()
    {
        return GenericTextWithTombstonesWrapper<false>(_text, _target).getBlocks();
    }

    GenericParagraphWrapper<false> getParagraph(unsigned long blockIndex)
    {
        auto block = getBlocks().getElement(blockIndex);
        return dynamic_cast<GenericParagraphWrapper<false>&>(*block);
    }

    GenericTextWrapper<false> getText(unsigned long blockIndex, unsigned long runIndex)
    {
        auto run = getParagraph(blockIndex).getRuns().getElement(runIndex);
        return dynamic_cast<GenericTextRunWrapper<false>&>(*run).getText();
    }

    DOM::TextWithTombstones _text = TestSupport::makeText("{|ab~}#{|cd}");
    std::shared_ptr<TestSupport::RecordingObserver> _observer = std::make_shared<TestSupport::RecordingObserver>();
    TextNotificationTarget _target{DOM::NodeAddressUtils::makeAddress<DOM::NativeDOMNodeType::BlockCollection>(),
                                   _observer};
};

DOM::Blocks takeBlocks(std::string_view notation)
{
    return std::move(TestSupport::makeText(notation).getBlocks());
}

/// Lets one allocation after the other fail, until `change` succeeds; the text must be as it was each time.
template<class Change>
unsigned int failUntilItSucceeds(const DOM::TextWithTombstones& text, Change change)
{
    const DOM::TextWithTombstones before = text;
    for (unsigned int allowedCount = 0;; ++allowedCount)
    {
        try
        {
            const FailingAllocation failing(allowedCount);
            change();
            return allowedCount;
        }
        catch (const std::bad_alloc&)
        {
            EXPECT_TRUE(before == text) << TestSupport::print(text);
        }
    }
}

} // namespace

TEST_F(TextWrappers, BytesComeAndGoAndTheObserverHearsOfItAfterwards)
{
    getText(2, 0).insertElements("xy", 1);
    EXPECT_EQ("{|ab~}#{|cxyd}", TestSupport::print(_text));
    EXPECT_EQ((Lines{"onCharsInserted(BlockCollection/2/RunCollection/0, [1,3))"}), _observer->takeLines());
    EXPECT_EQ("xyd", getText(2, 0).removeElements(IndexRange<unsigned long>(1, 4)));
    EXPECT_EQ("{|ab~}#{|c}", TestSupport::print(_text));
    EXPECT_EQ((Lines{"onCharsRemoved(BlockCollection/2/RunCollection/0, 1, \"xyd\")"}), _observer->takeLines());
}

TEST_F(TextWrappers, RunsComeAndGo)
{
    DOM::Runs runs = getParagraph(0).getRuns().removeElements(IndexRange<unsigned long>(0, 2));
    EXPECT_EQ("{}#{|cd}", TestSupport::print(_text));
    getParagraph(2).getRuns().insertElements(std::move(runs), 1);
    EXPECT_EQ("{}#{|cd|ab~}", TestSupport::print(_text));
    const Lines lines = _observer->takeLines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(0u, lines[0].find("onRunsRemoved(BlockCollection/0, 0, ")) << lines[0];
    EXPECT_EQ("onRunsInserted(BlockCollection/2, [1,3))", lines[1]);
}

TEST_F(TextWrappers, BlocksComeAndGo)
{
    getBlocks().insertElements(takeBlocks("{}$"), 1);
    EXPECT_EQ("{|ab~}{}$#{|cd}", TestSupport::print(_text));
    EXPECT_EQ(2u, getBlocks().removeElements(IndexRange<unsigned long>(0, 2)).size());
    EXPECT_EQ("$#{|cd}", TestSupport::print(_text));
    const Lines lines = _observer->takeLines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ("onBlocksInserted(BlockCollection, [1,3))", lines[0]);
    EXPECT_EQ(0u, lines[1].find("onBlocksRemoved(BlockCollection, 0, ")) << lines[1];
}

TEST_F(TextWrappers, WithADeadObserverTheTextChangesAllTheSame)
{
    _observer.reset();
    getText(0, 0).insertElements("x", 0);
    getText(0, 0).removeElements(IndexRange<unsigned long>(1, 2));
    DOM::Runs runs = getParagraph(0).getRuns().removeElements(IndexRange<unsigned long>(1, 2));
    getParagraph(2).getRuns().insertElements(std::move(runs), 0);
    getBlocks().insertElements(takeBlocks("{}"), 0);
    getBlocks().removeElements(IndexRange<unsigned long>(2, 3));
    EXPECT_EQ("{}{|xb}{~|cd}", TestSupport::print(_text));
}

TEST_F(TextWrappers, WithoutMemoryTheTextStaysAsItWas)
{
    _observer.reset();
    const std::string bytes(64, 'x');
    EXPECT_LT(0u, failUntilItSucceeds(_text, [&] { getText(0, 0).insertElements(bytes, 1); }));
    EXPECT_EQ("{|a" + bytes + "b~}#{|cd}", TestSupport::print(_text));
    EXPECT_LT(0u, failUntilItSucceeds(
                      _text, [&] { getText(0, 0).removeElements(IndexRange<unsigned long>(1, 1 + bytes.size())); }));
    EXPECT_EQ("{|ab~}#{|cd}", TestSupport::print(_text));
    EXPECT_LT(0u, failUntilItSucceeds(_text, [&]
                                      { getParagraph(0).getRuns().removeElements(IndexRange<unsigned long>(0, 1)); }));
    EXPECT_LT(0u, failUntilItSucceeds(_text, [&] { getBlocks().removeElements(IndexRange<unsigned long>(1, 3)); }));
    EXPECT_EQ("{~}", TestSupport::print(_text));
}

TEST_F(TextWrappers, NothingMustNotBeInserted)
{
    const char* const message = "count > UnsignedIndex{0}";
    EXPECT_ASSERTION(getText(0, 0).insertElements("", 0), message);
    EXPECT_ASSERTION(getParagraph(0).getRuns().insertElements(DOM::Runs(), 0), message);
    EXPECT_ASSERTION(getBlocks().insertElements(DOM::Blocks(), 0), message);
    EXPECT_EQ("{|ab~}#{|cd}", TestSupport::print(_text));
    EXPECT_TRUE(_observer->takeLines().empty());
}

TEST_F(TextWrappers, PlacesBeyondTheEndFailAndChangeNothing)
{
    EXPECT_ASSERTION(getText(0, 0).insertElements("x", 3), "index <= getSize()");
    EXPECT_ASSERTION(getText(0, 0).removeElements(IndexRange<unsigned long>(1, 3)), "range.getEnd() <= getSize()");
    EXPECT_ASSERTION(getBlocks().getElement(3), "index < size()");
    EXPECT_ASSERTION(getParagraph(0).getRuns().getElement(2), "index < size()");
    EXPECT_EQ("{|ab~}#{|cd}", TestSupport::print(_text));
}

TEST_F(TextWrappers, AnElementIsAViewOfItsKind)
{
    const auto kindOfBlock = [&](unsigned long index)
    {
        auto block = getBlocks().getElement(index);
        return visitWith<std::string>(
            *block, [](GenericAtomicBlockWrapper<false>&) { return "atomic"; },
            [](GenericParagraphWrapper<false>&) { return "paragraph"; });
    };
    EXPECT_EQ("paragraph", kindOfBlock(0));
    EXPECT_EQ("atomic", kindOfBlock(1));
    const auto kindOfRun = [&](unsigned long index)
    {
        const auto run = getParagraph(0).getRuns().getElement(index);
        return visitWith<std::string>(
            *run, [](const GenericAtomicRunWrapper<false>&) { return "atomic"; },
            [](const GenericTextRunWrapper<false>&) { return "text"; });
    };
    EXPECT_EQ("text", kindOfRun(0));
    EXPECT_EQ("atomic", kindOfRun(1));
}

TEST_F(TextWrappers, ACloneIsAViewOfTheSamePart)
{
    const GenericParagraphWrapper<false> paragraph = getParagraph(0);
    std::shared_ptr<GenericBlockWrapper<false>> shared;
    paragraph.cloneTo(shared);
    EXPECT_EQ(&paragraph.getParagraph(), &dynamic_cast<GenericParagraphWrapper<false>&>(*shared).getParagraph());
    std::unique_ptr<GenericBlockWrapper<false>> unique;
    paragraph.cloneTo(unique);
    EXPECT_EQ(&paragraph.getParagraph(), &dynamic_cast<GenericParagraphWrapper<false>&>(*unique).getParagraph());
}

TEST_F(TextWrappers, ReadOnlyViewsShowTheSame)
{
    const auto blocks = getBlocks().asConst();
    EXPECT_EQ(3u, blocks.getSize());
    const auto block = blocks.getElement(0);
    const auto runs = dynamic_cast<const GenericParagraphWrapper<true>&>(*block).getRuns();
    EXPECT_EQ(2u, runs.getSize());
    EXPECT_EQ(getParagraph(0).getRuns().makeAddressToPara(), runs.makeAddressToPara());
    const auto run = runs.getElement(0);
    const auto text = dynamic_cast<const GenericTextRunWrapper<true>&>(*run).getText();
    EXPECT_EQ(2u, text.getSize());
    EXPECT_EQ(getText(0, 0).getAddressToRun(), text.getAddressToRun());
    const GenericTextWrapper<true> textAsConst = getText(0, 0).asConst();
    EXPECT_EQ(2u, textAsConst.getSize());
    EXPECT_EQ(text.getAddressToRun(), textAsConst.getAddressToRun());
}

} // namespace Zem::DOMCollaboration

#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include "TS_Assertions.h"
#include "TS_TextNotation.h"

#include <gtest/gtest.h>

#include <random>

namespace Zem::DOMCollaboration::TextWithTombstonesPositionUtils
{

namespace
{

using TestSupport::makeText;

/// A position of any traits as one line, such as "char 0/1/2" for byte 2 of run 1 of block 0.
struct Describe
{
    std::string operator()(const boost::blank&) const
    {
        return "blank";
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericTextEndPosition<isConst, Traits>&) const
    {
        return "end";
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericAtomicBlockPosition<isConst, Traits>& block) const
    {
        return "block " + std::to_string(block._blockIndex);
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericParaTagPosition<isConst, Traits>& tag) const
    {
        return "tag " + std::to_string(tag._blockIndex);
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericParaMarkPosition<isConst, Traits>& mark) const
    {
        return "mark " + std::to_string(mark._blockIndex);
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericAtomicRunPosition<isConst, Traits>& run) const
    {
        return "atom " + describeRun(run);
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericTextRunTagPosition<isConst, Traits>& run) const
    {
        return "run " + describeRun(run);
    }

    template<bool isConst, class Traits>
    std::string operator()(const GenericCharPosition<isConst, Traits>& byte) const
    {
        return "char " + describeRun(byte) + "/" + std::to_string(byte._byteIndex);
    }

    template<class Position>
    static std::string describeRun(const Position& position)
    {
        return std::to_string(position._blockIndex) + "/" + std::to_string(position._runIndex);
    }
};

const TextNotificationTarget& getDeafTarget()
{
    static const TextNotificationTarget target;
    return target;
}

/// Asks all four overloads, which must agree, and the walk from every place in front of the index.
std::string describeAt(DOM::TextWithTombstones& text, unsigned long index)
{
    const IndexExcludingTombstones planeIndex(index);
    const GenericBlockCollectionWrapper<false> wrapper(text.getBlocks(), getDeafTarget());
    const std::string described = boost::apply_visitor(Describe(), getElementPosition(text.getBlocks(), planeIndex));
    EXPECT_EQ(described,
              boost::apply_visitor(Describe(), getElementPosition(ReadonlyBlocks(text.getBlocks()), planeIndex)));
    EXPECT_EQ(described, boost::apply_visitor(Describe(), getElementPosition(wrapper, planeIndex)));
    EXPECT_EQ(described, boost::apply_visitor(Describe(), getElementPosition(wrapper.asConst(), planeIndex)));
    return described;
}

std::vector<std::string> describeAll(std::string_view notation)
{
    DOM::TextWithTombstones text = makeText(notation);
    std::vector<std::string> described;
    do
    {
        described.push_back(describeAt(text, described.size()));
    } while (described.back() != "blank");
    return described;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(ElementPosition, AnEmptyTextIsItsEnd)
{
    EXPECT_EQ((Lines{"end", "blank"}), describeAll(""));
    EXPECT_EQ(0u, getPlaneSize(ReadonlyBlocks(DOM::Blocks())));
}

TEST(ElementPosition, AnEmptyParagraphIsItsTagAndItsMark)
{
    EXPECT_EQ((Lines{"tag 0", "mark 0", "end", "blank"}), describeAll("{}"));
}

TEST(ElementPosition, ATextRunIsItsTagAndItsBytes)
{
    EXPECT_EQ((Lines{"tag 0", "run 0/0", "char 0/0/0", "char 0/0/1", "mark 0", "end", "blank"}), describeAll("{|ab}"));
}

TEST(ElementPosition, ATextRunWithoutTextIsItsTagAlone)
{
    EXPECT_EQ((Lines{"tag 0", "run 0/0", "run 0/1", "char 0/1/0", "mark 0", "end", "blank"}), describeAll("{||a}"));
}

TEST(ElementPosition, AtomicRunsAndBlocksAreOnePlaceEach)
{
    EXPECT_EQ((Lines{"block 0", "tag 1", "atom 1/0", "run 1/1", "char 1/1/0", "mark 1", "block 2", "end", "blank"}),
              describeAll("#{~|a}$"));
}

TEST(ElementPosition, TombstonesHaveNoPlace)
{
    EXPECT_EQ((Lines{"tag 0", "run 0/0", "char 0/0/0", "mark 0", "end", "blank"}), describeAll("[..]{|[..]a[.]}[.]"));
}

TEST(ElementPosition, NullEntriesFail)
{
    DOM::Blocks blocks;
    blocks.push_back(nullptr);
    EXPECT_ASSERTION(getElementPosition(blocks, IndexExcludingTombstones(0)), "plainPtr");
    DOM::TextWithTombstones text = makeText("{|a}");
    static_cast<DOM::Paragraph&>(*text.getBlocks().front()).getRuns().push_back(nullptr);
    EXPECT_ASSERTION(getElementPosition(text.getBlocks(), IndexExcludingTombstones(4)), "plainPtr");
}

TEST(ElementPosition, EachFieldIsReadFromThePositionsThatHaveIt)
{
    DOM::TextWithTombstones text = makeText("#{~|a}");
    using Variant = GenericPosition<false, DOMTraits>;
    const auto at = [&](unsigned long index)
    {
        return VariantOptDetails::convertVariant<Variant>(
            getElementPosition(text.getBlocks(), IndexExcludingTombstones(index)));
    };
    const auto& paragraph = static_cast<const DOM::Paragraph&>(*text.getBlocks()[1]);
    const char* const message = "Unexpected type in the source variant";
    for (unsigned long index = 1; index <= 5; ++index)
    {
        EXPECT_EQ(1u, getBlockIndex(at(index)));
        EXPECT_EQ(&paragraph, &getParagraph(at(index)).get());
    }
    EXPECT_EQ(0u, getBlockIndex(at(0)));
    EXPECT_ASSERTION(getBlockIndex(at(6)), message);
    EXPECT_ASSERTION(getParagraph(at(0)), message);
    EXPECT_ASSERTION(getParagraph(at(6)), message);
    EXPECT_EQ(0u, getRunIndex(at(2)));
    EXPECT_EQ(1u, getRunIndex(at(3)));
    EXPECT_EQ(1u, getRunIndex(at(4)));
    EXPECT_EQ("a", getTextRun(at(3)).get().getText());
    EXPECT_EQ("a", getTextRun(at(4)).get().getText());
    for (const unsigned long index : {0ul, 1ul, 5ul, 6ul})
    {
        EXPECT_ASSERTION(getRunIndex(at(index)), message);
        EXPECT_ASSERTION(getTextRun(at(index)), message);
    }
    EXPECT_ASSERTION(getTextRun(at(2)), message);
}

TEST(ElementPosition, ABlankIsNoPosition)
{
    using Variant = GenericPosition<true, DOMTraits>;
    const DOM::Blocks none;
    EXPECT_ASSERTION(VariantOptDetails::convertVariant<Variant>(
                         getElementPosition(ReadonlyBlocks(none), IndexExcludingTombstones(1))),
                     "Unexpected type in the source variant");
}

TEST(ElementPosition, IsTheSameReadOnly)
{
    DOM::TextWithTombstones text = makeText("#{~|a}");
    const GenericBlockCollectionWrapper<false> wrapper(text.getBlocks(), getDeafTarget());
    for (unsigned long index = 0; index <= 6; ++index)
    {
        const IndexExcludingTombstones planeIndex(index);
        const auto position = VariantOptDetails::convertVariant<GenericPosition<false, DOMTraits>>(
            getElementPosition(text.getBlocks(), planeIndex));
        EXPECT_EQ(describeAt(text, index), boost::apply_visitor(Describe(), asConst(position)));
        const auto wrapped = VariantOptDetails::convertVariant<GenericPosition<false, DOMWrappersTraits>>(
            getElementPosition(wrapper, planeIndex));
        EXPECT_EQ(describeAt(text, index), boost::apply_visitor(Describe(), asConst(wrapped)));
    }
}

TEST(PositionDescriptor, AMissingFieldFails)
{
    PositionDescriptor<true, DOMTraits> descriptor;
    for (const PlaceKind kind : {PlaceKind::AtomicBlock, PlaceKind::ParaTag, PlaceKind::ParaMark, PlaceKind::AtomicRun,
                                 PlaceKind::TextRunTag, PlaceKind::Char})
    {
        descriptor._kind = kind;
        EXPECT_ASSERTION(makePosition(descriptor), "opt");
    }
    descriptor._kind = static_cast<PlaceKind>(99);
    EXPECT_ASSERTION(makePosition(descriptor), "Invalid enum value");
}

TEST(PlaneIndex, OfTheFirstBlockIsZeroAndOfTheFirstRunIsOne)
{
    const DOM::TextWithTombstones text = makeText("{}");
    EXPECT_EQ(0u, getPlaneIndexOfBlock(ReadonlyBlocks(text.getBlocks()), 0).get());
    const auto& paragraph = static_cast<const DOM::Paragraph&>(*text.getBlocks().front());
    EXPECT_EQ(1u, getPlaneIndexOfRun(ReadonlyRuns(paragraph.getRuns()), 0).get());
}

TEST(PlaneIndex, CountsWhatStandsInFront)
{
    const DOM::TextWithTombstones text = makeText("{|abc~}#{|d|ef}");
    const ReadonlyBlocks blocks(text.getBlocks());
    EXPECT_EQ(7u, getPlaneIndexOfBlock(blocks, 1).get());
    EXPECT_EQ(8u, getPlaneIndexOfBlock(blocks, 2).get());
    EXPECT_EQ(15u, getPlaneIndexOfBlock(blocks, 3).get());
    EXPECT_EQ(15u, getPlaneSize(blocks));
    const ReadonlyRuns runs(static_cast<const DOM::Paragraph&>(blocks[2]).getRuns());
    EXPECT_EQ(3u, getPlaneIndexOfRun(runs, 1).get());
    EXPECT_EQ(6u, getPlaneIndexOfRun(runs, 2).get());
}

TEST(PlaneIndex, OfABlockOrARunBeyondTheLastFails)
{
    const DOM::TextWithTombstones text = makeText("{~}");
    EXPECT_ASSERTION(getPlaneIndexOfBlock(ReadonlyBlocks(text.getBlocks()), 2), "index < size()");
    const ReadonlyRuns runs(static_cast<const DOM::Paragraph&>(*text.getBlocks().front()).getRuns());
    EXPECT_EQ(2u, getPlaneIndexOfRun(runs, 1).get());
    EXPECT_ASSERTION(getPlaneIndexOfRun(runs, 2), "index < size()");
}

} // namespace Zem::DOMCollaboration::TextWithTombstonesPositionUtils

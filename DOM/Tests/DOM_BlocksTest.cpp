#include "DOM_Blocks.h"
#include "DOM_FieldChanges.h"
#include "DOM_NumberingRef.h"
#include "DOM_Runs.h"
#include "DOM_TestDocuments.h"

#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <utility>

namespace Zem::DOM::Tests
{

namespace
{

Blocks makeBlockOfEachKind()
{
    Blocks blocks;
    blocks.push_back(std::make_unique<Paragraph>());
    blocks.push_back(std::make_unique<Table>(1, 1));
    blocks.push_back(std::make_unique<SectionTag>());
    blocks.push_back(std::make_unique<Shape>());
    blocks.push_back(std::make_unique<FieldBlock>());
    return blocks;
}

template<class T>
T copyAndAssign(const T& object)
{
    T copy(object);
    T assigned;
    assigned = copy;
    T moved(std::move(assigned));
    assigned = std::move(moved);
    return assigned;
}

} // namespace

TEST(Block, IsEqualToAnotherOfItsKindAndContentOnly)
{
    const Blocks blocks = makeBlockOfEachKind();
    const Blocks copies = deepCopy(blocks);
    for (std::size_t left = 0; left < blocks.size(); ++left)
    {
        for (std::size_t right = 0; right < blocks.size(); ++right)
        {
            EXPECT_EQ(left == right, *blocks[left] == *copies[right]) << left << ' ' << right;
            EXPECT_EQ(left == right, areDeeplyEqual(*blocks[left], *copies[right])) << left << ' ' << right;
        }
    }
}

TEST(Block, IsClonedAsItsOwnKind)
{
    for (const auto& block : makeBlockOfEachKind())
    {
        std::unique_ptr<Block> unique;
        block->cloneTo(unique);
        std::shared_ptr<Block> shared;
        block->cloneTo(shared);
        EXPECT_TRUE(*unique == *block);
        EXPECT_TRUE(*shared == *block);
        EXPECT_NE(block.get(), unique.get());
        const Block& original = *block;
        const Block& clone = *unique;
        EXPECT_EQ(typeid(original), typeid(clone));
    }
}

TEST(VisitBlock, CallsTheOneForTheKind)
{
    std::string kinds;
    for (const auto& block : makeBlockOfEachKind())
    {
        const Block& constBlock = *block;
        kinds += visitBlock(
            constBlock, [](const Paragraph&) { return 'p'; }, [](const Table&) { return 't'; },
            [](const SectionTag&) { return 's'; }, [](const Shape&) { return 'h'; },
            [](const FieldBlock&) { return 'f'; });
    }
    EXPECT_EQ("ptshf", kinds);
}

TEST(VisitBlock, LetsABlockBeChanged)
{
    const std::unique_ptr<Block> block = std::make_unique<Shape>();
    visitBlock(
        *block, [](Shape& shape) { shape.setGeometry(ShapeGeometry::Arrow); }, [](auto&) { ADD_FAILURE(); });
    EXPECT_EQ(ShapeGeometry::Arrow, static_cast<const Shape&>(*block).getGeometry());
}

TEST(Paragraph, IsComparedByAllItsParts)
{
    const Paragraph paragraph;
    Paragraph other;
    EXPECT_TRUE(paragraph == other);
    other.getRuns().push_back(std::make_unique<TabRun>());
    EXPECT_FALSE(paragraph == other);
    other = Paragraph();
    other.getNumRef() = std::make_unique<NumberingRef>();
    EXPECT_FALSE(paragraph == other);
    other = Paragraph();
    other.getSharedStyle().reset(new SharedStyle<ParagraphStyle>(makeChanged(ParagraphStyle())));
    EXPECT_FALSE(paragraph == other);
    other = Paragraph();
    other.getSharedParaMarkStyle().reset(new SharedStyle<RunStyle>(makeChanged(RunStyle())));
    EXPECT_FALSE(paragraph == other);
}

TEST(Paragraph, IsCopiedDeeplyButForItsStyles)
{
    const TextWithTombstones text = makeText(SharedObjectFactory());
    const auto& paragraph = static_cast<const Paragraph&>(*text.getBlocks().front());
    const Paragraph copy = copyAndAssign(paragraph);
    EXPECT_TRUE(copy == paragraph);
    EXPECT_NE(paragraph.getRuns()[0], copy.getRuns()[0]);
    EXPECT_NE(paragraph.getNumRef(), copy.getNumRef());
    EXPECT_EQ(paragraph.getSharedStyle(), copy.getSharedStyle());
    EXPECT_EQ(paragraph.getSharedParaMarkStyle(), copy.getSharedParaMarkStyle());
}

TEST(SectionTag, IsComparedByItsProperties)
{
    SectionTag tag;
    tag.getSectionProps()._columnsCount = static_cast<unsigned char>(2);
    EXPECT_FALSE(tag == SectionTag());
    EXPECT_TRUE(tag == copyAndAssign(tag));
}

TEST(Shape, IsComparedByAllItsParts)
{
    Shape shape;
    shape.setGeometry(ShapeGeometry::Line);
    EXPECT_FALSE(shape == Shape());
    shape = Shape();
    shape.setSize(Size2D<float>{1, 2});
    EXPECT_FALSE(shape == Shape());
    shape = Shape();
    shape.getTextWithTombstones().getBlocks().push_back(makeParagraph("a"));
    EXPECT_FALSE(shape == Shape());
    EXPECT_TRUE(shape == copyAndAssign(shape));
}

TEST(TextWithTombstones, IsComparedByBlocksAndTombstones)
{
    TextWithTombstones text;
    text.getBlocks().push_back(makeParagraph("ab"));
    TextWithTombstones other = copyAndAssign(text);
    EXPECT_TRUE(text == other);
    other.getTombstones().replaceWithTombstone(CollaborationUtils::IndexIncludingTombstones(1));
    EXPECT_FALSE(text == other);
    EXPECT_TRUE(other == copyAndAssign(other));
    EXPECT_FALSE(text == TextWithTombstones());
}

TEST(TextWithTombstones, IsCopiedWithItsBlocks)
{
    TextWithTombstones text;
    text.getBlocks().push_back(makeParagraph("ab"));
    const TextWithTombstones copy = text;
    text.getBlocks().front() = std::make_unique<SectionTag>();
    EXPECT_TRUE(*copy.getBlocks().front() == *makeParagraph("ab"));
}

} // namespace Zem::DOM::Tests

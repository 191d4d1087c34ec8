#include "DOM_CheckInvariants.h"
#include "DOM_Blocks.h"
#include "DOM_Runs.h"
#include "DOM_TestDocuments.h"

#include <gtest/gtest.h>

namespace Zem::DOM::Tests
{

namespace
{

using Problems = std::vector<std::string>;
using CollaborationUtils::IndexIncludingTombstones;

TextWithTombstones makeBrokenText()
{
    TextWithTombstones text;
    text.getBlocks().push_back(nullptr);
    return text;
}

} // namespace

TEST(CheckInvariants, FindsNothingInASoundText)
{
    EXPECT_EQ(Problems(), checkInvariants(TextWithTombstones()));
    EXPECT_EQ(Problems(), checkInvariants(makeText(SharedObjectFactory())));
}

TEST(CheckInvariants, FindsNullBlocksAndRuns)
{
    TextWithTombstones text;
    auto paragraph = std::make_unique<Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<TabRun>());
    paragraph->getRuns().push_back(nullptr);
    text.getBlocks().push_back(std::move(paragraph));
    text.getBlocks().push_back(nullptr);
    EXPECT_EQ((Problems{"Block 0: Run 1 is null.", "Block 1 is null."}), checkInvariants(text));
}

TEST(CheckInvariants, LooksIntoShapesAndCells)
{
    TextWithTombstones text;
    auto shape = std::make_unique<Shape>();
    shape->getTextWithTombstones() = makeBrokenText();
    text.getBlocks().push_back(std::move(shape));
    auto table = std::make_unique<Table>(2, 3);
    table->getOrCreateCell(RowIndex(1), ColumnIndex(2)).getTextWithTombstones() = makeBrokenText();
    text.getBlocks().push_back(std::move(table));
    EXPECT_EQ((Problems{"Block 0: Block 0 is null.", "Block 1: Cell 1, 2: Block 0 is null."}), checkInvariants(text));
}

TEST(CheckInvariants, LooksIntoTheValuesOfPivotTables)
{
    const auto makeBrokenValue = []
    {
        Blocks blocks;
        blocks.push_back(nullptr);
        return PivotTableValue(std::move(blocks), nullptr);
    };
    auto pivotTable = std::make_unique<PivotTable>();
    pivotTable->setCalculatedValues({PivotTableValue(), makeBrokenValue()});
    pivotTable->getFieldCache().getFieldValueCache()[PivotFieldID(7)].push_back(makeBrokenValue());
    TextWithTombstones text;
    auto table = std::make_unique<Table>(2, 3);
    table->setPivotTable(RowIndex(1), ColumnIndex(0), std::move(pivotTable));
    text.getBlocks().push_back(std::move(table));
    EXPECT_EQ((Problems{"Block 0: Cell 1, 0: Pivot table: Value of field 7 0: Block 0 is null.",
                        "Block 0: Cell 1, 0: Pivot table: Calculated value 1: Block 0 is null."}),
              checkInvariants(text));
}

TEST(CheckInvariants, LooksIntoTables)
{
    TextWithTombstones text;
    auto table = std::make_unique<Table>(1, 1);
    table->getFrames().getElements().push_back(nullptr);
    text.getBlocks().push_back(std::move(table));
    EXPECT_EQ(Problems{"Block 0: 5: Frame 0 of a table is null."}, checkInvariants(text));
}

TEST(CheckInvariants, FindsMoreTombstonesThanCanBeCounted)
{
    TextWithTombstones text;
    text.getTombstones().replaceWithTombstones(IndexIncludingTombstones(0), (1UL << 62) + 1);
    EXPECT_EQ(Problems{"There are 4611686018427387905 tombstones, more than a list can have."}, checkInvariants(text));
}

TEST(CheckInvariants, FindsNothingInATextRunWithoutText)
{
    TextWithTombstones text;
    text.getBlocks().push_back(makeParagraph(""));
    EXPECT_EQ(Problems(), checkInvariants(text));
}

TEST(CheckInvariants, CountsTheSlotsInFrontOfTheLastTombstone)
{
    TextWithTombstones text;
    text.getBlocks().push_back(makeParagraph("abc"));
    text.getTombstones().insertElements(IndexIncludingTombstones(0), 7);
    text.getTombstones().replaceWithTombstone(IndexIncludingTombstones(6));
    EXPECT_EQ(Problems(), checkInvariants(text));
    text.getTombstones().insertElement(IndexIncludingTombstones(0));
    EXPECT_EQ(Problems{"The last tombstone stands behind 7 live slots, but there are 6."}, checkInvariants(text));
}

TEST(CheckInvariants, LooksIntoEveryTextOfADocument)
{
    Document document;
    EXPECT_EQ(Problems(), checkInvariants(document));
    document.getTextWithTombstones() = makeBrokenText();
    const UUID uuid;
    HeaderFooterPair pair(uuid);
    pair.getHeader() = makeBrokenText();
    pair.getFooter() = makeBrokenText();
    document.getHeadersFooters().insert(pair);
    Comment comment(uuid);
    comment.getBlocks().push_back(nullptr);
    document.getComments().insert(comment);
    Note note(uuid);
    note.getBlocks().push_back(nullptr);
    document.getNotes().insert(note);
    EXPECT_EQ((Problems{"Main text: Block 0 is null.", "Header 00000000-0000-0000-0000-000000000000: Block 0 is null.",
                        "Footer 00000000-0000-0000-0000-000000000000: Block 0 is null.",
                        "Comment 00000000-0000-0000-0000-000000000000: Block 0 is null.",
                        "Note 00000000-0000-0000-0000-000000000000: Block 0 is null."}),
              checkInvariants(document));
}

TEST(CheckInvariants, FindsElementsThatLieUnderAnotherUUID)
{
    Document document;
    document.getStyles().getTextStyles().insert(NamedTextStyle(UUID()));
    *document.getStyles().getTextStyles().begin() = NamedTextStyle();
    document.getNumLists().insert(NumberedList(UUID()));
    *document.getNumLists().begin() = NumberedList();
    EXPECT_EQ((Problems{"Numbered lists: An element doesn't lie under its own UUID.",
                        "Text styles: An element doesn't lie under its own UUID."}),
              checkInvariants(document));
}

} // namespace Zem::DOM::Tests

#include "DOMNodeAdapters/DClb_DOMNodeAdapter.h"

#include "DOMNodeAdapters/DClb_SampleDocument.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CellNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "Util_Cast.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

using namespace Addresses;

namespace
{

constexpr const char* noElement = "There is no element corresponding to the passed address";
constexpr const char* noTombstones = "Tombstones aren't supported in native model";

using OperationTombstone = InOperationWorld<GenericTombstoneNodeAdapter, false>;
using OperationEndMark = InOperationWorld<GenericCollectionEndMarkNodeAdapter, false>;
using NativeEndMark = InNativeWorld<GenericCollectionEndMarkNodeAdapter, false>;

template<class Adapter, class Child>
bool isChild(Adapter& adapter, unsigned long index, bool includingTombstones)
{
    const auto child = adapter.createChildAdapterIfPossible(at(index), includingTombstones);
    return cast<Child>(child.get()) != nullptr;
}

class DOMNodeAdapterTest : public testing::Test
{
protected:
    DOM::TextWithTombstones _text = makeSampleText();
    GenericTextWithTombstonesNodeAdapter<false> _flat{_text};
    GenericBlockCollectionNodeAdapter<false> _blocks{_text};
    DOM::Table& _table = dynamic_cast<DOM::Table&>(*_text.getBlocks().at(1));
    InOperationWorld<GenericFrameCollectionNodeAdapter, false> _frames{_table};
    InOperationWorld<GenericCellCollectionNodeAdapter, false> _cells{_table};
};

} // namespace

TEST_F(DOMNodeAdapterTest, AChunkOfTheWrongKindLeadsToNoChild)
{
    const auto expectNoChild = [](auto& adapter, const auto& chunk)
    {
        EXPECT_EQ(nullptr, adapter.createChildAdapterIfPossible(chunk, false));
        EXPECT_EQ(nullptr, adapter.createChildAdapterIfPossible(chunk, true));
        EXPECT_ASSERTION(adapter.createChildAdapter(chunk, false), noElement);
    };
    expectNoChild(_flat, cell(0, 0));
    expectNoChild(_flat, key(UUID()));
    expectNoChild(_flat, fixed(Operation::TextWithTombstones));
    expectNoChild(_blocks, fixed(Native::RunCollection));
    expectNoChild(_cells, at(0));
    InOperationWorld<GenericTableNodeAdapter, false> table(_table);
    expectNoChild(table, at(0));
    DOM::UUIDContainer<DOM::Comment> comments;
    InNativeWorld<GenericCommentCollectionNodeAdapter, false> commentCollection(comments);
    expectNoChild(commentCollection, at(0));
}

TEST_F(DOMNodeAdapterTest, OnePastTheLastItemIsTheEndMarkAndTwoPastIsNothing)
{
    const auto expectEnd = [](auto& adapter, unsigned long size, bool includingTombstones, auto collectionType)
    {
        using EndMark = GenericCollectionEndMarkNodeAdapter<
            typename NodeAdapterDetails::Traits<std::remove_reference_t<decltype(adapter)>>::Tag,
            decltype(collectionType), false>;
        const auto child = adapter.createChildAdapterIfPossible(at(size), includingTombstones);
        auto* endMark = cast<EndMark>(child.get());
        ASSERT_NE(nullptr, endMark);
        EXPECT_EQ(collectionType, endMark->getCollectionType());
        EXPECT_EQ(nullptr, adapter.createChildAdapterIfPossible(at(size + 1), includingTombstones));
        EXPECT_NE(nullptr, adapter.createChildAdapterIfPossible(at(size - 1), includingTombstones));
    };
    expectEnd(_flat, 10, false, convertOperationNodeType(Operation::TextWithTombstones));
    expectEnd(_flat, 11, true, convertOperationNodeType(Operation::TextWithTombstones));
    expectEnd(_frames, 2, false, convertOperationNodeType(Operation::FrameCollection));
    expectEnd(_frames, 3, true, convertOperationNodeType(Operation::FrameCollection));
    InNativeWorld<GenericConditionalFormatCollectionNodeAdapter, false> formats(_table);
    expectEnd(formats, 1, false, Native::ConditionalFormatCollection);
    expectEnd(formats, 2, true, Native::ConditionalFormatCollection);
    expectEnd(_blocks, 5, false, Native::BlockCollection);
    auto& paragraph = dynamic_cast<DOM::Paragraph&>(*_text.getBlocks().at(0));
    GenericRunCollectionNodeAdapter<false> runs(paragraph.getRuns());
    expectEnd(runs, 2, false, Native::RunCollection);
    GenericCharCollectionNodeAdapter<false> chars(dynamic_cast<DOM::TextRun&>(*paragraph.getRuns().at(0)));
    expectEnd(chars, 2, false, Native::CharCollection);
}

TEST_F(DOMNodeAdapterTest, ATombstoneIsFoundOnlyWhereTombstonesCount)
{
    EXPECT_TRUE((isChild<decltype(_flat), OperationTombstone>(_flat, 3, true)));
    EXPECT_FALSE((isChild<decltype(_flat), OperationTombstone>(_flat, 3, false)));
    EXPECT_TRUE((isChild<decltype(_frames), OperationTombstone>(_frames, 1, true)));
    EXPECT_FALSE((isChild<decltype(_frames), OperationTombstone>(_frames, 1, false)));
    EXPECT_TRUE(cast<OperationTombstone>(_cells.createChildAdapterIfPossible(cell(1, 0), true).get()) != nullptr);
    EXPECT_TRUE(cast<OperationTombstone>(_cells.createChildAdapterIfPossible(cell(1, 0), false).get()) == nullptr);
    _table.replaceColWithTombstone(IndexIncludingTombstones(1));
    EXPECT_TRUE(cast<OperationTombstone>(_cells.createChildAdapterIfPossible(cell(0, 1), true).get()) != nullptr);
}

TEST_F(DOMNodeAdapterTest, ListsCountTheirChildrenInBothSpaces)
{
    EXPECT_EQ(10u, _flat.getChildrenCountExcludingTombstones().get());
    EXPECT_EQ(11u, _flat.getChildrenCountIncludingTombstones().get());
    EXPECT_EQ(2u, _frames.getChildrenCountExcludingTombstones().get());
    EXPECT_EQ(3u, _frames.getChildrenCountIncludingTombstones().get());
    EXPECT_EQ(5u, _blocks.getChildrenCountExcludingTombstones().get());
}

TEST_F(DOMNodeAdapterTest, TheTextTreeKnowsNoTombstones)
{
    auto& paragraph = dynamic_cast<DOM::Paragraph&>(*_text.getBlocks().at(0));
    GenericRunCollectionNodeAdapter<false> runs(paragraph.getRuns());
    GenericCharCollectionNodeAdapter<false> chars(dynamic_cast<DOM::TextRun&>(*paragraph.getRuns().at(0)));
    const auto expectNoTombstones = [](auto& list)
    {
        EXPECT_ASSERTION(list.getChildrenCountIncludingTombstones(), noTombstones);
        EXPECT_ASSERTION(list.createChildAdapterByIndexIfPossible(IndexIncludingTombstones(0)), noTombstones);
        EXPECT_ASSERTION(list.createChildAdapterIfPossible(at(0), true), noTombstones);
    };
    expectNoTombstones(_blocks);
    expectNoTombstones(runs);
    expectNoTombstones(chars);
}

TEST_F(DOMNodeAdapterTest, CellsEndAtTheLastLiveRowAndColumn)
{
    const auto isEndMark = [&](unsigned long row, unsigned long column, bool includingTombstones)
    {
        const auto child = _cells.createChildAdapterIfPossible(cell(row, column), includingTombstones);
        const auto* endMark = cast<OperationEndMark>(child.get());
        return endMark && endMark->getCollectionType() == convertOperationNodeType(Operation::CellCollection);
    };
    EXPECT_TRUE(isEndMark(2, 0, false));
    EXPECT_TRUE(isEndMark(0, 2, false));
    EXPECT_TRUE(isEndMark(2, 2, false));
    EXPECT_TRUE(isEndMark(3, 0, true));
    EXPECT_FALSE(isEndMark(2, 0, true));
    EXPECT_EQ(nullptr, _cells.createChildAdapterIfPossible(cell(3, 0), false));
    EXPECT_EQ(nullptr, _cells.createChildAdapterIfPossible(cell(4, 0), true));
    // Beyond the rows it is nothing, even at the end of the columns.
    EXPECT_EQ(nullptr, _cells.createChildAdapterIfPossible(cell(3, 2), false));
}

TEST_F(DOMNodeAdapterTest, AKeyThatIsNotThereLeadsToNoChild)
{
    SampleDocument sample;
    InOperationWorld<GenericCommentCollectionNodeAdapter, true> comments(sample._document.getComments());
    EXPECT_NE(nullptr, comments.createChildAdapterIfPossible(key(sample._comment), true));
    EXPECT_EQ(nullptr, comments.createChildAdapterIfPossible(key(sample._note), true));
}

TEST_F(DOMNodeAdapterTest, AKeyMustBeAUUIDAndNotNull)
{
    SampleDocument sample;
    InOperationWorld<GenericNoteCollectionNodeAdapter, true> notes(sample._document.getNotes());
    EXPECT_THROW(notes.createChildAdapterIfPossible(key(std::string("name")), true), std::bad_cast);
    EXPECT_ASSERTION(notes.createChildAdapterIfPossible(NodeAddressing::AddressInMap(), true), "plainPtr");
    InNativeWorld<GenericScriptCollectionNodeAdapter, true> scripts(sample._document.getScripts());
    EXPECT_EQ(nullptr, scripts.createChildAdapterIfPossible(key(std::string("script")), false));
    EXPECT_EQ(nullptr, scripts.createChildAdapterIfPossible(key(UUID()), false));
    EXPECT_ASSERTION(scripts.createChildAdapterIfPossible(NodeAddressing::AddressInMap(), false), "plainPtr");
}

TEST_F(DOMNodeAdapterTest, AHeaderFooterPairHasNoOtherPart)
{
    DOM::HeaderFooterPair pair;
    InOperationWorld<GenericHeaderFooterPairNodeAdapter, false> inOperations(pair);
    InNativeWorld<GenericHeaderFooterPairNodeAdapter, true> inTree(pair);
    EXPECT_ASSERTION(inOperations.createChildAdapterIfPossible(fixed(Operation::TextWithTombstones), true),
                     "Unknown header footer type");
    EXPECT_ASSERTION(inTree.createChildAdapterIfPossible(fixed(Native::BlockCollection), false),
                     "Unknown header footer type");
}

TEST_F(DOMNodeAdapterTest, WalkingPastAnEmptyCellMakesNoneUntilItIsChanged)
{
    const auto cellAdapter = _cells.createChildAdapter(cell(0, 1), true);
    const auto textAdapter = cellAdapter->createChildAdapter(fixed(Operation::TextWithTombstones), true);
    auto& text = cast<GenericTextWithTombstonesNodeAdapter<false>>(*textAdapter);
    EXPECT_TRUE(text.getBlocks().empty());
    EXPECT_EQ(0u, text.getChildrenCountIncludingTombstones().get());
    EXPECT_TRUE((isChild<decltype(text), OperationEndMark>(text, 0, true)));
    EXPECT_EQ(nullptr, _table.getCell(RowIndex(0), ColumnIndex(1)));

    const DOM::TextWithTombstones& shared = text.getTextWithTombstones();
    EXPECT_EQ(&shared, &text.getTextWithTombstones());
    DOM::TextWithTombstones& made = text.getOrCreateTextWithTombstones();
    EXPECT_NE(&shared, &made);
    made.getBlocks().push_back(std::make_unique<DOM::Paragraph>());
    ASSERT_NE(nullptr, _table.getCell(RowIndex(0), ColumnIndex(1)));
    EXPECT_EQ(&made, &_table.getCell(RowIndex(0), ColumnIndex(1))->getTextWithTombstones());
    // From then on the adapters show the cell.
    EXPECT_EQ(&made, &text.getTextWithTombstones());
    EXPECT_EQ(1u, text.getBlocks().size());
    using OperationCell = InOperationWorld<GenericCellNodeAdapter, false>;
    EXPECT_EQ(_table.getCell(RowIndex(0), ColumnIndex(1)), cast<OperationCell>(*cellAdapter).getCell());
}

TEST_F(DOMNodeAdapterTest, ACellIsMadeByItsOwnAdapterToo)
{
    const auto child = _cells.createChildAdapter(cell(0, 0), true);
    auto& adapter = cast<InOperationWorld<GenericCellNodeAdapter, false>>(*child);
    EXPECT_EQ(nullptr, adapter.getCell());
    DOM::Cell& made = adapter.getOrCreateCell();
    EXPECT_EQ(&made, adapter.getCell());
    EXPECT_EQ(&made, &adapter.getOrCreateCell());
    EXPECT_EQ(&made, _table.getCell(RowIndex(0), ColumnIndex(0)));
}

TEST_F(DOMNodeAdapterTest, BlocksOfAnEmptyCellAreMadeOnDemandInTheTreeToo)
{
    InNativeWorld<GenericCellCollectionNodeAdapter, false> cells(_table);
    const auto child =
        cells.createChildAdapter(cell(0, 0), false)->createChildAdapter(fixed(Native::BlockCollection), false);
    auto& blocks = cast<GenericBlockCollectionNodeAdapter<false>>(*child);
    EXPECT_TRUE(blocks.getBlocks().empty());
    EXPECT_EQ(nullptr, _table.getCell(RowIndex(0), ColumnIndex(0)));
    blocks.getOrCreateBlocks().push_back(std::make_unique<DOM::Paragraph>());
    EXPECT_EQ(1u, blocks.getBlocks().size());
    EXPECT_EQ(1u, _table.getCell(RowIndex(0), ColumnIndex(0))->getTextWithTombstones().getBlocks().size());
}

TEST_F(DOMNodeAdapterTest, ReadingAStyledCellWithoutTextThroughAWritableAdapterMakesNoText)
{
    DOM::Cell& styled = _table.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    const auto child =
        _cells.createChildAdapter(cell(0, 0), true)->createChildAdapter(fixed(Operation::TextWithTombstones), true);
    const auto& text = cast<GenericTextWithTombstonesNodeAdapter<false>>(*child).getTextWithTombstones();
    EXPECT_EQ(&std::as_const(styled).getTextWithTombstones(), &text);
}

TEST_F(DOMNodeAdapterTest, AChildAtAKnownPlaceIsThatOfTheIndex)
{
    for (unsigned long index = 0; index <= 10; ++index)
    {
        const auto place = PlaneWalk::find(_text.getBlocks(), IndexExcludingTombstones(index));
        ASSERT_TRUE(place);
        const auto byPlace = _flat.createChildAdapterAt(*place);
        const auto byIndex = _flat.createChildAdapterByIndexIfPossible(IndexExcludingTombstones(index));
        const auto& first = *byIndex;
        const auto& second = *byPlace;
        EXPECT_EQ(typeid(first), typeid(second)) << index;
    }
}

} // namespace Zem::DOMCollaboration

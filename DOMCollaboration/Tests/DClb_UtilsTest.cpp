#include "DClb_Utils.h"

#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include "TS_Assertions.h"

#include "DOM_NamedTextStyle.h"
#include "DOM_Paragraph.h"
#include "DOM_Table.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

RowIndex row(unsigned long index)
{
    return RowIndex(index);
}

ColumnIndex column(unsigned long index)
{
    return ColumnIndex(index);
}

void setVisible(DOM::Table& table, BoolOpt isVisible)
{
    auto props = std::make_shared<DOM::TableProps>();
    props->_isVisible = isVisible;
    DOM::TableStyle style;
    style.setTableProps(props);
    table.getSharedStyle() = new DOM::SharedStyle<DOM::TableStyle>(style);
}

BoolOpt makeBool(bool value)
{
    BoolOpt result;
    result = value;
    return result;
}

DOM::TableUPtr makeWorksheet(BoolOpt isVisible)
{
    auto table = std::make_unique<DOM::Table>(1, 1);
    setVisible(*table, isVisible);
    return table;
}

/// Whether the first of the blocks, a hidden table, is the last visible one.
bool isFirstLastVisible(DOM::BlockKind kind, DOM::TableUPtr otherTable)
{
    DOM::Blocks blocks;
    blocks.push_back(makeWorksheet(makeBool(true)));
    if (kind == DOM::BlockKind::Table)
    {
        blocks.push_back(std::move(otherTable));
    }
    else
    {
        blocks.push_back(std::make_unique<DOM::Paragraph>());
    }
    return Utils::isLastVisibleBlock(ReadonlyVector<DOM::Blocks>(blocks), cast<DOM::Table>(*blocks[0]));
}

void fillWithEmptyCells(DOM::Table& table, unsigned long rows, unsigned long columns)
{
    for (unsigned long r = 0; r < rows; ++r)
    {
        for (unsigned long c = 0; c < columns; ++c)
        {
            table.getOrCreateCell(row(r), column(c));
        }
    }
}

void putText(DOM::Cell& cell)
{
    cell.getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::Paragraph>());
}

/// A text document with one table, for `clearCellIfNeeded`.
class ClearCellTest : public testing::Test
{
protected:
    ClearCellTest()
        : _adapter(_document)
    {
        auto table = std::make_unique<DOM::Table>(3, 3);
        _table = table.get();
        _document.getTextWithTombstones().getBlocks().push_back(std::move(table));
    }

    static DOM::NativeNodeAddress makeCellsAddress()
    {
        using Type = DOM::NativeDOMNodeType;
        using FixedChunk = DOM::NativeNodeAddress::FixedChunk;
        return {FixedChunk(Type::BlockCollection), NodeAddressing::AddressInList(0), FixedChunk(Type::CellCollection)};
    }

    static DOM::NativeNodeAddress makeCellAddress()
    {
        return makeCellsAddress().appendItems(NodeAddressing::AddressInTable(row(1), column(1)));
    }

    DOM::Cell& makeCell()
    {
        return _table->getOrCreateCell(row(1), column(1));
    }

    bool isCellThere() const
    {
        return _table->getCell(row(1), column(1)) != nullptr;
    }

    DOM::Document _document;
    TextDocumentAdapter _adapter;
    DOM::Table* _table;
};

} // namespace

TEST(Utils, MainTextIsThatOfTheDocument)
{
    DOM::Document document;
    TextDocumentAdapter text(document);
    WorkbookDocumentAdapter workbook(document);
    PresentationDocumentAdapter presentation(document);
    EXPECT_EQ(&document.getTextWithTombstones(), &Utils::getMainTextWithTombstones(text));
    EXPECT_EQ(&document.getTextWithTombstones(), &Utils::getMainTextWithTombstones(workbook));
    EXPECT_EQ(&document.getTextWithTombstones(), &Utils::getMainTextWithTombstones(presentation));
    EXPECT_EQ(&document.getTextWithTombstones(), &Utils::getMainTextWithTombstones(std::as_const(text)));
}

TEST(Utils, MainTextOfADetachedTextIsItself)
{
    DOM::TextWithTombstones text;
    const DOM::Styles styles;
    const DOM::SharedObjectFactory factory;
    BlocksAdapterWithNodeAdapter adapter(text, styles, nullptr, nullptr, nullptr, nullptr, factory);
    EXPECT_EQ(&text, &Utils::getMainTextWithTombstones(adapter));
    EXPECT_EQ(&text, &Utils::getMainTextWithTombstones(std::as_const(adapter)));
}

TEST(Utils, OnlyAnInsertionInTheMiddleMaySplitAMerge)
{
    EXPECT_FALSE(Utils::isNeededUnmergeToInsertInTable(3, 0));
    EXPECT_TRUE(Utils::isNeededUnmergeToInsertInTable(3, 1));
    EXPECT_TRUE(Utils::isNeededUnmergeToInsertInTable(3, 2));
    EXPECT_FALSE(Utils::isNeededUnmergeToInsertInTable(3, 3));
    EXPECT_FALSE(Utils::isNeededUnmergeToInsertInTable(0, 0));
}

TEST(Utils, ATableAmongHiddenTablesIsTheLastVisibleBlock)
{
    EXPECT_TRUE(isFirstLastVisible(DOM::BlockKind::Table, makeWorksheet(makeBool(false))));
}

TEST(Utils, AnotherVisibleBlockIsVisible)
{
    EXPECT_FALSE(isFirstLastVisible(DOM::BlockKind::Table, makeWorksheet(makeBool(true))));
    EXPECT_FALSE(isFirstLastVisible(DOM::BlockKind::Table, makeWorksheet(BoolOpt())));
    EXPECT_FALSE(isFirstLastVisible(DOM::BlockKind::Paragraph, nullptr));
}

TEST(Utils, ATableWithoutPropsCountsAsVisible)
{
    EXPECT_FALSE(isFirstLastVisible(DOM::BlockKind::Table, std::make_unique<DOM::Table>(1, 1)));
    auto withStyle = std::make_unique<DOM::Table>(1, 1);
    withStyle->getSharedStyle() = new DOM::SharedStyle<DOM::TableStyle>(DOM::TableStyle());
    EXPECT_FALSE(isFirstLastVisible(DOM::BlockKind::Table, std::move(withStyle)));
}

TEST(Utils, NoBlocksAtAllMakeATableTheLastVisibleOne)
{
    const DOM::Blocks blocks;
    EXPECT_TRUE(Utils::isLastVisibleBlock(ReadonlyVector<DOM::Blocks>(blocks), DOM::Table()));
}

TEST(Utils, APivotTableStandsOnEmptyCells)
{
    DOM::Table table(4, 4);
    fillWithEmptyCells(table, 4, 4);
    const Size2D<unsigned> size{2, 3};
    EXPECT_TRUE(Utils::canInsertPivotTable(table, row(0), column(0), size));
    putText(table.getOrCreateCell(row(2), column(1)));
    EXPECT_FALSE(Utils::canInsertPivotTable(table, row(0), column(0), size));
    EXPECT_TRUE(Utils::canInsertPivotTable(table, row(0), column(2), size)) << "columns first: the text isn't covered";
}

TEST(Utils, APivotTableStandsWhereNoCellsAre)
{
    DOM::Table table(4, 4);
    EXPECT_TRUE(Utils::canInsertPivotTable(table, row(0), column(0), {4, 4}));
    putText(table.getOrCreateCell(row(3), column(3)));
    EXPECT_FALSE(Utils::canInsertPivotTable(table, row(0), column(0), {4, 4}));
    EXPECT_TRUE(Utils::canInsertPivotTable(table, row(0), column(0), {4, 3}));
}

TEST(Utils, APivotTableReplacesThatOfItsOwnRootAlone)
{
    DOM::Table table(4, 4);
    fillWithEmptyCells(table, 4, 4);
    table.setPivotTable(row(1), column(1), std::make_unique<DOM::PivotTable>(Size2D<unsigned>{2, 2}));
    EXPECT_TRUE(Utils::canInsertPivotTable(table, row(1), column(1), {3, 3}));
    EXPECT_FALSE(Utils::canInsertPivotTable(table, row(0), column(0), {2, 2}));
    EXPECT_FALSE(Utils::canInsertPivotTable(table, row(2), column(2), {1, 1})) << "covered, though not the root";
}

TEST(Utils, APivotTableNeedsASize)
{
    const DOM::Table table(4, 4);
    EXPECT_ASSERTION(Utils::canInsertPivotTable(table, row(0), column(0), {1, 0}), "_beginRow < _endRow");
    EXPECT_ASSERTION(Utils::canInsertPivotTable(table, row(0), column(0), {0, 1}), "_beginColumn < _endColumn");
}

TEST_F(ClearCellTest, AnEmptyCellGoes)
{
    makeCell();
    Utils::clearCellIfNeeded(_adapter, makeCellAddress());
    EXPECT_FALSE(isCellThere());
}

TEST_F(ClearCellTest, TheCellGoesByAnAddressBelowIt)
{
    makeCell();
    auto address = makeCellAddress();
    address.appendItems(DOM::NativeNodeAddress::FixedChunk(DOM::NativeDOMNodeType::BlockCollection),
                        NodeAddressing::AddressInList(0));
    Utils::clearCellIfNeeded(_adapter, address);
    EXPECT_FALSE(isCellThere());
}

TEST_F(ClearCellTest, ACellWithTextStays)
{
    putText(makeCell());
    Utils::clearCellIfNeeded(_adapter, makeCellAddress());
    EXPECT_TRUE(isCellThere());
}

TEST_F(ClearCellTest, ACellWithTombstonesAloneStays)
{
    using CollaborationUtils::IndexIncludingTombstones;
    auto& tombstones = makeCell().getTextWithTombstones().getTombstones();
    tombstones.insertElement(IndexIncludingTombstones(0));
    tombstones.replaceWithTombstone(IndexIncludingTombstones(0));
    Utils::clearCellIfNeeded(_adapter, makeCellAddress());
    EXPECT_TRUE(isCellThere());
}

TEST_F(ClearCellTest, ACellWithAPivotTableStays)
{
    _table->setPivotTable(row(1), column(1), std::make_unique<DOM::PivotTable>(Size2D<unsigned>{1, 1}));
    Utils::clearCellIfNeeded(_adapter, makeCellAddress());
    EXPECT_TRUE(isCellThere());
}

TEST_F(ClearCellTest, AddressesWithoutACellAreLeftAlone)
{
    makeCell();
    const DOM::Document before(_document);
    Utils::clearCellIfNeeded(_adapter, {});
    Utils::clearCellIfNeeded(_adapter, makeCellsAddress());
    Utils::clearCellIfNeeded(_adapter, makeCellsAddress().getTrimmedAtEnd(1));
    Utils::clearCellIfNeeded(_adapter,
                             makeCellsAddress().appendItems(NodeAddressing::AddressInTable(row(2), column(2))));
    EXPECT_TRUE(before == _document);
}

TEST_F(ClearCellTest, AnythingButAPlaceBehindTheCellsFails)
{
    EXPECT_ASSERTION(
        Utils::clearCellIfNeeded(_adapter, makeCellsAddress().appendItems(NodeAddressing::AddressInList(0))),
        "cellIndices");
}

TEST(Utils, NumberingIsSetKeptAndCleared)
{
    DOM::NumberingRef first;
    first._level = 1;
    DOM::NumberingRef second;
    second._level = 2;
    DOM::NamedTextStyle style;

    Utils::setNumberingRef(style, boost::make_optional(first));
    ASSERT_TRUE(style.getNumRef());
    const DOM::NumberingRef* object = style.getNumRef().get();
    Utils::setNumberingRef(style, boost::make_optional(second));
    EXPECT_EQ(object, style.getNumRef().get());
    EXPECT_TRUE(second == *object);
    Utils::setNumberingRef(style, boost::none);
    EXPECT_FALSE(style.getNumRef());
    Utils::setNumberingRef(style, boost::none);
    EXPECT_FALSE(style.getNumRef());
}

} // namespace Zem::DOMCollaboration

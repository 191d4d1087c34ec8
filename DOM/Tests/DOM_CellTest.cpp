#include "DOM_Cell.h"
#include "DOM_Paragraph.h"
#include "DOM_Table.h"

#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <memory>

namespace Zem::DOM::Tests
{

namespace
{

using WithTombstones = CollaborationUtils::WithTombstones;
using IndexIncludingTombstones = CollaborationUtils::IndexIncludingTombstones;

SharedStyleConstIPtr<CellStyle> makeStyle(unsigned char number)
{
    CellStyle style;
    style.setParentUUID(UUID(UUID::Bytes{number}));
    return SharedStyleConstIPtr<CellStyle>(new SharedStyle<CellStyle>(style));
}

void addFieldBlock(Cell& cell, FieldBlock::FieldInfo info)
{
    cell.getTextWithTombstones().getBlocks().push_back(std::make_unique<FieldBlock>(std::move(info)));
}

template<class T>
const T* getData(const Cell& cell)
{
    const CellData data = cell.getCellData();
    const T* const* const pointer = boost::get<const T*>(&data);
    return pointer ? *pointer : nullptr;
}

/// A cell with all that a cell can have; merge and pivot table come from the table that it was in.
Cell makeFullCell()
{
    Table table(3, 3);
    Cell& cell = table.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    cell.getTextWithTombstones().getBlocks().push_back(std::make_unique<Paragraph>());
    cell.getSharedStyle() = makeStyle(1);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 2);
    table.setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<PivotTable>(Size2D<unsigned>{2, 2}));
    return cell;
}

} // namespace

TEST(Cell, HasOneEmptyTextForAllCellsWithoutText)
{
    const Cell first;
    const Cell second;
    EXPECT_EQ(&first.getTextWithTombstones(), &second.getTextWithTombstones());
    EXPECT_TRUE(first.getTextWithTombstones().getBlocks().empty());
    Cell third;
    EXPECT_NE(&first.getTextWithTombstones(), &third.getTextWithTombstones());
}

TEST(Cell, IsEqualToOneWithAnEmptyText)
{
    const Cell without;
    Cell with;
    with.getTextWithTombstones();
    EXPECT_TRUE(without == with);
    EXPECT_TRUE(with == without);
    with.getTextWithTombstones().getBlocks().push_back(std::make_unique<Paragraph>());
    EXPECT_FALSE(without == with);
}

TEST(Cell, IsEmptyWithoutContents)
{
    const Cell cell;
    EXPECT_TRUE(cell.isEmpty(WithTombstones::No));
    EXPECT_TRUE(cell.isEmpty(WithTombstones::Yes));
}

TEST(Cell, IsNotEmptyWithABlock)
{
    Cell cell;
    cell.getTextWithTombstones().getBlocks().push_back(std::make_unique<Paragraph>());
    EXPECT_FALSE(cell.isEmpty(WithTombstones::No));
    EXPECT_FALSE(cell.isEmpty(WithTombstones::Yes));
}

TEST(Cell, CountsTombstonesOfItsTextOnRequest)
{
    Cell cell;
    cell.getTextWithTombstones().getTombstones().insertElement(IndexIncludingTombstones(0));
    cell.getTextWithTombstones().getTombstones().replaceWithTombstone(IndexIncludingTombstones(0));
    EXPECT_TRUE(cell.isEmpty(WithTombstones::No));
    EXPECT_FALSE(cell.isEmpty(WithTombstones::Yes));
}

TEST(Cell, CountsItsStyleAsWhatWouldBeLostButNotAsContents)
{
    Cell cell;
    cell.getSharedStyle() = makeStyle(1);
    EXPECT_TRUE(cell.isEmpty(WithTombstones::No));
    EXPECT_FALSE(cell.isEmpty(WithTombstones::Yes));
}

TEST(Cell, LosesNothingWithTheDefaultStyle)
{
    Cell cell;
    cell.getSharedStyle().reset(new SharedStyle<CellStyle>(CellStyle()));
    EXPECT_TRUE(cell.isEmpty(WithTombstones::No));
    EXPECT_TRUE(cell.isEmpty(WithTombstones::Yes));
    EXPECT_TRUE(cell == Cell());
    EXPECT_TRUE(Cell() == cell);
}

TEST(Cell, IsNotEmptyAsTheRootOfAMerge)
{
    Table table(2, 2);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 0);
    const Cell& cell = *table.getCell(RowIndex(0), ColumnIndex(0));
    EXPECT_FALSE(cell.isEmpty(WithTombstones::No));
    EXPECT_FALSE(cell.isEmpty(WithTombstones::Yes));
}

TEST(Cell, IsEmptyWithNothingButAPivotTable)
{
    Table table(2, 2);
    table.setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<PivotTable>());
    const Cell& cell = *table.getCell(RowIndex(0), ColumnIndex(0));
    EXPECT_TRUE(cell.isEmpty(WithTombstones::Yes));
    EXPECT_TRUE(cell.getPivotTable().has_value());
}

TEST(Cell, TellsItsDataByTheFirstBlock)
{
    Cell cell;
    EXPECT_EQ(0, cell.getCellData().which());
    EXPECT_EQ(nullptr, cell.getArrayFormulaShift());
    addFieldBlock(cell, Formula("A1+1"));
    ASSERT_NE(nullptr, getData<Formula>(cell));
    EXPECT_EQ("A1+1", getData<Formula>(cell)->getText());
    EXPECT_EQ(nullptr, cell.getArrayFormulaShift());

    Cell text;
    text.getTextWithTombstones().getBlocks().push_back(std::make_unique<Paragraph>());
    EXPECT_EQ(&text.getTextWithTombstones(), getData<TextWithTombstones>(text));
}

TEST(Cell, TellsEveryKindOfData)
{
    Cell shift;
    addFieldBlock(shift, ArrayFormulaShift(2, 3));
    ASSERT_NE(nullptr, shift.getArrayFormulaShift());
    EXPECT_EQ(2u, shift.getArrayFormulaShift()->getRowsCount());
    EXPECT_EQ(3u, shift.getArrayFormulaShift()->getColumnsCount());
    EXPECT_EQ(shift.getArrayFormulaShift(), getData<ArrayFormulaShift>(shift));
    Cell number;
    addFieldBlock(number, BlockValue<FloatNumber>(FloatNumber(1.5)));
    EXPECT_EQ(1.5, getData<BlockValue<FloatNumber>>(number)->getValue()._value);
    Cell error;
    addFieldBlock(error, BlockValue<FormulaErrorType>(FormulaErrorType::UnknownName));
    EXPECT_EQ(FormulaErrorType::UnknownName, getData<BlockValue<FormulaErrorType>>(error)->getValue());
    Cell truth;
    addFieldBlock(truth, BlockValue<bool>(true));
    EXPECT_TRUE(getData<BlockValue<bool>>(truth)->getValue());
    Cell contents;
    addFieldBlock(contents, TableOfContentsInfo());
    EXPECT_NE(nullptr, getData<TableOfContentsInfo>(contents));
}

TEST(Cell, CopiesDeeply)
{
    const Cell original = makeFullCell();
    Cell copy(original, static_cast<Cell::CopyStrategy>(0));
    EXPECT_TRUE(copy == original);
    EXPECT_EQ(original.getSharedStyle(), copy.getSharedStyle());
    EXPECT_NE(&*original.getPivotTable(), &*copy.getPivotTable());
    copy.getTextWithTombstones().getBlocks().clear();
    EXPECT_FALSE(copy == original);
    EXPECT_EQ(1u, original.getTextWithTombstones().getBlocks().size());
    Cell again = original;
    EXPECT_TRUE(again == original);
    const Cell moved = std::move(again);
    EXPECT_TRUE(moved == original);
}

TEST(Cell, CopiesTheStyleAlone)
{
    const Cell copy(makeFullCell(), Cell::CopyStrategy::StyleOnly);
    EXPECT_TRUE(copy.getSharedStyle()->get() == makeStyle(1)->get());
    EXPECT_TRUE(copy.isEmpty(WithTombstones::No));
    EXPECT_FALSE(copy.getPivotTable());
}

TEST(Cell, IsUnequalOnceAnyPartDiffers)
{
    const Cell full = makeFullCell();
    Cell other = full;
    other.getSharedStyle() = makeStyle(2);
    EXPECT_FALSE(other == full);
    other.getSharedStyle() = makeStyle(1);
    EXPECT_TRUE(other == full);

    Table table(3, 3);
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    EXPECT_FALSE(*table.getCell(RowIndex(0), ColumnIndex(0)) == Cell());
    table.setMergeProps(RowIndex(0), ColumnIndex(0), 0, 0);
    EXPECT_TRUE(*table.getCell(RowIndex(0), ColumnIndex(0)) == Cell());
    table.setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<PivotTable>());
    EXPECT_FALSE(*table.getCell(RowIndex(0), ColumnIndex(0)) == Cell());
}

TEST(Cell, ComesBackFromJson)
{
    EXPECT_TRUE(fromJson<Cell>(toJson(Cell())) == Cell());
    const Cell full = makeFullCell();
    EXPECT_TRUE(fromJson<Cell>(toJson(full)) == full);
}

} // namespace Zem::DOM::Tests

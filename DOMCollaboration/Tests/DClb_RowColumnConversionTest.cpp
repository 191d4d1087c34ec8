#include "DClb_Utils.h"

#include "DClb_RowColumnProps.h"

#include "TS_Assertions.h"

#include "DOM_Paragraph.h"
#include "DOM_Table.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;

namespace
{

using IndexIncludingTombstones = CollaborationUtils::IndexIncludingTombstones;

/// The functions for rows and columns alike. `at` is the place of a line and of one that crosses it.
struct Rows
{
    using Style = DOM::RowStyle;
    using Data = DOM::SparseRowData;
    using OtherStyle = DOM::ColumnStyle;

    static Data makeData(const DOM::Table& table, const SharedConstPtr<RowOrColumn>& line)
    {
        return Utils::makeRowData(table, line);
    }

    static Data takeOut(DOM::Table& table, unsigned long index)
    {
        return table.replaceRowWithTombstone(IndexIncludingTombstones(index));
    }

    static void putBack(DOM::Table& table, Data data, unsigned long index)
    {
        table.restoreRow(std::move(data), IndexIncludingTombstones(index));
    }

    static void markCrossing(DOM::Table& table, unsigned long index)
    {
        table.replaceColWithTombstone(IndexIncludingTombstones(index));
    }

    static DOM::Cell& getCell(DOM::Table& table, unsigned long line, unsigned long crossing)
    {
        return table.getOrCreateCell(RowIndex(line), ColumnIndex(crossing));
    }
};

struct Columns
{
    using Style = DOM::ColumnStyle;
    using Data = DOM::SparseColumnData;
    using OtherStyle = DOM::RowStyle;

    static Data makeData(const DOM::Table& table, const SharedConstPtr<RowOrColumn>& line)
    {
        return Utils::makeColumnData(table, line);
    }

    static Data takeOut(DOM::Table& table, unsigned long index)
    {
        return table.replaceColWithTombstone(IndexIncludingTombstones(index));
    }

    static void putBack(DOM::Table& table, Data data, unsigned long index)
    {
        table.restoreColumn(std::move(data), IndexIncludingTombstones(index));
    }

    static void markCrossing(DOM::Table& table, unsigned long index)
    {
        table.replaceRowWithTombstone(IndexIncludingTombstones(index));
    }

    static DOM::Cell& getCell(DOM::Table& table, unsigned long line, unsigned long crossing)
    {
        return table.getOrCreateCell(RowIndex(crossing), ColumnIndex(line));
    }
};

template<class Lines>
class RowColumnConversionTest : public testing::Test
{
protected:
    using Data = typename Lines::Data;

    /// 4 x 4; the line 1 has cells where it is crossed by the lines 0, 2 and 3, of which 0 is dead.
    RowColumnConversionTest()
        : _table(4, 4)
    {
        for (const unsigned long crossing : {0ul, 2ul, 3ul})
        {
            Lines::getCell(_table, 1, crossing)
                .getTextWithTombstones()
                .getBlocks()
                .push_back(std::make_unique<DOM::Paragraph>());
        }
        Lines::markCrossing(_table, 0);
    }

    template<class Style>
    static SharedConstPtr<DataValue> makeProps(unsigned long id, DOM::SharedStyleConstIPtr<Style> style)
    {
        return std::make_shared<SimpleDataValue<RowColumnProps<DOM::SharedStyleConstIPtr<Style>>>>(
            RowColumnProps<DOM::SharedStyleConstIPtr<Style>>{id, std::move(style)});
    }

    static SharedConstPtr<DataValue> makeCellValue(DOM::CellUPtr cell)
    {
        return std::make_shared<SimpleDataValue<DOM::CellUPtr>>(std::move(cell));
    }

    static SharedConstPtr<RowOrColumn> makeLine(SharedConstPtr<DataValue> props, std::vector<CellData> cells)
    {
        auto line = std::make_shared<RowOrColumn>();
        line->setProps(std::move(props));
        line->getCells() = std::move(cells);
        return line;
    }

    Data makeData(const SharedConstPtr<RowOrColumn>& line)
    {
        return Lines::makeData(_table, line);
    }

    DOM::Table _table;
};

using BothLines = testing::Types<Rows, Columns>;
TYPED_TEST_SUITE(RowColumnConversionTest, BothLines);

} // namespace

TYPED_TEST(RowColumnConversionTest, ALineTravelsAndComesBackAsItWas)
{
    const DOM::Table before(this->_table);
    const auto line = Utils::makeRowOrColumn(this->_table, TypeParam::takeOut(this->_table, 1));
    EXPECT_FALSE(before == this->_table);
    TypeParam::putBack(this->_table, this->makeData(line), 1);
    EXPECT_TRUE(before == this->_table);
}

TYPED_TEST(RowColumnConversionTest, IndicesStayLiveWithoutATableAndIncludeTombstonesWithOne)
{
    const auto getIndices = [](const RowOrColumn& line)
    {
        std::vector<unsigned long> indices;
        for (const CellData& cell : line.getCells())
        {
            EXPECT_FALSE(cell.isRemoved());
            indices.push_back(cell.getIndex());
        }
        return indices;
    };
    DOM::Table copy(this->_table);
    EXPECT_EQ((std::vector<unsigned long>{1, 2}), getIndices(Utils::makeRowOrColumn(TypeParam::takeOut(copy, 1))));
    EXPECT_EQ((std::vector<unsigned long>{2, 3}),
              getIndices(*Utils::makeRowOrColumn(this->_table, TypeParam::takeOut(this->_table, 1))));
}

TYPED_TEST(RowColumnConversionTest, ALineWithoutCellsIsItsStyleAndIdAlone)
{
    const DOM::SharedStyleConstIPtr<typename TypeParam::Style> style(
        new DOM::SharedStyle<typename TypeParam::Style>(typename TypeParam::Style()));
    const auto data = this->makeData(this->makeLine(this->makeProps(7, style), {}));
    EXPECT_EQ(7u, data._id);
    EXPECT_EQ(style, data._style);
    EXPECT_TRUE(data._cells.empty());
}

TYPED_TEST(RowColumnConversionTest, CellsMarkedAsRemovedAreLeftOut)
{
    const auto props = this->template makeProps<typename TypeParam::Style>(7, nullptr);
    const auto data =
        this->makeData(this->makeLine(props, {CellData(0, this->makeCellValue(std::make_unique<DOM::Cell>()), true),
                                              CellData(2, this->makeCellValue(std::make_unique<DOM::Cell>()), false)}));
    ASSERT_EQ(1u, data._cells.size());
    EXPECT_EQ(1u, data._cells[0].first.get());
}

TYPED_TEST(RowColumnConversionTest, CellsAreCopiedAndNullOnesStayNull)
{
    const auto props = this->template makeProps<typename TypeParam::Style>(7, nullptr);
    const auto value = this->makeCellValue(std::make_unique<DOM::Cell>());
    const auto data = this->makeData(
        this->makeLine(props, {CellData(1, value, false), CellData(2, this->makeCellValue(nullptr), false)}));
    ASSERT_EQ(2u, data._cells.size());
    EXPECT_NE(getSimpleDataValue<DOM::CellUPtr>(*value).get(), data._cells[0].second.get());
    EXPECT_TRUE(*getSimpleDataValue<DOM::CellUPtr>(*value) == *data._cells[0].second);
    EXPECT_FALSE(data._cells[1].second);
}

TYPED_TEST(RowColumnConversionTest, ACellInADeadLineFails)
{
    const auto props = this->template makeProps<typename TypeParam::Style>(7, nullptr);
    const auto line = this->makeLine(props, {CellData(0, this->makeCellValue(nullptr), false)});
    EXPECT_ASSERTION(this->makeData(line), "opt");
}

TYPED_TEST(RowColumnConversionTest, MissingPartsFail)
{
    EXPECT_ASSERTION(this->makeData(nullptr), "plainPtr");
    EXPECT_ASSERTION(this->makeData(this->makeLine(nullptr, {})), "plainPtr");
    const auto props = this->template makeProps<typename TypeParam::Style>(7, nullptr);
    EXPECT_ASSERTION(this->makeData(this->makeLine(props, {CellData(1, nullptr, false)})), "plainPtr");
}

TYPED_TEST(RowColumnConversionTest, PartsOfAnotherTypeAreABadCast)
{
    const auto otherProps = this->template makeProps<typename TypeParam::OtherStyle>(7, nullptr);
    EXPECT_THROW(this->makeData(this->makeLine(otherProps, {})), std::bad_cast);
    const auto props = this->template makeProps<typename TypeParam::Style>(7, nullptr);
    const auto wrong = std::make_shared<SimpleDataValue<bool>>(true);
    EXPECT_THROW(this->makeData(this->makeLine(props, {CellData(1, wrong, false)})), std::bad_cast);
}

TEST(RowColumnProps, CompareByIdAndStyleContent)
{
    using Props = RowColumnProps<DOM::SharedRowStyleConstIPtr>;
    DOM::RowStyle withParent;
    withParent.setParentUUID(UUID::generate());
    const auto make = [](const DOM::RowStyle& style) { return new DOM::SharedStyle<DOM::RowStyle>(style); };
    EXPECT_TRUE((Props{1, make(withParent)} == Props{1, make(withParent)}));
    EXPECT_FALSE((Props{1, make(withParent)} == Props{2, make(withParent)}));
    EXPECT_FALSE((Props{1, make(withParent)} == Props{1, make(DOM::RowStyle())}));
    EXPECT_FALSE((Props{1, make(withParent)} == Props{1, nullptr}));
}

} // namespace Zem::DOMCollaboration

#include "DOM_TextNesting.h"
#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_DocumentJson.h"
#include "DOM_PivotTable.h"

#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace Zem::DOM::Tests
{

namespace
{

template<class T>
Blocks makeBlocks(std::unique_ptr<T> block)
{
    Blocks blocks;
    blocks.push_back(std::move(block));
    return blocks;
}

/// A block with a text in which there is `inner`, which may be null.
using Wrap = std::unique_ptr<Block> (*)(std::unique_ptr<Block> inner);

std::unique_ptr<Block> wrapInShape(std::unique_ptr<Block> inner)
{
    auto shape = std::make_unique<Shape>();
    if (inner)
    {
        shape->getTextWithTombstones().getBlocks().push_back(std::move(inner));
    }
    return shape;
}

std::unique_ptr<Block> wrapInTable(std::unique_ptr<Block> inner)
{
    auto table = std::make_unique<Table>(3, 3);
    table->getOrCreateCell(RowIndex(0), ColumnIndex(0));
    Cell& cell = table->getOrCreateCell(RowIndex(1), ColumnIndex(1));
    if (inner)
    {
        cell.getTextWithTombstones().getBlocks().push_back(std::move(inner));
    }
    return table;
}

std::unique_ptr<Block> wrapInPivotTable(std::unique_ptr<Block> inner)
{
    auto table = std::make_unique<Table>(2, 2);
    auto pivotTable = std::make_unique<PivotTable>();
    Blocks blocks = inner ? makeBlocks(std::move(inner)) : Blocks();
    std::vector<PivotTableValue> values;
    values.emplace_back(std::move(blocks), nullptr);
    pivotTable->setCalculatedValues(std::move(values));
    table->setPivotTable(RowIndex(1), ColumnIndex(0), std::move(pivotTable));
    return table;
}

std::unique_ptr<Block> nest(Wrap wrap, unsigned long count)
{
    std::unique_ptr<Block> block;
    for (; count > 0; --count)
    {
        block = wrap(std::move(block));
    }
    return block;
}

/// How deep arrays and objects of a text lie in each other; it has no brackets in strings.
long getJsonNesting(const std::string& json)
{
    long depth = 0;
    long deepest = 0;
    for (const char character : json)
    {
        depth += (character == '{' || character == '[') ? 1 : (character == '}' || character == ']') ? -1 : 0;
        deepest = std::max(deepest, depth);
    }
    return deepest;
}

} // namespace

TEST(TextNesting, OfBlocksWithoutATextIsNone)
{
    EXPECT_EQ(0u, getTextNesting(Paragraph()));
    EXPECT_EQ(0u, getTextNesting(SectionTag()));
    EXPECT_EQ(0u, getTextNesting(FieldBlock()));
    EXPECT_EQ(0u, getTextNesting(Table(3, 3)));
    EXPECT_EQ(0u, getTextNesting(Table()));
}

TEST(TextNesting, CountsTheTextsInEachOther)
{
    for (const Wrap wrap : {&wrapInShape, &wrapInTable, &wrapInPivotTable})
    {
        EXPECT_EQ(1u, getTextNesting(*nest(wrap, 1)));
        EXPECT_EQ(7u, getTextNesting(*nest(wrap, 7)));
    }
    EXPECT_EQ(3u, getTextNesting(*wrapInShape(wrapInTable(wrapInPivotTable(nullptr)))));
}

TEST(TextNesting, LooksAtTheDeepestOfManyTexts)
{
    Table table(9, 9);
    for (unsigned long row = 0; row < 9; ++row)
    {
        table.getOrCreateCell(RowIndex(row), ColumnIndex(row))
            .getTextWithTombstones()
            .getBlocks()
            .push_back(nest(&wrapInShape, row == 4 ? 5 : 1));
    }
    EXPECT_EQ(6u, getTextNesting(table));
}

TEST(TextNesting, AsDeepAsAllowedLeavesRoomForWhatIsAroundItInJson)
{
    for (const Wrap wrap : {&wrapInShape, &wrapInTable, &wrapInPivotTable})
    {
        Document document;
        document.getTextWithTombstones().getBlocks().push_back(nest(wrap, maximalTextNesting - 1));
        const std::string json = toJson(document);
        EXPECT_LT(getJsonNesting(json), static_cast<long>(maximalJsonNesting) * 9 / 10);
        EXPECT_TRUE(fromJson(json) == document);
    }
}

} // namespace Zem::DOM::Tests

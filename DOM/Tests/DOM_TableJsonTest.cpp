#include "DOM_NaiveTable.h"
#include "DOM_Table.h"

#include "Util_BaseRuntimeError.h"
#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

using Place = CollaborationUtils::IndexIncludingTombstones;

void setText(Table& table, unsigned long row, unsigned long column, const std::string& text)
{
    table.getOrCreateCell(RowIndex(row), ColumnIndex(column)).getTextWithTombstones() =
        makeCell(text).getTextWithTombstones();
}

} // namespace

TEST(TableJson, TravelsSparsely)
{
    Table table(1048576, 16384);
    setText(table, 1000000, 16000, "x");
    table.setSharedStyle(makeRowStyle(1), RowIndex(5));
    table.setMergeProps(RowIndex(3), ColumnIndex(3), 1, 1);
    const std::string text = toJson(table);
    EXPECT_LT(text.size(), 4000u);
    EXPECT_TRUE(fromJson<Table>(text) == table);
    EXPECT_TRUE(fromJson<Table>(text).getMergedCellRoot(RowIndex(4), ColumnIndex(4)) ==
                CellIndex(RowIndex(3), ColumnIndex(3)));
}

TEST(TableJson, RefusesWhatIsBroken)
{
    Table table(2, 2);
    setText(table, 1, 1, "x");
    table.setSharedStyle(makeColumnStyle(1), ColumnIndex(0));
    const std::string text = toJson(table);
    const auto replaced = [&](const std::string& from, const std::string& to)
    {
        std::string changed = text;
        const std::size_t position = changed.find(from);
        EXPECT_NE(std::string::npos, position) << from << " in " << text;
        return changed.replace(position, from.size(), to);
    };
    const std::string rows = R"("_rows":{"_runs":[{"_firstID":0,"_count":2,"_isLive":true}]})";
    EXPECT_TRUE(fromJson<Table>(replaced(rows, rows)) == table);
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {rows, R"("_rows":{"_runs":[{"_firstID":0,"_count":1,"_isLive":true}]})"},
             {rows, R"("_rows":{"_runs":[{"_firstID":0,"_count":2,"_isLive":false}]})"},
             {rows, R"("_rows":{"_runs":[{"_firstID":0,"_count":0,"_isLive":true}]})"},
             {R"("_columnStyles":[{"_index":{"_value":0})", R"("_columnStyles":[{"_index":{"_value":2})"},
             {R"("_frames":{"_elements":[])", R"("_frames":{"_elements":[{"ptr_wrapper":{"valid":0}}])"},
             {R"("_conditionalFormats":{"_elements":[])",
              R"("_conditionalFormats":{"_elements":[{"ptr_wrapper":{"valid":0}}])"},
             {R"("_cells":[)", R"("_cells":[7,)"},
             {R"("_rows":)", R"("_lines":)"}})
    {
        EXPECT_THROW(fromJson<Table>(replaced(from, to)), std::runtime_error) << to;
    }
}

TEST(TableJson, RefusesCellsOutOfOrder)
{
    Table table(2, 2);
    setText(table, 0, 0, "x");
    setText(table, 1, 1, "x");
    std::string text = toJson(table);
    const std::string first = R"("cellIndices.rowIndex":{"_value":0},"cellIndices.colIndex":{"_value":0})";
    const std::string second = R"("cellIndices.rowIndex":{"_value":1},"cellIndices.colIndex":{"_value":1})";
    text.replace(text.find(first), first.size(), second);
    EXPECT_THROW(fromJson<Table>(text), BaseRuntimeError);
    text.replace(text.rfind(second), second.size(), first);
    EXPECT_THROW(fromJson<Table>(text), BaseRuntimeError);
}

TEST(TableJson, RefusesTombstonesOfFramesBehindMoreThanThereAre)
{
    Table table(1, 1);
    table.getFrames().getElements().push_back(std::make_unique<Frame>());
    table.getFrames().getTombstones().replaceWithTombstone(Place(1));
    EXPECT_TRUE(fromJson<Table>(toJson(table)) == table);
    table.getFrames().getTombstones().replaceWithTombstone(Place(5));
    try
    {
        fromJson<Table>(toJson(table));
        ADD_FAILURE() << "was to be refused";
    }
    catch (const BaseRuntimeError& error)
    {
        EXPECT_STREQ("Frames: The last tombstone stands behind 4 live slots, but there are 1.", error.what());
    }
}

TEST(TableJson, RefusesMoreRowsThanCanBeCounted)
{
    const std::string text = toJson(Table(1, 1));
    const std::string rows = R"("_rows":{"_runs":[{"_firstID":0,"_count":1,"_isLive":true}]})";
    const auto read = [&](const std::string& runs)
    {
        std::string changed = text;
        return fromJson<Table>(changed.replace(changed.find(rows), rows.size(), R"("_rows":{"_runs":[)" + runs + "]}"));
    };
    EXPECT_EQ(1UL << 62, read(R"({"_firstID":0,"_count":4611686018427387904,"_isLive":true})").getAllRowsCount().get());
    EXPECT_THROW(read(R"({"_firstID":0,"_count":4611686018427387905,"_isLive":true})"), BaseRuntimeError);
    EXPECT_THROW(read(R"({"_firstID":0,"_count":4611686018427387904,"_isLive":true},)"
                      R"({"_firstID":4611686018427387904,"_count":1,"_isLive":false})"),
                 BaseRuntimeError);
    EXPECT_THROW(read(R"({"_firstID":18446744073709551615,"_count":2,"_isLive":true})"), BaseRuntimeError);
    EXPECT_THROW(read(R"({"_firstID":3,"_count":2,"_isLive":true},{"_firstID":4,"_count":1,"_isLive":false})"),
                 BaseRuntimeError);
}

} // namespace Zem::DOM::Tests

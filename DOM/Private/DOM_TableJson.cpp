// The JSON form of tables. It is as sparse as they are: rows and columns travel as runs, and beside these only the
// lines that have a style and the cells that exist, each with its live indices, in order.

#include "DOM_Json.h"
#include "DOM_Table.h"
#include "DOM_TableGrid.h"
#include "DOM_TombstonesLimits.h"

#include "CU_Json.h"

#include <optional>
#include <string>

namespace Zem::DOM
{

namespace
{

/// The style of one row or column.
template<class Axis>
struct LineStyleEntry
{
    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::make_nvp("_index", _index), cereal::make_nvp("_style", _style));
    }

    typename Axis::Index _index;
    SharedStyleConstIPtr<typename Axis::Style> _style;
};

template<class Axis>
using LineStyleEntries = std::vector<LineStyleEntry<Axis>>;

/// The styles that the archive writes; a line whose style it writes as null is left out.
template<class Axis>
LineStyleEntries<Axis> getLineStyles(cereal::JSONOutputArchive& archive, const TableLines<Axis>& lines)
{
    LineStyleEntries<Axis> entries;
    for (const Line<Axis>& line : lines.getOrderedLines())
    {
        if (const auto& style = JsonDetails::findWrittenPointer(archive, line._style))
        {
            entries.push_back({lines.getIndex(line), style});
        }
    }
    return entries;
}

std::string quote(const CellIndex& index)
{
    return std::to_string(index.rowIndex.get()) + ", " + std::to_string(index.colIndex.get());
}

template<class Axis>
void setLineStyles(TableGrid& grid, LineStyleEntries<Axis> entries)
{
    std::optional<typename Axis::Index> previous;
    for (LineStyleEntry<Axis>& entry : entries)
    {
        if (!grid.getLines<Axis>().contains(entry._index) || (previous && entry._index <= *previous) || !entry._style)
        {
            throw BaseRuntimeError("The style of row or column " + std::to_string(entry._index.get()) +
                                   " is null, out of order, or outside the table");
        }
        previous = entry._index;
        grid.setLineStyle<Axis>(std::move(entry._style), entry._index);
    }
}

/// A cell in its place, as it is written.
struct CellOutput
{
    template<class Archive>
    void save(Archive& archive) const
    {
        archive(cereal::make_nvp("_index", _index), cereal::make_nvp("_cell", *_cell));
    }

    CellIndex _index;
    const Cell* _cell;
};

/// A cell in its place, as it is read.
struct CellInput
{
    template<class Archive>
    void load(Archive& archive)
    {
        archive(cereal::make_nvp("_index", _index), cereal::make_nvp("_cell", _cell));
    }

    CellIndex _index;
    Cell _cell;
};

std::vector<CellOutput> getCells(const TableGrid& grid)
{
    std::vector<CellOutput> cells;
    cells.reserve(grid.getCellsCount());
    for (const Line<RowAxis>& row : grid.getLines<RowAxis>().getOrderedLines())
    {
        for (const CellSlot& slot : row._cells)
        {
            cells.push_back({grid.getCellIndex(slot), &slot._cell});
        }
    }
    return cells;
}

void setCells(TableGrid& grid, std::vector<CellInput> cells)
{
    std::optional<CellIndex> previous;
    for (CellInput& cell : cells)
    {
        const bool isInside = grid.getLines<RowAxis>().contains(cell._index.rowIndex) &&
                              grid.getLines<ColumnAxis>().contains(cell._index.colIndex);
        if (!isInside || (previous && cell._index <= *previous))
        {
            throw BaseRuntimeError("The cell at " + quote(cell._index) + " is out of order, or outside the table");
        }
        previous = cell._index;
        grid.insertCell(cell._index, std::move(cell._cell));
    }
}

void saveGrid(cereal::JSONOutputArchive& archive, const TableGrid& grid)
{
    const TableLines<RowAxis>& rows = grid.getLines<RowAxis>();
    const TableLines<ColumnAxis>& columns = grid.getLines<ColumnAxis>();
    archive(cereal::make_nvp("_rows", rows.getIDs()), cereal::make_nvp("_columns", columns.getIDs()),
            cereal::make_nvp("_rowStyles", getLineStyles(archive, rows)),
            cereal::make_nvp("_columnStyles", getLineStyles(archive, columns)),
            cereal::make_nvp("_cells", getCells(grid)));
}

std::unique_ptr<TableGrid> loadGrid(cereal::JSONInputArchive& archive)
{
    TombstonesWithIDsStorage rows;
    TombstonesWithIDsStorage columns;
    LineStyleEntries<RowAxis> rowStyles;
    LineStyleEntries<ColumnAxis> columnStyles;
    std::vector<CellInput> cells;
    archive(cereal::make_nvp("_rows", rows), cereal::make_nvp("_columns", columns),
            cereal::make_nvp("_rowStyles", rowStyles), cereal::make_nvp("_columnStyles", columnStyles),
            cereal::make_nvp("_cells", cells));
    auto grid = std::make_unique<TableGrid>(std::move(rows), std::move(columns));
    setLineStyles<RowAxis>(*grid, std::move(rowStyles));
    setLineStyles<ColumnAxis>(*grid, std::move(columnStyles));
    setCells(*grid, std::move(cells));
    return grid;
}

template<class V>
void requireSound(const CollaborationUtils::CollectionWithTombstones<V>& collection, const std::string& kind)
{
    if (const std::optional<std::string> problem = TombstonesLimits::findProblem(collection, kind))
    {
        throw BaseRuntimeError(*problem);
    }
}

/// One run of rows or columns.
struct RunEntry
{
    template<class Archive>
    void serialize(Archive& archive)
    {
        archive(cereal::make_nvp("_firstID", _run._firstID), cereal::make_nvp("_count", _run._count),
                cereal::make_nvp("_isLive", _run._isLive));
    }

    TombstonesWithIDsStorage::Run _run;
};

} // namespace

template<class Archive>
void TombstonesWithIDsStorage::save(Archive& archive) const
{
    std::vector<RunEntry> entries;
    for (const Run& run : getRuns())
    {
        entries.push_back({run});
    }
    archive(cereal::make_nvp("_runs", entries));
}

template<class Archive>
void TombstonesWithIDsStorage::load(Archive& archive)
{
    std::vector<RunEntry> entries;
    archive(cereal::make_nvp("_runs", entries));
    std::vector<Run> runs;
    for (const RunEntry& entry : entries)
    {
        runs.push_back(entry._run);
    }
    *this = TombstonesWithIDsStorage(runs);
}

template<class Archive>
void Table::serialize(Archive& archive)
{
    archive(cereal::base_class<UUIDable>(this), cereal::make_nvp("_name", _name),
            cereal::make_nvp("_sharedStyle", _sharedStyle), cereal::make_nvp("_filterInfo", _filterInfo),
            cereal::make_nvp("_headerRowsCols", _headerRowsCols), cereal::make_nvp("_settings", _settings),
            cereal::make_nvp("_conditionalFormats", _conditionalFormats), cereal::make_nvp("_frames", _frames));
    if constexpr (Archive::is_loading::value)
    {
        requireSound(_conditionalFormats, "Conditional format");
        requireSound(_frames, "Frame");
        _grid = loadGrid(archive);
    }
    else
    {
        saveGrid(archive, getGrid());
    }
}

ZEM_JSON_OF_FIELDS(HeaderRowsCols)
ZEM_JSON_OF_FIELDS(GroupingProps)
ZEM_JSON_OF_FIELDS(TableSettings)
ZEM_JSON_OF_FIELDS(ColumnFilter)
ZEM_JSON_OF_FIELDS(TableFilterInfo)
ZEM_JSON_OF_FIELDS(Condition)
ZEM_JSON_OF_FIELDS(ConditionalFormat)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(TombstonesWithIDsStorage)
ZEM_INSTANTIATE_JSON(Table)

} // namespace Zem::DOM

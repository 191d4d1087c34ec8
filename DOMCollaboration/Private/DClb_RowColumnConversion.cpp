#include "DClb_Utils.h"

#include "DClb_RowColumnProps.h"
#include "DClb_TableLines.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <memory>
#include <utility>

namespace Zem::DOMCollaboration::Utils
{

using CollaborationEngine::CellData;
using CollaborationEngine::DataValue;
using CollaborationEngine::RowOrColumn;
using CollaborationEngine::SimpleDataValue;

namespace
{

template<class Lines>
using LineProps = SimpleDataValue<RowColumnProps<DOM::SharedStyleConstIPtr<typename Lines::Style>>>;

using CellValue = SimpleDataValue<DOM::CellUPtr>;

/// Null if there is no cell in the value.
DOM::CellUPtr copyCell(const SharedConstPtr<DataValue>& value)
{
    const DOM::CellUPtr& cell = cast<CellValue>(derefPtr(value)).getValue();
    return cell ? std::make_unique<DOM::Cell>(*cell, DOM::Cell::CopyStrategy::Everything) : nullptr;
}

template<class Lines>
DOM::SparseData<typename Lines::Style> makeLineData(const DOM::Table& table,
                                                    const SharedConstPtr<RowOrColumn>& rowOrColumn)
{
    const RowOrColumn& line = derefPtr(rowOrColumn);
    const auto& props = cast<LineProps<Lines>>(derefPtr(line.getProps())).getValue();
    DOM::SparseData<typename Lines::Style> data{{}, props.style, props.id};
    data._cells.reserve(line.getCells().size());
    for (const CellData& cell : line.getCells())
    {
        if (cell.isRemoved())
        {
            continue;
        }
        const auto opt =
            CrossingLines<Lines>::convertIndex(table, CollaborationUtils::IndexIncludingTombstones(cell.getIndex()));
        ZEM_ASSERT(opt);
        data._cells.emplace_back(*opt, copyCell(cell.getData()));
    }
    return data;
}

template<class Lines>
RowOrColumn makeLine(DOM::SparseData<typename Lines::Style> data)
{
    RowOrColumn line;
    line.setProps(std::make_shared<LineProps<Lines>>(
        RowColumnProps<DOM::SharedStyleConstIPtr<typename Lines::Style>>{data._id, data._style}));
    line.getCells().reserve(data._cells.size());
    for (auto& [index, cell] : data._cells)
    {
        line.getCells().emplace_back(index.get(), std::make_shared<CellValue>(std::move(cell)), false);
    }
    return line;
}

template<class Lines>
SharedConstPtr<RowOrColumn> makeLineOf(const DOM::Table& table, DOM::SparseData<typename Lines::Style> data)
{
    auto line = std::make_shared<RowOrColumn>(makeLine<Lines>(std::move(data)));
    for (CellData& cell : line->getCells())
    {
        cell.setIndex(
            CrossingLines<Lines>::convertToIncludingTombstones(table, typename Lines::CrossingIndex(cell.getIndex())));
    }
    return line;
}

} // namespace

DOM::SparseRowData makeRowData(const DOM::Table& table, const SharedConstPtr<RowOrColumn>& rowOrColumn)
{
    return makeLineData<TableRows>(table, rowOrColumn);
}

DOM::SparseColumnData makeColumnData(const DOM::Table& table, const SharedConstPtr<RowOrColumn>& rowOrColumn)
{
    return makeLineData<TableColumns>(table, rowOrColumn);
}

RowOrColumn makeRowOrColumn(DOM::SparseRowData data)
{
    return makeLine<TableRows>(std::move(data));
}

RowOrColumn makeRowOrColumn(DOM::SparseColumnData data)
{
    return makeLine<TableColumns>(std::move(data));
}

SharedConstPtr<RowOrColumn> makeRowOrColumn(const DOM::Table& table, DOM::SparseRowData data)
{
    return makeLineOf<TableRows>(table, std::move(data));
}

SharedConstPtr<RowOrColumn> makeRowOrColumn(const DOM::Table& table, DOM::SparseColumnData data)
{
    return makeLineOf<TableColumns>(table, std::move(data));
}

} // namespace Zem::DOMCollaboration::Utils

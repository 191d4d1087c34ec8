#include "DClb_Utils.h"

#include "DClb_ElementPathUtils.h"
#include "DClb_RowColumnProps.h"
#include "DClb_TableLines.h"
#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"

#include "DOM_TextWithTombstones.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_Visitor.h"

#include <boost/variant.hpp>

#include <memory>
#include <utility>

namespace Zem::DOMCollaboration::Utils
{

using CollaborationEngine::RowOrColumn;

namespace
{

template<class Adapter>
auto& findMainText(Adapter& adapter)
{
    using Text = std::conditional_t<std::is_const_v<Adapter>, const DOM::TextWithTombstones, DOM::TextWithTombstones>;
    using Blocks =
        std::conditional_t<std::is_const_v<Adapter>, const BlocksAdapterWithNodeAdapter, BlocksAdapterWithNodeAdapter>;
    return *visitWith<Text*>(
        adapter, [](Blocks& blocks) -> Text* { return &blocks.getTextWithTombstones(); },
        [](auto& document) -> Text* { return &document.getDocument().getTextWithTombstones(); });
}

} // namespace

DOM::TextWithTombstones& getMainTextWithTombstones(DocumentAdapterWithNodeAdapter& adapter)
{
    return findMainText(adapter);
}

const DOM::TextWithTombstones& getMainTextWithTombstones(const DocumentAdapterWithNodeAdapter& adapter)
{
    return findMainText(adapter);
}

bool isNeededUnmergeToInsertInTable(unsigned long liveCount, unsigned long index)
{
    return index != 0 && index != liveCount;
}

bool isLastVisibleBlock(const ReadonlyVector<DOM::Blocks>& blocks, const DOM::Table& table)
{
    for (const DOM::Block& block : blocks)
    {
        if (&block == &table)
        {
            continue;
        }
        const auto* otherTable = cast<DOM::Table>(&block);
        const auto* props = otherTable ? otherTable->getStyle().getTableProps().get() : nullptr;
        if (!props || props->isVisible())
        {
            return false;
        }
    }
    return true;
}

bool canInsertPivotTable(const DOM::Table& table, RowIndex row, ColumnIndex column, const Size2D<unsigned>& size)
{
    const TableRange tableRange(row, column, row + size._height, column + size._width);
    for (const CellIndex& root : table.getPivotTablesInRange(tableRange))
    {
        if (root != CellIndex(row, column))
        {
            return false;
        }
    }
    const auto range = table.getRangeIterators(tableRange);
    for (auto cell = range.first; cell != range.second; ++cell)
    {
        if (!derefPtr(*cell).isEmpty(CollaborationUtils::WithTombstones::No))
        {
            return false;
        }
    }
    return true;
}

void clearCellIfNeeded(DocumentAdapterWithNodeAdapter& adapter, const DOM::NativeNodeAddress& address)
{
    const auto collectionPlace = DOM::NodeAddressUtils::findLastItem(address, DOM::NativeDOMNodeType::CellCollection);
    if (!collectionPlace || *collectionPlace + 1 == address.getSize())
    {
        return;
    }
    const auto* cellIndices = boost::get<NodeAddressing::AddressInTable>(&address.getItem(*collectionPlace + 1));
    ZEM_ASSERT(cellIndices);

    using Adapter = GenericCellCollectionNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, false>;
    const DOM::NativeNodeAddress cellsAddress = address.getTrimmedAtEnd(address.getSize() - *collectionPlace - 1);
    DOM::Table& table = ElementPathUtils::createDOMNodeAdapterAs<Adapter>(adapter, cellsAddress)->getTable();
    const DOM::Cell* cell = table.getCell(cellIndices->getRow(), cellIndices->getColumn());
    if (cell && cell->isEmpty(CollaborationUtils::WithTombstones::Yes) && !cell->getPivotTable())
    {
        table.removeCell(cellIndices->getRow(), cellIndices->getColumn());
    }
}

} // namespace Zem::DOMCollaboration::Utils

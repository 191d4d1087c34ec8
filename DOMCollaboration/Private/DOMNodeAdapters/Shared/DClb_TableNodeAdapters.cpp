#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"

#include "DOMNodeAdapters/Shared/DClb_CellNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"

#include "DOM_Table.h"

#include "Util_TableIndices.h"

#include <optional>

namespace Zem::DOMCollaboration
{

namespace
{

/// The live position that an address names; empty where it names a tombstone's row or column.
std::optional<CellIndex> findLivePosition(const DOM::Table& table, const NodeAddressing::AddressInTable& address,
                                          bool includingTombstones)
{
    if (!includingTombstones)
    {
        return CellIndex(address.getRow(), address.getColumn());
    }
    const std::optional<RowIndex> row = table.convertRowIndex(IndexIncludingTombstones(address.getRow().get()));
    const std::optional<ColumnIndex> column =
        table.convertColIndex(IndexIncludingTombstones(address.getColumn().get()));
    if (!row || !column)
    {
        return std::nullopt;
    }
    return CellIndex(*row, *column);
}

} // namespace

template<class Tag, class NodeType, bool isConst>
typename GenericTableNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericTableNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericTableNodeAdapter::FixedChunk& childAddress, bool)
{
    using CellCollection = GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>;
    using FrameCollection = GenericFrameCollectionNodeAdapter<Tag, NodeType, isConst>;
    using FormatCollection = GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, isConst>;
    switch (childAddress.getNodeType())
    {
    case CellCollection::nodeTypeInWorld:
        return std::make_unique<CellCollection>(getTable());
    case FrameCollection::nodeTypeInWorld:
        return std::make_unique<FrameCollection>(getTable());
    case FormatCollection::nodeTypeInWorld:
        return std::make_unique<FormatCollection>(getTable());
    default:
        return nullptr;
    }
}

template<class Tag, class NodeType, bool isConst>
typename GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const NodeAddressing::AddressInTable& childAddress, bool includingTombstones)
{
    auto& table = getTable();
    const std::optional<CellIndex> position = findLivePosition(table, childAddress, includingTombstones);
    if (!position)
    {
        return std::make_unique<GenericTombstoneNodeAdapter<Tag, NodeType, isConst>>();
    }
    const RowIndex rowsCount(table.getLiveRowsCount().get());
    const ColumnIndex columnsCount(table.getLiveColsCount().get());
    if (position->rowIndex > rowsCount || position->colIndex > columnsCount)
    {
        return nullptr;
    }
    if (position->rowIndex == rowsCount || position->colIndex == columnsCount)
    {
        return std::make_unique<GenericCollectionEndMarkNodeAdapter<Tag, NodeType, isConst>>(this->nodeTypeInWorld);
    }
    return CellAdapterCreator<isConst>::template makeCell<Tag, NodeType>(table, position->rowIndex, position->colIndex);
}

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTableNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericCellCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

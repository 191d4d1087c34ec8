// Addresses and positions that lead into a table.

#include "CE_ListAddresses.h"
#include "CE_TableOperands.h"
#include "CE_TableTransformers.h"

namespace Zem::CollaborationEngine
{

namespace
{

using NodeAddressing::AddressInTable;

template<class Tag>
unsigned long getTableIndex(const AddressInTable& chunk)
{
    if constexpr (std::is_same_v<Tag, RowTag>)
    {
        return chunk.getRow().get();
    }
    else
    {
        return chunk.getColumn().get();
    }
}

template<class Tag>
void setTableIndex(AddressInTable& chunk, unsigned long index)
{
    if constexpr (std::is_same_v<Tag, RowTag>)
    {
        chunk.setRow(AddressInTable::Row(index));
    }
    else
    {
        chunk.setColumn(AddressInTable::Column(index));
    }
}

template<class Tag>
AddressChange includeInTableAddress(OperationNodeAddress& address, const TableRowOrColumnOperation<Tag>& operation)
{
    const unsigned long chunkIndex = operation.getNodeAddress().getSize();
    auto* chunk = boost::get<AddressInTable>(&address.getItem(chunkIndex));
    const auto slots = describeSlots(operation.getNestedOperation(), nullptr);
    if (!chunk || !slots)
    {
        return AddressChange{};
    }
    unsigned long index = getTableIndex<Tag>(*chunk);
    DeadPlace deadPlace;
    deadPlace._chunkIndex = chunkIndex;
    deadPlace._kind = getDeadPlaceKind(std::is_same_v<Tag, RowTag>);
    const AddressChange change = changeElement(index, *slots, deadPlace);
    setTableIndex<Tag>(*chunk, index);
    return change;
}

template<class Tag>
void moveInTable(NodeAddressWithTransformationData& position, const TableRowOrColumnOperation<Tag>& operation,
                 bool isExclusion)
{
    const unsigned long chunkIndex = operation.getNodeAddress().getSize();
    auto* chunk = boost::get<AddressInTable>(&position.getAddress().getItem(chunkIndex));
    const auto slots = describeSlots(operation.getNestedOperation(), nullptr);
    if (!chunk || !slots)
    {
        return;
    }
    const auto index =
        movePosition(getTableIndex<Tag>(*chunk), position, operation, isExclusion ? reverseSlots(*slots) : *slots);
    if (index)
    {
        setTableIndex<Tag>(*chunk, *index);
        followInContainers(position, chunkIndex);
    }
}

} // namespace

AddressChange AncestorTableModificationTransformer::include(OperationNodeAddress& address,
                                                            const HierarchicalOperation& modification) const
{
    return visitWith<AddressChange>(castToFamily<TableOperation>(modification),
                                    [&](const auto& operation) { return includeInTableAddress(address, operation); });
}

void TableNodePositionTransformer::include(const HierarchicalOperation& operation,
                                           NodeAddressWithTransformationData& position) const
{
    visitWith(castToFamily<TableOperation>(operation),
              [&](const auto& tableOperation) { moveInTable(position, tableOperation, false); });
}

void TableNodePositionTransformer::exclude(const HierarchicalOperation& operation,
                                           NodeAddressWithTransformationData& position) const
{
    visitWith(castToFamily<TableOperation>(operation),
              [&](const auto& tableOperation) { moveInTable(position, tableOperation, true); });
}

} // namespace Zem::CollaborationEngine

#include "OperationNotation.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"

#include "Util_Cast.h"

#include <type_traits>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using FixedChunk = OperationNodeAddress::FixedChunk;
using Items = SimpleItemsCollection<std::vector<char>>;
using RowOrColumnInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
using RowOrColumnMark = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
using RowOrColumnRestore = TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>;

std::string describeChunk(const FixedChunk& chunk)
{
    return "/" + std::to_string(chunk.getNodeType());
}

std::string describeChunk(const NodeAddressing::AddressInList& chunk)
{
    return "[" + std::to_string(chunk.getIndex()) + "]";
}

std::string describeChunk(const NodeAddressing::AddressInTable& chunk)
{
    return "[" + std::to_string(chunk.getRow().get()) + "," + std::to_string(chunk.getColumn().get()) + "]";
}

std::string describeKey(const SharedConstPtr<NodeAddressing::MapKey>& key)
{
    const auto* text = cast<NodeAddressing::SimpleValueMapKey<std::string>>(key.get());
    return text ? text->getValue() : "?";
}

std::string describeChunk(const NodeAddressing::AddressInMap& chunk)
{
    return "[" + describeKey(chunk.getKey()) + "]";
}

std::string describeAddress(const OperationNodeAddress& address)
{
    std::string text;
    for (const auto& item : address.getItems())
    {
        text += boost::apply_visitor([](const auto& chunk) { return describeChunk(chunk); }, item);
    }
    return text;
}

std::string describeItems(const SharedConstPtr<ItemsCollection>& data)
{
    if (!data)
    {
        return "";
    }
    if (const auto* items = cast<Items>(data.get()))
    {
        return ", " + std::string(items->getCollection().begin(), items->getCollection().end());
    }
    return ", " + std::to_string(data->getSize()) + " items";
}

std::string describeCells(const SharedConstPtr<RowOrColumn>& data)
{
    std::string text;
    for (const CellData& cell : data ? data->getCells() : std::vector<CellData>())
    {
        text += " " + std::to_string(cell.getIndex()) + (cell.isRemoved() ? "removed" : "");
    }
    return text.empty() ? "" : ", cells" + text;
}

template<class T>
const char* getName()
{
    if constexpr (std::is_same_v<T, ListModificationOperation<InsertTag>>)
    {
        return "insert";
    }
    else if constexpr (std::is_same_v<T, ListModificationOperation<RemoveTag>>)
    {
        return "remove";
    }
    else if constexpr (std::is_same_v<T, ListModificationOperation<MarkAsRemovedTag>>)
    {
        return "mark";
    }
    else if constexpr (std::is_same_v<T, ListModificationOperation<RestoreTag>>)
    {
        return "restore";
    }
    else
    {
        return "leave";
    }
}

template<class T>
std::string describeSingle(const T& operation)
{
    const IndexRange<unsigned long>& range = operation.getRange();
    std::string text =
        getName<T>() + std::string("(") + std::to_string(range.getBegin()) + "," + std::to_string(range.getCount());
    if constexpr (std::is_same_v<T, ListLeaveTombstonesOperation>)
    {
        text += ", holders " + std::to_string(operation.getHoldersCount());
    }
    return text + describeItems(operation.getData()) + ")";
}

std::string describeSingle(const ListMoveOperation& operation)
{
    return "move(" + std::to_string(operation.getRange().getBegin()) + ", by " + std::to_string(operation.getOffset()) +
           ")";
}

std::string describeNested(const TableRowOperation::NestedOperation& nestedOperation)
{
    const Overloads overloads{
        [](const RowOrColumnInsert& nested) { return "insert(" + std::to_string(nested.getIndex()); },
        [](const RowOrColumnRemoveOperation& nested) { return "remove(" + std::to_string(nested.getIndex()); },
        [](const RowOrColumnMark& nested) { return "mark(" + std::to_string(nested.getIndex()); },
        [](const RowOrColumnRestore& nested) { return "restore(" + std::to_string(nested.getIndex()); },
        [](const RowOrColumnMoveOperation& nested)
        { return "move(" + std::to_string(nested.getIndex()) + ", by " + std::to_string(nested.getOffset()); },
        [](const RowOrColumnLeaveTombstoneOperation& nested) {
            return "leave(" + std::to_string(nested.getIndex()) + ", holders " +
                   std::to_string(nested.getHoldersCount());
        },
        [](const SetRowOrColumnPropertyOperation& nested) { return "set(" + std::to_string(nested.getIndex()); }};
    return boost::apply_visitor(
        [&](const auto& nested)
        {
            std::string text = overloads(nested);
            if constexpr (std::is_base_of_v<TableRowOrColumnDataOperation, std::decay_t<decltype(nested)>>)
            {
                text += describeCells(nested.getRowOrColumn());
            }
            return text + ")";
        },
        nestedOperation);
}

std::string describeValue(const MapInsertOrRemoveOperation<MapInsertTag>& insert)
{
    const auto* value = cast<SimpleDataValue<char>>(insert.getData().get());
    return value ? std::string("=") + value->getValue() : "";
}

std::string describeMap(const MapOperation& operation)
{
    if (const auto* insert = cast<MapInsertOrRemoveOperation<MapInsertTag>>(&operation))
    {
        return "insert(" + describeKey(operation.getKey()) + describeValue(*insert) + ")";
    }
    const auto* leave = cast<MapLeaveRemovedOperation>(&operation);
    const std::string kind = leave ? "leave holders " + std::to_string(leave->getHoldersCount()) : "remove";
    return kind + "(" + describeKey(operation.getKey()) + ")";
}

std::string describeOnNode(const AtomicOperation& operation)
{
    if (const auto* table = cast<TableOperation>(&operation))
    {
        return visitWith<std::string>(
            *table,
            [](const auto& typed)
            {
                const bool isRow = std::is_same_v<std::decay_t<decltype(typed)>, TableRowOperation>;
                return (isRow ? "row " : "column ") + describeNested(typed.getNestedOperation());
            });
    }
    if (const auto* map = cast<MapOperation>(&operation))
    {
        return describeMap(*map);
    }
    if (const auto* property = cast<SetPropertyOperation>(&operation))
    {
        return "set(property " + std::to_string(property->getPropertyID()) + ")";
    }
    if (const auto* list = cast<ListOperation>(&operation))
    {
        return visitWith<std::string>(*list, [](const auto& single) { return describeSingle(single); });
    }
    if (const auto* multirange = cast<ListMultirangeOperation>(&operation))
    {
        return visitWith<std::string>(*multirange,
                                      [](const auto& pieces)
                                      {
                                          std::string text = "multi{";
                                          for (const auto& piece : pieces.getNestedOperations())
                                          {
                                              text += describeSingle(piece) + " ";
                                          }
                                          return text + "}";
                                      });
    }
    return "another operation";
}

std::string describeAtomic(const AtomicOperation& operation)
{
    const auto* hierarchical = cast<HierarchicalOperation>(&operation);
    return hierarchical ? describeAddress(hierarchical->getNodeAddress()) + " " + describeOnNode(operation)
                        : describeOnNode(operation);
}

std::string describeShadows(const Shadows& shadows)
{
    std::string text = shadows._holdersCount == 0 ? "" : ", holders " + std::to_string(shadows._holdersCount);
    text += shadows._releasesAll ? ", all" : "";
    for (const DeadPlace& deadPlace : shadows._deadPlaces)
    {
        text += ", dead at " + std::to_string(deadPlace._chunkIndex);
    }
    return text;
}

} // namespace

std::string describe(const Operation& operation)
{
    return visitWith<std::string>(
        operation, [](const AtomicOperation& atomic) { return describeAtomic(atomic); },
        [](const CompositeOperation& composite)
        {
            std::string text = composite.bringsShadowedAlong() ? "brings[" : "[";
            for (const OperationUPtr& part : composite.getParts())
            {
                text += describe(*part) + "; ";
            }
            return text + "]";
        },
        [](const EmptyOperation&) { return std::string("nothing"); },
        [](const ShadowedOperation& shadowed) {
            return "shadowed(" + describeAtomic(shadowed.getOriginal()) + describeShadows(shadowed.getShadows()) + ")";
        });
}

} // namespace Zem::CollaborationEngine::Testing

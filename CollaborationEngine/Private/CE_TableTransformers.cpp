#include "CE_TableTransformers.h"

#include "CE_ListAddresses.h"
#include "CE_MergeProperties.h"
#include "CE_NodeOperands.h"
#include "CE_SlotMatrix.h"
#include "CE_TableSlots.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

namespace
{

using NodeAddressing::AddressInTable;

template<class Tag>
OperationUPtr makeTableOperation(const TableRowOrColumnOperation<Tag>& model, NestedTableOperation nestedOperation,
                                 Shadows shadows)
{
    auto operation = std::make_unique<TableRowOrColumnOperation<Tag>>(model.getNodeAddress(), model.getOperandType(),
                                                                      std::move(nestedOperation));
    operation->inheritIDIfPossibleImpl(model);
    return applyShadows(std::move(operation), std::move(shadows));
}

/// The setting of a row's or column's property past a change of the list that holds the row or column.
template<class Tag>
OperationUPtr followSlots(const NodeOperand& first, const TableRowOrColumnOperation<Tag>& firstOperation,
                          const SlotOperation& slots)
{
    const auto& setting = boost::get<SetRowOrColumnPropertyOperation>(firstOperation.getNestedOperation());
    DeadPlace deadPlace;
    deadPlace._chunkIndex = firstOperation.getNodeAddress().getSize();
    deadPlace._kind = deadPlaceKind<Tag>;
    unsigned long index = setting.getIndex();
    const AddressChange change = changeElement(index, slots, deadPlace);
    Shadows shadows = takeOwnShadows(first);
    if (change._kind == AddressChange::Kind::Dies)
    {
        shadows._deadPlaces.push_back(deadPlace);
    }
    else if (change._kind == AddressChange::Kind::ComesBack)
    {
        std::erase(shadows._deadPlaces, deadPlace);
    }
    auto followed = std::make_unique<TableRowOrColumnOperation<Tag>>(firstOperation);
    boost::get<SetRowOrColumnPropertyOperation>(followed->getNestedOperation()).setIndex(index);
    if (change._kind == AddressChange::Kind::IsGone)
    {
        return std::make_unique<ShadowedOperation>(std::move(followed));
    }
    return applyShadows(std::move(followed), std::move(shadows));
}

template<class Tag>
OperationUPtr includeSlots(const NodeOperand& first, const TableRowOrColumnOperation<Tag>& firstOperation,
                           const SlotOperation& firstSlots, const NestedTableOperation& secondNested,
                           const SlotOperation& secondSlots, TieResolveCondition tieResolveCondition)
{
    const SlotPairRule rule = getSlotPairRule(firstSlots._action, secondSlots._action);
    if (!rule)
    {
        return cloneWithoutShadowsAbove(first);
    }
    SlotOperations result;
    rule(firstSlots, secondSlots, tieResolveCondition, result);
    if (result.empty())
    {
        auto nothing = std::make_unique<EmptyOperation>();
        nothing->inheritIDIfPossibleImpl(firstOperation);
        return nothing;
    }
    const SlotOperation& slots = result.front();
    SharedConstPtr<RowOrColumn> rowOrColumn = getRowOrColumn(firstOperation.getNestedOperation());
    if (firstSlots._action == SlotAction::Marking && slots._action == SlotAction::Leaving &&
        getRowOrColumn(secondNested))
    {
        rowOrColumn = getRowOrColumn(secondNested);
    }
    const bool isReleasing = slots._action == SlotAction::Releasing;
    return makeTableOperation(firstOperation, makeNestedOperation(slots, std::move(rowOrColumn)),
                              isReleasing ? slots._pieces.front().getHolds() : Shadows{});
}

template<class Tag>
OperationUPtr includeSetting(const NodeOperand& first, const TableRowOrColumnOperation<Tag>& firstOperation,
                             const NestedTableOperation& secondNested, const SetPropertyDataMerger& merger,
                             TieResolveCondition tieResolveCondition)
{
    const auto& firstSetting = boost::get<SetRowOrColumnPropertyOperation>(firstOperation.getNestedOperation());
    const auto& secondSetting = boost::get<SetRowOrColumnPropertyOperation>(secondNested);
    if (firstSetting.getIndex() != secondSetting.getIndex() ||
        firstSetting.getPropertyID() != secondSetting.getPropertyID())
    {
        return cloneWithoutShadowsAbove(first);
    }
    SharedConstPtr<DataValue> merged = mergeProperties(merger, firstSetting, secondSetting, tieResolveCondition);
    return makeTableOperation(firstOperation,
                              SetRowOrColumnPropertyOperation(firstSetting.getIndex(), firstSetting.getPropertyID(),
                                                              secondSetting.getSharedNewValue(), std::move(merged)),
                              takeOwnShadows(first));
}

/// Two operations on rows, or two on columns.
template<class Tag>
OperationUPtr includeSameAxis(const NodeOperand& first, const TableRowOrColumnOperation<Tag>& firstOperation,
                              const NodeOperand& second, const TableRowOrColumnOperation<Tag>& secondOperation,
                              const SetPropertyDataMerger& merger, TieResolveCondition tieResolveCondition)
{
    const NestedTableOperation& secondNested = secondOperation.getNestedOperation();
    const auto firstSlots = describeSlots(firstOperation.getNestedOperation(), first._shadows);
    const auto secondSlots = describeSlots(secondNested, second._shadows);
    if (firstSlots)
    {
        return secondSlots
                   ? includeSlots(first, firstOperation, *firstSlots, secondNested, *secondSlots, tieResolveCondition)
                   : cloneWithoutShadowsAbove(first);
    }
    return secondSlots ? followSlots(first, firstOperation, *secondSlots)
                       : includeSetting(first, firstOperation, secondNested, merger, tieResolveCondition);
}

/// An operation on rows past one on columns, or the other way round: only what travels follows.
template<class Tag>
OperationUPtr includeCrossAxis(const NodeOperand& first, const TableRowOrColumnOperation<Tag>& firstOperation,
                               const NodeOperand& second, const NestedTableOperation& secondNested)
{
    SharedConstPtr<RowOrColumn> followed;
    if (!isHeldDown(second))
    {
        followed = followCrossing(firstOperation.getNestedOperation(), secondNested, std::is_same_v<Tag, RowTag>);
    }
    if (!followed)
    {
        return cloneWithoutShadowsAbove(first);
    }
    auto operation = std::make_unique<TableRowOrColumnOperation<Tag>>(firstOperation);
    boost::apply_visitor(
        [&](auto& nested)
        {
            if constexpr (std::is_base_of_v<TableRowOrColumnDataOperation, std::remove_reference_t<decltype(nested)>>)
            {
                nested.setRowOrColumn(followed);
            }
        },
        operation->getNestedOperation());
    return applyShadows(std::move(operation), takeOwnShadows(first));
}

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
    deadPlace._kind = deadPlaceKind<Tag>;
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

TableSameNodeTransformer::TableSameNodeTransformer(std::shared_ptr<SetPropertyDataMerger> merger)
    : _merger(std::move(merger))
{
    derefPtr(_merger);
}

OperationUPtr TableSameNodeTransformer::include(const NodeOperand& first, const NodeOperand& second,
                                                TieResolveCondition tieResolveCondition) const
{
    const auto includeOf = [&](const auto& firstOperation, const auto& secondOperation) -> OperationUPtr
    {
        if constexpr (std::is_same_v<decltype(firstOperation), decltype(secondOperation)>)
        {
            return includeSameAxis(first, firstOperation, second, secondOperation, *_merger, tieResolveCondition);
        }
        else
        {
            return includeCrossAxis(first, firstOperation, second, secondOperation.getNestedOperation());
        }
    };
    return visitWith<OperationUPtr>(castToFamily<TableOperation>(first._operation),
                                    [&](const auto& firstOperation)
                                    {
                                        return visitWith<OperationUPtr>(
                                            castToFamily<TableOperation>(second._operation),
                                            [&](const auto& secondOperation)
                                            { return includeOf(firstOperation, secondOperation); });
                                    });
}

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

// The members of the concrete atomic operations, and their virtual tables.

#include "CE_ItemsCollection.h"
#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// Makes a pseudo identity that stands for `original`, or an `EmptyOperation`, which bears the same id.
template<class Identity, class... Arguments>
OperationUPtr makeIdentity(const Operation& original, Arguments&&... arguments)
{
    auto identity = std::make_unique<Identity>(std::forward<Arguments>(arguments)...);
    identity->inheritIDIfPossibleImpl(original);
    return identity;
}

template<class Deletion>
ListLeaveTombstonesOperation makeLeaveTombstones(const Deletion& marking)
{
    ListLeaveTombstonesOperation leaving(marking.getNodeAddress(), marking.getOperandType(), marking.getData(),
                                         marking.getRange(), 0);
    leaving.inheritIDIfPossibleImpl(marking);
    return leaving;
}

} // namespace

DataValue::~DataValue() = default;

ItemsCollection::~ItemsCollection() = default;

template<class Tag>
OperationUPtr ListModificationOperation<Tag>::getPseudoIdentity(const BaseOperationTransformer&) const
{
    if constexpr (std::is_same_v<Tag, MarkAsRemovedTag>)
    {
        return std::make_unique<ListLeaveTombstonesOperation>(makeLeaveTombstones(*this));
    }
    else
    {
        return makeIdentity<EmptyOperation>(*this);
    }
}

template class ListModificationOperation<InsertTag>;
template class ListModificationOperation<RemoveTag>;
template class ListModificationOperation<MarkAsRemovedTag>;
template class ListModificationOperation<RestoreTag>;

ListMoveOperation::ListMoveOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                     IndexRange<unsigned long> range, long offset)
    : FamilyOperationImpl(std::move(nodeAddress), nodeType, range)
    , _offset(offset)
{
}

OperationUPtr ListMoveOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    return makeIdentity<EmptyOperation>(*this);
}

ListLeaveTombstonesOperation::ListLeaveTombstonesOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                                           SharedConstPtr<ItemsCollection> data,
                                                           IndexRange<unsigned long> range, unsigned long holdersCount)
    : FamilyOperationImpl(std::move(nodeAddress), nodeType, range)
    , _data(std::move(data))
    , _holdersCount(holdersCount)
{
}

OperationUPtr ListLeaveTombstonesOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    return std::make_unique<ListLeaveTombstonesOperation>(makeLeaveTombstones(*this));
}

template<class T>
OperationUPtr ListMultirangeOperationImpl<T>::getPseudoIdentity(const BaseOperationTransformer&) const
{
    if constexpr (std::is_same_v<T, ListModificationOperation<MarkAsRemovedTag>> ||
                  std::is_same_v<T, ListLeaveTombstonesOperation>)
    {
        std::vector<ListLeaveTombstonesOperation> leavings;
        leavings.reserve(_nestedOperations.size());
        for (const T& nestedOperation : _nestedOperations)
        {
            leavings.push_back(makeLeaveTombstones(nestedOperation));
        }
        return makeIdentity<ListMultirangeOperationImpl<ListLeaveTombstonesOperation>>(*this, std::move(leavings));
    }
    else
    {
        return makeIdentity<EmptyOperation>(*this);
    }
}

template class ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;
template class ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>;
template class ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>;
template class ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>;
template class ListMultirangeOperationImpl<ListLeaveTombstonesOperation>;

template<class Tag>
OperationUPtr MapInsertOrRemoveOperation<Tag>::getPseudoIdentity(const BaseOperationTransformer&) const
{
    if constexpr (std::is_same_v<Tag, MapRemoveTag>)
    {
        return makeIdentity<MapLeaveRemovedOperation>(*this, this->getNodeAddress(), this->getOperandType(),
                                                      this->getKey(), _data, 0);
    }
    else
    {
        return makeIdentity<EmptyOperation>(*this);
    }
}

template class MapInsertOrRemoveOperation<MapInsertTag>;
template class MapInsertOrRemoveOperation<MapRemoveTag>;

MapLeaveRemovedOperation::MapLeaveRemovedOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                                   SharedConstPtr<NodeAddressing::MapKey> key,
                                                   SharedConstPtr<DataValue> data, unsigned long holdersCount)
    : FamilyOperationImpl(std::move(nodeAddress), nodeType, std::move(key))
    , _data(std::move(data))
    , _holdersCount(holdersCount)
{
}

OperationUPtr MapLeaveRemovedOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    return makeIdentity<MapLeaveRemovedOperation>(*this, getNodeAddress(), getOperandType(), getKey(), _data, 0);
}

SetPropertyOperation::SetPropertyOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                           unsigned long propertyId, SharedConstPtr<DataValue> oldValue,
                                           SharedConstPtr<DataValue> newValue)
    : HierarchicalOperationImpl(std::move(nodeAddress), nodeType)
    , _propertyId(propertyId)
    , _oldValue(std::move(oldValue))
    , _newValue(std::move(newValue))
{
    derefPtr(_oldValue);
    derefPtr(_newValue);
}

std::unique_ptr<SetPropertyOperation>
SetPropertyOperation::makeNewSetPropertyOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                                  unsigned long propertyId, std::unique_ptr<DataValue> oldValue,
                                                  std::unique_ptr<DataValue> newValue)
{
    return std::make_unique<SetPropertyOperation>(std::move(nodeAddress), nodeType, propertyId,
                                                  SharedConstPtr<DataValue>(std::move(oldValue)),
                                                  SharedConstPtr<DataValue>(std::move(newValue)));
}

void SetPropertyOperation::setOldValue(SharedConstPtr<DataValue> oldValue)
{
    derefPtr(oldValue);
    _oldValue = std::move(oldValue);
}

OperationUPtr SetPropertyOperation::getPseudoIdentity(const BaseOperationTransformer&) const
{
    return makeIdentity<EmptyOperation>(*this);
}

template<class Tag>
OperationUPtr TableRowOrColumnOperation<Tag>::getPseudoIdentity(const BaseOperationTransformer&) const
{
    using Marking = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
    if (const auto* marking = boost::get<Marking>(&_nestedOperation))
    {
        return makeIdentity<TableRowOrColumnOperation>(
            *this, this->getNodeAddress(), this->getOperandType(),
            RowOrColumnLeaveTombstoneOperation(marking->getIndex(), marking->getRowOrColumn(), 0));
    }
    if (const auto* leaving = boost::get<RowOrColumnLeaveTombstoneOperation>(&_nestedOperation))
    {
        return makeIdentity<TableRowOrColumnOperation>(
            *this, this->getNodeAddress(), this->getOperandType(),
            RowOrColumnLeaveTombstoneOperation(leaving->getIndex(), leaving->getRowOrColumn(), 0));
    }
    return makeIdentity<EmptyOperation>(*this);
}

template class TableRowOrColumnOperation<RowTag>;
template class TableRowOrColumnOperation<ColumnTag>;

} // namespace Zem::CollaborationEngine

#pragma once

/// Operations on one key of a map node.

#include "CE_DataValue.h"
#include "CE_HierarchicalOperation.h"

#include "NA_MapKey.h"
#include "Util_SharedConstPtr.h"

namespace Zem::CollaborationEngine
{

struct MapInsertTag
{
};

struct MapRemoveTag
{
};

template<class Tag>
class MapInsertOrRemoveOperation;
class MapLeaveRemovedOperation;

/// The root of the operations on one key of a map node.
class ZEM_EXPORT MapOperation : public HierarchicalOperation
{
public:
    static constexpr Family family = Family::Map;

    using VisitorType = Visitor<TypeList<MapInsertOrRemoveOperation<MapInsertTag>,
                                         MapInsertOrRemoveOperation<MapRemoveTag>, MapLeaveRemovedOperation>>;
    using ConstVisitorType =
        Visitor<TypeList<const MapInsertOrRemoveOperation<MapInsertTag>, const MapInsertOrRemoveOperation<MapRemoveTag>,
                         const MapLeaveRemovedOperation>>;

    MapOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, SharedConstPtr<NodeAddressing::MapKey> key)
        : HierarchicalOperation(std::move(nodeAddress), nodeType)
        , _key(std::move(key))
    {
    }

    using HierarchicalOperation::accept;
    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    Family getFamily() const final
    {
        return family;
    }

    /// May be null in an operation that was read from broken data; who needs the key asserts on it.
    const SharedConstPtr<NodeAddressing::MapKey>& getKey() const
    {
        return _key;
    }

private:
    SharedConstPtr<NodeAddressing::MapKey> _key;
};

/// Insertion of a value under a key, or removal of the value. The data of a removal is filled in when it is executed.
template<class Tag>
class MapInsertOrRemoveOperation final : public FamilyOperationImpl<MapInsertOrRemoveOperation<Tag>, MapOperation>
{
public:
    using Base = FamilyOperationImpl<MapInsertOrRemoveOperation<Tag>, MapOperation>;

    MapInsertOrRemoveOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                               SharedConstPtr<NodeAddressing::MapKey> key, SharedConstPtr<DataValue> data)
        : Base(std::move(nodeAddress), nodeType, std::move(key))
        , _data(std::move(data))
    {
    }

    const SharedConstPtr<DataValue>& getData() const
    {
        return _data;
    }

    /// How an executor leaves what it took out, for a later reverse.
    void setData(SharedConstPtr<DataValue> data)
    {
        _data = std::move(data);
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    SharedConstPtr<DataValue> _data;
};

extern template class ZEM_EXPORT MapInsertOrRemoveOperation<MapInsertTag>;
extern template class ZEM_EXPORT MapInsertOrRemoveOperation<MapRemoveTag>;

/// A removal that found its key gone already, and keeps it out together with those that came before it. It keeps the
/// value of the removal that it stands for.
class ZEM_EXPORT MapLeaveRemovedOperation final : public FamilyOperationImpl<MapLeaveRemovedOperation, MapOperation>
{
public:
    MapLeaveRemovedOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                             SharedConstPtr<NodeAddressing::MapKey> key, SharedConstPtr<DataValue> data,
                             unsigned long holdersCount = 1);

    const SharedConstPtr<DataValue>& getData() const
    {
        return _data;
    }

    void setData(SharedConstPtr<DataValue> data)
    {
        _data = std::move(data);
    }

    /// How many removals kept the key out before this one. With 0 it keeps nothing out itself: it stands for a removal
    /// that doesn't take place.
    unsigned long getHoldersCount() const
    {
        return _holdersCount;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    SharedConstPtr<DataValue> _data;
    unsigned long _holdersCount;
};

} // namespace Zem::CollaborationEngine

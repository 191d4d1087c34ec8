#pragma once

/// Operations on one range of a list node. All indices count tombstones.

#include "CE_HierarchicalOperation.h"
#include "CE_ItemsCollection.h"

#include "CU_IndexRange.h"

namespace Zem::CollaborationEngine
{

struct InsertTag
{
};

struct RemoveTag
{
};

struct MarkAsRemovedTag
{
};

struct RestoreTag
{
};

template<class Tag>
class ListModificationOperation;
class ListMoveOperation;
class ListLeaveTombstonesOperation;

/// The root of the operations on an index range of a list node.
class ZEM_EXPORT ListOperation : public HierarchicalOperation
{
public:
    static constexpr Family family = Family::List;

    using VisitorType =
        Visitor<TypeList<ListModificationOperation<InsertTag>, ListModificationOperation<RemoveTag>,
                         ListModificationOperation<MarkAsRemovedTag>, ListModificationOperation<RestoreTag>,
                         ListMoveOperation, ListLeaveTombstonesOperation>>;
    using ConstVisitorType =
        Visitor<TypeList<const ListModificationOperation<InsertTag>, const ListModificationOperation<RemoveTag>,
                         const ListModificationOperation<MarkAsRemovedTag>, const ListModificationOperation<RestoreTag>,
                         const ListMoveOperation, const ListLeaveTombstonesOperation>>;

    ListOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, IndexRange<unsigned long> range)
        : HierarchicalOperation(std::move(nodeAddress), nodeType)
        , _range(range)
    {
    }

    using HierarchicalOperation::accept;
    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    Family getFamily() const final
    {
        return family;
    }

    const IndexRange<unsigned long>& getRange() const
    {
        return _range;
    }

    /// Moves the range, with its count as it is.
    void setBeginIndex(unsigned long beginIndex)
    {
        _range = IndexRange<unsigned long>::fromCount(beginIndex, _range.getCount());
    }

private:
    IndexRange<unsigned long> _range;
};

/// Insertion of items at the range's beginning, their removal for good (which only comes about as the reverse of an
/// insertion), their marking as removed (the items go, their slots stay as tombstones), their restoring.
/// The items are shared and immutable. Those of a marking are filled in when it is executed.
template<class Tag>
class ListModificationOperation final : public FamilyOperationImpl<ListModificationOperation<Tag>, ListOperation>
{
public:
    using Base = FamilyOperationImpl<ListModificationOperation<Tag>, ListOperation>;

    ListModificationOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                              SharedConstPtr<ItemsCollection> data, IndexRange<unsigned long> range)
        : Base(std::move(nodeAddress), nodeType, range)
        , _data(std::move(data))
    {
    }

    ListModificationOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, IndexRange<unsigned long> range)
        : ListModificationOperation(std::move(nodeAddress), nodeType, nullptr, range)
    {
    }

    const SharedConstPtr<ItemsCollection>& getData() const
    {
        return _data;
    }

    /// How an executor leaves what it took out, for a later reverse.
    void setData(SharedConstPtr<ItemsCollection> data)
    {
        _data = std::move(data);
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    SharedConstPtr<ItemsCollection> _data;
};

extern template class ZEM_EXPORT ListModificationOperation<InsertTag>;
extern template class ZEM_EXPORT ListModificationOperation<RemoveTag>;
extern template class ZEM_EXPORT ListModificationOperation<MarkAsRemovedTag>;
extern template class ZEM_EXPORT ListModificationOperation<RestoreTag>;

/// Move of the one slot of the range by an offset; the target is where the slot stands afterwards.
class ZEM_EXPORT ListMoveOperation final : public FamilyOperationImpl<ListMoveOperation, ListOperation>
{
public:
    ListMoveOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, IndexRange<unsigned long> range,
                      long offset);

    long getOffset() const
    {
        return _offset;
    }

    void setOffset(long offset)
    {
        _offset = offset;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    long _offset;
};

/// A deletion that found its slots dead already, and holds them down together with those that came before it. It keeps
/// the items of the deletion that it stands for, so that it can become a marking again.
class ZEM_EXPORT ListLeaveTombstonesOperation final
    : public FamilyOperationImpl<ListLeaveTombstonesOperation, ListOperation>
{
public:
    ListLeaveTombstonesOperation(OperationNodeAddress nodeAddress, unsigned long nodeType,
                                 SharedConstPtr<ItemsCollection> data, IndexRange<unsigned long> range,
                                 unsigned long holdersCount = 1);

    const SharedConstPtr<ItemsCollection>& getData() const
    {
        return _data;
    }

    void setData(SharedConstPtr<ItemsCollection> data)
    {
        _data = std::move(data);
    }

    /// How many deletions held the slots down before this one. With 0 it holds nothing down itself: it stands for a
    /// marking that doesn't take place.
    unsigned long getHoldersCount() const
    {
        return _holdersCount;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    SharedConstPtr<ItemsCollection> _data;
    unsigned long _holdersCount;
};

} // namespace Zem::CollaborationEngine

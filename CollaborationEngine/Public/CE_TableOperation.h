#pragma once

/// Operations on the cell collection of a table: on one row, or on one column. All indices include tombstones.

#include "CE_HierarchicalOperation.h"
#include "CE_RowOrColumn.h"

#include "Util_TableIndices.h"

#include <boost/variant.hpp>

namespace Zem::CollaborationEngine
{

struct RowOrColumnInsertOperationTag
{
};

struct RowOrColumnMarkAsRemovedOperationTag
{
};

struct RowOrColumnRestoreOperationTag
{
};

/// What the nested operations on one row or column have in common: its index, including tombstones.
class BaseTableRowOrColumnListOperation
{
public:
    explicit BaseTableRowOrColumnListOperation(unsigned long index)
        : _index(index)
    {
    }

    unsigned long getIndex() const
    {
        return _index;
    }

    void setIndex(unsigned long index)
    {
        _index = index;
    }

private:
    unsigned long _index;
};

/// What the nested operations that carry a whole row or column have in common.
class TableRowOrColumnDataOperation : public BaseTableRowOrColumnListOperation
{
public:
    TableRowOrColumnDataOperation(unsigned long index, SharedConstPtr<RowOrColumn> rowOrColumn)
        : BaseTableRowOrColumnListOperation(index)
        , _rowOrColumn(std::move(rowOrColumn))
    {
    }

    const SharedConstPtr<RowOrColumn>& getRowOrColumn() const
    {
        return _rowOrColumn;
    }

    /// How an executor leaves what it took out, for a later reverse.
    void setRowOrColumn(SharedConstPtr<RowOrColumn> rowOrColumn)
    {
        _rowOrColumn = std::move(rowOrColumn);
    }

private:
    SharedConstPtr<RowOrColumn> _rowOrColumn;
};

/// Insertion, marking as removed or restoring of one row or column. The data of a marking is filled in at execution.
template<class Tag>
class TableRowOrColumnListModificationOperation : public TableRowOrColumnDataOperation
{
public:
    using TableRowOrColumnDataOperation::TableRowOrColumnDataOperation;
};

/// Removal of a row or column for good. It only comes about as the reverse of an insertion.
class RowOrColumnRemoveOperation : public TableRowOrColumnDataOperation
{
public:
    using TableRowOrColumnDataOperation::TableRowOrColumnDataOperation;
};

/// Move of a row or column by an offset.
class RowOrColumnMoveOperation : public BaseTableRowOrColumnListOperation
{
public:
    RowOrColumnMoveOperation(unsigned long index, long offset)
        : BaseTableRowOrColumnListOperation(index)
        , _offset(offset)
    {
    }

    long getOffset() const
    {
        return _offset;
    }

    void setOffset(long offset)
    {
        _offset = offset;
    }

private:
    long _offset;
};

/// A marking that found its row or column dead already, and holds it down together with those that came before it. It
/// keeps the data of the marking that it stands for.
class RowOrColumnLeaveTombstoneOperation : public TableRowOrColumnDataOperation
{
public:
    RowOrColumnLeaveTombstoneOperation(unsigned long index, SharedConstPtr<RowOrColumn> rowOrColumn,
                                       unsigned long holdersCount = 1)
        : TableRowOrColumnDataOperation(index, std::move(rowOrColumn))
        , _holdersCount(holdersCount)
    {
    }

    /// How many deletions held the row or column down before this one. With 0 it holds nothing down itself: it stands
    /// for a marking that doesn't take place.
    unsigned long getHoldersCount() const
    {
        return _holdersCount;
    }

private:
    unsigned long _holdersCount;
};

/// Sets one property of a row or column.
class SetRowOrColumnPropertyOperation : public BaseTableRowOrColumnListOperation
{
public:
    /// Fails: "plainPtr" when a value is null.
    SetRowOrColumnPropertyOperation(unsigned long index, unsigned long propertyId, SharedConstPtr<DataValue> oldValue,
                                    SharedConstPtr<DataValue> newValue)
        : BaseTableRowOrColumnListOperation(index)
        , _propertyId(propertyId)
        , _oldValue(std::move(oldValue))
        , _newValue(std::move(newValue))
    {
        derefPtr(_oldValue);
        derefPtr(_newValue);
    }

    unsigned long getPropertyID() const
    {
        return _propertyId;
    }

    const DataValue& getOldValue() const
    {
        return *_oldValue;
    }

    const DataValue& getNewValue() const
    {
        return *_newValue;
    }

    const SharedConstPtr<DataValue>& getSharedOldValue() const
    {
        return _oldValue;
    }

    const SharedConstPtr<DataValue>& getSharedNewValue() const
    {
        return _newValue;
    }

private:
    unsigned long _propertyId;
    SharedConstPtr<DataValue> _oldValue;
    SharedConstPtr<DataValue> _newValue;
};

template<class Tag>
class TableRowOrColumnOperation;
using TableRowOperation = TableRowOrColumnOperation<RowTag>;
using TableColumnOperation = TableRowOrColumnOperation<ColumnTag>;

/// The root of the operations on a cell collection.
class ZEM_EXPORT TableOperation : public HierarchicalOperation
{
public:
    static constexpr Family family = Family::Table;

    using VisitorType = Visitor<TypeList<TableRowOperation, TableColumnOperation>>;
    using ConstVisitorType = Visitor<TypeList<const TableRowOperation, const TableColumnOperation>>;

    using HierarchicalOperation::HierarchicalOperation;

    using HierarchicalOperation::accept;
    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    Family getFamily() const final
    {
        return family;
    }
};

/// An operation on one row (`RowTag`) or on one column (`ColumnTag`): what is done to it is the nested operation.
template<class Tag>
class TableRowOrColumnOperation final : public FamilyOperationImpl<TableRowOrColumnOperation<Tag>, TableOperation>
{
public:
    using Base = FamilyOperationImpl<TableRowOrColumnOperation<Tag>, TableOperation>;
    using NestedOperation =
        boost::variant<TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>,
                       RowOrColumnRemoveOperation,
                       TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>,
                       TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>,
                       RowOrColumnMoveOperation, RowOrColumnLeaveTombstoneOperation, SetRowOrColumnPropertyOperation>;

    TableRowOrColumnOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, NestedOperation nestedOperation)
        : Base(std::move(nodeAddress), nodeType)
        , _nestedOperation(std::move(nestedOperation))
    {
    }

    const NestedOperation& getNestedOperation() const
    {
        return _nestedOperation;
    }

    NestedOperation& getNestedOperation()
    {
        return _nestedOperation;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    NestedOperation _nestedOperation;
};

extern template class ZEM_EXPORT TableRowOrColumnOperation<RowTag>;
extern template class ZEM_EXPORT TableRowOrColumnOperation<ColumnTag>;

} // namespace Zem::CollaborationEngine

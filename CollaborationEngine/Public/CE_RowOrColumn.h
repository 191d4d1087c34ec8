#pragma once

#include "CE_DataValue.h"

#include "Util_SharedConstPtr.h"

#include <utility>
#include <vector>

namespace Zem::CollaborationEngine
{

/// One cell of a row or column that travels. The index is its place in the crossing direction, including tombstones. A
/// cell whose crossing column or row is dead by now is marked as removed, and left out when the row is rebuilt.
class CellData
{
public:
    CellData(unsigned long index, SharedConstPtr<DataValue> data, bool removed)
        : _index(index)
        , _data(std::move(data))
        , _isRemoved(removed)
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

    const SharedConstPtr<DataValue>& getData() const
    {
        return _data;
    }

    bool isRemoved() const
    {
        return _isRemoved;
    }

    void setRemoved(bool removed)
    {
        _isRemoved = removed;
    }

    friend bool operator==(const CellData& left, const CellData& right)
    {
        return left._index == right._index && left._isRemoved == right._isRemoved &&
               ComparisonDetails::arePointersDeeplyEqual(left._data.getShared(), right._data.getShared());
    }

private:
    unsigned long _index;
    SharedConstPtr<DataValue> _data;
    bool _isRemoved;
};

/// The portable form of one row or column of a table: its properties, and those of its cells that exist.
class RowOrColumn
{
public:
    const SharedConstPtr<DataValue>& getProps() const
    {
        return _props;
    }

    void setProps(SharedConstPtr<DataValue> props)
    {
        _props = std::move(props);
    }

    const std::vector<CellData>& getCells() const
    {
        return _cells;
    }

    std::vector<CellData>& getCells()
    {
        return _cells;
    }

    friend bool operator==(const RowOrColumn& left, const RowOrColumn& right)
    {
        return ComparisonDetails::arePointersDeeplyEqual(left._props.getShared(), right._props.getShared()) &&
               left._cells == right._cells;
    }

private:
    SharedConstPtr<DataValue> _props;
    std::vector<CellData> _cells;
};

} // namespace Zem::CollaborationEngine

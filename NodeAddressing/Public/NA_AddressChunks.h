#pragma once

/// The four kinds of step that an address can take from a node to one of its children.

#include "NA_MapKey.h"

#include "Util_SharedConstPtr.h"
#include "Util_TableIndices.h"

namespace Zem::NodeAddressing
{

/// A step into a list, by index. Whether the index counts tombstones is the address's business.
class AddressInList
{
public:
    AddressInList() = default;

    explicit AddressInList(unsigned long index)
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

    friend bool operator==(const AddressInList&, const AddressInList&) = default;

    template<class Archive>
    void serialize(Archive& archive);

private:
    unsigned long _index = 0;
};

/// A step into a table, by row and column. Whether these count tombstones is the address's business.
class AddressInTable
{
public:
    using Row = RowIndex;
    using Column = ColumnIndex;

    AddressInTable() = default;

    AddressInTable(Row row, Column column)
        : _row(row)
        , _column(column)
    {
    }

    Row getRow() const
    {
        return _row;
    }

    Column getColumn() const
    {
        return _column;
    }

    void setRow(Row row)
    {
        _row = row;
    }

    void setColumn(Column column)
    {
        _column = column;
    }

    friend bool operator==(const AddressInTable&, const AddressInTable&) = default;

    template<class Archive>
    void serialize(Archive& archive);

private:
    Row _row;
    Column _column;
};

/// A step into a map, by key. The default one has no key, which no walk can follow.
class AddressInMap
{
public:
    AddressInMap() = default;

    explicit AddressInMap(SharedConstPtr<MapKey> key)
        : _key(std::move(key))
    {
    }

    const SharedConstPtr<MapKey>& getKey() const
    {
        return _key;
    }

    friend bool operator==(const AddressInMap& left, const AddressInMap& right)
    {
        const MapKey* leftKey = left._key.get();
        const MapKey* rightKey = right._key.get();
        return leftKey == rightKey || (leftKey && rightKey && *leftKey == *rightKey);
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    SharedConstPtr<MapKey> _key;
};

/// A step to the one child of a type that a node has, such as the text of a cell.
template<class Type>
class FixedNodeAddress
{
public:
    FixedNodeAddress() = default;

    explicit FixedNodeAddress(Type nodeType)
        : _nodeType(nodeType)
    {
    }

    Type getNodeType() const
    {
        return _nodeType;
    }

    friend bool operator==(const FixedNodeAddress&, const FixedNodeAddress&) = default;

    template<class Archive>
    void serialize(Archive& archive);

private:
    Type _nodeType{};
};

} // namespace Zem::NodeAddressing

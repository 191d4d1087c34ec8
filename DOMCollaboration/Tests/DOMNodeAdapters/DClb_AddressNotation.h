#pragma once

/// Short names for the chunks of addresses, for tests.

#include "DOMNodeAdapters/DClb_NodeAdapterWorlds.h"

#include "Util_SharedConstPtr.h"
#include "Util_UUID.h"

#include <string>

namespace Zem::DOMCollaboration::Addresses
{

using Native = DOM::NativeDOMNodeType;
using Operation = OperationDOMNodeType;
using NativeFixed = NativeNodeAddress::FixedChunk;

inline NodeAddressing::AddressInList at(unsigned long index)
{
    return NodeAddressing::AddressInList(index);
}

inline NodeAddressing::AddressInTable cell(unsigned long row, unsigned long column)
{
    return NodeAddressing::AddressInTable(RowIndex(row), ColumnIndex(column));
}

inline NodeAddressing::AddressInMap key(const UUID& uuid)
{
    return NodeAddressing::AddressInMap(makeSharedConst<NodeAddressing::SimpleValueMapKey<UUID>>(uuid));
}

inline NodeAddressing::AddressInMap key(const std::string& name)
{
    return NodeAddressing::AddressInMap(makeSharedConst<NodeAddressing::SimpleValueMapKey<std::string>>(name));
}

inline NativeFixed fixed(Native type)
{
    return NativeFixed(type);
}

inline OperationNodeAddress::FixedChunk fixed(Operation type)
{
    return OperationNodeAddress::FixedChunk(convertOperationNodeType(type));
}

/// An address of the world that the first chunk, or the type given, is of.
template<class... Chunks>
NativeNodeAddress native(const Chunks&... chunks)
{
    return NativeNodeAddress{chunks...};
}

template<class... Chunks>
OperationNodeAddress operation(const Chunks&... chunks)
{
    return OperationNodeAddress{chunks...};
}

template<class Address, class Chunk>
Address extended(Address address, const Chunk& chunk)
{
    address.appendItems(chunk);
    return address;
}

/// For failure messages: the chunks, separated by slashes.
template<class Tag, class Type>
std::string print(const NodeAddressing::NodeAddress<Tag, Type>& address)
{
    std::string text;
    for (const auto& chunk : address.getItems())
    {
        text += '/';
        if (const auto* list = boost::get<NodeAddressing::AddressInList>(&chunk))
        {
            text += std::to_string(list->getIndex());
        }
        else if (const auto* table = boost::get<NodeAddressing::AddressInTable>(&chunk))
        {
            text += '(' + std::to_string(table->getRow().get()) + ',' + std::to_string(table->getColumn().get()) + ')';
        }
        else if (const auto* node = boost::get<NodeAddressing::FixedNodeAddress<Type>>(&chunk))
        {
            text += "type" + std::to_string(static_cast<unsigned long>(node->getNodeType()));
        }
        else
        {
            text += "key";
        }
    }
    return text.empty() ? "/" : text;
}

} // namespace Zem::DOMCollaboration::Addresses

#pragma once

/// The address world of the document itself: the real tree, and indices that don't count tombstones.

#include "NA_NodeAddress.h"

#include "Util_Export.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

/// The types of node in the native world. The numbers are stable.
enum class NativeDOMNodeType : unsigned long
{
    TextDocument = 0,
    WorkbookDocument = 1,
    PresentationDocument = 2,
    Tombstone = 3,
    WorksheetCollection = 4,
    BlockCollection = 5,
    SectionTag = 6,
    Table = 7,
    Frame = 8,
    FrameCollection = 9,
    ConditionalFormat = 10,
    ConditionalFormatCollection = 11,
    FieldBlock = 12,
    CellCollection = 13,
    Cell = 14,
    Shape = 15,
    Paragraph = 16,
    RunCollection = 17,
    Run = 18,
    CharCollection = 19,
    Char = 20,
    CollectionEndMark = 21,
    HeaderFooterPairCollection = 22,
    HeaderFooterPair = 23,
    Header = 24,
    Footer = 25,
    Temporary = 26,
    DocumentProps = 27,
    ScriptCollection = 28,
    CommentCollection = 29,
    Comment = 30,
    NoteCollection = 31,
    Note = 32,
    TextStyleCollection = 33,
    TextStyle = 34,
    TableStyleCollection = 35,
    TableStyle = 36
};

struct NativeNodeAddressTag
{
};

using NativeNodeAddress = NodeAddressing::NodeAddress<NativeNodeAddressTag, NativeDOMNodeType>;

namespace NodeAddressUtils
{

/// An address of fixed steps.
template<NativeDOMNodeType... types>
NativeNodeAddress makeAddress()
{
    return NativeNodeAddress{NativeNodeAddress::FixedChunk(types)...};
}

/// As above, for types that are known at run time only.
template<class... NodeTypes>
NativeNodeAddress makeAddress(NodeTypes... types)
{
    return NativeNodeAddress{NativeNodeAddress::FixedChunk(types)...};
}

/// The index of the last fixed step of the type in `address`, counted from the root; empty if there is none.
ZEM_EXPORT boost::optional<unsigned long> findLastItem(const NativeNodeAddress& address, NativeDOMNodeType type);

/// `address` cut behind its last fixed step of the type; empty if there is none.
ZEM_EXPORT boost::optional<NativeNodeAddress> getCutAfterLastCollection(const NativeNodeAddress& address,
                                                                        NativeDOMNodeType type);

} // namespace NodeAddressUtils

} // namespace Zem::DOM

#pragma once

/// The one place where an address becomes a node, and where an address of one world becomes one of the other.
///
/// The same byte in both worlds: the text has two paragraphs, "ab" and "cde", and a dead slot behind the 'a'. A native
/// address goes down the tree; an operation's names a place of the flat text, which counts the dead slot.
///
///     native     BlockCollection, 1, RunCollection, 0, CharCollection, 2        block 1, run 0, byte 2
///     operation  TextWithTombstones, 10                                         plane index 9, and one tombstone
///
/// Costs: a step allocates one small adapter and frees the last. Beside that, each text on the way costs one walk up
/// to the place that the address names in it (PlaneIndexUtils/DClb_PlanePlace.h), whatever stands below that place; an
/// address that ends at a text costs no walk. A conversion walks each text once as well, and the addresses of both
/// worlds at one time.

#include "DClb_NodeTypes.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "Util_Cast.h"
#include "Util_Export.h"

namespace Zem::DOMCollaboration::ElementPathUtils
{

/// The adapter of the node at an address; an empty address gives the root.
/// Fails: "currentAdapter" when the document has no root; "There is no element corresponding to the passed address".
ZEM_EXPORT std::unique_ptr<OperationNodeAdapter<false>> createDOMNodeAdapter(DocumentAdapterWithNodeAdapter& document,
                                                                             const OperationNodeAddress& address);
ZEM_EXPORT std::unique_ptr<OperationNodeAdapter<true>>
createDOMNodeAdapter(const DocumentAdapterWithNodeAdapter& document, const OperationNodeAddress& address);
ZEM_EXPORT std::unique_ptr<NativeNodeAdapter<false>> createDOMNodeAdapter(DocumentAdapterWithNodeAdapter& document,
                                                                          const NativeNodeAddress& address);
ZEM_EXPORT std::unique_ptr<NativeNodeAdapter<true>> createDOMNodeAdapter(const DocumentAdapterWithNodeAdapter& document,
                                                                         const NativeNodeAddress& address);

/// The same, of the class that the caller expects there. Fails: `std::bad_cast` when it is another.
template<class Adapter, class Document, class Address>
std::unique_ptr<Adapter> createDOMNodeAdapterAs(Document& document, const Address& address)
{
    return dynamicUPtrCheckedCast<Adapter>(createDOMNodeAdapter(document, address));
}

/// The same; null if the walk ends early. Fails: "currentAdapter" when the document has no root.
ZEM_EXPORT std::unique_ptr<OperationNodeAdapter<false>>
createDOMNodeAdapterIfPossible(DocumentAdapterWithNodeAdapter& document, const OperationNodeAddress& address);
ZEM_EXPORT std::unique_ptr<OperationNodeAdapter<true>>
createDOMNodeAdapterIfPossible(const DocumentAdapterWithNodeAdapter& document, const OperationNodeAddress& address);

/// The address of the same node in the other world.
/// Fails: "There is no element corresponding to the passed address"; an assertion of `getPlaneIndexOfBlock` for a block
/// beyond the end of its text; "Leave node doesn't have children" for an address that goes on below a leaf; "No
/// corresponding node type" and "Invalid code branch" for fixed steps that the other world doesn't have; as
/// `getPlaneIndexAndMoveToNextOperationElement`; `boost::bad_get` for a chunk of the wrong kind at a collection.
ZEM_EXPORT OperationNodeAddress convertNodeAddress(const DocumentAdapterWithNodeAdapter& document,
                                                   const NativeNodeAddress& address);

/// Fails: as above; "result" when the address leads into a tombstone: see `trimAddressToLive`.
ZEM_EXPORT NativeNodeAddress convertNodeAddress(const DocumentAdapterWithNodeAdapter& document,
                                                const OperationNodeAddress& address);

/// Cuts an address that leads into a tombstone, so that it ends at the node above that. Others stay as they are.
/// Fails: as `createDOMNodeAdapter`.
ZEM_EXPORT void trimAddressToLive(const DocumentAdapterWithNodeAdapter& document, OperationNodeAddress& address);

/// The plane index of what a native address points at inside a text. `adapter` is that of the block collection, and
/// `currentAddressChunk` the block's; both are moved behind what the plane index stands for, which is up to five
/// chunks: block, run collection, run, character collection, character.
/// Requires: `currentAddressChunk` isn't `end`.
/// Fails: `std::bad_cast` on another adapter; `boost::bad_get` on a chunk of the wrong kind; "currentAddressChunk !=
/// end" when the address ends at a run or character collection; "currentAddressChunk == end" when it goes on below a
/// character; "There is no element corresponding to the passed address".
ZEM_EXPORT IndexExcludingTombstones getPlaneIndexAndMoveToNextOperationElement(
    std::unique_ptr<NativeNodeAdapter<true>>& adapter, NativeNodeAddress::Items::const_iterator& currentAddressChunk,
    const NativeNodeAddress::Items::const_iterator& end);

/// The index of the innermost table on the way of an address, in its block collection.
/// Fails: "opt" when no cell collection is on the way, or no block collection above the last one.
ZEM_EXPORT unsigned long getTableIndexOfLastTable(const NativeNodeAddress& address);

/// Fails: "No corresponding node type" for the collections inside paragraphs and runs; "Invalid code branch" for a
/// value outside the enumeration.
ZEM_EXPORT OperationDOMNodeType getCorrespondingNodeType(NativeDOMNodeType nodeType);

/// Fails: "Invalid code branch" for a value outside the enumeration.
ZEM_EXPORT NativeDOMNodeType getCorrespondingNodeType(OperationDOMNodeType nodeType);

} // namespace Zem::DOMCollaboration::ElementPathUtils

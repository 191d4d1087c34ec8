#pragma once

/// One uniform view of every node of a document, so that code can walk from the root to any node by the chunks of an
/// address without knowing the classes on the way.
///
/// An adapter is a small object that is made for one walk and dropped after it. It refers to its node, owns nothing of
/// it, copies nothing of it, and becomes invalid when the document changes.

#include "DOMNodeAdapters/DClb_NodeAdapterWorlds.h"

#include "CU_Index.h"

#include "Util_Assert.h"
#include "Util_Export.h"

#include <memory>

namespace Zem::DOMCollaboration
{

using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexIncludingTombstones;

/// The root of the adapters of one world and constness. A writable adapter gives out writable children.
template<class Tag, class NodeType, bool isConst>
class DOMNodeAdapter
{
public:
    using Address = NodeAddressing::NodeAddress<Tag, NodeType>;
    using Chunk = typename Address::Chunk;
    using FixedChunk = typename Address::FixedChunk;
    using ChildUPtr = std::unique_ptr<DOMNodeAdapter>;
    using ConstUPtr = std::unique_ptr<DOMNodeAdapter<Tag, NodeType, true>>;
    using VisitorType = NodeAdapterVisitor<Tag, NodeType, isConst>;
    using ConstVisitorType = NodeAdapterConstVisitor<Tag, NodeType, isConst>;

    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    virtual ~DOMNodeAdapter() = default;

    virtual NodeType getNodeType() const = 0;

    /// The child that `chunk` leads to; null if there is no such child, also when the chunk is of another kind than the
    /// node's children are reached by. `includingTombstones` says whether the indices of the chunk count tombstones.
    virtual ChildUPtr createChildAdapterIfPossible(const Chunk& chunk, bool includingTombstones) = 0;

    /// The read-only adapter of the same node.
    virtual ConstUPtr createConst() const = 0;

    /// As `createChildAdapterIfPossible`, for a child that must be there.
    /// Fails: "There is no element corresponding to the passed address".
    ChildUPtr createChildAdapter(const Chunk& chunk, bool includingTombstones)
    {
        ChildUPtr result = createChildAdapterIfPossible(chunk, includingTombstones);
        ZEM_ASSERT_MESSAGE(result, "There is no element corresponding to the passed address");
        return result;
    }

    DOMNodeAdapter(const DOMNodeAdapter&) = delete;
    DOMNodeAdapter& operator=(const DOMNodeAdapter&) = delete;

protected:
    DOMNodeAdapter() = default;
};

/// An adapter whose children are all reached by one kind of chunk, which is `ChildAddress`.
template<class Tag, class NodeType, bool isConst, class ChildAddress>
class BaseDOMNodeAdapter : public DOMNodeAdapter<Tag, NodeType, isConst>
{
public:
    using typename DOMNodeAdapter<Tag, NodeType, isConst>::Chunk;
    using typename DOMNodeAdapter<Tag, NodeType, isConst>::ChildUPtr;

    ChildUPtr createChildAdapterIfPossible(const Chunk& chunk, bool includingTombstones) final
    {
        const ChildAddress* childAddress = boost::get<ChildAddress>(&chunk);
        return childAddress ? createChildAdapterIfPossibleImpl(*childAddress, includingTombstones) : nullptr;
    }

    /// As `createChildAdapterIfPossible`, for a chunk of the right kind.
    virtual ChildUPtr createChildAdapterIfPossibleImpl(const ChildAddress& childAddress, bool includingTombstones) = 0;
};

/// A list: its children are reached by index, either counting tombstones or not.
template<class Tag, class NodeType, bool isConst>
class GenericListNodeAdapter : public BaseDOMNodeAdapter<Tag, NodeType, isConst, NodeAddressing::AddressInList>
{
public:
    using typename DOMNodeAdapter<Tag, NodeType, isConst>::ChildUPtr;

    ChildUPtr createChildAdapterIfPossibleImpl(const NodeAddressing::AddressInList& childAddress,
                                               bool includingTombstones) final
    {
        return includingTombstones
                   ? createChildAdapterByIndexIfPossible(IndexIncludingTombstones(childAddress.getIndex()))
                   : createChildAdapterByIndexIfPossible(IndexExcludingTombstones(childAddress.getIndex()));
    }

    virtual IndexExcludingTombstones getChildrenCountExcludingTombstones() const = 0;
    virtual IndexIncludingTombstones getChildrenCountIncludingTombstones() const = 0;

    /// The child at an index; the end mark one past the last, null beyond it.
    virtual ChildUPtr createChildAdapterByIndexIfPossible(IndexIncludingTombstones index) = 0;
    virtual ChildUPtr createChildAdapterByIndexIfPossible(IndexExcludingTombstones index) = 0;
};

/// A keyed collection.
template<class Tag, class NodeType, bool isConst>
class GenericMapNodeAdapter : public BaseDOMNodeAdapter<Tag, NodeType, isConst, NodeAddressing::AddressInMap>
{
public:
    using typename DOMNodeAdapter<Tag, NodeType, isConst>::ChildUPtr;

    /// Fails: "plainPtr" on a chunk without a key.
    ChildUPtr createChildAdapterIfPossibleImpl(const NodeAddressing::AddressInMap& childAddress, bool) final
    {
        return createChildAdapterByKeyIfPossible(derefPtr(childAddress.getKey()));
    }

    /// The child under a key; null for a key that isn't there.
    virtual ChildUPtr createChildAdapterByKeyIfPossible(const NodeAddressing::MapKey& key) = 0;
};

} // namespace Zem::DOMCollaboration

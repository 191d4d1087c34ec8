#pragma once

/// The nodes that are places without data: a removed item, the end of a collection, a character.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

namespace Zem::DOMCollaboration
{

/// What a walk that counts tombstones finds at the place of a removed item. Callers recognise it by its dynamic type.
template<class Tag, class NodeType, bool isConst>
class GenericTombstoneNodeAdapter final
    : public PlainLeafNodeAdapter<GenericTombstoneNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Tombstone,
                                  NodeAdapterDetails::NoSubject>
{
    using Base = PlainLeafNodeAdapter<GenericTombstoneNodeAdapter, OperationDOMNodeType::Tombstone,
                                      NodeAdapterDetails::NoSubject>;

public:
    explicit GenericTombstoneNodeAdapter(NodeAdapterDetails::NoSubject subject = {})
        : Base(subject)
    {
    }
};

/// What a walk finds one past the last item of a collection, where a position may point though no node is there.
template<class Tag, class NodeType, bool isConst>
class GenericCollectionEndMarkNodeAdapter final
    : public PlainLeafNodeAdapter<GenericCollectionEndMarkNodeAdapter<Tag, NodeType, isConst>,
                                  OperationDOMNodeType::CollectionEndMark, NodeType>
{
    using Base =
        PlainLeafNodeAdapter<GenericCollectionEndMarkNodeAdapter, OperationDOMNodeType::CollectionEndMark, NodeType>;

public:
    using Base::Base;

    NodeType getCollectionType() const
    {
        return this->getSubject();
    }
};

/// A character of a text run; each is a byte.
template<class Tag, class NodeType, bool isConst>
class GenericCharNodeAdapter final
    : public PlainLeafNodeAdapter<GenericCharNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Char,
                                  NodeAdapterDetails::NoSubject>
{
    using Base =
        PlainLeafNodeAdapter<GenericCharNodeAdapter, OperationDOMNodeType::Char, NodeAdapterDetails::NoSubject>;

public:
    explicit GenericCharNodeAdapter(NodeAdapterDetails::NoSubject subject = {})
        : Base(subject)
    {
    }
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTombstoneNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCollectionEndMarkNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCharNodeAdapter)

} // namespace Zem::DOMCollaboration

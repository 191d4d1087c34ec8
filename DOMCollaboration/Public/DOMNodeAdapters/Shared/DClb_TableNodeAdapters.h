#pragma once

/// A table and its cells.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

namespace Zem::DOM
{

class Table;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// A table. Its children are its cells, its frames and its conditional formats.
template<class Tag, class NodeType, bool isConst>
class GenericTableNodeAdapter final
    : public TypedNodeAdapter<GenericTableNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Table,
                              FixedNodeAdapterBase<GenericTableNodeAdapter<Tag, NodeType, isConst>>,
                              NodeReference<GenericTableNodeAdapter<Tag, NodeType, isConst>, DOM::Table>>
{
public:
    using GenericTableNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericTableNodeAdapter, DOM::Table>& getTable() const
    {
        return this->getSubject();
    }

    typename GenericTableNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericTableNodeAdapter::FixedChunk& childAddress, bool) override;
};

/// The cells of a table, by row and column. A child is a cell whether or not one stands at its position; a position one
/// past the last row or column is the end mark.
template<class Tag, class NodeType, bool isConst>
class GenericCellCollectionNodeAdapter final
    : public TypedNodeAdapter<
          GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::CellCollection,
          NodeAdapterBase<GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>, NodeAddressing::AddressInTable>,
          NodeReference<GenericCellCollectionNodeAdapter<Tag, NodeType, isConst>, DOM::Table>>
{
public:
    using GenericCellCollectionNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericCellCollectionNodeAdapter, DOM::Table>& getTable() const
    {
        return this->getSubject();
    }

    typename GenericCellCollectionNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const NodeAddressing::AddressInTable& childAddress,
                                     bool includingTombstones) override;
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTableNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCellCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

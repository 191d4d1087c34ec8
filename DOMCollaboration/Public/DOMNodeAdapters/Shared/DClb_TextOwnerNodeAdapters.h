#pragma once

/// The nodes of both worlds that have a text and no other data in the tree: shapes, headers and footers, and the root
/// of a detached text.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

#include "DOM_HeaderFooterPair.h"

namespace Zem::DOM
{

class Shape;
class TextWithTombstones;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// A shape. Its one child is its text.
template<class Tag, class NodeType, bool isConst>
class GenericShapeNodeAdapter final
    : public TypedNodeAdapter<GenericShapeNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Shape,
                              FixedNodeAdapterBase<GenericShapeNodeAdapter<Tag, NodeType, isConst>>,
                              NodeReference<GenericShapeNodeAdapter<Tag, NodeType, isConst>, DOM::Shape>>
{
public:
    using GenericShapeNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericShapeNodeAdapter, DOM::Shape>& getShape() const
    {
        return this->getSubject();
    }

    typename GenericShapeNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericShapeNodeAdapter::FixedChunk& childAddress, bool) override;
};

/// A header and a footer, which are its children.
template<class Tag, class NodeType, bool isConst>
class GenericHeaderFooterPairNodeAdapter final
    : public TypedNodeAdapter<
          GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::HeaderFooterPair,
          FixedNodeAdapterBase<GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>>,
          NodeReference<GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>, DOM::HeaderFooterPair>>
{
public:
    using GenericHeaderFooterPairNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericHeaderFooterPairNodeAdapter, DOM::HeaderFooterPair>& getHeaderFooterPair() const
    {
        return this->getSubject();
    }

    /// Fails: "Unknown header footer type" when the chunk names something else than a header or a footer.
    typename GenericHeaderFooterPairNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericHeaderFooterPairNodeAdapter::FixedChunk& childAddress,
                                     bool) override;
};

/// The text of a header or of a footer, and which of the two it is.
template<bool isConst>
struct HeaderOrFooterReference
{
    operator HeaderOrFooterReference<true>() const requires(!isConst)
    {
        return {_text, _type};
    }

    ConstIf<isConst, DOM::TextWithTombstones>& _text;
    DOM::HeaderFooterType _type;
};

/// A header or a footer. Its one child is its text.
template<class Tag, class NodeType, bool isConst>
class GenericHeaderOrFooterNodeAdapter final
    : public NodeAdapterImpl<GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>,
                             FixedNodeAdapterBase<GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>>,
                             HeaderOrFooterReference<isConst>>
{
public:
    using GenericHeaderOrFooterNodeAdapter::NodeAdapterImpl::NodeAdapterImpl;

    NodeOf<GenericHeaderOrFooterNodeAdapter, DOM::TextWithTombstones>& getTextWithTombstones() const
    {
        return this->getSubject()._text;
    }

    DOM::HeaderFooterType getHeaderFooterType() const
    {
        return this->getSubject()._type;
    }

    NodeType getNodeType() const override;
    typename GenericHeaderOrFooterNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericHeaderOrFooterNodeAdapter::FixedChunk& childAddress,
                                     bool) override;
};

/// The root of a detached piece of text. Its one child is the text.
template<class Tag, class NodeType, bool isConst>
class GenericTemporaryDOMNodeAdapter final
    : public TypedNodeAdapter<
          GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Temporary,
          FixedNodeAdapterBase<GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>>,
          NodeReference<GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>, DOM::TextWithTombstones>>
{
public:
    using GenericTemporaryDOMNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericTemporaryDOMNodeAdapter, DOM::TextWithTombstones>& getTextWithTombstones() const
    {
        return this->getSubject();
    }

    typename GenericTemporaryDOMNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericTemporaryDOMNodeAdapter::FixedChunk& childAddress,
                                     bool) override;
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericShapeNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericHeaderFooterPairNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericHeaderOrFooterNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTemporaryDOMNodeAdapter)

} // namespace Zem::DOMCollaboration

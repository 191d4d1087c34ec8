#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "DOMNodeAdapters/DClb_RichTextAdapterMaker.h"

#include "DOM_Shape.h"

namespace Zem::DOMCollaboration
{

namespace
{

template<class Tag>
constexpr auto getNodeTypeOf(DOM::HeaderFooterType type)
{
    return NodeAdapterDetails::World<Tag>::getNodeType(
        type == DOM::HeaderFooterType::Header ? OperationDOMNodeType::Header : OperationDOMNodeType::Footer);
}

} // namespace

template<class Tag, class NodeType, bool isConst>
typename GenericShapeNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericShapeNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericShapeNodeAdapter::FixedChunk& childAddress, bool)
{
    return RichTextAdapterMaker<Tag, NodeType, isConst>::createChildAdapter(childAddress,
                                                                            getShape().getTextWithTombstones());
}

template<class Tag, class NodeType, bool isConst>
typename GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericHeaderFooterPairNodeAdapter::FixedChunk& childAddress, bool)
{
    using Child = GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>;
    using Reference = HeaderOrFooterReference<isConst>;
    auto& pair = getHeaderFooterPair();
    switch (childAddress.getNodeType())
    {
    case getNodeTypeOf<Tag>(DOM::HeaderFooterType::Header):
        return std::make_unique<Child>(Reference{pair.getHeader(), DOM::HeaderFooterType::Header});
    case getNodeTypeOf<Tag>(DOM::HeaderFooterType::Footer):
        return std::make_unique<Child>(Reference{pair.getFooter(), DOM::HeaderFooterType::Footer});
    default:
        ZEM_FAIL("Unknown header footer type");
    }
}

template<class Tag, class NodeType, bool isConst>
NodeType GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>::getNodeType() const
{
    return getNodeTypeOf<Tag>(getHeaderFooterType());
}

template<class Tag, class NodeType, bool isConst>
typename GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericHeaderOrFooterNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericHeaderOrFooterNodeAdapter::FixedChunk& childAddress, bool)
{
    return RichTextAdapterMaker<Tag, NodeType, isConst>::createChildAdapter(childAddress, getTextWithTombstones());
}

template<class Tag, class NodeType, bool isConst>
typename GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericTemporaryDOMNodeAdapter::FixedChunk& childAddress, bool)
{
    return RichTextAdapterMaker<Tag, NodeType, isConst>::createChildAdapter(childAddress, getTextWithTombstones());
}

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericShapeNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericHeaderFooterPairNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericHeaderOrFooterNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTemporaryDOMNodeAdapter)

} // namespace Zem::DOMCollaboration

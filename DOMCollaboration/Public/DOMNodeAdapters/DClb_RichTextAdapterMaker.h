#pragma once

/// How the adapter of a rich text is made, which occurs in many places.

#include "DOMNodeAdapters/DClb_DOMNodeAdapter.h"
#include "DOMNodeAdapters/DClb_TextReference.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"

namespace Zem::DOMCollaboration
{

/// Makes the adapter that shows a text in a world.
template<class Tag, class NodeType, bool isConst>
class RichTextAdapterCreatorHelper
{
public:
    using Adapter =
        std::conditional_t<std::is_same_v<Tag, OperationNodeAddressTag>, GenericTextWithTombstonesNodeAdapter<isConst>,
                           GenericBlockCollectionNodeAdapter<isConst>>;

    static std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>> makeAdapter(const TextReference<isConst>& text)
    {
        return std::make_unique<Adapter>(text);
    }
};

/// The child step of a node that has a text and nothing else, such as a cell, a shape, a header or a footer.
template<class Tag, class NodeType, bool isConst>
class RichTextAdapterMaker
{
public:
    static constexpr NodeType textType =
        NodeAdapterDetails::World<Tag>::getNodeType(OperationDOMNodeType::TextWithTombstones);

    /// The adapter of the text if that is what `childAddress` names, otherwise null.
    static std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>>
    createChildAdapter(const NodeAddressing::FixedNodeAddress<NodeType>& childAddress,
                       const TextReference<isConst>& text)
    {
        return childAddress.getNodeType() == textType
                   ? RichTextAdapterCreatorHelper<Tag, NodeType, isConst>::makeAdapter(text)
                   : nullptr;
    }
};

} // namespace Zem::DOMCollaboration

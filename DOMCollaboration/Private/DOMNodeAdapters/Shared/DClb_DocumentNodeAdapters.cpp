#include "DOMNodeAdapters/Shared/DClb_DocumentNodeAdapters.h"

#include "DOMNodeAdapters/DClb_RichTextAdapterMaker.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"

#include "DOM_Document.h"

namespace Zem::DOMCollaboration
{

namespace
{

/// Makes the adapter of the part of a document that has the type `part`.
template<OperationDOMNodeType part, class Tag, class NodeType, bool isConst>
std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>> makePartAdapter(ConstIf<isConst, DOM::Document>& document)
{
    using Type = OperationDOMNodeType;
    if constexpr (part == Type::HeaderFooterPairCollection)
    {
        return std::make_unique<GenericHeaderFooterPairCollectionNodeAdapter<Tag, NodeType, isConst>>(
            document.getHeadersFooters());
    }
    else if constexpr (part == Type::DocumentProps)
    {
        return std::make_unique<GenericDocumentPropsNodeAdapter<Tag, NodeType, isConst>>(document);
    }
    else if constexpr (part == Type::ScriptCollection)
    {
        return std::make_unique<GenericScriptCollectionNodeAdapter<Tag, NodeType, isConst>>(document.getScripts());
    }
    else if constexpr (part == Type::CommentCollection)
    {
        return std::make_unique<GenericCommentCollectionNodeAdapter<Tag, NodeType, isConst>>(document.getComments());
    }
    else if constexpr (part == Type::NoteCollection)
    {
        return std::make_unique<GenericNoteCollectionNodeAdapter<Tag, NodeType, isConst>>(document.getNotes());
    }
    else if constexpr (part == Type::TextStyleCollection)
    {
        return std::make_unique<GenericTextStyleCollectionNodeAdapter<Tag, NodeType, isConst>>(
            document.getStyles().getTextStyles());
    }
    else
    {
        static_assert(part == Type::TableStyleCollection);
        return std::make_unique<GenericTableStyleCollectionNodeAdapter<Tag, NodeType, isConst>>(
            document.getStyles().getTableStyles());
    }
}

} // namespace

template<class Derived, OperationDOMNodeType nodeType, OperationDOMNodeType textType, OperationDOMNodeType... parts>
typename NodeAdapterRoot<Derived>::ChildUPtr
DocumentNodeAdapterImpl<Derived, nodeType, textType, parts...>::createChildAdapterIfPossibleImpl(
    const typename NodeAdapterRoot<Derived>::FixedChunk& childAddress, bool)
{
    using Traits = NodeAdapterDetails::Traits<Derived>;
    using Tag = typename Traits::Tag;
    using NodeType = typename Traits::NodeType;
    using World = NodeAdapterDetails::World<Tag>;
    auto& document = getDocument();
    const NodeType childType = childAddress.getNodeType();
    if (childType == World::getNodeType(textType))
    {
        return RichTextAdapterCreatorHelper<Tag, NodeType, Traits::isConst>::makeAdapter(
            document.getTextWithTombstones());
    }
    typename NodeAdapterRoot<Derived>::ChildUPtr child;
    static_cast<void>(((childType == World::getNodeType(parts) &&
                        (child = makePartAdapter<parts, Tag, NodeType, Traits::isConst>(document), true)) ||
                       ...));
    return child;
}

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTextDocumentNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericWorkbookDocumentNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericPresentationDocumentNodeAdapter)

} // namespace Zem::DOMCollaboration

#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"

#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "DOM_Comment.h"
#include "DOM_ConditionalFormat.h"
#include "DOM_Frame.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Note.h"
#include "DOM_Table.h"

#include "Util_Cast.h"

namespace Zem::DOMCollaboration
{

namespace
{

template<class Tag, class NodeType, bool isConst>
decltype(auto) collectionOf(const GenericFrameCollectionNodeAdapter<Tag, NodeType, isConst>& adapter)
{
    return adapter.getFrames();
}

template<class Tag, class NodeType, bool isConst>
decltype(auto) collectionOf(const GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, isConst>& adapter)
{
    return adapter.getConditionalFormats();
}

} // namespace

template<class Derived, OperationDOMNodeType nodeType, class Element, class ElementAdapter>
typename NodeAdapterRoot<Derived>::ChildUPtr
UUIDContainerNodeAdapter<Derived, nodeType, Element, ElementAdapter>::createChildAdapterByKeyIfPossible(
    const NodeAddressing::MapKey& key)
{
    const UUID& uuid = cast<NodeAddressing::SimpleValueMapKey<UUID>>(key).getValue();
    auto* element = this->getSubject().get().find(uuid);
    return element ? std::make_unique<ElementAdapter>(*element) : nullptr;
}

template<class Derived, OperationDOMNodeType nodeType, class ElementAdapter>
IndexExcludingTombstones
TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::getChildrenCountExcludingTombstones() const
{
    return collectionOf(static_cast<const Derived&>(*this)).getLiveElementsCount();
}

template<class Derived, OperationDOMNodeType nodeType, class ElementAdapter>
IndexIncludingTombstones
TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::getChildrenCountIncludingTombstones() const
{
    return collectionOf(static_cast<const Derived&>(*this)).getAllElementsCount();
}

template<class Derived, OperationDOMNodeType nodeType, class ElementAdapter>
typename TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::ChildUPtr
TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::createChildAdapterByIndexIfPossible(
    IndexIncludingTombstones index)
{
    using Traits = NodeAdapterDetails::Traits<Derived>;
    const auto liveIndex = collectionOf(static_cast<const Derived&>(*this)).getTombstones().convertIndex(index);
    if (!liveIndex)
    {
        return std::make_unique<
            GenericTombstoneNodeAdapter<typename Traits::Tag, typename Traits::NodeType, Traits::isConst>>();
    }
    // Behind the last tombstone all places count as live, also those that the list doesn't have.
    return createChildAdapterByIndexIfPossible(*liveIndex);
}

template<class Derived, OperationDOMNodeType nodeType, class ElementAdapter>
typename TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::ChildUPtr
TombstonesListNodeAdapter<Derived, nodeType, ElementAdapter>::createChildAdapterByIndexIfPossible(
    IndexExcludingTombstones index)
{
    using Traits = NodeAdapterDetails::Traits<Derived>;
    auto&& elements = collectionOf(static_cast<const Derived&>(*this)).getElements();
    if (index.get() > elements.size())
    {
        return nullptr;
    }
    if (index.get() == elements.size())
    {
        return std::make_unique<
            GenericCollectionEndMarkNodeAdapter<typename Traits::Tag, typename Traits::NodeType, Traits::isConst>>(
            this->nodeTypeInWorld);
    }
    return std::make_unique<ElementAdapter>(getListElement(elements, index.get()));
}

template<class Tag, class NodeType, bool isConst>
CollectionOf<isConst, std::vector<std::unique_ptr<DOM::Frame>>>
GenericFrameCollectionNodeAdapter<Tag, NodeType, isConst>::getFrames() const
{
    return CollectionOf<isConst, std::vector<std::unique_ptr<DOM::Frame>>>(this->getTable().getFrames());
}

template<class Tag, class NodeType, bool isConst>
CollectionOf<isConst, std::vector<std::unique_ptr<DOM::ConditionalFormat>>>
GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, isConst>::getConditionalFormats() const
{
    return CollectionOf<isConst, std::vector<std::unique_ptr<DOM::ConditionalFormat>>>(
        this->getTable().getConditionalFormats());
}

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericHeaderFooterPairCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericCommentCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericNoteCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTextStyleCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTableStyleCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericScriptCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericFrameCollectionNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericConditionalFormatCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

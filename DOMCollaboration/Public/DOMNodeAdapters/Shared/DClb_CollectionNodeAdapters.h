#pragma once

/// The collections of both worlds: by key, and by index with tombstones.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

#include "DOM_UUIDContainer.h"

#include <memory>
#include <vector>

namespace Zem::DOM
{

class Comment;
class ConditionalFormat;
class Frame;
class HeaderFooterPair;
class NamedTableStyle;
class NamedTextStyle;
class Note;
class Scripts;
class Table;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// A collection of elements by UUID. `ElementAdapter` is the adapter of an element.
template<class Derived, OperationDOMNodeType nodeType, class Element, class ElementAdapter>
class UUIDContainerNodeAdapter : public TypedNodeAdapter<Derived, nodeType, MapNodeAdapterBase<Derived>,
                                                         NodeReference<Derived, DOM::UUIDContainer<Element>>>
{
public:
    using TypedNodeAdapter<Derived, nodeType, MapNodeAdapterBase<Derived>,
                           NodeReference<Derived, DOM::UUIDContainer<Element>>>::TypedNodeAdapter;

    /// Fails: `std::bad_cast` on a key that is no UUID.
    typename NodeAdapterRoot<Derived>::ChildUPtr
    createChildAdapterByKeyIfPossible(const NodeAddressing::MapKey& key) final;
};

template<class Tag, class NodeType, bool isConst>
class GenericHeaderFooterPairCollectionNodeAdapter final
    : public UUIDContainerNodeAdapter<GenericHeaderFooterPairCollectionNodeAdapter<Tag, NodeType, isConst>,
                                      OperationDOMNodeType::HeaderFooterPairCollection, DOM::HeaderFooterPair,
                                      GenericHeaderFooterPairNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericHeaderFooterPairCollectionNodeAdapter::UUIDContainerNodeAdapter::UUIDContainerNodeAdapter;

    NodeOf<GenericHeaderFooterPairCollectionNodeAdapter, DOM::UUIDContainer<DOM::HeaderFooterPair>>&
    getHeadersFooters() const
    {
        return this->getSubject();
    }
};

template<class Tag, class NodeType, bool isConst>
class GenericCommentCollectionNodeAdapter final
    : public UUIDContainerNodeAdapter<GenericCommentCollectionNodeAdapter<Tag, NodeType, isConst>,
                                      OperationDOMNodeType::CommentCollection, DOM::Comment,
                                      GenericCommentNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericCommentCollectionNodeAdapter::UUIDContainerNodeAdapter::UUIDContainerNodeAdapter;

    NodeOf<GenericCommentCollectionNodeAdapter, DOM::UUIDContainer<DOM::Comment>>& getComments() const
    {
        return this->getSubject();
    }
};

template<class Tag, class NodeType, bool isConst>
class GenericNoteCollectionNodeAdapter final
    : public UUIDContainerNodeAdapter<GenericNoteCollectionNodeAdapter<Tag, NodeType, isConst>,
                                      OperationDOMNodeType::NoteCollection, DOM::Note,
                                      GenericNoteNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericNoteCollectionNodeAdapter::UUIDContainerNodeAdapter::UUIDContainerNodeAdapter;

    NodeOf<GenericNoteCollectionNodeAdapter, DOM::UUIDContainer<DOM::Note>>& getNotes() const
    {
        return this->getSubject();
    }
};

template<class Tag, class NodeType, bool isConst>
class GenericTextStyleCollectionNodeAdapter final
    : public UUIDContainerNodeAdapter<GenericTextStyleCollectionNodeAdapter<Tag, NodeType, isConst>,
                                      OperationDOMNodeType::TextStyleCollection, DOM::NamedTextStyle,
                                      GenericTextStyleNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericTextStyleCollectionNodeAdapter::UUIDContainerNodeAdapter::UUIDContainerNodeAdapter;

    NodeOf<GenericTextStyleCollectionNodeAdapter, DOM::UUIDContainer<DOM::NamedTextStyle>>& getTextStyles() const
    {
        return this->getSubject();
    }
};

template<class Tag, class NodeType, bool isConst>
class GenericTableStyleCollectionNodeAdapter final
    : public UUIDContainerNodeAdapter<GenericTableStyleCollectionNodeAdapter<Tag, NodeType, isConst>,
                                      OperationDOMNodeType::TableStyleCollection, DOM::NamedTableStyle,
                                      GenericTableStyleNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericTableStyleCollectionNodeAdapter::UUIDContainerNodeAdapter::UUIDContainerNodeAdapter;

    NodeOf<GenericTableStyleCollectionNodeAdapter, DOM::UUIDContainer<DOM::NamedTableStyle>>& getTableStyles() const
    {
        return this->getSubject();
    }
};

/// The scripts of a document, by name. A script is a value of the collection and no node.
template<class Tag, class NodeType, bool isConst>
class GenericScriptCollectionNodeAdapter final
    : public TypedNodeAdapter<GenericScriptCollectionNodeAdapter<Tag, NodeType, isConst>,
                              OperationDOMNodeType::ScriptCollection,
                              MapNodeAdapterBase<GenericScriptCollectionNodeAdapter<Tag, NodeType, isConst>>,
                              NodeReference<GenericScriptCollectionNodeAdapter<Tag, NodeType, isConst>, DOM::Scripts>>
{
public:
    using GenericScriptCollectionNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    NodeOf<GenericScriptCollectionNodeAdapter, DOM::Scripts>& getScripts() const
    {
        return this->getSubject();
    }

    typename GenericScriptCollectionNodeAdapter::ChildUPtr
    createChildAdapterByKeyIfPossible(const NodeAddressing::MapKey&) override
    {
        return nullptr;
    }
};

/// A list of a table whose items leave tombstones.
template<class Derived, OperationDOMNodeType nodeType, class ElementAdapter>
class TombstonesListNodeAdapter
    : public TypedNodeAdapter<Derived, nodeType, ListNodeAdapterBase<Derived>, NodeReference<Derived, DOM::Table>>
{
public:
    using TypedNodeAdapter<Derived, nodeType, ListNodeAdapterBase<Derived>,
                           NodeReference<Derived, DOM::Table>>::TypedNodeAdapter;
    using ChildUPtr = typename NodeAdapterRoot<Derived>::ChildUPtr;

    NodeOf<Derived, DOM::Table>& getTable() const
    {
        return this->getSubject();
    }

    IndexExcludingTombstones getChildrenCountExcludingTombstones() const final;
    IndexIncludingTombstones getChildrenCountIncludingTombstones() const final;
    ChildUPtr createChildAdapterByIndexIfPossible(IndexIncludingTombstones index) final;
    ChildUPtr createChildAdapterByIndexIfPossible(IndexExcludingTombstones index) final;
};

template<class Tag, class NodeType, bool isConst>
class GenericFrameCollectionNodeAdapter final
    : public TombstonesListNodeAdapter<GenericFrameCollectionNodeAdapter<Tag, NodeType, isConst>,
                                       OperationDOMNodeType::FrameCollection,
                                       GenericFrameNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericFrameCollectionNodeAdapter::TombstonesListNodeAdapter::TombstonesListNodeAdapter;

    CollectionOf<isConst, std::vector<std::unique_ptr<DOM::Frame>>> getFrames() const;
};

template<class Tag, class NodeType, bool isConst>
class GenericConditionalFormatCollectionNodeAdapter final
    : public TombstonesListNodeAdapter<GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, isConst>,
                                       OperationDOMNodeType::ConditionalFormatCollection,
                                       GenericConditionalFormatNodeAdapter<Tag, NodeType, isConst>>
{
public:
    using GenericConditionalFormatCollectionNodeAdapter::TombstonesListNodeAdapter::TombstonesListNodeAdapter;

    CollectionOf<isConst, std::vector<std::unique_ptr<DOM::ConditionalFormat>>> getConditionalFormats() const;
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericHeaderFooterPairCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCommentCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericNoteCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTextStyleCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTableStyleCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericScriptCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericFrameCollectionNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericConditionalFormatCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

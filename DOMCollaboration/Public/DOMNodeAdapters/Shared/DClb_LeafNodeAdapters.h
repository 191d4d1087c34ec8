#pragma once

/// The leaves of both worlds that show an object of the document.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

namespace Zem::DOM
{

class Comment;
class ConditionalFormat;
class Document;
class Frame;
class NamedTableStyle;
class NamedTextStyle;
class Note;
class SectionTag;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// The tag of a section in a text.
template<class Tag, class NodeType, bool isConst>
class GenericSectionTagNodeAdapter final
    : public FixedLeafNodeAdapter<GenericSectionTagNodeAdapter<Tag, NodeType, isConst>,
                                  OperationDOMNodeType::SectionTag, DOM::SectionTag>
{
public:
    using GenericSectionTagNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericSectionTagNodeAdapter, DOM::SectionTag>& getSectionTag() const
    {
        return this->getSubject();
    }
};

/// A block without text or children. The one such class is `DOM::FieldBlock`.
template<class Tag, class NodeType, class BlockType, bool isConst>
class GenericAtomicBlockNodeAdapter final
    : public FixedLeafNodeAdapter<GenericAtomicBlockNodeAdapter<Tag, NodeType, BlockType, isConst>,
                                  OperationDOMNodeType::FieldBlock, BlockType>
{
public:
    using GenericAtomicBlockNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericAtomicBlockNodeAdapter, BlockType>& getBlock() const
    {
        return this->getSubject();
    }
};

/// A comment. Its blocks are a property of it, not nodes of the tree.
template<class Tag, class NodeType, bool isConst>
class GenericCommentNodeAdapter final : public FixedLeafNodeAdapter<GenericCommentNodeAdapter<Tag, NodeType, isConst>,
                                                                    OperationDOMNodeType::Comment, DOM::Comment>
{
public:
    using GenericCommentNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericCommentNodeAdapter, DOM::Comment>& getComment() const
    {
        return this->getSubject();
    }
};

/// A note. Its blocks are a property of it, not nodes of the tree.
template<class Tag, class NodeType, bool isConst>
class GenericNoteNodeAdapter final
    : public FixedLeafNodeAdapter<GenericNoteNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Note, DOM::Note>
{
public:
    using GenericNoteNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericNoteNodeAdapter, DOM::Note>& getNote() const
    {
        return this->getSubject();
    }
};

/// A named style of text.
template<class Tag, class NodeType, bool isConst>
class GenericTextStyleNodeAdapter final
    : public FixedLeafNodeAdapter<GenericTextStyleNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::TextStyle,
                                  DOM::NamedTextStyle>
{
public:
    using GenericTextStyleNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericTextStyleNodeAdapter, DOM::NamedTextStyle>& getTextStyle() const
    {
        return this->getSubject();
    }
};

/// A named style of tables.
template<class Tag, class NodeType, bool isConst>
class GenericTableStyleNodeAdapter final
    : public FixedLeafNodeAdapter<GenericTableStyleNodeAdapter<Tag, NodeType, isConst>,
                                  OperationDOMNodeType::TableStyle, DOM::NamedTableStyle>
{
public:
    using GenericTableStyleNodeAdapter::FixedLeafNodeAdapter::FixedLeafNodeAdapter;

    NodeOf<GenericTableStyleNodeAdapter, DOM::NamedTableStyle>& getTableStyle() const
    {
        return this->getSubject();
    }
};

/// A frame that floats in a table.
template<class Tag, class NodeType, bool isConst>
class GenericFrameNodeAdapter final
    : public PlainLeafNodeAdapter<GenericFrameNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Frame,
                                  NodeReference<GenericFrameNodeAdapter<Tag, NodeType, isConst>, DOM::Frame>>
{
public:
    using GenericFrameNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericFrameNodeAdapter, DOM::Frame>& getFrame() const
    {
        return this->getSubject();
    }
};

/// A conditional format of a table.
template<class Tag, class NodeType, bool isConst>
class GenericConditionalFormatNodeAdapter final
    : public PlainLeafNodeAdapter<
          GenericConditionalFormatNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::ConditionalFormat,
          NodeReference<GenericConditionalFormatNodeAdapter<Tag, NodeType, isConst>, DOM::ConditionalFormat>>
{
public:
    using GenericConditionalFormatNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericConditionalFormatNodeAdapter, DOM::ConditionalFormat>& getConditionalFormat() const
    {
        return this->getSubject();
    }
};

/// The properties of a whole document.
template<class Tag, class NodeType, bool isConst>
class GenericDocumentPropsNodeAdapter final
    : public PlainLeafNodeAdapter<GenericDocumentPropsNodeAdapter<Tag, NodeType, isConst>,
                                  OperationDOMNodeType::DocumentProps,
                                  NodeReference<GenericDocumentPropsNodeAdapter<Tag, NodeType, isConst>, DOM::Document>>
{
public:
    using GenericDocumentPropsNodeAdapter::PlainLeafNodeAdapter::PlainLeafNodeAdapter;

    NodeOf<GenericDocumentPropsNodeAdapter, DOM::Document>& getDocument() const
    {
        return this->getSubject();
    }
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericSectionTagNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCommentNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericNoteNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTextStyleNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTableStyleNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericFrameNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericConditionalFormatNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericDocumentPropsNodeAdapter)

extern template class ZEM_EXPORT
    GenericAtomicBlockNodeAdapter<OperationNodeAddressTag, unsigned long, DOM::FieldBlock, true>;
extern template class ZEM_EXPORT
    GenericAtomicBlockNodeAdapter<OperationNodeAddressTag, unsigned long, DOM::FieldBlock, false>;
extern template class ZEM_EXPORT
    GenericAtomicBlockNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, DOM::FieldBlock, true>;
extern template class ZEM_EXPORT
    GenericAtomicBlockNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, DOM::FieldBlock, false>;

} // namespace Zem::DOMCollaboration

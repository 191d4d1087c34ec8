#pragma once

/// The roots of the three kinds of document.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"

namespace Zem::DOM
{

class Document;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// The root of a document whose main text is shown as a child of `textType`, and which has the `parts` beside it.
template<class Derived, OperationDOMNodeType nodeType, OperationDOMNodeType textType, OperationDOMNodeType... parts>
class DocumentNodeAdapterImpl
    : public TypedNodeAdapter<Derived, nodeType, FixedNodeAdapterBase<Derived>, NodeReference<Derived, DOM::Document>>
{
public:
    using TypedNodeAdapter<Derived, nodeType, FixedNodeAdapterBase<Derived>,
                           NodeReference<Derived, DOM::Document>>::TypedNodeAdapter;

    NodeOf<Derived, DOM::Document>& getDocument() const
    {
        return this->getSubject();
    }

    typename NodeAdapterRoot<Derived>::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename NodeAdapterRoot<Derived>::FixedChunk& childAddress, bool) final;
};

template<class Tag, class NodeType, bool isConst>
class GenericTextDocumentNodeAdapter final
    : public DocumentNodeAdapterImpl<
          GenericTextDocumentNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::TextDocument,
          OperationDOMNodeType::TextWithTombstones, OperationDOMNodeType::HeaderFooterPairCollection,
          OperationDOMNodeType::DocumentProps, OperationDOMNodeType::ScriptCollection,
          OperationDOMNodeType::CommentCollection, OperationDOMNodeType::NoteCollection,
          OperationDOMNodeType::TextStyleCollection, OperationDOMNodeType::TableStyleCollection>
{
public:
    using GenericTextDocumentNodeAdapter::DocumentNodeAdapterImpl::DocumentNodeAdapterImpl;
};

/// The main text of a workbook is the list of its worksheets.
template<class Tag, class NodeType, bool isConst>
class GenericWorkbookDocumentNodeAdapter final
    : public DocumentNodeAdapterImpl<
          GenericWorkbookDocumentNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::WorkbookDocument,
          OperationDOMNodeType::WorksheetCollection, OperationDOMNodeType::HeaderFooterPairCollection,
          OperationDOMNodeType::DocumentProps, OperationDOMNodeType::ScriptCollection,
          OperationDOMNodeType::CommentCollection, OperationDOMNodeType::NoteCollection,
          OperationDOMNodeType::TextStyleCollection, OperationDOMNodeType::TableStyleCollection>
{
public:
    using GenericWorkbookDocumentNodeAdapter::DocumentNodeAdapterImpl::DocumentNodeAdapterImpl;
};

template<class Tag, class NodeType, bool isConst>
class GenericPresentationDocumentNodeAdapter final
    : public DocumentNodeAdapterImpl<GenericPresentationDocumentNodeAdapter<Tag, NodeType, isConst>,
                                     OperationDOMNodeType::PresentationDocument,
                                     OperationDOMNodeType::TextWithTombstones, OperationDOMNodeType::DocumentProps,
                                     OperationDOMNodeType::ScriptCollection>
{
public:
    using GenericPresentationDocumentNodeAdapter::DocumentNodeAdapterImpl::DocumentNodeAdapterImpl;
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericTextDocumentNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericWorkbookDocumentNodeAdapter)
ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericPresentationDocumentNodeAdapter)

} // namespace Zem::DOMCollaboration

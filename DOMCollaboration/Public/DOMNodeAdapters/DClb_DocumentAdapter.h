#pragma once

/// The adapters of whole documents.

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "DOM_Document.h"

namespace Zem::DOMCollaboration
{

/// What a document of any kind answers with, from the document itself. Its defaults are in its styles, so that it has
/// no local ones.
class ZEM_EXPORT DocumentAdapter : public virtual DOMAdapter
{
public:
    explicit DocumentAdapter(DOM::Document& document)
        : _document(document)
    {
    }

    const DOM::Document& getDocument() const
    {
        return _document;
    }

    DOM::Document& getDocument()
    {
        return _document;
    }

    const DOM::UUIDContainer<DOM::NumberedList>& getNumLists() const override;
    const DOM::SharedObjectFactory& getSharedObjectFactory() const override;
    const DOM::Styles& getStyles() const override;
    const DOM::Theme* getTheme() const override;
    const DOM::ColorMap* getColorMap() const override;
    bool isChangesTrackingEnabled() const override;
    DOM::ParaPropsConstPtr getLocalDefaultParaProps() const override;
    DOM::RunPropsConstPtr getLocalDefaultRunProps() const override;

private:
    DOM::Document& _document;
};

class ZEM_EXPORT TextDocumentAdapter final
    : public DocumentAdapterImpl<TextDocumentAdapter, DocumentAdapter, GenericTextDocumentNodeAdapter>
{
public:
    using DocumentAdapterImpl::DocumentAdapterImpl;

    const DOM::CellPropsConstPtr& getDefaultCellProps() const override;
};

class ZEM_EXPORT WorkbookDocumentAdapter final
    : public DocumentAdapterImpl<WorkbookDocumentAdapter, DocumentAdapter, GenericWorkbookDocumentNodeAdapter>
{
public:
    using DocumentAdapterImpl::DocumentAdapterImpl;

    const DOM::CellPropsConstPtr& getDefaultCellProps() const override;
};

class ZEM_EXPORT PresentationDocumentAdapter final
    : public DocumentAdapterImpl<PresentationDocumentAdapter, DocumentAdapter, GenericPresentationDocumentNodeAdapter>
{
public:
    using DocumentAdapterImpl::DocumentAdapterImpl;

    const DOM::CellPropsConstPtr& getDefaultCellProps() const override;
};

extern template class DocumentAdapterImpl<TextDocumentAdapter, DocumentAdapter, GenericTextDocumentNodeAdapter>;
extern template class DocumentAdapterImpl<WorkbookDocumentAdapter, DocumentAdapter, GenericWorkbookDocumentNodeAdapter>;
extern template class DocumentAdapterImpl<PresentationDocumentAdapter, DocumentAdapter,
                                          GenericPresentationDocumentNodeAdapter>;

} // namespace Zem::DOMCollaboration

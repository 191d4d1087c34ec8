// The adapters of whole documents, and of detached texts.

#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_DocumentNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "DOM_DefaultCellProps.h"

namespace Zem::DOMCollaboration
{

namespace
{

/// What the root's adapter shows.
template<class Data>
auto& getRootSubject(Data& data)
{
    if constexpr (std::is_same_v<std::remove_const_t<Data>, DocumentAdapter>)
    {
        return data.getDocument();
    }
    else
    {
        return data.getTextWithTombstones();
    }
}

} // namespace

DOMAdapter::~DOMAdapter() = default;

template<class Derived, class Data, template<class, class, bool> class Root>
void DocumentAdapterImpl<Derived, Data, Root>::accept(VisitorType& visitor)
{
    visitor.visit(static_cast<Derived&>(*this));
}

template<class Derived, class Data, template<class, class, bool> class Root>
void DocumentAdapterImpl<Derived, Data, Root>::accept(ConstVisitorType& visitor) const
{
    visitor.visit(static_cast<const Derived&>(*this));
}

template<class Derived, class Data, template<class, class, bool> class Root>
std::unique_ptr<NativeNodeAdapter<false>> DocumentAdapterImpl<Derived, Data, Root>::createNodeAdapter()
{
    return std::make_unique<InNativeWorld<Root, false>>(getRootSubject<Data>(*this));
}

template<class Derived, class Data, template<class, class, bool> class Root>
std::unique_ptr<NativeNodeAdapter<true>> DocumentAdapterImpl<Derived, Data, Root>::createNodeAdapter() const
{
    return std::make_unique<InNativeWorld<Root, true>>(getRootSubject<const Data>(*this));
}

template<class Derived, class Data, template<class, class, bool> class Root>
std::unique_ptr<OperationNodeAdapter<false>> DocumentAdapterImpl<Derived, Data, Root>::createOperationNodeAdapter()
{
    return std::make_unique<InOperationWorld<Root, false>>(getRootSubject<Data>(*this));
}

template<class Derived, class Data, template<class, class, bool> class Root>
std::unique_ptr<OperationNodeAdapter<true>> DocumentAdapterImpl<Derived, Data, Root>::createOperationNodeAdapter() const
{
    return std::make_unique<InOperationWorld<Root, true>>(getRootSubject<const Data>(*this));
}

const DOM::UUIDContainer<DOM::NumberedList>& DocumentAdapter::getNumLists() const
{
    return getDocument().getNumLists();
}

const DOM::SharedObjectFactory& DocumentAdapter::getSharedObjectFactory() const
{
    return getDocument().getSharedObjectFactory();
}

const DOM::Styles& DocumentAdapter::getStyles() const
{
    return getDocument().getStyles();
}

const DOM::Theme* DocumentAdapter::getTheme() const
{
    return &getDocument().getTheme();
}

const DOM::ColorMap* DocumentAdapter::getColorMap() const
{
    return &getDocument().getColorMap();
}

bool DocumentAdapter::isChangesTrackingEnabled() const
{
    return getDocument().isChangesTrackingEnabled();
}

DOM::ParaPropsConstPtr DocumentAdapter::getLocalDefaultParaProps() const
{
    return nullptr;
}

DOM::RunPropsConstPtr DocumentAdapter::getLocalDefaultRunProps() const
{
    return nullptr;
}

const DOM::CellPropsConstPtr& TextDocumentAdapter::getDefaultCellProps() const
{
    return DOM::getWordDefaultCellProps();
}

const DOM::CellPropsConstPtr& WorkbookDocumentAdapter::getDefaultCellProps() const
{
    return DOM::getWorksheetDefaultCellProps();
}

const DOM::CellPropsConstPtr& PresentationDocumentAdapter::getDefaultCellProps() const
{
    return DOM::getDefaultCellProps();
}

BlocksAdapter::BlocksAdapter(DOM::TextWithTombstones& text, const DOM::Styles& styles, const DOM::Theme* theme,
                             const DOM::ColorMap* colorMap, const DOM::ParaPropsConstPtr& localDefaultParaProps,
                             const DOM::RunPropsConstPtr& localDefaultRunProps,
                             const DOM::SharedObjectFactory& sharedObjectFactory)
    : _text(text)
    , _styles(styles)
    , _theme(theme)
    , _colorMap(colorMap)
    , _localDefaultParaProps(localDefaultParaProps)
    , _localDefaultRunProps(localDefaultRunProps)
    , _sharedObjectFactory(sharedObjectFactory)
{
}

const DOM::UUIDContainer<DOM::NumberedList>& BlocksAdapter::getNumLists() const
{
    return _numLists;
}

const DOM::SharedObjectFactory& BlocksAdapter::getSharedObjectFactory() const
{
    return _sharedObjectFactory;
}

const DOM::Styles& BlocksAdapter::getStyles() const
{
    return _styles;
}

const DOM::Theme* BlocksAdapter::getTheme() const
{
    return _theme;
}

const DOM::ColorMap* BlocksAdapter::getColorMap() const
{
    return _colorMap;
}

bool BlocksAdapter::isChangesTrackingEnabled() const
{
    return _isChangesTrackingEnabled;
}

const DOM::CellPropsConstPtr& BlocksAdapter::getDefaultCellProps() const
{
    return DOM::getDefaultCellProps();
}

DOM::ParaPropsConstPtr BlocksAdapter::getLocalDefaultParaProps() const
{
    return _localDefaultParaProps;
}

DOM::RunPropsConstPtr BlocksAdapter::getLocalDefaultRunProps() const
{
    return _localDefaultRunProps;
}

template class DocumentAdapterImpl<TextDocumentAdapter, DocumentAdapter, GenericTextDocumentNodeAdapter>;
template class DocumentAdapterImpl<WorkbookDocumentAdapter, DocumentAdapter, GenericWorkbookDocumentNodeAdapter>;
template class DocumentAdapterImpl<PresentationDocumentAdapter, DocumentAdapter,
                                   GenericPresentationDocumentNodeAdapter>;
template class DocumentAdapterImpl<BlocksAdapterWithNodeAdapter, BlocksAdapter, GenericTemporaryDOMNodeAdapter>;

} // namespace Zem::DOMCollaboration

#pragma once

/// What the library needs to know of a whole document, whatever its kind.

#include "DOM_CellStyle.h"
#include "DOM_NumberedList.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_SharedObjectFactory.h"
#include "DOM_Styles.h"
#include "DOM_Theme.h"
#include "DOM_UUIDContainer.h"

#include "Util_Export.h"
#include "Util_Visitor.h"

namespace Zem::DOMCollaboration
{

class PresentationDocumentAdapter;
class TextDocumentAdapter;
class WorkbookDocumentAdapter;
class BlocksAdapterWithNodeAdapter;

/// The document-wide settings. An adapter refers to the document, which must outlive it.
class ZEM_EXPORT DOMAdapter
{
public:
    using VisitorType = Visitor<TypeList<PresentationDocumentAdapter, TextDocumentAdapter, WorkbookDocumentAdapter,
                                         BlocksAdapterWithNodeAdapter>>;
    using ConstVisitorType = Visitor<TypeList<const PresentationDocumentAdapter, const TextDocumentAdapter,
                                              const WorkbookDocumentAdapter, const BlocksAdapterWithNodeAdapter>>;

    virtual ~DOMAdapter();

    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    virtual const DOM::UUIDContainer<DOM::NumberedList>& getNumLists() const = 0;
    virtual const DOM::SharedObjectFactory& getSharedObjectFactory() const = 0;
    virtual const DOM::Styles& getStyles() const = 0;

    /// May be null.
    virtual const DOM::Theme* getTheme() const = 0;

    /// May be null.
    virtual const DOM::ColorMap* getColorMap() const = 0;

    virtual bool isChangesTrackingEnabled() const = 0;

    /// How cells look that nothing else is said of. Never null.
    virtual const DOM::CellPropsConstPtr& getDefaultCellProps() const = 0;

    /// The properties that a text takes from what it stands in for; null where the styles have all defaults.
    virtual DOM::ParaPropsConstPtr getLocalDefaultParaProps() const = 0;
    virtual DOM::RunPropsConstPtr getLocalDefaultRunProps() const = 0;

    DOMAdapter(const DOMAdapter&) = delete;
    DOMAdapter& operator=(const DOMAdapter&) = delete;

protected:
    DOMAdapter() = default;
};

} // namespace Zem::DOMCollaboration

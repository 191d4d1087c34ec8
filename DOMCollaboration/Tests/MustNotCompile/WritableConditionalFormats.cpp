// error: discards qualifiers|not marked const|no viable overloaded|passing 'const
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"

#include "DOM_ConditionalFormat.h"

namespace Zem::DOMCollaboration
{

#ifdef MUST_NOT_COMPILE
constexpr bool isReadonly = true;
#else
constexpr bool isReadonly = false;
#endif

void change(const InOperationWorld<GenericConditionalFormatCollectionNodeAdapter, isReadonly>& adapter)
{
    auto&& formats = adapter.getConditionalFormats().getElements();
    getListElement(formats, 0) = DOM::ConditionalFormat();
}

} // namespace Zem::DOMCollaboration

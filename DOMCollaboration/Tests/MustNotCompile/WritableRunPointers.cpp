// error: non-pointer type|is not a pointer
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"

#include "DOM_RunStyle.h"

namespace Zem::DOMCollaboration
{

#ifdef MUST_NOT_COMPILE
constexpr bool isReadonly = true;
#else
constexpr bool isReadonly = false;
#endif

void change(const GenericRunCollectionNodeAdapter<isReadonly>& adapter)
{
    adapter.getRuns()[0]->getSharedStyle().reset();
}

} // namespace Zem::DOMCollaboration

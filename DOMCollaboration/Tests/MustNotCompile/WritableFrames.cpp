// error: discards qualifiers|not marked const
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"

#include "DOM_Frame.h"

namespace Zem::DOMCollaboration
{

#ifdef MUST_NOT_COMPILE
constexpr bool isReadonly = true;
#else
constexpr bool isReadonly = false;
#endif

void change(const InOperationWorld<GenericFrameCollectionNodeAdapter, isReadonly>& adapter)
{
    auto&& frames = adapter.getFrames().getElements();
    getListElement(frames, 0).setGraphicalObject(nullptr);
}

} // namespace Zem::DOMCollaboration

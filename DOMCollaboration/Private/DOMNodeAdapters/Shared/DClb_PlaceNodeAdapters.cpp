#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"

namespace Zem::DOMCollaboration
{

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericTombstoneNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericCollectionEndMarkNodeAdapter)
ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericCharNodeAdapter)

} // namespace Zem::DOMCollaboration

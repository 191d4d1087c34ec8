#include "DOMNodeAdapters/Shared/DClb_CellNodeAdapter.h"

#include "DOMNodeAdapters/DClb_RichTextAdapterMaker.h"

namespace Zem::DOMCollaboration
{

template<class Tag, class NodeType, bool isConst>
typename GenericCellNodeAdapter<Tag, NodeType, isConst>::ChildUPtr
GenericCellNodeAdapter<Tag, NodeType, isConst>::createChildAdapterIfPossibleImpl(
    const typename GenericCellNodeAdapter::FixedChunk& childAddress, bool)
{
    return RichTextAdapterMaker<Tag, NodeType, isConst>::createChildAdapter(childAddress, this->getSubject());
}

ZEM_INSTANTIATE_SHARED_NODE_ADAPTER(GenericCellNodeAdapter)

} // namespace Zem::DOMCollaboration

#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"

#include "DOMNodeAdapters/DClb_BlockAdapterMaker.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"

namespace Zem::DOMCollaboration
{

template<bool isConst>
ReadonlyVector<DOM::Blocks> GenericBlockCollectionNodeAdapter<isConst>::getBlocks() const
{
    return ReadonlyVector<DOM::Blocks>(this->getSubject().getText().getBlocks());
}

template<bool isConst>
unsigned long GenericBlockCollectionNodeAdapter<isConst>::getSize() const
{
    return getBlocks().size();
}

template<bool isConst>
typename NativeNodeAdapter<isConst>::ChildUPtr
GenericBlockCollectionNodeAdapter<isConst>::createItemAdapter(unsigned long index) const
{
    return makeBlockAdapter<NativeNodeAddressTag, NativeDOMNodeType, isConst, GenericParagraphNodeAdapter<isConst>>(
        derefPtr(this->getSubject().getExistingText().getBlocks().at(index)));
}

ZEM_INSTANTIATE_NODE_ADAPTER(GenericBlockCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

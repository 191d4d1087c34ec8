#pragma once

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"
#include "DOMNodeAdapters/DClb_TextReference.h"
#include "DOMNodeAdapters/Native/DClb_NativeListNodeAdapter.h"

#include "Util_ReadonlyVector.h"

namespace Zem::DOMCollaboration
{

/// The blocks of a text, and the worksheets of a workbook.
template<bool isConst>
class GenericBlockCollectionNodeAdapter final
    : public NativeListNodeAdapter<GenericBlockCollectionNodeAdapter<isConst>, NativeDOMNodeType::BlockCollection,
                                   TextReference<isConst>>
{
public:
    using GenericBlockCollectionNodeAdapter::NativeListNodeAdapter::NativeListNodeAdapter;

    /// The blocks; none for the text of a cell that isn't there yet.
    ReadonlyVector<DOM::Blocks> getBlocks() const;

    /// The blocks, for change; brings the cell into being whose text this is.
    template<bool isWritable = !isConst>
    requires isWritable DOM::Blocks& getOrCreateBlocks() const
    {
        return getOrCreateText(this->getSubject()).getBlocks();
    }

    unsigned long getSize() const;

    /// Requires: `index` < `getSize()`.
    typename NativeNodeAdapter<isConst>::ChildUPtr createItemAdapter(unsigned long index) const;
};

ZEM_DECLARE_NODE_ADAPTER(GenericBlockCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

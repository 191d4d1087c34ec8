#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"

#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

namespace Zem::DOMCollaboration
{

template<bool isConst>
typename NativeNodeAdapter<isConst>::ChildUPtr GenericParagraphNodeAdapter<isConst>::createChildAdapterIfPossibleImpl(
    const typename NativeNodeAdapter<isConst>::FixedChunk& childAddress, bool)
{
    if (childAddress.getNodeType() != NativeDOMNodeType::RunCollection)
    {
        return nullptr;
    }
    return std::make_unique<GenericRunCollectionNodeAdapter<isConst>>(getParagraph().getRuns());
}

template<bool isConst>
unsigned long GenericRunCollectionNodeAdapter<isConst>::getSize() const
{
    return getRuns().size();
}

template<bool isConst>
typename NativeNodeAdapter<isConst>::ChildUPtr
GenericRunCollectionNodeAdapter<isConst>::createItemAdapter(unsigned long index) const
{
    NodeOf<GenericRunCollectionNodeAdapter, DOM::Run>& run = getListElement(getRuns(), index);
    if (run.getKind() == DOM::RunKind::TextRun)
    {
        return std::make_unique<GenericTextRunNodeAdapter<isConst>>(
            static_cast<NodeOf<GenericRunCollectionNodeAdapter, DOM::TextRun>&>(run));
    }
    return std::make_unique<GenericRunNodeAdapter<isConst>>(run);
}

template<bool isConst>
typename NativeNodeAdapter<isConst>::ChildUPtr GenericTextRunNodeAdapter<isConst>::createChildAdapterIfPossibleImpl(
    const typename NativeNodeAdapter<isConst>::FixedChunk& childAddress, bool)
{
    if (childAddress.getNodeType() != NativeDOMNodeType::CharCollection)
    {
        return nullptr;
    }
    return std::make_unique<GenericCharCollectionNodeAdapter<isConst>>(getRun());
}

template<bool isConst>
unsigned long GenericCharCollectionNodeAdapter<isConst>::getSize() const
{
    return getTextRun().getText().size();
}

template<bool isConst>
typename NativeNodeAdapter<isConst>::ChildUPtr
GenericCharCollectionNodeAdapter<isConst>::createItemAdapter(unsigned long) const
{
    return std::make_unique<InNativeWorld<GenericCharNodeAdapter, isConst>>();
}

ZEM_INSTANTIATE_NODE_ADAPTER(GenericParagraphNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericRunCollectionNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericRunNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericTextRunNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericCharCollectionNodeAdapter)

} // namespace Zem::DOMCollaboration

#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"

#include "DClb_BlockAdapterMaker.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include "DOM_Runs.h"

namespace Zem::DOMCollaboration
{

template<bool isConst>
ReadonlyVector<DOM::Blocks> GenericTextWithTombstonesNodeAdapter<isConst>::getBlocks() const
{
    return ReadonlyVector<DOM::Blocks>(this->getSubject().getText().getBlocks());
}

template<bool isConst>
const CollaborationUtils::TombstonesStorage& GenericTextWithTombstonesNodeAdapter<isConst>::getTombstones() const
{
    return this->getSubject().getText().getTombstones();
}

template<bool isConst>
boost::optional<PlanePlace>
GenericTextWithTombstonesNodeAdapter<isConst>::findPlace(IndexExcludingTombstones index) const
{
    return PlaneWalk::find(this->getSubject().getText().getBlocks(), index);
}

template<bool isConst>
IndexExcludingTombstones GenericTextWithTombstonesNodeAdapter<isConst>::getChildrenCountExcludingTombstones() const
{
    return IndexExcludingTombstones(TextWithTombstonesPositionUtils::getPlaneSize(getBlocks()));
}

template<bool isConst>
IndexIncludingTombstones GenericTextWithTombstonesNodeAdapter<isConst>::getChildrenCountIncludingTombstones() const
{
    return IndexIncludingTombstones(getChildrenCountExcludingTombstones().get() + getTombstones().getTombstonesCount());
}

template<bool isConst>
typename GenericTextWithTombstonesNodeAdapter<isConst>::ChildUPtr
GenericTextWithTombstonesNodeAdapter<isConst>::createChildAdapterByIndexIfPossible(IndexIncludingTombstones index)
{
    const auto liveIndex = getTombstones().convertIndex(index);
    if (!liveIndex)
    {
        return std::make_unique<InOperationWorld<GenericTombstoneNodeAdapter, isConst>>();
    }
    return createChildAdapterByIndexIfPossible(*liveIndex);
}

template<bool isConst>
typename GenericTextWithTombstonesNodeAdapter<isConst>::ChildUPtr
GenericTextWithTombstonesNodeAdapter<isConst>::createChildAdapterByIndexIfPossible(IndexExcludingTombstones index)
{
    const boost::optional<PlanePlace> place = findPlace(index);
    return place ? createChildAdapterAt(*place) : nullptr;
}

template<bool isConst>
typename GenericTextWithTombstonesNodeAdapter<isConst>::ChildUPtr
GenericTextWithTombstonesNodeAdapter<isConst>::createChildAdapterAt(const PlanePlace& place)
{
    if (place._kind == PlaceKind::TextEnd)
    {
        return std::make_unique<InOperationWorld<GenericCollectionEndMarkNodeAdapter, isConst>>(
            convertOperationNodeType(OperationDOMNodeType::TextWithTombstones));
    }
    ConstIf<isConst, DOM::TextWithTombstones>& text = this->getSubject().getExistingText();
    ConstIf<isConst, DOM::Block>& block = derefPtr(text.getBlocks().at(place._blockIndex));
    switch (place._kind)
    {
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaTag:
        return makeBlockAdapter<OperationNodeAddressTag, unsigned long, isConst,
                                GenericParagraphTagNodeAdapter<isConst>>(block);
    case PlaceKind::ParaMark:
        return std::make_unique<GenericParagraphMarkNodeAdapter<isConst>>(
            static_cast<ConstIf<isConst, DOM::Paragraph>&>(block));
    case PlaceKind::AtomicRun:
    case PlaceKind::TextRunTag:
    {
        ConstIf<isConst, DOM::Run>& run =
            derefPtr(static_cast<ConstIf<isConst, DOM::Paragraph>&>(block).getRuns().at(place._runIndex));
        return std::make_unique<GenericRunTagNodeAdapter<isConst>>(run);
    }
    case PlaceKind::Char:
        return std::make_unique<InOperationWorld<GenericCharNodeAdapter, isConst>>();
    case PlaceKind::TextEnd:
        break;
    }
    ZEM_FAIL("Invalid enum value");
}

ZEM_INSTANTIATE_NODE_ADAPTER(GenericTextWithTombstonesNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericParagraphTagNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericParagraphMarkNodeAdapter)
ZEM_INSTANTIATE_NODE_ADAPTER(GenericRunTagNodeAdapter)

} // namespace Zem::DOMCollaboration

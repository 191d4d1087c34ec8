#include "TextWrappers/DClb_BlockWrappers.h"

#include "TextWrappers/DClb_WrapperSupport.h"

namespace Zem::DOMCollaboration
{

template<bool isReadonly>
BlockWrapperValue<isReadonly> GenericBlockCollectionWrapper<isReadonly>::getElement(unsigned long index) const
{
    WrapperDetails::requireIndex(index, _blocks->size());
    ConstIf<isReadonly, DOM::Block>& block = derefPtr((*_blocks)[index]);
    if (block.getKind() == DOM::BlockKind::Paragraph)
    {
        using Paragraph = ConstIf<isReadonly, DOM::Paragraph>;
        return GenericParagraphWrapper<isReadonly>(static_cast<Paragraph&>(block), *_target, index);
    }
    return GenericAtomicBlockWrapper<isReadonly>(block);
}

template<bool isReadonly>
void GenericBlockCollectionWrapper<isReadonly>::insertElements(DOM::Blocks blocks,
                                                               unsigned long index) requires(!isReadonly)
{
    const auto range = IndexRange<unsigned long>::fromCount(index, blocks.size());
    WrapperDetails::insertInto(*_blocks, std::move(blocks), index);
    WrapperDetails::notify(*_target, [&](TextWithTombstonesChangedObserver& observer)
                           { observer.onBlocksInserted(_target->_address, range); });
}

template<bool isReadonly>
DOM::Blocks
GenericBlockCollectionWrapper<isReadonly>::removeElements(IndexRange<unsigned long> range) requires(!isReadonly)
{
    DOM::Blocks removed = WrapperDetails::takeFrom(*_blocks, range);
    WrapperDetails::notify(*_target,
                           [&](TextWithTombstonesChangedObserver& observer)
                           {
                               observer.onBlocksRemoved(_target->_address, IndexExcludingTombstones(range.getBegin()),
                                                        ReadonlyVector<DOM::Blocks>(removed));
                           });
    return removed;
}

// Of the read-only view the member that reads alone, as for runs.
template BlockWrapperValue<true> GenericBlockCollectionWrapper<true>::getElement(unsigned long index) const;
template class GenericBlockCollectionWrapper<false>;

} // namespace Zem::DOMCollaboration

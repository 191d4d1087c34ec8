#include "TextWrappers/DClb_RunWrappers.h"

#include "TextWrappers/DClb_WrapperSupport.h"

#include <algorithm>

namespace Zem::DOMCollaboration
{

using DOM::NativeDOMNodeType;
using DOM::NativeNodeAddress;
using NodeAddressing::AddressInList;
using FixedChunk = NativeNodeAddress::FixedChunk;

namespace
{

/// Takes the text of a run out, with room for `addedCount` more bytes. Without memory for them the run keeps it.
std::string takeRoomyText(DOM::TextRun& textRun, std::size_t addedCount)
{
    const std::string& text = textRun.getText();
    const std::size_t size = text.size() + addedCount;
    if (size <= text.capacity())
    {
        return textRun.takeText();
    }
    std::string roomy;
    roomy.reserve(std::max(size, 2 * text.capacity()));
    roomy = text;
    return roomy;
}

} // namespace

template<bool isReadonly>
NativeNodeAddress GenericTextWrapper<isReadonly>::getAddressToRun() const
{
    NativeNodeAddress address = _target->_address;
    address.appendItems(AddressInList(_blockIndex), FixedChunk(NativeDOMNodeType::RunCollection),
                        AddressInList(_runIndex));
    return address;
}

template<bool isReadonly>
void GenericTextWrapper<isReadonly>::insertElements(const std::string& text, unsigned long index) requires(!isReadonly)
{
    const auto range = IndexRange<unsigned long>::fromCount(index, text.size());
    ZEM_ASSERT(index <= getSize());
    std::string runText = takeRoomyText(*_textRun, text.size());
    runText.insert(index, text);
    _textRun->setText(std::move(runText));
    WrapperDetails::notify(*_target, [&](TextWithTombstonesChangedObserver& observer)
                           { observer.onCharsInserted(getAddressToRun(), range); });
}

template<bool isReadonly>
std::string GenericTextWrapper<isReadonly>::removeElements(IndexRange<unsigned long> range) requires(!isReadonly)
{
    ZEM_ASSERT(range.getEnd() <= getSize());
    std::string removed = _textRun->getText().substr(range.getBegin(), range.getCount());
    std::string runText = _textRun->takeText();
    runText.erase(range.getBegin(), range.getCount());
    _textRun->setText(std::move(runText));
    WrapperDetails::notify(
        *_target, [&](TextWithTombstonesChangedObserver& observer)
        { observer.onCharsRemoved(getAddressToRun(), IndexExcludingTombstones(range.getBegin()), removed); });
    return removed;
}

template<bool isReadonly>
RunWrapperValue<isReadonly> GenericRunCollectionWrapper<isReadonly>::getElement(unsigned long index) const
{
    WrapperDetails::requireIndex(index, _runs->size());
    ConstIf<isReadonly, DOM::Run>& run = derefPtr((*_runs)[index]);
    if (run.getKind() == DOM::RunKind::TextRun)
    {
        using TextRun = ConstIf<isReadonly, DOM::TextRun>;
        return GenericTextRunWrapper<isReadonly>(static_cast<TextRun&>(run), *_target, _blockIndex, index);
    }
    return GenericAtomicRunWrapper<isReadonly>(run);
}

template<bool isReadonly>
NativeNodeAddress GenericRunCollectionWrapper<isReadonly>::makeAddressToPara() const
{
    NativeNodeAddress address = _target->_address;
    address.appendItems(AddressInList(_blockIndex));
    return address;
}

template<bool isReadonly>
void GenericRunCollectionWrapper<isReadonly>::insertElements(DOM::Runs runs, unsigned long index) requires(!isReadonly)
{
    const auto range = IndexRange<unsigned long>::fromCount(index, runs.size());
    WrapperDetails::insertInto(*_runs, std::move(runs), index);
    WrapperDetails::notify(*_target, [&](TextWithTombstonesChangedObserver& observer)
                           { observer.onRunsInserted(makeAddressToPara(), range); });
}

template<bool isReadonly>
DOM::Runs GenericRunCollectionWrapper<isReadonly>::removeElements(IndexRange<unsigned long> range) requires(!isReadonly)
{
    DOM::Runs removed = WrapperDetails::takeFrom(*_runs, range);
    WrapperDetails::notify(*_target,
                           [&](TextWithTombstonesChangedObserver& observer)
                           {
                               observer.onRunsRemoved(makeAddressToPara(), IndexExcludingTombstones(range.getBegin()),
                                                      ReadonlyVector<DOM::Runs>(removed));
                           });
    return removed;
}

// Of the read-only views the members that read alone: a whole instantiation makes some compilers compile those that
// write, too, though their constraints rule them out.
template NativeNodeAddress GenericTextWrapper<true>::getAddressToRun() const;
template class GenericTextWrapper<false>;
template RunWrapperValue<true> GenericRunCollectionWrapper<true>::getElement(unsigned long index) const;
template NativeNodeAddress GenericRunCollectionWrapper<true>::makeAddressToPara() const;
template class GenericRunCollectionWrapper<false>;

} // namespace Zem::DOMCollaboration

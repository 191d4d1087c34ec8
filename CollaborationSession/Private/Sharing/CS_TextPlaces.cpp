#include "Sharing/CS_TextPlaces.h"

#include "DOM_RunStyle.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"
#include "Util_DeepComparison.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexIncludingTombstones;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using DOMCollaboration::TextWithTombstonesElement;
namespace PlaneWalk = DOMCollaboration::PlaneWalk;

namespace
{

bool isInTextRun(const PlanePlace& place)
{
    return place._kind == PlaceKind::TextRunTag || place._kind == PlaceKind::Char;
}

} // namespace

std::optional<TextState> step(TextState state, PlaceKind kind)
{
    const bool isOpen = state == TextState::Open || state == TextState::Run;
    const bool isInRun = state == TextState::Tag || state == TextState::Run;
    const bool fits = kind == PlaceKind::Char ? isInRun
                      : kind == PlaceKind::ParaMark || kind == PlaceKind::AtomicRun || kind == PlaceKind::TextRunTag
                          ? isOpen
                          : state == TextState::Closed;
    return fits ? std::make_optional(getStateBehind(kind)) : std::nullopt;
}

TextState getStateBehind(PlaceKind kind)
{
    switch (kind)
    {
    case PlaceKind::TextEnd:
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaMark:
        return TextState::Closed;
    case PlaceKind::ParaTag:
    case PlaceKind::AtomicRun:
        return TextState::Open;
    case PlaceKind::TextRunTag:
        return TextState::Tag;
    case PlaceKind::Char:
        return TextState::Run;
    }
    ZEM_FAIL("Invalid enum value");
}

PlaceKind getKind(const TextWithTombstonesElement& element)
{
    if (boost::get<short>(&element))
    {
        return PlaceKind::Char;
    }
    if (const auto* run = boost::get<SharedConstPtr<DOM::Run>>(&element))
    {
        return derefPtr(*run).getKind() == DOM::RunKind::TextRun ? PlaceKind::TextRunTag : PlaceKind::AtomicRun;
    }
    if (const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&element))
    {
        return derefPtr(*block).getKind() == DOM::BlockKind::Paragraph ? PlaceKind::ParaTag : PlaceKind::AtomicBlock;
    }
    return PlaceKind::ParaMark;
}

bool areLooksEqual(const RunStylePtr& left, const RunStylePtr& right)
{
    return left == right || areDeeplyEqual(left, right);
}

PlanePlace TextPlaces::find(unsigned long element)
{
    const DOM::Blocks& blocks = _text.getBlocks();
    if (_place && element + 1 == _element)
    {
        _place = PlaneWalk::getPlaceBefore(blocks, *_place);
    }
    else if (!_place || element != _element)
    {
        const auto place = _place && _element < element ? PlaneWalk::findFrom(blocks, *_place, element - _element)
                                                        : PlaneWalk::find(blocks, IndexExcludingTombstones(element));
        ZEM_ASSERT(place);
        _place = *place;
    }
    _element = element;
    return *_place;
}

PlanePlace TextPlaces::findBefore(unsigned long element)
{
    return element == 0 ? PlanePlace() : find(element - 1);
}

PlanePlace TextPlaces::getPlaceBefore(const PlanePlace& place, unsigned long element) const
{
    return element == 0 ? PlanePlace() : PlaneWalk::getPlaceBefore(_text.getBlocks(), place);
}

unsigned long TextPlaces::countBytesFrom(const PlanePlace& place) const
{
    if (place._kind != PlaceKind::Char)
    {
        return 1;
    }
    const auto& run = static_cast<const DOM::TextRun&>(*getParagraph(place).getRuns()[place._runIndex]);
    return run.getText().size() - place._byteIndex;
}

const DOM::Paragraph& TextPlaces::getParagraph(const PlanePlace& place) const
{
    return static_cast<const DOM::Paragraph&>(derefPtr(_text.getBlocks()[place._blockIndex]));
}

const DOM::Run* TextPlaces::findRun(const PlanePlace& place) const
{
    const bool isInRun =
        place._kind == PlaceKind::Char || place._kind == PlaceKind::TextRunTag || place._kind == PlaceKind::AtomicRun;
    return isInRun ? getParagraph(place).getRuns()[place._runIndex].get() : nullptr;
}

const RunStylePtr& TextPlaces::getLook(const PlanePlace& place) const
{
    return derefPtr(getParagraph(place).getRuns()[place._runIndex]).getSharedStyle();
}

bool TextPlaces::wouldChangeLook(const PlanePlace& front, const PlanePlace& behind) const
{
    if (behind._kind != PlaceKind::Char || !isInTextRun(front))
    {
        return false;
    }
    const bool isSameRun = front._blockIndex == behind._blockIndex && front._runIndex == behind._runIndex;
    return !isSameRun && !areLooksEqual(getLook(front), getLook(behind));
}

unsigned long TextPlaces::getSlot(unsigned long element) const
{
    return _text.getTombstones().convertIndex(IndexExcludingTombstones(element)).get();
}

void TextPlaces::forEachRangeOfSlots(unsigned long begin, unsigned long end,
                                     CallableRef<void(const IndexRange<unsigned long>&)> callable) const
{
    using Slots = CollaborationUtils::TombstonesStorage::PlacesRange;
    const Slots slots(IndexIncludingTombstones(getSlot(begin)), IndexIncludingTombstones(getSlot(end - 1) + 1));
    _text.getTombstones().forEachLiveRange(
        slots,
        [&](const Slots& live) { callable(IndexRange<unsigned long>(live.getBegin().get(), live.getEnd().get())); });
}

std::optional<unsigned long> TextPlaces::getElement(unsigned long slot) const
{
    const auto element = _text.getTombstones().convertIndex(IndexIncludingTombstones(slot));
    return element ? std::make_optional(element->get()) : std::nullopt;
}

unsigned long TextPlaces::getGap(unsigned long slot) const
{
    return _text.getTombstones().getIndexToInsertTo(IndexIncludingTombstones(slot)).get();
}

} // namespace Zem::CollaborationSession

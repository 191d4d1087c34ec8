#include "Editing/CS_CharacterIndex.h"

#include "Editing/CS_Characters.h"

#include "DOM_PlaneSize.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexRange;
using DOM::NativeNodeAddress;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using NodeAddressing::AddressInList;
namespace PlaneWalk = DOMCollaboration::PlaneWalk;

namespace
{

// How many chunks the address of a paragraph or a run has beyond that of its text.
constexpr unsigned long stepsToParagraph = 1;
constexpr unsigned long stepsToRun = 3;

unsigned long getIndexFromEnd(const NativeNodeAddress& address, unsigned long position)
{
    return derefPtr(address.getItemFromEndAs<AddressInList>(position)).getIndex();
}

BlockSummary countBytes(std::string_view bytes)
{
    const unsigned long continuationBytes = countContinuationBytes(bytes);
    return BlockSummary{bytes.size(), bytes.size() - continuationBytes, continuationBytes, 0};
}

BlockSummary countRun(const DOM::Run& run)
{
    const bool isText = run.getKind() == DOM::RunKind::TextRun;
    BlockSummary summary =
        isText ? countBytes(static_cast<const DOM::TextRun&>(run).getText()) : BlockSummary{0, 1, 0, 0};
    summary._elements = DOM::PlaneSize::of(run);
    return summary;
}

BlockSummary countBlock(const DOM::Block& block)
{
    if (block.getKind() != DOM::BlockKind::Paragraph)
    {
        return BlockSummary{DOM::PlaneSize::of(block), 1, 0, 0};
    }
    // The tag and the mark; the mark is the line break.
    BlockSummary summary{DOM::PlaneSize::ofTagAndMark, 1, 0, 1};
    for (const auto& run : static_cast<const DOM::Paragraph&>(block).getRuns())
    {
        summary += countRun(derefPtr(run));
    }
    return summary;
}

/// How many elements of a paragraph stand in front of its character `remaining`; that of its mark for all of them.
unsigned long countElementsBefore(const DOM::Paragraph& paragraph, unsigned long remaining, bool hasBytesAlone)
{
    unsigned long elements = 1;
    for (const auto& run : paragraph.getRuns())
    {
        if (derefPtr(run).getKind() != DOM::RunKind::TextRun)
        {
            if (remaining == 0)
            {
                return elements;
            }
            --remaining;
            ++elements;
            continue;
        }
        const std::string& text = static_cast<const DOM::TextRun&>(*run).getText();
        const unsigned long characters = text.size() - (hasBytesAlone ? 0 : countContinuationBytes(text));
        if (remaining < characters)
        {
            return elements + 1 + (hasBytesAlone ? remaining : findCharacter(text, remaining));
        }
        remaining -= characters;
        elements += DOM::PlaneSize::of(*run);
    }
    return elements;
}

/// How many characters begin in the first `remaining` elements of a paragraph.
unsigned long countCharactersBefore(const DOM::Paragraph& paragraph, unsigned long remaining)
{
    unsigned long characters = 0;
    remaining -= remaining > 0 ? 1 : 0;
    for (const auto& run : paragraph.getRuns())
    {
        if (remaining == 0)
        {
            break;
        }
        --remaining;
        if (derefPtr(run).getKind() != DOM::RunKind::TextRun)
        {
            ++characters;
            continue;
        }
        const std::string_view text = static_cast<const DOM::TextRun&>(*run).getText();
        const std::string_view begin = text.substr(0, remaining);
        characters += begin.size() - countContinuationBytes(begin);
        remaining -= begin.size();
    }
    return characters;
}

} // namespace

CharacterIndex::CharacterIndex(TextInDocument text)
    : _text(std::move(text))
    , _isStale(true)
{
    refresh();
}

unsigned long CharacterIndex::getCharactersCount() const
{
    if (_blocks.empty())
    {
        return 0;
    }
    const bool endsWithParagraph = _blocks.get(_blocks.size() - 1)._paragraphs > 0;
    return _blocks.getTotal()._characters - (endsWithParagraph ? 1 : 0);
}

BlockPlace CharacterIndex::findCharacter(unsigned long offset) const
{
    ZEM_ASSERT(offset <= getCharactersCount());
    return makePlace(_blocks.find([](const BlockSummary& summary) { return summary._characters; }, offset));
}

BlockPlace CharacterIndex::findElement(unsigned long element) const
{
    ZEM_ASSERT(element <= getElementsCount());
    return makePlace(_blocks.find([](const BlockSummary& summary) { return summary._elements; }, element));
}

BlockPlace CharacterIndex::getBlock(unsigned long blockIndex) const
{
    ZEM_ASSERT(blockIndex <= getBlocksCount());
    return makePlace(_blocks.getPlace(blockIndex));
}

unsigned long CharacterIndex::convertToElement(unsigned long offset) const
{
    const BlockPlace place = findCharacter(offset);
    if (place._block._paragraphs == 0)
    {
        return place._element;
    }
    return place._element + countElementsBefore(getParagraph(place._blockIndex), offset - place._character,
                                                place._block._continuationBytes == 0);
}

unsigned long CharacterIndex::convertToOffset(unsigned long element) const
{
    const BlockPlace place = findElement(element);
    if (place._block._paragraphs == 0)
    {
        return place._character;
    }
    return place._character + countCharactersBefore(getParagraph(place._blockIndex), element - place._element);
}

PlanePlace CharacterIndex::findPlace(unsigned long element) const
{
    const BlockPlace place = findElement(element);
    const PlanePlace begin{PlaceKind::ParaTag, place._blockIndex, 0, 0};
    const auto found = PlaneWalk::findFrom(_text.getText().getBlocks(), begin, element - place._element);
    ZEM_ASSERT(found);
    return *found;
}

const DOM::Paragraph& CharacterIndex::getParagraph(unsigned long blockIndex) const
{
    const DOM::Blocks& blocks = _text.getText().getBlocks();
    ZEM_ASSERT(blockIndex < blocks.size());
    const DOM::Block& block = derefPtr(blocks[blockIndex]);
    const bool isParagraph = block.getKind() == DOM::BlockKind::Paragraph;
    ZEM_ASSERT(isParagraph);
    return static_cast<const DOM::Paragraph&>(block);
}

void CharacterIndex::invalidate()
{
    _isStale = _isStale || _text.isNested();
}

void CharacterIndex::refresh()
{
    if (!_isStale)
    {
        return;
    }
    _nativeAddress = _text.findNativeAddress();
    const DOM::TextWithTombstones& text = _text.getText();
    _blocks.assign(countBlocks(text, 0, text.getBlocks().size()));
    _isStale = false;
}

void CharacterIndex::checkInvariants() const
{
    ZEM_ASSERT(!_isStale);
    _blocks.checkInvariants();
    const DOM::TextWithTombstones& text = _text.getText();
    const bool isAsRecounted = _blocks.getItems() == countBlocks(text, 0, text.getBlocks().size());
    ZEM_ASSERT(isAsRecounted);
}

void CharacterIndex::onCharsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones,
                                    const std::string& removed)
{
    if (isMine(address, stepsToRun))
    {
        subtract(getIndexFromEnd(address, 2), countBytes(removed));
    }
}

void CharacterIndex::onCharsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (!isMine(address, stepsToRun))
    {
        return;
    }
    const unsigned long blockIndex = getIndexFromEnd(address, 2);
    const unsigned long runIndex = getIndexFromEnd(address, 0);
    const DOM::Runs& runs = getParagraph(blockIndex).getRuns();
    ZEM_ASSERT(runIndex < runs.size());
    const std::string_view bytes = cast<DOM::TextRun>(derefPtr(runs[runIndex])).getText();
    add(blockIndex, countBytes(bytes.substr(range.getBegin(), range.getCount())));
}

void CharacterIndex::onRunsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones,
                                   const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed)
{
    if (!isMine(address, stepsToParagraph))
    {
        return;
    }
    BlockSummary summary;
    for (const DOM::Run& run : removed)
    {
        summary += countRun(run);
    }
    subtract(getIndexFromEnd(address, 0), summary);
}

void CharacterIndex::onRunsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (!isMine(address, stepsToParagraph))
    {
        return;
    }
    const unsigned long blockIndex = getIndexFromEnd(address, 0);
    const DOM::Runs& runs = getParagraph(blockIndex).getRuns();
    ZEM_ASSERT(range.getEnd() <= runs.size());
    BlockSummary summary;
    for (unsigned long runIndex = range.getBegin(); runIndex < range.getEnd(); ++runIndex)
    {
        summary += countRun(derefPtr(runs[runIndex]));
    }
    add(blockIndex, summary);
}

void CharacterIndex::onBlocksRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                                     const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed)
{
    if (isMine(address, 0))
    {
        _blocks.erase(begin.get(), removed.size());
    }
    else if (holdsMine(address))
    {
        invalidate();
    }
}

void CharacterIndex::onBlocksInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (isMine(address, 0))
    {
        _blocks.insert(range.getBegin(), countBlocks(_text.getText(), range.getBegin(), range.getEnd()));
    }
    else if (holdsMine(address))
    {
        invalidate();
    }
}

void CharacterIndex::onBlockMoved(const NativeNodeAddress& address, IndexExcludingTombstones from,
                                  IndexExcludingTombstones to)
{
    if (isMine(address, 0))
    {
        const BlockEntry moved = _blocks.get(from.get());
        _blocks.erase(from.get());
        _blocks.insert(to.get(), moved);
    }
    else if (holdsMine(address))
    {
        invalidate();
    }
}

CharacterIndex::BlockEntry CharacterIndex::makeEntry(const BlockSummary& summary)
{
    BlockEntry entry;
    static_cast<BlockSummary&>(entry) = summary;
    return entry;
}

std::vector<CharacterIndex::BlockEntry> CharacterIndex::countBlocks(const DOM::TextWithTombstones& text,
                                                                    unsigned long begin, unsigned long end)
{
    const DOM::Blocks& blocks = text.getBlocks();
    ZEM_ASSERT(end <= blocks.size());
    std::vector<BlockEntry> entries;
    entries.reserve(end - begin);
    for (unsigned long blockIndex = begin; blockIndex < end; ++blockIndex)
    {
        entries.push_back(makeEntry(countBlock(derefPtr(blocks[blockIndex]))));
    }
    return entries;
}

BlockPlace CharacterIndex::makePlace(const Blocks::Place& place) const
{
    const BlockSummary& before = place.getBefore();
    BlockPlace blockPlace{place.getOrdinal(), before._elements, before._characters, BlockSummary()};
    if (place.getOrdinal() < _blocks.size())
    {
        blockPlace._block = _blocks.get(place);
    }
    return blockPlace;
}

/// Whether a notification is about this text: its address goes `stepsBelow` chunks on from that of the text.
bool CharacterIndex::isMine(const NativeNodeAddress& address, unsigned long stepsBelow) const
{
    return !_isStale && address.getSize() == _nativeAddress.getSize() + stepsBelow &&
           _nativeAddress.isPrefixOf(address);
}

/// Whether a notification is about a text that this one is nested in.
bool CharacterIndex::holdsMine(const NativeNodeAddress& address) const
{
    return address.getSize() < _nativeAddress.getSize() && address.isPrefixOf(_nativeAddress);
}

void CharacterIndex::add(unsigned long blockIndex, const BlockSummary& added)
{
    ZEM_ASSERT(blockIndex < _blocks.size());
    const Blocks::Place place = _blocks.getPlace(blockIndex);
    BlockEntry entry = _blocks.get(place);
    entry += added;
    _blocks.update(place, entry);
}

void CharacterIndex::subtract(unsigned long blockIndex, const BlockSummary& removed)
{
    ZEM_ASSERT(blockIndex < _blocks.size());
    const Blocks::Place place = _blocks.getPlace(blockIndex);
    BlockEntry entry = _blocks.get(place);
    entry -= removed;
    _blocks.update(place, entry);
}

} // namespace Zem::CollaborationSession

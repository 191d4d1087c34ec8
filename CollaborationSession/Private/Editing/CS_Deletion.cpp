// Let i be the block of the first character to go, and j that of the last. What is deleted ends inside the paragraph j,
// or with the whole block j, line break included.
//
//     inside one paragraph                 its elements; the tags of runs that lose everything go with these
//     from a paragraph into another one    the rest of i, its mark, all between, and the tag and beginning of j: what
//     is
//                                          left of j joins i
//     from an atomic block into j          whole blocks, and the beginning of j, which stays a paragraph of its own
//     whole blocks                         these
//     from a paragraph through the end     if a paragraph follows, it joins i; otherwise i keeps its mark
//     of j
//
// A run that loses only its beginning keeps its tag, so that what goes in front of the tag, and what goes behind it,
// are two stretches.

#include "Editing/CS_Deletion.h"

#include "Editing/CS_Characters.h"
#include "Editing/CS_CommandSupport.h"

#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using CollaborationEngine::MarkAsRemovedTag;
using CollaborationUtils::IndexIncludingTombstones;

namespace
{

bool isParagraph(const BlockPlace& place)
{
    return place._block._paragraphs > 0;
}

class DeletionPlanner
{
public:
    DeletionPlanner(const CharacterIndex& index, unsigned long begin, unsigned long end)
        : _index(index)
        , _first(index.findCharacter(begin))
        , _last(index.findCharacter(end - 1))
        , _beginInFirst(begin - _first._character)
        , _endInLast(end - _last._character)
    {
    }

    Deletion plan()
    {
        if (isParagraph(_last) && _endInLast < _last._block._characters)
        {
            deleteUpToInsideOfLast();
        }
        else
        {
            deleteThroughEndOfLast();
        }
        return std::move(_deletion);
    }

private:
    void deleteUpToInsideOfLast()
    {
        if (_first._blockIndex == _last._blockIndex)
        {
            addCharacters(_first, _beginInFirst, _endInLast);
            return;
        }
        if (isParagraph(_first))
        {
            addCharacters(_first, _beginInFirst, getLineBreak(_first));
            add(getMark(_first), _last._element + 1);
        }
        else
        {
            add(_first._element, _last._element);
        }
        addCharacters(_last, 0, _endInLast);
    }

    void deleteThroughEndOfLast()
    {
        const unsigned long endOfLast = _last._element + _last._block._elements;
        const bool endsText = _last._blockIndex + 1 == _index.getBlocksCount();
        if (!isParagraph(_first) || (_beginInFirst == 0 && !endsText))
        {
            add(_first._element, endOfLast);
            return;
        }
        addCharacters(_first, _beginInFirst, getLineBreak(_first));
        if (!endsText && isParagraph(_index.getBlock(_last._blockIndex + 1)))
        {
            add(getMark(_first), endOfLast + 1);
            return;
        }
        add(getMark(_first) + 1, endOfLast);
        _deletion._keepsLineBreak = !endsText;
    }

    static unsigned long getLineBreak(const BlockPlace& paragraph)
    {
        return paragraph._block._characters - 1;
    }

    static unsigned long getMark(const BlockPlace& paragraph)
    {
        return paragraph._element + paragraph._block._elements - 1;
    }

    /// Adds the elements of characters [begin, end) of a paragraph, line break excluded.
    void addCharacters(const BlockPlace& place, unsigned long begin, unsigned long end)
    {
        if (begin >= end)
        {
            return;
        }
        const bool hasBytesAlone = place._block._continuationBytes == 0;
        unsigned long character = 0;
        unsigned long element = place._element + 1;
        for (const auto& run : _index.getParagraph(place._blockIndex).getRuns())
        {
            if (character >= end)
            {
                break;
            }
            const bool isText = derefPtr(run).getKind() == DOM::RunKind::TextRun;
            const std::string_view text =
                isText ? std::string_view(static_cast<const DOM::TextRun&>(*run).getText()) : std::string_view();
            const unsigned long characters =
                isText ? text.size() - (hasBytesAlone ? 0 : countContinuationBytes(text)) : 1;
            const unsigned long size = 1 + text.size();
            const unsigned long beginInRun = std::max(begin, character) - character;
            const unsigned long endInRun = std::min(end - character, characters);
            // A run without characters goes if it lies between characters that go.
            const bool goesWhole = characters == 0 ? begin < character : beginInRun == 0 && endInRun == characters;
            if (goesWhole)
            {
                add(element, element + size);
            }
            else if (beginInRun < endInRun)
            {
                const auto getByte = [&](unsigned long index)
                { return hasBytesAlone ? index : findCharacter(text, index); };
                add(element + 1 + getByte(beginInRun), element + 1 + getByte(endInRun));
            }
            character += characters;
            element += size;
        }
    }

    void add(unsigned long begin, unsigned long end)
    {
        auto& stretches = _deletion._stretches;
        if (begin == end)
        {
            return;
        }
        if (!stretches.empty() && stretches.back()._end == begin)
        {
            stretches.back()._end = end;
            return;
        }
        stretches.push_back(ElementsStretch{begin, end});
    }

    const CharacterIndex& _index;
    BlockPlace _first;
    BlockPlace _last;
    /// Numbers of characters in the blocks.
    unsigned long _beginInFirst;
    unsigned long _endInLast;
    Deletion _deletion;
};

} // namespace

Deletion planDeletion(const CharacterIndex& index, unsigned long begin, unsigned long end)
{
    return DeletionPlanner(index, begin, end).plan();
}

CollaborationEngine::OperationUPtr makeMarking(const CharacterIndex& index, const Deletion& deletion)
{
    using Slots = CollaborationUtils::TombstonesStorage::PlacesRange;
    const TextInDocument& text = index.getTextInDocument();
    std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
    nestedOperations.reserve(deletion._stretches.size());
    for (const ElementsStretch& stretch : deletion._stretches)
    {
        const Slots slots(IndexIncludingTombstones(getSlot(index, stretch._begin)),
                          IndexIncludingTombstones(getSlot(index, stretch._end - 1) + 1));
        text.getText().getTombstones().forEachLiveRange(
            slots,
            [&](const Slots& live)
            {
                nestedOperations.emplace_back(text.getAddress(), textNodeType,
                                              IndexRange<unsigned long>(live.getBegin().get(), live.getEnd().get()));
            });
    }
    std::reverse(nestedOperations.begin(), nestedOperations.end());
    return makeMultirange(std::move(nestedOperations));
}

} // namespace Zem::CollaborationSession

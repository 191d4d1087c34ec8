#include "Sharing/CS_RemovedParagraphs.h"

#include "Sharing/CS_MakeRestoring.h"

#include <map>
#include <optional>

namespace Zem::CollaborationSession
{

using CollaborationEngine::ListModificationOperation;
using CollaborationEngine::MarkAsRemovedTag;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::TextWithTombstonesElement;

namespace
{

bool isStructureOfBlocks(PlaceKind kind)
{
    return kind == PlaceKind::ParaTag || kind == PlaceKind::ParaMark || kind == PlaceKind::AtomicBlock;
}

class ParagraphSearch
{
public:
    ParagraphSearch(const DOM::TextWithTombstones& text, FindDeadSeenFrom findDead)
        : _places(text)
        , _findDead(findDead)
    {
    }

    /// Takes in the paragraph around a gap in front of `slot`, of which `anchor` was a part. The slots must ascend.
    void search(unsigned long slot, unsigned long anchor)
    {
        const unsigned long gap = _places.getGap(slot);
        const bool isAnchorDead = !_places.getElement(anchor);
        const bool isFound = !_found.empty() && _found.rbegin()->first >= slot;
        if (!isAnchorDead || isFound || !isBetweenBlocks(gap))
        {
            return;
        }
        const unsigned long begin = gap == 0 ? 0 : _places.getSlot(gap - 1) + 1;
        auto tag = findTag(begin, slot, anchor);
        auto mark = tag ? findMark(slot, _places.getSlot(gap), anchor) : std::nullopt;
        if (mark)
        {
            _found.insert(std::move(*tag));
            _found.insert(std::move(*mark));
        }
    }

    std::vector<ElementAtSlot> takeFound()
    {
        std::vector<ElementAtSlot> elements;
        for (auto& [slot, element] : _found)
        {
            elements.push_back({slot, std::move(element)});
        }
        return elements;
    }

private:
    /// Behind the last paragraph in front of a block, or the end, what is typed joins that.
    bool isBetweenBlocks(unsigned long gap)
    {
        const PlaceKind front = _places.findBefore(gap)._kind;
        const PlaceKind behind = _places.find(gap)._kind;
        const bool isLastInText = behind == PlaceKind::TextEnd || behind == PlaceKind::AtomicBlock;
        return getStateBehind(front) == TextState::Closed && !(front == PlaceKind::ParaMark && isLastInText);
    }

    using Found = std::pair<unsigned long, TextWithTombstonesElement>;

    std::optional<Found> findTag(unsigned long begin, unsigned long end, unsigned long anchor) const
    {
        for (unsigned long slot = end; slot-- > begin;)
        {
            if (auto element = findStructure(slot, anchor))
            {
                return getKind(*element) == PlaceKind::ParaTag ? std::make_optional(Found(slot, *std::move(element)))
                                                               : std::nullopt;
            }
        }
        return std::nullopt;
    }

    std::optional<Found> findMark(unsigned long begin, unsigned long end, unsigned long anchor) const
    {
        for (unsigned long slot = begin; slot < end; ++slot)
        {
            if (auto element = findStructure(slot, anchor))
            {
                return getKind(*element) == PlaceKind::ParaMark ? std::make_optional(Found(slot, *std::move(element)))
                                                                : std::nullopt;
            }
        }
        return std::nullopt;
    }

    /// The element of a dead slot if that begins or ends a block, and was live together with the anchor.
    std::optional<TextWithTombstonesElement> findStructure(unsigned long slot, unsigned long anchor) const
    {
        auto dead = _findDead(slot, anchor);
        const bool counts = dead && dead->_wasLive && isStructureOfBlocks(getKind(dead->_element));
        return counts ? std::make_optional(std::move(dead->_element)) : std::nullopt;
    }

    TextPlaces _places;
    FindDeadSeenFrom _findDead;
    std::map<unsigned long, TextWithTombstonesElement> _found;
};

} // namespace

std::unique_ptr<TextRestoring> findRemovedParagraphs(const DOM::TextWithTombstones& text,
                                                     const TextInsertion& insertion, const std::vector<Typing>& typings,
                                                     FindDeadSeenFrom findDead)
{
    ParagraphSearch paragraphs(text, findDead);
    const auto& nestedOperations = insertion.getNestedOperations();
    for (std::size_t index = nestedOperations.size(); index-- > 0;)
    {
        if (typings[index]._anchor)
        {
            paragraphs.search(nestedOperations[index].getRange().getBegin(), *typings[index]._anchor);
        }
    }
    const std::vector<ElementAtSlot> found = paragraphs.takeFound();
    return found.empty() ? nullptr : makeRestoring(insertion, found);
}

std::unique_ptr<TextMarking> makeMarkingOf(const TextRestoring& restoring)
{
    std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
    for (const auto& nested : restoring.getNestedOperations())
    {
        nestedOperations.emplace_back(nested.getNodeAddress(), nested.getOperandType(), nested.getRange());
    }
    return std::make_unique<TextMarking>(std::move(nestedOperations));
}

} // namespace Zem::CollaborationSession

#include "Editing/CS_Painting.h"

#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_StyleProperties.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_Paragraph.h"
#include "DOM_PlaneSize.h"
#include "DOM_Runs.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using CollaborationEngine::DataValue;
using CollaborationEngine::InsertTag;
using CollaborationEngine::OperationNodeAddress;
using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexIncludingTombstones;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
namespace PlaneWalk = DOMCollaboration::PlaneWalk;

namespace
{

/// Collects what one painting consists of, whatever it paints.
class Painter
{
public:
    Painter(const DOM::TextWithTombstones& text, const OperationNodeAddress& address, const LookChange& change)
        : _text(text)
        , _address(address)
        , _change(change)
    {
    }

    unsigned long getSlot(unsigned long element) const
    {
        return _text.getTombstones().convertIndex(IndexExcludingTombstones(element)).get();
    }

    /// Says whether a thing with this value of the property has to be painted. One that hasn't ends a piece.
    bool changes(const DataValue& oldValue)
    {
        const bool holds = _change.holds(oldValue);
        _goesOn = _goesOn && !holds;
        return !holds;
    }

    void set(unsigned long slot, OperationDOMNodeType nodeType, const SharedConstPtr<DataValue>& oldValue)
    {
        OperationNodeAddress address = _address;
        address.appendItems(NodeAddressing::AddressInList(slot));
        _settings.push_back(std::make_unique<CollaborationEngine::SetPropertyOperation>(
            std::move(address), DOMCollaboration::convertOperationNodeType(nodeType),
            DOMCollaboration::convertPropertyId(_change.getPropertyId()), oldValue, _change.apply(*oldValue)));
    }

    void addPiece(unsigned long firstSlot, unsigned long lastSlot, const SharedConstPtr<DataValue>& oldValue)
    {
        if (_goesOn && *_pieces.back()._oldValue == *oldValue)
        {
            _pieces.back()._lastSlot = lastSlot;
            return;
        }
        _pieces.push_back(LookPiece{firstSlot, lastSlot, oldValue});
        _goesOn = true;
    }

    /// `newTags` ascend.
    Painting finish(std::vector<ListModificationOperation<InsertTag>> newTags)
    {
        Painting painting;
        if (!newTags.empty())
        {
            std::reverse(newTags.begin(), newTags.end());
            painting._operations.push_back(makeMultirange(std::move(newTags)));
        }
        std::move(_settings.begin(), _settings.end(), std::back_inserter(painting._operations));
        painting._pieces = std::move(_pieces);
        return painting;
    }

private:
    const DOM::TextWithTombstones& _text;
    const OperationNodeAddress& _address;
    const LookChange& _change;
    Operations _settings;
    std::vector<LookPiece> _pieces;
    /// Whether nothing lies between the last piece and what is painted next that keeps its look.
    bool _goesOn = false;
};

/// How many elements of its block stand in front of a place.
unsigned long countElementsBefore(const DOM::Blocks& blocks, const PlanePlace& place)
{
    if (place._kind == PlaceKind::TextEnd || place._kind == PlaceKind::AtomicBlock || place._kind == PlaceKind::ParaTag)
    {
        return 0;
    }
    const auto& runs = static_cast<const DOM::Paragraph&>(*blocks[place._blockIndex]).getRuns();
    unsigned long count = 1;
    for (unsigned long runIndex = 0; runIndex < place._runIndex; ++runIndex)
    {
        count += DOM::PlaneSize::of(*runs[runIndex]);
    }
    return place._kind == PlaceKind::Char ? count + 1 + place._byteIndex : count;
}

/// Calls `visit` with each block that has an element in a stretch, with the place of the block's first element, and
/// with its size. An empty stretch lies in a block if an element of it stands on both sides.
template<class Visit>
void forEachBlock(const DOM::Blocks& blocks, const PlaneStretch& stretch, Visit visit)
{
    unsigned long element = stretch._begin - countElementsBefore(blocks, stretch._first);
    for (unsigned long index = stretch._first._blockIndex; index < blocks.size() && element < stretch._end; ++index)
    {
        const DOM::Block& block = *blocks[index];
        const unsigned long size = DOM::PlaneSize::of(block);
        visit(block, element, size);
        element += size;
    }
}

class RunPainter
{
public:
    RunPainter(const DOM::TextWithTombstones& text, const OperationNodeAddress& address, const PlaneStretch& stretch,
               const LookChange& change)
        : _text(text)
        , _address(address)
        , _stretch(stretch)
        , _propertyId(change.getPropertyId())
        , _painter(text, address, change)
    {
    }

    Painting paint()
    {
        forEachBlock(_text.getBlocks(), _stretch,
                     [this](const DOM::Block& block, unsigned long element, unsigned long)
                     {
                         if (block.getKind() == DOM::BlockKind::Paragraph)
                         {
                             visitRuns(static_cast<const DOM::Paragraph&>(block).getRuns(), element + 1);
                         }
                     });
        return _painter.finish(std::move(_newTags));
    }

private:
    void visitRuns(const DOM::Runs& runs, unsigned long element)
    {
        for (const auto& run : runs)
        {
            if (element >= _stretch._end)
            {
                return;
            }
            const unsigned long size = DOM::PlaneSize::of(*run);
            const bool isText = run->getKind() == DOM::RunKind::TextRun;
            visitRun(
                *run, element,
                PlaneStretch{isText ? element + 1 : element, element + size, PlanePlace(), std::nullopt, std::nullopt});
            element += size;
        }
    }

    /// `content` is what of the run whose tag is `tag` can be seen.
    void visitRun(const DOM::Run& run, unsigned long tag, const PlaneStretch& content)
    {
        const unsigned long begin = std::max(_stretch._begin, content._begin);
        const unsigned long end = std::min(_stretch._end, content._end);
        if (begin >= end)
        {
            return;
        }
        const auto oldValue = getRunProperty(run, _propertyId);
        if (!_painter.changes(*oldValue))
        {
            return;
        }
        const unsigned long newTagsBefore = _newTags.size();
        const unsigned long tagSlot = begin > content._begin ? part(run, getSlotInFront(begin)) : _painter.getSlot(tag);
        _painter.set(tagSlot + newTagsBefore, OperationDOMNodeType::Run, oldValue);
        _painter.addPiece(_painter.getSlot(begin) + _newTags.size(), _painter.getSlot(end - 1) + _newTags.size(),
                          oldValue);
        if (end < content._end)
        {
            part(run, getSlotBehind(end - 1));
        }
    }

    /// Where the stretch begins in front of a byte: what is dead in the stretch belongs to it, and nothing else.
    unsigned long getSlotInFront(unsigned long element) const
    {
        const unsigned long slot = _painter.getSlot(element);
        return _stretch._firstSlot ? std::min(slot, std::max(*_stretch._firstSlot, _painter.getSlot(element - 1) + 1))
                                   : slot;
    }

    /// Where it ends behind a byte.
    unsigned long getSlotBehind(unsigned long element) const
    {
        const unsigned long slot = _painter.getSlot(element) + 1;
        return _stretch._lastSlot ? std::max(slot, std::min(*_stretch._lastSlot + 1, _painter.getSlot(element + 1)))
                                  : slot;
    }

    /// Puts a new tag in front of a slot, and gives that, which is the tag's before any other painting.
    unsigned long part(const DOM::Run& run, unsigned long slot)
    {
        _newTags.push_back(makeNestedInsertion(_address, slot, {makeRunElement(run.getSharedStyle())}));
        return slot;
    }

    const DOM::TextWithTombstones& _text;
    const OperationNodeAddress& _address;
    const PlaneStretch& _stretch;
    DOMCollaboration::PropertyId _propertyId;
    Painter _painter;
    /// Ascending.
    std::vector<ListModificationOperation<InsertTag>> _newTags;
};

} // namespace

PlaneStretch findStretch(const DOM::TextWithTombstones& text, unsigned long begin, unsigned long end)
{
    const auto first = PlaneWalk::find(text.getBlocks(), IndexExcludingTombstones(begin));
    const PlanePlace behindAll{PlaceKind::TextEnd, text.getBlocks().size(), 0, 0};
    return PlaneStretch{begin, end, first ? *first : behindAll, std::nullopt, std::nullopt};
}

PlaneStretch findStretchBetweenSlots(const DOM::TextWithTombstones& text, unsigned long firstSlot,
                                     unsigned long lastSlot)
{
    const CollaborationUtils::TombstonesStorage& tombstones = text.getTombstones();
    const auto countLiveBefore = [&](unsigned long slot)
    { return tombstones.getIndexToInsertTo(IndexIncludingTombstones(slot)).get(); };
    PlaneStretch stretch = findStretch(text, countLiveBefore(firstSlot), countLiveBefore(lastSlot + 1));
    stretch._firstSlot = firstSlot;
    stretch._lastSlot = lastSlot;
    return stretch;
}

Painting paintRuns(const DOM::TextWithTombstones& text, const OperationNodeAddress& address,
                   const PlaneStretch& stretch, const LookChange& change)
{
    requireRunProperty(change.getPropertyId());
    return RunPainter(text, address, stretch, change).paint();
}

Painting paintParagraphs(const DOM::TextWithTombstones& text, const OperationNodeAddress& address,
                         const PlaneStretch& stretch, const LookChange& change)
{
    requireParagraphProperty(change.getPropertyId());
    Painter painter(text, address, change);
    forEachBlock(text.getBlocks(), stretch,
                 [&](const DOM::Block& block, unsigned long element, unsigned long size)
                 {
                     if (block.getKind() != DOM::BlockKind::Paragraph)
                     {
                         return;
                     }
                     const auto oldValue =
                         getParagraphProperty(static_cast<const DOM::Paragraph&>(block), change.getPropertyId());
                     if (painter.changes(*oldValue))
                     {
                         const unsigned long slot = painter.getSlot(element);
                         painter.set(slot, OperationDOMNodeType::ParagraphTag, oldValue);
                         painter.addPiece(slot, painter.getSlot(element + size - 1), oldValue);
                     }
                 });
    return painter.finish({});
}

Painting paintStretch(const DOM::TextWithTombstones& text, const OperationNodeAddress& address, unsigned long firstSlot,
                      unsigned long lastSlot, LookTarget target, const LookChange& change)
{
    PlaneStretch stretch = findStretchBetweenSlots(text, firstSlot, lastSlot);
    // A paragraph of which nothing but the mark is in the stretch was joined with one of which nothing is left.
    if (target == LookTarget::Paragraphs && stretch._first._kind == PlaceKind::ParaMark)
    {
        stretch = findStretch(text, stretch._begin + 1, std::max(stretch._begin + 1, stretch._end));
    }
    if (stretch._begin >= stretch._end)
    {
        return Painting();
    }
    return target == LookTarget::Runs ? paintRuns(text, address, stretch, change)
                                      : paintParagraphs(text, address, stretch, change);
}

} // namespace Zem::CollaborationSession

#include "Sharing/CS_FitIntoText.h"

#include "Util_Assert.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationEngine::ListModificationOperation;
using CollaborationEngine::MarkAsRemovedTag;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;

namespace
{

/// A tag or a mark that may stay; or a block, which goes.
struct Structure
{
    unsigned long _element;
    PlaceKind _kind;
    /// Whether it is one of the marking's.
    bool _isAsked;
    bool _stays = false;
};

/// A stretch of elements that go, between two that stay.
struct Gap
{
    unsigned long _begin;
    unsigned long _end;
    PlanePlace _front;
    PlanePlace _behind;
    std::vector<Structure> _structures;

    bool isOpenInFront() const
    {
        return getStateBehind(_front._kind) != TextState::Closed;
    }

    bool isOpenBehind() const
    {
        return step(TextState::Open, _behind._kind) || _behind._kind == PlaceKind::Char;
    }

    /// Whether a paragraph that lives on loses its beginning.
    bool opens() const
    {
        return !isOpenInFront() && isOpenBehind();
    }

    /// Whether a paragraph that lives on loses its end.
    bool closes() const
    {
        return isOpenInFront() && !isOpenBehind();
    }
};

using Gaps = boost::container::small_vector<Gap, 1>;

class MarkingFitter
{
public:
    MarkingFitter(const DOM::TextWithTombstones& text, const TextMarking& marking)
        : _places(text)
        , _marking(marking)
    {
    }

    FittedMarking fit()
    {
        findGaps();
        if (std::all_of(_gaps.begin(), _gaps.end(), [&](const Gap& gap) { return isAcceptable(gap); }))
        {
            return {};
        }
        for (Gap& gap : _gaps)
        {
            findStructures(gap);
        }
        giveUpMarksInFront();
        giveUpEmptyRuns();
        for (Gap& gap : _gaps)
        {
            chooseWhatStays(gap);
        }
        return makeResult();
    }

private:
    void findGaps()
    {
        const auto& nestedOperations = _marking.getNestedOperations();
        for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
        {
            const auto begin = _places.getElement(nested->getRange().getBegin());
            const auto last = _places.getElement(nested->getRange().getEnd() - 1);
            const bool isLive = begin && last && *last - *begin + 1 == nested->getRange().getCount();
            ZEM_ASSERT(isLive);
            if (!_gaps.empty() && _gaps.back()._end == *begin)
            {
                _gaps.back()._end = *last + 1;
                continue;
            }
            _gaps.push_back(Gap{*begin, *last + 1, {}, {}, {}});
        }
        for (Gap& gap : _gaps)
        {
            gap._front = _places.findBefore(gap._begin);
            gap._behind = _places.find(gap._end);
        }
    }

    bool isAcceptable(const Gap& gap) const
    {
        return step(getStateBehind(gap._front._kind), gap._behind._kind) &&
               !_places.wouldChangeLook(gap._front, gap._behind);
    }

    void findStructures(Gap& gap)
    {
        for (unsigned long element = gap._begin; element < gap._end;)
        {
            const PlanePlace place = _places.find(element);
            if (place._kind != PlaceKind::Char && place._kind != PlaceKind::AtomicRun)
            {
                gap._structures.push_back(Structure{element, place._kind, true});
            }
            element += _places.countBytesFrom(place);
        }
    }

    /// Where a marked paragraph in which something lives stands for the line break in front of it, the mark of that
    /// goes, and its own last one will stay.
    void giveUpMarksInFront()
    {
        for (std::size_t index = 0; index < _gaps.size(); ++index)
        {
            if (_gaps[index].opens() && _gaps[index]._front._kind == PlaceKind::ParaMark && isNextToMark(index) &&
                isLastParagraph(index))
            {
                index = takeFrontIn(index);
            }
        }
    }

    /// Whether the line break in front can be meant: an atomic block isn't between, or what is in front goes as well.
    bool isNextToMark(std::size_t index) const
    {
        const bool startsWithTag = _gaps[index]._structures.front()._kind == PlaceKind::ParaTag;
        return startsWithTag || (index > 0 && _gaps[index - 1]._end + 1 == _gaps[index]._begin);
    }

    bool isLastParagraph(std::size_t index) const
    {
        const auto end = std::find_if(_gaps.begin() + static_cast<std::ptrdiff_t>(index) + 1, _gaps.end(),
                                      [](const Gap& gap) { return gap.opens() || gap.closes(); });
        return end != _gaps.end() && end->closes() && end->_behind._kind != PlaceKind::ParaTag;
    }

    /// A run's tag that stays needs a byte of its look.
    void giveUpEmptyRuns()
    {
        for (std::size_t index = _gaps.size(); index-- > 0;)
        {
            const Gap& gap = _gaps[index];
            if (gap._front._kind == PlaceKind::TextRunTag && !isAcceptable(gap))
            {
                takeFrontIn(index);
            }
        }
    }

    /// The element in front of a gap goes as well. Returns where the gap is, which may have joined the one in front.
    std::size_t takeFrontIn(std::size_t index)
    {
        Gap& gap = _gaps[index];
        --gap._begin;
        gap._structures.insert(gap._structures.begin(), Structure{gap._begin, gap._front._kind, false});
        if (index == 0 || _gaps[index - 1]._end != gap._begin)
        {
            gap._front = _places.getPlaceBefore(gap._front, gap._begin);
            return index;
        }
        Gap& joined = _gaps[index - 1];
        joined._end = gap._end;
        joined._behind = gap._behind;
        joined._structures.insert(joined._structures.end(), gap._structures.begin(), gap._structures.end());
        _gaps.erase(_gaps.begin() + static_cast<std::ptrdiff_t>(index));
        return index - 1;
    }

    void chooseWhatStays(Gap& gap) const
    {
        const auto isOf = [](PlaceKind kind)
        { return [kind](const Structure& structure) { return structure._kind == kind; }; };
        std::vector<Structure>& structures = gap._structures;
        if (gap.closes())
        {
            const auto last = std::find_if(structures.rbegin(), structures.rend(), isOf(PlaceKind::ParaMark));
            ZEM_ASSERT(last != structures.rend());
            last->_stays = true;
        }
        if (gap.opens())
        {
            const auto first = std::find_if(structures.begin(), structures.end(), isOf(PlaceKind::ParaTag));
            ZEM_ASSERT(first != structures.end());
            first->_stays = true;
        }
        // The last tag in front of a byte of another run is that of its run.
        const bool needsRun = gap._behind._kind == PlaceKind::Char && !isAcceptable(gap);
        if (needsRun)
        {
            ZEM_ASSERT(!structures.empty() && structures.back()._kind == PlaceKind::TextRunTag);
            structures.back()._stays = true;
        }
    }

    FittedMarking makeResult() const
    {
        FittedMarking fitted;
        std::vector<IndexRange<unsigned long>> ranges;
        for (const Gap& gap : _gaps)
        {
            unsigned long begin = gap._begin;
            for (const Structure& structure : gap._structures)
            {
                if (structure._stays)
                {
                    addSlots(ranges, begin, structure._element);
                    begin = structure._element + 1;
                }
                if (structure._stays == structure._isAsked)
                {
                    auto& slots = structure._isAsked ? fitted._staying : fitted._extra;
                    slots.push_back(_places.getSlot(structure._element));
                }
            }
            addSlots(ranges, begin, gap._end);
        }
        fitted._isChanged = !fitted._staying.empty() || !fitted._extra.empty();
        if (fitted._isChanged && !ranges.empty())
        {
            fitted._operation = makeOperation(ranges);
        }
        return fitted;
    }

    /// Adds the slots of elements [begin, end): as many ranges as tombstones part them into.
    void addSlots(std::vector<IndexRange<unsigned long>>& ranges, unsigned long begin, unsigned long end) const
    {
        if (begin < end)
        {
            _places.forEachRangeOfSlots(begin, end,
                                        [&](const IndexRange<unsigned long>& range) { ranges.push_back(range); });
        }
    }

    std::unique_ptr<TextMarking> makeOperation(const std::vector<IndexRange<unsigned long>>& ranges) const
    {
        std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
        nestedOperations.reserve(ranges.size());
        for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        {
            nestedOperations.emplace_back(_marking.getNodeAddress(), _marking.getOperandType(), *range);
        }
        auto operation = std::make_unique<TextMarking>(std::move(nestedOperations));
        operation->inheritIDIfPossibleImpl(_marking);
        return operation;
    }

    TextPlaces _places;
    const TextMarking& _marking;
    /// Ascending; at least one element that stays lies between two of them.
    Gaps _gaps;
};

} // namespace

FittedMarking fitMarking(const DOM::TextWithTombstones& text, const TextMarking& marking)
{
    return MarkingFitter(text, marking).fit();
}

} // namespace Zem::CollaborationSession

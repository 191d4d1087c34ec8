// Nested operations that come in at one gap of the plane are one group. A group is written anew, from its beginning to
// its end, in the state that the text is in there (`TextState`): what is planned is taken over where it fits, what is
// missing in front of it is put in, and at the end what is behind the gap has to find what it needs.

#include "Sharing/CS_FitIntoText.h"

#include "Editing/CS_CommandSupport.h"

#include "DOM_NumberingRef.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using CollaborationEngine::InsertTag;
using DOMCollaboration::ParagraphMark;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesElementVector;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

using NestedInsertion = ListModificationOperation<InsertTag>;

const TextWithTombstonesElementVector& getElements(const NestedInsertion& nested)
{
    return cast<TextWithTombstonesItems>(derefPtr(nested.getData())).getCollection();
}

bool isByte(const TextWithTombstonesElement& element)
{
    return boost::get<short>(&element) != nullptr;
}

/// One nested operation: where it comes in, and what is known of it.
struct Piece
{
    const NestedInsertion* _nested;
    const Typing* _typing;
    /// The number of its first element among all that are planned.
    std::size_t _firstPlanned;
    unsigned long _slot;
};

/// What comes in at one gap.
struct Group
{
    unsigned long _gap;
    std::vector<Piece> _pieces;
};

/// How a piece looks where it goes on from something.
struct Origin
{
    /// Nothing if it isn't known.
    std::optional<RunStylePtr> _look;
    /// The paragraph that a new one is made like; null if there is none.
    const DOM::Paragraph* _paragraph = nullptr;
    bool _isAnchorLive = false;
};

bool isInParagraph(const PlanePlace& place)
{
    return place._kind != PlaceKind::TextEnd && place._kind != PlaceKind::AtomicBlock;
}

/// What a piece goes on from; `behind` is the place behind its gap.
Origin findOrigin(TextPlaces& places, const Typing& typing, const PlanePlace& behind)
{
    const auto anchor = typing._anchor ? places.getElement(*typing._anchor) : std::nullopt;
    if (!anchor)
    {
        return Origin{typing._look, typing._paragraph, false};
    }
    const PlanePlace place = places.find(*anchor);
    if (const DOM::Run* run = places.findRun(place))
    {
        const RunStylePtr look = makeTypedStyle(run->getSharedStyle(), run, places.findRun(behind));
        return Origin{look, &places.getParagraph(place), true};
    }
    if (!isInParagraph(place))
    {
        return Origin{typing._look, typing._paragraph, true};
    }
    // In front of a run of bytes it would have been typed behind the tag of that.
    const DOM::Paragraph& paragraph = places.getParagraph(place);
    const bool isInFrontOfRun = place._kind == PlaceKind::ParaTag && behind._kind == PlaceKind::AtomicRun;
    return Origin{isInFrontOfRun ? places.getLook(behind) : paragraph.getSharedParaMarkStyle(), &paragraph, true};
}

bool isMadeLike(const DOM::Paragraph& paragraph, const DOM::Paragraph& model)
{
    return areDeeplyEqual(paragraph.getSharedStyle(), model.getSharedStyle()) &&
           areLooksEqual(paragraph.getSharedParaMarkStyle(), model.getSharedParaMarkStyle()) &&
           areDeeplyEqual(paragraph.getNumRef(), model.getNumRef());
}

/// An element of the fitted insertion.
struct Written
{
    unsigned long _slot;
    TextWithTombstonesElement _element;
    /// The number of the same element among those that were planned, or `nowhere`.
    std::size_t _planned;
};

/// What the whole insertion becomes.
struct Draft
{
    std::vector<Written> _elements;
    /// Whether an element isn't what was planned; what is left out, or moved, isn't told here.
    bool _isAnyNew = false;
};

/// Writes one group.
class GroupWriter
{
public:
    GroupWriter(TextPlaces& places, TextPlaces& anchors, const Group& group, Draft& draft)
        : _places(places)
        , _anchors(anchors)
        , _group(group)
        , _draft(draft)
        , _front(places.findBefore(group._gap))
        , _behind(places.find(group._gap))
        , _state(getStateBehind(_front._kind))
        , _firstWritten(draft._elements.size())
    {
        if (_state != TextState::Closed)
        {
            _parted = &places.getParagraph(_front);
        }
        if (_state == TextState::Tag || _state == TextState::Run)
        {
            _look = places.getLook(_front);
        }
    }

    void write()
    {
        for (const Piece& piece : _group._pieces)
        {
            startPiece(piece);
            const auto& elements = getElements(*piece._nested);
            for (std::size_t index = 0; index < elements.size();)
            {
                index += writeElement(elements, index);
            }
        }
        finish();
    }

private:
    void startPiece(const Piece& piece)
    {
        _piece = &piece;
        _origin = findOrigin(_anchors, *piece._typing, _behind);
        _wanted = _origin._look;
    }

    /// Returns how many elements are done.
    std::size_t writeElement(const TextWithTombstonesElementVector& elements, std::size_t index)
    {
        const TextWithTombstonesElement& element = elements[index];
        const std::size_t planned = _piece->_firstPlanned + index;
        const PlaceKind kind = getKind(element);
        if (kind == PlaceKind::Char)
        {
            return writeBytes(elements, index);
        }
        // A run's tag that waits for a byte doesn't get one.
        _tag.reset();
        switch (kind)
        {
        case PlaceKind::TextRunTag:
            writeRunTag(element, planned);
            break;
        case PlaceKind::AtomicRun:
        case PlaceKind::ParaMark:
            openParagraph();
            add(element, planned);
            break;
        case PlaceKind::ParaTag:
            writeParagraphTag(element, planned);
            break;
        default:
            closeParagraph();
            add(element, planned);
        }
        return 1;
    }

    std::size_t writeBytes(const TextWithTombstonesElementVector& elements, std::size_t begin)
    {
        openParagraph();
        enterRun();
        std::size_t end = begin;
        for (; end < elements.size() && isByte(elements[end]); ++end)
        {
            add(elements[end], _piece->_firstPlanned + end);
        }
        return end - begin;
    }

    /// A tag is put in where bytes would stand in no run, or in one of another look.
    void enterRun()
    {
        if (_tag)
        {
            addTag();
            return;
        }
        if (_state == TextState::Open)
        {
            addNewRun(_wanted ? *_wanted : getLookHere());
        }
        else if (_state == TextState::Run && _wanted && !areLooksEqual(*_wanted, _look))
        {
            addNewRun(*_wanted);
        }
    }

    /// It waits for its first byte.
    void writeRunTag(const TextWithTombstonesElement& element, std::size_t planned)
    {
        const RunStylePtr& own = boost::get<SharedConstPtr<DOM::Run>>(element)->getSharedStyle();
        const bool goesOn = _piece->_typing->_tagsGoOn && _origin._isAnchorLive && _origin._look;
        _wanted = goesOn ? *_origin._look : own;
        _tag = Written{_piece->_slot, element, planned};
    }

    void writeParagraphTag(const TextWithTombstonesElement& element, std::size_t planned)
    {
        const bool goesOn = _piece->_typing->_tagsGoOn;
        if (_state != TextState::Closed && goesOn)
        {
            return;
        }
        closeParagraph();
        const DOM::Paragraph* model = _parted ? _parted : _origin._isAnchorLive ? _origin._paragraph : nullptr;
        const auto& own = static_cast<const DOM::Paragraph&>(*boost::get<SharedConstPtr<DOM::Block>>(element));
        const bool keepsLook = !goesOn || !model || isMadeLike(own, *model);
        add(keepsLook ? element : makeParagraphElement(model), planned);
        _draft._isAnyNew |= !keepsLook;
    }

    void openParagraph()
    {
        if (_state == TextState::Closed)
        {
            addNewParagraph();
        }
    }

    /// Ends a paragraph that something that isn't part of one comes behind.
    void closeParagraph()
    {
        if (_state != TextState::Closed)
        {
            addNew(ParagraphMark());
        }
    }

    /// Gives what is behind the gap what it needs.
    void finish()
    {
        const bool isOpenBehind = step(TextState::Open, _behind._kind) || _behind._kind == PlaceKind::Char;
        if (!isOpenBehind)
        {
            finishParagraph();
            return;
        }
        if (_draft._elements.size() == _firstWritten && !_tag)
        {
            return;
        }
        openParagraph();
        if (_behind._kind == PlaceKind::Char)
        {
            finishRun();
        }
    }

    /// Nothing can come into the last paragraph any more. One that holds nothing was the rest of one that is gone.
    void finishParagraph()
    {
        if (_state == TextState::Closed)
        {
            return;
        }
        if (getKind(_draft._elements.back()._element) == PlaceKind::ParaTag)
        {
            _draft._elements.pop_back();
            return;
        }
        closeParagraph();
    }

    /// The rest of a run keeps its look.
    void finishRun()
    {
        const RunStylePtr& look = _places.getLook(_behind);
        if (_tag)
        {
            _wanted = look;
            addTag();
        }
        else if (_state == TextState::Open || (_state == TextState::Run && !areLooksEqual(_look, look)))
        {
            addNewRun(look);
        }
    }

    void addNewParagraph()
    {
        const DOM::Paragraph* model = _parted ? _parted : _origin._paragraph;
        if (model)
        {
            addNew(makeParagraphElement(model));
            return;
        }
        DOM::Paragraph paragraph;
        paragraph.getSharedParaMarkStyle() = _wanted.value_or(RunStylePtr());
        addNew(makeParagraphElement(&paragraph));
    }

    void addNewRun(const RunStylePtr& look)
    {
        addNew(makeRunElement(look));
        _look = look;
    }

    /// The tag that waits, in the look that is wanted.
    void addTag()
    {
        const RunStylePtr& own = boost::get<SharedConstPtr<DOM::Run>>(_tag->_element)->getSharedStyle();
        if (!areLooksEqual(own, *_wanted))
        {
            _tag->_element = makeRunElement(*_wanted);
            _draft._isAnyNew = true;
        }
        _draft._elements.push_back(std::move(*_tag));
        _tag.reset();
        _look = *_wanted;
        _state = TextState::Tag;
    }

    void addNew(TextWithTombstonesElement element)
    {
        add(std::move(element), FittedInsertion::nowhere);
        _draft._isAnyNew = true;
    }

    void add(TextWithTombstonesElement element, std::size_t planned)
    {
        const auto state = step(_state, getKind(element));
        ZEM_ASSERT(state);
        _state = *state;
        _draft._elements.push_back(Written{_piece->_slot, std::move(element), planned});
    }

    /// The look of something of which nothing is known.
    RunStylePtr getLookHere() const
    {
        const DOM::Paragraph* paragraph = _parted ? _parted : _origin._paragraph;
        return _places.findRun(_behind) ? _places.getLook(_behind)
               : paragraph              ? paragraph->getSharedParaMarkStyle()
                                        : RunStylePtr();
    }

    TextPlaces& _places;
    TextPlaces& _anchors;
    const Group& _group;
    Draft& _draft;
    PlanePlace _front;
    PlanePlace _behind;
    TextState _state;
    std::size_t _firstWritten;
    /// The paragraph that the gap is in; null between blocks.
    const DOM::Paragraph* _parted = nullptr;
    /// The look of the run that the text is in at the end of what is written, where it is in one.
    RunStylePtr _look;
    const Piece* _piece = nullptr;
    Origin _origin;
    /// The look that the next bytes should have, if that is known.
    std::optional<RunStylePtr> _wanted;
    /// A planned run's tag that has no byte yet.
    std::optional<Written> _tag;
};

class InsertionFitter
{
public:
    InsertionFitter(const DOM::TextWithTombstones& text, const TextInsertion& insertion,
                    const std::vector<Typing>& typings)
        : _places(text)
        , _anchors(text)
        , _insertion(insertion)
        , _typings(typings)
    {
        const bool isEach = insertion.getNestedOperations().size() == typings.size();
        ZEM_ASSERT(isEach);
    }

    FittedInsertion fit()
    {
        if (isTypedBehindBytes())
        {
            return {};
        }
        makeGroups();
        Draft draft;
        for (const Group& group : _groups)
        {
            GroupWriter(_places, _anchors, group, draft).write();
        }
        return makeResult(draft);
    }

private:
    /// Whether all of it is bytes that were typed directly behind bytes that live.
    bool isTypedBehindBytes()
    {
        const auto& nestedOperations = _insertion.getNestedOperations();
        for (std::size_t index = nestedOperations.size(); index-- > 0;)
        {
            const NestedInsertion& nested = nestedOperations[index];
            const auto anchor = _typings[index]._anchor ? _places.getElement(*_typings[index]._anchor) : std::nullopt;
            const auto& elements = getElements(nested);
            if (!anchor || *anchor + 1 != _places.getGap(nested.getRange().getBegin()) ||
                !std::all_of(elements.begin(), elements.end(), isByte) || !goesOnBehind(*anchor))
            {
                return false;
            }
        }
        return true;
    }

    /// Whether bytes behind an element simply join its run. Links and comments don't grow at their ends.
    bool goesOnBehind(unsigned long anchor)
    {
        const PlanePlace place = _anchors.find(anchor);
        if (place._kind != PlaceKind::Char)
        {
            return false;
        }
        const DOM::RunStyle& style = DOM::derefSharedStyle(_anchors.getLook(place));
        const bool mayEnd = style.getHyperlink() || !style.getCommentUUIDs().empty();
        return !mayEnd || _anchors.countBytesFrom(place) > 1;
    }

    /// From the lowest nested operation to the highest.
    void makeGroups()
    {
        const auto& nestedOperations = _insertion.getNestedOperations();
        for (std::size_t index = nestedOperations.size(); index-- > 0;)
        {
            const NestedInsertion& nested = nestedOperations[index];
            const unsigned long slot = nested.getRange().getBegin();
            const unsigned long gap = _places.getGap(slot);
            if (_groups.empty() || _groups.back()._gap != gap)
            {
                placeLastGroup();
                _groups.push_back(Group{gap, {}});
            }
            _groups.back()._pieces.push_back(Piece{&nested, &_typings[index], _plannedCount, slot});
            _plannedCount += getElements(nested).size();
        }
        placeLastGroup();
    }

    /// Moves the last group in front of a tag or mark that it belongs in front of, where it may join the one before it.
    void placeLastGroup()
    {
        if (_groups.empty() || !belongsInFront(_groups.back()))
        {
            return;
        }
        Group& group = _groups.back();
        --group._gap;
        for (Piece& piece : group._pieces)
        {
            piece._slot = _places.getSlot(group._gap);
        }
        _isAnyMoved = true;
        if (_groups.size() > 1 && _groups[_groups.size() - 2]._gap == group._gap)
        {
            std::vector<Piece> pieces = std::move(group._pieces);
            _groups.pop_back();
            _groups.back()._pieces.insert(_groups.back()._pieces.end(), pieces.begin(), pieces.end());
        }
    }

    bool belongsInFront(const Group& group)
    {
        const PlanePlace front = _places.findBefore(group._gap);
        const Piece& piece = group._pieces.front();
        const TextWithTombstonesElement& first = getElements(*piece._nested).front();
        if (front._kind == PlaceKind::TextRunTag)
        {
            return !isByte(first) || belongsInFrontOfRun(group, *piece._typing, front);
        }
        const PlaceKind behind = _places.find(group._gap)._kind;
        const bool isLastInText = behind == PlaceKind::TextEnd || behind == PlaceKind::AtomicBlock;
        const bool needsParagraph = !step(TextState::Closed, getKind(first));
        return front._kind == PlaceKind::ParaMark && isLastInText && needsParagraph;
    }

    /// Whether bytes that would become the first ones of a run belong to what is in front of that.
    bool belongsInFrontOfRun(const Group& group, const Typing& typing, const PlanePlace& tag)
    {
        const Origin origin = findOrigin(_anchors, typing, _places.find(group._gap));
        const bool hasLook = !origin._look || areLooksEqual(*origin._look, _places.getLook(tag));
        const bool cameBehindAnchor = !typing._anchor || *typing._anchor < _places.getSlot(group._gap - 1);
        const bool isBehindByte = _places.getPlaceBefore(tag, group._gap - 1)._kind == PlaceKind::Char;
        return !hasLook || (cameBehindAnchor && isBehindByte);
    }

    FittedInsertion makeResult(Draft& draft) const
    {
        FittedInsertion fitted;
        fitted._isChanged = draft._isAnyNew || _isAnyMoved || draft._elements.size() != _plannedCount;
        if (!fitted._isChanged)
        {
            return fitted;
        }
        fitted._identities.assign(_plannedCount, FittedInsertion::nowhere);
        for (std::size_t index = 0; index < draft._elements.size(); ++index)
        {
            if (draft._elements[index]._planned != FittedInsertion::nowhere)
            {
                fitted._identities[draft._elements[index]._planned] = index;
            }
        }
        if (!draft._elements.empty())
        {
            fitted._operation = makeOperation(draft._elements);
        }
        return fitted;
    }

    std::unique_ptr<TextInsertion> makeOperation(std::vector<Written>& written) const
    {
        std::vector<NestedInsertion> nestedOperations;
        for (std::size_t end = written.size(); end > 0;)
        {
            std::size_t begin = end - 1;
            while (begin > 0 && written[begin - 1]._slot == written[begin]._slot)
            {
                --begin;
            }
            TextWithTombstonesElementVector elements;
            elements.reserve(end - begin);
            for (std::size_t index = begin; index < end; ++index)
            {
                elements.push_back(std::move(written[index]._element));
            }
            nestedOperations.emplace_back(_insertion.getNodeAddress(), _insertion.getOperandType(),
                                          makeSharedConst<TextWithTombstonesItems>(std::move(elements)),
                                          IndexRange<unsigned long>::fromCount(written[begin]._slot, end - begin));
            end = begin;
        }
        auto operation = std::make_unique<TextInsertion>(std::move(nestedOperations));
        operation->inheritIDIfPossibleImpl(_insertion);
        return operation;
    }

    TextPlaces _places;
    /// Finds the anchors, which stand in front of the gaps, so that neither has to go back.
    TextPlaces _anchors;
    const TextInsertion& _insertion;
    const std::vector<Typing>& _typings;
    std::vector<Group> _groups;
    std::size_t _plannedCount = 0;
    bool _isAnyMoved = false;
};

} // namespace

FittedInsertion fitInsertion(const DOM::TextWithTombstones& text, const TextInsertion& insertion,
                             const std::vector<Typing>& typings)
{
    return InsertionFitter(text, insertion, typings).fit();
}

} // namespace Zem::CollaborationSession

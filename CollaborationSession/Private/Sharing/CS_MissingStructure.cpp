#include "Sharing/CS_MissingStructure.h"

#include "Editing/CS_CommandSupport.h"
#include "Sharing/CS_MakeRestoring.h"

#include "DOM_RunStyle.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationEngine::InsertTag;
using DOMCollaboration::ParagraphMark;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesElementVector;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

class StructureFinder
{
public:
    StructureFinder(const DOM::TextWithTombstones& text, const TextRestoring& single, FindDead findDead)
        : _places(text)
        , _single(single)
        , _nested(single.getNestedOperations().front())
        , _element(cast<TextWithTombstonesItems>(derefPtr(_nested.getData())).getCollection().front())
        , _findDead(findDead)
        , _gap(_places.getGap(_nested.getRange().getBegin()))
        , _front(_places.findBefore(_gap))
        , _behind(_places.find(_gap))
    {
    }

    MissingStructure find()
    {
        const TextState state = getStateBehind(_front._kind);
        // A tag and its first byte aren't parted.
        if (state != TextState::Tag)
        {
            findFor(state, getKind(_element));
        }
        MissingStructure missing;
        if (_inFront.empty())
        {
            return missing;
        }
        if (_isByteInFront)
        {
            missing._removal = makeRemoval(_nested.getRange().getBegin() + _inFront.size() - 1);
        }
        missing._isInstead = _isInstead;
        missing._insertion = makeInsertion();
        return missing;
    }

private:
    void findFor(TextState state, PlaceKind kind)
    {
        switch (kind)
        {
        case PlaceKind::Char:
            findForBytes(state);
            break;
        case PlaceKind::AtomicRun:
            if (state == TextState::Closed)
            {
                openParagraph();
            }
            break;
        case PlaceKind::AtomicBlock:
            if (state != TextState::Closed)
            {
                partParagraph();
            }
            break;
        case PlaceKind::ParaMark:
            _isInstead = true;
            state == TextState::Closed ? openParagraph() : partParagraph();
            break;
        default:
            break;
        }
    }

    void findForBytes(TextState state)
    {
        if (state == TextState::Run)
        {
            return;
        }
        if (state == TextState::Closed)
        {
            openParagraph();
        }
        _inFront.push_back(makeRunElement(findLook()));
        _inFront.push_back(_element);
        _isByteInFront = true;
    }

    void openParagraph()
    {
        const auto tag = findDeadInFront(PlaceKind::ParaTag);
        const DOM::Paragraph* model =
            tag ? static_cast<const DOM::Paragraph*>(boost::get<SharedConstPtr<DOM::Block>>(*tag).get()) : nullptr;
        _inFront.push_back(makeParagraphElement(model));
        _isInstead ? _inFront.emplace_back(ParagraphMark()) : _inBehind.emplace_back(ParagraphMark());
    }

    /// The rest of a run keeps its look.
    void partParagraph()
    {
        _inFront.emplace_back(ParagraphMark());
        _inBehind.push_back(makeParagraphElement(&_places.getParagraph(_front)));
        if (_behind._kind == PlaceKind::Char)
        {
            _inBehind.push_back(makeRunElement(_places.getLook(_behind)));
        }
    }

    RunStylePtr findLook()
    {
        if (const auto tag = findDeadInFront(PlaceKind::TextRunTag))
        {
            return boost::get<SharedConstPtr<DOM::Run>>(*tag)->getSharedStyle();
        }
        const bool isInParagraph = getStateBehind(_front._kind) != TextState::Closed;
        return isInParagraph ? _places.getParagraph(_front).getSharedParaMarkStyle() : RunStylePtr();
    }

    /// The last of a kind that stood in front of what is to come back when that was removed.
    std::optional<TextWithTombstonesElement> findDeadInFront(PlaceKind kind) const
    {
        const unsigned long begin = _gap == 0 ? 0 : _places.getSlot(_gap - 1) + 1;
        for (unsigned long slot = _nested.getRange().getBegin(); slot-- > begin;)
        {
            auto dead = _findDead(slot);
            if (dead && dead->_wasLive && getKind(dead->_element) == kind)
            {
                return std::move(dead->_element);
            }
        }
        return std::nullopt;
    }

    std::unique_ptr<TextMarking> makeRemoval(unsigned long slot) const
    {
        std::vector<ListModificationOperation<CollaborationEngine::MarkAsRemovedTag>> nestedOperations;
        nestedOperations.emplace_back(_single.getNodeAddress(), _single.getOperandType(),
                                      IndexRange<unsigned long>::fromCount(slot, 1));
        return std::make_unique<TextMarking>(std::move(nestedOperations));
    }

    std::unique_ptr<TextInsertion> makeInsertion()
    {
        std::vector<ListModificationOperation<InsertTag>> nestedOperations;
        addNested(nestedOperations, std::move(_inBehind), _nested.getRange().getEnd());
        addNested(nestedOperations, std::move(_inFront), _nested.getRange().getBegin());
        return std::make_unique<TextInsertion>(std::move(nestedOperations));
    }

    void addNested(std::vector<ListModificationOperation<InsertTag>>& nestedOperations,
                   TextWithTombstonesElementVector elements, unsigned long slot) const
    {
        if (elements.empty())
        {
            return;
        }
        const auto range = IndexRange<unsigned long>::fromCount(slot, elements.size());
        nestedOperations.emplace_back(_single.getNodeAddress(), _single.getOperandType(),
                                      makeSharedConst<TextWithTombstonesItems>(std::move(elements)), range);
    }

    TextPlaces _places;
    const TextRestoring& _single;
    const ListModificationOperation<CollaborationEngine::RestoreTag>& _nested;
    const TextWithTombstonesElement& _element;
    FindDead _findDead;
    unsigned long _gap;
    PlanePlace _front;
    PlanePlace _behind;
    TextWithTombstonesElementVector _inFront;
    TextWithTombstonesElementVector _inBehind;
    bool _isByteInFront = false;
    bool _isInstead = false;
};

/// The element of a slot that the restoring is about.
const TextWithTombstonesElement& getElement(const TextRestoring& restoring, unsigned long slot)
{
    const auto& nestedOperations = restoring.getNestedOperations();
    const auto nested = std::find_if(nestedOperations.begin(), nestedOperations.end(),
                                     [slot](const auto& candidate) { return candidate.getRange().getBegin() <= slot; });
    ZEM_ASSERT(nested != nestedOperations.end());
    const auto& elements = cast<TextWithTombstonesItems>(derefPtr(nested->getData())).getCollection();
    return elements.at(slot - nested->getRange().getBegin());
}

} // namespace

MissingStructure findMissingStructure(const DOM::TextWithTombstones& text, const TextRestoring& single,
                                      FindDead findDead)
{
    return StructureFinder(text, single, findDead).find();
}

std::vector<std::unique_ptr<TextRestoring>> takeSingles(const TextRestoring& restoring,
                                                        const std::vector<IndexRange<unsigned long>>& slots)
{
    std::vector<std::unique_ptr<TextRestoring>> singles;
    std::vector<ElementAtSlot> bytes;
    const auto add = [&](std::vector<ElementAtSlot> elements)
    { singles.push_back(makeRestoring(restoring, elements)); };
    const auto addBytes = [&]
    {
        if (!bytes.empty())
        {
            add(std::exchange(bytes, {}));
        }
    };
    for (const IndexRange<unsigned long>& range : slots)
    {
        for (unsigned long slot = range.getBegin(); slot < range.getEnd(); ++slot)
        {
            ElementAtSlot element{slot, getElement(restoring, slot)};
            if (getKind(element._element) == PlaceKind::Char)
            {
                bytes.push_back(std::move(element));
                continue;
            }
            addBytes();
            add({std::move(element)});
        }
        addBytes();
    }
    return singles;
}

} // namespace Zem::CollaborationSession

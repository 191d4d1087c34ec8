// The element in front of the gap (left) and the one behind it (right), of those that stay, say what is to come between
// them, so that it fits as it is.
//
//   1. Where no paragraph is open, but one begins behind the gap, the gap moves behind its tag.
//   2. Where no paragraph is open or begins, lines become paragraphs.
//   3. Otherwise the first line goes on in the run in front of the gap, or in the one behind it, if it has the style of
//      what is typed; or it gets a run of its own, as it does behind a link, which what is typed there isn't a part of.
//   4. Each further line ends the paragraph and begins another. What is behind the gap moves behind the last one; if it
//      is the rest of a run, the last line has a run, which takes it in.
//   5. Where the first line is empty and the gap is at the beginning of a run, the paragraph ends in front of the run's
//      tag, and the last line is put behind the tag, so that no run is parted.

#include "Editing/CS_Insertion.h"

#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_TypedStyle.h"

#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include "Util_DeepComparison.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace Zem::CollaborationSession
{

using CollaborationEngine::InsertTag;
using CollaborationEngine::OperationUPtr;
using DOMCollaboration::ParagraphMark;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesElementVector;

namespace
{

void addBytes(TextWithTombstonesElementVector& elements, std::string_view bytes)
{
    for (const char byte : bytes)
    {
        elements.emplace_back(static_cast<short>(static_cast<signed char>(byte)));
    }
}

/// Takes the first line off, and its line break. Empty when there is no line left.
class Lines
{
public:
    explicit Lines(std::string_view characters)
        : _rest(characters)
    {
    }

    std::optional<std::string_view> next()
    {
        if (_isAtEnd)
        {
            return std::nullopt;
        }
        const std::size_t lineBreak = _rest.find('\n');
        const std::string_view line = _rest.substr(0, lineBreak);
        _isAtEnd = lineBreak == std::string_view::npos;
        _rest = _isAtEnd ? std::string_view() : _rest.substr(lineBreak + 1);
        return line;
    }

    /// Whether the last line was taken.
    bool isAtEnd() const
    {
        return _isAtEnd;
    }

private:
    std::string_view _rest;
    bool _isAtEnd = false;
};

class InsertionPlanner
{
public:
    InsertionPlanner(const CharacterIndex& index, const Deletion& deletion, unsigned long offset)
        : _index(index)
        , _deletion(deletion)
    {
        const unsigned long element = index.convertToElement(offset);
        const PlanePlace place = index.findPlace(element);
        // The tag of a run belongs to the run behind the gap.
        const bool beginsRun = place._kind == PlaceKind::Char && place._byteIndex == 0;
        const unsigned long gap = beginsRun ? element - 1 : element;
        setLeft(gap);
        setRight(gap);
        enterParagraphBehind();
        findStyle(place);
    }

    OperationUPtr plan(std::string_view characters)
    {
        if (!isOpen())
        {
            return planParagraphs(characters);
        }
        if (characters.empty())
        {
            return nullptr;
        }
        enterRunBehind();
        Lines lines(characters);
        const std::string_view first = *lines.next();
        if (first.empty() && _left._kind == PlaceKind::TextRunTag)
        {
            return planInFrontOfRun(lines, characters.size());
        }
        TextWithTombstonesElementVector elements;
        elements.reserve(characters.size() + 2);
        if (!first.empty())
        {
            addLine(elements, first, !continuesRun(_left));
        }
        while (const auto line = lines.next())
        {
            const bool takesRestOfRun = lines.isAtEnd() && _right._kind == PlaceKind::Char;
            addParagraphBreak(elements);
            addLine(elements, *line, takesRestOfRun || !line->empty());
        }
        return makeInsertion(getSlotBehindLeft(), std::move(elements));
    }

private:
    bool isOpen() const
    {
        return _left._kind == PlaceKind::ParaTag || _left._kind == PlaceKind::TextRunTag ||
               _left._kind == PlaceKind::Char || _left._kind == PlaceKind::AtomicRun;
    }

    /// Finds the element in front of a gap that stays. At the beginning of the text it stays `TextEnd`, which can't
    /// stand in front of anything.
    void setLeft(unsigned long gap)
    {
        for (auto stretch = _deletion._stretches.rbegin(); stretch != _deletion._stretches.rend(); ++stretch)
        {
            if (stretch->_begin < gap && gap <= stretch->_end)
            {
                gap = stretch->_begin;
            }
        }
        _elementsUpToLeft = gap;
        if (gap > 0)
        {
            _left = _index.findPlace(gap - 1);
        }
    }

    /// Finds the element from `element` on that stays.
    void setRight(unsigned long element)
    {
        for (const ElementsStretch& stretch : _deletion._stretches)
        {
            if (stretch._begin <= element && element < stretch._end)
            {
                element = stretch._end;
            }
        }
        _rightElement = element;
        _right = _index.findPlace(element);
    }

    void moveBehindRight()
    {
        _left = _right;
        _elementsUpToLeft = _rightElement + 1;
        setRight(_elementsUpToLeft);
    }

    void enterParagraphBehind()
    {
        if (!isOpen() && _right._kind == PlaceKind::ParaTag)
        {
            moveBehindRight();
        }
    }

    void enterRunBehind()
    {
        if (!continuesRun(_left) && continuesRun(_right))
        {
            moveBehindRight();
        }
    }

    /// Whether what is typed goes on in the run of a place.
    bool continuesRun(const PlanePlace& place) const
    {
        return (place._kind == PlaceKind::Char || place._kind == PlaceKind::TextRunTag) &&
               areDeeplyEqual(getRun(place).getSharedStyle(), _style);
    }

    const DOM::Run& getRun(const PlanePlace& place) const
    {
        return *_index.getParagraph(place._blockIndex).getRuns()[place._runIndex];
    }

    /// The run of a place; null if there is none.
    const DOM::Run* findRun(const PlanePlace& place) const
    {
        const bool isInRun = place._kind == PlaceKind::Char || place._kind == PlaceKind::TextRunTag ||
                             place._kind == PlaceKind::AtomicRun;
        return isInRun ? &getRun(place) : nullptr;
    }

    /// The style of what is typed. `replaced` is what stood behind the gap before the deletion.
    void findStyle(const PlanePlace& replaced)
    {
        // A run whose tag stays has a character that stays.
        const DOM::Run* inFront = findRun(_left);
        const DOM::Run* behind = findRun(_right);
        const DOM::Run* model = _deletion._stretches.empty() ? nullptr : findRun(replaced);
        model = model ? model : inFront ? inFront : behind;
        const DOM::Paragraph* paragraph = getModel();
        const RunStylePtr markStyle = paragraph ? paragraph->getSharedParaMarkStyle() : nullptr;
        _style = makeTypedStyle(model ? model->getSharedStyle() : markStyle, inFront, behind);
    }

    /// The paragraph that new ones are made like: the open one, otherwise the one in front of the gap.
    const DOM::Paragraph* getModel() const
    {
        const bool isInParagraph = isOpen() || _left._kind == PlaceKind::ParaMark;
        return isInParagraph ? &_index.getParagraph(_left._blockIndex) : nullptr;
    }

    const TextWithTombstonesElement& getParagraphElement()
    {
        if (!_paragraphElement)
        {
            _paragraphElement = makeParagraphElement(getModel());
        }
        return *_paragraphElement;
    }

    void addParagraphBreak(TextWithTombstonesElementVector& elements)
    {
        elements.emplace_back(ParagraphMark());
        elements.push_back(getParagraphElement());
    }

    void addLine(TextWithTombstonesElementVector& elements, std::string_view line, bool hasRun)
    {
        if (hasRun)
        {
            if (!_runElement)
            {
                _runElement = makeRunElement(_style);
            }
            elements.push_back(*_runElement);
        }
        addBytes(elements, line);
    }

    OperationUPtr planInFrontOfRun(Lines& lines, std::size_t size)
    {
        TextWithTombstonesElementVector elements;
        elements.reserve(size + 2);
        std::string_view last;
        while (const auto line = lines.next())
        {
            addParagraphBreak(elements);
            if (lines.isAtEnd())
            {
                last = *line;
            }
            else
            {
                addLine(elements, *line, !line->empty());
            }
        }
        const unsigned long tagSlot = getSlotBehindLeft() - 1;
        std::vector<ListModificationOperation<InsertTag>> nestedOperations;
        if (!last.empty())
        {
            TextWithTombstonesElementVector lastElements;
            lastElements.reserve(last.size());
            addBytes(lastElements, last);
            nestedOperations.push_back(makeNestedInsertion(getAddress(), tagSlot + 1, std::move(lastElements)));
        }
        nestedOperations.push_back(makeNestedInsertion(getAddress(), tagSlot, std::move(elements)));
        return makeMultirange(std::move(nestedOperations));
    }

    /// Lines as paragraphs of their own. In front of a block, the last line break ends the last of them; at the end of
    /// the text, the one that nothing stands behind isn't counted. So a text that is to end with a line break, because
    /// the block behind it went, gets an empty paragraph.
    OperationUPtr planParagraphs(std::string_view characters)
    {
        const bool isAtEnd = _right._kind == PlaceKind::TextEnd;
        const bool needsEmptyParagraph = isAtEnd && !_deletion._stretches.empty() && _left._kind == PlaceKind::ParaMark;
        if (characters.empty() && !needsEmptyParagraph)
        {
            return nullptr;
        }
        TextWithTombstonesElementVector elements;
        elements.reserve(characters.size() + 3);
        Lines lines(characters);
        while (const auto line = lines.next())
        {
            if (lines.isAtEnd() && line->empty() && !isAtEnd)
            {
                break;
            }
            elements.push_back(getParagraphElement());
            addLine(elements, *line, !line->empty());
            elements.emplace_back(ParagraphMark());
        }
        return makeInsertion(getSlotBehindLeft(), std::move(elements));
    }

    /// The slot behind that of the element in front of the gap.
    unsigned long getSlotBehindLeft() const
    {
        return _elementsUpToLeft == 0 ? 0 : getSlot(_index, _elementsUpToLeft - 1) + 1;
    }

    OperationUPtr makeInsertion(unsigned long slot, TextWithTombstonesElementVector elements) const
    {
        std::vector<ListModificationOperation<InsertTag>> nestedOperations;
        nestedOperations.push_back(makeNestedInsertion(getAddress(), slot, std::move(elements)));
        return makeMultirange(std::move(nestedOperations));
    }

    const CollaborationEngine::OperationNodeAddress& getAddress() const
    {
        return _index.getTextInDocument().getAddress();
    }

    const CharacterIndex& _index;
    const Deletion& _deletion;
    PlanePlace _left;
    PlanePlace _right;
    /// The plane index behind the left element.
    unsigned long _elementsUpToLeft = 0;
    unsigned long _rightElement = 0;
    RunStylePtr _style;
    std::optional<TextWithTombstonesElement> _runElement;
    std::optional<TextWithTombstonesElement> _paragraphElement;
};

} // namespace

OperationUPtr planInsertion(const CharacterIndex& index, const Deletion& deletion, unsigned long offset,
                            std::string_view characters)
{
    if (characters.empty() && deletion._stretches.empty())
    {
        return nullptr;
    }
    return InsertionPlanner(index, deletion, offset).plan(characters);
}

} // namespace Zem::CollaborationSession

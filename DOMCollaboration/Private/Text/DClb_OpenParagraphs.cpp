#include "Text/DClb_OpenParagraphs.h"

#include <algorithm>

namespace Zem::DOMCollaboration::TextBusinessRules
{

namespace
{

bool isInParagraph(ElementType type)
{
    return type == ElementType::ParaTag || type == ElementType::TextRunTag || type == ElementType::AtomicRun ||
           type == ElementType::Char;
}

bool endsParagraph(ElementType type)
{
    return type == ElementType::SectionTag || type == ElementType::ParaTag || type == ElementType::AtomicBlock ||
           type == ElementType::TextEnd;
}

bool isMarkMissing(ElementType prev, ElementType next)
{
    return isInParagraph(prev) && endsParagraph(next);
}

} // namespace

bool leavesParagraphOpen(const TextWithTombstonesElementVector& elements, IndexExcludingTombstones startIndex,
                         const TextSurroundings& surroundings)
{
    if (elements.empty())
    {
        return false;
    }
    // The text is asked only where the elements leave it open: a typed byte ends no paragraph.
    const auto isMarkMissingBetween = [](const auto& prev, const auto& next)
    { return isMarkMissing(getElementType(prev), getElementType(next)); };
    return (endsParagraph(getElementType(elements.front())) &&
            isInParagraph(surroundings.getElementTypeBefore(startIndex))) ||
           std::adjacent_find(elements.begin(), elements.end(), isMarkMissingBetween) != elements.end() ||
           (isInParagraph(getElementType(elements.back())) && endsParagraph(surroundings.getElementType(startIndex)));
}

bool leavesParagraphOpen(IndexExcludingTombstones rangeBegin, IndexExcludingTombstones rangeEnd,
                         const TextSurroundings& surroundings)
{
    return isMarkMissing(surroundings.getElementTypeBefore(rangeBegin), surroundings.getElementType(rangeEnd));
}

bool closeOpenParagraphs(TextWithTombstonesElementVector& elements, IndexExcludingTombstones startIndex,
                         const TextSurroundings& surroundings)
{
    if (!leavesParagraphOpen(elements, startIndex, surroundings))
    {
        return false;
    }
    TextWithTombstonesElementVector closed;
    closed.reserve(elements.size() + 1);
    const auto addMarkIfMissing = [&closed](ElementType prev, ElementType next)
    {
        if (isMarkMissing(prev, next))
        {
            closed.push_back(ParagraphMark());
        }
    };
    ElementType prev = surroundings.getElementTypeBefore(startIndex);
    for (TextWithTombstonesElement& element : elements)
    {
        const ElementType next = getElementType(element);
        addMarkIfMissing(prev, next);
        closed.push_back(std::move(element));
        prev = next;
    }
    addMarkIfMissing(prev, surroundings.getElementType(startIndex));
    elements = std::move(closed);
    return true;
}

} // namespace Zem::DOMCollaboration::TextBusinessRules

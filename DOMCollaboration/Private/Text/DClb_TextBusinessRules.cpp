#include "Text/DClb_TextBusinessRules.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"
#include "Util_Visitor.h"

#include <algorithm>
#include <array>

namespace Zem::DOMCollaboration::TextBusinessRules
{

namespace
{

/// What to do between two neighbours.
enum class Repair : unsigned char
{
    None,
    AddMark,
    AddPara,
    AddRun,
    AddRunAndPara,
    Drop,
    Fault
};

using enum Repair;

/// One row for each `prev`, one column for each `next`, both in the order of `ElementType`. An atomic run in front of
/// an atomic block leaves its paragraph open, though in front of a tag it doesn't: that exception is wanted. What it
/// lets through is closed by DClb_OpenParagraphs.h.
constexpr std::array<std::array<Repair, elementTypesCount>, elementTypesCount> repairTable{{
    // SectionTag ParaTag ParaMark AtomicBlock TextRunTag AtomicRun Char           TextBegin TextEnd
    {None, None, AddPara, None, AddPara, AddPara, AddRunAndPara, Fault, None}, // SectionTag
    {AddMark, AddMark, None, AddMark, None, None, AddRun, Fault, AddMark},     // ParaTag
    {None, None, AddPara, None, AddPara, AddPara, AddRunAndPara, Fault, None}, // ParaMark
    {None, None, AddPara, None, AddPara, AddPara, AddRunAndPara, Fault, None}, // AtomicBlock
    {Drop, Drop, Drop, Drop, Drop, Drop, None, Fault, Drop},                   // TextRunTag
    {AddMark, AddMark, None, None, None, None, AddRun, Fault, AddMark},        // AtomicRun
    {AddMark, AddMark, None, AddMark, None, None, None, Fault, AddMark},       // Char
    {None, None, AddPara, None, AddPara, AddPara, AddRunAndPara, Fault, None}, // TextBegin
    {Fault, Fault, Fault, Fault, Fault, Fault, Fault, Fault, Fault},           // TextEnd
}};

TextWithTombstonesElement makeEmptyParagraph()
{
    return SharedConstPtr<DOM::Block>(std::make_shared<DOM::Paragraph>());
}

TextWithTombstonesElement makeEmptyTextRun()
{
    return SharedConstPtr<DOM::Run>(std::make_shared<DOM::TextRun>());
}

bool needsRepair(ElementType prev, ElementType next)
{
    return processElement(
        prev, next, [](const TextWithTombstonesElement&) {}, [] {});
}

/// Whether each element fits the one in front of it, the first one `prev`.
bool fitTogether(ElementType prev, const TextWithTombstonesElementVector& elements)
{
    for (const TextWithTombstonesElement& element : elements)
    {
        const ElementType next = getElementType(element);
        if (needsRepair(prev, next))
        {
            return false;
        }
        prev = next;
    }
    return true;
}

/// Repairs the end of `elements`, so that it fits `next`: what is missing is appended, in plane order; what doesn't fit
/// is dropped. (The table names the missing element that comes last first.)
bool repairEnd(TextWithTombstonesElementVector& elements, ElementType prev, ElementType next)
{
    const std::size_t sizeBefore = elements.size();
    const bool isChanged = processElement(
        prev, next, [&](TextWithTombstonesElement element) { elements.push_back(std::move(element)); },
        [&]
        {
            ZEM_ASSERT_MESSAGE(!elements.empty(), "It's not supposed to remove element before insertion position");
            elements.pop_back();
        });
    if (elements.size() > sizeBefore)
    {
        std::reverse(elements.begin() + static_cast<std::ptrdiff_t>(sizeBefore), elements.end());
    }
    return isChanged;
}

/// Brings each element to fit the one in front of it. What is put in fits by construction what it is put in for, and
/// the new neighbours of a dropped element aren't checked again.
bool repairForward(TextWithTombstonesElementVector& elements, ElementType prev)
{
    if (fitTogether(prev, elements))
    {
        return false;
    }
    TextWithTombstonesElementVector repaired;
    repaired.reserve(elements.size());
    for (TextWithTombstonesElement& element : elements)
    {
        const ElementType next = getElementType(element);
        repairEnd(repaired, prev, next);
        repaired.push_back(std::move(element));
        prev = next;
    }
    elements = std::move(repaired);
    return true;
}

/// Brings the last element to fit what follows in the text; what is put in, or comes to the end, is checked in turn.
bool repairTail(TextWithTombstonesElementVector& elements, ElementType next)
{
    bool isChanged = false;
    while (!elements.empty() && repairEnd(elements, getElementType(elements.back()), next))
    {
        isChanged = true;
    }
    return isChanged;
}

} // namespace

ElementType TextSurroundings::getElementType(IndexExcludingTombstones index) const
{
    return TextBusinessRules::getElementType(_anchor.find(_blocks, index)._kind);
}

ElementType TextSurroundings::getElementTypeBefore(IndexExcludingTombstones index) const
{
    return index.get() == 0 ? ElementType::TextBegin : getElementType(index - 1);
}

ElementType getElementType(const TextWithTombstonesElement& element)
{
    return boost::apply_visitor(Overloads{[](const ParagraphMark&) { return ElementType::ParaMark; },
                                          [](const SharedConstPtr<DOM::Block>& block)
                                          {
                                              switch (derefPtr(block).getKind())
                                              {
                                              case DOM::BlockKind::Paragraph:
                                                  return ElementType::ParaTag;
                                              case DOM::BlockKind::SectionTag:
                                                  return ElementType::SectionTag;
                                              default:
                                                  return ElementType::AtomicBlock;
                                              }
                                          },
                                          [](const SharedConstPtr<DOM::Run>& run) {
                                              return derefPtr(run).getKind() == DOM::RunKind::TextRun
                                                         ? ElementType::TextRunTag
                                                         : ElementType::AtomicRun;
                                          },
                                          [](short) { return ElementType::Char; }},
                                element);
}

ElementType getElementType(PlaceKind kind)
{
    switch (kind)
    {
    case PlaceKind::TextEnd:
        return ElementType::TextEnd;
    case PlaceKind::AtomicBlock:
        return ElementType::AtomicBlock;
    case PlaceKind::ParaTag:
        return ElementType::ParaTag;
    case PlaceKind::ParaMark:
        return ElementType::ParaMark;
    case PlaceKind::AtomicRun:
        return ElementType::AtomicRun;
    case PlaceKind::TextRunTag:
        return ElementType::TextRunTag;
    case PlaceKind::Char:
        return ElementType::Char;
    }
    ZEM_FAIL("Invalid enum value");
}

bool isInvalid(BusinessLogicValidationResult result)
{
    switch (result)
    {
    case BusinessLogicValidationResult::Valid:
        return false;
    case BusinessLogicValidationResult::Invalid:
        return true;
    }
    ZEM_FAIL("Unexpected BusinessLogicValidationResult value");
}

bool processElement(ElementType prev, ElementType next, CallableRef<void(TextWithTombstonesElement)> add,
                    CallableRef<void()> remove)
{
    switch (repairTable[static_cast<std::size_t>(prev)][static_cast<std::size_t>(next)])
    {
    case Repair::None:
        return false;
    case Repair::AddMark:
        add(ParagraphMark());
        return true;
    case Repair::AddPara:
        add(makeEmptyParagraph());
        return true;
    case Repair::AddRun:
        add(makeEmptyTextRun());
        return true;
    case Repair::AddRunAndPara:
        add(makeEmptyTextRun());
        add(makeEmptyParagraph());
        return true;
    case Repair::Drop:
        remove();
        return true;
    case Repair::Fault:
        break;
    }
    ZEM_FAIL("Invlalid elements position");
}

bool fixBusinessLogicForInsertion(TextWithTombstonesElementVector& elements, IndexExcludingTombstones& startIndex,
                                  const TextSurroundings& surroundings)
{
    ZEM_ASSERT_MESSAGE(!elements.empty(), "!_data.empty()");
    bool isChanged = false;
    ElementType prev = surroundings.getElementTypeBefore(startIndex);
    if (prev == ElementType::TextRunTag && getElementType(elements.front()) != ElementType::Char)
    {
        // The insertion would part the tag of a text run from the run's first byte.
        --startIndex;
        prev = surroundings.getElementTypeBefore(startIndex);
        isChanged = true;
    }
    isChanged |= repairForward(elements, prev);
    isChanged |= repairTail(elements, surroundings.getElementType(startIndex));
    return isChanged;
}

BusinessLogicValidationResult fixBusinessLogicForRemoving(IndexExcludingTombstones rangeBegin,
                                                          IndexExcludingTombstones rangeEnd,
                                                          const TextSurroundings& surroundings)
{
    ZEM_ASSERT(rangeBegin <= rangeEnd);
    if (rangeBegin == rangeEnd)
    {
        return BusinessLogicValidationResult::Valid;
    }
    return needsRepair(surroundings.getElementTypeBefore(rangeBegin), surroundings.getElementType(rangeEnd))
               ? BusinessLogicValidationResult::Invalid
               : BusinessLogicValidationResult::Valid;
}

BusinessLogicValidationResult fixBusinessLogicForRestoring(const TextWithTombstonesElementVector& elements,
                                                           IndexExcludingTombstones startIndex,
                                                           const TextSurroundings& surroundings)
{
    ZEM_ASSERT_MESSAGE(!elements.empty(), "!_data.empty()");
    const bool fits = fitTogether(surroundings.getElementTypeBefore(startIndex), elements) &&
                      !needsRepair(getElementType(elements.back()), surroundings.getElementType(startIndex));
    return fits ? BusinessLogicValidationResult::Valid : BusinessLogicValidationResult::Invalid;
}

} // namespace Zem::DOMCollaboration::TextBusinessRules

// Operations on several ranges of a text at once, at slots that no user's command would pick together. The document
// takes a marking or a restoring as it stands, or refuses all of it.

#include "Generators.h"
#include "Texts.h"

#include "CE_ListMultirangeOperation.h"

#include <algorithm>

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;

namespace
{

using Range = IndexRange<unsigned long>;

constexpr unsigned long textType =
    static_cast<unsigned long>(Zem::DOMCollaboration::OperationDOMNodeType::TextWithTombstones);

/// So many elements from `begin` on as the caller says, made longer until no character is cut.
Range makeRangeOfCharacters(const FlatText& text, std::size_t begin, std::size_t count)
{
    const auto isInsideCharacter = [&](std::size_t index)
    { return index < text._elements.size() && text._elements[index]._kind == ElementKind::ContinuationByte; };
    std::size_t end = std::min(text._elements.size(), begin + count);
    while (isInsideCharacter(begin))
    {
        --begin;
    }
    while (isInsideCharacter(end))
    {
        ++end;
    }
    return Range(begin, end);
}

/// Ranges of elements that lie apart, from the last to the first.
std::vector<Range> pickRanges(const FlatText& text, Random& random)
{
    std::vector<Range> ranges;
    std::size_t limit = text._elements.size();
    for (unsigned long count = 1 + random.pick(3); count > 0 && limit > 0; --count)
    {
        const Range range = makeRangeOfCharacters(text, random.pick(limit), 1 + random.pick(4));
        if (range.getEnd() > limit)
        {
            continue;
        }
        ranges.push_back(range);
        limit = range.getBegin();
    }
    return ranges;
}

/// Whole paragraphs and blocks, which no rule keeps from going.
std::vector<Range> pickWholeBlocks(const FlatText& text, Random& random)
{
    std::vector<Range> ranges;
    std::size_t end = text._elements.size();
    for (std::size_t index = text._elements.size(); index-- > 0;)
    {
        const ElementKind kind = text._elements[index]._kind;
        if (kind != ElementKind::ParagraphTag && kind != ElementKind::Block)
        {
            continue;
        }
        if (random.isOnceIn(4))
        {
            ranges.emplace_back(index, end);
        }
        end = index;
    }
    return ranges;
}

/// One nested marking for each stretch of neighbouring live slots.
void addMarkings(std::vector<ListModificationOperation<MarkAsRemovedTag>>& nested, const Address& address,
                 const FlatText& text, const Range& range)
{
    for (std::size_t end = range.getEnd(); end > range.getBegin();)
    {
        std::size_t begin = end - 1;
        while (begin > range.getBegin() && text._elements[begin - 1]._slot + 1 == text._elements[begin]._slot)
        {
            --begin;
        }
        nested.emplace_back(address, textType, Range::fromCount(text._elements[begin]._slot, end - begin));
        end = begin;
    }
}

void mark(Participant& author, Random& random, std::vector<Range> (*pick)(const FlatText&, Random&))
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    const FlatText text(*place->_text);
    std::vector<ListModificationOperation<MarkAsRemovedTag>> nested;
    for (const Range& range : pick(text, random))
    {
        addMarkings(nested, place->_address, text, range);
    }
    if (!nested.empty())
    {
        ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>> marking(std::move(nested));
        author.execute(marking);
    }
}

void markRanges(Participant& author, Random& random)
{
    mark(author, random, pickRanges);
}

void markBlocks(Participant& author, Random& random)
{
    mark(author, random, pickWholeBlocks);
}

} // namespace

Generators makeRangeOperations()
{
    return {{"mark-ranges", 5, isForAll, markRanges}, {"mark-blocks", 2, isForAll, markBlocks}};
}

} // namespace ZemFarm

#include "Sharing/CS_TypedApart.h"

#include "Editing/CS_Stretch.h"

#include <utility>

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationEngine::InsertTag;
using CollaborationEngine::ListModificationOperation;

namespace
{

/// How many elements come in in front of the element at `slot`, or directly behind those in front of it.
unsigned long countInFrontOf(unsigned long slot, const TextInsertion& insertion)
{
    unsigned long count = 0;
    for (const auto& nested : insertion.getNestedOperations())
    {
        count += nested.getRange().getBegin() <= slot ? nested.getRange().getCount() : 0;
    }
    return count;
}

/// The slot of the first element of a nested insertion behind all of them.
unsigned long getFirstSlotBehind(const TextInsertion& insertion, std::size_t index)
{
    const auto& nestedOperations = insertion.getNestedOperations();
    unsigned long slot = nestedOperations[index].getRange().getBegin();
    for (std::size_t lower = index + 1; lower < nestedOperations.size(); ++lower)
    {
        slot += nestedOperations[lower].getRange().getCount();
    }
    return slot;
}

unsigned long findGap(const Typing& typing, unsigned long gap, const CollaborationEngine::OperationNodeAddress& text,
                      const std::vector<Stretch>& othersTypedApart)
{
    for (const Stretch& stretch : othersTypedApart)
    {
        const auto other = findStretchInText(stretch);
        const bool isBetween =
            other && other->_text == text && *typing._anchor < other->_lastSlot && other->_lastSlot < gap;
        if (isBetween && other->_firstSlot < *typing._anchor)
        {
            gap = other->_lastSlot;
        }
    }
    return gap;
}

} // namespace

std::vector<Stretch> findTypedApart(const TextInsertion& happened, const std::vector<Typing>& typings)
{
    std::vector<Stretch> typedApart;
    const auto& nestedOperations = happened.getNestedOperations();
    if (nestedOperations.size() != typings.size())
    {
        return typedApart;
    }
    for (std::size_t index = 0; index < typings.size(); ++index)
    {
        const auto& anchor = typings[index]._anchor;
        if (anchor && *anchor + 1 < nestedOperations[index].getRange().getBegin())
        {
            typedApart.push_back(makeStretch(happened.getNodeAddress(), *anchor + countInFrontOf(*anchor, happened),
                                             getFirstSlotBehind(happened, index)));
        }
    }
    return typedApart;
}

std::optional<unsigned long> findAnchorApart(const TextInsertion& insertion, std::size_t index,
                                             const std::vector<Stretch>& typedApart)
{
    const unsigned long first = getFirstSlotBehind(insertion, index);
    for (const Stretch& stretch : typedApart)
    {
        const auto apart = findStretchInText(stretch);
        if (!apart || apart->_text != insertion.getNodeAddress() || apart->_lastSlot != first)
        {
            continue;
        }
        unsigned long anchor = apart->_firstSlot;
        const auto& nestedOperations = insertion.getNestedOperations();
        for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
        {
            const unsigned long count = nested->getRange().getCount();
            anchor -= nested->getRange().getBegin() + count <= anchor ? count : 0;
        }
        return anchor;
    }
    return std::nullopt;
}

std::unique_ptr<TextInsertion> moveInFrontOfOthers(const TextInsertion& insertion, const std::vector<Typing>& typings,
                                                   const std::vector<Stretch>& othersTypedApart)
{
    if (othersTypedApart.empty())
    {
        return nullptr;
    }
    std::vector<ListModificationOperation<InsertTag>> nestedOperations;
    bool isAnyMoved = false;
    for (std::size_t index = 0; index < typings.size(); ++index)
    {
        const auto& nested = insertion.getNestedOperations()[index];
        const unsigned long planned = nested.getRange().getBegin();
        const unsigned long gap = typings[index]._anchor
                                      ? findGap(typings[index], planned, insertion.getNodeAddress(), othersTypedApart)
                                      : planned;
        const bool descends = nestedOperations.empty() || gap < nestedOperations.back().getRange().getBegin();
        if (!descends)
        {
            return nullptr;
        }
        isAnyMoved |= gap != planned;
        nestedOperations.emplace_back(nested.getNodeAddress(), nested.getOperandType(), nested.getData(),
                                      IndexRange<unsigned long>::fromCount(gap, nested.getRange().getCount()));
    }
    if (!isAnyMoved)
    {
        return nullptr;
    }
    auto moved = std::make_unique<TextInsertion>(std::move(nestedOperations));
    moved->inheritIDIfPossibleImpl(insertion);
    return moved;
}

} // namespace Zem::CollaborationSession

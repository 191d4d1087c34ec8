#include "Sharing/CS_DeadElements.h"

#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// Where a slot stood in front of an insertion; nothing if that brought it.
boost::optional<unsigned long> moveBack(unsigned long slot, const TextInsertion& insertion)
{
    unsigned long insertedInFront = 0;
    const auto& nestedOperations = insertion.getNestedOperations();
    for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
    {
        const unsigned long begin = nested->getRange().getBegin() + insertedInFront;
        const unsigned long count = nested->getRange().getCount();
        if (slot < begin)
        {
            break;
        }
        if (slot < begin + count)
        {
            return boost::none;
        }
        insertedInFront += count;
    }
    return slot - insertedInFront;
}

boost::optional<DOMCollaboration::TextWithTombstonesElement> findElement(unsigned long slot, const TextMarking& marking)
{
    for (const auto& nested : marking.getNestedOperations())
    {
        const auto& range = nested.getRange();
        const auto* items =
            nested.getData() ? cast<DOMCollaboration::TextWithTombstonesItems>(nested.getData().get()) : nullptr;
        if (items && range.getBegin() <= slot && slot < range.getEnd() &&
            slot - range.getBegin() < items->getCollection().size())
        {
            return items->getCollection()[slot - range.getBegin()];
        }
    }
    return boost::none;
}

} // namespace

bool DeadElementSearch::pass(const Operation& operation)
{
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        const auto& parts = composite->getParts();
        for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        {
            if (!pass(**part))
            {
                return false;
            }
        }
        return true;
    }
    const auto* atomic = cast<AtomicOperation>(&operation);
    return !atomic || passAtomic(*atomic);
}

bool DeadElementSearch::passAtomic(const AtomicOperation& operation)
{
    const HierarchicalOperation* onNode = operation.getIfHierarchical();
    if (!onNode || !(onNode->getNodeAddress() == _text))
    {
        return true;
    }
    if (const auto* insertion = cast<TextInsertion>(&operation))
    {
        const auto before = moveBack(_slot, *insertion);
        _slot = before.value_or(_slot);
        _reference = _reference ? moveBack(*_reference, *insertion) : boost::none;
        return before.has_value();
    }
    if (const auto* marking = cast<TextMarking>(&operation))
    {
        if (auto element = findElement(_slot, *marking))
        {
            _element = DeadElement{*std::move(element), _reference.has_value()};
        }
        if (_reference && findElement(*_reference, *marking))
        {
            _reference = boost::none;
        }
    }
    return !_element;
}

} // namespace Zem::CollaborationSession

#include "Sharing/CS_ComposedTyping.h"

#include "Util_Cast.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesElementVector;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

/// The bytes that a range carries; null if there is anything else among them, or if they aren't known.
template<class Nested>
const TextWithTombstonesElementVector* findBytes(const Nested& nested)
{
    const auto* items = nested.getData() ? cast<TextWithTombstonesItems>(nested.getData().get()) : nullptr;
    if (!items || items->getCollection().size() != nested.getRange().getCount())
    {
        return nullptr;
    }
    const auto isByte = [](const TextWithTombstonesElement& element) { return boost::get<short>(&element) != nullptr; };
    const auto& elements = items->getCollection();
    return std::all_of(elements.begin(), elements.end(), isByte) ? &elements : nullptr;
}

template<class Ranges>
bool haveBytes(const Ranges* operation)
{
    return operation && std::all_of(operation->getNestedOperations().begin(), operation->getNestedOperations().end(),
                                    [](const auto& nested) { return findBytes(nested) != nullptr; });
}

template<class Nested>
const TextWithTombstonesElementVector& getBytes(const Nested& nested)
{
    return cast<TextWithTombstonesItems>(*nested.getData()).getCollection();
}

template<class Nested>
unsigned long getBegin(const Nested& nested)
{
    return nested.getRange().getBegin();
}

} // namespace

bool ComposedTyping::takeIn(const Operation& operation)
{
    if (!fits(operation, _node))
    {
        return false;
    }
    takeInFitting(operation);
    return true;
}

bool ComposedTyping::takeInAll(const Operation& operation)
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite)
    {
        return takeIn(operation);
    }
    const auto& parts = composite->getParts();
    std::optional<Node> node = _node;
    const bool isWhole =
        composite->getKind() == CompositeKind::Plain &&
        std::all_of(parts.begin(), parts.end(), [&](const OperationUPtr& part) { return fits(*part, node); });
    if (isWhole)
    {
        _node = std::move(node);
        for (const OperationUPtr& part : parts)
        {
            takeInFitting(*part);
        }
    }
    return isWhole;
}

/// Whether an operation brings or removes bytes alone, on `node`; if there is none yet, its own becomes that.
bool ComposedTyping::fits(const Operation& operation, std::optional<Node>& node)
{
    if (!haveBytes(cast<Insertion>(&operation)) && !haveBytes(cast<Marking>(&operation)))
    {
        return false;
    }
    const auto& onNode = cast<HierarchicalOperation>(operation);
    if (!node)
    {
        node = Node{onNode.getNodeAddress(), onNode.getOperandType()};
        return true;
    }
    return node->_type == onNode.getOperandType() && node->_address == onNode.getNodeAddress();
}

void ComposedTyping::takeInFitting(const Operation& operation)
{
    std::optional<First>* first = &_firstMarking;
    if (const auto* insertion = cast<Insertion>(&operation))
    {
        makeRoomInMarked(insertion->getNestedOperations());
        takeInInsertions(insertion->getNestedOperations());
        first = &_firstInsertion;
    }
    else
    {
        // From the highest to the lowest, as they are executed.
        for (const Mark& marking : cast<Marking>(operation).getNestedOperations())
        {
            takeInMarking(marking);
        }
    }
    if (!*first)
    {
        *first = First{operation.getID()};
    }
}

void ComposedTyping::takeInInsertions(const std::vector<Insert>& insertions)
{
    if (insertions.size() == 1)
    {
        takeInInsertion(insertions.front());
        return;
    }
    // Both are gone through once, from the lowest to the highest.
    std::vector<Range> merged;
    merged.reserve(_inserted.size() + insertions.size());
    unsigned long insertedInFront = 0;
    auto insertion = insertions.rbegin();
    const auto takeNewOnesBefore = [&](unsigned long end)
    {
        for (; insertion != insertions.rend() && getBegin(*insertion) < end; ++insertion)
        {
            const unsigned long begin = getBegin(*insertion) - insertedInFront;
            if (merged.empty() || merged.back()._begin != begin)
            {
                merged.push_back({begin, {}});
            }
            append(getBytes(*insertion), 0, getBytes(*insertion).size(), merged.back()._bytes);
        }
    };
    for (Range& range : _inserted)
    {
        const unsigned long begin = range._begin + insertedInFront;
        takeNewOnesBefore(begin);
        insertedInFront += range._bytes.size();
        merged.push_back({range._begin, {}});
        std::size_t taken = 0;
        for (; insertion != insertions.rend() && getBegin(*insertion) <= begin + range._bytes.size(); ++insertion)
        {
            append(range._bytes, taken, getBegin(*insertion) - begin, merged.back()._bytes);
            append(getBytes(*insertion), 0, getBytes(*insertion).size(), merged.back()._bytes);
            taken = getBegin(*insertion) - begin;
        }
        append(range._bytes, taken, range._bytes.size(), merged.back()._bytes);
    }
    takeNewOnesBefore(~0ul);
    _inserted = std::move(merged);
}

void ComposedTyping::append(const Bytes& bytes, std::size_t begin, std::size_t end, Bytes& target)
{
    target.insert(target.end(), bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                  bytes.begin() + static_cast<std::ptrdiff_t>(end));
}

void ComposedTyping::takeInInsertion(const Insert& insertion)
{
    const unsigned long gap = getBegin(insertion);
    const Bytes& bytes = getBytes(insertion);
    unsigned long insertedInFront = 0;
    auto range = _inserted.begin();
    for (; range != _inserted.end(); ++range)
    {
        const unsigned long begin = range->_begin + insertedInFront;
        if (gap < begin)
        {
            break;
        }
        if (gap <= begin + range->_bytes.size())
        {
            range->_bytes.insert(range->_bytes.begin() + static_cast<std::ptrdiff_t>(gap - begin), bytes.begin(),
                                 bytes.end());
            return;
        }
        insertedInFront += range->_bytes.size();
    }
    _inserted.insert(range, Range{gap - insertedInFront, bytes});
}

/// What is marked behind a gap moves, and a range around it is parted.
void ComposedTyping::makeRoomInMarked(const std::vector<Insert>& insertions)
{
    const unsigned long lowest = getBegin(insertions.back());
    auto tail = _marked.lower_bound(lowest);
    if (tail != _marked.begin() && std::prev(tail)->first + std::prev(tail)->second.size() > lowest)
    {
        --tail;
    }
    Marked moved;
    moved.insert(std::make_move_iterator(tail), std::make_move_iterator(_marked.end()));
    _marked.erase(tail, _marked.end());
    unsigned long insertedInFront = 0;
    auto insertion = insertions.rbegin();
    for (auto& [first, bytes] : moved)
    {
        std::size_t taken = 0;
        for (; insertion != insertions.rend() && getBegin(*insertion) < first + bytes.size(); ++insertion)
        {
            const std::size_t parted = getBegin(*insertion) - std::min(getBegin(*insertion), first);
            if (parted > taken)
            {
                append(bytes, taken, parted, _marked[first + taken + insertedInFront]);
                taken = parted;
            }
            insertedInFront += getBytes(*insertion).size();
        }
        const unsigned long begin = first + taken + insertedInFront;
        if (taken > 0)
        {
            bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
        }
        _marked.emplace_hint(_marked.end(), begin, std::move(bytes));
    }
}

void ComposedTyping::takeInMarking(const Mark& marking)
{
    const unsigned long begin = getBegin(marking);
    const Bytes& bytes = getBytes(marking);
    const auto next = _marked.lower_bound(begin);
    if (next != _marked.begin() && std::prev(next)->first + std::prev(next)->second.size() == begin)
    {
        append(bytes, 0, bytes.size(), std::prev(next)->second);
        return;
    }
    _marked.emplace_hint(next, begin, bytes);
}

template<class Nested>
OperationUPtr ComposedTyping::makeOperation(std::vector<Nested> ranges, const First& first)
{
    std::reverse(ranges.begin(), ranges.end());
    auto operation = std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(ranges));
    if (first._id)
    {
        Operation::Id id = *first._id;
        operation->setIDIfNeeded(id);
    }
    return operation;
}

template<class Nested>
Nested ComposedTyping::makeRange(unsigned long begin, const Bytes& bytes) const
{
    return Nested(_node->_address, _node->_type, makeSharedConst<TextWithTombstonesItems>(bytes),
                  IndexRange<unsigned long>::fromCount(begin, bytes.size()));
}

std::vector<OperationUPtr> ComposedTyping::makeOperations() const
{
    std::vector<OperationUPtr> operations;
    if (_firstInsertion)
    {
        std::vector<Insert> ranges;
        ranges.reserve(_inserted.size());
        for (const Range& range : _inserted)
        {
            ranges.push_back(makeRange<Insert>(range._begin, range._bytes));
        }
        operations.push_back(makeOperation(std::move(ranges), *_firstInsertion));
    }
    if (_firstMarking)
    {
        std::vector<Mark> ranges;
        ranges.reserve(_marked.size());
        for (const auto& [begin, bytes] : _marked)
        {
            ranges.push_back(makeRange<Mark>(begin, bytes));
        }
        operations.push_back(makeOperation(std::move(ranges), *_firstMarking));
    }
    return operations;
}

} // namespace Zem::CollaborationSession

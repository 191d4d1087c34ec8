#include "Sharing/CS_ComposedTyping.h"

#include "Util_Cast.h"

#include <algorithm>
#include <iterator>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

/// The bytes that a range carries; null if there is anything else among them, or if they aren't known.
template<class Nested>
const DOMCollaboration::TextWithTombstonesElementVector* findBytes(const Nested& nested)
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

template<class Nested, class Ranges>
OperationUPtr makeOperation(const HierarchicalOperation& model, const Operation* first, const Ranges& ranges)
{
    std::vector<Nested> nestedOperations;
    nestedOperations.reserve(ranges.size());
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
    {
        nestedOperations.emplace_back(model.getNodeAddress(), model.getOperandType(),
                                      makeSharedConst<TextWithTombstonesItems>(range->_bytes),
                                      IndexRange<unsigned long>::fromCount(range->_begin, range->_bytes.size()));
    }
    auto operation = std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(nestedOperations));
    operation->inheritIDIfPossibleImpl(*first);
    return operation;
}

} // namespace

bool ComposedTyping::takeIn(const Operation& operation)
{
    if (const auto* insertion = cast<ListMultirangeOperationImpl<Insert>>(&operation))
    {
        return takeInRanges(*insertion);
    }
    const auto* marking = cast<ListMultirangeOperationImpl<Mark>>(&operation);
    return marking && takeInRanges(*marking);
}

bool ComposedTyping::takeInAll(const Operation& operation)
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite)
    {
        return takeIn(operation);
    }
    // Where not all of it fits, what was taken in is dropped with the copy.
    ComposedTyping all = *this;
    const auto& parts = composite->getParts();
    const bool isWhole =
        composite->getKind() == CompositeKind::Plain &&
        std::all_of(parts.begin(), parts.end(), [&](const OperationUPtr& part) { return all.takeIn(*part); });
    if (isWhole)
    {
        *this = std::move(all);
    }
    return isWhole;
}

template<class Nested>
bool ComposedTyping::takeInRanges(const ListMultirangeOperationImpl<Nested>& operation)
{
    if (_model && !(_model->getOperandType() == operation.getOperandType() &&
                    _model->getNodeAddress() == operation.getNodeAddress()))
    {
        return false;
    }
    const auto& nestedOperations = operation.getNestedOperations();
    if (!std::all_of(nestedOperations.begin(), nestedOperations.end(), &findBytes<Nested>))
    {
        return false;
    }
    if (!_model)
    {
        _model = std::make_shared<ListMultirangeOperationImpl<Nested>>(operation);
    }
    // From the highest to the lowest, none of the ranges that follow moves.
    for (const Nested& nested : nestedOperations)
    {
        takeIn(nested);
    }
    auto& first = std::is_same_v<Nested, Insert> ? _firstInsertion : _firstMarking;
    if (!first)
    {
        first = cloneOperation(operation);
    }
    return true;
}

void ComposedTyping::takeIn(const Insert& insertion)
{
    const unsigned long gap = insertion.getRange().getBegin();
    const Bytes& bytes = *findBytes(insertion);
    makeRoomInMarked(gap, bytes.size());
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
void ComposedTyping::makeRoomInMarked(unsigned long gap, unsigned long count)
{
    for (auto range = _marked.end(); range != _marked.begin();)
    {
        --range;
        if (range->_begin >= gap)
        {
            range->_begin += count;
            continue;
        }
        if (range->_begin + range->_bytes.size() > gap)
        {
            const auto split = range->_bytes.begin() + static_cast<std::ptrdiff_t>(gap - range->_begin);
            Range behind{gap + count, Bytes(split, range->_bytes.end())};
            range->_bytes.erase(split, range->_bytes.end());
            _marked.insert(range + 1, std::move(behind));
        }
        return;
    }
}

void ComposedTyping::takeIn(const Mark& marking)
{
    const unsigned long begin = marking.getRange().getBegin();
    const Bytes& bytes = *findBytes(marking);
    const auto next = std::lower_bound(_marked.begin(), _marked.end(), begin,
                                       [](const Range& range, unsigned long slot) { return range._begin < slot; });
    if (next != _marked.begin() && (next - 1)->_begin + (next - 1)->_bytes.size() == begin)
    {
        Bytes& previous = (next - 1)->_bytes;
        previous.insert(previous.end(), bytes.begin(), bytes.end());
        return;
    }
    _marked.insert(next, Range{begin, bytes});
}

std::vector<OperationUPtr> ComposedTyping::makeOperations() const
{
    std::vector<OperationUPtr> operations;
    if (_firstInsertion)
    {
        operations.push_back(makeOperation<Insert>(*_model, _firstInsertion.get(), _inserted));
    }
    if (_firstMarking)
    {
        operations.push_back(makeOperation<Mark>(*_model, _firstMarking.get(), _marked));
    }
    return operations;
}

} // namespace Zem::CollaborationSession

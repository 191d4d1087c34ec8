#include "CE_UndoOfParts.h"

#include "CE_InverseOperation.h"
#include "CE_ListSlots.h"
#include "CE_OperationKinds.h"
#include "CE_TableSlots.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <boost/container/small_vector.hpp>
#include <boost/functional/hash.hpp>

#include <algorithm>
#include <deque>

namespace Zem::CollaborationEngine
{

namespace
{

using MultirangeInsertion = ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;

bool insertsSlots(const HierarchicalOperation& operation)
{
    switch (operation.getFamily())
    {
    case HierarchicalOperation::Family::List:
        return cast<ListModificationOperation<InsertTag>>(&operation) != nullptr;
    case HierarchicalOperation::Family::ListMultirange:
        return cast<MultirangeInsertion>(&operation) != nullptr;
    case HierarchicalOperation::Family::Table:
        return visitWith<bool>(castToFamily<TableOperation>(operation),
                               [](const auto& typed) {
                                   return getTableAction(typed.getNestedOperation(), nullptr) == TableAction::Insertion;
                               });
    case HierarchicalOperation::Family::Map:
    case HierarchicalOperation::Family::SetProperty:
        return false;
    }
    return false;
}

void addGap(SlotPieces& gaps, unsigned long gap, unsigned long count)
{
    if (!gaps.empty() && gaps.back()._begin == gap)
    {
        gaps.back()._count += count;
        return;
    }
    SlotPiece piece;
    piece._begin = gap;
    piece._count = count;
    gaps.push_back(piece);
}

/// The gaps of two insertions of which `second` runs behind `first`, in the coordinates in front of both. What is
/// inserted isn't kept.
SlotPieces joinGaps(const SlotPieces& first, const SlotPieces& second)
{
    SlotPieces joined;
    auto inserted = first.begin();
    unsigned long insertedInFront = 0;
    for (const SlotPiece& piece : second)
    {
        for (; inserted != first.end() && inserted->getEnd() + insertedInFront < piece._begin; ++inserted)
        {
            addGap(joined, inserted->_begin, inserted->_count);
            insertedInFront += inserted->_count;
        }
        const bool isAmongInserted = inserted != first.end() && inserted->_begin + insertedInFront <= piece._begin;
        addGap(joined, isAmongInserted ? inserted->_begin : piece._begin - insertedInFront, piece._count);
    }
    for (; inserted != first.end(); ++inserted)
    {
        addGap(joined, inserted->_begin, inserted->_count);
    }
    return joined;
}

/// One insertion that moves slots as `first` and then `second` do; null if these aren't insertions into one text, or if
/// `first` is smaller by far: so each slot takes part in few joins.
OperationUPtr joinInsertions(const Operation& first, const Operation& second)
{
    const auto* firstInsertion = cast<MultirangeInsertion>(&first);
    const auto* secondInsertion = cast<MultirangeInsertion>(&second);
    if (!firstInsertion || !secondInsertion || firstInsertion->getOperandType() != secondInsertion->getOperandType() ||
        !(firstInsertion->getNodeAddress() == secondInsertion->getNodeAddress()) ||
        firstInsertion->getNestedOperations().size() * 2 < secondInsertion->getNestedOperations().size())
    {
        return nullptr;
    }
    const ListMultirangeOperation& model = *firstInsertion;
    SlotOperations joined;
    joined.push_back({SlotAction::Insertion, joinGaps(describeSlots(model, nullptr)._pieces,
                                                      describeSlots(*secondInsertion, nullptr)._pieces)});
    return makeOperationsOnSlots(model, joined);
}

using PrefixHashes = boost::container::small_vector<std::size_t, 8>;

std::size_t hashChunk(const OperationNodeAddress::Chunk& chunk)
{
    struct Hasher : boost::static_visitor<std::size_t>
    {
        std::size_t operator()(const NodeAddressing::AddressInList& element) const
        {
            return element.getIndex();
        }

        std::size_t operator()(const NodeAddressing::AddressInTable& cell) const
        {
            return deepHash(cell.getRow()) * 31 + deepHash(cell.getColumn());
        }

        std::size_t operator()(const NodeAddressing::AddressInMap& value) const
        {
            return value.getKey() ? value.getKey()->getHash() : 0;
        }

        std::size_t operator()(const OperationNodeAddress::FixedChunk& child) const
        {
            return child.getNodeType();
        }
    };
    return boost::apply_visitor(Hasher(), chunk);
}

/// Of the address of an operation, a hash for each of its beginnings, the empty one first; empty for a composite one.
PrefixHashes hashPrefixes(const Operation& operation)
{
    PrefixHashes hashes;
    if (getIf<CompositeOperation>(operation) || getIf<EmptyOperation>(operation))
    {
        return hashes;
    }
    hashes.push_back(0);
    for (const OperationNodeAddress::Chunk& chunk : makeNodeOperand(operation)._operation.getNodeAddress().getItems())
    {
        std::size_t hash = hashes.back();
        boost::hash_combine(hash, hashChunk(chunk));
        hashes.push_back(hash);
    }
    return hashes;
}

enum class Lines : unsigned char
{
    None,
    Rows,
    Columns
};

/// What an operation on a table is aimed at.
Lines getLines(const Operation& operation)
{
    if (getIf<CompositeOperation>(operation) || getIf<EmptyOperation>(operation))
    {
        return Lines::None;
    }
    const HierarchicalOperation& onNode = makeNodeOperand(operation)._operation;
    if (cast<TableRowOperation>(&onNode))
    {
        return Lines::Rows;
    }
    return cast<TableColumnOperation>(&onNode) ? Lines::Columns : Lines::None;
}

/// An operation with what tells quickly that it doesn't touch another one.
struct HashedOperation
{
    explicit HashedOperation(OperationUPtr operation)
        : _operation(std::move(operation))
        , _prefixHashes(hashPrefixes(*_operation))
        , _lines(getLines(*_operation))
    {
    }

    bool crossesLines(const HashedOperation& other) const
    {
        return _lines != Lines::None && other._lines != Lines::None && _lines != other._lines;
    }

    bool touches(const HashedOperation& lower) const
    {
        const bool isEitherComposite = _prefixHashes.empty() || lower._prefixHashes.empty();
        const bool mayTouch =
            isEitherComposite || (_prefixHashes.size() <= lower._prefixHashes.size() &&
                                  lower._prefixHashes[_prefixHashes.size() - 1] == _prefixHashes.back());
        return mayTouch && CollaborationEngine::touches(*_operation, *lower._operation);
    }

    OperationUPtr _operation;
    PrefixHashes _prefixHashes;
    Lines _lines;
};

/// What is left when a part and all behind it have been undone, seen from the state in front of that part: dead slots,
/// rows and columns that were inserted. All else cancels out, so that what undoes the part before has to be transformed
/// against these alone.
class SlotsLeftBehind
{
public:
    explicit SlotsLeftBehind(const BaseOperationTransformer& transformer)
        : _transformer(transformer)
    {
    }

    /// Whether all is known. Slots that are left in what one part deleted and a later one restored are in what the undo
    /// of the latter takes out, but not in what the deletion took out, and its undo puts back.
    bool isKnown() const
    {
        return _isKnown;
    }

    /// Transforms what undoes a part, as it is to run right behind that, against what is left of those behind it.
    OperationUPtr transform(OperationUPtr undoing) const
    {
        HashedOperation result(std::move(undoing));
        const auto include = [&](const HashedOperation& left)
        {
            result = HashedOperation(
                _transformer.include(*result._operation, *left._operation, TieResolveCondition::SecondWins));
        };
        for (const HashedOperation& insertion : _insertions)
        {
            if (insertion.touches(result))
            {
                include(insertion);
            }
        }
        for (const HashedOperation& marking : _markedLines)
        {
            if (marking.crossesLines(result) && marking.touches(result))
            {
                include(marking);
            }
        }
        return std::move(result._operation);
    }

    /// Goes from the state behind `part` to the one in front of it; `undoing` undoes it, transformed.
    void goBack(const Operation& part, const Operation& undoing)
    {
        const HierarchicalOperation& operation = makeNodeOperand(part)._operation;
        if (!insertsSlots(operation))
        {
            if (!_insertions.empty())
            {
                transformAgainst(makeReversal(part));
            }
            return;
        }
        _insertions.emplace_front(cloneOperation(part));
        joinFirst();
        if (operation.getFamily() == HierarchicalOperation::Family::Table)
        {
            _markedLines.emplace_back(cloneOperation(undoing));
        }
    }

private:
    /// Joins the first insertion with the next ones into the same text, from which nothing parts it.
    void joinFirst()
    {
        std::size_t first = 0;
        for (std::size_t next = 1; next < _insertions.size(); ++next)
        {
            if (!_insertions[first].touches(_insertions[next]) && !_insertions[next].touches(_insertions[first]))
            {
                continue;
            }
            OperationUPtr joined = joinInsertions(*_insertions[first]._operation, *_insertions[next]._operation);
            if (!joined)
            {
                return;
            }
            _insertions[next] = HashedOperation(std::move(joined));
            _insertions.erase(_insertions.begin() + static_cast<std::ptrdiff_t>(first));
            first = --next;
        }
    }

    void transformAgainst(OperationUPtr reversal)
    {
        HashedOperation reversed(std::move(reversal));
        const auto cross = [&](HashedOperation& left)
        {
            OperationUPtr moved;
            if (reversed.touches(left))
            {
                moved = _transformer.include(*left._operation, *reversed._operation, TieResolveCondition::SecondWins);
            }
            if (left.touches(reversed))
            {
                reversed = HashedOperation(
                    _transformer.include(*reversed._operation, *left._operation, TieResolveCondition::FirstWins));
            }
            if (moved)
            {
                _isKnown &= !hasShadowEnded(*moved, countDeadPlaces(*left._operation));
                left = HashedOperation(std::move(moved));
            }
        };
        std::for_each(_insertions.begin(), _insertions.end(), cross);
        std::for_each(_markedLines.begin(), _markedLines.end(), cross);
    }

    const BaseOperationTransformer& _transformer;
    bool _isKnown = true;
    /// In the order in which they run, each in the coordinates that those before it leave.
    std::deque<HashedOperation> _insertions;
    /// What undoes the insertions of rows and columns among these. It runs behind all of them, and is there for the
    /// columns and rows that travel, which say which of their cells are in dead lines.
    std::vector<HashedOperation> _markedLines;
};

/// Operations that aren't composite, whatever the nesting. Units are taken apart, too.
void collectSingles(const OperationParts& parts, std::vector<const Operation*>& singles)
{
    for (const OperationUPtr& part : parts)
    {
        if (const auto* composite = getIf<CompositeOperation>(*part))
        {
            collectSingles(composite->getParts(), singles);
        }
        else if (!getIf<EmptyOperation>(*part))
        {
            singles.push_back(part.get());
        }
    }
}

OperationUPtr includeIfTouched(const BaseOperationTransformer& transformer, OperationUPtr first,
                               const Operation& second)
{
    return touches(*first, second) || touches(second, *first)
               ? transformer.include(*first, second, TieResolveCondition::SecondWins)
               : std::move(first);
}

/// What undoes a part is transformed against all behind it, and against what undid these. A restoring brings along what
/// is shadowed among both.
OperationParts undoPairwise(const OperationParts& parts, const BaseOperationTransformer& transformer)
{
    OperationParts undoings;
    undoings.reserve(parts.size());
    for (std::size_t index = parts.size(); index > 0; --index)
    {
        OperationUPtr undoing = makeUndo(*parts[index - 1], transformer);
        for (std::size_t later = index; later < parts.size(); ++later)
        {
            undoing = includeIfTouched(transformer, std::move(undoing), *parts[later]);
        }
        for (const OperationUPtr& undoingOfLater : undoings)
        {
            undoing = includeIfTouched(transformer, std::move(undoing), *undoingOfLater);
        }
        undoings.push_back(std::move(undoing));
    }
    return undoings;
}

} // namespace

OperationParts undoParts(const OperationParts& parts, const BaseOperationTransformer& transformer)
{
    std::vector<const Operation*> singles;
    collectSingles(parts, singles);
    if (std::any_of(singles.begin(), singles.end(),
                    [](const Operation* single) { return getIf<ShadowedOperation>(*single) != nullptr; }))
    {
        return undoPairwise(parts, transformer);
    }
    OperationParts undoings;
    undoings.reserve(singles.size());
    SlotsLeftBehind leftBehind(transformer);
    for (auto single = singles.rbegin(); single != singles.rend(); ++single)
    {
        undoings.push_back(leftBehind.transform(makeUndo(**single, transformer)));
        leftBehind.goBack(**single, *undoings.back());
    }
    return leftBehind.isKnown() ? std::move(undoings) : undoPairwise(parts, transformer);
}

} // namespace Zem::CollaborationEngine

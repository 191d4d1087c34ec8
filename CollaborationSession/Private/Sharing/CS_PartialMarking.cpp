#include "Sharing/CS_PartialMarking.h"

#include "Sharing/CS_CopyRange.h"

#include "CE_ListMultirangeOperation.h"

#include "Util_Cast.h"

#include <algorithm>
#include <map>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// What happens to a slot: the class of the operation, and whether it is held back.
struct SlotChange
{
    const std::type_info* _class;
    bool _isShadowed;

    friend bool operator==(const SlotChange& first, const SlotChange& second)
    {
        return *first._class == *second._class && first._isShadowed == second._isShadowed;
    }
};

using SlotChanges = std::map<unsigned long, SlotChange>;

/// Whether `operation` is a list operation that leaves all slots where they are.
bool keepsSlots(const ListMultirangeOperation& operation)
{
    return visitWith<bool>(operation,
                           [](const auto& typed)
                           {
                               using Nested = typename std::decay_t<decltype(typed)>::NestedOperation;
                               return !std::is_same_v<Nested, ListModificationOperation<InsertTag>> &&
                                      !std::is_same_v<Nested, ListModificationOperation<RemoveTag>>;
                           });
}

/// What operations do to the slots of one text.
class SlotChangesReader
{
public:
    explicit SlotChangesReader(const HierarchicalOperation& node)
        : _node(node)
    {
    }

    /// Whether `operation` does nothing but change slots of the text, each once.
    bool read(const Operation& operation)
    {
        return visitWith<bool>(
            operation, [&](const AtomicOperation& atomic) { return readSingle(atomic, false); },
            [&](const CompositeOperation& composite)
            {
                bool isRead = true;
                for (const OperationUPtr& part : composite.getParts())
                {
                    isRead = isRead && read(*part);
                }
                return isRead;
            },
            [](const EmptyOperation&) { return true; },
            [&](const ShadowedOperation& shadowed) { return readSingle(shadowed.getOriginal(), true); });
    }

    const SlotChanges& getChanges() const
    {
        return _changes;
    }

private:
    bool readSingle(const AtomicOperation& atomic, bool isShadowed)
    {
        const auto* onText = cast<ListMultirangeOperation>(&atomic);
        if (!onText || !keepsSlots(*onText) || onText->getOperandType() != _node.getOperandType() ||
            !(onText->getNodeAddress() == _node.getNodeAddress()))
        {
            return false;
        }
        bool isEachChangedOnce = true;
        visitWith<void>(
            *onText,
            [&](const auto& typed)
            {
                for (const auto& nested : typed.getNestedOperations())
                {
                    const auto& range = nested.getRange();
                    for (unsigned long slot = range.getBegin(); slot < range.getEnd(); ++slot)
                    {
                        isEachChangedOnce &= _changes.emplace(slot, SlotChange{&typeid(typed), isShadowed}).second;
                    }
                }
            });
        return isEachChangedOnce;
    }

    const HierarchicalOperation& _node;
    SlotChanges _changes;
};

/// For each slot of `planned`, in their order, whether its change happened. Empty if something else happened, too.
std::vector<bool> matchChanges(const SlotChanges& planned, const SlotChanges& happened)
{
    std::vector<bool> outcome;
    std::size_t matchesCount = 0;
    for (const auto& [slot, change] : planned)
    {
        const auto found = happened.find(slot);
        outcome.push_back(found != happened.end() && found->second == change);
        matchesCount += outcome.back() ? 1 : 0;
    }
    return matchesCount == happened.size() ? outcome : std::vector<bool>();
}

/// The part of `operation` on the slots for which `outcome`, in the order of the slots, is `isWanted`.
template<class Nested>
OperationUPtr copyPart(const ListMultirangeOperationImpl<Nested>& operation, const std::vector<bool>& outcome,
                       bool isWanted)
{
    std::vector<Nested> part;
    std::size_t end = outcome.size();
    for (const Nested& nested : operation.getNestedOperations())
    {
        const unsigned long count = nested.getRange().getCount();
        const std::size_t begin = end - count;
        for (std::size_t runEnd = end; runEnd > begin;)
        {
            std::size_t runBegin = runEnd;
            while (runBegin > begin && outcome[runBegin - 1] == isWanted)
            {
                --runBegin;
            }
            if (runBegin < runEnd)
            {
                part.push_back(copyRange(
                    nested, {nested.getRange().getBegin() + runBegin - begin, runBegin - begin, runEnd - runBegin}));
            }
            runEnd = runBegin > begin ? runBegin - 1 : begin;
        }
        end = begin;
    }
    auto copied = std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(part));
    copied->inheritIDIfPossibleImpl(operation);
    return copied;
}

template<class Nested>
std::size_t countSlots(const ListMultirangeOperationImpl<Nested>& operation)
{
    std::size_t count = 0;
    for (const Nested& nested : operation.getNestedOperations())
    {
        count += nested.getRange().getCount();
    }
    return count;
}

bool isMixed(const std::vector<bool>& outcome)
{
    return std::find(outcome.begin(), outcome.end(), true) != outcome.end() &&
           std::find(outcome.begin(), outcome.end(), false) != outcome.end();
}

const HierarchicalOperation* findNode(const Operation& planned)
{
    return visitWith<const HierarchicalOperation*>(
        planned, [](const AtomicOperation& atomic) { return atomic.getIfHierarchical(); },
        [](const CompositeOperation& composite) { return findNode(*composite.getParts().front()); },
        [](const EmptyOperation&) -> const HierarchicalOperation* { return nullptr; },
        [](const ShadowedOperation& shadowed) { return shadowed.getOriginal().getIfHierarchical(); });
}

} // namespace

boost::optional<PartialMarking> takeApart(const Operation& original, const Operation& planned,
                                          const Operation& happened)
{
    const auto* onText = cast<ListMultirangeOperation>(&original);
    const HierarchicalOperation* node = findNode(planned);
    if (!onText || !node || !keepsSlots(*onText))
    {
        return boost::none;
    }
    SlotChangesReader plannedChanges(*node);
    SlotChangesReader happenedChanges(*node);
    if (!plannedChanges.read(planned) || !happenedChanges.read(happened))
    {
        return boost::none;
    }
    const std::vector<bool> outcome = matchChanges(plannedChanges.getChanges(), happenedChanges.getChanges());
    return visitWith<boost::optional<PartialMarking>>(
        *onText,
        [&](const auto& typed) -> boost::optional<PartialMarking>
        {
            // Past others an operation keeps its slots, and their order, unless some are gone for good.
            if (!isMixed(outcome) || countSlots(typed) != outcome.size())
            {
                return boost::none;
            }
            return PartialMarking{copyPart(typed, outcome, true), copyPart(typed, outcome, false)};
        });
}

} // namespace Zem::CollaborationSession

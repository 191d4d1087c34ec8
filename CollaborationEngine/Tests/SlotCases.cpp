#include "SlotCases.h"

#include <functional>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Predicate = std::function<bool(unsigned long)>;

/// The stretches of the slots that a bit set names; a stretch ends where the number of holders changes, too.
std::vector<Stretch> makeStretches(const std::vector<Slot>& slots, unsigned long chosen, bool splitsByHolders)
{
    std::vector<Stretch> stretches;
    for (unsigned long index = 0; index < slots.size(); ++index)
    {
        if ((chosen >> index & 1) == 0)
        {
            continue;
        }
        const Slot& slot = slots[index];
        const bool continues = !stretches.empty() && stretches.back()._begin + stretches.back()._count == index &&
                               (!splitsByHolders || stretches.back()._holdersCount == slot._holdersCount);
        if (!continues)
        {
            stretches.push_back(Stretch{index, 0, "", slot._holdersCount});
        }
        ++stretches.back()._count;
        stretches.back()._items += slot._identity;
    }
    return stretches;
}

using Consume = std::function<void(const std::vector<Stretch>&)>;

/// Calls `consume` for all sets of slots that a predicate allows; for those of one stretch, with a single-range family.
void forEachSet(const SlotModel& state, Family family, bool splitsByHolders, const Predicate& isAllowed,
                const Consume& consume)
{
    const std::vector<Slot>& slots = state.getSlots();
    for (unsigned long chosen = 1; chosen < 1ul << slots.size(); ++chosen)
    {
        bool areAllowed = true;
        for (unsigned long index = 0; index < slots.size(); ++index)
        {
            areAllowed = areAllowed && ((chosen >> index & 1) == 0 || isAllowed(slots[index]._holdersCount));
        }
        if (!areAllowed)
        {
            continue;
        }
        const std::vector<Stretch> stretches = makeStretches(slots, chosen, splitsByHolders);
        if (family == Family::Multirange || stretches.size() == 1)
        {
            consume(stretches);
        }
    }
}

void addInsertions(std::vector<OperationUPtr>& operations, unsigned long size, Family family, char firstItem)
{
    const std::string one(1, firstItem);
    const std::string two{firstItem, static_cast<char>(firstItem + 1)};
    const std::string third(1, static_cast<char>(firstItem + 2));
    for (unsigned long gap = 0; gap <= size; ++gap)
    {
        operations.push_back(makeListOperation<Insert>(family, {Stretch{gap, 1, one}}));
        operations.push_back(makeListOperation<Insert>(family, {Stretch{gap, 2, two}}));
        for (unsigned long upper = gap; family == Family::Multirange && upper <= size; ++upper)
        {
            operations.push_back(makeListOperation<Insert>(family, {Stretch{gap, 2, two}, Stretch{upper, 1, third}}));
        }
    }
}

} // namespace

std::vector<SlotModel> makeStates(unsigned long size, unsigned long maximumHolders)
{
    std::vector<std::vector<Slot>> states{{}};
    for (unsigned long index = 0; index < size; ++index)
    {
        std::vector<std::vector<Slot>> longer;
        for (const std::vector<Slot>& state : states)
        {
            for (unsigned long holdersCount = 0; holdersCount <= maximumHolders; ++holdersCount)
            {
                longer.push_back(state);
                longer.back().push_back(Slot{static_cast<char>('a' + index), holdersCount});
            }
        }
        states = std::move(longer);
    }
    return std::vector<SlotModel>(states.begin(), states.end());
}

std::vector<OperationUPtr> makeOperations(const SlotModel& state, Family family, char firstItem, OperationKinds kinds)
{
    std::vector<OperationUPtr> operations;
    const unsigned long size = state.getSlots().size();
    addInsertions(operations, size, family, firstItem);
    const auto addSets = [&](bool splitsByHolders, const Predicate& isAllowed, const auto& make)
    {
        forEachSet(state, family, splitsByHolders, isAllowed,
                   [&](const std::vector<Stretch>& stretches) { operations.push_back(make(stretches)); });
    };
    if (kinds._hasRemovals)
    {
        addSets(
            false, [](unsigned long) { return true; },
            [&](const std::vector<Stretch>& stretches) { return makeListOperation<Remove>(family, stretches); });
    }
    addSets(
        false, [](unsigned long holdersCount) { return holdersCount == 0; },
        [&](const std::vector<Stretch>& stretches) { return makeListOperation<MarkAsRemoved>(family, stretches); });
    addSets(
        false, [](unsigned long holdersCount) { return holdersCount > 0; },
        [&](const std::vector<Stretch>& stretches) { return makeListOperation<Restore>(family, stretches); });
    addSets(
        true, [](unsigned long holdersCount) { return holdersCount > 0; },
        [&](const std::vector<Stretch>& stretches) { return makeListOperation<Leave>(family, stretches); });
    for (unsigned long holders = 2; holders < 4; ++holders)
    {
        addSets(
            true, [&](unsigned long holdersCount) { return holdersCount == holders; },
            [&](std::vector<Stretch> stretches)
            {
                for (Stretch& stretch : stretches)
                {
                    --stretch._holdersCount;
                }
                return makeReleasing(family, stretches);
            });
    }
    for (unsigned long slot = 0; kinds._hasMoves && family == Family::SingleRange && slot < size; ++slot)
    {
        for (unsigned long target = 0; target < size; ++target)
        {
            operations.push_back(makeMove(slot, target));
        }
    }
    return operations;
}

} // namespace Zem::CollaborationEngine::Testing

#include "SlotModel.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

void require(bool condition, const char* message)
{
    if (!condition)
    {
        throw IllegalOperation(message);
    }
}

template<class T>
T makeSingle(Family family, const Stretch& stretch)
{
    const unsigned long nodeType = family == Family::SingleRange ? listType : textType;
    const Range range = Range::fromCount(stretch._begin, stretch._count);
    if constexpr (std::is_same_v<T, Leave>)
    {
        return Leave(makeListAddress(family), nodeType, makeItems(stretch._items), range, stretch._holdersCount);
    }
    else
    {
        return T(makeListAddress(family), nodeType, makeItems(stretch._items), range);
    }
}

} // namespace

SharedConstPtr<ItemsCollection> makeItems(const std::string& items)
{
    if (items.empty())
    {
        return nullptr;
    }
    return makeSharedConst<Items>(std::vector<char>(items.begin(), items.end()));
}

OperationNodeAddress makeListAddress(Family family)
{
    return OperationNodeAddress{OperationNodeAddress::FixedChunk(family == Family::SingleRange ? listType : textType)};
}

template<class T>
OperationUPtr makeListOperation(Family family, const std::vector<Stretch>& stretches)
{
    if (family == Family::SingleRange)
    {
        require(stretches.size() == 1, "one range");
        return std::make_unique<T>(makeSingle<T>(family, stretches.front()));
    }
    std::vector<T> nestedOperations;
    for (auto stretch = stretches.rbegin(); stretch != stretches.rend(); ++stretch)
    {
        nestedOperations.push_back(makeSingle<T>(family, *stretch));
    }
    return std::make_unique<ListMultirangeOperationImpl<T>>(std::move(nestedOperations));
}

template OperationUPtr makeListOperation<Insert>(Family, const std::vector<Stretch>&);
template OperationUPtr makeListOperation<Remove>(Family, const std::vector<Stretch>&);
template OperationUPtr makeListOperation<MarkAsRemoved>(Family, const std::vector<Stretch>&);
template OperationUPtr makeListOperation<Restore>(Family, const std::vector<Stretch>&);
template OperationUPtr makeListOperation<Leave>(Family, const std::vector<Stretch>&);

OperationUPtr makeMove(unsigned long slot, unsigned long target)
{
    return std::make_unique<ListMoveOperation>(makeListAddress(Family::SingleRange), listType,
                                               Range::fromCount(slot, 1),
                                               static_cast<long>(target) - static_cast<long>(slot));
}

OperationUPtr makeReleasing(Family family, const std::vector<Stretch>& stretches)
{
    Shadows shadows;
    shadows._holdersCount = stretches.front()._holdersCount;
    return std::make_unique<ShadowedOperation>(
        dynamicUPtrCheckedCast<AtomicOperation>(makeListOperation<Restore>(family, stretches)), shadows);
}

std::shared_ptr<HierarchicalOperationTransformer> makeListTransformer()
{
    auto transformer = std::make_shared<HierarchicalOperationTransformer>();
    transformer->registerSameNodeTransformer(listType, std::make_shared<ListSameNodeTransformer>());
    transformer->registerAdressModifierTransformer(listType, std::make_shared<AncestorListModificationTransformer>());
    transformer->registerSameNodeTransformer(textType, std::make_shared<ListMultirangeSameNodeTransformer>());
    transformer->registerAdressModifierTransformer(textType,
                                                   std::make_shared<AncestorListMultirangeModificationTransformer>());
    return transformer;
}

unsigned long SlotModel::getHighestHoldersCount() const
{
    unsigned long highest = 0;
    for (const Slot& slot : _slots)
    {
        highest = std::max(highest, slot._holdersCount);
    }
    return highest;
}

void SlotModel::apply(Operation& operation)
{
    visitWith(
        operation,
        [&](AtomicOperation& atomic)
        {
            if (auto* list = cast<ListOperation>(&atomic))
            {
                visitWith(*list, [&](auto& single) { applySingle(single); });
                return;
            }
            visitWith(cast<ListMultirangeOperation>(atomic), [&](auto& multirange) { applySingle(multirange); });
        },
        [&](CompositeOperation& composite)
        {
            for (OperationUPtr& part : composite.getParts())
            {
                apply(*part);
            }
        },
        [](EmptyOperation&) {},
        [&](ShadowedOperation& shadowed) { release(shadowed.getOriginal(), shadowed.getShadows()); });
}

template<class T>
void SlotModel::applySingle(ListMultirangeOperationImpl<T>& operation)
{
    unsigned long lowest = ~0ul;
    for (T& nestedOperation : operation.getNestedOperations())
    {
        const Range& range = nestedOperation.getRange();
        require((std::is_same_v<T, Insert> ? range.getBegin() : range.getEnd()) <= lowest, "from high to low");
        lowest = range.getBegin();
        applySingle(nestedOperation);
    }
}

void SlotModel::applySingle(Insert& operation)
{
    const unsigned long gap = operation.getRange().getBegin();
    require(gap <= _slots.size(), "an insertion's gap lies in the list");
    require(static_cast<bool>(operation.getData()), "an insertion has items");
    const auto& items = cast<Items>(*operation.getData()).getCollection();
    require(items.size() == operation.getRange().getCount(), "an insertion has as many items as its range");
    std::vector<Slot> inserted;
    for (const char item : items)
    {
        inserted.push_back(Slot{item, 0});
    }
    _slots.insert(_slots.begin() + static_cast<long>(gap), inserted.begin(), inserted.end());
}

void SlotModel::applySingle(Remove& operation)
{
    const Range& range = operation.getRange();
    require(range.getEnd() <= _slots.size(), "a removal's range lies in the list");
    const auto begin = _slots.begin() + static_cast<long>(range.getBegin());
    _slots.erase(begin, begin + static_cast<long>(range.getCount()));
}

void SlotModel::applySingle(MarkAsRemoved& operation)
{
    const Range& range = operation.getRange();
    require(range.getEnd() <= _slots.size(), "a marking's range lies in the list");
    std::string items;
    for (unsigned long index = range.getBegin(); index < range.getEnd(); ++index)
    {
        require(_slots[index]._holdersCount == 0, "a marking meets live slots");
        _slots[index]._holdersCount = 1;
        items += _slots[index]._identity;
    }
    operation.setData(makeItems(items));
}

void SlotModel::applySingle(Restore& operation)
{
    const Range& range = operation.getRange();
    require(range.getEnd() <= _slots.size(), "a restoring's range lies in the list");
    require(static_cast<bool>(operation.getData()), "a restoring has items");
    const auto& items = cast<Items>(*operation.getData()).getCollection();
    require(items.size() == range.getCount(), "a restoring has as many items as its range");
    for (unsigned long index = range.getBegin(); index < range.getEnd(); ++index)
    {
        require(_slots[index]._holdersCount > 0, "a restoring meets dead slots");
        require(_slots[index]._identity == items[index - range.getBegin()], "a restoring brings the slot's item");
        _slots[index]._holdersCount = 0;
    }
}

void SlotModel::applySingle(Leave& operation)
{
    const Range& range = operation.getRange();
    require(range.getEnd() <= _slots.size(), "a leaving's range lies in the list");
    for (unsigned long index = range.getBegin(); index < range.getEnd(); ++index)
    {
        require(_slots[index]._holdersCount > 0, "a leaving meets dead slots");
        require(_slots[index]._holdersCount == operation.getHoldersCount(), "a leaving knows its holders");
        ++_slots[index]._holdersCount;
    }
}

void SlotModel::applySingle(ListMoveOperation& operation)
{
    const unsigned long slot = operation.getRange().getBegin();
    const long target = static_cast<long>(slot) + operation.getOffset();
    require(slot < _slots.size() && target >= 0 && static_cast<unsigned long>(target) < _slots.size(),
            "a move stays in the list");
    const Slot moved = _slots[slot];
    _slots.erase(_slots.begin() + static_cast<long>(slot));
    _slots.insert(_slots.begin() + target, moved);
}

void SlotModel::release(const Operation& original, const Shadows& shadows)
{
    const auto releaseRange = [&](const ListOperation& single)
    {
        for (unsigned long index = single.getRange().getBegin(); index < single.getRange().getEnd(); ++index)
        {
            require(index < _slots.size() && _slots[index]._holdersCount > shadows._holdersCount,
                    "a releasing meets slots with more holders than it leaves");
            _slots[index]._holdersCount = shadows._holdersCount;
        }
    };
    if (const auto* single = cast<Restore>(&original))
    {
        releaseRange(*single);
        return;
    }
    for (const Restore& nestedOperation : cast<ListMultirangeOperationImpl<Restore>>(original).getNestedOperations())
    {
        releaseRange(nestedOperation);
    }
}

std::string SlotModel::toString() const
{
    std::string text;
    for (const Slot& slot : _slots)
    {
        text += slot._holdersCount == 0
                    ? std::string(1, slot._identity)
                    : "[" + std::string(1, slot._identity) + std::to_string(slot._holdersCount) + "]";
    }
    return text;
}

} // namespace Zem::CollaborationEngine::Testing

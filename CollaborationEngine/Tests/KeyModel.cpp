#include "KeyModel.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using MapInsert = MapInsertOrRemoveOperation<MapInsertTag>;
using MapRemove = MapInsertOrRemoveOperation<MapRemoveTag>;
using Key = NodeAddressing::SimpleValueMapKey<std::string>;
using Value = SimpleDataValue<char>;

constexpr char oldValue = 'o';

void require(bool condition, const char* message)
{
    if (!condition)
    {
        throw IllegalOperation(message);
    }
}

OperationNodeAddress makeMapAddress()
{
    return OperationNodeAddress{OperationNodeAddress::FixedChunk(mapType)};
}

template<class T, class... Arguments>
std::unique_ptr<T> make(char key, char value, Arguments... arguments)
{
    return std::make_unique<T>(makeMapAddress(), mapType, makeSharedConst<Key>(std::string(1, key)),
                               makeSharedConst<Value>(value), arguments...);
}

void addOperations(std::vector<OperationUPtr>& operations, char key, const KeyState& state, char newValue)
{
    if (state._value != 0)
    {
        operations.push_back(make<MapRemove>(key, 0));
        return;
    }
    operations.push_back(make<MapInsert>(key, newValue));
    if (state._holdersCount == 0)
    {
        return;
    }
    operations.push_back(make<MapInsert>(key, oldValue));
    operations.push_back(make<MapLeaveRemovedOperation>(key, oldValue, state._holdersCount));
    Shadows shadows;
    if (state._holdersCount > 1)
    {
        shadows._holdersCount = state._holdersCount - 1;
        operations.push_back(std::make_unique<ShadowedOperation>(make<MapInsert>(key, oldValue), shadows));
    }
    shadows._releasesAll = true;
    for (shadows._holdersCount = 1; shadows._holdersCount < state._holdersCount; ++shadows._holdersCount)
    {
        operations.push_back(std::make_unique<ShadowedOperation>(make<MapInsert>(key, newValue), shadows));
    }
}

} // namespace

KeyState& KeyModel::find(const MapOperation& operation)
{
    return _keys[cast<Key>(*operation.getKey()).getValue().front()];
}

unsigned long KeyModel::getHighestHoldersCount() const
{
    unsigned long highest = 0;
    for (const auto& entry : _keys)
    {
        highest = std::max(highest, entry.second._holdersCount);
    }
    return highest;
}

void KeyModel::apply(Operation& operation)
{
    visitWith(
        operation,
        [&](AtomicOperation& atomic)
        {
            auto& onMap = cast<MapOperation>(atomic);
            KeyState& state = find(onMap);
            visitWith(
                onMap,
                [&](const MapInsert& insert)
                {
                    require(state._value == 0, "an insertion meets no value");
                    state = KeyState{getSimpleDataValue<char>(*insert.getData()), 0};
                },
                [&](MapRemove& remove)
                {
                    require(state._value != 0, "a removal meets a value");
                    remove.setData(makeSharedConst<Value>(state._value));
                    state = KeyState{0, 1};
                },
                [&](const MapLeaveRemovedOperation& leave)
                {
                    require(state._value == 0 && state._holdersCount > 0, "a leaving meets what was removed");
                    require(leave.getHoldersCount() == state._holdersCount, "a leaving knows its holders");
                    ++state._holdersCount;
                });
        },
        [&](CompositeOperation& composite)
        {
            for (const OperationUPtr& part : composite.getParts())
            {
                apply(*part);
            }
        },
        [](EmptyOperation&) {},
        [&](ShadowedOperation& shadowed)
        {
            KeyState& state = find(cast<MapInsert>(shadowed.getOriginal()));
            require(state._value == 0 && state._holdersCount > shadowed.getShadows()._holdersCount,
                    "a releasing meets more holders than it leaves");
            state._holdersCount = shadowed.getShadows()._holdersCount;
        });
}

bool KeyModel::hasValuesOf(const KeyModel& other) const
{
    for (const auto& entry : _keys)
    {
        const auto same = other._keys.find(entry.first);
        if (same == other._keys.end() || same->second._value != entry.second._value)
        {
            return false;
        }
    }
    return _keys.size() == other._keys.size();
}

std::string KeyModel::toString() const
{
    std::string text;
    for (const auto& entry : _keys)
    {
        const KeyState& state = entry.second;
        text += entry.first + std::string("=") +
                (state._value != 0 ? std::string(1, state._value) : "[" + std::to_string(state._holdersCount) + "]") +
                " ";
    }
    return text;
}

std::vector<KeyModel> makeKeyStates(unsigned long keysCount, unsigned long maximumHolders)
{
    std::vector<std::map<char, KeyState>> states{{}};
    for (unsigned long index = 0; index < keysCount; ++index)
    {
        std::vector<std::map<char, KeyState>> longer;
        for (const std::map<char, KeyState>& state : states)
        {
            const auto add = [&](KeyState keyState)
            {
                longer.push_back(state);
                longer.back()[static_cast<char>('a' + index)] = keyState;
            };
            add(KeyState{oldValue, 0});
            for (unsigned long holdersCount = 0; holdersCount <= maximumHolders; ++holdersCount)
            {
                add(KeyState{0, holdersCount});
            }
        }
        states = std::move(longer);
    }
    return std::vector<KeyModel>(states.begin(), states.end());
}

std::vector<OperationUPtr> makeMapOperations(const KeyModel& state, char newValue)
{
    std::vector<OperationUPtr> operations;
    for (const auto& entry : state.getKeys())
    {
        addOperations(operations, entry.first, entry.second, newValue);
    }
    return operations;
}

} // namespace Zem::CollaborationEngine::Testing

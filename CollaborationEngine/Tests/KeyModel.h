#pragma once

/// One map as the engine's operations see it: keys with a value or the number of removals that hold it out. It carries
/// operations out by the letter, and says so when one isn't legal.

#include "OperationNotation.h"
#include "SlotModel.h"

#include "CE_MapOperation.h"

#include <map>
#include <string>
#include <vector>

namespace Zem::CollaborationEngine::Testing
{

constexpr unsigned long mapType = 4;

struct KeyState
{
    friend bool operator==(const KeyState&, const KeyState&) = default;

    /// 0 where the map doesn't hold the key.
    char _value = 0;
    unsigned long _holdersCount = 0;
};

class KeyModel
{
public:
    KeyModel() = default;

    explicit KeyModel(std::map<char, KeyState> keys)
        : _keys(std::move(keys))
    {
    }

    const std::map<char, KeyState>& getKeys() const
    {
        return _keys;
    }

    unsigned long getHighestHoldersCount() const;

    /// Carries out an operation of any kind, and fills in what a removal takes out.
    void apply(Operation& operation);

    /// Whether both hold the same keys with the same values, whatever holds the others out.
    bool hasValuesOf(const KeyModel& other) const;

    std::string toString() const;

    friend bool operator==(const KeyModel&, const KeyModel&) = default;

private:
    KeyState& find(const MapOperation& operation);

    std::map<char, KeyState> _keys;
};

/// All maps of the keys from `a` on, each of which was never there, is there with the value `o`, or was removed by up
/// to `maximumHolders`.
std::vector<KeyModel> makeKeyStates(unsigned long keysCount, unsigned long maximumHolders);

/// All operations that are legal in a state. What is inserted anew is `newValue`.
std::vector<OperationUPtr> makeMapOperations(const KeyModel& state, char newValue);

} // namespace Zem::CollaborationEngine::Testing

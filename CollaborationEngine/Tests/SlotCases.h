#pragma once

/// All small states of a list, and all operations that are legal in one.

#include "SlotModel.h"

namespace Zem::CollaborationEngine::Testing
{

/// All lists of `size` slots whose holders number up to `maximumHolders` each.
std::vector<SlotModel> makeStates(unsigned long size, unsigned long maximumHolders);

struct OperationKinds
{
    bool _hasRemovals = true;
    bool _hasMoves = true;
};

/// All operations that are legal in a state. Inserted items are named from `firstItem` on.
std::vector<OperationUPtr> makeOperations(const SlotModel& state, Family family, char firstItem, OperationKinds kinds);

} // namespace Zem::CollaborationEngine::Testing

#pragma once

#include "CE_OperationParts.h"

namespace Zem::CollaborationEngine
{

/// Two restorings that meet may bring the same edit along. An edit of a cell whose row and column are both dead is part
/// of what restores the row, where the column still shadows it, and of what restores the column, where the row does.
/// Once both have run it must take effect once. So it is dropped from one of the two: from `second` if `first` has all
/// shadowed parts of that, else from `first`. The side that keeps them has them in their order.
void dropTwins(OperationParts& first, OperationParts& second);

} // namespace Zem::CollaborationEngine

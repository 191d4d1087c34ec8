#pragma once

#include "CE_OperationParts.h"

namespace Zem::CollaborationEngine
{

/// An edit of a cell whose row and column are both dead is brought along by what restores the row, dormant for the
/// column's sake, and by what restores the column, dormant for the row's. It awakens where both meet, once: a side all
/// of whose dormant parts the other one has, too, leaves them to it, which has them in their order.
void dropTwins(OperationParts& first, OperationParts& second);

} // namespace Zem::CollaborationEngine

#pragma once

#include "CE_ListMultirangeOperation.h"

#include <cstddef>
#include <vector>

namespace Zem::CollaborationSession
{

/// What stands for an element that has no match.
inline constexpr std::size_t noMatch = ~std::size_t(0);

/// For each element that `first` inserts, in the order of the list, the number of the same element in `second`; matches
/// ascend. It is a longest common subsequence of what the elements hold, tags of texts being equal if they are of one
/// kind. Cost: linear in the two where they agree at their beginnings and ends, and the product of what is left, unless
/// that exceeds a million: then none of that is matched.
std::vector<std::size_t>
matchElements(const CollaborationEngine::ListMultirangeOperationImpl<
                  CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>& first,
              const CollaborationEngine::ListMultirangeOperationImpl<
                  CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>& second);

} // namespace Zem::CollaborationSession

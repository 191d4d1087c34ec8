#pragma once

#include "CE_ListMultirangeOperation.h"

namespace Zem::CollaborationEngine::MultirangeOperationUtils
{

/// Tidies what a transformation made: in a multirange operation, or in those of one kind that follow each other inside
/// a composite one, empty pieces go, pieces that touch are joined and the order is made high to low; a composite of one
/// part becomes that part, and what has nothing in it an `EmptyOperation`. With `keepsPieceBorders` the pieces are put
/// in order but not joined. What holds no multirange operation comes back untouched.
ZEM_EXPORT OperationUPtr mergeOperations(OperationUPtr operation, bool keepsPieceBorders);

/// The multirange operation of one range.
template<class T>
std::unique_ptr<ListMultirangeOperationImpl<T>> makeMultirangeOperationFromSingle(T operation)
{
    std::vector<T> nestedOperations;
    nestedOperations.push_back(std::move(operation));
    return std::make_unique<ListMultirangeOperationImpl<T>>(std::move(nestedOperations));
}

} // namespace Zem::CollaborationEngine::MultirangeOperationUtils

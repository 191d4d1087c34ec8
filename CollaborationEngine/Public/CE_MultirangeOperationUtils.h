#pragma once

#include "CE_ListMultirangeOperation.h"

namespace Zem::CollaborationEngine::MultirangeOperationUtils
{

/// Tidies what a transformation made: in a multirange operation, or in those of one kind that follow each other inside
/// a composite one, pieces that touch are joined and the order is made high to low; empty parts of a composite go, and
/// a composite of one part becomes that part, unless that has another id. With `keepsPieceBorders` the pieces are put
/// in order but not joined. What holds no multirange operation comes back untouched. (No piece is empty: a range has at
/// least one slot.)
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

#pragma once

#include "CE_Operation.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationSession
{

/// A marking or restoring of a text of which the document carried out only a part, taken apart into that part and the
/// rest. The two don't touch each other, so that either may go first.
struct PartialMarking
{
    CollaborationEngine::OperationUPtr _carriedOut;
    CollaborationEngine::OperationUPtr _refused;
};

/// `original` was brought past others as `planned`, and `happened` is what the document made of that. Empty if there
/// are not two such parts: for another kind of operation, for one that was refused whole or not at all, and where more
/// happened than was planned.
/// Cost: linear in the slots of the three.
boost::optional<PartialMarking> takeApart(const CollaborationEngine::Operation& original,
                                          const CollaborationEngine::Operation& planned,
                                          const CollaborationEngine::Operation& happened);

} // namespace Zem::CollaborationSession

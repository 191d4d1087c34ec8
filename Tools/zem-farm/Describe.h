#pragma once

#include "CE_Operation.h"
#include "CE_OperationNodeAddress.h"

#include <string>

namespace ZemFarm
{

/// An address by its indices; n34 is a step to the one child of type 34.
std::string describe(const Zem::CollaborationEngine::OperationNodeAddress& address);

/// An operation in a few words, for those who read a script: what it does, where (counting tombstones), and with which
/// elements, in the letters of `print` for texts.
///
///     [n34] insert 7:|ab 2:x      in the main text, the elements |ab at slot 7 and x at slot 2
std::string describe(const Zem::CollaborationEngine::Operation& operation);

} // namespace ZemFarm

#pragma once

#include "CE_Operation.h"

namespace Zem::CollaborationEngine
{

/// An operation that means what taking `operation` back does, for the use of transformers; it bears the id of
/// `operation`. An insertion into a list or table becomes a removal for good, which no document executes.
/// Requires: `operation` was executed, so that it carries what it took out.
ZEM_EXPORT OperationUPtr makeReversal(const Operation& operation);

/// A new operation, without id, that undoes `operation`: it is to be transformed against all that came after
/// `operation`, and executed. What was inserted into a list or table is marked as removed; a leaving lets go what it
/// holds down.
/// Requires: `operation` was executed, so that it carries what it took out.
/// Cost: of a composite operation, for each part one comparison of addresses with each text into which others insert,
/// and a few transformations against these insertions, joined; one transformation for each pair of parts that touch
/// each other if it inserts several rows, columns or elements of a single-range list, or has shadowed parts.
ZEM_EXPORT OperationUPtr makeUndo(const Operation& operation, const BaseOperationTransformer& transformer);

} // namespace Zem::CollaborationEngine

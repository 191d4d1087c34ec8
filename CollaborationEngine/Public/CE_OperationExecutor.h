#pragma once

/// The road of an operation into a document: `BaseOperationExecutor` unpacks it into atomic operations, and the
/// `AtomicOperationExecutor` that its user supplies changes the document.

#include "CE_Operation.h"

#include <memory>

namespace Zem::CollaborationEngine
{

class AfterDocumentActionSignal;

/// Whatever runs operations of every kind.
class ZEM_EXPORT OperationExecutor
{
public:
    virtual ~OperationExecutor();

    /// Applies `operation`. If something else had to be done, leaves in `changedOp` the operation that describes what
    /// really happened and returns true; otherwise leaves `changedOp` as it is and returns false. The operation may be
    /// given the data that a later reverse needs. Requires: `changedOp` is empty. Fails: an assertion or exception of
    /// whoever changes the document; what was changed until then stays.
    virtual bool executeAndChangeIfNeeded(Operation& operation, OperationUPtr& changedOp) = 0;

    /// Takes `operation` back exactly. Requires: it is the last one executed that hasn't been taken back. Fails: as
    /// above.
    virtual void reverse(Operation& operation) = 0;

    virtual AfterDocumentActionSignal& getAfterDocumentActionSignal() = 0;
};

/// Whatever runs atomic operations.
class ZEM_EXPORT AtomicOperationExecutor
{
public:
    virtual ~AtomicOperationExecutor();

    virtual bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) = 0;
    virtual void reverse(AtomicOperation& operation) = 0;
};

/// Whatever tells of an operation that it ran what really happened, changed or not.
class ZEM_EXPORT ChangedOperationExecutor
{
public:
    virtual ~ChangedOperationExecutor();

    /// As `OperationExecutor::executeAndChangeIfNeeded`, but `changedOp` is filled in any case: with a copy of
    /// `operation`, captured data included, if nothing had to be changed.
    virtual bool executeAndChangeIfNeededChangedOp(Operation& operation, OperationUPtr& changedOp) = 0;
};

} // namespace Zem::CollaborationEngine

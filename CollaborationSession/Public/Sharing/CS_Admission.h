#pragma once

/// What a server asks of the operations and selections of its clients, whoever these are. It is done in two steps:
///
///     1. Before anything else is done with a batch, `BatchAdmission` looks at each operation as it is. What has passed
///        can be copied, compared, transformed and reversed: no part is missing, no number is higher than the document
///        can have had slots, none claims more than is there, all values are of the types that their places have.
///     2. Where an atomic operation is about to be executed, `findMisfit` looks at it beside the document.
///        `AdmittingExecutor` does so for each part of a composite, in the coordinates in which it runs.
///
/// Both only read, throw before anything has changed, and cost no more than what they look at.

#include "Sharing/CS_AdmissionLimits.h"
#include "Sharing/CS_InvalidOperationError.h"
#include "Sharing/CS_Messages.h"

#include "CE_BaseOperationExecutor.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "Util_Export.h"

#include <memory>
#include <optional>
#include <vector>

namespace Zem::CollaborationSession
{

/// The first of the operation ids that are a client's own: it gives these to its operations, rows and columns. There
/// are 2^32 of them.
constexpr CollaborationEngine::Operation::Id getFirstOperationID(ClientID client)
{
    return client << 32U;
}

/// How many clients can have ids of their own: all ids are below 2^53, which every reader of JSON can tell apart.
constexpr ClientID highestClientID = (1ul << 21U) - 1;

/// The first step, for the operations of one batch in their order. The limits are those of the batch as a whole.
class ZEM_EXPORT BatchAdmission
{
public:
    /// No list of the document ever had more than `slotsBound` slots, and no table more rows or columns: see
    /// `countSlots`. Requires: `author` isn't above `highestClientID` ("author <= highestClientID").
    BatchAdmission(ClientID author, unsigned long slotsBound, const AdmissionLimits& limits = AdmissionLimits());
    ~BatchAdmission();

    BatchAdmission(const BatchAdmission&) = delete;
    BatchAdmission& operator=(const BatchAdmission&) = delete;

    /// Requires that an operation can be transformed and executed without harm to anybody else.
    ///
    /// Ids are the author's own, but for what a restoring brings along: a part of a unit that lies in something which
    /// a part in front of it restores. Of an undo such a part may be all that is left; as long as it is shadowed, it
    /// may have any id, if `isUndo`. A removal for good is the reversal of an insertion, which travels only in the way
    /// from what a restoring was to be to what happened.
    ///
    /// Fails: `InvalidOperationError`. Cost: linear in the operation and all that it carries, up to the limits.
    void requireWellFormed(const CollaborationEngine::Operation& operation, bool isUndo = false);

    /// The same for what is meant by them: looks are of stretches of texts, their fields and values those of runs or
    /// paragraphs.
    void requireWellFormed(const Meaning& meaning);

    /// The same for the selection behind the operations.
    void requireWellFormed(const Selection& selection);

    /// The bound for whoever comes after the operations that were looked at.
    unsigned long getSlotsBound() const;

private:
    class Impl;

    std::unique_ptr<Impl> _impl;
};

/// A bound for the slots of each list of a document, and for the rows and columns of each of its tables. A server takes
/// it once, and from then on adds `countInsertedSlots` of what happened. Cost: a walk over the document.
ZEM_EXPORT unsigned long countSlots(const DOM::Document& document);

/// By how much such a bound grows with an operation at most.
/// Requires: it is well formed. Cost: linear in the operation and all that it carries.
ZEM_EXPORT unsigned long countInsertedSlots(const CollaborationEngine::Operation& operation);

/// The second step: why an operation, which is well formed, doesn't fit the document as it is; nothing if it does.
///
/// The address leads to a live node of the operand type. Ranges end inside of the slots; what is marked is live, what
/// is restored, or left by a deletion that found it dead, is dead. A key that is inserted is free, one that is removed
/// is there. All else an executor sees for itself before it touches the tree: a property that the node hasn't got, and
/// a formula outside of a cell. What it needn't do at all, such as leaving tombstones, it doesn't look at.
///
/// Fails: nothing. Cost: a walk to the node, and to the highest slot.
ZEM_EXPORT std::optional<OperationFault> findMisfit(const CollaborationEngine::AtomicOperation& operation,
                                                    const DOMCollaboration::DocumentAdapterWithNodeAdapter& document);

/// The same for a selection: both ends name a slot or the end of a list, a cell or a node, or lie in something dead.
ZEM_EXPORT std::optional<OperationFault> findMisfit(const Selection& selection,
                                                    const DOMCollaboration::DocumentAdapterWithNodeAdapter& document);

/// Executes operations of clients on another executor. What doesn't fit the document isn't executed, and happens as an
/// `EmptyOperation`, as what a document refuses: a part of a restoring that somebody else made must not cost the rest.
class ZEM_EXPORT AdmittingExecutor final : public CollaborationEngine::BaseOperationExecutor
{
public:
    /// Both must outlive it. `executor` changes `document`; its own signal isn't raised, but that of this executor.
    AdmittingExecutor(CollaborationEngine::BaseOperationExecutor& executor,
                      const DOMCollaboration::DocumentAdapterWithNodeAdapter& document);
    ~AdmittingExecutor() override;

    /// Why parts of the operations that were executed so far didn't happen, the first one in front.
    const std::vector<OperationFault>& getMisfits() const
    {
        return *_misfits;
    }

private:
    AdmittingExecutor(CollaborationEngine::BaseOperationExecutor& executor,
                      const DOMCollaboration::DocumentAdapterWithNodeAdapter& document,
                      std::shared_ptr<std::vector<OperationFault>> misfits);

    std::shared_ptr<std::vector<OperationFault>> _misfits;
};

} // namespace Zem::CollaborationSession

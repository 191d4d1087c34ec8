#pragma once

#include "CE_OperationExecutor.h"

namespace Zem::CollaborationEngine
{

/// Owns the flow of an operation: unpacking, executing, reversing, the after-document-action signal.
///
/// A composite operation runs part by part. If any part is changed, what really happened is again a composite: of
/// copies of the parts that ran as they stand, and of what the others became. The parts behind a changed one are
/// transformed against the change, so that what a refused restoring would have brought along stays shadowed. A changed
/// operation takes over the id of the one that came in. Empty and shadowed operations do nothing.
///
/// The signal is raised once for each operation handed in, in both directions, after the document has changed.
class ZEM_EXPORT BaseOperationExecutor : public OperationExecutor, public ChangedOperationExecutor
{
public:
    /// `transformer` is shared with whoever made it. It may be null for an executor that is never given a composite
    /// operation of which a part in front of another one is changed. Fails: "_atomicExecutor" when that is null.
    BaseOperationExecutor(std::unique_ptr<AtomicOperationExecutor> atomicExecutor,
                          std::shared_ptr<BaseOperationTransformer> transformer);
    ~BaseOperationExecutor() override;

    BaseOperationExecutor(const BaseOperationExecutor&) = delete;
    BaseOperationExecutor& operator=(const BaseOperationExecutor&) = delete;

    /// Fails: "!changedOp" when `changedOp` isn't empty, before anything is changed; "_transformer" when a part has to
    /// be transformed against the change of one in front of it, and there is no transformer. What the atomic executor
    /// throws passes through.
    bool executeAndChangeIfNeeded(Operation& operation, OperationUPtr& changedOp) override;
    void reverse(Operation& operation) override;
    AfterDocumentActionSignal& getAfterDocumentActionSignal() override;
    bool executeAndChangeIfNeededChangedOp(Operation& operation, OperationUPtr& changedOp) override;

    /// While one lives, no after-document-action signal is raised. Guards nest.
    class ZEM_EXPORT SetSilentModeGuard
    {
    public:
        explicit SetSilentModeGuard(BaseOperationExecutor& executor);
        SetSilentModeGuard(const SetSilentModeGuard&) = delete;
        SetSilentModeGuard& operator=(const SetSilentModeGuard&) = delete;
        ~SetSilentModeGuard();

    private:
        BaseOperationExecutor& _executor;
    };

    SetSilentModeGuard getSetSilentModeGuard();

    const std::shared_ptr<BaseOperationTransformer>& getTransformer() const
    {
        return _transformer;
    }

private:
    bool run(Operation& operation, OperationUPtr& changedOp);
    bool runParts(CompositeOperation& composite, OperationUPtr& changedOp);
    OperationUPtr transformAgainst(std::vector<OperationUPtr>& changes, const Operation& part) const;
    void takeBack(Operation& operation);
    void raiseSignal();

    std::unique_ptr<AtomicOperationExecutor> _atomicExecutor;
    std::shared_ptr<BaseOperationTransformer> _transformer;
    std::unique_ptr<AfterDocumentActionSignal> _signal;
    unsigned int _silentGuardsCount = 0;
};

} // namespace Zem::CollaborationEngine

#pragma once

#include "DClb_NodeOperationExecutor.h"
#include "Text/DClb_TextRanges.h"

#include "CE_ListMultirangeOperation.h"

#include <exception>
#include <memory>

namespace Zem::DOMCollaboration
{

class TextWithTombstonesChangedObserver;
struct TextWithTombstonesInfo;

/// Applies flat list operations to the tree of blocks, runs and bytes of a text. Indices of operations count the slots
/// of the text, live and dead; the tree holds only the live ones.
///
/// An insertion whose data doesn't fit its new neighbours is repaired, and completed with the marks that the tree will
/// show; that becomes the changed operation. A marking or a restoring is applied as it stands or, for all its ranges
/// together, not at all. An operation that can be neither carried out nor refused fails before anything is changed.
/// What an observer throws comes out when the operation has been carried out.
///
/// Cost: one walk over the text for all ranges together, and what they put in or take out. Each range with blocks of
/// its own also moves the blocks behind it, by a pointer each.
class TextWithTombstonesOperationExecutor final : public NodeOperationExecutor
{
public:
    TextWithTombstonesOperationExecutor(std::shared_ptr<DocumentAdapterWithNodeAdapter> dom,
                                        std::weak_ptr<TextWithTombstonesChangedObserver> observer);

    unsigned long getNodeType() const override;

    /// Fails: `std::bad_cast` for what isn't a multirange operation; "ListRemoveOperation shouldn't be executed ever".
    bool executeAndChangeIfNeeded(CollaborationEngine::HierarchicalOperation& operation,
                                  CollaborationEngine::OperationUPtr& changedOp) override;
    void reverse(CollaborationEngine::HierarchicalOperation& operation) override;

private:
    using InsertOperation = CollaborationEngine::ListMultirangeOperationImpl<
        CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>;

    bool insertData(InsertOperation& operation, CollaborationEngine::OperationUPtr& changedOp);
    void removeData(InsertOperation& operation);

    template<class Tag>
    bool markDataAsRemoved(CollaborationEngine::ListMultirangeOperationImpl<
                               CollaborationEngine::ListModificationOperation<Tag>>& operation,
                           CollaborationEngine::OperationUPtr& changedOp);
    template<class Tag>
    bool
    restoreData(CollaborationEngine::ListMultirangeOperationImpl<CollaborationEngine::ListModificationOperation<Tag>>&
                    operation,
                CollaborationEngine::OperationUPtr& changedOp);

    /// Both return what the observer threw first.
    std::exception_ptr applyInsertion(TextWithTombstonesInfo& info, RangeInfos& ranges, SlotsChange change);
    std::exception_ptr applyRemoval(TextWithTombstonesInfo& info, RangeInfos& ranges, SlotsChange change);

    std::weak_ptr<TextWithTombstonesChangedObserver> _observer;
};

} // namespace Zem::DOMCollaboration

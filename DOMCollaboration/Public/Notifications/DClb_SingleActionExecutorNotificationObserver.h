#pragma once

#include "Notifications/DClb_ExecutorNotificationObserver.h"

#include <utility>

namespace Zem::DOMCollaboration
{

/// An observer that does one and the same thing at every notification, whatever that tells. `Action` is a callable
/// without arguments.
template<class Action>
class SingleActionExecutorNotificationObserver : public ExecutorNotificationObserver
{
public:
    explicit SingleActionExecutorNotificationObserver(Action action)
        : _action(std::move(action))
    {
    }

    void onRunPropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onParaPropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onFramePropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onCellPropsChanged(const DOM::NativeNodeAddress&, const CollaborationEngine::DataValue&,
                            const CollaborationEngine::DataValue&, unsigned long) override
    {
        _action();
    }

    void onHeaderFooterPairPropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onDocumentPropsChanged(unsigned long) override
    {
        _action();
    }

    void onCharsRemoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                        const std::string&) override
    {
        _action();
    }

    void onCharsInserted(const DOM::NativeNodeAddress&, const CollaborationUtils::IndexRange<unsigned long>&) override
    {
        _action();
    }

    void onRunsRemoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                       const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>&) override
    {
        _action();
    }

    void onRunsInserted(const DOM::NativeNodeAddress&, const CollaborationUtils::IndexRange<unsigned long>&) override
    {
        _action();
    }

    void onBlocksRemoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>&) override
    {
        _action();
    }

    void onBlocksInserted(const DOM::NativeNodeAddress&, const CollaborationUtils::IndexRange<unsigned long>&) override
    {
        _action();
    }

    void onBlockMoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                      CollaborationUtils::IndexExcludingTombstones) override
    {
        _action();
    }

    void onRowStyleChanged(const DOM::NativeNodeAddress&, RowIndex, unsigned long) override
    {
        _action();
    }

    void onRowRemoved(const DOM::NativeNodeAddress&, RowIndex, const DOM::SparseData<DOM::RowStyle>&) override
    {
        _action();
    }

    void onRowInserted(const DOM::NativeNodeAddress&, RowIndex) override
    {
        _action();
    }

    void onColumnStyleChanged(const DOM::NativeNodeAddress&, ColumnIndex, unsigned long) override
    {
        _action();
    }

    void onColumnRemoved(const DOM::NativeNodeAddress&, ColumnIndex, const DOM::SparseData<DOM::ColumnStyle>&) override
    {
        _action();
    }

    void onColumnInserted(const DOM::NativeNodeAddress&, ColumnIndex) override
    {
        _action();
    }

    void onHeaderFooterInserted(const UUID&) override
    {
        _action();
    }

    void onHeaderFooterRemoved(const DOM::HeaderFooterPair&) override
    {
        _action();
    }

    void onConditionalFormatMoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                                  CollaborationUtils::IndexExcludingTombstones) override
    {
        _action();
    }

    void
    onConditionalFormatsRemoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                                const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>&) override
    {
        _action();
    }

    void onConditionalFormatsInserted(const DOM::NativeNodeAddress&,
                                      const CollaborationUtils::IndexRange<unsigned long>&) override
    {
        _action();
    }

    void onConditionalFormatChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onFramesRemoved(const DOM::NativeNodeAddress&, CollaborationUtils::IndexExcludingTombstones,
                         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>&) override
    {
        _action();
    }

    void onFramesInserted(const DOM::NativeNodeAddress&, const CollaborationUtils::IndexRange<unsigned long>&) override
    {
        _action();
    }

    void onTablePropsChanged(const DOM::NativeNodeAddress&, unsigned long, const CollaborationEngine::DataValue&,
                             const CollaborationEngine::DataValue&) override
    {
        _action();
    }

    void onScriptRemoved(const std::string&) override
    {
        _action();
    }

    void onScriptInserted(const std::string&) override
    {
        _action();
    }

    void onCommentInserted(const UUID&) override
    {
        _action();
    }

    void onCommentRemoved(const DOM::Comment&) override
    {
        _action();
    }

    void onCommentPropsChanged(const UUID&, unsigned long) override
    {
        _action();
    }

    void onNoteInserted(const UUID&) override
    {
        _action();
    }

    void onNoteRemoved(const DOM::Note&) override
    {
        _action();
    }

    void onNotePropsChanged(const UUID&, unsigned long) override
    {
        _action();
    }

    void onFieldBlockPropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onSectionPropsChanged(const DOM::NativeNodeAddress&, unsigned long) override
    {
        _action();
    }

    void onTextStyleInserted(const UUID&) override
    {
        _action();
    }

    void onTextStyleRemoved(const DOM::NamedTextStyle&) override
    {
        _action();
    }

    void onTextStylePropsChanged(const UUID&, unsigned long) override
    {
        _action();
    }

    void onTableStyleInserted(const UUID&) override
    {
        _action();
    }

    void onTableStyleRemoved(const DOM::NamedTableStyle&) override
    {
        _action();
    }

    void onTableStylePropsChanged(const UUID&, unsigned long) override
    {
        _action();
    }

private:
    Action _action;
};

} // namespace Zem::DOMCollaboration

#pragma once

/// An observer that writes down what it is told, for tests of executors.

#include "CE_DataValue.h"
#include "Notifications/DClb_ExecutorNotificationObserver.h"

#include <memory>
#include <string>
#include <vector>

namespace Zem::TestSupport
{

/// A native address as text: the steps with a slash between them, fixed ones by name, such as
/// "BlockCollection/0/RunCollection/1"; a cell as "(row,column)", a key as "{key}".
std::string describe(const DOM::NativeNodeAddress& address);

/// Writes every call down as one line of text, "operation(argument, ...)". Ranges are "[begin,end)", removed bytes
/// stand in quotes, removed things as a list of their kinds in brackets, text runs with their text, rows and columns as
/// "id 7 cells {0, 2}"; whatever has a `UUID` is written by it. Values of properties are kept beside the lines.
class RecordingObserver final : public DOMCollaboration::ExecutorNotificationObserver
{
public:
    struct Values
    {
        std::unique_ptr<CollaborationEngine::DataValue> _old;
        std::unique_ptr<CollaborationEngine::DataValue> _new;
    };

    /// What was told since the last call of this, in order.
    std::vector<std::string> takeLines();

    /// The values that came with the notifications that carry any, all of them in order.
    const std::vector<Values>& getValues() const
    {
        return _values;
    }

    void onRunPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onParaPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onFramePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onCellPropsChanged(const DOM::NativeNodeAddress& address, const CollaborationEngine::DataValue& oldValue,
                            const CollaborationEngine::DataValue& newValue, unsigned long propertyId) override;
    void onHeaderFooterPairPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onDocumentPropsChanged(unsigned long propertyId) override;
    void onCharsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                        const std::string& removed) override;
    void onCharsInserted(const DOM::NativeNodeAddress& address,
                         const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onRunsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                       const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed) override;
    void onRunsInserted(const DOM::NativeNodeAddress& address,
                        const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onBlocksRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed) override;
    void onBlocksInserted(const DOM::NativeNodeAddress& address,
                          const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onBlockMoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,
                      CollaborationUtils::IndexExcludingTombstones to) override;
    void onRowStyleChanged(const DOM::NativeNodeAddress& table, RowIndex row, unsigned long propertyId) override;
    void onRowRemoved(const DOM::NativeNodeAddress& table, RowIndex row,
                      const DOM::SparseData<DOM::RowStyle>& removed) override;
    void onRowInserted(const DOM::NativeNodeAddress& table, RowIndex row) override;
    void onColumnStyleChanged(const DOM::NativeNodeAddress& table, ColumnIndex column,
                              unsigned long propertyId) override;
    void onColumnRemoved(const DOM::NativeNodeAddress& table, ColumnIndex column,
                         const DOM::SparseData<DOM::ColumnStyle>& removed) override;
    void onColumnInserted(const DOM::NativeNodeAddress& table, ColumnIndex column) override;
    void onHeaderFooterInserted(const UUID& uuid) override;
    void onHeaderFooterRemoved(const DOM::HeaderFooterPair& removed) override;
    void onConditionalFormatMoved(const DOM::NativeNodeAddress& address,
                                  CollaborationUtils::IndexExcludingTombstones from,
                                  CollaborationUtils::IndexExcludingTombstones to) override;
    void onConditionalFormatsRemoved(
        const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
        const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>& removed) override;
    void onConditionalFormatsInserted(const DOM::NativeNodeAddress& address,
                                      const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onConditionalFormatChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onFramesRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
                         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>& removed) override;
    void onFramesInserted(const DOM::NativeNodeAddress& address,
                          const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onTablePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                             const CollaborationEngine::DataValue& oldValue,
                             const CollaborationEngine::DataValue& newValue) override;
    void onScriptRemoved(const std::string& name) override;
    void onScriptInserted(const std::string& name) override;
    void onCommentInserted(const UUID& uuid) override;
    void onCommentRemoved(const DOM::Comment& removed) override;
    void onCommentPropsChanged(const UUID& uuid, unsigned long propertyId) override;
    void onNoteInserted(const UUID& uuid) override;
    void onNoteRemoved(const DOM::Note& removed) override;
    void onNotePropsChanged(const UUID& uuid, unsigned long propertyId) override;
    void onFieldBlockPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onSectionPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) override;
    void onTextStyleInserted(const UUID& uuid) override;
    void onTextStyleRemoved(const DOM::NamedTextStyle& removed) override;
    void onTextStylePropsChanged(const UUID& uuid, unsigned long propertyId) override;
    void onTableStyleInserted(const UUID& uuid) override;
    void onTableStyleRemoved(const DOM::NamedTableStyle& removed) override;
    void onTableStylePropsChanged(const UUID& uuid, unsigned long propertyId) override;

private:
    template<class... Arguments>
    void record(const char* operation, const Arguments&... arguments);

    std::vector<std::string> _lines;
    std::vector<Values> _values;
};

} // namespace Zem::TestSupport

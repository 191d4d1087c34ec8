#pragma once

#include "Notifications/DClb_ExecutorNotificationObserver.h"

#include "Util_CallableRef.h"
#include "Util_Export.h"

#include <exception>
#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Passes each notification on to several observers, in the order in which they came, so that a document's one executor
/// serves views, indices and whoever else wants to know. It keeps none of them alive: those that are gone are passed
/// over, and forgotten when the next one comes. One that throws keeps nothing from those behind it: the first exception
/// goes on when all have been told.
class ZEM_EXPORT ObserverFanOut final : public DOMCollaboration::ExecutorNotificationObserver
{
public:
    /// While it stands, no exception of an observer goes on: what can't be stopped half-way is brought to its end
    /// first, and then `rethrow` is called.
    class ZEM_EXPORT Postponement
    {
    public:
        /// Requires: no other one stands ("isAlone").
        explicit Postponement(ObserverFanOut& fanOut);

        Postponement(const Postponement&) = delete;
        Postponement& operator=(const Postponement&) = delete;

        ~Postponement()
        {
            _fanOut._postponement = nullptr;
        }

        /// Tells somebody else, whose exception is held up like one of an observer.
        void tell(CallableRef<void()> notify);

        /// Throws the first exception that was held up, if there was one.
        void rethrow() const;

    private:
        friend ObserverFanOut;

        ObserverFanOut& _fanOut;
        std::exception_ptr _first;
    };

    /// Must not be called from within a notification.
    void add(std::weak_ptr<DOMCollaboration::ExecutorNotificationObserver> observer);

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
    void forEach(CallableRef<void(DOMCollaboration::ExecutorNotificationObserver&)> notify);
    void throwOrPostpone(const std::exception_ptr& failure) const;

    std::vector<std::weak_ptr<DOMCollaboration::ExecutorNotificationObserver>> _observers;
    Postponement* _postponement = nullptr;
};

} // namespace Zem::CollaborationSession

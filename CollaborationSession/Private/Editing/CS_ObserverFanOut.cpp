#include "Editing/CS_ObserverFanOut.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using DOMCollaboration::ExecutorNotificationObserver;

void ObserverFanOut::add(std::weak_ptr<ExecutorNotificationObserver> observer)
{
    _observers.erase(
        std::remove_if(_observers.begin(), _observers.end(), [](const auto& known) { return known.expired(); }),
        _observers.end());
    _observers.push_back(std::move(observer));
}

void ObserverFanOut::forEach(CallableRef<void(ExecutorNotificationObserver&)> notify)
{
    std::exception_ptr first;
    for (const auto& known : _observers)
    {
        const auto observer = known.lock();
        if (!observer)
        {
            continue;
        }
        try
        {
            notify(*observer);
        }
        catch (...)
        {
            first = first ? first : std::current_exception();
        }
    }
    if (first)
    {
        throwOrPostpone(first);
    }
}

void ObserverFanOut::throwOrPostpone(const std::exception_ptr& failure) const
{
    if (!_postponement)
    {
        std::rethrow_exception(failure);
    }
    if (!_postponement->_first)
    {
        _postponement->_first = failure;
    }
}

ObserverFanOut::Postponement::Postponement(ObserverFanOut& fanOut)
    : _fanOut(fanOut)
{
    const bool isAlone = _fanOut._postponement == nullptr;
    ZEM_ASSERT(isAlone);
    _fanOut._postponement = this;
}

void ObserverFanOut::Postponement::tell(CallableRef<void()> notify)
{
    try
    {
        notify();
    }
    catch (...)
    {
        _first = _first ? _first : std::current_exception();
    }
}

void ObserverFanOut::Postponement::rethrow() const
{
    if (_first)
    {
        std::rethrow_exception(_first);
    }
}

/// One row per notification: its name, its parameters, and their names again.
#define ZEM_PASS_ON(name, parameters, arguments)                                                                       \
    void ObserverFanOut::name parameters                                                                               \
    {                                                                                                                  \
        forEach([&](ExecutorNotificationObserver& observer) { observer.name arguments; });                             \
    }

ZEM_PASS_ON(onRunPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId), (address, propertyId))
ZEM_PASS_ON(onParaPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onFramePropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onCellPropsChanged,
            (const DOM::NativeNodeAddress& address, const CollaborationEngine::DataValue& oldValue,
             const CollaborationEngine::DataValue& newValue, unsigned long propertyId),
            (address, oldValue, newValue, propertyId))
ZEM_PASS_ON(onHeaderFooterPairPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onDocumentPropsChanged, (unsigned long propertyId), (propertyId))
ZEM_PASS_ON(onCharsRemoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
             const std::string& removed),
            (address, begin, removed))
ZEM_PASS_ON(onCharsInserted,
            (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),
            (address, range))
ZEM_PASS_ON(onRunsRemoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
             const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed),
            (address, begin, removed))
ZEM_PASS_ON(onRunsInserted,
            (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),
            (address, range))
ZEM_PASS_ON(onBlocksRemoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
             const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed),
            (address, begin, removed))
ZEM_PASS_ON(onBlocksInserted,
            (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),
            (address, range))
ZEM_PASS_ON(onBlockMoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,
             CollaborationUtils::IndexExcludingTombstones to),
            (address, from, to))
ZEM_PASS_ON(onRowStyleChanged, (const DOM::NativeNodeAddress& table, RowIndex row, unsigned long propertyId),
            (table, row, propertyId))
ZEM_PASS_ON(onRowRemoved,
            (const DOM::NativeNodeAddress& table, RowIndex row, const DOM::SparseData<DOM::RowStyle>& removed),
            (table, row, removed))
ZEM_PASS_ON(onRowInserted, (const DOM::NativeNodeAddress& table, RowIndex row), (table, row))
ZEM_PASS_ON(onColumnStyleChanged, (const DOM::NativeNodeAddress& table, ColumnIndex column, unsigned long propertyId),
            (table, column, propertyId))
ZEM_PASS_ON(onColumnRemoved,
            (const DOM::NativeNodeAddress& table, ColumnIndex column, const DOM::SparseData<DOM::ColumnStyle>& removed),
            (table, column, removed))
ZEM_PASS_ON(onColumnInserted, (const DOM::NativeNodeAddress& table, ColumnIndex column), (table, column))
ZEM_PASS_ON(onHeaderFooterInserted, (const UUID& uuid), (uuid))
ZEM_PASS_ON(onHeaderFooterRemoved, (const DOM::HeaderFooterPair& removed), (removed))
ZEM_PASS_ON(onConditionalFormatMoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,
             CollaborationUtils::IndexExcludingTombstones to),
            (address, from, to))
ZEM_PASS_ON(onConditionalFormatsRemoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
             const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>& removed),
            (address, index, removed))
ZEM_PASS_ON(onConditionalFormatsInserted,
            (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),
            (address, range))
ZEM_PASS_ON(onConditionalFormatChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onFramesRemoved,
            (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
             const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>& removed),
            (address, index, removed))
ZEM_PASS_ON(onFramesInserted,
            (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),
            (address, range))
ZEM_PASS_ON(onTablePropsChanged,
            (const DOM::NativeNodeAddress& address, unsigned long propertyId,
             const CollaborationEngine::DataValue& oldValue, const CollaborationEngine::DataValue& newValue),
            (address, propertyId, oldValue, newValue))
ZEM_PASS_ON(onScriptRemoved, (const std::string& name), (name))
ZEM_PASS_ON(onScriptInserted, (const std::string& name), (name))
ZEM_PASS_ON(onCommentInserted, (const UUID& uuid), (uuid))
ZEM_PASS_ON(onCommentRemoved, (const DOM::Comment& removed), (removed))
ZEM_PASS_ON(onCommentPropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))
ZEM_PASS_ON(onNoteInserted, (const UUID& uuid), (uuid))
ZEM_PASS_ON(onNoteRemoved, (const DOM::Note& removed), (removed))
ZEM_PASS_ON(onNotePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))
ZEM_PASS_ON(onFieldBlockPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onSectionPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),
            (address, propertyId))
ZEM_PASS_ON(onTextStyleInserted, (const UUID& uuid), (uuid))
ZEM_PASS_ON(onTextStyleRemoved, (const DOM::NamedTextStyle& removed), (removed))
ZEM_PASS_ON(onTextStylePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))
ZEM_PASS_ON(onTableStyleInserted, (const UUID& uuid), (uuid))
ZEM_PASS_ON(onTableStyleRemoved, (const DOM::NamedTableStyle& removed), (removed))
ZEM_PASS_ON(onTableStylePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))

#undef ZEM_PASS_ON

} // namespace Zem::CollaborationSession

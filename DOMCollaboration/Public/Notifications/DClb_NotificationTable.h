#pragma once

/// The table of all notifications, from which observers are made that treat them alike:
///
///     #define ZEM_DECLARE(name, parameters, arguments) void name parameters override;
///         ZEM_NOTIFICATIONS(ZEM_DECLARE)
///     #undef ZEM_DECLARE
///
/// One row for each operation of `ExecutorNotificationObserver`, in the order of its bases: the name, the parameters in
/// parentheses, and the names of these in parentheses. It is for namespaces inside Zem. An observer that misses an
/// operation is abstract, and an `override` without one is an error: a table that isn't complete doesn't compile.

#include "Notifications/DClb_ExecutorNotificationObserver.h"

// clang-format off
#define ZEM_NOTIFICATIONS(ROW)                                                                                         \
    ROW(onRunPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId), (address, propertyId))   \
    ROW(onParaPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId), (address, propertyId))  \
    ROW(onFramePropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId), (address, propertyId)) \
    ROW(onCellPropsChanged,                                                                                            \
        (const DOM::NativeNodeAddress& address, const CollaborationEngine::DataValue& oldValue,                        \
         const CollaborationEngine::DataValue& newValue, unsigned long propertyId),                                    \
        (address, oldValue, newValue, propertyId))                                                                     \
    ROW(onHeaderFooterPairPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),             \
        (address, propertyId))                                                                                         \
    ROW(onDocumentPropsChanged, (unsigned long propertyId), (propertyId))                                              \
    ROW(onCharsRemoved,                                                                                                \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,                    \
         const std::string& removed), (address, begin, removed))                                                       \
    ROW(onCharsInserted,                                                                                               \
        (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),           \
        (address, range))                                                                                              \
    ROW(onRunsRemoved,                                                                                                 \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,                    \
         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed), (address, begin, removed))            \
    ROW(onRunsInserted,                                                                                                \
        (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),           \
        (address, range))                                                                                              \
    ROW(onBlocksRemoved,                                                                                               \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,                    \
         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed), (address, begin, removed))          \
    ROW(onBlocksInserted,                                                                                              \
        (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),           \
        (address, range))                                                                                              \
    ROW(onBlockMoved,                                                                                                  \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,                     \
         CollaborationUtils::IndexExcludingTombstones to), (address, from, to))                                        \
    ROW(onRowStyleChanged, (const DOM::NativeNodeAddress& table, RowIndex row, unsigned long propertyId),              \
        (table, row, propertyId))                                                                                      \
    ROW(onRowRemoved,                                                                                                  \
        (const DOM::NativeNodeAddress& table, RowIndex row, const DOM::SparseData<DOM::RowStyle>& removed),            \
        (table, row, removed))                                                                                         \
    ROW(onRowInserted, (const DOM::NativeNodeAddress& table, RowIndex row), (table, row))                              \
    ROW(onColumnStyleChanged, (const DOM::NativeNodeAddress& table, ColumnIndex column, unsigned long propertyId),     \
        (table, column, propertyId))                                                                                   \
    ROW(onColumnRemoved,                                                                                               \
        (const DOM::NativeNodeAddress& table, ColumnIndex column, const DOM::SparseData<DOM::ColumnStyle>& removed),   \
        (table, column, removed))                                                                                      \
    ROW(onColumnInserted, (const DOM::NativeNodeAddress& table, ColumnIndex column), (table, column))                  \
    ROW(onHeaderFooterInserted, (const UUID& uuid), (uuid))                                                            \
    ROW(onHeaderFooterRemoved, (const DOM::HeaderFooterPair& removed), (removed))                                      \
    ROW(onConditionalFormatMoved,                                                                                      \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,                     \
         CollaborationUtils::IndexExcludingTombstones to), (address, from, to))                                        \
    ROW(onConditionalFormatsRemoved,                                                                                   \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,                    \
         const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>& removed),                         \
        (address, index, removed))                                                                                     \
    ROW(onConditionalFormatsInserted,                                                                                  \
        (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),           \
        (address, range))                                                                                              \
    ROW(onConditionalFormatChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),                 \
        (address, propertyId))                                                                                         \
    ROW(onFramesRemoved,                                                                                               \
        (const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,                    \
         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>& removed), (address, index, removed))          \
    ROW(onFramesInserted,                                                                                              \
        (const DOM::NativeNodeAddress& address, const CollaborationUtils::IndexRange<unsigned long>& range),           \
        (address, range))                                                                                              \
    ROW(onTablePropsChanged,                                                                                           \
        (const DOM::NativeNodeAddress& address, unsigned long propertyId,                                              \
         const CollaborationEngine::DataValue& oldValue, const CollaborationEngine::DataValue& newValue),              \
        (address, propertyId, oldValue, newValue))                                                                     \
    ROW(onScriptRemoved, (const std::string& name), (name))                                                            \
    ROW(onScriptInserted, (const std::string& name), (name))                                                           \
    ROW(onCommentInserted, (const UUID& uuid), (uuid))                                                                 \
    ROW(onCommentRemoved, (const DOM::Comment& removed), (removed))                                                    \
    ROW(onCommentPropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))                       \
    ROW(onNoteInserted, (const UUID& uuid), (uuid))                                                                    \
    ROW(onNoteRemoved, (const DOM::Note& removed), (removed))                                                          \
    ROW(onNotePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))                          \
    ROW(onFieldBlockPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),                   \
        (address, propertyId))                                                                                         \
    ROW(onSectionPropsChanged, (const DOM::NativeNodeAddress& address, unsigned long propertyId),                      \
        (address, propertyId))                                                                                         \
    ROW(onTextStyleInserted, (const UUID& uuid), (uuid))                                                               \
    ROW(onTextStyleRemoved, (const DOM::NamedTextStyle& removed), (removed))                                           \
    ROW(onTextStylePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))                     \
    ROW(onTableStyleInserted, (const UUID& uuid), (uuid))                                                              \
    ROW(onTableStyleRemoved, (const DOM::NamedTableStyle& removed), (removed))                                         \
    ROW(onTableStylePropsChanged, (const UUID& uuid, unsigned long propertyId), (uuid, propertyId))
// clang-format on

#pragma once

/// The properties that operations set on nodes, rows and columns. The types of their values are in
/// `DClb_PropertyValues.h`, out of this same table.

/// One row per property: its number, its name, the type of its value. Numbers are part of the format: they never change
/// and are never reused. 66 has no reader, and is reserved.
#define ZEM_PROPERTIES(ROW)                                                                                            \
    ROW(34, TextWithTombstones, DOM::TextWithTombstones)                                                               \
    ROW(35, RunPropertyId, DOM::RunPropsConstPtr)                                                                      \
    ROW(36, RunTrackedPropsId, DOM::TrackedRunPropsConstPtr)                                                           \
    ROW(37, TrackedActionId, DOM::TrackedActionConstPtr)                                                               \
    ROW(38, ParaPropertyId, DOM::ParaPropsConstPtr)                                                                    \
    ROW(39, ParaTrackedPropsId, DOM::TrackedParaPropsConstPtr)                                                         \
    ROW(40, ParagraphRunPropertyId, DOM::RunPropsConstPtr)                                                             \
    ROW(41, NumRefId, boost::optional<DOM::NumberingRef>)                                                              \
    ROW(42, ParentStyleId, UUID)                                                                                       \
    ROW(43, TrackedParentStyleId, DOM::TrackedTextStyleConstPtr)                                                       \
    ROW(44, CellStyleId, DOM::SharedStyleConstIPtr<DOM::CellStyle>)                                                    \
    ROW(45, CellMergeId, DOM::CellMergeProps)                                                                          \
    ROW(46, RowStyleId, DOM::SharedRowStyleConstIPtr)                                                                  \
    ROW(47, ColumnStyleId, DOM::SharedColumnStyleConstIPtr)                                                            \
    ROW(48, NextHeaderFooterId, UUID)                                                                                  \
    ROW(49, HeaderPageNumberId, boost::optional<DOM::PageNumber>)                                                      \
    ROW(50, FooterPageNumberId, boost::optional<DOM::PageNumber>)                                                      \
    ROW(51, PagePropsId, DOM::PagePropsConstPtr)                                                                       \
    ROW(52, ExtentId, boost::optional<Size2D<float>>)                                                                  \
    ROW(53, ChangesTrackingEnabledId, bool)                                                                            \
    ROW(54, SectionPropsId, DOM::SectionProps)                                                                         \
    ROW(55, HyperlinkId, DOM::HyperlinkConstPtr)                                                                       \
    ROW(56, TableFilterInfoId, boost::optional<DOM::TableFilterInfo>)                                                  \
    ROW(57, AnchorId, DOM::Anchor)                                                                                     \
    ROW(58, TableNameId, std::string)                                                                                  \
    ROW(59, TablePropertyId, std::shared_ptr<const DOM::TableProps>)                                                   \
    ROW(60, ChartGraphicalObjectId, std::unique_ptr<DOM::ChartSpace>)                                                  \
    ROW(61, CommentUUIDsId, std::vector<UUID>)                                                                         \
    ROW(62, CommentBlocksId, DOM::Blocks)                                                                              \
    ROW(63, NextCommentId, UUID)                                                                                       \
    ROW(64, CommentResolvedId, bool)                                                                                   \
    ROW(65, FieldValueId, DOM::FieldBlock::FieldInfo)                                                                  \
    ROW(67, NoteBlocksId, DOM::Blocks)                                                                                 \
    ROW(68, NoteExtentId, boost::optional<Size2D<float>>)                                                              \
    ROW(69, DocumentTimeZoneId, DOM::TimeZone)                                                                         \
    ROW(70, TableHeaderRowsColsId, boost::optional<DOM::HeaderRowsCols>)                                               \
    ROW(71, TableSettingsId, DOM::TableSettings)                                                                       \
    ROW(72, TableSizeId, CellIndex)                                                                                    \
    ROW(73, PivotTableId, boost::optional<DOM::PivotTable>)                                                            \
    ROW(74, StopCalculateConditionsId, bool)

namespace Zem::DOMCollaboration
{

/// The numbering goes on where that of `OperationDOMNodeType` ends; the first property shares name and number with the
/// last type of node.
enum class PropertyId : unsigned long
{
#define ZEM_PROPERTY_ENUMERATOR(number, name, ...) name = number,
    ZEM_PROPERTIES(ZEM_PROPERTY_ENUMERATOR)
#undef ZEM_PROPERTY_ENUMERATOR
};

constexpr PropertyId firstPropertyId = PropertyId::TextWithTombstones;
constexpr PropertyId lastPropertyId = PropertyId::StopCalculateConditionsId;

/// The number by which the engine and the wire know the property.
constexpr unsigned long convertPropertyId(PropertyId id)
{
    return static_cast<unsigned long>(id);
}

} // namespace Zem::DOMCollaboration

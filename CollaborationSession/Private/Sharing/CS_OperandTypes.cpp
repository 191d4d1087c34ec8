#include "Sharing/CS_OperandTypes.h"

#include "DClb_NodeTypes.h"

#include <array>

namespace Zem::CollaborationSession
{

using CollaborationEngine::HierarchicalOperation;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PropertyId;

namespace
{

using Family = HierarchicalOperation::Family;

constexpr std::array runProperties{PropertyId::RunPropertyId,
                                   PropertyId::RunTrackedPropsId,
                                   PropertyId::TrackedActionId,
                                   PropertyId::ParentStyleId,
                                   PropertyId::TrackedParentStyleId,
                                   PropertyId::HyperlinkId,
                                   PropertyId::CommentUUIDsId,
                                   PropertyId::ExtentId,
                                   PropertyId::AnchorId};
constexpr std::array paragraphProperties{PropertyId::RunPropertyId,
                                         PropertyId::RunTrackedPropsId,
                                         PropertyId::TrackedActionId,
                                         PropertyId::HyperlinkId,
                                         PropertyId::CommentUUIDsId,
                                         PropertyId::ParaPropertyId,
                                         PropertyId::ParaTrackedPropsId,
                                         PropertyId::ParentStyleId,
                                         PropertyId::TrackedParentStyleId,
                                         PropertyId::ParagraphRunPropertyId,
                                         PropertyId::NumRefId};
constexpr std::array fieldBlockProperties{PropertyId::HyperlinkId, PropertyId::CommentUUIDsId,
                                          PropertyId::FieldValueId};
constexpr std::array sectionProperties{PropertyId::SectionPropsId};
constexpr std::array documentProperties{PropertyId::ChangesTrackingEnabledId, PropertyId::SectionPropsId,
                                        PropertyId::DocumentTimeZoneId};

} // namespace

bool isNodeType(unsigned long nodeType)
{
    return nodeType < DOMCollaboration::operationNodeTypesCount;
}

std::optional<OperandType> findOperandType(unsigned long nodeType)
{
    switch (static_cast<OperationDOMNodeType>(nodeType))
    {
    case OperationDOMNodeType::TextWithTombstones:
        return OperandType{Family::ListMultirange, true, {}};
    case OperationDOMNodeType::ScriptCollection:
        return OperandType{Family::Map, true, {}};
    case OperationDOMNodeType::Run:
        return OperandType{Family::SetProperty, true, runProperties};
    case OperationDOMNodeType::ParagraphTag:
        return OperandType{Family::SetProperty, true, paragraphProperties};
    case OperationDOMNodeType::FieldBlock:
        return OperandType{Family::SetProperty, true, fieldBlockProperties};
    case OperationDOMNodeType::SectionTag:
        return OperandType{Family::SetProperty, true, sectionProperties};
    case OperationDOMNodeType::DocumentProps:
        return OperandType{Family::SetProperty, true, documentProperties};
    case OperationDOMNodeType::CellCollection:
        return OperandType{Family::Table, false, {}};
    case OperationDOMNodeType::WorksheetCollection:
    case OperationDOMNodeType::FrameCollection:
    case OperationDOMNodeType::ConditionalFormatCollection:
        return OperandType{Family::List, false, {}};
    case OperationDOMNodeType::HeaderFooterPairCollection:
    case OperationDOMNodeType::CommentCollection:
    case OperationDOMNodeType::NoteCollection:
    case OperationDOMNodeType::TextStyleCollection:
    case OperationDOMNodeType::TableStyleCollection:
        return OperandType{Family::Map, false, {}};
    case OperationDOMNodeType::Table:
    case OperationDOMNodeType::Frame:
    case OperationDOMNodeType::ConditionalFormat:
    case OperationDOMNodeType::Cell:
    case OperationDOMNodeType::HeaderFooterPair:
    case OperationDOMNodeType::Comment:
    case OperationDOMNodeType::Note:
    case OperationDOMNodeType::TextStyle:
        return OperandType{Family::SetProperty, false, {}};
    case OperationDOMNodeType::TextDocument:
    case OperationDOMNodeType::WorkbookDocument:
    case OperationDOMNodeType::PresentationDocument:
    case OperationDOMNodeType::Tombstone:
    case OperationDOMNodeType::Shape:
    case OperationDOMNodeType::CollectionEndMark:
    case OperationDOMNodeType::Char:
    case OperationDOMNodeType::Header:
    case OperationDOMNodeType::Footer:
    case OperationDOMNodeType::Temporary:
    case OperationDOMNodeType::TableStyle:
        break;
    }
    return std::nullopt;
}

} // namespace Zem::CollaborationSession

#pragma once

/// Operations on many kinds of nodes of one document:
///
///     slot 0        a table of two rows and two columns; in its last cell stands a formula
///     slot 1        a shape
///     behind that   {|ab}{|c|d}$
///
/// so that edits of the paragraphs move neither the table nor the shape.

#include "Sharing/CS_SessionCase.h"

#include "CE_HierarchicalOperation.h"
#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyId.h"
#include "DClb_PropertyValues.h"
#include "DOM_FieldBlock.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_SectionProps.h"
#include "DOM_Table.h"
#include "DOM_TimeZone.h"
#include "TS_TextCase.h"

#include "Util_Cast.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Zem::CollaborationSession::NodeOperations
{

using CollaborationEngine::OperationNodeAddress;
using CollaborationEngine::OperationUPtr;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PropertyId;

inline OperationNodeAddress::FixedChunk makeChunk(OperationDOMNodeType nodeType)
{
    return OperationNodeAddress::FixedChunk(convertOperationNodeType(nodeType));
}

inline OperationNodeAddress getMainText()
{
    return TextEditor::getMainTextAddress();
}

/// An element of the main text.
inline OperationNodeAddress getElement(unsigned long slot)
{
    return getMainText().appendItems(NodeAddressing::AddressInList(slot));
}

inline OperationNodeAddress getCellText(unsigned long row, unsigned long column)
{
    return getElement(0).appendItems(makeChunk(OperationDOMNodeType::CellCollection),
                                     NodeAddressing::AddressInTable(RowIndex(row), ColumnIndex(column)),
                                     makeChunk(OperationDOMNodeType::TextWithTombstones));
}

inline OperationNodeAddress getShapeText()
{
    return getElement(1).appendItems(makeChunk(OperationDOMNodeType::TextWithTombstones));
}

/// `operation`, which is on a text, on another one.
inline OperationUPtr inText(const OperationNodeAddress& text, OperationUPtr operation)
{
    cast<CollaborationEngine::HierarchicalOperation>(*operation).setNodeAddress(text);
    return operation;
}

inline OperationUPtr insertBlock(const OperationNodeAddress& text, SharedConstPtr<DOM::Block> block)
{
    using Insertion = CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>;
    std::vector<Insertion> nested;
    nested.emplace_back(text, convertOperationNodeType(OperationDOMNodeType::TextWithTombstones),
                        makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(
                            DOMCollaboration::TextWithTombstonesElementVector{std::move(block)}),
                        CollaborationUtils::IndexRange<unsigned long>(0, 1));
    return std::make_unique<CollaborationEngine::ListMultirangeOperationImpl<Insertion>>(std::move(nested));
}

template<PropertyId id, class Value>
OperationUPtr set(OperationNodeAddress address, OperationDOMNodeType nodeType, const Value& oldValue,
                  const Value& newValue)
{
    using PropertyValue = DOMCollaboration::MapPropertyIdToSimpleDataValue<id>;
    return std::make_unique<CollaborationEngine::SetPropertyOperation>(
        std::move(address), convertOperationNodeType(nodeType), convertPropertyId(id),
        makeSharedConst<PropertyValue>(oldValue), makeSharedConst<PropertyValue>(newValue));
}

inline std::shared_ptr<DOM::RunProps> makeRunProps(float fontSize)
{
    auto props = std::make_shared<DOM::RunProps>();
    props->_fontSize = fontSize;
    return props;
}

/// On a run that has no properties yet.
inline OperationUPtr setRunSize(unsigned long slot, float fontSize)
{
    return set<PropertyId::RunPropertyId>(getElement(slot), OperationDOMNodeType::Run, std::shared_ptr<DOM::RunProps>(),
                                          makeRunProps(fontSize));
}

/// On a paragraph whose mark has no properties yet.
inline OperationUPtr setMarkSize(unsigned long slot, float fontSize)
{
    return set<PropertyId::RunPropertyId>(getElement(slot), OperationDOMNodeType::ParagraphTag,
                                          std::shared_ptr<DOM::RunProps>(), makeRunProps(fontSize));
}

inline OperationUPtr setColumns(unsigned long slot, unsigned char columnsCount)
{
    DOM::SectionProps props;
    props._columnsCount = columnsCount;
    return set<PropertyId::SectionPropsId>(getElement(slot), OperationDOMNodeType::SectionTag, DOM::SectionProps(),
                                           props);
}

/// On the formula.
inline OperationUPtr setComments(const std::vector<UUID>& uuids)
{
    return set<PropertyId::CommentUUIDsId>(getCellText(1, 1).appendItems(NodeAddressing::AddressInList(0)),
                                           OperationDOMNodeType::FieldBlock, std::vector<UUID>(), uuids);
}

inline OperationUPtr setTimeZone(short minutes)
{
    return set<PropertyId::DocumentTimeZoneId>(OperationNodeAddress{makeChunk(OperationDOMNodeType::DocumentProps)},
                                               OperationDOMNodeType::DocumentProps, DOM::TimeZone(),
                                               DOM::TimeZone(minutes));
}

inline OperationUPtr setTracking(bool wasOn, bool isOn)
{
    return set<PropertyId::ChangesTrackingEnabledId>(
        OperationNodeAddress{makeChunk(OperationDOMNodeType::DocumentProps)}, OperationDOMNodeType::DocumentProps,
        wasOn, isOn);
}

inline OperationUPtr insertScript(const std::string& name, const std::string& text)
{
    constexpr auto nodeType = OperationDOMNodeType::ScriptCollection;
    return std::make_unique<CollaborationEngine::MapInsertOrRemoveOperation<CollaborationEngine::MapInsertTag>>(
        OperationNodeAddress{makeChunk(nodeType)}, convertOperationNodeType(nodeType),
        makeSharedConst<NodeAddressing::SimpleValueMapKey<std::string>>(name),
        makeSharedConst<CollaborationEngine::SimpleDataValue<std::string>>(text));
}

/// A session of the document above. Two of them begin equal, the identity of the table included.
class ManyNodesSession : public SessionCase
{
public:
    explicit ManyNodesSession(std::size_t clientsCount = 2, ServerSettings settings = {})
        : SessionCase("#{|ab}{|c|d}$", clientsCount, settings)
    {
        static const SharedConstPtr<DOM::Block> table = std::make_shared<const DOM::Table>(2, 2);
        static const SharedConstPtr<DOM::Block> formula = std::make_shared<const DOM::FieldBlock>();
        (*this)[0].execute(*insertBlock(getMainText(), table));
        (*this)[0].execute(*insertBlock(getCellText(1, 1), formula));
        settle();
    }
};

} // namespace Zem::CollaborationSession::NodeOperations

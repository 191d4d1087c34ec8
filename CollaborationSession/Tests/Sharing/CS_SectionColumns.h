#pragma once

/// What can't be brought past another of its kind: a setting of a section's properties.

#include "Editing/CS_TextEditor.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyId.h"
#include "DClb_PropertyValues.h"
#include "DOM_SectionProps.h"

namespace Zem::CollaborationSession
{

/// Gives the section tag at a slot of the main text so many columns.
inline CollaborationEngine::SetPropertyOperation setSectionColumns(unsigned long slot, unsigned char columnsCount)
{
    using DOMCollaboration::PropertyId;
    using Value = DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::SectionPropsId>;
    DOM::SectionProps props;
    props._columnsCount = columnsCount;
    CollaborationEngine::OperationNodeAddress address = TextEditor::getMainTextAddress();
    address.appendItems(NodeAddressing::AddressInList(slot));
    return {std::move(address), convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::SectionTag),
            convertPropertyId(PropertyId::SectionPropsId), makeSharedConst<Value>(DOM::SectionProps()),
            makeSharedConst<Value>(props)};
}

} // namespace Zem::CollaborationSession

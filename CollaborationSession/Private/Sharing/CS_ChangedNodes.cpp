#include "Sharing/CS_ChangedNodes.h"

#include "CE_HierarchicalOperation.h"
#include "DClb_NodeTypes.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::OperationDOMNodeType;

namespace
{

/// Each of others' operations is compared with every node. Who changed more, as by a setting of many runs, does better
/// to take all of it back once.
constexpr std::size_t mostNodes = 16;

/// Whether the executor of a type of node keeps to the node.
bool keepsToItsNode(unsigned long nodeType)
{
    switch (static_cast<OperationDOMNodeType>(nodeType))
    {
    // The grammar looks at neighbours in the text alone. Of each table on the way it asks whether the cell is covered
    // by another or by a pivot table: no operation but one on the text around the table changes that. The first
    // insertion makes the cell, and the reversal that empties it removes the cell: nothing but this text makes it
    // stand.
    case OperationDOMNodeType::TextWithTombstones:
    // These set a member of the one element that they are aimed at. Equal styles may be shared by elements of the whole
    // document, but a style that is shared isn't changed: the element gets another.
    case OperationDOMNodeType::ParagraphTag:
    case OperationDOMNodeType::Run:
    // These set a member of the tag or block. What a cell's text may hold hangs on the field that it begins with, and
    // an operation on that text is one on a node around the field.
    case OperationDOMNodeType::FieldBlock:
    case OperationDOMNodeType::SectionTag:
    // These set members of the document that no other executor looks at. All of them are one node.
    case OperationDOMNodeType::DocumentProps:
    // Scripts are known by their names, and nothing but this collection knows them.
    case OperationDOMNodeType::ScriptCollection:
        return true;
    default:
        return false;
    }
}

/// The operation if it keeps to one node; null if that isn't known.
const HierarchicalOperation* findOnOneNode(const Operation& operation)
{
    const auto* onNode = visitWith<const HierarchicalOperation*>(
        operation, [](const AtomicOperation& atomic) { return atomic.getIfHierarchical(); },
        [](const auto&) { return nullptr; });
    return onNode && keepsToItsNode(onNode->getOperandType()) ? onNode : nullptr;
}

bool isOneInsideTheOther(const OperationNodeAddress& first, const OperationNodeAddress& second)
{
    return first.isPrefixOf(second) || second.isPrefixOf(first);
}

} // namespace

void ChangedNodes::add(const Operation& operation)
{
    if (!_areAllKnown || cast<EmptyOperation>(&operation))
    {
        return;
    }
    const HierarchicalOperation* onNode = findOnOneNode(operation);
    if (!onNode)
    {
        _areAllKnown = false;
        return;
    }
    // Most come to the node of the one before.
    if (std::find(_addresses.rbegin(), _addresses.rend(), onNode->getNodeAddress()) == _addresses.rend())
    {
        _areAllKnown = _addresses.size() < mostNodes;
        _addresses.push_back(onNode->getNodeAddress());
    }
}

bool ChangedNodes::commuteWith(const Operation& operation) const
{
    if (!_areAllKnown || _addresses.empty() || cast<EmptyOperation>(&operation))
    {
        return _areAllKnown;
    }
    const HierarchicalOperation* onNode = findOnOneNode(operation);
    return onNode && std::none_of(_addresses.begin(), _addresses.end(),
                                  [&](const OperationNodeAddress& address)
                                  { return isOneInsideTheOther(address, onNode->getNodeAddress()); });
}

} // namespace Zem::CollaborationSession

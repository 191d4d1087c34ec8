#include "Editing/CS_Stretch.h"

#include "Editing/CS_InvalidEditError.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_DocumentPositionTransformer.h"
#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "Util_Cast.h"

#include <algorithm>
#include <exception>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

const NodeAddressing::AddressInList* findSlotChunk(const OperationNodeAddress& address)
{
    return address.getSize() < 2 ? nullptr
                                 : boost::get<NodeAddressing::AddressInList>(&address.getItem(address.getSize() - 1));
}

bool moveAcrossSingle(Stretch& stretch, const Operation& operation)
{
    // Settings move nothing, and some nodes say so by failing.
    if (cast<SetPropertyOperation>(&operation))
    {
        return true;
    }
    DOMCollaboration::DOMEditingStateTransformer transformer(
        std::make_shared<DOMCollaboration::DocumentPositionTransformer>());
    try
    {
        transformer.include(operation, stretch);
        return true;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

} // namespace

unsigned long getSlotInText(const OperationNodeAddress& address)
{
    const auto* chunk = findSlotChunk(address);
    if (!chunk)
    {
        throw InvalidEditError("A stretch begins and ends at an element of a text");
    }
    return chunk->getIndex();
}

OperationNodeAddress getText(OperationNodeAddress address)
{
    address.trimAtEnd(1);
    return address;
}

std::optional<StretchInText> findStretchInText(const Selection& selection)
{
    const OperationNodeAddress& begin = selection.getSelectionBegin().getAddress();
    const OperationNodeAddress& end = selection.getSelectionEnd().getAddress();
    const auto* first = findSlotChunk(begin);
    const auto* last = findSlotChunk(end);
    if (!first || !last || !(getText(begin) == getText(end)))
    {
        return std::nullopt;
    }
    const auto [firstSlot, lastSlot] = std::minmax({first->getIndex(), last->getIndex()});
    return StretchInText{getText(begin), firstSlot, lastSlot};
}

StretchInText readStretch(const Stretch& stretch)
{
    auto read = findStretchInText(stretch);
    if (!read)
    {
        throw InvalidEditError("A stretch lies in one text, from an element to an element");
    }
    return *std::move(read);
}

Stretch makeStretch(const OperationNodeAddress& text, unsigned long firstSlot, unsigned long lastSlot)
{
    const auto makePosition = [&](unsigned long slot)
    {
        OperationNodeAddress address = text;
        address.appendItems(NodeAddressing::AddressInList(slot));
        return Stretch::SelectionPosition(address);
    };
    return {DOMCollaboration::SelectionMode::Text, makePosition(firstSlot), makePosition(lastSlot)};
}

bool moveStretch(Stretch& stretch, const Operation& operation)
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite)
    {
        return moveAcrossSingle(stretch, operation);
    }
    for (const OperationUPtr& part : composite->getParts())
    {
        if (!moveStretch(stretch, *part))
        {
            return false;
        }
    }
    return true;
}

} // namespace Zem::CollaborationSession

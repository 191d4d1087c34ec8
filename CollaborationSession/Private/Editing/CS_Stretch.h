#pragma once

/// Stretches of a text: where they lie, and how operations move them.

#include "Editing/CS_Action.h"

#include "CE_OperationNodeAddress.h"

#include <optional>

namespace Zem::CollaborationSession
{

/// The text that a stretch lies in, and the slots of its first and last element, in this order: where all that lay
/// between them is gone, the ends may have passed each other.
struct StretchInText
{
    CollaborationEngine::OperationNodeAddress _text;
    unsigned long _firstSlot = 0;
    unsigned long _lastSlot = 0;
};

/// The slot of an element of a text, and the text, by the element's address. Fails: `InvalidEditError` for any other.
unsigned long getSlotInText(const CollaborationEngine::OperationNodeAddress& address);
CollaborationEngine::OperationNodeAddress getText(CollaborationEngine::OperationNodeAddress address);

/// Fails: `InvalidEditError` for a selection that isn't of elements of one text.
StretchInText readStretch(const Stretch& stretch);

/// Empty for a selection that isn't of elements of one text.
std::optional<StretchInText> findStretchInText(const Selection& selection);

Stretch makeStretch(const CollaborationEngine::OperationNodeAddress& text, unsigned long firstSlot,
                    unsigned long lastSlot);

/// Moves a stretch across an operation. False if it leads nowhere any more.
bool moveStretch(Stretch& stretch, const CollaborationEngine::Operation& operation);

} // namespace Zem::CollaborationSession

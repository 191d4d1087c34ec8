#pragma once

/// What the commands have in common.

#include "Editing/CS_CharacterIndex.h"
#include "Editing/CS_TextCommands.h"

#include "CE_ListMultirangeOperation.h"
#include "CU_Index.h"
#include "DClb_NodeTypes.h"
#include "DClb_TextElement.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationEngine::ListModificationOperation;

inline constexpr unsigned long textNodeType =
    DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::TextWithTombstones);

/// Throws `InvalidEditError` if [begin, end) is no stretch of the text. Fails: "!index.isStale()".
void requireStretch(const CharacterIndex& index, unsigned long begin, unsigned long end);

/// The slot of a live element. Cost: the logarithm of the number of ranges of tombstones.
unsigned long getSlot(const CharacterIndex& index, unsigned long element);

/// One nested operation that inserts `elements` in front of `slot` of the text at `address`. Requires: there are some.
ListModificationOperation<CollaborationEngine::InsertTag>
makeNestedInsertion(const CollaborationEngine::OperationNodeAddress& address, unsigned long slot,
                    DOMCollaboration::TextWithTombstonesElementVector elements);

/// The operation of `nestedOperations`, which stand from the highest to the lowest.
template<class Nested>
CollaborationEngine::OperationUPtr makeMultirange(std::vector<Nested> nestedOperations)
{
    return std::make_unique<CollaborationEngine::ListMultirangeOperationImpl<Nested>>(std::move(nestedOperations));
}

/// The text run's tag of a style, or the tag of a paragraph like `model` (a default one for null), as an element.
DOMCollaboration::TextWithTombstonesElement makeRunElement(const DOM::SharedStyleConstIPtr<DOM::RunStyle>& style);
DOMCollaboration::TextWithTombstonesElement makeParagraphElement(const DOM::Paragraph* model);

} // namespace Zem::CollaborationSession

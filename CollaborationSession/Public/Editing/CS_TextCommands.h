#pragma once

/// What a user does to a text, as operations. Nothing is changed here: a command reads the text through its index, and
/// gives the operations to execute, in their order. Those that come later are in the coordinates that those before them
/// leave. On the text that they were made for, an executor does them as they stand, unless a cell doesn't take them:
/// one that is merged into another, covered by a pivot table, or holds a formula.
///
/// Offsets count characters; CS_Characters.h tells what these are.
///
/// Fails, all of them: `InvalidEditError` when a stretch isn't inside the text or ends before it begins, naming both;
/// "!index.isStale()" when the index is.

#include "Editing/CS_CharacterIndex.h"
#include "Editing/CS_LookChange.h"

#include "CE_DataValue.h"
#include "CE_Operation.h"
#include "DClb_PropertyId.h"

#include "Util_Export.h"
#include "Util_SharedConstPtr.h"

#include <string_view>
#include <vector>

namespace Zem::CollaborationSession
{

using Operations = std::vector<CollaborationEngine::OperationUPtr>;

namespace TextCommands
{

/// Replaces the characters of [begin, end) by `replacement`, UTF-8 in which "\n" is a line break: at most a marking and
/// then an insertion.
///
/// - A line break that is typed splits its paragraph, and the new one has the properties of the old. One that is
///   deleted joins two paragraphs, and the first keeps its properties; a paragraph that is deleted whole, with its line
///   break, goes with its properties.
/// - What is typed has the style of the first character that it replaces, otherwise of the character in front of it, at
///   the beginning of a paragraph of the one behind, and in an empty paragraph of the paragraph's mark.
/// - Links and comments don't grow at their ends. What is typed has the link that the characters on both sides have,
///   and those comments that both have: characters of the paragraph that is typed in, in front of and behind what is
///   replaced. What was replaced has no say in it, nor has the paragraph's mark.
/// - A run that loses all its characters goes. Neighbouring runs are never joined.
/// - Where no paragraph is open (in an empty text, in front of an atomic block that follows another block, at the end
///   of a text that ends with an atomic block), what is typed becomes paragraphs of its own, like the one before.
///
/// The text then reads as it did with the stretch replaced, but that a line break stands where text would otherwise
/// come to stand directly in front of an atomic block, which no tree of blocks can show: the one that stood there
/// stays, or one is added behind what is typed.
///
/// Cost: a logarithm of the number of blocks and of ranges of tombstones; the runs of the paragraphs at both ends,
/// whose bytes are looked at only where characters have several; and what is deleted and inserted.
///
/// Fails: `InvalidEditError` naming the byte at which `replacement` isn't UTF-8.
ZEM_EXPORT Operations replaceCharacters(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                        std::string_view replacement);

/// Changes the look of the characters of [begin, end). A run that lies only partly in the stretch is parted by a new
/// tag. Runs that look so already are left alone, so that there may be no operation.
///
/// Cost: a logarithm of the number of blocks, what lies in the stretch, and the runs of the paragraphs at both ends.
/// Fails: `InvalidEditError` for a property that runs haven't.
ZEM_EXPORT Operations setRunLook(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                 const LookChange& change);

/// The same for all paragraphs of which [begin, end) has a character, or in which it lies if it is empty. Properties of
/// runs mean the style of the paragraph's mark. Cost: as `setRunLook`.
/// Fails: `InvalidEditError` for a property that paragraphs haven't.
ZEM_EXPORT Operations setParagraphLook(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                       const LookChange& change);

/// `LookChange::setProperty` on the characters of [begin, end): a bundle sets the fields that have a value in it, and
/// one without any clears all.
///
/// Fails: `InvalidEditError` for another property, and for a value of another type than the property's.
ZEM_EXPORT Operations setRunProperty(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                     DOMCollaboration::PropertyId propertyId,
                                     const SharedConstPtr<CollaborationEngine::DataValue>& value);

/// The same on the paragraphs of `setParagraphLook`. Fails: as `setRunProperty`.
ZEM_EXPORT Operations setParagraphProperty(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                           DOMCollaboration::PropertyId propertyId,
                                           const SharedConstPtr<CollaborationEngine::DataValue>& value);

/// Links the characters of [begin, end), or takes their links away for null.
ZEM_EXPORT Operations setLink(const CharacterIndex& index, unsigned long begin, unsigned long end,
                              DOM::HyperlinkConstPtr link);

/// Adds a comment to whatever comments the characters of [begin, end) have, or takes it out.
ZEM_EXPORT Operations addComment(const CharacterIndex& index, unsigned long begin, unsigned long end, const UUID& uuid);
ZEM_EXPORT Operations removeComment(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                    const UUID& uuid);

} // namespace TextCommands

} // namespace Zem::CollaborationSession

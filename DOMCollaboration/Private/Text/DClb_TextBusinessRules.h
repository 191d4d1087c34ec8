#pragma once

/// The grammar of the plane: what may stand next to what in a text, and what is to be done where neighbours don't fit.
///
/// A paragraph must be open for a mark, a run or a byte to come; it must be closed before anything of block level or
/// the end; a byte needs a text run, and a text run needs a byte. One table says so, and three functions of different
/// temper read it: an insertion is repaired, a removal and a restoring are only judged.

#include "DClb_TextElement.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_CallableRef.h"

namespace Zem::DOMCollaboration::TextBusinessRules
{

/// The kind of a place in the plane. A section tag that stands in a document is an atomic block; only as an element
/// that travels it is a `SectionTag`.
enum class ElementType : unsigned char
{
    SectionTag,
    ParaTag,
    ParaMark,
    AtomicBlock,
    TextRunTag,
    AtomicRun,
    Char,
    TextBegin,
    TextEnd
};

constexpr unsigned int elementTypesCount = 9;

enum class BusinessLogicValidationResult : unsigned char
{
    Valid = 0,
    Invalid = 1
};

/// Fails: "Unexpected BusinessLogicValidationResult value" for a value outside the enumeration.
bool isInvalid(BusinessLogicValidationResult result);

/// The text around one place: what the rules are told of the document.
class TextSurroundings
{
public:
    /// Both are referred to, not copied. The anchor is that of the place that is looked around from.
    TextSurroundings(const DOM::Blocks& blocks, PlaneAnchor& anchor)
        : _blocks(blocks)
        , _anchor(anchor)
    {
    }

    /// What stands at a plane index. Fails: "Unexpected type in the source variant" beyond the end of the text.
    ElementType getElementType(IndexExcludingTombstones index) const;

    /// What stands in front of a plane index: `TextBegin` in front of the first element.
    ElementType getElementTypeBefore(IndexExcludingTombstones index) const;

private:
    const DOM::Blocks& _blocks;
    PlaneAnchor& _anchor;
};

ElementType getElementType(const TextWithTombstonesElement& element);
ElementType getElementType(PlaceKind kind);

/// Decides for two neighbours, and calls `add` or `remove` as the table says: `add` is called for each element that is
/// missing between the two, the one that comes last first; `remove` where `prev` has to go. Returns whether it called
/// either. Fails: "Invlalid elements position" for what can't be neighbours.
bool processElement(ElementType prev, ElementType next, CallableRef<void(TextWithTombstonesElement)> add,
                    CallableRef<void()> remove);

/// Repairs the elements of an insertion at `startIndex`, which moves back by one if they would come between the tag of
/// a text run and its first byte. Returns whether anything changed; no element may be left.
/// Fails: "!_data.empty()" without elements; "It's not supposed to remove element before insertion position" for a text
/// with a run that has no text.
bool fixBusinessLogicForInsertion(TextWithTombstonesElementVector& elements, IndexExcludingTombstones& startIndex,
                                  const TextSurroundings& surroundings);

/// Judges the removal of the plane range [begin, end) on the text as it is. Fails: "rangeBegin <= rangeEnd".
BusinessLogicValidationResult fixBusinessLogicForRemoving(IndexExcludingTombstones rangeBegin,
                                                          IndexExcludingTombstones rangeEnd,
                                                          const TextSurroundings& surroundings);

/// Judges the restoring of `elements` at `startIndex` on the text as it is. Fails: "!_data.empty()".
BusinessLogicValidationResult fixBusinessLogicForRestoring(const TextWithTombstonesElementVector& elements,
                                                           IndexExcludingTombstones startIndex,
                                                           const TextSurroundings& surroundings);

} // namespace Zem::DOMCollaboration::TextBusinessRules

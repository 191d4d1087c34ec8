#pragma once

/// Where the texts of a document are, and what stands in their slots.

#include "Random.h"

#include "CE_OperationNodeAddress.h"
#include "DClb_NodeTypes.h"
#include "DOM_Document.h"
#include "DOM_Run.h"
#include "DOM_Table.h"
#include "Sharing/CS_DocumentKind.h"

#include <string>
#include <vector>

namespace ZemFarm
{

using Address = Zem::CollaborationEngine::OperationNodeAddress;
using Zem::CollaborationSession::DocumentKind;

Address makeFixedAddress(Zem::DOMCollaboration::OperationDOMNodeType nodeType);

/// A text with its address in operations. It may be that of a cell that doesn't stand there yet.
struct TextPlace
{
    Address _address;
    const Zem::DOM::TextWithTombstones* _text = nullptr;
};

/// In how many other texts the text of an address lies.
unsigned long getDepth(const Address& textAddress);

struct TablePlace
{
    Address _address;
    const Zem::DOM::Table* _table = nullptr;
};

struct Places
{
    /// The main text first, unless the document is a workbook.
    std::vector<TextPlace> _texts;
    std::vector<TablePlace> _tables;
};

/// All texts but those of comments and notes, which are no lists of slots. Of each table a few cells are taken at
/// random that don't stand there, or are captured by merges.
Places findPlaces(DocumentKind kind, const Zem::DOM::Document& document, Random& random);

/// One of the texts, most often the main one, if there is one.
const TextPlace* pickText(const Places& places, Random& random);

enum class ElementKind : unsigned char
{
    ParagraphTag,
    ParagraphMark,
    Block,
    TextRunTag,
    AtomicRun,
    /// A byte that begins a character.
    Character,
    ContinuationByte
};

/// What stands in a live slot of a text.
struct Element
{
    ElementKind _kind;
    /// Counts tombstones.
    unsigned long _slot;
    const Zem::DOM::Block* _block;
    /// Null for the tags and marks of paragraphs, and for blocks.
    const Zem::DOM::Run* _run;
    char _byte;
};

/// The live slots of a text in their order, and how many slots there are.
struct FlatText
{
    explicit FlatText(const Zem::DOM::TextWithTombstones& text);

    /// Indices into `_elements` of all that are of a kind.
    std::vector<std::size_t> find(ElementKind kind) const;

    std::vector<Element> _elements;
    unsigned long _slotsCount = 0;
};

/// The letter of a block in `print`.
char getLetter(const Zem::DOM::Block& block);

/// A text as a line: { and } for the tags and marks of paragraphs, | for those of text runs, ~ for an atomic run, T, S,
/// F and $ for tables, shapes, fields and section tags, a dot for a dead slot.
std::string print(const Zem::DOM::TextWithTombstones& text);

} // namespace ZemFarm

#pragma once

/// A naive list of all nodes of a document with their addresses in both worlds. It reads the document itself: it
/// flattens texts element by element and spreads tombstones out place by place, and knows no adapter.

#include "DClb_AddressNotation.h"

#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_Runs.h"

#include <utility>
#include <vector>

namespace Zem::DOMCollaboration::AddressModel
{

using namespace Addresses;

struct Node
{
    NativeNodeAddress _native;
    OperationNodeAddress _operation;
};

struct Nodes
{
    /// Whose addresses name each other.
    std::vector<Node> _twoWay;
    /// Native ends of character collections: in the flat text, what follows the run stands there.
    std::vector<Node> _toOperationOnly;
};

/// The places of the first `count` live elements and of the one behind them.
inline std::vector<unsigned long> getLivePlaces(const CollaborationUtils::TombstonesStorage& tombstones,
                                                unsigned long count)
{
    const auto ranges = tombstones.getRanges();
    const auto isDead = [&](unsigned long place)
    {
        for (const auto& range : ranges)
        {
            if (range.getBegin().get() <= place && place < range.getEnd().get())
            {
                return true;
            }
        }
        return false;
    };
    std::vector<unsigned long> places;
    for (unsigned long place = 0; places.size() <= count; ++place)
    {
        if (!isDead(place))
        {
            places.push_back(place);
        }
    }
    return places;
}

class Collector
{
public:
    Nodes takeNodes()
    {
        return std::move(_nodes);
    }

    void addDocument(const DOM::Document& document, Native nativeText, Operation operationText, bool hasAllParts)
    {
        const Node root;
        add(root);
        addText(step(root, fixed(nativeText), fixed(operationText)), document.getTextWithTombstones());
        addFixed(root, Native::DocumentProps, Operation::DocumentProps);
        addFixed(root, Native::ScriptCollection, Operation::ScriptCollection);
        if (hasAllParts)
        {
            addKeyed(addFixed(root, Native::CommentCollection, Operation::CommentCollection), document.getComments());
            addKeyed(addFixed(root, Native::NoteCollection, Operation::NoteCollection), document.getNotes());
            addKeyed(addFixed(root, Native::TextStyleCollection, Operation::TextStyleCollection),
                     document.getStyles().getTextStyles());
            addKeyed(addFixed(root, Native::TableStyleCollection, Operation::TableStyleCollection),
                     document.getStyles().getTableStyles());
            addHeadersFooters(addFixed(root, Native::HeaderFooterPairCollection, Operation::HeaderFooterPairCollection),
                              document.getHeadersFooters());
        }
    }

    void addDetachedText(const DOM::TextWithTombstones& text)
    {
        const Node root;
        add(root);
        addText(step(root, fixed(Native::BlockCollection), fixed(Operation::TextWithTombstones)), text);
    }

private:
    void add(const Node& node)
    {
        _nodes._twoWay.push_back(node);
    }

    template<class NativeChunk, class OperationChunk>
    static Node step(const Node& node, const NativeChunk& nativeChunk, const OperationChunk& operationChunk)
    {
        return {extended(node._native, nativeChunk), extended(node._operation, operationChunk)};
    }

    Node addFixed(const Node& parent, Native nativeType, Operation operationType)
    {
        Node node = step(parent, fixed(nativeType), fixed(operationType));
        add(node);
        return node;
    }

    template<class T>
    void addKeyed(const Node& parent, const DOM::UUIDContainer<T>& elements)
    {
        for (const T& element : elements)
        {
            add(step(parent, key(element.getUUID()), key(element.getUUID())));
        }
    }

    void addHeadersFooters(const Node& parent, const DOM::UUIDContainer<DOM::HeaderFooterPair>& pairs)
    {
        addKeyed(parent, pairs);
        for (const DOM::HeaderFooterPair& pair : pairs)
        {
            const Node node = step(parent, key(pair.getUUID()), key(pair.getUUID()));
            addOwnText(addFixed(node, Native::Header, Operation::Header), pair.getHeader());
            addOwnText(addFixed(node, Native::Footer, Operation::Footer), pair.getFooter());
        }
    }

    void addOwnText(const Node& owner, const DOM::TextWithTombstones& text)
    {
        addText(step(owner, fixed(Native::BlockCollection), fixed(Operation::TextWithTombstones)), text);
    }

    static unsigned long countElements(const DOM::TextWithTombstones& text)
    {
        unsigned long count = 0;
        for (const auto& block : text.getBlocks())
        {
            ++count;
            if (block->getKind() == DOM::BlockKind::Paragraph)
            {
                ++count;
                for (const auto& run : static_cast<const DOM::Paragraph&>(*block).getRuns())
                {
                    const auto* textRun = dynamic_cast<const DOM::TextRun*>(run.get());
                    count += 1 + (textRun ? textRun->getText().size() : 0);
                }
            }
        }
        return count;
    }

    void addText(const Node& textNode, const DOM::TextWithTombstones& text)
    {
        add(textNode);
        const std::vector<unsigned long> places = getLivePlaces(text.getTombstones(), countElements(text));
        unsigned long element = 0;
        unsigned long blockIndex = 0;
        for (const auto& block : text.getBlocks())
        {
            const Node node = step(textNode, at(blockIndex++), at(places.at(element++)));
            add(node);
            if (block->getKind() == DOM::BlockKind::Paragraph)
            {
                addParagraph(node._native, textNode._operation, static_cast<const DOM::Paragraph&>(*block), places,
                             element);
            }
            addBelowBlock(node, *block);
        }
        add(step(textNode, at(blockIndex), at(places.at(element))));
    }

    void addParagraph(const NativeNodeAddress& paragraphAddress, const OperationNodeAddress& textAddress,
                      const DOM::Paragraph& paragraph, const std::vector<unsigned long>& places, unsigned long& element)
    {
        const NativeNodeAddress runsAddress = extended(paragraphAddress, fixed(Native::RunCollection));
        unsigned long runIndex = 0;
        for (const auto& run : paragraph.getRuns())
        {
            const NativeNodeAddress runAddress = extended(runsAddress, at(runIndex++));
            add({runAddress, extended(textAddress, at(places.at(element++)))});
            if (const auto* textRun = dynamic_cast<const DOM::TextRun*>(run.get()))
            {
                const NativeNodeAddress charsAddress = extended(runAddress, fixed(Native::CharCollection));
                for (unsigned long byte = 0; byte < textRun->getText().size(); ++byte)
                {
                    add({extended(charsAddress, at(byte)), extended(textAddress, at(places.at(element++)))});
                }
                _nodes._toOperationOnly.push_back({extended(charsAddress, at(textRun->getText().size())),
                                                   extended(textAddress, at(places.at(element)))});
            }
        }
        add({extended(runsAddress, at(runIndex)), extended(textAddress, at(places.at(element++)))});
    }

    void addBelowBlock(const Node& node, const DOM::Block& block)
    {
        if (const auto* table = dynamic_cast<const DOM::Table*>(&block))
        {
            addTable(node, *table);
        }
        if (const auto* shape = dynamic_cast<const DOM::Shape*>(&block))
        {
            addOwnText(node, shape->getTextWithTombstones());
        }
    }

    template<class Collection>
    void addList(const Node& listNode, const Collection& collection)
    {
        const auto places = getLivePlaces(collection.getTombstones(), collection.getElements().size());
        for (unsigned long index = 0; index < places.size(); ++index)
        {
            add(step(listNode, at(index), at(places[index])));
        }
    }

    void addTable(const Node& tableNode, const DOM::Table& table)
    {
        addList(addFixed(tableNode, Native::FrameCollection, Operation::FrameCollection), table.getFrames());
        addList(addFixed(tableNode, Native::ConditionalFormatCollection, Operation::ConditionalFormatCollection),
                table.getConditionalFormats());
        const Node cells = addFixed(tableNode, Native::CellCollection, Operation::CellCollection);
        const std::vector<unsigned long> rows = getLinePlaces(
            table.getAllRowsCount().get(), [&](unsigned long place)
            { return table.convertRowIndex(CollaborationUtils::IndexIncludingTombstones(place)).has_value(); });
        const std::vector<unsigned long> columns = getLinePlaces(
            table.getAllColsCount().get(), [&](unsigned long place)
            { return table.convertColIndex(CollaborationUtils::IndexIncludingTombstones(place)).has_value(); });
        for (unsigned long row = 0; row < rows.size(); ++row)
        {
            for (unsigned long column = 0; column < columns.size(); ++column)
            {
                const Node node = step(cells, cell(row, column), cell(rows[row], columns[column]));
                add(node);
                if (row + 1 < rows.size() && column + 1 < columns.size())
                {
                    static const DOM::TextWithTombstones emptyText;
                    const DOM::Cell* tableCell = table.getCell(RowIndex(row), ColumnIndex(column));
                    addOwnText(node, tableCell ? tableCell->getTextWithTombstones() : emptyText);
                }
            }
        }
    }

    /// The places of the live lines, and the one behind all.
    template<class IsLive>
    static std::vector<unsigned long> getLinePlaces(unsigned long allCount, IsLive isLive)
    {
        std::vector<unsigned long> places;
        for (unsigned long place = 0; place < allCount; ++place)
        {
            if (isLive(place))
            {
                places.push_back(place);
            }
        }
        places.push_back(allCount);
        return places;
    }

    Nodes _nodes;
};

} // namespace Zem::DOMCollaboration::AddressModel

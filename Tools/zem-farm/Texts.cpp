#include "Texts.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"
#include "Editing/CS_Characters.h"

#include "Util_Cast.h"

#include <algorithm>

namespace ZemFarm
{

using Zem::DOMCollaboration::OperationDOMNodeType;
using namespace Zem::NodeAddressing;
namespace DOM = Zem::DOM;

namespace
{

Address::FixedChunk makeFixedChunk(OperationDOMNodeType nodeType)
{
    return Address::FixedChunk(Zem::DOMCollaboration::convertOperationNodeType(nodeType));
}

template<class... Chunks>
Address extend(Address address, Chunks... chunks)
{
    address.appendItems(std::move(chunks)...);
    return address;
}

class Finder
{
public:
    Finder(DocumentKind kind, const DOM::Document& document, Random& random)
        : _random(random)
    {
        if (kind == DocumentKind::Workbook)
        {
            addBelow(makeFixedAddress(OperationDOMNodeType::WorksheetCollection), document.getTextWithTombstones());
            return;
        }
        addText(Address(), document.getTextWithTombstones());
        if (kind == DocumentKind::Text)
        {
            addHeadersFooters(document);
        }
    }

    Places takePlaces()
    {
        return std::move(_places);
    }

private:
    void addText(const Address& owner, const DOM::TextWithTombstones& text)
    {
        const Address address = extend(owner, makeFixedChunk(OperationDOMNodeType::TextWithTombstones));
        _places._texts.push_back({address, &text});
        addBelow(address, text);
    }

    void addBelow(const Address& address, const DOM::TextWithTombstones& text)
    {
        for (const Element& element : FlatText(text)._elements)
        {
            if (element._kind != ElementKind::Block)
            {
                continue;
            }
            const Address blockAddress = extend(address, AddressInList(element._slot));
            if (const auto* shape = Zem::cast<DOM::Shape>(element._block))
            {
                addText(blockAddress, shape->getTextWithTombstones());
            }
            if (const auto* table = Zem::cast<DOM::Table>(element._block))
            {
                addTable(blockAddress, *table);
            }
        }
    }

    void addTable(const Address& tableAddress, const DOM::Table& table)
    {
        const Address address = extend(tableAddress, makeFixedChunk(OperationDOMNodeType::CellCollection));
        const unsigned long rowsCount = table.getLiveRowsCount().get();
        const unsigned long columnsCount = table.getLiveColsCount().get();
        if (rowsCount == 0 || columnsCount == 0)
        {
            return;
        }
        _places._tables.push_back({address, &table});
        for (unsigned long row = 0; row < rowsCount; ++row)
        {
            for (unsigned long column = 0; column < columnsCount; ++column)
            {
                if (table.getCell(Zem::RowIndex(row), Zem::ColumnIndex(column)))
                {
                    addCell(address, table, row, column);
                }
            }
        }
        addCell(address, table, _random.pick(rowsCount), _random.pick(columnsCount));
    }

    void addCell(const Address& cellsAddress, const DOM::Table& table, unsigned long row, unsigned long column)
    {
        static const DOM::TextWithTombstones emptyText;
        const unsigned long rowPlace = table.convertRowIndex(Zem::RowIndex(row)).get();
        const unsigned long columnPlace = table.convertColIndex(Zem::ColumnIndex(column)).get();
        const DOM::Cell* cell = table.getCell(Zem::RowIndex(row), Zem::ColumnIndex(column));
        addText(extend(cellsAddress, AddressInTable(Zem::RowIndex(rowPlace), Zem::ColumnIndex(columnPlace))),
                cell ? cell->getTextWithTombstones() : emptyText);
    }

    void addHeadersFooters(const DOM::Document& document)
    {
        const Address address = makeFixedAddress(OperationDOMNodeType::HeaderFooterPairCollection);
        for (const DOM::HeaderFooterPair& pair : document.getHeadersFooters())
        {
            const Address pairAddress =
                extend(address, AddressInMap(Zem::makeSharedConst<SimpleValueMapKey<Zem::UUID>>(pair.getUUID())));
            addText(extend(pairAddress, makeFixedChunk(OperationDOMNodeType::Header)), pair.getHeader());
            addText(extend(pairAddress, makeFixedChunk(OperationDOMNodeType::Footer)), pair.getFooter());
        }
    }

    Random& _random;
    Places _places;
};

} // namespace

Address makeFixedAddress(OperationDOMNodeType nodeType)
{
    return Address{makeFixedChunk(nodeType)};
}

unsigned long getDepth(const Address& textAddress)
{
    const auto isListed = [](const Address::Chunk& chunk)
    { return boost::get<AddressInList>(&chunk) || boost::get<AddressInMap>(&chunk); };
    return static_cast<unsigned long>(
        std::count_if(textAddress.getItems().begin(), textAddress.getItems().end(), isListed));
}

Places findPlaces(DocumentKind kind, const DOM::Document& document, Random& random)
{
    return Finder(kind, document, random).takePlaces();
}

const TextPlace* pickText(const Places& places, Random& random)
{
    if (places._texts.empty())
    {
        return nullptr;
    }
    return random.isOnceIn(2) ? &places._texts.front() : &random.pickFrom(places._texts);
}

FlatText::FlatText(const DOM::TextWithTombstones& text)
{
    const auto add = [&](ElementKind kind, const DOM::Block& block, const DOM::Run* run, char byte = '\0')
    {
        const Zem::CollaborationUtils::IndexExcludingTombstones index(_elements.size());
        _elements.push_back({kind, text.getTombstones().convertIndex(index).get(), &block, run, byte});
    };
    for (const auto& block : text.getBlocks())
    {
        const auto* paragraph = Zem::cast<DOM::Paragraph>(block.get());
        add(paragraph ? ElementKind::ParagraphTag : ElementKind::Block, *block, nullptr);
        if (!paragraph)
        {
            continue;
        }
        for (const auto& run : paragraph->getRuns())
        {
            const auto* textRun = Zem::cast<DOM::TextRun>(run.get());
            add(textRun ? ElementKind::TextRunTag : ElementKind::AtomicRun, *block, run.get());
            for (const char byte : textRun ? textRun->getText() : std::string())
            {
                const bool isContinuation = Zem::CollaborationSession::isContinuationByte(byte);
                add(isContinuation ? ElementKind::ContinuationByte : ElementKind::Character, *block, run.get(), byte);
            }
        }
        add(ElementKind::ParagraphMark, *block, nullptr);
    }
    const Zem::CollaborationUtils::IndexExcludingTombstones end(_elements.size());
    _slotsCount = text.getTombstones().convertIndex(end).get();
}

std::vector<std::size_t> FlatText::find(ElementKind kind) const
{
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < _elements.size(); ++index)
    {
        if (_elements[index]._kind == kind)
        {
            found.push_back(index);
        }
    }
    return found;
}

char getLetter(const DOM::Block& block)
{
    return DOM::visitBlock(
        block, [](const DOM::Paragraph&) { return '{'; }, [](const DOM::Table&) { return 'T'; },
        [](const DOM::SectionTag&) { return '$'; }, [](const DOM::Shape&) { return 'S'; },
        [](const DOM::FieldBlock&) { return 'F'; });
}

std::string print(const DOM::TextWithTombstones& text)
{
    const FlatText flat(text);
    std::string line;
    unsigned long slot = 0;
    for (const Element& element : flat._elements)
    {
        line.append(element._slot - slot, '.');
        slot = element._slot + 1;
        switch (element._kind)
        {
        case ElementKind::ParagraphTag:
            line += '{';
            break;
        case ElementKind::ParagraphMark:
            line += '}';
            break;
        case ElementKind::Block:
            line += getLetter(*element._block);
            break;
        case ElementKind::TextRunTag:
            line += '|';
            break;
        case ElementKind::AtomicRun:
            line += '~';
            break;
        case ElementKind::Character:
        case ElementKind::ContinuationByte:
            line += element._byte;
            break;
        }
    }
    return line.append(flat._slotsCount - slot, '.');
}

} // namespace ZemFarm

#include "TS_RecordingObserver.h"

#include "DOM_Comment.h"
#include "DOM_ConditionalFormat.h"
#include "DOM_Frame.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Note.h"
#include "DOM_Runs.h"
#include "DOM_SparseData.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_UUIDable.h"

#include <sstream>
#include <type_traits>
#include <utility>

namespace Zem::TestSupport
{

namespace
{

constexpr const char* nativeNodeTypeNames[] = {"TextDocument",
                                               "WorkbookDocument",
                                               "PresentationDocument",
                                               "Tombstone",
                                               "WorksheetCollection",
                                               "BlockCollection",
                                               "SectionTag",
                                               "Table",
                                               "Frame",
                                               "FrameCollection",
                                               "ConditionalFormat",
                                               "ConditionalFormatCollection",
                                               "FieldBlock",
                                               "CellCollection",
                                               "Cell",
                                               "Shape",
                                               "Paragraph",
                                               "RunCollection",
                                               "Run",
                                               "CharCollection",
                                               "Char",
                                               "CollectionEndMark",
                                               "HeaderFooterPairCollection",
                                               "HeaderFooterPair",
                                               "Header",
                                               "Footer",
                                               "Temporary",
                                               "DocumentProps",
                                               "ScriptCollection",
                                               "CommentCollection",
                                               "Comment",
                                               "NoteCollection",
                                               "Note",
                                               "TextStyleCollection",
                                               "TextStyle",
                                               "TableStyleCollection",
                                               "TableStyle"};

constexpr const char* blockKindNames[] = {"Paragraph", "Table", "SectionTag", "Shape", "FieldBlock"};

constexpr const char* runKindNames[] = {"TextRun",     "TabRun",   "BreakRun", "DrawingRun",
                                        "BookmarkRun", "FieldRun", "AnchorRun"};

class ChunkPrinter : public boost::static_visitor<>
{
public:
    explicit ChunkPrinter(std::ostream& stream)
        : _stream(stream)
    {
    }

    void operator()(const NodeAddressing::AddressInList& chunk) const
    {
        _stream << chunk.getIndex();
    }

    void operator()(const NodeAddressing::AddressInTable& chunk) const
    {
        _stream << '(' << chunk.getRow().get() << ',' << chunk.getColumn().get() << ')';
    }

    void operator()(const NodeAddressing::AddressInMap& chunk) const
    {
        const NodeAddressing::MapKey& key = derefPtr(chunk.getKey());
        if (const auto* name = cast<NodeAddressing::SimpleValueMapKey<std::string>>(&key))
        {
            _stream << '{' << name->getValue() << '}';
        }
        else
        {
            _stream << '{' << cast<NodeAddressing::SimpleValueMapKey<UUID>>(key).getValue().toString() << '}';
        }
    }

    void operator()(const NodeAddressing::FixedNodeAddress<DOM::NativeDOMNodeType>& chunk) const
    {
        _stream << nativeNodeTypeNames[static_cast<unsigned long>(chunk.getNodeType())];
    }

private:
    std::ostream& _stream;
};

void print(std::ostream& stream, const DOM::NativeNodeAddress& address)
{
    const char* separator = "";
    for (const DOM::NativeNodeAddress::Chunk& chunk : address.getItems())
    {
        stream << separator;
        boost::apply_visitor(ChunkPrinter(stream), chunk);
        separator = "/";
    }
}

void print(std::ostream& stream, unsigned long number)
{
    stream << number;
}

template<class Tag>
void print(std::ostream& stream, TaggedValue<unsigned long, Tag> index)
{
    stream << index.get();
}

void print(std::ostream& stream, const CollaborationUtils::IndexRange<unsigned long>& range)
{
    stream << '[' << range.getBegin() << ',' << range.getEnd() << ')';
}

void print(std::ostream& stream, const std::string& text)
{
    stream << '"' << text << '"';
}

void print(std::ostream& stream, const UUID& uuid)
{
    stream << uuid.toString();
}

/// Whatever has an identity is written by it.
template<class Element>
requires std::is_base_of_v<UUIDable, Element>
void print(std::ostream& stream, const Element& element)
{
    print(stream, element.getUUID());
}

void printElement(std::ostream& stream, const DOM::Run& run)
{
    stream << runKindNames[static_cast<std::size_t>(run.getKind())];
    if (const auto* textRun = cast<DOM::TextRun>(&run))
    {
        stream << ' ';
        print(stream, textRun->getText());
    }
}

void printElement(std::ostream& stream, const DOM::Block& block)
{
    stream << blockKindNames[static_cast<std::size_t>(block.getKind())];
}

void printElement(std::ostream& stream, const DOM::ConditionalFormat&)
{
    stream << "ConditionalFormat";
}

void printElement(std::ostream& stream, const DOM::Frame&)
{
    stream << "Frame";
}

template<class Vector>
void print(std::ostream& stream, const ReadonlyVector<Vector>& elements)
{
    const char* separator = "";
    stream << '[';
    for (const auto& element : elements)
    {
        stream << separator;
        printElement(stream, element);
        separator = ", ";
    }
    stream << ']';
}

/// Its identity, then where it has cells.
template<class Style>
void print(std::ostream& stream, const DOM::SparseData<Style>& data)
{
    stream << "id " << data._id << " cells {";
    const char* separator = "";
    for (const auto& cell : data._cells)
    {
        stream << separator << cell.first.get();
        separator = ", ";
    }
    stream << '}';
}

} // namespace

std::string describe(const DOM::NativeNodeAddress& address)
{
    std::ostringstream stream;
    print(stream, address);
    return stream.str();
}

std::vector<std::string> RecordingObserver::takeLines()
{
    return std::exchange(_lines, {});
}

template<class... Arguments>
void RecordingObserver::record(const char* operation, const Arguments&... arguments)
{
    std::ostringstream stream;
    stream << operation;
    const char* separator = "(";
    std::vector<std::unique_ptr<CollaborationEngine::DataValue>> values;
    const auto recordArgument = [&](const auto& argument)
    {
        if constexpr (std::is_same_v<decltype(argument), const CollaborationEngine::DataValue&>)
        {
            values.push_back(cloneToUnique(argument));
        }
        else
        {
            stream << std::exchange(separator, ", ");
            print(stream, argument);
        }
    };
    (recordArgument(arguments), ...);
    stream << ')';
    _lines.push_back(stream.str());
    if (!values.empty())
    {
        _values.push_back({std::move(values.at(0)), std::move(values.at(1))});
    }
}

#define ZEM_RECORD(name, parameters, arguments)                                                                        \
    void RecordingObserver::name parameters                                                                            \
    {                                                                                                                  \
        const auto recordAll = [&](const auto&... values) { record(#name, values...); };                               \
        recordAll arguments;                                                                                           \
    }

ZEM_NOTIFICATIONS(ZEM_RECORD)

#undef ZEM_RECORD

} // namespace Zem::TestSupport

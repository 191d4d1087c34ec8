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
    ((stream << std::exchange(separator, ", "), print(stream, arguments)), ...);
    stream << ')';
    _lines.push_back(stream.str());
}

void RecordingObserver::onRunPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onRunPropsChanged", address, propertyId);
}

void RecordingObserver::onParaPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onParaPropsChanged", address, propertyId);
}

void RecordingObserver::onFramePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onFramePropsChanged", address, propertyId);
}

void RecordingObserver::onCellPropsChanged(const DOM::NativeNodeAddress& address,
                                           const CollaborationEngine::DataValue& oldValue,
                                           const CollaborationEngine::DataValue& newValue, unsigned long propertyId)
{
    record("onCellPropsChanged", address, propertyId);
    _values.push_back({cloneToUnique(oldValue), cloneToUnique(newValue)});
}

void RecordingObserver::onHeaderFooterPairPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onHeaderFooterPairPropsChanged", address, propertyId);
}

void RecordingObserver::onDocumentPropsChanged(unsigned long propertyId)
{
    record("onDocumentPropsChanged", propertyId);
}

void RecordingObserver::onCharsRemoved(const DOM::NativeNodeAddress& address,
                                       CollaborationUtils::IndexExcludingTombstones begin, const std::string& removed)
{
    record("onCharsRemoved", address, begin, removed);
}

void RecordingObserver::onCharsInserted(const DOM::NativeNodeAddress& address,
                                        const CollaborationUtils::IndexRange<unsigned long>& range)
{
    record("onCharsInserted", address, range);
}

void RecordingObserver::onRunsRemoved(const DOM::NativeNodeAddress& address,
                                      CollaborationUtils::IndexExcludingTombstones begin,
                                      const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed)
{
    record("onRunsRemoved", address, begin, removed);
}

void RecordingObserver::onRunsInserted(const DOM::NativeNodeAddress& address,
                                       const CollaborationUtils::IndexRange<unsigned long>& range)
{
    record("onRunsInserted", address, range);
}

void RecordingObserver::onBlocksRemoved(const DOM::NativeNodeAddress& address,
                                        CollaborationUtils::IndexExcludingTombstones begin,
                                        const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed)
{
    record("onBlocksRemoved", address, begin, removed);
}

void RecordingObserver::onBlocksInserted(const DOM::NativeNodeAddress& address,
                                         const CollaborationUtils::IndexRange<unsigned long>& range)
{
    record("onBlocksInserted", address, range);
}

void RecordingObserver::onBlockMoved(const DOM::NativeNodeAddress& address,
                                     CollaborationUtils::IndexExcludingTombstones from,
                                     CollaborationUtils::IndexExcludingTombstones to)
{
    record("onBlockMoved", address, from, to);
}

void RecordingObserver::onRowStyleChanged(const DOM::NativeNodeAddress& table, RowIndex row, unsigned long propertyId)
{
    record("onRowStyleChanged", table, row, propertyId);
}

void RecordingObserver::onRowRemoved(const DOM::NativeNodeAddress& table, RowIndex row,
                                     const DOM::SparseData<DOM::RowStyle>& removed)
{
    record("onRowRemoved", table, row, removed);
}

void RecordingObserver::onRowInserted(const DOM::NativeNodeAddress& table, RowIndex row)
{
    record("onRowInserted", table, row);
}

void RecordingObserver::onColumnStyleChanged(const DOM::NativeNodeAddress& table, ColumnIndex column,
                                             unsigned long propertyId)
{
    record("onColumnStyleChanged", table, column, propertyId);
}

void RecordingObserver::onColumnRemoved(const DOM::NativeNodeAddress& table, ColumnIndex column,
                                        const DOM::SparseData<DOM::ColumnStyle>& removed)
{
    record("onColumnRemoved", table, column, removed);
}

void RecordingObserver::onColumnInserted(const DOM::NativeNodeAddress& table, ColumnIndex column)
{
    record("onColumnInserted", table, column);
}

void RecordingObserver::onHeaderFooterInserted(const UUID& uuid)
{
    record("onHeaderFooterInserted", uuid);
}

void RecordingObserver::onHeaderFooterRemoved(const DOM::HeaderFooterPair& removed)
{
    record("onHeaderFooterRemoved", removed);
}

void RecordingObserver::onConditionalFormatMoved(const DOM::NativeNodeAddress& address,
                                                 CollaborationUtils::IndexExcludingTombstones from,
                                                 CollaborationUtils::IndexExcludingTombstones to)
{
    record("onConditionalFormatMoved", address, from, to);
}

void RecordingObserver::onConditionalFormatsRemoved(
    const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
    const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>& removed)
{
    record("onConditionalFormatsRemoved", address, index, removed);
}

void RecordingObserver::onConditionalFormatsInserted(const DOM::NativeNodeAddress& address,
                                                     const CollaborationUtils::IndexRange<unsigned long>& range)
{
    record("onConditionalFormatsInserted", address, range);
}

void RecordingObserver::onConditionalFormatChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onConditionalFormatChanged", address, propertyId);
}

void RecordingObserver::onFramesRemoved(const DOM::NativeNodeAddress& address,
                                        CollaborationUtils::IndexExcludingTombstones index,
                                        const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>& removed)
{
    record("onFramesRemoved", address, index, removed);
}

void RecordingObserver::onFramesInserted(const DOM::NativeNodeAddress& address,
                                         const CollaborationUtils::IndexRange<unsigned long>& range)
{
    record("onFramesInserted", address, range);
}

void RecordingObserver::onTablePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                            const CollaborationEngine::DataValue& oldValue,
                                            const CollaborationEngine::DataValue& newValue)
{
    record("onTablePropsChanged", address, propertyId);
    _values.push_back({cloneToUnique(oldValue), cloneToUnique(newValue)});
}

void RecordingObserver::onScriptRemoved(const std::string& name)
{
    record("onScriptRemoved", name);
}

void RecordingObserver::onScriptInserted(const std::string& name)
{
    record("onScriptInserted", name);
}

void RecordingObserver::onCommentInserted(const UUID& uuid)
{
    record("onCommentInserted", uuid);
}

void RecordingObserver::onCommentRemoved(const DOM::Comment& removed)
{
    record("onCommentRemoved", removed);
}

void RecordingObserver::onCommentPropsChanged(const UUID& uuid, unsigned long propertyId)
{
    record("onCommentPropsChanged", uuid, propertyId);
}

void RecordingObserver::onNoteInserted(const UUID& uuid)
{
    record("onNoteInserted", uuid);
}

void RecordingObserver::onNoteRemoved(const DOM::Note& removed)
{
    record("onNoteRemoved", removed);
}

void RecordingObserver::onNotePropsChanged(const UUID& uuid, unsigned long propertyId)
{
    record("onNotePropsChanged", uuid, propertyId);
}

void RecordingObserver::onFieldBlockPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onFieldBlockPropsChanged", address, propertyId);
}

void RecordingObserver::onSectionPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId)
{
    record("onSectionPropsChanged", address, propertyId);
}

void RecordingObserver::onTextStyleInserted(const UUID& uuid)
{
    record("onTextStyleInserted", uuid);
}

void RecordingObserver::onTextStyleRemoved(const DOM::NamedTextStyle& removed)
{
    record("onTextStyleRemoved", removed);
}

void RecordingObserver::onTextStylePropsChanged(const UUID& uuid, unsigned long propertyId)
{
    record("onTextStylePropsChanged", uuid, propertyId);
}

void RecordingObserver::onTableStyleInserted(const UUID& uuid)
{
    record("onTableStyleInserted", uuid);
}

void RecordingObserver::onTableStyleRemoved(const DOM::NamedTableStyle& removed)
{
    record("onTableStyleRemoved", removed);
}

void RecordingObserver::onTableStylePropsChanged(const UUID& uuid, unsigned long propertyId)
{
    record("onTableStylePropsChanged", uuid, propertyId);
}

} // namespace Zem::TestSupport

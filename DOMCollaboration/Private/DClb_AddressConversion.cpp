// The conversion of addresses between the two worlds. Both directions walk the adapters of both worlds side by side. An
// index is moved in or out of the space that counts tombstones right where its step is taken: only the collection that
// the step starts from is needed for that, so no second walk is.

#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CellNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_DocumentNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"

#include "DOM_Paragraph.h"
#include "DOM_Table.h"

#include <utility>

namespace Zem::DOMCollaboration::ElementPathUtils
{

namespace
{

using CollaborationUtils::TombstonesStorage;
using NodeAdapterDetails::isOneOf;
using NodeAddressing::AddressInList;
using NodeAddressing::AddressInMap;
using NodeAddressing::AddressInTable;

using NativeChunk = NativeNodeAddress::Chunk;
using OperationChunk = OperationNodeAddress::Chunk;

/// How the step out of a node is converted.
enum class StepKind : unsigned char
{
    Copy,  ///< One chunk for one.
    Text,  ///< Up to five chunks of the tree, and one of the flat text.
    Inner, ///< A node inside the tree's stretch, which a text step passes over.
    Leaf   ///< There is no step.
};

template<class Tag, class NodeType>
using CopyNodes = TypeList<
    GenericTextDocumentNodeAdapter<Tag, NodeType, true>, GenericWorkbookDocumentNodeAdapter<Tag, NodeType, true>,
    GenericPresentationDocumentNodeAdapter<Tag, NodeType, true>, GenericTemporaryDOMNodeAdapter<Tag, NodeType, true>,
    GenericTableNodeAdapter<Tag, NodeType, true>, GenericCellCollectionNodeAdapter<Tag, NodeType, true>,
    GenericCellNodeAdapter<Tag, NodeType, true>, GenericShapeNodeAdapter<Tag, NodeType, true>,
    GenericHeaderFooterPairCollectionNodeAdapter<Tag, NodeType, true>,
    GenericHeaderFooterPairNodeAdapter<Tag, NodeType, true>, GenericHeaderOrFooterNodeAdapter<Tag, NodeType, true>,
    GenericScriptCollectionNodeAdapter<Tag, NodeType, true>, GenericCommentCollectionNodeAdapter<Tag, NodeType, true>,
    GenericNoteCollectionNodeAdapter<Tag, NodeType, true>, GenericFrameCollectionNodeAdapter<Tag, NodeType, true>,
    GenericConditionalFormatCollectionNodeAdapter<Tag, NodeType, true>,
    GenericTextStyleCollectionNodeAdapter<Tag, NodeType, true>,
    GenericTableStyleCollectionNodeAdapter<Tag, NodeType, true>>;

template<class Tag, class NodeType>
using LeafNodes = TypeList<
    GenericCharNodeAdapter<Tag, NodeType, true>, GenericCollectionEndMarkNodeAdapter<Tag, NodeType, true>,
    GenericTombstoneNodeAdapter<Tag, NodeType, true>, GenericFrameNodeAdapter<Tag, NodeType, true>,
    GenericConditionalFormatNodeAdapter<Tag, NodeType, true>, GenericDocumentPropsNodeAdapter<Tag, NodeType, true>,
    GenericAtomicBlockNodeAdapter<Tag, NodeType, DOM::FieldBlock, true>,
    GenericSectionTagNodeAdapter<Tag, NodeType, true>, GenericRunNodeAdapter<true>,
    GenericParagraphTagNodeAdapter<true>, GenericParagraphMarkNodeAdapter<true>, GenericRunTagNodeAdapter<true>>;

/// The elements of keyed collections have no children in either world. The native side lets the step itself find that
/// out, as it does for whatever is reached by a key.
template<class Tag, class NodeType>
using ElementNodes =
    TypeList<GenericCommentNodeAdapter<Tag, NodeType, true>, GenericNoteNodeAdapter<Tag, NodeType, true>,
             GenericTextStyleNodeAdapter<Tag, NodeType, true>, GenericTableStyleNodeAdapter<Tag, NodeType, true>>;

using TextNodes = TypeList<GenericTextWithTombstonesNodeAdapter<true>, GenericBlockCollectionNodeAdapter<true>>;

using InnerNodes = TypeList<GenericParagraphNodeAdapter<true>, GenericRunCollectionNodeAdapter<true>,
                            GenericTextRunNodeAdapter<true>, GenericCharCollectionNodeAdapter<true>>;

template<class Tag, class NodeType, class Adapter>
constexpr StepKind getStepKindOf()
{
    constexpr bool isNative = std::is_same_v<Tag, NativeNodeAddressTag>;
    constexpr bool isElement = isOneOf<Adapter, ElementNodes<Tag, NodeType>>;
    constexpr bool isCopy = isOneOf<Adapter, CopyNodes<Tag, NodeType>> || (isElement && isNative);
    constexpr bool isLeaf = isOneOf<Adapter, LeafNodes<Tag, NodeType>> || (isElement && !isNative);
    constexpr bool isText = isOneOf<Adapter, TextNodes>;
    constexpr bool isInner = isOneOf<Adapter, InnerNodes>;
    static_assert(int(isCopy) + int(isLeaf) + int(isText) + int(isInner) == 1, "Each adapter has its one kind of step");
    return isCopy ? StepKind::Copy : isLeaf ? StepKind::Leaf : isText ? StepKind::Text : StepKind::Inner;
}

/// Whether the step out of a node is that of a text. Fails for nodes that no step of a conversion starts from.
template<class Tag, class NodeType>
bool isTextStep(const DOMNodeAdapter<Tag, NodeType, true>& adapter)
{
    const auto kind = visitWith<StepKind>(adapter, []<class Adapter>(const Adapter&)
                                          { return getStepKindOf<Tag, NodeType, Adapter>(); });
    ZEM_ASSERT_MESSAGE(kind != StepKind::Inner, "Intermediate node shouldn't be processed here");
    ZEM_ASSERT_MESSAGE(kind != StepKind::Leaf, "Leave node doesn't have children");
    return kind == StepKind::Text;
}

NativeDOMNodeType convertNodeType(unsigned long nodeType)
{
    return getCorrespondingNodeType(static_cast<OperationDOMNodeType>(nodeType));
}

unsigned long convertNodeType(NativeDOMNodeType nodeType)
{
    return convertOperationNodeType(getCorrespondingNodeType(nodeType));
}

/// A chunk in terms of the other world, its indices unchanged.
template<class Target, class Source>
typename Target::Chunk convertChunk(const typename Source::Chunk& chunk)
{
    return boost::apply_visitor(Overloads{[](const typename Source::FixedChunk& fixed) -> typename Target::Chunk
                                          { return typename Target::FixedChunk(convertNodeType(fixed.getNodeType())); },
                                          [](const auto& other) -> typename Target::Chunk { return other; }},
                                chunk);
}

bool excludeTombstones(const TombstonesStorage& tombstones, OperationChunk& chunk)
{
    auto& address = boost::get<AddressInList>(chunk);
    // Behind the last tombstone all places count as live: the place behind all is converted as any other.
    const auto index = tombstones.convertIndex(IndexIncludingTombstones(address.getIndex()));
    if (!index)
    {
        return false;
    }
    address.setIndex(index->get());
    return true;
}

bool includeTombstones(const TombstonesStorage& tombstones, OperationChunk& chunk)
{
    auto& address = boost::get<AddressInList>(chunk);
    address.setIndex(tombstones.convertIndex(IndexExcludingTombstones(address.getIndex())).get());
    return true;
}

bool excludeTombstones(const DOM::Table& table, OperationChunk& chunk)
{
    auto& address = boost::get<AddressInTable>(chunk);
    const auto row = table.convertRowIndex(IndexIncludingTombstones(address.getRow().get()));
    const auto column = table.convertColIndex(IndexIncludingTombstones(address.getColumn().get()));
    if (!row || !column)
    {
        return false;
    }
    address = AddressInTable(*row, *column);
    return true;
}

bool includeTombstones(const DOM::Table& table, OperationChunk& chunk)
{
    auto& address = boost::get<AddressInTable>(chunk);
    address = AddressInTable(RowIndex(table.convertRowIndex(address.getRow()).get()),
                             ColumnIndex(table.convertColIndex(address.getColumn()).get()));
    return true;
}

/// Moves the index of a step out of a node into the space that counts tombstones, or out of it.
/// Fails: "result" when the index, counting tombstones, is that of one.
void convertIndex(const OperationNodeAdapter<true>& adapter, OperationChunk& chunk, bool excludingToIncluding)
{
    const auto convert = [&](const auto& list)
    { return excludingToIncluding ? includeTombstones(list, chunk) : excludeTombstones(list, chunk); };
    const bool result = visitWith<bool>(
        adapter, [&](const GenericTextWithTombstonesNodeAdapter<true>& text) { return convert(text.getTombstones()); },
        [&](const InOperationWorld<GenericCellCollectionNodeAdapter, true>& cells)
        { return convert(cells.getTable()); },
        [&](const InOperationWorld<GenericFrameCollectionNodeAdapter, true>& frames)
        { return convert(frames.getFrames().getTombstones()); },
        [&](const InOperationWorld<GenericConditionalFormatCollectionNodeAdapter, true>& formats)
        { return convert(formats.getConditionalFormats().getTombstones()); },
        [](const InOperationWorld<GenericTombstoneNodeAdapter, true>&) -> bool
        { ZEM_FAIL("Tombstone adaptor shouldn't met."); },
        [](const auto&) { return true; });
    ZEM_ASSERT(result);
}

/// The adapters of one place of an address in both worlds.
struct Walkers
{
    explicit Walkers(const DocumentAdapterWithNodeAdapter& document)
        : _operation(document.createOperationNodeAdapter())
        , _native(document.createNodeAdapter())
    {
        requireRoot(_operation.get());
        requireRoot(_native.get());
    }

    static void requireRoot(const void* currentAdapter)
    {
        ZEM_ASSERT(currentAdapter);
    }

    std::unique_ptr<OperationNodeAdapter<true>> _operation;
    std::unique_ptr<NativeNodeAdapter<true>> _native;
};

/// From the block collection, where both walkers are. Appends the one place of the flat text.
void convertTextStep(Walkers& walkers, NativeNodeAddress::Items::const_iterator& chunk,
                     const NativeNodeAddress::Items::const_iterator& end, OperationNodeAddress& result)
{
    const NativeChunk& blockChunk = *chunk;
    const IndexExcludingTombstones planeIndex = getPlaneIndexAndMoveToNextOperationElement(walkers._native, chunk, end);
    OperationChunk target = AddressInList(planeIndex.get());
    convertIndex(*walkers._operation, target, true);
    result.appendItems(target);
    if (chunk != end)
    {
        // The address can only go on below an atomic block, which is known by its index: no second walk finds it. Below
        // anything else the native walker comes to a leaf before this one is asked.
        auto& text = cast<GenericTextWithTombstonesNodeAdapter<true>>(*walkers._operation);
        const unsigned long blockIndex = boost::get<AddressInList>(blockChunk).getIndex();
        walkers._operation = text.createChildAdapterAt(blockIndex < text.getBlocks().size()
                                                           ? PlanePlace{PlaceKind::AtomicBlock, blockIndex, 0, 0}
                                                           : PlanePlace{PlaceKind::TextEnd, blockIndex, 0, 0});
    }
}

/// The way down the tree to a place of the plane.
void appendWayTo(const PlanePlace& place, NativeNodeAddress& result)
{
    using FixedChunk = NativeNodeAddress::FixedChunk;
    result.appendItems(AddressInList(place._blockIndex));
    switch (place._kind)
    {
    case PlaceKind::TextEnd:
    case PlaceKind::AtomicBlock:
    case PlaceKind::ParaTag:
        return;
    case PlaceKind::ParaMark:
    case PlaceKind::AtomicRun:
    case PlaceKind::TextRunTag:
        result.appendItems(FixedChunk(NativeDOMNodeType::RunCollection), AddressInList(place._runIndex));
        return;
    case PlaceKind::Char:
        result.appendItems(FixedChunk(NativeDOMNodeType::RunCollection), AddressInList(place._runIndex),
                           FixedChunk(NativeDOMNodeType::CharCollection), AddressInList(place._byteIndex));
        return;
    }
    ZEM_FAIL("Invalid enum value");
}

/// From the flat text, where both walkers are. Appends the way down the tree.
void convertTextStep(Walkers& walkers, const OperationChunk& chunk, bool isLast, NativeNodeAddress& result)
{
    auto& text = cast<GenericTextWithTombstonesNodeAdapter<true>>(*walkers._operation);
    const IndexExcludingTombstones planeIndex(boost::get<AddressInList>(chunk).getIndex());
    const boost::optional<PlanePlace> place = text.findPlace(planeIndex);
    ZEM_ASSERT_MESSAGE(place, "There is no element corresponding to the passed address");
    const unsigned long firstOfWay = result.getSize();
    appendWayTo(*place, result);
    if (isLast)
    {
        return;
    }
    walkers._operation = text.createChildAdapterAt(*place);
    for (unsigned long index = firstOfWay; index < result.getSize(); ++index)
    {
        walkers._native = walkers._native->createChildAdapter(result.getItem(index), false);
    }
}

} // namespace

OperationNodeAddress convertNodeAddress(const DocumentAdapterWithNodeAdapter& document,
                                        const NativeNodeAddress& address)
{
    OperationNodeAddress result;
    result.reserve(address.getSize());
    Walkers walkers(document);
    const auto end = address.getItems().end();
    for (auto chunk = address.getItems().begin(); chunk != end;)
    {
        if (isTextStep(*walkers._native))
        {
            convertTextStep(walkers, chunk, end, result);
            continue;
        }
        OperationChunk target = convertChunk<OperationNodeAddress, NativeNodeAddress>(*chunk);
        walkers._native = walkers._native->createChildAdapter(*chunk, false);
        auto nextOperation = walkers._operation->createChildAdapter(target, false);
        convertIndex(*walkers._operation, target, true);
        walkers._operation = std::move(nextOperation);
        result.appendItems(std::move(target));
        ++chunk;
    }
    return result;
}

NativeNodeAddress convertNodeAddress(const DocumentAdapterWithNodeAdapter& document,
                                     const OperationNodeAddress& address)
{
    NativeNodeAddress result;
    result.reserve(address.getSize());
    Walkers walkers(document);
    for (unsigned long index = 0; index < address.getSize(); ++index)
    {
        OperationChunk chunk = address.getItem(index);
        convertIndex(*walkers._operation, chunk, false);
        if (isTextStep(*walkers._operation))
        {
            convertTextStep(walkers, chunk, index + 1 == address.getSize(), result);
            continue;
        }
        // The step is taken before it is converted: one that the node doesn't have may have no counterpart at all.
        walkers._operation = walkers._operation->createChildAdapter(chunk, false);
        result.appendItems(convertChunk<NativeNodeAddress, OperationNodeAddress>(chunk));
        walkers._native = walkers._native->createChildAdapter(result.getItem(result.getSize() - 1), false);
    }
    return result;
}

} // namespace Zem::DOMCollaboration::ElementPathUtils

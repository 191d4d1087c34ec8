#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_LeafNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TextOwnerNodeAdapters.h"
#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include "DOM_FieldBlock.h"
#include "DOM_Paragraph.h"

#include "Util_Cast.h"

#include <utility>

namespace Zem::DOMCollaboration::ElementPathUtils
{

namespace
{

using NativeChunkIterator = NativeNodeAddress::Items::const_iterator;

/// Walks from a root. Stops early, with null, where there is no child and `isRequired` is false.
template<class Adapter, class Address>
std::unique_ptr<Adapter> walk(std::unique_ptr<Adapter> currentAdapter, const Address& address, bool includingTombstones,
                              bool isRequired)
{
    ZEM_ASSERT(currentAdapter);
    for (const typename Address::Chunk& chunk : address.getItems())
    {
        if (isRequired)
        {
            currentAdapter = currentAdapter->createChildAdapter(chunk, includingTombstones);
            ZEM_ASSERT(currentAdapter);
            continue;
        }
        currentAdapter = currentAdapter->createChildAdapterIfPossible(chunk, includingTombstones);
        if (!currentAdapter)
        {
            return nullptr;
        }
    }
    return currentAdapter;
}

/// Whether the plane has one place for a child of a block collection and all below it.
bool isOnePlaceOfBlocks(const NativeNodeAdapter<true>& adapter)
{
    return visitWith<bool>(
        adapter, [](const InNativeWorld<GenericTableNodeAdapter, true>&) { return true; },
        [](const InNativeWorld<GenericSectionTagNodeAdapter, true>&) { return true; },
        [](const InNativeWorld<GenericShapeNodeAdapter, true>&) { return true; },
        [](const GenericAtomicBlockNodeAdapter<NativeNodeAddressTag, NativeDOMNodeType, DOM::FieldBlock, true>&)
        { return true; },
        [](const InNativeWorld<GenericCollectionEndMarkNodeAdapter, true>&) { return true; },
        [](const GenericParagraphNodeAdapter<true>&) { return false; },
        [](const auto&) -> bool { ZEM_FAIL("Unexpected node adapter in block collection."); });
}

/// The same for a child of a run collection.
bool isOnePlaceOfRuns(const NativeNodeAdapter<true>& adapter)
{
    return visitWith<bool>(
        adapter, [](const GenericRunNodeAdapter<true>&) { return true; },
        [](const InNativeWorld<GenericCollectionEndMarkNodeAdapter, true>& endMarkAdapter)
        {
            ZEM_ASSERT(endMarkAdapter.getCollectionType() == NativeDOMNodeType::RunCollection);
            return true;
        },
        [](const GenericTextRunNodeAdapter<true>&) { return false; },
        [](const auto&) -> bool { ZEM_FAIL("Unexpected node adapter in run collection."); });
}

void move(std::unique_ptr<NativeNodeAdapter<true>>& adapter, NativeChunkIterator& currentAddressChunk)
{
    adapter = adapter->createChildAdapter(*currentAddressChunk, false);
    ++currentAddressChunk;
}

/// Moves by the step to a node's collection and by the step to one of its items. Returns the item's index.
unsigned long moveToItem(std::unique_ptr<NativeNodeAdapter<true>>& adapter, NativeChunkIterator& currentAddressChunk,
                         const NativeChunkIterator& end)
{
    move(adapter, currentAddressChunk);
    ZEM_ASSERT(currentAddressChunk != end);
    const NativeNodeAddress::Chunk& itemChunk = *currentAddressChunk;
    move(adapter, currentAddressChunk);
    return boost::get<NodeAddressing::AddressInList>(itemChunk).getIndex();
}

} // namespace

std::unique_ptr<OperationNodeAdapter<false>> createDOMNodeAdapter(DocumentAdapterWithNodeAdapter& document,
                                                                  const OperationNodeAddress& address)
{
    return walk(document.createOperationNodeAdapter(), address, true, true);
}

std::unique_ptr<OperationNodeAdapter<true>> createDOMNodeAdapter(const DocumentAdapterWithNodeAdapter& document,
                                                                 const OperationNodeAddress& address)
{
    return walk(document.createOperationNodeAdapter(), address, true, true);
}

std::unique_ptr<NativeNodeAdapter<false>> createDOMNodeAdapter(DocumentAdapterWithNodeAdapter& document,
                                                               const NativeNodeAddress& address)
{
    return walk(document.createNodeAdapter(), address, false, true);
}

std::unique_ptr<NativeNodeAdapter<true>> createDOMNodeAdapter(const DocumentAdapterWithNodeAdapter& document,
                                                              const NativeNodeAddress& address)
{
    return walk(document.createNodeAdapter(), address, false, true);
}

std::unique_ptr<OperationNodeAdapter<false>> createDOMNodeAdapterIfPossible(DocumentAdapterWithNodeAdapter& document,
                                                                            const OperationNodeAddress& address)
{
    return walk(document.createOperationNodeAdapter(), address, true, false);
}

std::unique_ptr<OperationNodeAdapter<true>>
createDOMNodeAdapterIfPossible(const DocumentAdapterWithNodeAdapter& document, const OperationNodeAddress& address)
{
    return walk(document.createOperationNodeAdapter(), address, true, false);
}

void trimAddressToLive(const DocumentAdapterWithNodeAdapter& document, OperationNodeAddress& address)
{
    std::unique_ptr<OperationNodeAdapter<true>> currentAdapter = document.createOperationNodeAdapter();
    ZEM_ASSERT(currentAdapter);
    for (unsigned long index = 0; index < address.getSize(); ++index)
    {
        currentAdapter = currentAdapter->createChildAdapter(address.getItem(index), true);
        if (cast<InOperationWorld<GenericTombstoneNodeAdapter, true>>(currentAdapter.get()))
        {
            address.trimAtEnd(address.getSize() - index);
            return;
        }
    }
}

IndexExcludingTombstones getPlaneIndexAndMoveToNextOperationElement(std::unique_ptr<NativeNodeAdapter<true>>& adapter,
                                                                    NativeChunkIterator& currentAddressChunk,
                                                                    const NativeChunkIterator& end)
{
    const ReadonlyBlocks blocks = cast<GenericBlockCollectionNodeAdapter<true>>(derefPtr(adapter)).getBlocks();
    IndexExcludingTombstones planeIndex = TextWithTombstonesPositionUtils::getPlaneIndexOfBlock(
        blocks, boost::get<NodeAddressing::AddressInList>(*currentAddressChunk).getIndex());
    move(adapter, currentAddressChunk);
    if (currentAddressChunk == end || isOnePlaceOfBlocks(*adapter))
    {
        return planeIndex;
    }

    const ReadonlyRuns runs(cast<GenericParagraphNodeAdapter<true>>(*adapter).getParagraph().getRuns());
    const unsigned long runIndex = moveToItem(adapter, currentAddressChunk, end);
    planeIndex += TextWithTombstonesPositionUtils::getPlaneIndexOfRun(runs, runIndex);
    if (currentAddressChunk == end || isOnePlaceOfRuns(*adapter))
    {
        return planeIndex;
    }

    const unsigned long charIndex = moveToItem(adapter, currentAddressChunk, end);
    ZEM_ASSERT(currentAddressChunk == end);
    // The run's own tag stands before its characters.
    return planeIndex + (charIndex + 1);
}

unsigned long getTableIndexOfLastTable(const NativeNodeAddress& address)
{
    const boost::optional<NativeNodeAddress> cells =
        DOM::NodeAddressUtils::getCutAfterLastCollection(address, NativeDOMNodeType::CellCollection);
    const auto requireValue = [](const auto& opt)
    {
        ZEM_ASSERT(opt);
        return *opt;
    };
    const NativeNodeAddress toCells = requireValue(cells);
    const unsigned long blocksIndex =
        requireValue(DOM::NodeAddressUtils::findLastItem(toCells, NativeDOMNodeType::BlockCollection));
    return boost::get<NodeAddressing::AddressInList>(toCells.getItem(blocksIndex + 1)).getIndex();
}

OperationDOMNodeType getCorrespondingNodeType(NativeDOMNodeType nodeType)
{
    const auto number = static_cast<unsigned long>(nodeType);
    if (number >= correspondingNodeTypes.size())
    {
        ZEM_FAIL("Invalid code branch");
    }
    const std::optional<OperationDOMNodeType>& operation = correspondingNodeTypes[number]._operation;
    ZEM_ASSERT_MESSAGE(operation, "No corresponding node type");
    return *operation;
}

NativeDOMNodeType getCorrespondingNodeType(OperationDOMNodeType nodeType)
{
    const unsigned long number = convertOperationNodeType(nodeType);
    if (number >= NodeTypesDetails::nativeByOperation.size())
    {
        ZEM_FAIL("Invalid code branch");
    }
    return NodeTypesDetails::nativeByOperation[number];
}

} // namespace Zem::DOMCollaboration::ElementPathUtils

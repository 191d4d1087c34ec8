#include "Text/DClb_TextContents.h"

#include "DClb_ElementPathUtils.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"

#include "DOM_Blocks.h"
#include "DOM_Table.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

namespace Zem::DOMCollaboration
{

using CollaborationEngine::ListModificationOperation;
using CollaborationEngine::ListMultirangeOperationImpl;
using CollaborationEngine::OperationNodeAddress;
using CollaborationUtils::IndexIncludingTombstones;

namespace
{

/// Takes down what the cell at `chunk` of `table` means for the text below it.
void enterCell(TextWithTombstonesInfo& info, const DOM::Table& table, const NodeAddressing::AddressInTable& chunk)
{
    const auto requireLive = [](const auto& opt)
    {
        ZEM_ASSERT(opt);
        return *opt;
    };
    const RowIndex row = requireLive(table.convertRowIndex(IndexIncludingTombstones(chunk.getRow().get())));
    const ColumnIndex column = requireLive(table.convertColIndex(IndexIncludingTombstones(chunk.getColumn().get())));
    if (table.getMergedCellRoot(row, column) || table.getPivotRoot(row, column))
    {
        info._isAccessibleCell = false;
    }
}

/// Looks at one step of the way to the text, before it is taken.
void inspectStep(TextWithTombstonesInfo& info, const DOM::Table*& currentTable, OperationNodeAdapter<false>& adapter,
                 const OperationNodeAddress::Chunk& chunk)
{
    const auto* castAddress = boost::get<NodeAddressing::AddressInTable>(&chunk);
    if (const auto* cells =
            cast<GenericCellCollectionNodeAdapter<CollaborationEngine::OperationNodeAddressTag, unsigned long, false>>(
                &adapter))
    {
        currentTable = &cells->getTable();
        ZEM_ASSERT(castAddress);
        info._isInCell = true;
    }
    if (castAddress)
    {
        ZEM_ASSERT(currentTable);
        enterCell(info, *currentTable, *castAddress);
    }
}

} // namespace

BlocksContentType getContentType(const DOM::Block& block)
{
    if (block.getKind() != DOM::BlockKind::FieldBlock)
    {
        return BlocksContentType::RichText;
    }
    const auto& fieldInfo = static_cast<const DOM::FieldBlock&>(block).getFieldInfo();
    return boost::get<DOM::TableOfContentsInfo>(&fieldInfo) ? BlocksContentType::RichText
                                                            : BlocksContentType::FormulaOrData;
}

BlocksContentType getContentType(const DOM::Blocks& blocks)
{
    return blocks.empty() ? BlocksContentType::Empty : getContentType(derefPtr(blocks.front()));
}

template<class Operation>
BlocksContentType getTypeOfAddedData(const ListMultirangeOperationImpl<Operation>& operation)
{
    for (const Operation& nestedOperation : operation.getNestedOperations())
    {
        const TextWithTombstonesElementVector& elements = getElements(nestedOperation);
        if (elements.empty())
        {
            continue;
        }
        const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&elements.front());
        return block ? getContentType(derefPtr(*block)) : BlocksContentType::RichText;
    }
    return BlocksContentType::Empty;
}

template BlocksContentType
getTypeOfAddedData(const ListMultirangeOperationImpl<ListModificationOperation<CollaborationEngine::InsertTag>>&);
template BlocksContentType getTypeOfAddedData(
    const ListMultirangeOperationImpl<ListModificationOperation<CollaborationEngine::MarkAsRemovedTag>>&);
template BlocksContentType
getTypeOfAddedData(const ListMultirangeOperationImpl<ListModificationOperation<CollaborationEngine::RestoreTag>>&);

TextWithTombstonesInfo getTextWithTombstonesInfo(DocumentAdapterWithNodeAdapter& document,
                                                 const OperationNodeAddress& address)
{
    TextWithTombstonesInfo info;
    const DOM::Table* currentTable = nullptr;
    std::unique_ptr<OperationNodeAdapter<false>> adapter = document.createOperationNodeAdapter();
    for (const OperationNodeAddress::Chunk& chunk : address.getItems())
    {
        inspectStep(info, currentTable, *adapter, chunk);
        adapter = adapter->createChildAdapter(chunk, true);
    }
    const bool isText = cast<TextWithTombstonesInfo::TextAdapter>(adapter.get()) != nullptr;
    ZEM_ASSERT_MESSAGE(isText, "!isPtrNull(dest)");
    info._textWithTombstonesAdapter = std::move(adapter);

    const bool isInCell = info._isInCell;
    const BlocksContentType contentType = getContentType(info.getAdapter().getTextWithTombstones().getBlocks());
    ZEM_ASSERT(contentType != BlocksContentType::FormulaOrData || isInCell);
    info._contentType = contentType;
    info._nativeAddress = ElementPathUtils::convertNodeAddress(document, address);
    return info;
}

bool shouldChangeDom(const TextWithTombstonesInfo& info, BlocksContentType typeOfAddedData)
{
    if (!info._isAccessibleCell)
    {
        return false;
    }
    const bool hasFormulaOrData = info._contentType == BlocksContentType::FormulaOrData;
    const bool addsFormulaOrData = typeOfAddedData == BlocksContentType::FormulaOrData;
    if (!info._isInCell)
    {
        ZEM_ASSERT_MESSAGE(!hasFormulaOrData && !addsFormulaOrData,
                           "textWithTombstonesInfo.contentType != BlocksContentType::FormulaOrData && "
                           "typeOfAddedData != BlocksContentType::FormulaOrData");
        return true;
    }
    if (hasFormulaOrData)
    {
        return typeOfAddedData == BlocksContentType::Empty;
    }
    return !addsFormulaOrData || info._contentType == BlocksContentType::Empty;
}

} // namespace Zem::DOMCollaboration

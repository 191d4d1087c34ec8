#include "Sharing/CS_Admission.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_TableOperation.h"
#include "DClb_TextElement.h"
#include "DOM_Blocks.h"
#include "DOM_PlaneSize.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"
#include "Util_Visitor.h"

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

using Insertion = ListModificationOperation<InsertTag>;
using LineInsertion = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;

unsigned long countInBlock(const DOM::Block& block);

/// Slots of the text and of all that lie in it.
unsigned long countInText(const DOM::TextWithTombstones& text)
{
    unsigned long count = text.getTombstones().getTombstonesCount();
    for (const auto& block : text.getBlocks())
    {
        count += DOM::PlaneSize::of(*block) + countInBlock(*block);
    }
    return count;
}

unsigned long countInTable(const DOM::Table& table)
{
    unsigned long count = table.getAllRowsCount().get() + table.getAllColsCount().get();
    if (table.getCellsCount() == 0)
    {
        return count;
    }
    auto [cell, end] =
        table.getRangeIterators(TableRange(RowIndex(0), ColumnIndex(0), RowIndex(table.getLiveRowsCount().get()),
                                           ColumnIndex(table.getLiveColsCount().get())));
    for (; !(cell == end); ++cell)
    {
        count += countInText((*cell)->getTextWithTombstones());
    }
    return count;
}

/// What lies in a block, without its own places.
unsigned long countInBlock(const DOM::Block& block)
{
    return DOM::visitBlock(
        block, [](const DOM::Table& table) { return countInTable(table); },
        [](const DOM::Shape& shape) { return countInText(shape.getTextWithTombstones()); },
        [](const auto&) { return 0ul; });
}

unsigned long countInItems(const ItemsCollection& items)
{
    unsigned long count = items.getSize();
    if (const auto* ofText = cast<DOMCollaboration::TextWithTombstonesItems>(&items))
    {
        for (const auto& element : ofText->getCollection())
        {
            const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&element);
            count += block ? countInBlock(**block) : 0;
        }
    }
    return count;
}

unsigned long countInAtomic(const AtomicOperation& operation)
{
    if (const auto* insertion = cast<ListMultirangeOperationImpl<Insertion>>(&operation))
    {
        unsigned long count = 0;
        for (const Insertion& range : insertion->getNestedOperations())
        {
            count += countInItems(*range.getData());
        }
        return count;
    }
    const auto* onNode = operation.getIfHierarchical();
    if (onNode && onNode->getFamily() == HierarchicalOperation::Family::Table)
    {
        return visitWith<unsigned long>(castToFamily<TableOperation>(*onNode), [](const auto& line)
                                        { return boost::get<LineInsertion>(&line.getNestedOperation()) ? 1ul : 0ul; });
    }
    return 0;
}

} // namespace

unsigned long countSlots(const DOM::Document& document)
{
    unsigned long count = countInText(document.getTextWithTombstones());
    for (const DOM::HeaderFooterPair& pair : document.getHeadersFooters())
    {
        count += countInText(pair.getHeader()) + countInText(pair.getFooter());
    }
    return count;
}

unsigned long countInsertedSlots(const Operation& operation)
{
    unsigned long count = 0;
    std::vector<const Operation*> pending{&operation};
    while (!pending.empty())
    {
        const Operation* next = pending.back();
        pending.pop_back();
        visitWith(
            *next, [&](const AtomicOperation& atomic) { count += countInAtomic(atomic); },
            [&](const CompositeOperation& composite)
            {
                for (const OperationUPtr& part : composite.getParts())
                {
                    pending.push_back(part.get());
                }
            },
            [](const EmptyOperation&) {},
            [&](const ShadowedOperation& shadowed) { count += countInAtomic(shadowed.getOriginal()); });
    }
    return count;
}

} // namespace Zem::CollaborationSession

#include "Sharing/CS_Admission.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_TextElement.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CollectionNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"
#include "DOM_FieldBlock.h"
#include "DOM_Scripts.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_Cast.h"
#include "Util_UUID.h"
#include "Util_Visitor.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using CollaborationUtils::IndexIncludingTombstones;
using DOMCollaboration::DocumentAdapterWithNodeAdapter;
using DOMCollaboration::OperationDOMNodeType;

namespace
{

using Node = DOMCollaboration::OperationNodeAdapter<true>;
using TextNode = DOMCollaboration::GenericTextWithTombstonesNodeAdapter<true>;
using ScriptsNode = DOMCollaboration::InOperationWorld<DOMCollaboration::GenericScriptCollectionNodeAdapter, true>;
using Misfit = std::optional<OperationFault>;

bool isType(unsigned long nodeType, OperationDOMNodeType type)
{
    return nodeType == convertOperationNodeType(type);
}

/// Whether an adapter can be asked for the child at a step: those of headers and footers, and of maps, take for granted
/// that whoever asks knows what these have.
bool canAskFor(const Node& node, const OperationNodeAddress::Chunk& chunk)
{
    if (const auto* inMap = boost::get<NodeAddressing::AddressInMap>(&chunk))
    {
        // Entries that are nodes have UUIDs for keys.
        return cast<NodeAddressing::SimpleValueMapKey<UUID>>(inMap->getKey().get()) != nullptr;
    }
    const auto* fixed = boost::get<OperationNodeAddress::FixedChunk>(&chunk);
    return !fixed || !isType(node.getNodeType(), OperationDOMNodeType::HeaderFooterPair) ||
           isType(fixed->getNodeType(), OperationDOMNodeType::Header) ||
           isType(fixed->getNodeType(), OperationDOMNodeType::Footer);
}

/// Where a walk along an address ended: at a node, or why it didn't.
struct Destination
{
    std::unique_ptr<Node> _node;
    Misfit _misfit;
};

Destination walk(const DocumentAdapterWithNodeAdapter& document, const OperationNodeAddress& address)
{
    std::unique_ptr<Node> node = document.createOperationNodeAdapter();
    for (const OperationNodeAddress::Chunk& chunk : address.getItems())
    {
        node = canAskFor(*node, chunk) ? node->createChildAdapterIfPossible(chunk, true) : nullptr;
        if (!node)
        {
            return {nullptr, OperationFault::NoSuchNode};
        }
        if (isType(node->getNodeType(), OperationDOMNodeType::Tombstone))
        {
            return {nullptr, OperationFault::DeadNode};
        }
    }
    return {std::move(node), std::nullopt};
}

/// Whether a place is one of the list's slots, or its end. The places behind that count as live ones.
bool isInList(const DOM::TextWithTombstones& text, unsigned long place)
{
    const auto liveIndex = text.getTombstones().getIndexToInsertTo(IndexIncludingTombstones(place));
    return DOMCollaboration::PlaneWalk::find(text.getBlocks(), liveIndex).has_value();
}

/// Counts the live slots of a range, which lies inside of the list.
unsigned long countLive(const DOM::TextWithTombstones& text, const IndexRange<unsigned long>& range)
{
    unsigned long count = 0;
    text.getTombstones().forEachLiveRange(
        IndexRange<IndexIncludingTombstones>(IndexIncludingTombstones(range.getBegin()),
                                             IndexIncludingTombstones(range.getEnd())),
        [&](const IndexRange<IndexIncludingTombstones>& live) { count += live.getCount().get(); });
    return count;
}

/// Whether an operation on a range finds its slots as it needs them.
template<class Range>
Misfit findRangeMisfit(const Range& operation, const DOM::TextWithTombstones& text)
{
    const IndexRange<unsigned long>& range = operation.getRange();
    if constexpr (std::is_same_v<Range, ListModificationOperation<MarkAsRemovedTag>>)
    {
        return countLive(text, range) == range.getCount() ? Misfit() : OperationFault::DeadSlots;
    }
    if constexpr (std::is_same_v<Range, ListLeaveTombstonesOperation>)
    {
        // One that holds nothing down stands for a marking that doesn't take place, wherever that would have been.
        const bool isDead = operation.getHoldersCount() == 0 || countLive(text, range) == 0;
        return isDead ? Misfit() : OperationFault::LiveSlots;
    }
    if constexpr (std::is_same_v<Range, ListModificationOperation<RestoreTag>>)
    {
        if (!operation.getData())
        {
            return OperationFault::MissingData;
        }
        return countLive(text, range) == 0 ? Misfit() : OperationFault::LiveSlots;
    }
    return std::nullopt;
}

/// A text that begins with a formula, and isn't that of a cell, takes no operations at all any more.
bool bringsFormula(const ListMultirangeOperation& operation)
{
    const auto isFormula = [](const DOMCollaboration::TextWithTombstonesElement& element)
    {
        const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&element);
        const auto* field = block ? cast<DOM::FieldBlock>(block->get()) : nullptr;
        return field && !boost::get<DOM::TableOfContentsInfo>(&field->getFieldInfo());
    };
    const auto hasFormula = [&](const auto& range)
    {
        const auto* items = cast<DOMCollaboration::TextWithTombstonesItems>(range.getData().get());
        return items && std::any_of(items->getCollection().begin(), items->getCollection().end(), isFormula);
    };
    return visitWith<bool>(
        operation, [&](const auto& ranges)
        { return std::any_of(ranges.getNestedOperations().begin(), ranges.getNestedOperations().end(), hasFormula); });
}

bool isInCell(const OperationNodeAddress& address)
{
    return std::any_of(address.getItems().begin(), address.getItems().end(),
                       [](const OperationNodeAddress::Chunk& chunk)
                       { return boost::get<NodeAddressing::AddressInTable>(&chunk) != nullptr; });
}

template<class Range>
Misfit findRangesMisfit(const ListMultirangeOperationImpl<Range>& operation, const DOM::TextWithTombstones& text)
{
    constexpr bool isInsertion = std::is_same_v<Range, ListModificationOperation<InsertTag>>;
    if constexpr (std::is_same_v<Range, ListModificationOperation<RemoveTag>>)
    {
        return OperationFault::RemovalForGood;
    }
    // The ranges descend.
    const IndexRange<unsigned long>& highest = operation.getNestedOperations().front().getRange();
    if (!isInList(text, isInsertion ? highest.getBegin() : highest.getEnd()))
    {
        return OperationFault::BehindTheEnd;
    }
    for (const Range& range : operation.getNestedOperations())
    {
        if (const Misfit misfit = findRangeMisfit(range, text))
        {
            return misfit;
        }
    }
    return std::nullopt;
}

Misfit findTextMisfit(const ListMultirangeOperation& operation, const Node& node)
{
    if (!isInCell(operation.getNodeAddress()) && bringsFormula(operation))
    {
        return OperationFault::FormulaOutsideCell;
    }
    const DOM::TextWithTombstones& text = cast<TextNode>(node).readText();
    return visitWith<Misfit>(operation, [&](const auto& ranges) { return findRangesMisfit(ranges, text); });
}

Misfit findScriptsMisfit(const MapOperation& operation, const Node& node)
{
    using Key = NodeAddressing::SimpleValueMapKey<std::string>;
    const DOM::Scripts& scripts = cast<ScriptsNode>(node).getScripts();
    const bool isThere = scripts.getScript(cast<Key>(*operation.getKey()).getValue()).is_initialized();
    return visitWith<Misfit>(
        operation,
        [&](const MapInsertOrRemoveOperation<MapInsertTag>&)
        { return isThere ? Misfit(OperationFault::TakenKey) : Misfit(); },
        [&](const MapInsertOrRemoveOperation<MapRemoveTag>&)
        { return isThere ? Misfit() : Misfit(OperationFault::FreeKey); },
        [&](const MapLeaveRemovedOperation& leaving)
        { return isThere && leaving.getHoldersCount() > 0 ? Misfit(OperationFault::TakenKey) : Misfit(); });
}

/// A walk that ended in something dead is where the end of a selection may well be.
Misfit findPositionMisfit(const OperationNodeAddress& address, const DocumentAdapterWithNodeAdapter& document)
{
    const Misfit misfit = walk(document, address)._misfit;
    return misfit == OperationFault::DeadNode ? Misfit() : misfit;
}

/// Executes what fits, atomic operation by atomic operation.
class FittingOperationExecutor final : public AtomicOperationExecutor
{
public:
    FittingOperationExecutor(BaseOperationExecutor& executor, const DocumentAdapterWithNodeAdapter& document,
                             std::shared_ptr<std::vector<OperationFault>> misfits)
        : _executor(executor)
        , _document(document)
        , _misfits(std::move(misfits))
    {
    }

    bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) override
    {
        if (const Misfit misfit = findMisfit(operation, _document))
        {
            _misfits->push_back(*misfit);
            changedOp = std::make_unique<EmptyOperation>();
            return true;
        }
        const auto silence = _executor.getSetSilentModeGuard();
        return _executor.executeAndChangeIfNeeded(operation, changedOp);
    }

    void reverse(AtomicOperation& operation) override
    {
        const auto silence = _executor.getSetSilentModeGuard();
        _executor.reverse(operation);
    }

private:
    BaseOperationExecutor& _executor;
    const DocumentAdapterWithNodeAdapter& _document;
    std::shared_ptr<std::vector<OperationFault>> _misfits;
};

} // namespace

std::optional<OperationFault> findMisfit(const AtomicOperation& operation,
                                         const DocumentAdapterWithNodeAdapter& document)
{
    const HierarchicalOperation* onNode = operation.getIfHierarchical();
    if (!onNode)
    {
        return OperationFault::WrongOperation;
    }
    const Destination destination = walk(document, onNode->getNodeAddress());
    if (destination._misfit)
    {
        return destination._misfit;
    }
    if (destination._node->getNodeType() != onNode->getOperandType())
    {
        return OperationFault::NodeOfOtherType;
    }
    if (onNode->getFamily() == HierarchicalOperation::Family::ListMultirange)
    {
        return findTextMisfit(castToFamily<ListMultirangeOperation>(*onNode), *destination._node);
    }
    if (onNode->getFamily() == HierarchicalOperation::Family::Map)
    {
        return findScriptsMisfit(castToFamily<MapOperation>(*onNode), *destination._node);
    }
    return std::nullopt;
}

std::optional<OperationFault> findMisfit(const Selection& selection, const DocumentAdapterWithNodeAdapter& document)
{
    const Misfit misfit = findPositionMisfit(selection.getSelectionBegin().getAddress(), document);
    return misfit ? misfit : findPositionMisfit(selection.getSelectionEnd().getAddress(), document);
}

AdmittingExecutor::AdmittingExecutor(BaseOperationExecutor& executor, const DocumentAdapterWithNodeAdapter& document)
    : AdmittingExecutor(executor, document, std::make_shared<std::vector<OperationFault>>())
{
}

AdmittingExecutor::AdmittingExecutor(BaseOperationExecutor& executor, const DocumentAdapterWithNodeAdapter& document,
                                     std::shared_ptr<std::vector<OperationFault>> misfits)
    : BaseOperationExecutor(std::make_unique<FittingOperationExecutor>(executor, document, misfits),
                            executor.getTransformer())
    , _misfits(std::move(misfits))
{
}

AdmittingExecutor::~AdmittingExecutor() = default;

} // namespace Zem::CollaborationSession

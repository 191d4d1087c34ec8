#include "Sharing/CS_Admission.h"

#include "Editing/CS_Stretch.h"
#include "Sharing/CS_ContentAdmission.h"
#include "Sharing/CS_OperandTypes.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyId.h"

#include "Util_Assert.h"
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
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PropertyId;
using DOMCollaboration::SelectionMode;

namespace
{

using UUIDKey = NodeAddressing::SimpleValueMapKey<UUID>;
using StringKey = NodeAddressing::SimpleValueMapKey<std::string>;

template<class Tag>
using RowOrColumnModification = TableRowOrColumnListModificationOperation<Tag>;

bool isType(unsigned long nodeType, OperationDOMNodeType type)
{
    return nodeType == DOMCollaboration::convertOperationNodeType(type);
}

/// Where an operation stands among those that it came with.
struct Surroundings
{
    unsigned long _depth = 0;
    /// A part of a unit, which relies on each of these to be aimed at something.
    bool _isInUnit = false;
    /// It may be somebody else's that a restoring brings along.
    bool _mayBeForeign = false;
    /// It is part of an undo.
    bool _isUndo = false;
    /// It isn't to be executed here: it is shadowed, or tells what was to be.
    bool _isDormant = false;
    /// It leads from what was to be to what happened.
    bool _isWay = false;
};

/// Whether other deletions can hold down what the operation puts back.
bool isRestoring(const HierarchicalOperation& operation)
{
    using Restore = ListModificationOperation<RestoreTag>;
    using LineRestore = RowOrColumnModification<RowOrColumnRestoreOperationTag>;
    if (operation.getFamily() == HierarchicalOperation::Family::Table)
    {
        return visitWith<bool>(castToFamily<TableOperation>(operation), [](const auto& line)
                               { return boost::get<LineRestore>(&line.getNestedOperation()) != nullptr; });
    }
    return cast<Restore>(&operation) || cast<ListMultirangeOperationImpl<Restore>>(&operation) ||
           cast<MapInsertOrRemoveOperation<MapInsertTag>>(&operation);
}

/// What the parts of a unit restore, one behind the other. What comes back brings along what others did in it.
class RestoredPlaces
{
public:
    void add(const Operation& part)
    {
        const HierarchicalOperation* onNode = findOnNode(part);
        const auto* restoring = onNode ? cast<ListMultirangeOperationImpl<Restore>>(onNode) : nullptr;
        if (restoring)
        {
            for (const Restore& range : restoring->getNestedOperations())
            {
                _ranges.push_back({restoring->getNodeAddress(), range.getRange()});
            }
        }
    }

    /// Whether a part lies in something that is restored; all of its own parts, if it is a unit. It is paid for.
    bool contain(const Operation& part, Allowance& allowance) const
    {
        if (const auto* composite = cast<CompositeOperation>(&part))
        {
            return std::all_of(composite->getParts().begin(), composite->getParts().end(),
                               [&](const OperationUPtr& own) { return own && contain(*own, allowance); });
        }
        allowance.spend(_ranges.size());
        const HierarchicalOperation* onNode = findOnNode(part);
        return onNode &&
               std::any_of(_ranges.begin(), _ranges.end(),
                           [&](const RestoredRange& range) { return range.contains(onNode->getNodeAddress()); });
    }

private:
    using Restore = ListModificationOperation<RestoreTag>;

    struct RestoredRange
    {
        OperationNodeAddress _list;
        IndexRange<unsigned long> _slots;

        bool contains(const OperationNodeAddress& address) const
        {
            const std::size_t depth = _list.getSize();
            const auto* step = address.getSize() > depth
                                   ? boost::get<NodeAddressing::AddressInList>(&address.getItem(depth))
                                   : nullptr;
            return step && _slots.getBegin() <= step->getIndex() && step->getIndex() < _slots.getEnd() &&
                   std::equal(_list.getItems().begin(), _list.getItems().end(), address.getItems().begin());
        }
    };

    static const HierarchicalOperation* findOnNode(const Operation& part)
    {
        const auto* shadowed = cast<ShadowedOperation>(&part);
        const auto* atomic = shadowed ? &shadowed->getOriginal() : cast<AtomicOperation>(&part);
        return atomic ? atomic->getIfHierarchical() : nullptr;
    }

    std::vector<RestoredRange> _ranges;
};

/// Whether a shadow can lie on the step of an address.
bool fits(DeadPlace::Kind kind, const OperationNodeAddress::Chunk& chunk)
{
    switch (kind)
    {
    case DeadPlace::Kind::Element:
        return boost::get<NodeAddressing::AddressInList>(&chunk) || boost::get<NodeAddressing::AddressInMap>(&chunk);
    case DeadPlace::Kind::Row:
    case DeadPlace::Kind::Column:
        return boost::get<NodeAddressing::AddressInTable>(&chunk) != nullptr;
    }
    return false;
}

} // namespace

class BatchAdmission::Impl
{
public:
    Impl(ClientID author, unsigned long slotsBound, const AdmissionLimits& limits)
        : _author(author)
        , _slotsBound(std::min(slotsBound, limits._slots))
        , _limits(limits)
        , _budget(_limits)
        , _content(_limits, _budget)
    {
        ZEM_ASSERT(author <= highestClientID);
    }

    void requireWellFormed(const Operation& operation, bool isUndo);
    void requireWellFormed(const Meaning& meaning);
    void requireWellFormed(const Selection& selection);

    unsigned long getSlotsBound() const
    {
        return _slotsBound;
    }

private:
    /// What is still to be looked at. It is kept here, and not on the stack of calls.
    using Pending = std::vector<std::pair<const Operation*, Surroundings>>;

    void requireNext(const Operation& operation, Surroundings surroundings, Pending& pending);
    void requireComposite(const CompositeOperation& composite, const Surroundings& surroundings, Pending& pending);
    void requireStretch(const Stretch& stretch);
    void requireLook(const LookSetting& look);
    void requireShadowed(const ShadowedOperation& shadowed, Surroundings surroundings);
    void requireShadows(const Shadows& shadows, const HierarchicalOperation& operation);
    void requireAtomic(const AtomicOperation& operation, const Surroundings& surroundings);
    void requireID(const Operation& operation, bool mayBeForeign) const;
    void requireOwn(Operation::Id id, bool mayBeForeign) const;
    void requireAddress(const OperationNodeAddress& address);
    void requireKey(const NodeAddressing::MapKey& key);
    void requirePosition(const Selection::SelectionPosition& position);

    void requireOnList(const ListOperation& operation, const Surroundings& surroundings);
    void requireOnRanges(const ListMultirangeOperation& operation, const Surroundings& surroundings);
    void requireOnMap(const MapOperation& operation);
    void requireSetting(const SetPropertyOperation& operation, const OperandType& type);
    void requireOnTable(const TableOperation& operation, const Surroundings& surroundings);

    template<class Range>
    void requireRanges(const ListMultirangeOperationImpl<Range>& operation, const Surroundings& surroundings);
    template<class Range>
    void requireRange(const Range& range, const Surroundings& surroundings);
    void requireItems(const ItemsCollection& items, unsigned long nodeType, unsigned long count);
    template<class Tag>
    void requireOnLine(const TableRowOrColumnOperation<Tag>& operation, const Surroundings& surroundings);
    template<class Tag>
    void requireLine(const TableRowOrColumnDataOperation& operation, bool isNeeded, Tag);
    void requireMove(unsigned long place, long offset) const;
    void requireHolders(unsigned long count) const;
    void requirePlaces(unsigned long end, unsigned long count);
    void raiseBound(unsigned long elementsLeftBefore);

    ClientID _author;
    unsigned long _slotsBound;
    AdmissionLimits _limits;
    AdmissionBudget _budget;
    ContentAdmission _content;
};

void BatchAdmission::Impl::requireWellFormed(const Operation& operation, bool isUndo)
{
    _budget._operations.spend(1);
    Surroundings surroundings;
    surroundings._isUndo = isUndo;
    Pending pending{{&operation, surroundings}};
    while (!pending.empty())
    {
        const auto [next, surroundingsOfNext] = pending.back();
        pending.pop_back();
        requireNext(*next, surroundingsOfNext, pending);
    }
}

void BatchAdmission::Impl::requireNext(const Operation& operation, Surroundings surroundings, Pending& pending)
{
    surroundings._mayBeForeign |= surroundings._isUndo && cast<ShadowedOperation>(&operation);
    requireID(operation, surroundings._mayBeForeign);
    visitWith(
        operation, [&](const AtomicOperation& atomic) { requireAtomic(atomic, surroundings); },
        [&](const CompositeOperation& composite) { requireComposite(composite, surroundings, pending); },
        [&](const EmptyOperation&) { requireSound(!surroundings._isInUnit, OperationFault::EmptyPartOfUnit); },
        [&](const ShadowedOperation& shadowed) { requireShadowed(shadowed, surroundings); });
}

void BatchAdmission::Impl::requireComposite(const CompositeOperation& composite, const Surroundings& surroundings,
                                            Pending& pending)
{
    const std::vector<OperationUPtr>& parts = composite.getParts();
    const ChangeOfRestoring& change = composite.getChange();
    const CompositeKind kind = composite.getKind();
    const bool isKnownKind =
        kind == CompositeKind::Plain || kind == CompositeKind::Restoring || kind == CompositeKind::ChangedRestoring;
    requireSound(isKnownKind, OperationFault::UnknownCompositeKind);
    requireSound(!parts.empty(), OperationFault::EmptyComposite);
    requireSound(!surroundings._isInUnit || composite.bringsShadowedAlong(), OperationFault::CompositePartOfUnit);
    requireSound(surroundings._depth < _limits._compositeDepth, OperationFault::CompositesTooDeep);
    requireSound(!change.isKnown() || kind == CompositeKind::ChangedRestoring, OperationFault::UnexpectedChange);
    requireSound(change.isKnown() == static_cast<bool>(change._difference), OperationFault::UnexpectedChange);
    _budget._operations.spend(parts.size() + (change.isKnown() ? 2 : 0));

    Surroundings inside = surroundings;
    ++inside._depth;
    inside._isInUnit = composite.bringsShadowedAlong();
    const std::size_t firstPending = pending.size();
    RestoredPlaces restored;
    for (const OperationUPtr& part : parts)
    {
        requireSound(static_cast<bool>(part), OperationFault::MissingPart);
        Surroundings ofPart = inside;
        ofPart._mayBeForeign =
            inside._mayBeForeign || (inside._isInUnit && restored.contain(*part, _budget._namedSlots));
        pending.emplace_back(part.get(), ofPart);
        if (inside._isInUnit)
        {
            restored.add(*part);
        }
    }
    // The first one is looked at first.
    std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(firstPending), pending.end());
    if (change.isKnown())
    {
        Surroundings ofChange;
        ofChange._depth = inside._depth;
        ofChange._mayBeForeign = true;
        ofChange._isDormant = true;
        Surroundings ofWay = ofChange;
        ofWay._isWay = true;
        // The way begins behind what was planned, which is looked at first.
        pending.emplace_back(change._difference.get(), ofWay);
        pending.emplace_back(change._planned.get(), ofChange);
    }
}

void BatchAdmission::Impl::requireShadowed(const ShadowedOperation& shadowed, Surroundings surroundings)
{
    requireID(shadowed.getOriginal(), surroundings._mayBeForeign);
    const HierarchicalOperation* operation = shadowed.getOriginal().getIfHierarchical();
    requireSound(operation, OperationFault::WrongOperation);
    surroundings._isDormant = true;
    requireAtomic(shadowed.getOriginal(), surroundings);
    requireShadows(shadowed.getShadows(), *operation);
}

void BatchAdmission::Impl::requireShadows(const Shadows& shadows, const HierarchicalOperation& operation)
{
    const OperationNodeAddress& address = operation.getNodeAddress();
    // An element, or a row and a column, for each step and for what the operation itself is aimed at.
    requireSound(shadows._deadPlaces.size() <= 2 * (address.getSize() + 1), OperationFault::TooManyShadows);
    const bool isOnLine = operation.getFamily() == HierarchicalOperation::Family::Table;
    for (const DeadPlace& place : shadows._deadPlaces)
    {
        const bool isOnWay = place._chunkIndex < address.getSize()
                                 ? fits(place._kind, address.getItem(place._chunkIndex))
                                 : place._chunkIndex == address.getSize() && isOnLine &&
                                       (place._kind == DeadPlace::Kind::Row || place._kind == DeadPlace::Kind::Column);
        requireSound(isOnWay, OperationFault::ShadowOutsideAddress);
        if (place._removedValue)
        {
            _content.requireEntry(convertOperationNodeType(OperationDOMNodeType::ScriptCollection),
                                  place._removedValue.get());
        }
    }
    requireHolders(shadows._holdersCount);
    requireSound(shadows._holdersCount == 0 || isRestoring(operation), OperationFault::HoldersOfOtherOperation);
}

void BatchAdmission::Impl::requireAtomic(const AtomicOperation& operation, const Surroundings& surroundings)
{
    const HierarchicalOperation* onNode = operation.getIfHierarchical();
    requireSound(onNode, OperationFault::WrongOperation);
    requireAddress(onNode->getNodeAddress());
    requireSound(isNodeType(onNode->getOperandType()), OperationFault::UnknownNodeType);
    const std::optional<OperandType> type = findOperandType(onNode->getOperandType());
    requireSound(type.has_value(), OperationFault::NodeTypeWithoutOperations);
    requireSound(type->_family == onNode->getFamily(), OperationFault::WrongOperation);
    switch (onNode->getFamily())
    {
    case HierarchicalOperation::Family::List:
        requireOnList(castToFamily<ListOperation>(*onNode), surroundings);
        break;
    case HierarchicalOperation::Family::ListMultirange:
        requireOnRanges(castToFamily<ListMultirangeOperation>(*onNode), surroundings);
        break;
    case HierarchicalOperation::Family::Map:
        requireOnMap(castToFamily<MapOperation>(*onNode));
        break;
    case HierarchicalOperation::Family::SetProperty:
        requireSetting(castToFamily<SetPropertyOperation>(*onNode), *type);
        break;
    case HierarchicalOperation::Family::Table:
        requireOnTable(castToFamily<TableOperation>(*onNode), surroundings);
        break;
    }
    requireSound(type->_isExecuted, OperationFault::NodeTypeWithoutOperations);
}

void BatchAdmission::Impl::requireID(const Operation& operation, bool mayBeForeign) const
{
    if (const auto id = operation.getID())
    {
        requireOwn(*id, mayBeForeign);
    }
}

void BatchAdmission::Impl::requireOwn(Operation::Id id, bool mayBeForeign) const
{
    const bool isOwn = getFirstOperationID(_author) <= id && id < getFirstOperationID(_author + 1);
    const bool isAnybodys = id < getFirstOperationID(highestClientID + 1);
    requireSound(mayBeForeign ? isAnybodys : isOwn, OperationFault::ForeignID);
}

void BatchAdmission::Impl::requireAddress(const OperationNodeAddress& address)
{
    requireSound(address.getSize() <= _limits._addressDepth, OperationFault::AddressTooDeep);
    _budget._bytes.spend(address.getSize() * sizeof(OperationNodeAddress::Chunk));
    const auto requireIndex = [&](unsigned long index)
    { requireSound(index <= _slotsBound, OperationFault::IndexTooHigh); };
    const Overloads visitor{[&](const NodeAddressing::AddressInList& chunk) { requireIndex(chunk.getIndex()); },
                            [&](const NodeAddressing::AddressInTable& chunk)
                            {
                                requireIndex(chunk.getRow().get());
                                requireIndex(chunk.getColumn().get());
                            },
                            [&](const NodeAddressing::AddressInMap& chunk)
                            {
                                requireSound(static_cast<bool>(chunk.getKey()), OperationFault::AddressWithoutKey);
                                requireKey(*chunk.getKey());
                            },
                            [&](const OperationNodeAddress::FixedChunk& chunk)
                            { requireSound(isNodeType(chunk.getNodeType()), OperationFault::AddressWithUnknownType); }};
    for (const OperationNodeAddress::Chunk& chunk : address.getItems())
    {
        boost::apply_visitor([&](const auto& typed) { visitor(typed); }, chunk);
    }
}

void BatchAdmission::Impl::requireKey(const NodeAddressing::MapKey& key)
{
    if (const auto* text = cast<StringKey>(&key))
    {
        requireSound(text->getValue().size() <= _limits._keyBytes, OperationFault::KeyTooLong);
        _budget._bytes.spend(text->getValue().size());
        return;
    }
    requireSound(cast<UUIDKey>(&key), OperationFault::WrongKey);
}

void BatchAdmission::Impl::requireOnList(const ListOperation& operation, const Surroundings& surroundings)
{
    visitWith(
        operation,
        [&](const ListMoveOperation& move)
        {
            requireSound(move.getRange().getCount() == 1, OperationFault::MoveOfSeveral);
            requirePlaces(move.getRange().getEnd(), 1);
            requireMove(move.getRange().getBegin(), move.getOffset());
        },
        [&](const auto& range) { requireRange(range, surroundings); });
}

void BatchAdmission::Impl::requireOnRanges(const ListMultirangeOperation& operation, const Surroundings& surroundings)
{
    visitWith(operation, [&](const auto& ranges) { requireRanges(ranges, surroundings); });
}

template<class Range>
void BatchAdmission::Impl::requireRanges(const ListMultirangeOperationImpl<Range>& operation,
                                         const Surroundings& surroundings)
{
    constexpr bool canShareGap = std::is_same_v<Range, ListModificationOperation<InsertTag>>;
    const std::vector<Range>& ranges = operation.getNestedOperations();
    requireSound(!ranges.empty(), OperationFault::MissingRanges);
    _budget._ranges.spend(ranges.size());
    const Range* higher = nullptr;
    for (const Range& range : ranges)
    {
        const bool isOnNode = range.getOperandType() == operation.getOperandType() &&
                              range.getNodeAddress() == operation.getNodeAddress();
        requireSound(isOnNode, OperationFault::RangesOnDifferentNodes);
        requireSound(!range.getID() || range.getID() == operation.getID(), OperationFault::RangesWithOwnIDs);
        const unsigned long end = canShareGap ? range.getRange().getBegin() : range.getRange().getEnd();
        requireSound(!higher || end <= higher->getRange().getBegin(), OperationFault::RangesNotDescending);
        higher = &range;
    }
    // In the coordinates of one state: what the first ones insert doesn't give the others more room.
    const unsigned long bound = _slotsBound;
    unsigned long highestBound = bound;
    for (const Range& range : ranges)
    {
        requireRange(range, surroundings);
        highestBound += _slotsBound - bound;
        _slotsBound = bound;
    }
    _slotsBound = std::min(highestBound, _limits._slots);
}

template<class Range>
void BatchAdmission::Impl::requireRange(const Range& range, const Surroundings& surroundings)
{
    constexpr bool isInsertion = std::is_same_v<Range, ListModificationOperation<InsertTag>>;
    constexpr bool isRestoring = std::is_same_v<Range, ListModificationOperation<RestoreTag>>;
    if constexpr (std::is_same_v<Range, ListModificationOperation<RemoveTag>>)
    {
        requireSound(surroundings._isWay, OperationFault::RemovalForGood);
    }
    if constexpr (std::is_same_v<Range, ListLeaveTombstonesOperation>)
    {
        requireHolders(range.getHoldersCount());
    }
    const IndexRange<unsigned long>& slots = range.getRange();
    requirePlaces(isInsertion ? slots.getBegin() : slots.getEnd(), slots.getCount());
    if (!range.getData())
    {
        const bool isNeeded = isInsertion || (isRestoring && !surroundings._isDormant);
        requireSound(!isNeeded, OperationFault::MissingData);
        return;
    }
    const unsigned long elementsLeft = _budget._elements.getLeft();
    requireItems(*range.getData(), range.getOperandType(), slots.getCount());
    if (isInsertion)
    {
        raiseBound(elementsLeft);
    }
}

void BatchAdmission::Impl::requireItems(const ItemsCollection& items, unsigned long nodeType, unsigned long count)
{
    const auto* ofText = isType(nodeType, OperationDOMNodeType::TextWithTombstones)
                             ? cast<DOMCollaboration::TextWithTombstonesItems>(&items)
                             : nullptr;
    requireSound(ofText, OperationFault::WrongData);
    requireSound(ofText->getSize() == count, OperationFault::CountOfOtherData);
    _content.requireElements(ofText->getCollection());
}

void BatchAdmission::Impl::requireOnMap(const MapOperation& operation)
{
    requireSound(static_cast<bool>(operation.getKey()), OperationFault::MissingKey);
    const bool areScripts = isType(operation.getOperandType(), OperationDOMNodeType::ScriptCollection);
    const NodeAddressing::MapKey& key = *operation.getKey();
    requireSound(areScripts ? cast<StringKey>(&key) != nullptr : cast<UUIDKey>(&key) != nullptr,
                 OperationFault::WrongKey);
    requireKey(key);
    const auto requireValue = [&](const SharedConstPtr<DataValue>& value, bool isNeeded)
    {
        if (isNeeded || value)
        {
            _content.requireEntry(operation.getOperandType(), value.get());
        }
    };
    visitWith(
        operation,
        [&](const MapInsertOrRemoveOperation<MapInsertTag>& insertion) { requireValue(insertion.getData(), true); },
        [&](const MapInsertOrRemoveOperation<MapRemoveTag>& removal) { requireValue(removal.getData(), false); },
        [&](const MapLeaveRemovedOperation& leaving)
        {
            requireHolders(leaving.getHoldersCount());
            requireValue(leaving.getData(), false);
        });
}

void BatchAdmission::Impl::requireSetting(const SetPropertyOperation& operation, const OperandType& type)
{
    const auto isSet = [&](PropertyId id) { return convertPropertyId(id) == operation.getPropertyID(); };
    requireSound(std::any_of(type._properties.begin(), type._properties.end(), isSet), OperationFault::UnknownProperty);
    _content.requireProperty(operation.getPropertyID(), &operation.getOldValue());
    _content.requireProperty(operation.getPropertyID(), &operation.getNewValue());
}

void BatchAdmission::Impl::requireOnTable(const TableOperation& operation, const Surroundings& surroundings)
{
    visitWith(operation, [&](const auto& onLine) { requireOnLine(onLine, surroundings); });
}

template<class Tag>
void BatchAdmission::Impl::requireOnLine(const TableRowOrColumnOperation<Tag>& operation,
                                         const Surroundings& surroundings)
{
    const Overloads visitor{
        [&](const RowOrColumnModification<RowOrColumnInsertOperationTag>& insertion)
        {
            requirePlaces(insertion.getIndex(), 1);
            const unsigned long elementsLeft = _budget._elements.getLeft();
            requireLine(insertion, true, Tag());
            requireOwn(getLineID(*insertion.getRowOrColumn()->getProps()), surroundings._mayBeForeign);
            raiseBound(elementsLeft);
        },
        [&](const RowOrColumnRemoveOperation& removal)
        {
            requireSound(surroundings._isWay, OperationFault::RemovalForGood);
            requirePlaces(removal.getIndex(), 1);
            requireLine(removal, false, Tag());
        },
        [&](const RowOrColumnModification<RowOrColumnMarkAsRemovedOperationTag>& marking)
        {
            requirePlaces(marking.getIndex(), 1);
            requireLine(marking, false, Tag());
        },
        [&](const RowOrColumnModification<RowOrColumnRestoreOperationTag>& restoring)
        {
            requirePlaces(restoring.getIndex(), 1);
            requireLine(restoring, !surroundings._isDormant, Tag());
        },
        [&](const RowOrColumnMoveOperation& move)
        {
            requirePlaces(move.getIndex(), 1);
            requireMove(move.getIndex(), move.getOffset());
        },
        [&](const RowOrColumnLeaveTombstoneOperation& leaving)
        {
            requirePlaces(leaving.getIndex(), 1);
            requireHolders(leaving.getHoldersCount());
            requireLine(leaving, false, Tag());
        },
        [&](const SetRowOrColumnPropertyOperation& setting)
        {
            requirePlaces(setting.getIndex(), 1);
            const PropertyId style = std::is_same_v<Tag, RowTag> ? PropertyId::RowStyleId : PropertyId::ColumnStyleId;
            requireSound(setting.getPropertyID() == convertPropertyId(style), OperationFault::UnknownProperty);
            _content.requireProperty(setting.getPropertyID(), &setting.getOldValue());
            _content.requireProperty(setting.getPropertyID(), &setting.getNewValue());
        }};
    boost::apply_visitor([&](const auto& nested) { visitor(nested); }, operation.getNestedOperation());
}

template<class Tag>
void BatchAdmission::Impl::requireLine(const TableRowOrColumnDataOperation& operation, bool isNeeded, Tag)
{
    const RowOrColumn* line = operation.getRowOrColumn().get();
    requireSound(line || !isNeeded, OperationFault::MissingData);
    _budget._elements.spend(1);
    if (!line)
    {
        return;
    }
    _content.requireLineProps(line->getProps().get(), Tag());
    const CellData* before = nullptr;
    for (const CellData& cell : line->getCells())
    {
        requireSound(cell.getIndex() <= _slotsBound, OperationFault::IndexTooHigh);
        requireSound(!before || before->getIndex() < cell.getIndex(), OperationFault::CellsNotAscending);
        _content.requireCell(cell.getData().get());
        before = &cell;
    }
}

/// Computed without overflow: a target in front of the first place is no smaller number.
void BatchAdmission::Impl::requireMove(unsigned long place, long offset) const
{
    const auto distance = static_cast<unsigned long>(offset);
    const bool isInside = offset < 0 ? 0 - distance <= place : distance <= _slotsBound - place;
    requireSound(isInside, OperationFault::MoveOutOfList);
}

void BatchAdmission::Impl::requireHolders(unsigned long count) const
{
    requireSound(count <= _limits._holders, OperationFault::TooManyHolders);
}

void BatchAdmission::Impl::requirePlaces(unsigned long end, unsigned long count)
{
    requireSound(end <= _slotsBound, OperationFault::IndexTooHigh);
    _budget._namedSlots.spend(count);
}

/// Lists may have as many slots more as elements came in.
void BatchAdmission::Impl::raiseBound(unsigned long elementsLeftBefore)
{
    const unsigned long count = elementsLeftBefore - _budget._elements.getLeft();
    _slotsBound += std::min(count, _limits._slots - _slotsBound);
}

void BatchAdmission::Impl::requireWellFormed(const Meaning& meaning)
{
    _budget._operations.spend(meaning._looks.size() + meaning._typedApart.size());
    _content.requireLook(meaning._typedLook);
    for (const Stretch& stretch : meaning._typedApart)
    {
        requireStretch(stretch);
    }
    for (const LookSetting& look : meaning._looks)
    {
        requireLook(look);
    }
}

void BatchAdmission::Impl::requireStretch(const Stretch& stretch)
{
    requireWellFormed(stretch);
    const std::optional<StretchInText> inText = findStretchInText(stretch);
    requireSound(inText.has_value(), OperationFault::NoStretchOfText);
    _budget._namedSlots.spend(inText->_lastSlot - inText->_firstSlot + 1);
}

void BatchAdmission::Impl::requireLook(const LookSetting& look)
{
    requireStretch(look._stretch);
    const bool isOfRuns = look._target == LookTarget::Runs;
    requireSound(isOfRuns || look._target == LookTarget::Paragraphs, OperationFault::InvalidEnumerator);
    const auto type = findOperandType(
        convertOperationNodeType(isOfRuns ? OperationDOMNodeType::Run : OperationDOMNodeType::ParagraphTag));
    const PropertyId property = look._change.getPropertyId();
    const bool isItsOwn =
        std::find(type->_properties.begin(), type->_properties.end(), property) != type->_properties.end();
    requireSound(isItsOwn, OperationFault::UnknownProperty);
    _content.requireProperty(convertPropertyId(property), look._change.getValue().get());
}

void BatchAdmission::Impl::requireWellFormed(const Selection& selection)
{
    const SelectionMode mode = selection.getSelectionMode();
    const bool isKnownMode =
        mode == SelectionMode::Text || mode == SelectionMode::Cells || mode == SelectionMode::Objects;
    requireSound(isKnownMode, OperationFault::UnknownSelectionMode);
    requirePosition(selection.getSelectionBegin());
    requirePosition(selection.getSelectionEnd());
}

void BatchAdmission::Impl::requirePosition(const Selection::SelectionPosition& position)
{
    requireAddress(position.getAddress());
    const auto& reverted = position.getRevertedInsertOperations();
    requireSound(reverted.size() <= _limits._revertedInsertions, OperationFault::TooManyRevertedInsertions);
    for (const RevertedInsertOperationInfo& insertion : reverted)
    {
        requireAddress(insertion._container);
        const bool isOnWay = insertion._chunkIndex == insertion._container.getSize() &&
                             insertion._chunkIndex < position.getAddress().getSize();
        requireSound(isOnWay, OperationFault::RevertedInsertionOutsideAddress);
        requireSound(insertion._indexOfItemInCollection <= _slotsBound, OperationFault::IndexTooHigh);
        requireOwn(insertion._operationID, true);
    }
}

BatchAdmission::BatchAdmission(ClientID author, unsigned long slotsBound, const AdmissionLimits& limits)
    : _impl(std::make_unique<Impl>(author, slotsBound, limits))
{
}

BatchAdmission::~BatchAdmission() = default;

void BatchAdmission::requireWellFormed(const Operation& operation, bool isUndo)
{
    _impl->requireWellFormed(operation, isUndo);
}

void BatchAdmission::requireWellFormed(const Meaning& meaning)
{
    _impl->requireWellFormed(meaning);
}

void BatchAdmission::requireWellFormed(const Selection& selection)
{
    _impl->requireWellFormed(selection);
}

unsigned long BatchAdmission::getSlotsBound() const
{
    return _impl->getSlotsBound();
}

} // namespace Zem::CollaborationSession

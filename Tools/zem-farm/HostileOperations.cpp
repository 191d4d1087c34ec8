#include "HostileOperations.h"

#include "StartDocument.h"
#include "Values.h"

#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"
#include "DClb_PropertyValues.h"
#include "DClb_RowColumnProps.h"
#include "DOM_Blocks.h"
#include "DOM_Runs.h"
#include "Sharing/CS_Admission.h"

#include "Util_Cast.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using namespace Zem::CollaborationSession;
using Zem::SharedConstPtr;
using Zem::DOMCollaboration::OperationDOMNodeType;
using Zem::DOMCollaboration::PropertyId;
using Zem::DOMCollaboration::TextWithTombstonesElementVector;
using Zem::DOMCollaboration::TextWithTombstonesItems;
namespace DOM = Zem::DOM;
namespace NodeAddressing = Zem::NodeAddressing;

namespace
{

using Insert = ListModificationOperation<InsertTag>;
using Remove = ListModificationOperation<RemoveTag>;
using Mark = ListModificationOperation<MarkAsRemovedTag>;
using Restore = ListModificationOperation<RestoreTag>;
using Leave = ListLeaveTombstonesOperation;
using AtomicUPtr = std::unique_ptr<AtomicOperation>;

constexpr unsigned long greatest = std::numeric_limits<unsigned long>::max();
constexpr unsigned long deepest = 20;

unsigned long getNumber(OperationDOMNodeType nodeType)
{
    return Zem::DOMCollaboration::convertOperationNodeType(nodeType);
}

std::unique_ptr<DOM::Block> makeNest(unsigned long depth)
{
    std::unique_ptr<DOM::Block> block = std::make_unique<DOM::Paragraph>();
    for (; depth > 0; --depth)
    {
        auto shape = std::make_unique<DOM::Shape>();
        shape->getTextWithTombstones().getBlocks().push_back(std::move(block));
        block = std::move(shape);
    }
    return block;
}

} // namespace

HostileOperations::HostileOperations(Random& random, DocumentKind kind, const DOM::Document& document, ClientID author)
    : _random(random)
    , _document(document)
    , _author(author)
    , _places(findPlaces(kind, document, random))
{
}

OperationUPtr HostileOperations::makeOperation()
{
    static constexpr std::array<unsigned long, 5> frequencies{1, 2, 8, 30, 1000000};
    _spoiledOnceIn = _random.pickFrom(frequencies);
    _depth = 0;
    OperationUPtr operation = makeSingle();
    if (isSpoiled())
    {
        // At last, since ids are given to all parts.
        takePartOut(*operation);
    }
    return operation;
}

/// A part, of a composite, or of one of its parts.
void HostileOperations::takePartOut(Operation& operation)
{
    auto* composite = Zem::cast<CompositeOperation>(&operation);
    if (!composite || composite->getParts().empty())
    {
        return;
    }
    OperationUPtr& part = _random.pickFrom(composite->getParts());
    if (_random.isOnceIn(2))
    {
        takePartOut(*part);
    }
    else if (_random.isOnceIn(2))
    {
        part.reset();
    }
}

Selection HostileOperations::makeSelection()
{
    _spoiledOnceIn = 1 + _random.pick(30);
    const auto makeEnd = [&]
    {
        Selection::SelectionPosition position(makeAddress());
        position.setStickToPrevious(_random.isOnceIn(2));
        for (unsigned long count = _random.isOnceIn(4) ? _random.pick(4) : 0; count > 0; --count)
        {
            position.getRevertedInsertOperations().push_back({makeAddress(), makeNumber(), makeNumber(), makeNumber()});
        }
        return position;
    };
    Selection::SelectionPosition begin = makeEnd();
    Selection::SelectionPosition end = makeEnd();
    return Selection(static_cast<Zem::DOMCollaboration::SelectionMode>(isSpoiled() ? _random.pick(256) : 0),
                     std::move(begin), std::move(end));
}

Revision HostileOperations::makeBase(Revision revision)
{
    switch (_random.pick(4))
    {
    case 0:
        return makeNumber();
    case 1:
        return revision + 1;
    default:
        return _random.pick(revision + 1);
    }
}

bool HostileOperations::isSpoiled()
{
    return _random.isOnceIn(_spoiledOnceIn);
}

unsigned long HostileOperations::makeNumber()
{
    static constexpr std::array<unsigned long, 12> numbers{
        0,         1,         2,         1ul << 31U,   1ul << 32U,         1ul << 53U,
        1ul << 62, 1ul << 63, ~0ul >> 1, greatest - 1, (1ul << 63U) + 1ul, greatest};
    switch (_random.pick(3))
    {
    case 0:
        return _random.pickFrom(numbers);
    case 1:
        return _random.pick(200);
    default:
        return _random.pick(greatest);
    }
}

unsigned long HostileOperations::makeSlot()
{
    return isSpoiled() ? makeNumber() : _random.pick(_slotsCount + 1);
}

HostileOperations::Range HostileOperations::makeRange(unsigned long count)
{
    if (isSpoiled())
    {
        const unsigned long begin = makeNumber();
        const unsigned long end = makeNumber();
        return begin == end ? Range(0, 1) : Range(std::min(begin, end), std::max(begin, end));
    }
    return Range::fromCount(_random.pick(_slotsCount + 1), count);
}

Address::Chunk HostileOperations::makeChunk()
{
    switch (_random.pick(4))
    {
    case 0:
        return NodeAddressing::AddressInList(makeSlot());
    case 1:
        return NodeAddressing::AddressInTable(Zem::RowIndex(makeNumber()), Zem::ColumnIndex(makeNumber()));
    case 2:
        return NodeAddressing::AddressInMap(makeKey());
    default:
        return Address::FixedChunk(_random.pick(36));
    }
}

Address HostileOperations::makeAddress()
{
    Address address = _text._address;
    if (_random.isOnceIn(2))
    {
        address.appendItems(NodeAddressing::AddressInList(makeSlot()));
    }
    if (!isSpoiled())
    {
        return address;
    }
    switch (_random.pick(4))
    {
    case 0:
        return {};
    case 1:
        for (unsigned long count = _random.pick(_random.isOnceIn(5) ? 100 : 4); count > 0; --count)
        {
            address.appendItems(makeChunk());
        }
        return address;
    case 2:
        address.trimAtEnd(_random.pick(address.getSize() + 1));
        return address;
    default:
        if (!address.isEmpty())
        {
            address.getItem(_random.pick(address.getSize())) = makeChunk();
        }
        return address;
    }
}

unsigned long HostileOperations::makeNodeType(OperationDOMNodeType nodeType)
{
    return isSpoiled() ? (_random.isOnceIn(4) ? makeNumber() : _random.pick(36)) : getNumber(nodeType);
}

HostileOperations::Key HostileOperations::makeKey()
{
    if (!isSpoiled())
    {
        return Zem::makeSharedConst<NodeAddressing::SimpleValueMapKey<std::string>>(_random.isOnceIn(2) ? "a" : "b");
    }
    switch (_random.pick(4))
    {
    case 0:
        return nullptr;
    case 1:
        return Zem::makeSharedConst<NodeAddressing::SimpleValueMapKey<Zem::UUID>>(makeUUID(_random));
    case 2:
        return Zem::makeSharedConst<NodeAddressing::SimpleValueMapKey<std::string>>(std::string(5000, 'k'));
    default:
        return Zem::makeSharedConst<NodeAddressing::SimpleValueMapKey<int>>(1);
    }
}

HostileOperations::Value HostileOperations::makeValue()
{
    switch (_random.pick(6))
    {
    case 0:
        return nullptr;
    case 1:
        return Zem::makeSharedConst<SimpleDataValue<int>>(1);
    case 2:
        return Zem::makeSharedConst<SimpleDataValue<std::string>>(makeWords(_random, 5));
    case 3:
        return Zem::makeSharedConst<SimpleDataValue<bool>>(true);
    case 4:
    {
        auto props = std::make_shared<DOM::RunProps>();
        props->_fontSize = std::numeric_limits<float>::quiet_NaN();
        return Zem::makeSharedConst<SimpleDataValue<DOM::RunPropsConstPtr>>(std::move(props));
    }
    default:
        return Zem::makeSharedConst<SimpleDataValue<DOM::CellUPtr>>(std::make_unique<DOM::Cell>());
    }
}

HostileOperations::Element HostileOperations::makeElement()
{
    const auto block = [](std::unique_ptr<DOM::Block> made) { return SharedConstPtr<DOM::Block>(std::move(made)); };
    const auto run = [](std::unique_ptr<DOM::Run> made) { return SharedConstPtr<DOM::Run>(std::move(made)); };
    if (!isSpoiled())
    {
        switch (_random.pick(8))
        {
        case 0:
            return block(std::make_unique<DOM::Paragraph>());
        case 1:
            return Zem::DOMCollaboration::ParagraphMark();
        case 2:
            return run(std::make_unique<DOM::TextRun>());
        case 3:
            return run(makeAtomicRun(_document.getSharedObjectFactory(), _random));
        case 4:
            return block(makeAtomicBlock(Setup(), _document.getSharedObjectFactory(), _random, 1));
        default:
            return static_cast<short>('a' + _random.pick(26));
        }
    }
    switch (_random.pick(9))
    {
    case 0:
        return SharedConstPtr<DOM::Block>();
    case 1:
        return SharedConstPtr<DOM::Run>();
    case 2:
        return static_cast<short>(makeNumber());
    case 3:
        return run(std::make_unique<DOM::TextRun>("text"));
    case 4:
    {
        auto paragraph = std::make_unique<DOM::Paragraph>();
        paragraph->getRuns().push_back(_random.isOnceIn(2) ? nullptr : std::make_unique<DOM::TabRun>());
        return block(std::move(paragraph));
    }
    case 5:
        return block(makeNest(_random.pick(2 * deepest)));
    case 6:
        return block(std::make_unique<DOM::Table>(_random.pick(1ul << 40U), _random.pick(3)));
    case 7:
        return block(std::make_unique<DOM::FieldBlock>(makeCellInfo(_random)));
    default:
    {
        auto shape = std::make_unique<DOM::Shape>();
        shape->setGeometry(static_cast<DOM::ShapeGeometry>(_random.pick(256)));
        shape->setSize({std::numeric_limits<float>::infinity(), 0});
        shape->getTextWithTombstones().getBlocks().push_back(nullptr);
        return block(std::move(shape));
    }
    }
}

HostileOperations::Items HostileOperations::makeItems(unsigned long count)
{
    if (isSpoiled())
    {
        switch (_random.pick(3))
        {
        case 0:
            return nullptr;
        case 1:
            return Zem::makeSharedConst<SimpleItemsCollection<std::vector<int>>>(std::vector<int>(3));
        default:
            count = _random.pick(5);
        }
    }
    TextWithTombstonesElementVector elements;
    for (count = std::min(count, 20ul); count > 0; --count)
    {
        elements.push_back(makeElement());
    }
    return Zem::makeSharedConst<TextWithTombstonesItems>(std::move(elements));
}

Shadows HostileOperations::makeShadows(const Address& address)
{
    Shadows shadows;
    for (unsigned long count = isSpoiled() ? _random.pick(6) : 1; count > 0; --count)
    {
        DeadPlace place;
        place._chunkIndex = isSpoiled() ? makeNumber() : _random.pick(address.getSize() + 1);
        place._kind = static_cast<DeadPlace::Kind>(_random.pick(isSpoiled() ? 200 : 3));
        if (isSpoiled())
        {
            place._removedValue = makeValue();
        }
        shadows._deadPlaces.push_back(std::move(place));
    }
    shadows._holdersCount = isSpoiled() ? makeNumber() : _random.pick(3);
    shadows._releasesAll = _random.isOnceIn(2);
    if (_random.isOnceIn(2))
    {
        shadows._deadPlaces.clear();
    }
    return shadows;
}

OperationUPtr HostileOperations::makeSingle()
{
    _text = _random.pickFrom(_places._texts);
    _slotsCount = FlatText(*_text._text)._slotsCount;
    OperationUPtr operation;
    switch (_depth < deepest ? _random.pick(10) : 9)
    {
    case 0:
    case 1:
        operation = makeComposite();
        break;
    case 2:
        operation = makeShadowed();
        break;
    case 3:
        operation = isSpoiled() ? std::make_unique<EmptyOperation>() : OperationUPtr(makeAtomic());
        break;
    default:
        operation = makeAtomic();
    }
    giveID(*operation);
    return operation;
}

OperationUPtr HostileOperations::makeComposite()
{
    ++_depth;
    std::vector<OperationUPtr> parts;
    for (unsigned long count = isSpoiled() ? 0 : 1 + _random.pick(3); count > 0; --count)
    {
        parts.push_back(makeSingle());
    }
    std::unique_ptr<CompositeOperation> composite;
    // A unit is made with parts, and can lose them.
    const bool isEmptied = parts.empty();
    if (isEmptied)
    {
        parts.push_back(makeSingle());
    }
    if (_random.isOnceIn(3))
    {
        OperationUPtr planned = makeSingle();
        composite =
            std::make_unique<CompositeOperation>(std::move(parts), ChangeOfRestoring(std::move(planned), makeSingle()));
    }
    else
    {
        composite = std::make_unique<CompositeOperation>(
            std::move(parts), static_cast<CompositeKind>(isSpoiled() ? _random.pick(256) : _random.pick(3)));
    }
    if (isEmptied)
    {
        composite->getParts().clear();
    }
    --_depth;
    return composite;
}

OperationUPtr HostileOperations::makeShadowed()
{
    AtomicUPtr original = makeAtomic();
    giveID(*original);
    Shadows shadows = makeShadows(original->getIfHierarchical()->getNodeAddress());
    return std::make_unique<ShadowedOperation>(std::move(original), std::move(shadows));
}

AtomicUPtr HostileOperations::makeAtomic()
{
    switch (_random.pick(16))
    {
    case 0:
    case 1:
    case 2:
        return makeRanges<Insert>();
    case 3:
    case 4:
    case 5:
        return makeRanges<Mark>();
    case 6:
    case 7:
        return makeRanges<Restore>();
    case 8:
        return makeRanges<Leave>();
    case 9:
        return isSpoiled() ? makeRanges<Remove>() : makeRanges<Leave>();
    case 10:
        return makeMove();
    case 11:
    case 12:
        return makeOnMap();
    case 13:
        return _random.isOnceIn(2) ? makeOnLine<Zem::RowTag>() : makeOnLine<Zem::ColumnTag>();
    default:
        return makeSetting();
    }
}

template<class Nested>
Nested HostileOperations::makeNested(const Address& address, unsigned long nodeType, const Range& range)
{
    Items items = makeItems(range.getCount());
    if constexpr (std::is_same_v<Nested, Leave>)
    {
        return Leave(address, nodeType, std::move(items), range, isSpoiled() ? makeNumber() : _random.pick(3));
    }
    else
    {
        return Nested(address, nodeType, std::move(items), range);
    }
}

template<class Nested>
AtomicUPtr HostileOperations::makeRanges()
{
    const Address address = isSpoiled() ? makeAddress() : _text._address;
    const unsigned long nodeType = makeNodeType(OperationDOMNodeType::TextWithTombstones);
    std::vector<Nested> nested;
    for (unsigned long count = 1 + _random.pick(3); count > 0; --count)
    {
        nested.push_back(makeNested<Nested>(address, nodeType, makeRange(1 + _random.pick(3))));
    }
    if (!isSpoiled())
    {
        std::sort(nested.begin(), nested.end(),
                  [](const Nested& left, const Nested& right)
                  { return left.getRange().getBegin() > right.getRange().getBegin(); });
        const auto overlap = [](const Nested& higher, const Nested& lower)
        { return lower.getRange().getEnd() > higher.getRange().getBegin(); };
        nested.erase(std::unique(nested.begin(), nested.end(), overlap), nested.end());
    }
    if (isSpoiled())
    {
        nested.back().setNodeAddress(makeAddress());
    }
    if (isSpoiled())
    {
        giveID(nested.back());
    }
    if (nested.size() == 1 && isSpoiled())
    {
        return std::make_unique<Nested>(nested.front());
    }
    auto ranges = std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(nested));
    if (isSpoiled() && _random.isOnceIn(4))
    {
        ranges->getNestedOperations().clear();
    }
    return ranges;
}

AtomicUPtr HostileOperations::makeMove()
{
    return std::make_unique<ListMoveOperation>(makeAddress(), makeNodeType(OperationDOMNodeType::WorksheetCollection),
                                               makeRange(1), static_cast<long>(makeNumber()));
}

AtomicUPtr HostileOperations::makeOnMap()
{
    constexpr auto scripts = OperationDOMNodeType::ScriptCollection;
    const Address address = isSpoiled() ? makeAddress() : makeFixedAddress(scripts);
    const unsigned long nodeType = makeNodeType(scripts);
    const Key key = makeKey();
    const Value value =
        isSpoiled() ? makeValue() : Value(Zem::makeSharedConst<SimpleDataValue<std::string>>(makeWords(_random, 3)));
    switch (_random.pick(3))
    {
    case 0:
        return std::make_unique<MapInsertOrRemoveOperation<MapInsertTag>>(address, nodeType, key, value);
    case 1:
        return std::make_unique<MapInsertOrRemoveOperation<MapRemoveTag>>(address, nodeType, key, value);
    default:
        return std::make_unique<MapLeaveRemovedOperation>(address, nodeType, key, value,
                                                          isSpoiled() ? makeNumber() : _random.pick(3));
    }
}

AtomicUPtr HostileOperations::makeSetting()
{
    static constexpr std::array nodeTypes{OperationDOMNodeType::Run, OperationDOMNodeType::ParagraphTag,
                                          OperationDOMNodeType::FieldBlock, OperationDOMNodeType::SectionTag,
                                          OperationDOMNodeType::DocumentProps};
    OperationDOMNodeType nodeType = _random.pickFrom(nodeTypes);
    Address address = makeAddress();
    PropertyChange change = changeParagraph(_random, DOM::Paragraph());
    const FlatText text(*_text._text);
    if (!text._elements.empty() && !isSpoiled())
    {
        const ::ZemFarm::Element& element = _random.pickFrom(text._elements);
        address = _text._address;
        address.appendItems(NodeAddressing::AddressInList(element._slot));
        if (element._run && element._kind != ElementKind::Character)
        {
            nodeType = OperationDOMNodeType::Run;
            change = changeRun(_random, *element._run);
        }
    }
    if (!isSpoiled())
    {
        return std::make_unique<SetPropertyOperation>(
            address, makeNodeType(nodeType), convertPropertyId(change._property), change._oldValue, change._newValue);
    }
    const auto makeSetValue = [&](const Value& value)
    {
        const Value other = isSpoiled() ? makeValue() : value;
        return other ? other : value;
    };
    const unsigned long propertyId = isSpoiled() ? makeNumber() : 34 + _random.pick(42);
    return std::make_unique<SetPropertyOperation>(address, makeNodeType(nodeType), propertyId,
                                                  makeSetValue(change._oldValue), makeSetValue(change._newValue));
}

SharedConstPtr<RowOrColumn> HostileOperations::makeLine()
{
    using Style = DOM::SharedRowStyleConstIPtr;
    if (isSpoiled())
    {
        return nullptr;
    }
    auto line = std::make_shared<RowOrColumn>();
    const unsigned long id = isSpoiled() ? makeNumber() : getFirstOperationID(_author);
    const Value props = Zem::makeSharedConst<SimpleDataValue<Zem::DOMCollaboration::RowColumnProps<Style>>>(
        Zem::DOMCollaboration::RowColumnProps<Style>{id, {}});
    line->setProps(isSpoiled() ? makeValue() : props);
    for (unsigned long count = _random.pick(3); count > 0; --count)
    {
        line->getCells().emplace_back(makeSlot(), makeValue(), _random.isOnceIn(2));
    }
    return line;
}

template<class Tag>
AtomicUPtr HostileOperations::makeOnLine()
{
    using Operation = TableRowOrColumnOperation<Tag>;
    const auto make = [&](auto nested)
    {
        return std::make_unique<Operation>(makeAddress(), makeNodeType(OperationDOMNodeType::CellCollection),
                                           std::move(nested));
    };
    switch (_random.pick(7))
    {
    case 0:
        return make(TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>(makeSlot(), makeLine()));
    case 1:
        return make(
            TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>(makeSlot(), makeLine()));
    case 2:
        return make(TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>(makeSlot(), makeLine()));
    case 3:
        return make(RowOrColumnRemoveOperation(makeSlot(), makeLine()));
    case 4:
        return make(RowOrColumnMoveOperation(makeSlot(), static_cast<long>(makeNumber())));
    case 5:
        return make(RowOrColumnLeaveTombstoneOperation(makeSlot(), makeLine(), makeNumber()));
    default:
        const Value value = Zem::makeSharedConst<SimpleDataValue<bool>>(true);
        return make(SetRowOrColumnPropertyOperation(makeSlot(), 34 + _random.pick(42), value, value));
    }
}

void HostileOperations::giveID(Operation& operation)
{
    if (_random.isOnceIn(3))
    {
        return;
    }
    unsigned long id = isSpoiled() ? makeNumber() : getFirstOperationID(_author) + _random.pick(1000);
    operation.setIDIfNeeded(id);
}

} // namespace ZemFarm

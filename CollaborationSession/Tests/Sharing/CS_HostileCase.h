#pragma once

/// Operations that no client makes, field by field.

#include "Sharing/CS_Admission.h"
#include "Sharing/CS_NodeOperations.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"
#include "DClb_RowColumnProps.h"
#include "DClb_TextElement.h"
#include "DOM_Cell.h"
#include "TS_TextCase.h"

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession::HostileCase
{

using namespace CollaborationEngine;
using namespace DOMCollaboration;
using namespace NodeOperations;
using Range = CollaborationUtils::IndexRange<unsigned long>;
using Insert = ListModificationOperation<InsertTag>;
using Remove = ListModificationOperation<RemoveTag>;
using Mark = ListModificationOperation<MarkAsRemovedTag>;
using Restore = ListModificationOperation<RestoreTag>;
using Leave = ListLeaveTombstonesOperation;

constexpr ClientID author = 3;
constexpr unsigned long slotsBound = 100;
constexpr unsigned long greatest = std::numeric_limits<unsigned long>::max();

constexpr unsigned long number(OperationDOMNodeType nodeType)
{
    return convertOperationNodeType(nodeType);
}

constexpr unsigned long textType = number(OperationDOMNodeType::TextWithTombstones);

/// What `findFault` answers for an operation that is as it should be.
constexpr std::nullopt_t noFault = std::nullopt;

/// What is wrong with an operation by itself.
inline std::optional<OperationFault> findFault(const Operation& operation, const AdmissionLimits& limits = {})
{
    try
    {
        BatchAdmission(author, slotsBound, limits).requireWellFormed(operation);
        return std::nullopt;
    }
    catch (const InvalidOperationError& error)
    {
        EXPECT_STREQ(describe(error.getFault()), error.what());
        return error.getFault();
    }
}

inline std::optional<OperationFault> findFault(const OperationUPtr& operation, const AdmissionLimits& limits = {})
{
    return findFault(*operation, limits);
}

inline SharedConstPtr<ItemsCollection> makeItems(std::string_view notation)
{
    return makeSharedConst<TextWithTombstonesItems>(TestSupport::makeElements(notation));
}

inline SharedConstPtr<ItemsCollection> makeItems(TextWithTombstonesElement element)
{
    return makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector{std::move(element)});
}

template<class Nested>
OperationUPtr makeRanges(std::vector<Nested> ranges)
{
    return std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(ranges));
}

template<class Nested>
Nested makeRange(SharedConstPtr<ItemsCollection> items, unsigned long begin, unsigned long end,
                 const OperationNodeAddress& address = getMainText(), unsigned long nodeType = textType)
{
    return Nested(address, nodeType, std::move(items), Range(begin, end));
}

/// An operation of one range.
template<class Nested>
OperationUPtr make(SharedConstPtr<ItemsCollection> items, unsigned long begin, unsigned long end)
{
    std::vector<Nested> ranges;
    ranges.push_back(makeRange<Nested>(std::move(items), begin, end));
    return makeRanges(std::move(ranges));
}

/// An insertion of one element.
inline OperationUPtr insertElement(TextWithTombstonesElement element)
{
    return make<Insert>(makeItems(std::move(element)), 0, 1);
}

template<class... Parts>
std::vector<OperationUPtr> makeParts(Parts... parts)
{
    std::vector<OperationUPtr> result;
    (result.push_back(std::move(parts)), ...);
    return result;
}

inline OperationUPtr compose(std::vector<OperationUPtr> parts, CompositeKind kind = CompositeKind::Plain)
{
    return std::make_unique<CompositeOperation>(std::move(parts), kind);
}

inline OperationUPtr withID(OperationUPtr operation, Operation::Id id)
{
    operation->setIDIfNeeded(id);
    return operation;
}

inline OperationUPtr shadow(const OperationUPtr& operation, Shadows shadows)
{
    std::unique_ptr<AtomicOperation> original;
    cast<AtomicOperation>(*operation).cloneTo(original);
    return std::make_unique<ShadowedOperation>(std::move(original), std::move(shadows));
}

inline Shadows makeShadow(unsigned long chunkIndex, DeadPlace::Kind kind = DeadPlace::Kind::Element)
{
    Shadows shadows;
    shadows._deadPlaces.push_back(DeadPlace{chunkIndex, kind, nullptr});
    return shadows;
}

inline OperationNodeAddress makeFixed(OperationDOMNodeType nodeType)
{
    return OperationNodeAddress{makeChunk(nodeType)};
}

inline SharedConstPtr<NodeAddressing::MapKey> makeStringKey(std::string key)
{
    return makeSharedConst<NodeAddressing::SimpleValueMapKey<std::string>>(std::move(key));
}

inline SharedConstPtr<NodeAddressing::MapKey> makeUUIDKey()
{
    return makeSharedConst<NodeAddressing::SimpleValueMapKey<UUID>>(UUID());
}

template<class Tag>
OperationUPtr onScripts(SharedConstPtr<NodeAddressing::MapKey> key, SharedConstPtr<DataValue> value)
{
    constexpr auto nodeType = OperationDOMNodeType::ScriptCollection;
    return std::make_unique<MapInsertOrRemoveOperation<Tag>>(makeFixed(nodeType), number(nodeType), std::move(key),
                                                             std::move(value));
}

/// Sets a property of the whole document.
template<class Value>
OperationUPtr setOnDocument(unsigned long propertyId, Value value)
{
    constexpr auto nodeType = OperationDOMNodeType::DocumentProps;
    const auto data = makeSharedConst<SimpleDataValue<Value>>(std::move(value));
    return std::make_unique<SetPropertyOperation>(makeFixed(nodeType), number(nodeType), propertyId, data, data);
}

inline OperationNodeAddress getCells()
{
    return getElement(0).appendItems(makeChunk(OperationDOMNodeType::CellCollection));
}

using RowStylePtr = DOM::SharedRowStyleConstIPtr;

inline std::shared_ptr<RowOrColumn> makeRow(unsigned long id)
{
    auto row = std::make_shared<RowOrColumn>();
    row->setProps(makeSharedConst<SimpleDataValue<RowColumnProps<RowStylePtr>>>(RowColumnProps<RowStylePtr>{id, {}}));
    return row;
}

inline SharedConstPtr<DataValue> makeCellValue()
{
    return makeSharedConst<SimpleDataValue<DOM::CellUPtr>>(std::make_unique<DOM::Cell>());
}

template<class Nested>
OperationUPtr onRow(Nested nested)
{
    return std::make_unique<TableRowOperation>(getCells(), number(OperationDOMNodeType::CellCollection),
                                               std::move(nested));
}

using InsertLine = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
using MarkLine = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
using RestoreLine = TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>;

/// A paragraph in so many shapes.
inline std::unique_ptr<DOM::Block> makeNest(unsigned long depth)
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

inline TextWithTombstonesElement makeBlock(std::unique_ptr<DOM::Block> block)
{
    return SharedConstPtr<DOM::Block>(std::move(block));
}

inline TextWithTombstonesElement makeRun(std::unique_ptr<DOM::Run> run)
{
    return SharedConstPtr<DOM::Run>(std::move(run));
}

inline OperationUPtr setRunOn(const OperationNodeAddress& address)
{
    return set<PropertyId::RunPropertyId>(address, OperationDOMNodeType::Run, std::shared_ptr<DOM::RunProps>(),
                                          std::shared_ptr<DOM::RunProps>());
}

} // namespace Zem::CollaborationSession::HostileCase

// One row for each adapter class: where the sample document has such a node, its type in each world, and the fixed
// types under which it has children.

#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOMNodeAdapters/DClb_SampleDocument.h"
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

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <typeindex>
#include <vector>

namespace Zem::DOMCollaboration
{

using namespace Addresses;

namespace
{

using Numbers = std::set<unsigned long>;

template<class Tag, class NodeType, bool isConst>
using FieldBlockAdapter = GenericAtomicBlockNodeAdapter<Tag, NodeType, DOM::FieldBlock, isConst>;

enum class Kind
{
    Text,
    Workbook,
    Presentation,
    Detached
};

/// A document of each kind over one sample.
struct Documents
{
    DocumentAdapterWithNodeAdapter& get(Kind kind)
    {
        switch (kind)
        {
        case Kind::Text:
            return _text;
        case Kind::Workbook:
            return _workbook;
        case Kind::Presentation:
            return _presentation;
        case Kind::Detached:
            break;
        }
        return _detached;
    }

    SampleDocument _sample;
    TextDocumentAdapter _text{_sample._document};
    WorkbookDocumentAdapter _workbook{_sample._document};
    PresentationDocumentAdapter _presentation{_sample._document};
    BlocksAdapterWithNodeAdapter _detached{
        _sample._document.getTextWithTombstones(), _sample._document.getStyles(), nullptr, nullptr, nullptr, nullptr,
        _sample._document.getSharedObjectFactory()};
};

/// What a row says of one world. `_classes` are the read-only and the writable adapter.
template<class Address>
struct InWorld
{
    std::function<Address(const SampleDocument&)> _address;
    std::type_index _constClass;
    std::type_index _writableClass;
    unsigned long _nodeType;
    Numbers _children;
};

struct Row
{
    const char* _name;
    Kind _kind;
    std::vector<InWorld<OperationNodeAddress>> _operation;
    std::vector<InWorld<NativeNodeAddress>> _native;
};

Numbers toNumbers(std::initializer_list<Operation> types)
{
    Numbers numbers;
    for (const Operation type : types)
    {
        numbers.insert(convertOperationNodeType(type));
    }
    return numbers;
}

Numbers toNative(const Numbers& operationTypes)
{
    Numbers numbers;
    for (const unsigned long type : operationTypes)
    {
        numbers.insert(
            static_cast<unsigned long>(ElementPathUtils::getCorrespondingNodeType(static_cast<Operation>(type))));
    }
    return numbers;
}

/// A row of an adapter of both worlds.
template<template<class, class, bool> class Adapter>
Row shared(const char* name, Kind kind, unsigned long operationType, unsigned long nativeType,
           std::function<OperationNodeAddress(const SampleDocument&)> operationAddress,
           std::function<NativeNodeAddress(const SampleDocument&)> nativeAddress,
           std::initializer_list<Operation> children = {})
{
    const Numbers numbers = toNumbers(children);
    return {name,
            kind,
            {{std::move(operationAddress), typeid(InOperationWorld<Adapter, true>),
              typeid(InOperationWorld<Adapter, false>), operationType, numbers}},
            {{std::move(nativeAddress), typeid(InNativeWorld<Adapter, true>), typeid(InNativeWorld<Adapter, false>),
              nativeType, toNative(numbers)}}};
}

template<template<bool> class Adapter>
Row inOperations(const char* name, unsigned long type, const OperationNodeAddress& address)
{
    return {name,
            Kind::Text,
            {{[=](const SampleDocument&) { return address; }, typeid(Adapter<true>), typeid(Adapter<false>), type, {}}},
            {}};
}

template<template<bool> class Adapter>
Row inTree(const char* name, unsigned long type, const NativeNodeAddress& address, const Numbers& children = {})
{
    return {name,
            Kind::Text,
            {},
            {{[=](const SampleDocument&) { return address; }, typeid(Adapter<true>), typeid(Adapter<false>), type,
              children}}};
}

/// A row whose address is the same in both worlds but for the types, and depends on nothing.
template<template<class, class, bool> class Adapter>
Row sharedAt(const char* name, Kind kind, unsigned long operationType, unsigned long nativeType,
             const OperationNodeAddress& operationAddress, const NativeNodeAddress& nativeAddress,
             std::initializer_list<Operation> children = {})
{
    return shared<Adapter>(
        name, kind, operationType, nativeType, [=](const SampleDocument&) { return operationAddress; },
        [=](const SampleDocument&) { return nativeAddress; }, children);
}

template<template<class, class, bool> class Adapter>
Row element(const char* name, unsigned long operationType, unsigned long nativeType, Operation operationCollection,
            Native nativeCollection, UUID SampleDocument::*uuid, std::initializer_list<Operation> children = {})
{
    return shared<Adapter>(
        name, Kind::Text, operationType, nativeType,
        [=](const SampleDocument& sample) { return operation(fixed(operationCollection), key(sample.*uuid)); },
        [=](const SampleDocument& sample) { return native(fixed(nativeCollection), key(sample.*uuid)); }, children);
}

const auto text = fixed(Operation::TextWithTombstones);
const auto blocks = fixed(Native::BlockCollection);
const auto runs = fixed(Native::RunCollection);
const auto chars = fixed(Native::CharCollection);

std::vector<Row> makeRootRows()
{
    return {
        sharedAt<GenericTextDocumentNodeAdapter>("TextDocument", Kind::Text, 0, 0, operation(), native(),
                                                 {Operation::TextWithTombstones, Operation::HeaderFooterPairCollection,
                                                  Operation::DocumentProps, Operation::ScriptCollection,
                                                  Operation::CommentCollection, Operation::NoteCollection,
                                                  Operation::TextStyleCollection, Operation::TableStyleCollection}),
        sharedAt<GenericWorkbookDocumentNodeAdapter>(
            "WorkbookDocument", Kind::Workbook, 1, 1, operation(), native(),
            {Operation::WorksheetCollection, Operation::HeaderFooterPairCollection, Operation::DocumentProps,
             Operation::ScriptCollection, Operation::CommentCollection, Operation::NoteCollection,
             Operation::TextStyleCollection, Operation::TableStyleCollection}),
        sharedAt<GenericPresentationDocumentNodeAdapter>(
            "PresentationDocument", Kind::Presentation, 2, 2, operation(), native(),
            {Operation::TextWithTombstones, Operation::DocumentProps, Operation::ScriptCollection}),
        sharedAt<GenericTemporaryDOMNodeAdapter>("Temporary", Kind::Detached, 23, 26, operation(), native(),
                                                 {Operation::TextWithTombstones}),
        sharedAt<GenericDocumentPropsNodeAdapter>("DocumentProps", Kind::Text, 24, 27,
                                                  operation(fixed(Operation::DocumentProps)),
                                                  native(fixed(Native::DocumentProps))),
        sharedAt<GenericScriptCollectionNodeAdapter>("ScriptCollection", Kind::Presentation, 25, 28,
                                                     operation(fixed(Operation::ScriptCollection)),
                                                     native(fixed(Native::ScriptCollection))),
        sharedAt<GenericHeaderFooterPairCollectionNodeAdapter>("HeaderFooterPairCollection", Kind::Workbook, 19, 22,
                                                               operation(fixed(Operation::HeaderFooterPairCollection)),
                                                               native(fixed(Native::HeaderFooterPairCollection))),
        sharedAt<GenericCommentCollectionNodeAdapter>("CommentCollection", Kind::Text, 26, 29,
                                                      operation(fixed(Operation::CommentCollection)),
                                                      native(fixed(Native::CommentCollection))),
        sharedAt<GenericNoteCollectionNodeAdapter>("NoteCollection", Kind::Text, 28, 31,
                                                   operation(fixed(Operation::NoteCollection)),
                                                   native(fixed(Native::NoteCollection))),
        sharedAt<GenericTextStyleCollectionNodeAdapter>("TextStyleCollection", Kind::Text, 30, 33,
                                                        operation(fixed(Operation::TextStyleCollection)),
                                                        native(fixed(Native::TextStyleCollection))),
        sharedAt<GenericTableStyleCollectionNodeAdapter>("TableStyleCollection", Kind::Text, 32, 35,
                                                         operation(fixed(Operation::TableStyleCollection)),
                                                         native(fixed(Native::TableStyleCollection)))};
}

Row makeHeaderOrFooterRow(const char* name, unsigned long operationType, unsigned long nativeType,
                          Operation operationPart, Native nativePart)
{
    return shared<GenericHeaderOrFooterNodeAdapter>(
        name, Kind::Text, operationType, nativeType,
        [=](const SampleDocument& sample)
        { return operation(fixed(Operation::HeaderFooterPairCollection), key(sample._pair), fixed(operationPart)); },
        [=](const SampleDocument& sample)
        { return native(fixed(Native::HeaderFooterPairCollection), key(sample._pair), fixed(nativePart)); },
        {Operation::TextWithTombstones});
}

/// A header footer pair isn't here: it fails for other types than its own two.
std::vector<Row> makeElementRows()
{
    return {element<GenericCommentNodeAdapter>("Comment", 27, 30, Operation::CommentCollection,
                                               Native::CommentCollection, &SampleDocument::_comment),
            element<GenericNoteNodeAdapter>("Note", 29, 32, Operation::NoteCollection, Native::NoteCollection,
                                            &SampleDocument::_note),
            element<GenericTextStyleNodeAdapter>("TextStyle", 31, 34, Operation::TextStyleCollection,
                                                 Native::TextStyleCollection, &SampleDocument::_textStyle),
            element<GenericTableStyleNodeAdapter>("TableStyle", 33, 36, Operation::TableStyleCollection,
                                                  Native::TableStyleCollection, &SampleDocument::_tableStyle),
            makeHeaderOrFooterRow("Header", 21, 24, Operation::Header, Native::Header),
            makeHeaderOrFooterRow("Footer", 22, 25, Operation::Footer, Native::Footer)};
}

std::vector<Row> makeTableRows()
{
    const auto operationFrames = operation(text, at(7), fixed(Operation::FrameCollection));
    const auto nativeFrames = native(blocks, at(1), fixed(Native::FrameCollection));
    const auto operationFormats = operation(text, at(7), fixed(Operation::ConditionalFormatCollection));
    const auto nativeFormats = native(blocks, at(1), fixed(Native::ConditionalFormatCollection));
    const auto operationCells = operation(text, at(7), fixed(Operation::CellCollection));
    const auto nativeCells = native(blocks, at(1), fixed(Native::CellCollection));
    return {
        sharedAt<GenericTableNodeAdapter>(
            "Table", Kind::Text, 6, 7, operation(text, at(7)), native(blocks, at(1)),
            {Operation::CellCollection, Operation::FrameCollection, Operation::ConditionalFormatCollection}),
        sharedAt<GenericFrameCollectionNodeAdapter>("FrameCollection", Kind::Text, 8, 9, operationFrames, nativeFrames),
        sharedAt<GenericFrameNodeAdapter>("Frame", Kind::Text, 7, 8, extended(operationFrames, at(2)),
                                          extended(nativeFrames, at(1))),
        sharedAt<GenericConditionalFormatCollectionNodeAdapter>("ConditionalFormatCollection", Kind::Text, 10, 11,
                                                                operationFormats, nativeFormats),
        sharedAt<GenericConditionalFormatNodeAdapter>(
            "ConditionalFormat", Kind::Text, 9, 10, extended(operationFormats, at(1)), extended(nativeFormats, at(0))),
        sharedAt<GenericCellCollectionNodeAdapter>("CellCollection", Kind::Text, 12, 13, operationCells, nativeCells),
        sharedAt<GenericCellNodeAdapter>("Cell", Kind::Text, 13, 14, extended(operationCells, cell(2, 0)),
                                         extended(nativeCells, cell(1, 0)), {Operation::TextWithTombstones}),
        sharedAt<GenericCellNodeAdapter>("Cell that isn't there", Kind::Text, 13, 14,
                                         extended(operationCells, cell(0, 1)), extended(nativeCells, cell(0, 1)),
                                         {Operation::TextWithTombstones}),
        sharedAt<GenericCollectionEndMarkNodeAdapter>("CollectionEndMark", Kind::Text, 16, 21,
                                                      extended(operationCells, cell(3, 0)),
                                                      extended(nativeCells, cell(2, 0)))};
}

std::vector<Row> makeTextRows()
{
    Row tombstone = sharedAt<GenericTombstoneNodeAdapter>("Tombstone", Kind::Text, 3, 3, operation(text, at(3)), {});
    tombstone._native.clear();
    return {
        tombstone,
        sharedAt<GenericSectionTagNodeAdapter>("SectionTag", Kind::Text, 5, 6, operation(text, at(8)),
                                               native(blocks, at(2))),
        sharedAt<GenericShapeNodeAdapter>("Shape", Kind::Text, 14, 15, operation(text, at(9)), native(blocks, at(3)),
                                          {Operation::TextWithTombstones}),
        sharedAt<FieldBlockAdapter>("FieldBlock", Kind::Text, 11, 12, operation(text, at(10)), native(blocks, at(4))),
        sharedAt<GenericCharNodeAdapter>("Char", Kind::Text, 18, 20, operation(text, at(4)),
                                         native(blocks, at(0), runs, at(0), chars, at(1))),
        inOperations<GenericTextWithTombstonesNodeAdapter>("TextWithTombstones", 34, operation(text)),
        inOperations<GenericParagraphTagNodeAdapter>("ParagraphTag", 15, operation(text, at(0))),
        inOperations<GenericParagraphMarkNodeAdapter>("ParagraphMark", 16, operation(text, at(6))),
        inOperations<GenericRunTagNodeAdapter>("RunTag of a text run", 17, operation(text, at(1))),
        inOperations<GenericRunTagNodeAdapter>("RunTag of an atomic run", 17, operation(text, at(5))),
        inTree<GenericBlockCollectionNodeAdapter>("BlockCollection", 5, native(blocks)),
        inTree<GenericParagraphNodeAdapter>("Paragraph", 16, native(blocks, at(0)), {17}),
        inTree<GenericRunCollectionNodeAdapter>("RunCollection", 17, native(blocks, at(0), runs)),
        inTree<GenericTextRunNodeAdapter>("TextRun", 18, native(blocks, at(0), runs, at(0)), {19}),
        inTree<GenericRunNodeAdapter>("Run", 18, native(blocks, at(0), runs, at(1))),
        inTree<GenericCharCollectionNodeAdapter>("CharCollection", 19, native(blocks, at(0), runs, at(0), chars))};
}

template<class Adapter>
std::type_index classOf(const Adapter& adapter)
{
    return typeid(adapter);
}

/// The class that the visitor's function was called for.
template<class Adapter>
std::type_index visitedClass(Adapter& adapter)
{
    return visitWith<std::type_index>(adapter, [](auto& visited) { return std::type_index(typeid(visited)); });
}

template<class Tag, class NodeType, bool isConst>
Numbers collectFixedChildren(DOMNodeAdapter<Tag, NodeType, isConst>& adapter)
{
    Numbers numbers;
    for (unsigned long number = 0; number <= 40; ++number)
    {
        const NodeAddressing::FixedNodeAddress<NodeType> chunk(static_cast<NodeType>(number));
        if (adapter.createChildAdapterIfPossible(chunk, std::is_same_v<NodeType, unsigned long>))
        {
            numbers.insert(number);
        }
    }
    return numbers;
}

template<class Adapter, class Expected>
void expectAdapter(Adapter& adapter, const Expected& expected, std::type_index expectedClass)
{
    EXPECT_EQ(expectedClass, typeid(adapter));
    EXPECT_EQ(expectedClass, visitedClass(adapter));
    EXPECT_EQ(expectedClass, visitedClass(std::as_const(adapter)));
    EXPECT_EQ(expected._nodeType, static_cast<unsigned long>(adapter.getNodeType()));
    EXPECT_EQ(expected._children, collectFixedChildren(adapter));
    const auto twin = adapter.createConst();
    EXPECT_EQ(expected._constClass, classOf(*twin));
    EXPECT_EQ(adapter.getNodeType(), twin->getNodeType());
    EXPECT_EQ(expected._children, collectFixedChildren(*twin));
}

template<class Address>
void expectInWorld(const InWorld<Address>& expected, DocumentAdapterWithNodeAdapter& document,
                   const SampleDocument& sample)
{
    const Address address = expected._address(sample);
    SCOPED_TRACE(print(address));
    const auto writable = ElementPathUtils::createDOMNodeAdapter(document, address);
    expectAdapter(*writable, expected, expected._writableClass);
    const auto readonly = ElementPathUtils::createDOMNodeAdapter(std::as_const(document), address);
    expectAdapter(*readonly, expected, expected._constClass);
}

std::vector<Row> makeRows()
{
    std::vector<Row> rows = makeRootRows();
    for (const std::vector<Row>& more : {makeElementRows(), makeTableRows(), makeTextRows()})
    {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

template<class... Adapters>
std::set<std::type_index> classesOf(TypeList<Adapters...>)
{
    return {typeid(Adapters)...};
}

} // namespace

TEST(NodeAdapterCatalogue, EveryClassHasItsTypeAndChildrenInBothWorldsAndConstnesses)
{
    Documents documents;
    for (const Row& row : makeRows())
    {
        SCOPED_TRACE(row._name);
        for (const auto& inWorld : row._operation)
        {
            expectInWorld(inWorld, documents.get(row._kind), documents._sample);
        }
        for (const auto& inWorld : row._native)
        {
            expectInWorld(inWorld, documents.get(row._kind), documents._sample);
        }
    }
}

TEST(NodeAdapterCatalogue, NoClassIsMissing)
{
    std::set<std::type_index> operationClasses =
        classesOf(NodeAdaptersOf<OperationNodeAddressTag, unsigned long, false>());
    std::set<std::type_index> nativeClasses =
        classesOf(NodeAdaptersOf<NativeNodeAddressTag, NativeDOMNodeType, false>());
    EXPECT_EQ(34u, operationClasses.size());
    EXPECT_EQ(36u, nativeClasses.size());
    for (const Row& row : makeRows())
    {
        for (const auto& inWorld : row._operation)
        {
            operationClasses.erase(inWorld._writableClass);
        }
        for (const auto& inWorld : row._native)
        {
            nativeClasses.erase(inWorld._writableClass);
        }
    }
    // These have tests of their own.
    const std::set<std::type_index> operationRest = {
        typeid(InOperationWorld<GenericHeaderFooterPairNodeAdapter, false>)};
    const std::set<std::type_index> nativeRest = {typeid(InNativeWorld<GenericHeaderFooterPairNodeAdapter, false>),
                                                  typeid(InNativeWorld<GenericTombstoneNodeAdapter, false>)};
    EXPECT_EQ(operationRest, operationClasses);
    EXPECT_EQ(nativeRest, nativeClasses);
}

TEST(NodeAdapterCatalogue, AHeaderFooterPairIsThePairOfItsHeaderAndFooter)
{
    DOM::HeaderFooterPair pair;
    InOperationWorld<GenericHeaderFooterPairNodeAdapter, false> inOperations(pair);
    InNativeWorld<GenericHeaderFooterPairNodeAdapter, false> inTree(pair);
    EXPECT_EQ(20u, inOperations.getNodeType());
    EXPECT_EQ(Native::HeaderFooterPair, inTree.getNodeType());
    EXPECT_EQ(20u, inOperations.createConst()->getNodeType());
    const auto footer = inOperations.createChildAdapter(fixed(Operation::Footer), true);
    const auto header = inTree.createChildAdapter(fixed(Native::Header), false);
    using Footer = InOperationWorld<GenericHeaderOrFooterNodeAdapter, false>;
    using Header = InNativeWorld<GenericHeaderOrFooterNodeAdapter, false>;
    EXPECT_EQ(&pair.getFooter(), &cast<Footer>(*footer).getTextWithTombstones());
    EXPECT_EQ(&pair.getHeader(), &cast<Header>(*header).getTextWithTombstones());
    OperationNodeAdapter<false>& root = inOperations;
    EXPECT_EQ(std::type_index(typeid(InOperationWorld<GenericHeaderFooterPairNodeAdapter, false>)), visitedClass(root));
}

TEST(NodeAdapterCatalogue, ATombstoneOfTheNativeWorldHasItsTypeAndNoChildren)
{
    InNativeWorld<GenericTombstoneNodeAdapter, false> tombstone;
    EXPECT_EQ(Native::Tombstone, tombstone.getNodeType());
    EXPECT_TRUE(collectFixedChildren(tombstone).empty());
    EXPECT_EQ(nullptr, tombstone.createChildAdapterIfPossible(at(0), false));
    // A list of a table finds one when it is asked for places, in this world too.
    SampleDocument sample;
    InNativeWorld<GenericFrameCollectionNodeAdapter, true> frames(sample.getTable());
    EXPECT_EQ(Native::Tombstone, frames.createChildAdapter(at(1), true)->getNodeType());
}

TEST(NodeAdapterCatalogue, AccessorsGiveTheDocumentsOwnObjects)
{
    Documents documents;
    DOM::Document& document = documents._sample._document;
    auto& mainText = document.getTextWithTombstones();
    auto& paragraph = dynamic_cast<DOM::Paragraph&>(*mainText.getBlocks().at(0));
    DOM::Table& table = documents._sample.getTable();
    const auto at = [&]<class Adapter>(std::type_identity<Adapter>, const OperationNodeAddress& address)
    { return ElementPathUtils::createDOMNodeAdapterAs<Adapter>(documents._text, address); };
    const auto flat = [](unsigned long place)
    { return operation(fixed(Operation::TextWithTombstones), Addresses::at(place)); };

    EXPECT_EQ(&paragraph, &at(std::type_identity<GenericParagraphTagNodeAdapter<false>>(), flat(0))->getParagraph());
    EXPECT_EQ(&paragraph, &at(std::type_identity<GenericParagraphMarkNodeAdapter<false>>(), flat(6))->getParagraph());
    EXPECT_EQ(paragraph.getRuns().at(0).get(),
              &at(std::type_identity<GenericRunTagNodeAdapter<false>>(), flat(1))->getRun());
    EXPECT_EQ(&table, &at(std::type_identity<InOperationWorld<GenericTableNodeAdapter, false>>(), flat(7))->getTable());
    EXPECT_EQ(
        mainText.getBlocks().at(2).get(),
        &at(std::type_identity<InOperationWorld<GenericSectionTagNodeAdapter, false>>(), flat(8))->getSectionTag());
    EXPECT_EQ(mainText.getBlocks().at(4).get(),
              &at(std::type_identity<InOperationWorld<FieldBlockAdapter, false>>(), flat(10))->getBlock());
    InOperationWorld<GenericFrameCollectionNodeAdapter, false> frames(table);
    EXPECT_EQ(&table.getFrames(), &frames.getFrames());
    const auto frame = frames.createChildAdapter(Addresses::at(2), true);
    EXPECT_EQ(table.getFrames().getElements().at(1).get(),
              (&cast<InOperationWorld<GenericFrameNodeAdapter, false>>(*frame).getFrame()));
    InOperationWorld<GenericConditionalFormatCollectionNodeAdapter, false> formats(table);
    EXPECT_EQ(&table.getConditionalFormats(), &formats.getConditionalFormats());
    const auto format = formats.createChildAdapter(Addresses::at(1), true);
    EXPECT_EQ(table.getConditionalFormats().getElements().at(0).get(),
              (&cast<InOperationWorld<GenericConditionalFormatNodeAdapter, false>>(*format).getConditionalFormat()));
    const auto pair = at(std::type_identity<InOperationWorld<GenericHeaderFooterPairCollectionNodeAdapter, false>>(),
                         operation(fixed(Operation::HeaderFooterPairCollection)));
    EXPECT_EQ(&document.getHeadersFooters(), &pair->getHeadersFooters());
    const auto scripts = at(std::type_identity<InOperationWorld<GenericScriptCollectionNodeAdapter, false>>(),
                            operation(fixed(Operation::ScriptCollection)));
    EXPECT_EQ(&document.getScripts(), &scripts->getScripts());
    const auto props = at(std::type_identity<InOperationWorld<GenericDocumentPropsNodeAdapter, false>>(),
                          operation(fixed(Operation::DocumentProps)));
    EXPECT_EQ(&document, &props->getDocument());
}

namespace
{

/// Compares the ways from the root of a detached text, and from a cell with the same text, which is the child `toText`.
/// `TextAdapter` is the adapter of a text in this world.
template<class TextAdapter, class Tag, class NodeType, bool isConst, class Chunk>
void expectTemporaryLeadsToTextAsACellDoes(const Chunk& toText, bool includingTombstones)
{
    DOM::Table table(1, 1);
    DOM::TextWithTombstones& cellText = table.getOrCreateCell(RowIndex(0), ColumnIndex(0)).getTextWithTombstones();
    cellText = makeSampleText();
    DOM::TextWithTombstones detached = makeSampleText();
    GenericTemporaryDOMNodeAdapter<Tag, NodeType, isConst> temporary(detached);
    const auto inCell =
        CellAdapterCreator<isConst>::template makeCell<Tag, NodeType>(table, RowIndex(0), ColumnIndex(0));
    const auto ofTemporary = temporary.createChildAdapter(toText, includingTombstones);
    const auto ofCell = inCell->createChildAdapter(toText, includingTombstones);
    EXPECT_EQ(ofCell->getNodeType(), ofTemporary->getNodeType());
    EXPECT_EQ(detached.getBlocks().front().get(), &cast<TextAdapter>(*ofTemporary).getBlocks()[0]);
    EXPECT_EQ(cellText.getBlocks().front().get(), &cast<TextAdapter>(*ofCell).getBlocks()[0]);
    for (unsigned long place = 0; place <= 12; ++place)
    {
        const auto one = ofTemporary->createChildAdapterIfPossible(at(place), includingTombstones);
        const auto other = ofCell->createChildAdapterIfPossible(at(place), includingTombstones);
        ASSERT_EQ(!one, !other) << place;
        if (one)
        {
            EXPECT_EQ(classOf(*one), classOf(*other)) << place;
            EXPECT_EQ(one->getNodeType(), other->getNodeType()) << place;
        }
    }
}

} // namespace

TEST(NodeAdapterCatalogue, ATemporaryRootLeadsToTextAsACellDoes)
{
    const auto flat = fixed(Operation::TextWithTombstones);
    expectTemporaryLeadsToTextAsACellDoes<GenericTextWithTombstonesNodeAdapter<true>, OperationNodeAddressTag,
                                          unsigned long, true>(flat, true);
    expectTemporaryLeadsToTextAsACellDoes<GenericTextWithTombstonesNodeAdapter<false>, OperationNodeAddressTag,
                                          unsigned long, false>(flat, true);
    const auto tree = fixed(Native::BlockCollection);
    expectTemporaryLeadsToTextAsACellDoes<GenericBlockCollectionNodeAdapter<true>, NativeNodeAddressTag,
                                          NativeDOMNodeType, true>(tree, false);
    expectTemporaryLeadsToTextAsACellDoes<GenericBlockCollectionNodeAdapter<false>, NativeNodeAddressTag,
                                          NativeDOMNodeType, false>(tree, false);
}

TEST(NodeAdapterCatalogue, ReadOnlyCollectionsShowTheTablesOwnElements)
{
    SampleDocument sample;
    const DOM::Table& table = sample.getTable();
    const InOperationWorld<GenericFrameCollectionNodeAdapter, true> frames(table);
    EXPECT_EQ(table.getFrames().getElements().at(1).get(), &frames.getFrames().getElements()[1]);
    EXPECT_EQ(&table.getFrames().getTombstones(), &frames.getFrames().getTombstones());
    EXPECT_EQ(table.getFrames().getAllElementsCount(), frames.getFrames().getAllElementsCount());
    EXPECT_EQ(table.getFrames().getLiveElementsCount(), frames.getFrames().getLiveElementsCount());
    const InNativeWorld<GenericConditionalFormatCollectionNodeAdapter, true> formats(table);
    EXPECT_EQ(table.getConditionalFormats().getElements().at(0).get(),
              &formats.getConditionalFormats().getElements()[0]);
    const auto& mainText = sample._document.getTextWithTombstones();
    const DOM::Runs& firstRuns = dynamic_cast<const DOM::Paragraph&>(*mainText.getBlocks().at(0)).getRuns();
    EXPECT_EQ(firstRuns.at(0).get(), &GenericRunCollectionNodeAdapter<true>(firstRuns).getRuns()[0]);
    const GenericTextWithTombstonesNodeAdapter<true> flat(mainText);
    EXPECT_EQ(&mainText.getTombstones(), &flat.getTombstones());
    EXPECT_EQ(PlaceKind::ParaTag, flat.findPlace(IndexExcludingTombstones(0))->_kind);
}

} // namespace Zem::DOMCollaboration

#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/DClb_FakeDocumentAdapter.h"
#include "DOMNodeAdapters/DClb_SampleDocument.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_BlockCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Native/DClb_RunCollectionNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_CellNodeAdapter.h"
#include "DOMNodeAdapters/Shared/DClb_DocumentNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_PlaceNodeAdapters.h"
#include "DOMNodeAdapters/Shared/DClb_TableNodeAdapters.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace Zem::DOMCollaboration
{

using namespace Addresses;
using namespace ElementPathUtils;

namespace
{

constexpr const char* noElement = "There is no element corresponding to the passed address";
constexpr const char* noChildren = "Leave node doesn't have children";

const auto text = fixed(Operation::TextWithTombstones);
const auto blocks = fixed(Native::BlockCollection);
const auto runs = fixed(Native::RunCollection);
const auto chars = fixed(Native::CharCollection);
const auto operationCells = fixed(Operation::CellCollection);
const auto nativeCells = fixed(Native::CellCollection);

class ElementPathUtilsTest : public testing::Test
{
protected:
    OperationNodeAddress toOperation(const NativeNodeAddress& address) const
    {
        return convertNodeAddress(_document, address);
    }

    NativeNodeAddress toNative(const OperationNodeAddress& address) const
    {
        return convertNodeAddress(_document, address);
    }

    void expectCorrespondence(const NativeNodeAddress& nativeAddress, const OperationNodeAddress& operationAddress)
    {
        EXPECT_EQ(print(operationAddress), print(toOperation(nativeAddress)));
        EXPECT_EQ(print(nativeAddress), print(toNative(operationAddress)));
    }

    OperationNodeAddress trimmed(OperationNodeAddress address) const
    {
        trimAddressToLive(_document, address);
        return address;
    }

    SampleDocument _sample;
    TextDocumentAdapter _writable{_sample._document};
    const TextDocumentAdapter& _document = _writable;
};

} // namespace

TEST_F(ElementPathUtilsTest, AnEmptyAddressIsTheRootInBothWorlds)
{
    expectCorrespondence(native(), operation());
    EXPECT_EQ(0u, createDOMNodeAdapter(_document, operation())->getNodeType());
    EXPECT_EQ(0u, createDOMNodeAdapter(_writable, operation())->getNodeType());
    EXPECT_EQ(Native::TextDocument, createDOMNodeAdapter(_document, native())->getNodeType());
    EXPECT_EQ(Native::TextDocument, createDOMNodeAdapter(_writable, native())->getNodeType());
    EXPECT_EQ(0u, createDOMNodeAdapterIfPossible(_writable, operation())->getNodeType());
    EXPECT_EQ(0u, createDOMNodeAdapterIfPossible(_document, operation())->getNodeType());
}

TEST_F(ElementPathUtilsTest, AnOperationWalkCountsTombstonesAndANativeOneDoesNot)
{
    const auto dead = createDOMNodeAdapter(_document, operation(text, at(3)));
    EXPECT_NE(nullptr, (cast<InOperationWorld<GenericTombstoneNodeAdapter, true>>(dead.get())));

    const DOM::Cell* expected = _sample.getTable().getCell(RowIndex(1), ColumnIndex(0));
    ASSERT_NE(nullptr, expected);
    const auto byOperation = createDOMNodeAdapterAs<InOperationWorld<GenericCellNodeAdapter, true>>(
        _document, operation(text, at(7), operationCells, cell(2, 0)));
    const auto byNative = createDOMNodeAdapterAs<InNativeWorld<GenericCellNodeAdapter, true>>(
        _document, native(blocks, at(1), nativeCells, cell(1, 0)));
    EXPECT_EQ(expected, byOperation->getCell());
    EXPECT_EQ(expected, byNative->getCell());
}

TEST_F(ElementPathUtilsTest, AnAdapterOfAnotherClassThanAskedForIsABadCast)
{
    using Table = InOperationWorld<GenericTableNodeAdapter, false>;
    EXPECT_EQ(&_sample.getTable(), &createDOMNodeAdapterAs<Table>(_writable, operation(text, at(7)))->getTable());
    EXPECT_THROW(createDOMNodeAdapterAs<Table>(_writable, operation(text, at(0))), std::bad_cast);
}

TEST_F(ElementPathUtilsTest, WalksThatLeadNowhereFailOrGiveNull)
{
    const OperationNodeAddress beyond = operation(text, at(12));
    const OperationNodeAddress wrongKind = operation(at(0));
    const OperationNodeAddress belowMissing = operation(text, at(12), at(0));
    for (const OperationNodeAddress& address : {beyond, wrongKind, belowMissing})
    {
        SCOPED_TRACE(print(address));
        EXPECT_ASSERTION(createDOMNodeAdapter(_document, address), noElement);
        EXPECT_ASSERTION(createDOMNodeAdapter(_writable, address), noElement);
        EXPECT_EQ(nullptr, createDOMNodeAdapterIfPossible(_document, address));
        EXPECT_EQ(nullptr, createDOMNodeAdapterIfPossible(_writable, address));
    }
    EXPECT_ASSERTION(createDOMNodeAdapter(_document, native(blocks, at(6))), noElement);
    EXPECT_ASSERTION(createDOMNodeAdapter(_writable, native(blocks, at(6))), noElement);
}

TEST_F(ElementPathUtilsTest, ADocumentWithoutARootFails)
{
    FakeDocumentAdapter rootless(_sample._document);
    const FakeDocumentAdapter& constant = rootless;
    EXPECT_ASSERTION(createDOMNodeAdapter(rootless, operation()), "currentAdapter");
    EXPECT_ASSERTION(createDOMNodeAdapter(constant, operation()), "currentAdapter");
    EXPECT_ASSERTION(createDOMNodeAdapter(rootless, native()), "currentAdapter");
    EXPECT_ASSERTION(createDOMNodeAdapter(constant, native()), "currentAdapter");
    EXPECT_ASSERTION(createDOMNodeAdapterIfPossible(rootless, operation()), "currentAdapter");
    EXPECT_ASSERTION(createDOMNodeAdapterIfPossible(constant, operation()), "currentAdapter");
    EXPECT_ASSERTION(convertNodeAddress(constant, native()), "currentAdapter");
    EXPECT_ASSERTION(convertNodeAddress(constant, operation()), "currentAdapter");
    OperationNodeAddress address;
    EXPECT_ASSERTION(trimAddressToLive(constant, address), "currentAdapter");
}

TEST_F(ElementPathUtilsTest, PlacesOfTheFlatTextAndOfTheTreeCorrespond)
{
    expectCorrespondence(native(blocks), operation(text));
    expectCorrespondence(native(blocks, at(0)), operation(text, at(0)));
    expectCorrespondence(native(blocks, at(0), runs, at(0)), operation(text, at(1)));
    expectCorrespondence(native(blocks, at(0), runs, at(1)), operation(text, at(5)));
    expectCorrespondence(native(blocks, at(1)), operation(text, at(7)));
    expectCorrespondence(native(blocks, at(2)), operation(text, at(8)));
    expectCorrespondence(native(blocks, at(3)), operation(text, at(9)));
    expectCorrespondence(native(blocks, at(4)), operation(text, at(10)));
}

TEST_F(ElementPathUtilsTest, ACharacterIsItsRunsPlaceAndItsIndexAndOne)
{
    // The run is at plane index 1; behind the 'a' stands a dead slot.
    expectCorrespondence(native(blocks, at(0), runs, at(0), chars, at(0)), operation(text, at(1 + 0 + 1)));
    expectCorrespondence(native(blocks, at(0), runs, at(0), chars, at(1)), operation(text, at(1 + 1 + 1 + 1)));
}

TEST_F(ElementPathUtilsTest, OnePastTheLastBlockIsThePlanesSize)
{
    constexpr unsigned long planeSize = 10;
    constexpr unsigned long tombstonesCount = 1;
    auto adapter = createDOMNodeAdapter(_document, native(blocks));
    const NativeNodeAddress address = native(at(5));
    auto chunk = address.getItems().begin();
    EXPECT_EQ(planeSize, getPlaneIndexAndMoveToNextOperationElement(adapter, chunk, address.getItems().end()).get());
    expectCorrespondence(native(blocks, at(5)), operation(text, at(planeSize + tombstonesCount)));
}

TEST_F(ElementPathUtilsTest, TheEndOfARunCollectionIsTheParagraphsMark)
{
    expectCorrespondence(native(blocks, at(0), runs, at(2)), operation(text, at(6)));
}

TEST_F(ElementPathUtilsTest, TheEndOfACharCollectionIsWhatFollowsTheRun)
{
    EXPECT_EQ(print(operation(text, at(5))), print(toOperation(native(blocks, at(0), runs, at(0), chars, at(2)))));
}

TEST_F(ElementPathUtilsTest, CellsAndTheirTextsCorrespondAcrossDeadRows)
{
    const auto nativeTable = native(blocks, at(1), nativeCells);
    const auto operationTable = operation(text, at(7), operationCells);
    expectCorrespondence(extended(nativeTable, cell(0, 1)), extended(operationTable, cell(0, 1)));
    expectCorrespondence(extended(nativeTable, cell(1, 0)), extended(operationTable, cell(2, 0)));
    expectCorrespondence(native(blocks, at(1), nativeCells, cell(1, 0), blocks, at(0), runs, at(0), chars, at(0)),
                         operation(text, at(7), operationCells, cell(2, 0), text, at(2)));
    expectCorrespondence(native(blocks, at(3), blocks, at(0), runs, at(0)), operation(text, at(9), text, at(1)));
}

TEST_F(ElementPathUtilsTest, PositionsBehindTheLastRowOrColumnCorrespond)
{
    const auto nativeTable = native(blocks, at(1), nativeCells);
    const auto operationTable = operation(text, at(7), operationCells);
    expectCorrespondence(extended(nativeTable, cell(2, 0)), extended(operationTable, cell(3, 0)));
    expectCorrespondence(extended(nativeTable, cell(0, 2)), extended(operationTable, cell(0, 2)));
    expectCorrespondence(extended(nativeTable, cell(2, 2)), extended(operationTable, cell(3, 2)));
}

TEST_F(ElementPathUtilsTest, ItemsOfListsCorrespondAcrossDeadOnes)
{
    const auto nativeFrames = native(blocks, at(1), fixed(Native::FrameCollection));
    const auto operationFrames = operation(text, at(7), fixed(Operation::FrameCollection));
    expectCorrespondence(extended(nativeFrames, at(0)), extended(operationFrames, at(0)));
    expectCorrespondence(extended(nativeFrames, at(1)), extended(operationFrames, at(2)));
    expectCorrespondence(extended(nativeFrames, at(2)), extended(operationFrames, at(3)));
    const auto nativeFormats = native(blocks, at(1), fixed(Native::ConditionalFormatCollection));
    const auto operationFormats = operation(text, at(7), fixed(Operation::ConditionalFormatCollection));
    expectCorrespondence(extended(nativeFormats, at(0)), extended(operationFormats, at(1)));
    expectCorrespondence(extended(nativeFormats, at(1)), extended(operationFormats, at(2)));
}

TEST_F(ElementPathUtilsTest, ConvertingPastAnEmptyCellMakesNone)
{
    expectCorrespondence(native(blocks, at(1), nativeCells, cell(0, 0), blocks, at(0)),
                         operation(text, at(7), operationCells, cell(0, 0), text, at(0)));
    EXPECT_EQ(nullptr, _sample.getTable().getCell(RowIndex(0), ColumnIndex(0)));
    createDOMNodeAdapter(_writable, operation(text, at(7), operationCells, cell(0, 0), text, at(0)));
    EXPECT_EQ(1u, _sample.getTable().getCellsCount());
}

TEST_F(ElementPathUtilsTest, AnAddressIntoATombstoneHasNoNativeOne)
{
    EXPECT_ASSERTION(toNative(operation(text, at(3))), "result");
    EXPECT_ASSERTION(toNative(operation(text, at(7), operationCells, cell(1, 0))), "result");
    EXPECT_ASSERTION(toNative(operation(text, at(7), operationCells, cell(1, 0), text)), "result");
    EXPECT_ASSERTION(toNative(operation(text, at(7), fixed(Operation::FrameCollection), at(1))), "result");
    EXPECT_ASSERTION(toNative(operation(text, at(7), fixed(Operation::ConditionalFormatCollection), at(0))), "result");
    _sample.getTable().replaceColWithTombstone(IndexIncludingTombstones(1));
    EXPECT_ASSERTION(toNative(operation(text, at(7), operationCells, cell(0, 1))), "result");
}

TEST_F(ElementPathUtilsTest, TrimmingCutsAtTheFirstStepIntoATombstone)
{
    const auto cells = operation(text, at(7), operationCells);
    EXPECT_EQ(print(cells), print(trimmed(extended(cells, cell(1, 0)))));
    EXPECT_EQ(print(operation(text)), print(trimmed(operation(text, at(3)))));
    const auto frames = operation(text, at(7), fixed(Operation::FrameCollection));
    EXPECT_EQ(print(frames), print(trimmed(extended(frames, at(1)))));
    // What follows goes with it.
    EXPECT_EQ(print(cells), print(trimmed(operation(text, at(7), operationCells, cell(1, 0), text, at(0)))));
}

TEST_F(ElementPathUtilsTest, TrimmingLeavesALiveAddressAlone)
{
    for (const OperationNodeAddress& address :
         {operation(), operation(text, at(4)), operation(text, at(7), operationCells, cell(2, 0), text, at(2))})
    {
        EXPECT_EQ(print(address), print(trimmed(address)));
    }
    EXPECT_ASSERTION(trimmed(operation(text, at(12))), noElement);
}

TEST_F(ElementPathUtilsTest, ANativeAddressThatGoesOnBelowALeafFails)
{
    const std::pair<const char*, NativeNodeAddress> leaves[] = {
        {"character", native(blocks, at(0), runs, at(0), chars, at(0))},
        {"end of the blocks", native(blocks, at(5))},
        {"end of the runs", native(blocks, at(0), runs, at(2))},
        {"atomic run", native(blocks, at(0), runs, at(1))},
        {"section tag", native(blocks, at(2))},
        {"field block", native(blocks, at(4))},
        {"frame", native(blocks, at(1), fixed(Native::FrameCollection), at(0))},
        {"conditional format", native(blocks, at(1), fixed(Native::ConditionalFormatCollection), at(0))},
        {"end of the cells", native(blocks, at(1), nativeCells, cell(2, 0))},
        {"properties", native(fixed(Native::DocumentProps))}};
    for (const auto& [name, address] : leaves)
    {
        SCOPED_TRACE(name);
        // Below a character there is no chunk that a step could even look at.
        const bool isChar = std::string("character") == name;
        EXPECT_ASSERTION(toOperation(extended(address, at(0))), isChar ? "currentAddressChunk == end" : noChildren);
    }
}

TEST_F(ElementPathUtilsTest, AnOperationAddressThatGoesOnBelowALeafFails)
{
    const std::pair<const char*, OperationNodeAddress> leaves[] = {
        {"paragraph tag", operation(text, at(0))},
        {"run tag", operation(text, at(1))},
        {"character", operation(text, at(2))},
        {"atomic run", operation(text, at(5))},
        {"paragraph mark", operation(text, at(6))},
        {"section tag", operation(text, at(8))},
        {"field block", operation(text, at(10))},
        {"end of the text", operation(text, at(11))},
        {"frame", operation(text, at(7), fixed(Operation::FrameCollection), at(0))},
        {"conditional format", operation(text, at(7), fixed(Operation::ConditionalFormatCollection), at(1))},
        {"properties", operation(fixed(Operation::DocumentProps))},
        {"comment", operation(fixed(Operation::CommentCollection), key(_sample._comment))},
        {"note", operation(fixed(Operation::NoteCollection), key(_sample._note))},
        {"text style", operation(fixed(Operation::TextStyleCollection), key(_sample._textStyle))},
        {"table style", operation(fixed(Operation::TableStyleCollection), key(_sample._tableStyle))}};
    for (const auto& [name, address] : leaves)
    {
        SCOPED_TRACE(name);
        EXPECT_ASSERTION(toNative(extended(address, at(0))), noChildren);
    }
}

TEST_F(ElementPathUtilsTest, ElementsOfKeyedCollectionsHaveNoNativeChildren)
{
    for (const NativeNodeAddress& address : {native(fixed(Native::CommentCollection), key(_sample._comment)),
                                             native(fixed(Native::NoteCollection), key(_sample._note)),
                                             native(fixed(Native::TextStyleCollection), key(_sample._textStyle)),
                                             native(fixed(Native::TableStyleCollection), key(_sample._tableStyle))})
    {
        EXPECT_ASSERTION(toOperation(extended(address, blocks)), noElement);
    }
}

TEST_F(ElementPathUtilsTest, ConversionOfAnAddressThatLeadsNowhereFails)
{
    EXPECT_ASSERTION(toNative(operation(text, at(12))), noElement);
    EXPECT_ASSERTION(toNative(operation(at(0))), noElement);
    EXPECT_ASSERTION(toNative(operation(OperationNodeAddress::FixedChunk(99))), noElement);
    EXPECT_ASSERTION(toOperation(native(fixed(Native::WorksheetCollection))), noElement);
    EXPECT_ASSERTION(toOperation(native(blocks, at(0), runs, at(3))), noElement);
    EXPECT_ASSERTION(toOperation(native(blocks, at(6))), "index < size()");
    EXPECT_ASSERTION(toOperation(native(blocks, at(0), runs, at(0), chars, at(3))), noElement);
    EXPECT_ASSERTION(toOperation(native(blocks, at(0), chars)), noElement);
    EXPECT_ASSERTION(toOperation(native(blocks, at(1), nativeCells, cell(3, 0))), noElement);
    EXPECT_ASSERTION(toOperation(native(fixed(Native::CommentCollection), key(UUID()))), noElement);
}

TEST_F(ElementPathUtilsTest, ATypeWithoutCounterpartFails)
{
    EXPECT_ASSERTION(toOperation(native(runs)), "No corresponding node type");
    EXPECT_ASSERTION(toOperation(native(chars)), "No corresponding node type");
    EXPECT_ASSERTION(toOperation(native(fixed(static_cast<Native>(99)))), "Invalid code branch");
}

TEST_F(ElementPathUtilsTest, AChunkOfTheWrongKindAtACollectionIsABadGet)
{
    EXPECT_THROW(toNative(operation(text, text)), boost::bad_get);
    EXPECT_THROW(toNative(operation(text, at(7), operationCells, at(0))), boost::bad_get);
    EXPECT_THROW(toNative(operation(text, at(7), fixed(Operation::FrameCollection), cell(0, 0))), boost::bad_get);
    EXPECT_THROW(toOperation(native(blocks, blocks)), boost::bad_get);
}

TEST_F(ElementPathUtilsTest, ANativeAddressMayNotEndAtACollectionInsideAParagraph)
{
    EXPECT_ASSERTION(toOperation(native(blocks, at(0), runs)), "currentAddressChunk != end");
    EXPECT_ASSERTION(toOperation(native(blocks, at(0), runs, at(0), chars)), "currentAddressChunk != end");
}

TEST_F(ElementPathUtilsTest, AnAddressThatEndsAtATextDoesNotLookIntoIt)
{
    // Any walk over the text would stumble over a missing first block.
    DOM::Blocks& allBlocks = _sample._document.getTextWithTombstones().getBlocks();
    allBlocks.insert(allBlocks.begin(), nullptr);
    expectCorrespondence(native(blocks), operation(text));
    EXPECT_NE(nullptr, createDOMNodeAdapter(_document, operation(text)));
    EXPECT_NE(nullptr, createDOMNodeAdapter(_document, native(blocks)));
    EXPECT_ASSERTION(toNative(operation(text, at(0))), "plainPtr");
}

TEST_F(ElementPathUtilsTest, ConversionLooksNoFurtherIntoATextThanThePlaceIs)
{
    _sample._document.getTextWithTombstones().getBlocks().push_back(nullptr);
    expectCorrespondence(native(blocks, at(4)), operation(text, at(10)));
    expectCorrespondence(native(blocks, at(1), nativeCells, cell(1, 0), blocks, at(1)),
                         operation(text, at(7), operationCells, cell(2, 0), text, at(4)));
    EXPECT_ASSERTION(toNative(operation(text, at(11))), "plainPtr");
}

TEST_F(ElementPathUtilsTest, ThePlaneIndexMovesTheAdapterAndTheChunk)
{
    const auto expectMove =
        [&](const NativeNodeAddress& address, unsigned long planeIndex, unsigned long chunksCount, Native nodeType)
    {
        SCOPED_TRACE(print(address));
        auto adapter = createDOMNodeAdapter(_document, native(blocks));
        auto chunk = address.getItems().begin();
        const auto index = getPlaneIndexAndMoveToNextOperationElement(adapter, chunk, address.getItems().end());
        EXPECT_EQ(planeIndex, index.get());
        EXPECT_EQ(chunksCount, static_cast<unsigned long>(chunk - address.getItems().begin()));
        EXPECT_EQ(nodeType, adapter->getNodeType());
    };
    expectMove(native(at(0)), 0, 1, Native::Paragraph);
    expectMove(native(at(1)), 6, 1, Native::Table);
    expectMove(native(at(1), nativeCells), 6, 1, Native::Table);
    expectMove(native(at(5), at(0)), 9 + 1, 1, Native::CollectionEndMark);
    expectMove(native(at(0), runs, at(1)), 4, 3, Native::Run);
    expectMove(native(at(0), runs, at(1), at(0)), 4, 3, Native::Run);
    expectMove(native(at(0), runs, at(2), at(0)), 5, 3, Native::CollectionEndMark);
    expectMove(native(at(0), runs, at(0), chars, at(1)), 3, 5, Native::Char);
}

TEST_F(ElementPathUtilsTest, ThePlaneIndexIsAskedOfABlockCollectionAlone)
{
    auto adapter = createDOMNodeAdapter(_document, native());
    const NativeNodeAddress address = native(at(0));
    auto chunk = address.getItems().begin();
    EXPECT_THROW(getPlaneIndexAndMoveToNextOperationElement(adapter, chunk, address.getItems().end()), std::bad_cast);
}

TEST_F(ElementPathUtilsTest, NodesInsideAParagraphAreNoPlaceToConvertFrom)
{
    for (const NativeNodeAddress& address :
         {native(blocks, at(0)), native(blocks, at(0), runs), native(blocks, at(0), runs, at(0)),
          native(blocks, at(0), runs, at(0), chars)})
    {
        SCOPED_TRACE(print(address));
        FakeDocumentAdapter fake(_sample._document);
        fake._makeNative = [&] { return createDOMNodeAdapter(_document, address); };
        fake._makeOperation = [&] { return _document.createOperationNodeAdapter(); };
        EXPECT_ASSERTION(convertNodeAddress(std::as_const(fake), native(at(0))),
                         "Intermediate node shouldn't be processed here");
    }
}

TEST_F(ElementPathUtilsTest, ConversionNeverStandsOnATombstone)
{
    FakeDocumentAdapter fake(_sample._document);
    fake._makeNative = [] { return std::make_unique<InNativeWorld<GenericTombstoneNodeAdapter, true>>(); };
    fake._makeOperation = [] { return std::make_unique<InOperationWorld<GenericTombstoneNodeAdapter, true>>(); };
    EXPECT_ASSERTION(convertNodeAddress(std::as_const(fake), operation(at(0))), "Tombstone adaptor shouldn't met.");
    EXPECT_ASSERTION(convertNodeAddress(std::as_const(fake), native(at(0))), noChildren);
}

TEST(ElementPathUtilsTableIndex, IsThatOfTheInnermostTableInItsBlockCollection)
{
    const NativeNodeAddress outer = native(blocks, at(3), nativeCells);
    EXPECT_EQ(3u, getTableIndexOfLastTable(outer));
    EXPECT_EQ(3u, getTableIndexOfLastTable(extended(outer, cell(0, 0))));
    EXPECT_EQ(3u, getTableIndexOfLastTable(native(blocks, at(3), nativeCells, cell(0, 0), blocks, at(5))));
    EXPECT_EQ(5u, getTableIndexOfLastTable(native(blocks, at(3), nativeCells, cell(0, 0), blocks, at(5), nativeCells)));
}

TEST(ElementPathUtilsTableIndex, NeedsACellCollectionBelowABlockCollection)
{
    EXPECT_ASSERTION(getTableIndexOfLastTable(native()), "opt");
    EXPECT_ASSERTION(getTableIndexOfLastTable(native(blocks, at(3))), "opt");
    EXPECT_ASSERTION(getTableIndexOfLastTable(native(fixed(Native::WorksheetCollection), at(0), nativeCells)), "opt");
    EXPECT_THROW(getTableIndexOfLastTable(native(blocks, nativeCells)), boost::bad_get);
}

} // namespace Zem::DOMCollaboration

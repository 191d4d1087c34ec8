#include "Editing/CS_CharacterIndex.h"

#include "Editing/CS_EditorCase.h"
#include "Editing/CS_InvalidEditError.h"

#include "CE_ListOperation.h"
#include "DOM_Shape.h"
#include "DOM_Table.h"
#include "TS_Assertions.h"

#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::OperationNodeAddress;
using DOMCollaboration::convertOperationNodeType;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PlaceKind;

namespace
{

constexpr unsigned long textType = convertOperationNodeType(OperationDOMNodeType::TextWithTombstones);

/// The address of the text of a shape in the main text.
OperationNodeAddress getShapeAddress(unsigned long slot)
{
    auto address = TextEditor::getMainTextAddress();
    address.appendItems(NodeAddressing::AddressInList(slot), OperationNodeAddress::FixedChunk(textType));
    return address;
}

/// The address of the text of the first cell of a table in the main text.
OperationNodeAddress getCellAddress(unsigned long slot)
{
    auto address = TextEditor::getMainTextAddress();
    address.appendItems(
        NodeAddressing::AddressInList(slot),
        OperationNodeAddress::FixedChunk(convertOperationNodeType(OperationDOMNodeType::CellCollection)),
        NodeAddressing::AddressInTable(RowIndex(0), ColumnIndex(0)), OperationNodeAddress::FixedChunk(textType));
    return address;
}

/// Requires that every element and every character is where a count from the beginning finds it.
void expectConversions(std::string_view notation)
{
    DocumentUnderTest edited(TestSupport::makeText(notation));
    const CharacterIndex& index = edited._editor.getIndex();
    const auto elements = TestSupport::flatten(edited.getText());
    ASSERT_EQ(elements.size(), index.getElementsCount());

    unsigned long offset = 0;
    for (unsigned long element = 0; element < elements.size(); ++element)
    {
        SCOPED_TRACE(std::string(notation) + ", element " + std::to_string(element));
        EXPECT_EQ(offset, index.convertToOffset(element));
        const char printed = TestSupport::printElement(elements[element]);
        const bool isTag = printed == '{' || printed == '|';
        if (isTag || isContinuationByte(printed))
        {
            continue;
        }
        EXPECT_EQ(element, index.convertToElement(offset));
        ++offset;
    }
    const bool endsWithParagraph = !notation.empty() && notation.back() == '}';
    EXPECT_EQ(offset - (endsWithParagraph ? 1 : 0), index.getCharactersCount());
}

TEST(CharacterIndex, ElementsAndOffsetsMeet)
{
    for (const std::string_view notation :
         {"", "{}", "#", "##", "{|ab}", "{|ab}{}", "{}{|ab}{~}", "{|ab}#{|cd}", "{|a~|b~~|c}$#{|d}#",
          "{|\xC3\xA9"
          "a|b\xE2\x82\xAC~|\xC3\xA9}{|a}#{|\xF0\x9F\x98\x80}",
          "{~~~}"})
    {
        expectConversions(notation);
    }
}

TEST(CharacterIndex, EndOfTheTextHasAPlace)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#"));
    const CharacterIndex& index = edited._editor.getIndex();
    EXPECT_EQ(6U, index.convertToElement(4));
    EXPECT_EQ(4U, index.convertToOffset(6));
    EXPECT_EQ(PlaceKind::TextEnd, index.findPlace(6)._kind);
    EXPECT_EQ(2U, index.findCharacter(4)._blockIndex);
}

TEST(CharacterIndex, EndOfTheLastParagraphIsItsMark)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}{|c}"));
    const CharacterIndex& index = edited._editor.getIndex();
    EXPECT_EQ(8U, index.convertToElement(4));
    EXPECT_EQ(PlaceKind::ParaMark, index.findPlace(8)._kind);
}

TEST(CharacterIndex, BeyondTheEndFails)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    const CharacterIndex& index = edited._editor.getIndex();
    EXPECT_ASSERTION(index.findCharacter(3), "offset <= getCharactersCount()");
    EXPECT_ASSERTION(index.findElement(6), "element <= getElementsCount()");
    EXPECT_ASSERTION(index.getBlock(2), "blockIndex <= getBlocksCount()");
    EXPECT_ASSERTION(index.getParagraph(1), "blockIndex < blocks.size()");
}

TEST(CharacterIndex, AtomicBlockIsNoParagraph)
{
    DocumentUnderTest edited(TestSupport::makeText("#"));
    EXPECT_ASSERTION(edited._editor.getIndex().getParagraph(0), "isParagraph");
}

TEST(CharacterIndex, CountsWhatIsThere)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#{|c\xC3\xA9}[xx]"));
    const CharacterIndex& index = edited._editor.getIndex();
    EXPECT_EQ(6U, index.getCharactersCount());
    EXPECT_EQ(2U, index.getParagraphsCount());
    EXPECT_EQ(3U, index.getBlocksCount());
    EXPECT_EQ(12U, index.getElementsCount());
    EXPECT_GT(index.getMemoryUsage(), 0U);
}

TEST(CharacterIndex, GoesWithOperationsOfOthers)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}{|cd}"));
    edited.execute(TestSupport::insert(7, "\xC3\xA9}{|x"));
    edited.execute(TestSupport::mark(4, 6));
    edited._editor.getIndex().checkInvariants();
    EXPECT_EQ("ab\xC3\xA9\nxcd", getCharacters(edited.getText()));
    EXPECT_EQ(7U, edited._editor.getIndex().getCharactersCount());
}

TEST(CharacterIndex, FailsItsCheckWhenTheTextChangedInSilence)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    edited.getText().getBlocks().push_back(std::make_unique<DOM::Paragraph>());
    EXPECT_ASSERTION(edited._editor.getIndex().checkInvariants(), "isAsRecounted");
}

TEST(CharacterIndex, BlockThatMovesIsCountedWhereItGoes)
{
    DOM::Document document;
    document.getTextWithTombstones() = TestSupport::makeText("{|a}{|bcd}##");
    auto adapter = std::make_shared<DOMCollaboration::TextDocumentAdapter>(document);
    CharacterIndex index(TextInDocument(adapter, TextEditor::getMainTextAddress()));
    DOM::Blocks& blocks = document.getTextWithTombstones().getBlocks();
    std::rotate(blocks.begin(), blocks.begin() + 1, blocks.begin() + 3);
    index.onBlockMoved(DOM::NodeAddressUtils::makeAddress<DOM::NativeDOMNodeType::BlockCollection>(),
                       CollaborationUtils::IndexExcludingTombstones(0),
                       CollaborationUtils::IndexExcludingTombstones(2));
    index.checkInvariants();
}

// Nested texts

TEST(NestedText, IsEditedLikeAnyOther)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#{}"), getShapeAddress(5));
    auto operations = edited._editor.replace(0, 0, "x\ny");
    edited._editor.getIndex().checkInvariants();
    const auto& shape = cast<DOM::Shape>(*edited.getText().getBlocks()[1]);
    EXPECT_EQ("x\ny", getCharacters(shape.getTextWithTombstones()));
    EXPECT_EQ("{|ab}#{}", TestSupport::print(edited.getText()));
    edited._editor.takeBack(operations);
    EXPECT_EQ("", getCharacters(shape.getTextWithTombstones()));
    edited._editor.getIndex().checkInvariants();
}

TEST(NestedText, ChangesOfOtherTextsAreNoneOfItsBusiness)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#{|cd}"), getShapeAddress(5));
    TextEditor mainText(edited._adapter, edited._executor, *edited._notifications, TextEditor::getMainTextAddress());
    edited._editor.replace(0, 0, "x");
    mainText.replace(5, 5, "y");
    EXPECT_FALSE(edited._editor.getIndex().isStale());
    edited._editor.getIndex().checkInvariants();
    mainText.getIndex().checkInvariants();
    EXPECT_EQ(1U, edited._editor.getIndex().getCharactersCount());
    EXPECT_EQ("{|ab}#{|cyd}", TestSupport::print(edited.getText()));
}

TEST(NestedText, WhatIsntAboutTextMakesItsIndexStale)
{
    DocumentUnderTest edited(TestSupport::makeText("#"), getShapeAddress(0));
    const CharacterIndex& index = edited._editor.getIndex();
    const DOM::NativeNodeAddress address;
    edited._notifications->onRunPropsChanged(address, 1);
    edited._notifications->onParaPropsChanged(address, 1);
    edited._notifications->onFieldBlockPropsChanged(address, 1);
    edited._notifications->onSectionPropsChanged(address, 1);
    EXPECT_FALSE(index.isStale());
    edited._notifications->onRowInserted(address, RowIndex(0));
    EXPECT_TRUE(index.isStale());
    edited._editor.replace(0, 0, "x");
    EXPECT_FALSE(index.isStale());
}

TEST(NestedText, IsFoundAtItsNewAddressWhenBlocksInFrontOfItChanged)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#"), getShapeAddress(5));
    TextEditor mainText(edited._adapter, edited._executor, *edited._notifications, TextEditor::getMainTextAddress());
    edited._editor.replace(0, 0, "x");
    mainText.replace(1, 1, "\n");
    edited._editor.setAddress(getShapeAddress(8));
    edited._editor.replace(1, 1, "y");
    edited._editor.getIndex().checkInvariants();
    EXPECT_EQ(2U, edited._editor.getIndex().getCharactersCount());
}

TEST(NestedText, ThatIsGoneIsAnError)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#"), getShapeAddress(5));
    TextEditor mainText(edited._adapter, edited._executor, *edited._notifications, TextEditor::getMainTextAddress());
    mainText.replace(3, 4, "");
    EXPECT_THROW(edited._editor.replace(0, 0, "x"), InvalidEditError);
    EXPECT_THROW(edited._editor.setAddress(getShapeAddress(1)), InvalidEditError);
}

TEST(NestedText, OfACellComesAndGoesWithItsCharacters)
{
    DOM::TextWithTombstones text;
    auto table = std::make_unique<DOM::Table>();
    table->changeSize(2, 2);
    text.getBlocks().push_back(std::move(table));
    DocumentUnderTest edited(std::move(text), getCellAddress(0));
    const DOM::Document before = edited._document;

    Operations operations = edited._editor.replace(0, 0, "x\ny");
    edited._editor.getIndex().checkInvariants();
    EXPECT_EQ(3U, edited._editor.getIndex().getCharactersCount());
    edited._editor.takeBack(operations);
    EXPECT_TRUE(before == edited._document);
    EXPECT_EQ(0U, edited._editor.getIndex().getCharactersCount());
    edited._editor.getIndex().checkInvariants();
}

TEST(NestedText, IndexIsntUsedWhileStale)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#"));
    CharacterIndex index(TextInDocument(edited._adapter, getShapeAddress(5)));
    index.onBlocksInserted(DOM::NodeAddressUtils::makeAddress<DOM::NativeDOMNodeType::BlockCollection>(),
                           CollaborationUtils::IndexRange<unsigned long>(0, 1));
    EXPECT_TRUE(index.isStale());
    EXPECT_ASSERTION(TextCommands::replaceCharacters(index, 0, 0, "x"), "!index.isStale()");
    EXPECT_ASSERTION(index.checkInvariants(), "!_isStale");
    index.refresh();
    EXPECT_FALSE(index.isStale());
}

TEST(NestedText, MainTextNeverBecomesStale)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#"));
    CharacterIndex index(TextInDocument(edited._adapter, TextEditor::getMainTextAddress()));
    index.invalidate();
    EXPECT_FALSE(index.isStale());
}

TEST(NestedText, AddressWithoutATextIsRefused)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    auto address = TextEditor::getMainTextAddress();
    address.appendItems(NodeAddressing::AddressInList(0));
    EXPECT_THROW(TextInDocument(edited._adapter, address), InvalidEditError);
    EXPECT_ASSERTION(TextInDocument(nullptr, address), "plainPtr");
}

} // namespace

} // namespace Zem::CollaborationSession

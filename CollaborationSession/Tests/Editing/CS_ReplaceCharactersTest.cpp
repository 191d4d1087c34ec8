#include "Editing/CS_EditorCase.h"
#include "Editing/CS_InvalidEditError.h"

#include "DOM_FieldBlock.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_Table.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

namespace
{

TEST(ReplaceCharacters, FirstCharacterOfAnEmptyTextBringsItsParagraph)
{
    EditorCase("").insert(0, "a").is("{|a}").did("insert 0:{|a}").reads("a");
}

TEST(ReplaceCharacters, LinesIntoAnEmptyTextBecomeParagraphs)
{
    EditorCase("").insert(0, "a\nb").is("{|a}{|b}").reads("a\nb");
    EditorCase("").insert(0, "\n").is("{}{}").reads("\n");
    EditorCase("").insert(0, "a\n").is("{|a}{}").reads("a\n");
    EditorCase("").insert(0, "\n\na").is("{}{}{|a}").reads("\n\na");
}

TEST(ReplaceCharacters, NothingForNothingIsNoOperation)
{
    EditorCase("").insert(0, "").did("").is("");
    EditorCase("{|ab}").insert(1, "").did("").is("{|ab}");
}

TEST(ReplaceCharacters, TypingInARunIsOneElement)
{
    EditorCase("{|ab}").insert(1, "x").did("insert 3:x").is("{|axb}");
    EditorCase("{|ab}").insert(2, "x").did("insert 4:x").is("{|abx}");
    EditorCase("{|ab}").insert(0, "x").did("insert 2:x").is("{|xab}");
}

TEST(ReplaceCharacters, EmptyParagraphGetsARun)
{
    EditorCase("{}").insert(0, "ab").did("insert 1:|ab").is("{|ab}");
    EditorCase("{|a}{}{|b}").insert(2, "x").did("insert 5:|x").is("{|a}{|x}{|b}");
    EditorCase("{}").insert(0, "a\nb").is("{|a}{|b}");
    EditorCase("{}").insert(0, "\n").did("insert 1:}{").is("{}{}");
}

TEST(ReplaceCharacters, LineBreakSplitsItsParagraph)
{
    EditorCase("{|ab}").insert(1, "\n").did("insert 3:}{|").is("{|a}{|b}").reads("a\nb");
    EditorCase("{|ab}").insert(2, "\n").did("insert 4:}{").is("{|ab}{}").reads("ab\n");
    EditorCase("{|ab}").insert(0, "\n").did("insert 1:}{").is("{}{|ab}").reads("\nab");
}

TEST(ReplaceCharacters, LinesInsideARunPassTheRestOn)
{
    EditorCase("{|ab}").insert(1, "x\ny").did("insert 3:x}{|y").is("{|ax}{|yb}");
    EditorCase("{|ab}").insert(1, "x\ny\n").is("{|ax}{|y}{|b}").reads("ax\ny\nb");
    EditorCase("{|ab}").insert(1, "\n\n").is("{|a}{}{|b}");
    EditorCase("{|ab}").insert(2, "x\ny").is("{|abx}{|y}");
}

TEST(ReplaceCharacters, LinesAtTheBeginningOfARunPartNothing)
{
    EditorCase("{|ab}").insert(0, "x\ny").did("insert 2:x}{|y").is("{|x}{|yab}");
    EditorCase("{|ab}").insert(0, "\ny").did("insert 2:y 1:}{").is("{}{|yab}");
    EditorCase("{|ab}").insert(0, "x\n").is("{|x}{|ab}");
    EditorCase("{|ab}").insert(0, "\nx\ny").did("insert 2:y 1:}{|x}{").is("{}{|x}{|yab}");
    EditorCase("{~|ab}").insert(1, "\ny").is("{~}{|yab}");
}

TEST(ReplaceCharacters, RunBoundaryContinuesTheRunInFront)
{
    EditorCase("{|ab|cd}").insert(2, "x").did("insert 4:x").is("{|abx|cd}");
    EditorCase("{|ab|cd}").insert(2, "\n").is("{|ab}{|cd}");
    EditorCase("{|ab|cd}").insert(2, "x\ny").is("{|abx}{|y|cd}");
}

TEST(ReplaceCharacters, AtomicRunsAreCharactersBetweenRuns)
{
    EditorCase("{~}").insert(0, "x").did("insert 1:|x").is("{|x~}").reads("x#");
    EditorCase("{~}").insert(1, "x").did("insert 2:|x").is("{~|x}").reads("#x");
    EditorCase("{~~}").insert(1, "x\ny").is("{~|x}{|y~}").reads("#x\ny#");
    EditorCase("{~|a}").insert(1, "x").did("insert 3:x").is("{~|xa}");
    EditorCase("{|a~}").insert(1, "x").did("insert 3:x").is("{|ax~}");
    EditorCase("{|a~}").insert(1, "\n").is("{|a}{~}");
    EditorCase("{~~}").erase(0, 1).did("mark 1:~").is("{[~]~}");
}

TEST(ReplaceCharacters, InFrontOfAnAtomicBlockAParagraphComesIn)
{
    EditorCase("#").insert(0, "x").did("insert 0:{|x}").is("{|x}#").reads("x\n#");
    EditorCase("#").insert(0, "x\n").is("{|x}#").reads("x\n#");
    EditorCase("#").insert(0, "\n").is("{}#").reads("\n#");
    EditorCase("##").insert(1, "x\ny").is("#{|x}{|y}#").reads("#x\ny\n#");
    EditorCase("{|ab}#{|cd}").insert(3, "x").is("{|ab}{|x}#{|cd}").reads("ab\nx\n#cd");
    EditorCase("{|ab}$").insert(3, "x").is("{|ab}{|x}$").reads("ab\nx\n#");
}

TEST(ReplaceCharacters, BehindAnAtomicBlockTheParagraphThereGoesOn)
{
    EditorCase("{|ab}#{|cd}").insert(4, "x").did("insert 8:x").is("{|ab}#{|xcd}");
    EditorCase("#{}").insert(1, "x").is("#{|x}");
    EditorCase("#{|a}").insert(1, "\n").is("#{}{|a}");
}

TEST(ReplaceCharacters, AtTheEndBehindAnAtomicBlockAParagraphComesIn)
{
    EditorCase("#").insert(1, "x").did("insert 1:{|x}").is("#{|x}").reads("#x");
    EditorCase("#").insert(1, "\n").is("#{}{}").reads("#\n");
    EditorCase("#").insert(1, "x\ny").is("#{|x}{|y}").reads("#x\ny");
}

TEST(ReplaceCharacters, DeletedBytesLeaveTheirRun)
{
    EditorCase("{|abcd}").erase(1, 3).is("{|a[bc]d}").reads("ad");
    EditorCase("{|abcd}").erase(0, 2).is("{|[ab]cd}").reads("cd");
    EditorCase("{|abcd}").erase(2, 4).is("{|ab[cd]}").reads("ab");
}

TEST(ReplaceCharacters, RunThatLosesAllGoesWithItsTag)
{
    EditorCase("{|ab}").erase(0, 2).is("{[|ab]}").reads("");
    EditorCase("{|ab|cd}").erase(0, 2).is("{[|ab]|cd}");
    EditorCase("{|ab|cd}").erase(2, 4).is("{|ab[|cd]}");
    EditorCase("{|a|b|c|d}").erase(1, 3).is("{|a[|b|c]|d}");
}

TEST(ReplaceCharacters, RunThatLosesItsBeginningKeepsItsTag)
{
    EditorCase("{|ab|cd}").erase(1, 3).did("mark 5:c 3:b").is("{|a[b]|[c]d}");
    EditorCase("{|ab}{|cd}").erase(1, 4).is("{|a[b}{]|[c]d}").reads("ad");
}

TEST(ReplaceCharacters, TombstonesInsideAStretchPartIt)
{
    EditorCase("{|ab[xx]cd}").erase(1, 3).did("mark 6:c 3:b").is("{|a[bxxc]d}");
    EditorCase("{|a[x]b[y]c[z]d}").erase(0, 4).did("mark 8:d 6:c 4:b 1:|a").is("{[|axbyczd]}");
    EditorCase("[xx]{|a}[yy]{|b}[zz]").erase(1, 2).did("mark 8:{ 5:}").is("[..]{|a[....]|b}[..]").reads("ab");
}

TEST(ReplaceCharacters, TypingBesideTombstonesStaysBehindTheCharacterInFront)
{
    EditorCase("{|a[xx]b}").insert(1, "c").did("insert 3:c").is("{|ac[xx]b}");
    EditorCase("[xx]{|a}").insert(0, "c").did("insert 4:c").is("[xx]{|ca}");
    EditorCase("[xx]").insert(0, "c").did("insert 0:{|c}").is("{|c}[xx]");
}

TEST(ReplaceCharacters, DeletedLineBreakJoinsParagraphs)
{
    EditorCase("{|ab}{|cd}").erase(2, 3).did("mark 4:}{").is("{|ab[}{]|cd}").reads("abcd");
    EditorCase("{|ab}{}").erase(2, 3).is("{|ab[}{]}");
    EditorCase("{|ab}{~}").erase(2, 3).is("{|ab[}{]~}");
    EditorCase("{|a}{|b}{|c}").erase(1, 4).is("{|a[}{|b}{]|c}").reads("ac");
}

TEST(ReplaceCharacters, WholeParagraphGoesWithItsTag)
{
    EditorCase("{|ab}{|cd}").erase(0, 3).is("[{|ab}]{|cd}").reads("cd");
    EditorCase("{}{}").erase(0, 1).is("[{}]{}").reads("");
    EditorCase("{|ab}{}{|cd}").erase(3, 4).is("{|ab}[{}]{|cd}");
}

TEST(ReplaceCharacters, LastParagraphStaysEmpty)
{
    EditorCase("{|ab}{|cd}").erase(3, 5).is("{|ab}{[|cd]}").reads("ab\n");
    EditorCase("{|ab}{|cd}").erase(0, 5).is("{[|ab}{|cd]}").reads("");
    EditorCase("{|ab}#").erase(0, 4).is("{[|ab]}[#]").reads("");
}

TEST(ReplaceCharacters, AtomicBlocksGoWhole)
{
    EditorCase("#").erase(0, 1).is("[#]").reads("");
    EditorCase("{|ab}#{|cd}").erase(3, 4).is("{|ab}[#]{|cd}").reads("ab\ncd");
    EditorCase("{|ab}#{|cd}").erase(2, 4).is("{|ab[}#{]|cd}").reads("abcd");
    EditorCase("#{|ab}").erase(0, 2).is("[#]{|[a]b}").reads("b");
    EditorCase("##{|ab}").erase(1, 2).is("#[#]{|ab}");
}

TEST(ReplaceCharacters, LineBreakBetweenTextAndAnAtomicBlockStays)
{
    EditorCase("{|ab}#").erase(2, 3).did("").is("{|ab}#");
    EditorCase("{|ab}#{|cd}").erase(1, 3).is("{|a[b]}#{|cd}").reads("a\n#cd");
    EditorCase("{|ab}##").erase(2, 4).is("{|ab}[#]#").reads("ab\n#");
    EditorCase("{|ab}#").replace(1, 3, "x\n").is("{|ax[b]}#").reads("ax\n#");
    EditorCase("{|ab}#").replace(2, 3, "\n\n").is("{|ab}{}#").reads("ab\n\n#");
}

TEST(ReplaceCharacters, LineBreakInFrontOfAnAtomicBlockGoesWithItsWholeParagraph)
{
    EditorCase("{|ab}#").erase(0, 3).is("[{|ab}]#").reads("#");
    EditorCase("{}#").erase(0, 1).is("[{}]#").reads("#");
}

TEST(ReplaceCharacters, LineBreakThatTheLastBlockLeavesIsAnEmptyParagraph)
{
    EditorCase("{|ab}#").erase(3, 4).did("mark 5:#; insert 5:{}").is("{|ab}{}[#]").reads("ab\n");
    EditorCase("{|ab}#").replace(3, 4, "x").is("{|ab}{|x}[#]").reads("ab\nx");
    EditorCase("{|ab}#").erase(2, 4).is("{|ab}[#]").reads("ab");
}

TEST(ReplaceCharacters, ReplacementComesWhereTheStretchWas)
{
    EditorCase("{|abcd}").replace(1, 3, "x").did("mark 3:bc; insert 3:x").is("{|ax[bc]d}").reads("axd");
    EditorCase("{|ab}{|cd}").replace(1, 4, "x").is("{|ax[b}{]|[c]d}").reads("axd");
    EditorCase("{|ab}{|cd}").replace(0, 3, "x").is("[{|ab}]{|xcd}").reads("xcd");
    EditorCase("{|ab}{|cd}").replace(2, 3, "\n").reads("ab\ncd");
    EditorCase("{|ab}").replace(0, 2, "x\ny").reads("x\ny");
    EditorCase("{|abc}").replace(0, 1, "\nxy").reads("\nxybc");
    EditorCase("#{|ab}").replace(0, 2, "x").reads("xb");
    EditorCase("{|ab}#").replace(0, 3, "x\n").reads("x\n#");
}

TEST(ReplaceCharacters, CharactersOfSeveralBytesAreNeverCut)
{
    EditorCase("{|\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80}")
        .erase(1, 2)
        .did("mark 4:\xE2\x82\xAC")
        .reads("\xC3\xA9\xF0\x9F\x98\x80");
    EditorCase("{|\xC3\xA9\xE2\x82\xAC}")
        .insert(1, "\xC3\xA4")
        .did("insert 4:\xC3\xA4")
        .reads("\xC3\xA9\xC3\xA4\xE2\x82\xAC");
    EditorCase("{|\xC3\xA9|\xC3\xA9}").erase(1, 2).is("{|\xC3\xA9[|xx]}");
    EditorCase("{|\xC3\xA9x}{|\xC3\xA9}").erase(1, 3).reads("\xC3\xA9\xC3\xA9");
}

TEST(ReplaceCharacters, HalfACharacterBelongsToTheOneBehindItInItsRun)
{
    EditorCase("{|a|\xA9"
               "b}")
        .erase(1, 2)
        .is("{|a[|xx]}");
    EditorCase("{|a|\xA9|b}").erase(0, 2).is("{[|a|x|b]}");
    EditorCase("{|\xC3}").insert(1, "a").reads("\xC3"
                                               "a");
}

// Styles

class StyledText : public testing::Test
{
protected:
    /// One run for each name, in one paragraph; runs of one name share their style.
    void makeRuns(std::initializer_list<const char*> runs)
    {
        DOM::Paragraph paragraph;
        for (const char* text : runs)
        {
            auto run = std::make_unique<DOM::TextRun>(text);
            run->getSharedStyle() = makeStyle(text);
            paragraph.getRuns().push_back(std::move(run));
        }
        paragraph.getSharedParaMarkStyle() = makeStyle("mark");
        DOM::ParagraphStyle paragraphStyle;
        paragraphStyle.setParentUUID(makeUUID("paragraph"));
        paragraph.getSharedStyle() = _edited._document.getSharedObjectFactory().create(paragraphStyle);
        _edited.getText().getBlocks().push_back(std::make_unique<DOM::Paragraph>(std::move(paragraph)));
        // The document's own editor was made before the paragraph, and counts anew.
        _edited._editor.setAddress(TextEditor::getMainTextAddress());
        _editor = std::make_unique<TextEditor>(_edited._adapter, _edited._executor, *_edited._notifications,
                                               TextEditor::getMainTextAddress());
    }

    static UUID makeUUID(const char* name)
    {
        UUID::Bytes bytes{};
        const std::string_view characters = name;
        std::copy_n(characters.begin(), std::min(characters.size(), bytes.size()), bytes.begin());
        return UUID(bytes);
    }

    DOM::SharedStyleConstIPtr<DOM::RunStyle> makeStyle(const char* name)
    {
        DOM::RunStyle style;
        style.setParentUUID(makeUUID(name));
        return _edited._document.getSharedObjectFactory().create(style);
    }

    const DOM::Paragraph& getParagraph(unsigned long blockIndex)
    {
        return cast<DOM::Paragraph>(*_edited.getText().getBlocks().at(blockIndex));
    }

    bool hasStyle(unsigned long blockIndex, unsigned long runIndex, const char* name)
    {
        return getParagraph(blockIndex).getRuns().at(runIndex)->getSharedStyle() == makeStyle(name);
    }

    std::string print()
    {
        return TestSupport::print(_edited.getText());
    }

    DocumentUnderTest _edited{DOM::TextWithTombstones()};
    std::unique_ptr<TextEditor> _editor;
};

TEST_F(StyledText, NewParagraphsAndRunsTakeOverTheStyleOfWhatIsSplit)
{
    makeRuns({"ab"});
    _editor->replace(1, 1, "x\ny");
    ASSERT_EQ("{|ax}{|yb}", print());
    EXPECT_TRUE(hasStyle(1, 0, "ab"));
    EXPECT_EQ(getParagraph(0).getSharedStyle(), getParagraph(1).getSharedStyle());
    EXPECT_EQ(getParagraph(0).getSharedParaMarkStyle(), getParagraph(1).getSharedParaMarkStyle());
}

TEST_F(StyledText, EmptyParagraphTypesInTheStyleOfItsMark)
{
    makeRuns({});
    _editor->replace(0, 0, "x");
    EXPECT_TRUE(hasStyle(0, 0, "mark"));
}

TEST_F(StyledText, ReplacedRunLeavesItsStyle)
{
    makeRuns({"ab", "cd", "ef"});
    _editor->replace(2, 4, "x");
    ASSERT_EQ("{|ab|x[...]|ef}", print());
    EXPECT_TRUE(hasStyle(0, 1, "cd"));
}

TEST_F(StyledText, ReplacedBeginningOfARunStaysInIt)
{
    makeRuns({"ab", "cd"});
    _editor->replace(2, 3, "x");
    ASSERT_EQ("{|ab|x[.]d}", print());
    EXPECT_TRUE(hasStyle(0, 1, "cd"));
}

TEST_F(StyledText, BeginningOfAParagraphTypesInTheRunBehind)
{
    makeRuns({"ab", "cd"});
    _editor->replace(0, 0, "x");
    EXPECT_EQ("{|xab|cd}", print());
}

TEST_F(StyledText, RunWithAnotherStyleBehindIsntEntered)
{
    makeRuns({"ab", "cd"});
    _editor->replace(0, 2, "x");
    ASSERT_EQ("{|x[...]|cd}", print());
    EXPECT_TRUE(hasStyle(0, 0, "ab"));
}

// What can't be done

template<class Work>
std::string getError(Work work)
{
    try
    {
        work();
    }
    catch (const InvalidEditError& error)
    {
        return error.what();
    }
    return "no error";
}

TEST(ReplaceCharacters, StretchesOutsideOfTheTextAreRefused)
{
    EditorCase edited("{|ab}");
    EXPECT_EQ("The stretch [1, 4) isn't inside the text, which has 2 characters",
              getError([&] { edited.replace(1, 4, "x"); }));
    EXPECT_EQ("The stretch [3, 3) isn't inside the text, which has 2 characters",
              getError([&] { edited.insert(3, "x"); }));
    EXPECT_EQ("The stretch [2, 1) ends before it begins", getError([&] { edited.replace(2, 1, "x"); }));
    edited.is("{|ab}");
}

TEST(ReplaceCharacters, BytesThatArentUtf8AreRefused)
{
    EditorCase edited("{|ab}");
    EXPECT_EQ("The text to insert isn't UTF-8 at byte 1", getError([&] { edited.replace(0, 2, "x\x80"); }));
    edited.is("{|ab}");
}

TEST(ReplaceCharacters, CellWithAFormulaDoesntTakeCharacters)
{
    auto table = std::make_unique<DOM::Table>();
    table->changeSize(1, 1);
    table->getOrCreateCell(RowIndex(0), ColumnIndex(0))
        .getTextWithTombstones()
        .getBlocks()
        .push_back(std::make_unique<DOM::FieldBlock>());
    DOM::TextWithTombstones text;
    text.getBlocks().push_back(std::move(table));
    using FixedChunk = CollaborationEngine::OperationNodeAddress::FixedChunk;
    using DOMCollaboration::OperationDOMNodeType;
    auto address = TextEditor::getMainTextAddress();
    address.appendItems(
        NodeAddressing::AddressInList(0),
        FixedChunk(DOMCollaboration::convertOperationNodeType(OperationDOMNodeType::CellCollection)),
        NodeAddressing::AddressInTable(RowIndex(0), ColumnIndex(0)),
        FixedChunk(DOMCollaboration::convertOperationNodeType(OperationDOMNodeType::TextWithTombstones)));
    DocumentUnderTest edited(std::move(text), address);
    const DOM::Document before = edited._document;

    EXPECT_EQ("The text doesn't take the edit", getError([&] { edited._editor.replace(0, 0, "x"); }));
    EXPECT_TRUE(before == edited._document);

    auto operations = edited._editor.replace(0, 1, "x");
    EXPECT_EQ(2U, operations.size());
    EXPECT_EQ("x", getCharacters(edited._editor.getIndex().getTextInDocument().getText()));
    edited._editor.takeBack(operations);
    EXPECT_TRUE(before == edited._document);
}

} // namespace

} // namespace Zem::CollaborationSession

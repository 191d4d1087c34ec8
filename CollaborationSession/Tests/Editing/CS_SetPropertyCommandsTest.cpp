#include "Editing/CS_EditorCase.h"
#include "Editing/CS_InvalidEditError.h"
#include "Editing/CS_Looks.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_PropertyValues.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::DataValue;
using DOMCollaboration::MapPropertyIdToSimpleDataValue;
using DOMCollaboration::PropertyId;

namespace
{

template<PropertyId id>
SharedConstPtr<DataValue> makeValue(DOMCollaboration::PropertyValueType<id> value)
{
    return makeSharedConst<MapPropertyIdToSimpleDataValue<id>>(std::move(value));
}

SharedConstPtr<DataValue> makeLinkValue(const char* target)
{
    return makeValue<PropertyId::HyperlinkId>(makeLink(target));
}

/// The runs of a text, each in brackets when it has a link, with a slash between paragraphs.
std::string printLinks(const DOM::TextWithTombstones& text)
{
    std::string printed;
    for (const auto& block : text.getBlocks())
    {
        printed += printed.empty() ? "" : "/";
        const auto* paragraph = cast<DOM::Paragraph>(block.get());
        if (!paragraph)
        {
            printed += '#';
            continue;
        }
        for (const auto& run : paragraph->getRuns())
        {
            const auto* textRun = cast<DOM::TextRun>(run.get());
            const bool hasLink = static_cast<bool>(DOM::derefSharedStyle(run->getSharedStyle()).getHyperlink());
            printed += (hasLink ? "[" : "|") + (textRun ? textRun->getText() : "~") + (hasLink ? "]" : "");
        }
    }
    return printed;
}

class SetLink : public testing::Test
{
protected:
    /// Sets a link on a stretch, and checks that it can be taken back and done again.
    void expect(std::string_view notation, unsigned long begin, unsigned long end, std::string_view expected)
    {
        SCOPED_TRACE(notation);
        DocumentUnderTest edited(TestSupport::makeText(notation));
        const DOM::Document before = edited._document;
        Operations operations =
            edited._editor.setRunProperty(begin, end, PropertyId::HyperlinkId, makeLinkValue("there"));
        EXPECT_EQ(expected, printLinks(edited.getText()));
        edited._editor.getIndex().checkInvariants();
        const DOM::Document afterwards = edited._document;
        edited._editor.takeBack(operations);
        EXPECT_TRUE(before == edited._document);
        for (auto& operation : operations)
        {
            edited.execute(std::move(operation));
        }
        EXPECT_TRUE(afterwards == edited._document);
    }
};

TEST_F(SetLink, OnAWholeRunPartsNothing)
{
    expect("{|ab}", 0, 2, "[ab]");
    expect("{|ab|cd}", 2, 4, "|ab[cd]");
}

TEST_F(SetLink, OnAPartOfARunPartsIt)
{
    expect("{|abcd}", 1, 3, "|a[bc]|d");
    expect("{|abcd}", 0, 3, "[abc]|d");
    expect("{|abcd}", 2, 4, "|ab[cd]");
}

TEST_F(SetLink, OnSeveralRunsPartsTheOutermost)
{
    expect("{|ab|cd|ef}", 1, 5, "|a[b][cd][e]|f");
    expect("{|ab}#{|cd}{|ef}", 1, 8, "|a[b]/#/[cd]/[e]|f");
}

TEST_F(SetLink, OnAtomicRunsToo)
{
    expect("{|ab~|cd}", 1, 4, "|a[b][~][c]|d");
}

TEST_F(SetLink, BesideTombstones)
{
    expect("[xx]{|ab[x]cd}[x]{[x]|[x]ef}", 1, 6, "|a[bcd]/[e]|f");
}

TEST_F(SetLink, CutsNoCharacter)
{
    expect("{|\xC3\xA9\xC3\xA9\xC3\xA9}", 1, 2, "|\xC3\xA9[\xC3\xA9]|\xC3\xA9");
}

TEST_F(SetLink, OnNothingIsNoOperation)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}#{|cd}"));
    TextEditor& editor = edited._editor;
    EXPECT_TRUE(editor.setRunProperty(1, 1, PropertyId::HyperlinkId, makeLinkValue("there")).empty());
    EXPECT_TRUE(editor.setRunProperty(2, 4, PropertyId::HyperlinkId, makeLinkValue("there")).empty());
    EXPECT_TRUE(editor.setRunProperty(6, 6, PropertyId::HyperlinkId, makeLinkValue("there")).empty());
}

TEST_F(SetLink, OnWhatHasItIsNoOperation)
{
    DocumentUnderTest edited(TestSupport::makeText("{|abcd}"));
    edited._editor.setRunProperty(1, 3, PropertyId::HyperlinkId, makeLinkValue("there"));
    EXPECT_TRUE(edited._editor.setRunProperty(2, 3, PropertyId::HyperlinkId, makeLinkValue("there")).empty());
    edited._editor.setRunProperty(0, 4, PropertyId::HyperlinkId, makeLinkValue("there"));
    EXPECT_EQ("[a][bc][d]", printLinks(edited.getText()));
}

TEST_F(SetLink, KeepsTheOldValueInTheOperation)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    edited._editor.setRunProperty(0, 2, PropertyId::HyperlinkId, makeLinkValue("here"));
    const Operations operations = edited._editor.setRunProperty(1, 2, PropertyId::HyperlinkId, makeLinkValue("there"));
    ASSERT_EQ(2U, operations.size());
    const auto& change = cast<CollaborationEngine::SetPropertyOperation>(*operations.back());
    EXPECT_TRUE(change.getOldValue() == *makeLinkValue("here"));
    EXPECT_TRUE(change.getNewValue() == *makeLinkValue("there"));
}

/// Sets a property of a run's style to another value than the default one, and back.
template<PropertyId id>
void expectRunProperty(DOMCollaboration::PropertyValueType<id> value)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    const DOM::Document before = edited._document;
    Operations operations = edited._editor.setRunProperty(0, 2, id, makeValue<id>(value));
    EXPECT_EQ(1U, operations.size());
    EXPECT_FALSE(before == edited._document);
    edited._editor.takeBack(operations);
    EXPECT_TRUE(before == edited._document);
}

TEST(SetRunProperty, TakesEveryPropertyOfAStyle)
{
    expectRunProperty<PropertyId::RunPropertyId>(std::make_shared<DOM::RunProps>());
    expectRunProperty<PropertyId::RunTrackedPropsId>(std::make_shared<DOM::TrackedObject<DOM::RunPropsConstPtr>>());
    expectRunProperty<PropertyId::TrackedActionId>(std::make_shared<DOM::TrackedActionConstPtr::element_type>());
    expectRunProperty<PropertyId::ParentStyleId>(UUID::generate());
    expectRunProperty<PropertyId::TrackedParentStyleId>(
        std::make_shared<DOM::TrackedTextStyleConstPtr::element_type>());
    expectRunProperty<PropertyId::HyperlinkId>(std::make_shared<const DOM::Hyperlink>("there"));
    expectRunProperty<PropertyId::CommentUUIDsId>({UUID::generate()});
}

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

TEST(SetRunProperty, SetsTheFieldsThatHaveAValue)
{
    DocumentUnderTest edited(TestSupport::makeText("{|one two}"));
    TextEditor& editor = edited._editor;
    const auto italic = std::make_shared<DOM::RunProps>();
    italic->_slant = DOM::FontSlant::Italic;
    editor.setRunLook(0, 3, makeBold());
    EXPECT_EQ(
        1U,
        editor.setRunProperty(0, 3, PropertyId::RunPropertyId, makeValue<PropertyId::RunPropertyId>(italic)).size());
    EXPECT_EQ("(bi)one() two", printLooks(edited.getText()));
    editor.setRunProperty(2, 7, PropertyId::RunPropertyId, makeValue<PropertyId::RunPropertyId>(italic));
    EXPECT_EQ("(bi)one(i) two", printLooks(edited.getText()));
}

TEST(SetRunProperty, ClearsAllFieldsByABundleWithoutAny)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    const DOM::Document before = edited._document;
    edited._editor.setRunLook(0, 2, makeBold());
    edited._editor.setRunLook(0, 2, makeItalic());
    edited._editor.setRunProperty(0, 2, PropertyId::RunPropertyId, makeValue<PropertyId::RunPropertyId>(nullptr));
    EXPECT_TRUE(before == edited._document);
}

TEST(SetRunLook, OverlappingSettingsOfOneFieldAreOne)
{
    DocumentUnderTest edited(TestSupport::makeText("{|The fox jumped.}"));
    edited._editor.setRunLook(0, 7, makeBold());
    edited._editor.setRunLook(4, 15, makeBold());
    EXPECT_EQ("(b)The fox jumped.", printLooks(edited.getText()));
    EXPECT_TRUE(edited._editor.setRunLook(0, 15, makeBold()).empty());
}

TEST(SetRunLook, OverlappingSettingsOfTwoFieldsAreBoth)
{
    DocumentUnderTest edited(TestSupport::makeText("{|The fox jumped.}"));
    edited._editor.setRunLook(0, 7, makeBold());
    edited._editor.setRunLook(4, 15, makeItalic());
    EXPECT_EQ("(b)The (bi)fox(i) jumped.", printLooks(edited.getText()));
}

TEST(SetRunLook, LinksAndUnlinks)
{
    DocumentUnderTest edited(TestSupport::makeText("{|abcd}"));
    edited._editor.setLink(0, 4, makeLink("x"));
    edited._editor.setLink(1, 3, nullptr);
    EXPECT_EQ("(@x)a()bc(@x)d", printLooks(edited.getText()));
}

TEST(SetRunLook, CommentsJoinThoseOfTheCharacters)
{
    DocumentUnderTest edited(TestSupport::makeText("{|abcdef}"));
    TextEditor& editor = edited._editor;
    editor.addComment(2, 6, makeComment('q'));
    editor.addComment(0, 4, makeComment('p'));
    EXPECT_EQ("(cp)ab(cpq)cd(cq)ef", printLooks(edited.getText()));
    EXPECT_TRUE(editor.addComment(1, 3, makeComment('p')).empty());
    editor.removeComment(1, 6, makeComment('q'));
    EXPECT_EQ("(cp)abcd()ef", printLooks(edited.getText()));
    EXPECT_TRUE(editor.removeComment(0, 6, makeComment('q')).empty());
}

TEST(SetRunProperty, RefusesWhatDoesntFit)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    TextEditor& editor = edited._editor;
    EXPECT_EQ("Property 38 isn't one of the style of a run",
              getError([&] { editor.setRunProperty(0, 2, PropertyId::ParaPropertyId, makeLinkValue("there")); }));
    EXPECT_EQ("The value isn't of the type of the property",
              getError([&] { editor.setRunProperty(0, 2, PropertyId::ParentStyleId, makeLinkValue("there")); }));
    EXPECT_EQ("The value isn't of the type of the property",
              getError([&] { editor.setRunProperty(0, 2, PropertyId::ParentStyleId, nullptr); }));
    EXPECT_EQ("The stretch [0, 3) isn't inside the text, which has 2 characters",
              getError([&] { editor.setRunProperty(0, 3, PropertyId::HyperlinkId, makeLinkValue("there")); }));
}

/// Sets a property of paragraphs, and gives how many operations that was; checks that it can be taken back.
template<PropertyId id>
std::size_t setParagraphProperty(std::string_view notation, unsigned long begin, unsigned long end,
                                 DOMCollaboration::PropertyValueType<id> value)
{
    DocumentUnderTest edited(TestSupport::makeText(notation));
    const DOM::Document before = edited._document;
    Operations operations = edited._editor.setParagraphProperty(begin, end, id, makeValue<id>(value));
    EXPECT_EQ(operations.empty(), before == edited._document);
    EXPECT_TRUE(edited._editor.setParagraphProperty(begin, end, id, makeValue<id>(value)).empty());
    edited._editor.takeBack(operations);
    EXPECT_TRUE(before == edited._document);
    return operations.size();
}

std::size_t setParent(std::string_view notation, unsigned long begin, unsigned long end)
{
    return setParagraphProperty<PropertyId::ParentStyleId>(notation, begin, end, UUID::generate());
}

TEST(SetParagraphProperty, GoesToEveryParagraphOfTheStretch)
{
    EXPECT_EQ(1U, setParent("{|ab}{|cd}", 0, 2));
    EXPECT_EQ(1U, setParent("{|ab}{|cd}", 2, 3));
    EXPECT_EQ(2U, setParent("{|ab}{|cd}", 2, 4));
    EXPECT_EQ(2U, setParent("[x]{|ab}[x]#[x]{|cd}", 0, 6));
    EXPECT_EQ(3U, setParent("{}{}{}", 0, 2) + setParent("{}{}{}", 2, 2));
}

TEST(SetParagraphProperty, GoesToTheParagraphOfAnEmptyStretch)
{
    EXPECT_EQ(1U, setParent("{|ab}{|cd}", 2, 2));
    EXPECT_EQ(1U, setParent("{|ab}{|cd}", 5, 5));
    EXPECT_EQ(1U, setParent("{}", 0, 0));
    EXPECT_EQ(0U, setParent("{|ab}#", 3, 3));
    EXPECT_EQ(0U, setParent("{|ab}#", 4, 4));
    EXPECT_EQ(0U, setParent("", 0, 0));
}

TEST(SetParagraphProperty, TakesEveryPropertyOfAParagraph)
{
    const auto expectOne = [](std::size_t count) { EXPECT_EQ(1U, count); };
    const std::string_view text = "{|ab}";
    expectOne(setParagraphProperty<PropertyId::RunPropertyId>(text, 0, 1, std::make_shared<DOM::RunProps>()));
    expectOne(setParagraphProperty<PropertyId::RunTrackedPropsId>(
        text, 0, 1, std::make_shared<DOM::TrackedObject<DOM::RunPropsConstPtr>>()));
    expectOne(setParagraphProperty<PropertyId::TrackedActionId>(
        text, 0, 1, std::make_shared<DOM::TrackedActionConstPtr::element_type>()));
    expectOne(setParagraphProperty<PropertyId::HyperlinkId>(text, 0, 1, std::make_shared<const DOM::Hyperlink>("x")));
    expectOne(setParagraphProperty<PropertyId::CommentUUIDsId>(text, 0, 1, {UUID::generate()}));
    expectOne(setParagraphProperty<PropertyId::ParaPropertyId>(text, 0, 1, std::make_shared<DOM::ParaProps>()));
    expectOne(setParagraphProperty<PropertyId::ParaTrackedPropsId>(
        text, 0, 1, std::make_shared<DOM::TrackedParaPropsConstPtr::element_type>()));
    expectOne(setParagraphProperty<PropertyId::ParagraphRunPropertyId>(text, 0, 1, std::make_shared<DOM::RunProps>()));
    expectOne(setParagraphProperty<PropertyId::TrackedParentStyleId>(
        text, 0, 1, std::make_shared<DOM::TrackedTextStyleConstPtr::element_type>()));
    expectOne(setParagraphProperty<PropertyId::NumRefId>(text, 0, 1, DOM::NumberingRef()));
}

TEST(SetParagraphLook, SetsItsFieldAndNoOther)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}{|cd}"));
    TextEditor& editor = edited._editor;
    const LookChange centred = LookChange::setField(&DOM::ParaProps::_alignment, DOM::ParagraphAlignment::Center);
    const LookChange kept = LookChange::setField(&DOM::ParaProps::_isKeptWithNext, true);
    EXPECT_EQ(1U, editor.setParagraphLook(0, 1, centred).size());
    EXPECT_EQ(2U, editor.setParagraphLook(1, 4, kept).size());
    EXPECT_TRUE(editor.setParagraphLook(0, 0, centred).empty());
    EXPECT_EQ(1U, editor.setParagraphLook(0, 5, centred).size());
}

TEST(SetParagraphProperty, RefusesWhatDoesntFit)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    EXPECT_EQ(
        "Property 52 isn't one of a paragraph",
        getError([&] { edited._editor.setParagraphProperty(0, 2, PropertyId::ExtentId, makeLinkValue("there")); }));
    EXPECT_EQ(
        "The value isn't of the type of the property",
        getError([&] { edited._editor.setParagraphProperty(0, 2, PropertyId::NumRefId, makeLinkValue("there")); }));
}

TEST(ReplaceCharacters, SplitParagraphKeepsItsNumbering)
{
    DocumentUnderTest edited(TestSupport::makeText("{|ab}"));
    edited._editor.setParagraphProperty(0, 0, PropertyId::NumRefId,
                                        makeValue<PropertyId::NumRefId>(DOM::NumberingRef()));
    edited._editor.replace(1, 1, "\n");
    const auto& blocks = edited.getText().getBlocks();
    EXPECT_TRUE(cast<DOM::Paragraph>(*blocks.at(0)).getNumRef());
    EXPECT_TRUE(cast<DOM::Paragraph>(*blocks.at(1)).getNumRef());
}

} // namespace

} // namespace Zem::CollaborationSession

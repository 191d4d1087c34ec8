// What people meant, told as stories. Each holds in every order of arrival, unless it says otherwise.

#include "Sharing/CS_StoryCase.h"

#include "Sharing/CS_SectionColumns.h"

namespace Zem::CollaborationSession
{

namespace
{

TEST(Stories, TwoMakeOverlappingWordsBold)
{
    Story("{|The fox jumped.}").meanwhile({paints(0, 7, bold()), paints(4, 15, bold())}).endsAs("*The fox jumped.*");
}

TEST(Stories, OneMakesBoldWhatAnotherMakesItalic)
{
    Story("{|The fox jumped.}")
        .meanwhile({paints(0, 7, bold()), paints(4, 15, italic())})
        .endsAs("*The **_fox_*_ jumped._");
}

TEST(Stories, LooksOfNeighboursDontTouch)
{
    Story("{|abcd}").meanwhile({paints(0, 2, italic()), paints(2, 4, bold())}).endsAs("_ab_*cd*");
}

TEST(Stories, BoldHoldsBehindAnEnterInIt)
{
    Story("{|abcdef}").meanwhile({paints(1, 5, bold()), types(3, "\n")}).endsAs("a*bc*/*de*f");
}

TEST(Stories, BothHalvesOfACentredParagraphAreCentred)
{
    Story("{|one two}").meanwhile({paintsParagraphs(0, 7, centred()), types(3, "\n")}).endsAs("^one/^ two");
}

TEST(Stories, AParagraphThatIsJoinedWithACentredOneIsCentred)
{
    const Story story = Story("{|one}{|two}").meanwhile({paintsParagraphs(4, 7, centred()), deletes(3, 4)});
    story.endsAs("^onetwo");
    Story(story).then(1, undoes()).then(0, undoes()).endsAs("one/two");
}

TEST(Stories, WhatIsPastedInAWordThatIsMadeBoldIsBold)
{
    const auto pastes = [](Participant& person)
    {
        Operations operations;
        operations.push_back(TestSupport::insert(4, "|X"));
        person.getClient().perform(operations, nullptr);
    };
    Story("{|abcd}").meanwhile({paints(0, 4, bold()), pastes}).endsAs("*abXcd*");
}

TEST(Stories, WhatIsTypedInADeletedTextStays)
{
    Story("{|xxyy}").meanwhile({types(2, "abc"), deletes(0, 4)}).endsAs("abc");
    Story("{|one}{|two}").meanwhile({deletes(0, 7), types(5, "abc")}).endsAs("abc");
    Story("{|word}").meanwhile({deletes(0, 4), types(1, "X")}).endsAs("X");
}

TEST(Stories, WhatTwoTypeInADeletedTextStays)
{
    Story("{|one}{|two}").meanwhile({deletes(0, 7), types(1, "X"), types(5, "Y")}).endsAs("XY");
}

TEST(Stories, UndoOfADeletionBringsTheLineBackAroundWhatWasTypedInIt)
{
    Story("{|xxyy}").meanwhile({types(2, "abc"), deletes(0, 4)}).then(1, undoes()).endsAs("xxabcyy");
    Story("{|one}{|two}").meanwhile({deletes(0, 7), types(5, "abc")}).then(0, undoes()).endsAs("one/tabcwo");
    Story("{|one}{|word}{|two}")
        .meanwhile({deletes(4, 9), types(6, "abc")})
        .then(0, undoes())
        .endsAs("one/woabcrd/two");
}

TEST(Stories, UndoOfADeletionBringsTheLineBackAroundAnEnterInIt)
{
    Story("{|word}").meanwhile({types(2, "\n"), deletes(0, 4)}).then(1, undoes()).endsAs("wo/rd");
    Story("{|word}#").meanwhile({types(2, "\n"), deletesSlots(0, 7)}).endsAs("//#");
    Story("{|word}#").meanwhile({types(2, "\n"), deletesSlots(0, 7)}).then(1, undoes()).endsAs("wo/rd/#");
}

TEST(Stories, UndoOfAPasteLeavesWhatOthersTypedInIt)
{
    Story("{}")
        .prepare(types(0, "hello"))
        .meanwhile({[](Participant&) {}, types(2, "XX")})
        .then(0, undoes())
        .endsAs("XX");
    Story("{}").prepare(types(0, "word")).meanwhile({undoes(), types(2, "X")}).endsAs("X");
}

TEST(Stories, UndoOfTheFirstLetterLeavesTheSecond)
{
    Story("{}")
        .prepare([](Participant& person) { person.replace(0, 0, "X"); })
        .prepare([](Participant& person) { person.replace(0, 0, "Y"); })
        .then(0, [](Participant& person) { EXPECT_TRUE(person.undo(person.getActions().front())); })
        .endsAs("Y");
}

TEST(Stories, UndoBringsBackAPartOfWhatWentLaterAsAWhole)
{
    Story("{|hello world}")
        .prepare(deletes(3, 8))
        .prepare(deletes(0, 6))
        .then(0, [](Participant& person) { EXPECT_TRUE(person.undo(person.getActions().front())); })
        .endsAs("lo wo");
}

TEST(Stories, ABoldWordThatIsMadeItalicStaysBold)
{
    Story("{|word}").prepare(paints(0, 4, bold())).then(0, paints(0, 4, italic())).endsAs("*_word_*");
}

TEST(Stories, UndoOfBoldReachesBehindAnEnterInIt)
{
    Story("{|abcdef}").meanwhile({paints(1, 5, bold()), types(3, "\n")}).then(0, undoes()).endsAs("abc/def");
}

TEST(Stories, UndoOfBoldLeavesWhatOthersMadeOfItSince)
{
    Story("{|abcdef}").prepare(paints(0, 6, bold())).then(0, undoes()).then(0, redoes()).endsAs("*abcdef*");
    Story("{|abcdef}").meanwhile({paints(0, 6, bold()), paints(2, 4, italic())}).then(0, undoes()).endsAs("ab_cd_ef");
}

TEST(Stories, ALinkDoesntGrowAtItsEnd)
{
    Story("{|ab}")
        .prepare([](Participant& person)
                 { person.setRunLook(0, 2, LookChange::setLink(std::make_shared<DOM::Hyperlink>())); })
        .then(0, types(2, "c"))
        .endsAs("[ab]c");
}

TEST(Stories, CommentsOnOneWordAddUp)
{
    const UUID first = UUID::generate();
    const UUID second = UUID::generate();
    Story("{|abc}")
        .meanwhile({paints(0, 3, LookChange::addComment(first)), paints(1, 3, LookChange::addComment(second))})
        .endsAs("(a)((bc))");
}

TEST(Stories, WhatIsTypedInFrontOfAWordThatIsMadeBoldIsNot)
{
    Story("{|one two}").meanwhile({paints(4, 7, bold()), types(4, "X")}).endsAs("one X*two*");
}

TEST(Stories, EnterBehindABoldWordsHalf)
{
    Story("{|onetwo}").meanwhile({paints(0, 6, bold()), types(3, "\n")}).endsAs("*one*/*two*");
}

TEST(Stories, WhatIsTypedInsideIsBold)
{
    Story("{|abcd}").meanwhile({paints(0, 4, bold()), types(2, "X")}).endsAs("*abXcd*");
}

TEST(Stories, TheLaterOfTwoLooksStands)
{
    const Story story = Story("{|abcd}").meanwhile(
        {paints(0, 3, bold()), paints(1, 4, LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Light))});
    story.endsAs({0, 1}, "*a*bcd");
    story.endsAs({1, 0}, "*abc*d");
}

TEST(Stories, ThreeDoEverythingToOneWord)
{
    const Story story = Story("{|one two}").meanwhile({deletes(0, 7), types(4, "X"), paints(0, 7, bold())});
    story.endsAs("*X*");
    Story(story).then(0, undoes()).endsAs("*one Xtwo*");
    Story(story).then(1, undoes()).endsAs("");
    Story(story).then(2, undoes()).endsAs("X");
    Story(story).then(0, undoes()).then(2, undoes()).endsAs("one Xtwo");
    Story(story).then(2, undoes()).then(0, undoes()).endsAs("one Xtwo");
    Story(story).then(0, undoes()).then(1, undoes()).then(2, undoes()).endsAs("one two");
    Story(story).then(1, undoes()).then(0, undoes()).then(1, redoes()).endsAs("*one Xtwo*");
}

TEST(Stories, ThreePressEnterAndOneDeletesAll)
{
    const Story story = Story("{|abcdef}").meanwhile({types(2, "\n"), types(4, "\n"), deletes(0, 6)});
    story.endsAs("//");
    Story(story).then(2, undoes()).endsAs("ab/cd/ef");
    Story(story).then(2, undoes()).then(0, undoes()).endsAs("abcd/ef");
    Story(story).then(0, undoes()).then(2, undoes()).endsAs("abcd/ef");
}

TEST(Stories, TwoDeleteTheSameAndOneOfThemUndoes)
{
    const Story story = Story("{|abcdef}").meanwhile({deletes(1, 4), deletes(2, 5)});
    story.endsAs("af");
    Story(story).then(0, undoes()).endsAs("abf");
    Story(story).then(1, undoes()).endsAs("aef");
    Story(story).then(0, undoes()).then(1, undoes()).endsAs("abcdef");
}

TEST(Stories, TwoDeleteTheSameLinesAndBothUndo)
{
    const Story story = Story("{|one}{|two}{|three}").meanwhile({deletes(1, 9), deletes(2, 11)});
    story.endsAs("oee");
    Story(story).then(0, undoes()).then(1, undoes()).endsAs("one/two/three");
    Story(story).then(1, undoes()).then(0, undoes()).endsAs("one/two/three");
}

TEST(Stories, UndoOfAnEnterInWhichOthersTyped)
{
    const Story story = Story("{|onetwo}").prepare(types(3, "\n")).meanwhile({undoes(), types(4, "X")});
    story.endsAs("oneXtwo");
    Story(story).then(0, redoes()).endsAs("one/Xtwo");
}

TEST(Stories, ACommentIsTakenBackAloneWhenItsWordGotAnother)
{
    const UUID first = UUID::generate();
    const UUID second = UUID::generate();
    const Story story = Story("{|abc}").meanwhile(
        {paints(0, 3, LookChange::addComment(first)), paints(1, 3, LookChange::addComment(second))});
    Story(story).then(0, undoes()).endsAs("a(bc)");
    Story(story).then(1, undoes()).endsAs("(abc)");
    Story(story).then(1, undoes()).then(0, undoes()).endsAs("abc");
}

TEST(Stories, ALinkHasWhatIsTypedInsideAndNothingBeside)
{
    const auto links = [](Participant& person)
    { person.setRunLook(1, 3, LookChange::setLink(std::make_shared<DOM::Hyperlink>())); };
    Story("{|abcd}").meanwhile({links, types(2, "X")}).endsAs("a[bXc]d");
    Story("{|abcd}").meanwhile({links, types(1, "X")}).endsAs("aX[bc]d");
    Story("{|abcd}").meanwhile({links, types(3, "X")}).endsAs("a[bc]Xd");
    Story("{|abcd}").meanwhile({links, types(2, "\n")}).endsAs("a[b]/[c]d");
}

TEST(Stories, AHeadingThatIsPartedByTwoIsOneInAllParts)
{
    Story("{|abcdef}")
        .meanwhile({paintsParagraphs(0, 6, centred()), types(2, "\n"), types(4, "\n")})
        .endsAs("^ab/^cd/^ef");
    Story("{|abcdef}")
        .meanwhile({paintsParagraphs(0, 6, centred()), types(2, "\n"), types(4, "\n")})
        .then(0, undoes())
        .endsAs("ab/cd/ef");
}

TEST(Stories, AParagraphThatIsTypedInFrontOfACentredOneIsNot)
{
    Story("{|ab}{|cd}").meanwhile({paintsParagraphs(3, 5, centred()), types(2, "\nX")}).endsAs("ab/X/^cd");
}

TEST(Stories, WhatIsTypedAtOnePlaceIsTwoWords)
{
    SessionCase session("{|()}", 2);
    for (const char* letters : {"ax", "by", "cz"})
    {
        const unsigned long at = static_cast<unsigned long>(letters[0] - 'a');
        session[0].replace(1 + at, 1 + at, std::string(1, letters[0]));
        session[0].send();
        session[1].replace(1 + at, 1 + at, std::string(1, letters[1]));
        session[1].send();
    }
    session.settle();
    EXPECT_EQ(session[0].getText(), "(abcxyz)");
}

TEST(Stories, DeletionOfALineInFrontOfABlockInWhichSomebodyTypes)
{
    Story("{|ab}{|cd}#").meanwhile({deletes(2, 5), types(4, "X")}).endsAs("abX/#");
    Story("{|ab}{|cd}#").meanwhile({deletes(2, 5), types(4, "X")}).then(0, undoes()).endsAs("ab/cXd/#");
    const Story wholeLine = Story("{|ab}{|cd}#").meanwhile({deletesSlots(5, 10), types(4, "X")});
    wholeLine.endsAs("abX/#");
    Story(wholeLine).then(0, undoes()).endsAs({0, 1}, "abX/cd/#");
    Story(wholeLine).then(0, undoes()).endsAs({1, 0}, "ab/cXd/#");
}

TEST(Stories, WhatComesBackBesideAnItalicLetterIsAsItWas)
{
    Story("{|abcd}")
        .prepare(deletes(2, 3))
        .prepare(paints(1, 2, italic()))
        .then(0, [](Participant& person) { EXPECT_TRUE(person.undo(person.getActions().front())); })
        .endsAs("a_b_cd");
    Story("{|abcd}")
        .prepare(deletes(1, 2))
        .prepare(paints(1, 2, italic()))
        .then(0, [](Participant& person) { EXPECT_TRUE(person.undo(person.getActions().front())); })
        .endsAs("ab_c_d");
}

TEST(Stories, ALookOfAParagraphHoldsForWhatIsSplitOffBehindTheSelectedPart)
{
    Story("{|ab}").meanwhile({paintsParagraphs(0, 1, centred()), types(1, "\n")}).endsAs("^a/^b");
    Story("{|ab}").meanwhile({paintsParagraphs(0, 1, centred()), types(2, "\n")}).endsAs("^ab/^");
    Story("{|ab}{|cd}").meanwhile({paintsParagraphs(3, 4, centred()), deletes(2, 5)}).endsAs("ab");
}

TEST(Stories, AnUndoneEnterIsGoneThoughTheParagraphGotAnotherLook)
{
    const auto typesAndUndoes = [](unsigned long offset, std::string text)
    {
        return [=](Participant& person)
        {
            person.replace(offset, offset, text);
            EXPECT_TRUE(person.getClient().undo());
        };
    };
    Story("{}").meanwhile({paintsParagraphs(0, 0, centred()), typesAndUndoes(0, "\nab")}).endsAs("^");
    Story("{|ab}").meanwhile({paintsParagraphs(0, 2, centred()), typesAndUndoes(1, "\n\nxy")}).endsAs("^ab");
}

TEST(Stories, ALinkEndsWhereItEndsWhateverElseCameIn)
{
    const auto links = [](unsigned long begin, unsigned long end)
    {
        return [=](Participant& person)
        { person.setRunLook(begin, end, LookChange::setLink(std::make_shared<DOM::Hyperlink>())); };
    };
    Story("{|abcd}")
        .prepare(links(0, 4))
        .meanwhile({[](Participant& person) { person.replace(3, 4, "x"); }, types(0, "\n")})
        .endsAs("/[abc]x");
    Story("{|ab}")
        .prepare(paints(1, 2, LookChange::addComment(UUID::generate())))
        .meanwhile({types(2, "x"), types(1, "\n")})
        .endsAs("a/(b)x");
}

} // namespace

} // namespace Zem::CollaborationSession

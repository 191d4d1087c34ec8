#include "Sharing/CS_FitCase.h"

namespace Zem::CollaborationSession
{

namespace
{

/// Something typed in a look.
Typing typedAs(RunStylePtr look)
{
    Typing typing;
    typing._look = std::move(look);
    return typing;
}

Typing pasted()
{
    Typing typing;
    typing._tagsGoOn = false;
    return typing;
}

const RunStylePtr plain;

} // namespace

TEST(FitInsertion, BytesBehindALiveByteAreLeftAsTheyAre)
{
    FitCase("{|a@^b}").insert("X").isAsAsked().is("{|aXb}");
    FitCase("{|a@[bc]^d}").insert("XY").isAsAsked().is("{|aXYd}");
    FitCase("{|a@^}").insert("X").isAsAsked().is("{|aX}");
}

TEST(FitInsertion, OthersLettersOfTheSameLookStayInFront)
{
    FitCase("{|a@Y^b}").insert("X", typedAs(plain)).isAsAsked().is("{|aYXb}");
}

TEST(FitInsertion, WhatWasTypedInFrontOfANewRunStaysInTheOldOne)
{
    FitCase("{|one @*^two}").insert("X").is("{|one X*two}").has({0});
    FitCase("{|one @Y*^two}").insert("X").is("{|one YX*two}");
    // The run begins where it was typed, and not since.
    FitCase("{|one *@^two}").insert("X").isAsAsked().is("{|one *Xtwo}");
}

TEST(FitInsertion, EnterWhereARunWasPartedNeedsNoTag)
{
    FitCase("{|one@*^two}").insert("}{|").is("{|one}{*two}").has({0, 1, -1});
}

TEST(FitInsertion, EnterGoesOnInTheLookThatTheRunAndTheParagraphHaveNow)
{
    FitCase("=*one@^two}").insert("}{|").is("=*one}=*two}").has({0, 1, 2});
    FitCase("=*one@^two}").insert("}{|X").is("=*one}=*Xtwo}");
    FitCase("{|one@^two}").insert("}{|").isAsAsked().is("{|one}{|two}");
    FitCase("=*one@^two}").insert("}{|", pasted()).is("=*one}{*two}");
}

TEST(FitInsertion, PastedTagsKeepTheirLook)
{
    FitCase("{|one@^two}").insert("*X|", pasted()).isAsAsked().is("{|one*X|two}");
    FitCase("{_one@^two}").insert("*X|", pasted()).is("{_one*X_two}").has({0, 1, 2});
    FitCase("{|one@^two}").insert("*X", pasted()).is("{|one*X|two}").has({0, 1});
}

TEST(FitInsertion, TheRestOfAPartedRunKeepsItsLook)
{
    // What a setting parts a run with.
    FitCase("{*one@^two}").insert("|").is("{*one*two}").has({0});
    FitCase("{|one@*^two}").insert("|").is("{|one*two}").has({-1});
}

TEST(FitInsertion, BytesOfADeadAnchorKeepTheirLook)
{
    FitCase("{|a[*b]@^c}").insert("X", typedAs(makeBoldStyle())).is("{|a*X|c}").has({1});
    FitCase("{|a[*b]@^}").insert("X", typedAs(makeBoldStyle())).is("{|a*X}").has({1});
    FitCase("{|a[*b]@^*c}").insert("X", typedAs(plain)).isAsAsked().is("{|aX*c}");
    FitCase("{|a[|b]@^c}").insert("X", typedAs(plain)).isAsAsked().is("{|aXc}");
    FitCase("{|a[*b]@^c}").insert("X").isAsAsked().is("{|aXc}");
    FitCase("{[*b]@^}").insert("X", typedAs(makeBoldStyle())).is("{*X}").has({1});
    FitCase("{[*b]@^|c}").insert("X", typedAs(makeBoldStyle())).is("{*X|c}");
}

TEST(FitInsertion, BytesOfALiveAnchorLookLikeItWhateverCameBetween)
{
    FitCase("{|a@*Z^|b}").insert("X").is("{|a*Z|X|b}");
    FitCase("{|a@*Z^b}").insert("X").is("{|a*Z|X*b}");
}

TEST(FitInsertion, EnterOfSomebodyElseInFront)
{
    FitCase("{|a@}{|^b}").insert("X").isAsAsked().is("{|a}{|Xb}");
    FitCase("{|a@}{*^b}").insert("X").is("{|a}{|X*b}");
}

TEST(FitInsertion, TheLookAtTheBeginningOfAnEmptyParagraph)
{
    FitCase("{@^}").insert("|X").isAsAsked().is("{|X}");
    FitCase("{@|Y^}").insert("|X").isAsAsked().is("{|Y|X}");
    // It was joined with the next one at the same moment.
    FitCase("{@^[}{]*b}").insert("|X").isAsAsked().is("{|X*b}");
}

TEST(FitInsertion, WhatWasTypedIntoAParagraphThatIsGoneBecomesOne)
{
    FitCase("{|a}[{*b]@^[c}]{|d}").insert("X", typedAs(makeBoldStyle())).is("{|a}{*X}{|d}").has({2});
    FitCase("[{*b]@^[c}]{|d}").insert("X").is("{|X}{|d}").has({2});
    FitCase("#[{*b]@^[c}]").insert("X", typedAs(makeBoldStyle())).is("#{*X}");
    FitCase("[{*b]@^[c}]").insert("X", typedAs(makeBoldStyle())).is("{*X}");
}

TEST(FitInsertion, TheParagraphThatItWasTypedIntoIsTheModelOfANewOne)
{
    DOM::Paragraph paragraph;
    paragraph.getSharedStyle() = makeCentredStyle();
    Typing typing = typedAs(makeBoldStyle());
    typing._paragraph = &paragraph;
    FitCase("[=*b]@^[c}]{|d}").insert("X", typing).is("=*X}{|d}");
}

TEST(FitInsertion, WhatWasTypedIntoTheLastParagraphThatIsGoneJoinsTheOneInFront)
{
    FitCase("{|a}[{|b]@^[c}]").insert("X", typedAs(plain)).is("{|aX}").has({0});
    FitCase("{|a}[{*b]@^[c}]").insert("X", typedAs(makeBoldStyle())).is("{|a*X}").has({1});
    FitCase("{|a}[{*b]@^[c}]#").insert("X", typedAs(makeBoldStyle())).is("{|a*X}#");
    FitCase("{}[{*b]@^[c}]").insert("X", typedAs(makeBoldStyle())).is("{*X}");
}

TEST(FitInsertion, ALineBreakStaysOneLineBreak)
{
    FitCase("{|a}[{|b]@^[c}]{|d}").insert("}{|").is("{|a}{}{|d}").has({1, -1, -1});
    FitCase("{|a}[{|b]@^[c}]{|d}").insert("X}{|Y").is("{|a}{|X}{|Y}{|d}").has({2, 3, 4, 5, 6});
    FitCase("{|a}[{|b]@^[c}]").insert("}{|").is("{|a}{}").has({0, 1, -1});
    FitCase("{|a}[{|b]@^[c}]").insert("X}{|Y", typedAs(plain)).is("{|aX}{|Y}").has({0, 1, 2, 3, 4});
}

TEST(FitInsertion, ParagraphsThatCameBetweenBlocksPartOnesThatWereJoined)
{
    FitCase("{|a[}]^[{|]b}").insert("{|X}").is("{|a|X}{|b}").has({-1, 0, 1, 2});
    FitCase("{|a[}]^[{|]b}").insert("=*X}", pasted()).is("{|a}=*X}{|b}").has({1, 2, 3, 4});
    FitCase("{|a[}]^[{|]b}").insert("#", pasted()).is("{|a}#{|b}").has({1});
    FitCase("{|a}@^").insert("{|X}").isAsAsked().is("{|a}{|X}");
}

TEST(FitInsertion, AnAtomicRunPartsARunOfBytes)
{
    FitCase("{*a@^b}").insert("~", pasted()).is("{*a~*b}").has({0});
    FitCase("{*a@^b}").insert("~|", pasted()).is("{*a~*b}").has({0, 1});
}

TEST(FitInsertion, SeveralNestedOperationsAtOneGapAreOne)
{
    using namespace CollaborationEngine;
    // A pasted line break in front of a run, and a word behind its tag, which is gone.
    FitCase text("{|a[*b]c}");
    std::vector<ListModificationOperation<InsertTag>> nestedOperations;
    for (const auto& [slot, elements] : {std::pair(4UL, "XY"), std::pair(3UL, "}{")})
    {
        const auto fragment = FitCase::makeInsertion(slot, LookedText::makeElements(elements));
        nestedOperations.push_back(fragment->getNestedOperations().front());
    }
    Typing behindTag = typedAs(makeBoldStyle());
    behindTag._anchor = 3;
    Typing inFront;
    inFront._anchor = 2;
    const TextInsertion insertion(std::move(nestedOperations));
    text._insertion = fitInsertion(text._edited.getText(), insertion, {behindTag, inFront});
    text.executeFitted(text._insertion, insertion);
    text.is("{|a}{*XY|c}").has({0, 1, 3, 4});
}

} // namespace Zem::CollaborationSession

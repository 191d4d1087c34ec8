#include "Sharing/CS_FitCase.h"

namespace Zem::CollaborationSession
{

// X, Y and Z are what others typed at the moment of the deletion.

TEST(FitMarking, ADeletionThatFitsIsLeftAsItIs)
{
    FitCase("{<|hello>}").mark().isAsAsked().is("{}");
    FitCase("{|he<ll>o}").mark().isAsAsked().is("{|heo}");
    FitCase("{|one<}{>|two}").mark().isAsAsked().is("{|one|two}");
    FitCase("<{|one}>{|two}<#>{}").mark().isAsAsked().is("{|two}{}");
}

TEST(FitMarking, TheTagOfARunStaysForWhatWasTypedInIt)
{
    FitCase("{<|wo>X<rd>}").mark().is("{|X}").keeps({1}).takesAlso({});
}

TEST(FitMarking, AParagraphStaysForWhatWasTypedInItWhereTheTagOfTheNextIsNotTaken)
{
    FitCase("<{|wo>X<rd}>{|ef}").mark().is("{|X}{|ef}").keeps({0, 1, 7});
}

TEST(FitMarking, WhatWasTypedInADeletionOfEverythingIsOneParagraph)
{
    FitCase("{<|o>X<ne>}<{|t>Y<wo}>").mark().is("{|XY}").isWithDead("{|.X......Y..}").keeps({1, 13}).takesAlso({6});
    FitCase("<{|o>X<ne>}<{|t>Y<wo}>").mark().is("{|XY}").keeps({0, 1, 13}).takesAlso({6});
}

TEST(FitMarking, TheMarkAndTheTagBetweenWhatWasTypedGo)
{
    FitCase("<{|o>X<ne}{|t>Y<wo}>{|b}").mark().is("{|XY}{|b}").keeps({0, 1, 13}).takesAlso({});
}

TEST(FitMarking, WhatWasTypedInTheLastParagraphsJoinsTheOneInFrontOfThem)
{
    FitCase("{|a}<{|b>X<c}>").mark().is("{|aX}").takesAlso({3}).keeps({9});
    FitCase("{|a<b>}<{|b>X<c}{|d>Y<e}>").mark().is("{|aXY}");
    FitCase("{|a}<{|b>X<c}>#{}").mark().is("{|aX}#{}");
    // Somebody pressed Enter in it.
    FitCase("{|a}<{|b>X}{|Y<c}>").mark().is("{|aX}{|Y}");
    FitCase("{<|a>}<{|b>X<}>").mark().is("{|X}");
}

TEST(FitMarking, WhatWasTypedStaysAParagraphBetweenOthers)
{
    FitCase("{|a}<{|b>X<c}>{|d}").mark().is("{|a}{|X}{|d}");
    FitCase("#<{|b>X<c}>").mark().is("#{|X}");
    FitCase("{|a}<#{|b>X<c}>").mark().is("{|a}{|X}");
    FitCase("{|a<b>}<#{|b>X<c}>").mark().is("{|aX}");
}

TEST(FitMarking, AByteKeepsTheTagOfItsRunWhereItWouldChangeItsLook)
{
    FitCase("{|a<b*c>X<d>}").mark().is("{|a*X}").keeps({4});
    FitCase("{|a<b|c>X<d>}").mark().isAsAsked().is("{|aX}");
    FitCase("{|a<b}{*c>X<d>}").mark().is("{|a*X}");
    FitCase("{~<|c>X<d>}").mark().is("{~|X}");
}

TEST(FitMarking, TheTagOfARunThatWasPartedGoesWithItsLastByte)
{
    // Somebody made the second half bold.
    FitCase("{<|a>*<b>}").mark().is("{}").takesAlso({3});
    FitCase("{<|a>}{*<b>}").mark().is("{}{}").takesAlso({5});
    FitCase("{|x<a>*<b>_<c>}").mark().is("{|x}").takesAlso({4, 6});
    FitCase("{|x<a>*<b>|y}").mark().is("{|x|y}").takesAlso({4});
}

TEST(FitMarking, TheTagOfAPartedRunStaysForWhatHasItsLook)
{
    FitCase("{|x*<b}{*c>Y}").mark().isAsAsked().is("{|x*Y}");
    FitCase("{|x*<b}{_c>Y}").mark().is("{|x_Y}").keeps({7}).takesAlso({3});
}

TEST(FitMarking, AnAtomicRunKeepsTheMarkInFrontOfABlock)
{
    FitCase("{~<}>#").mark().is("{~}#").keeps({2});
}

TEST(FitMarking, NothingIsLeftToDoWhereAllOfItStays)
{
    FitCase text("{<|>a<}>");
    text.mark().is("{|a}").keeps({1, 3});
    EXPECT_TRUE(text._marking._isChanged);
    EXPECT_EQ(nullptr, text._marking._operation);
}

TEST(FitMarking, DeadSlotsInsideAreLeftOut)
{
    FitCase("{<|w>[o]<r>X[ab]<d>}").mark().isWithDead("{|...X...}").keeps({1});
}

TEST(FitMarking, KeepsTheFirstTagAndTheLastMarkOfSeveralParagraphs)
{
    FitCase("<{|o}{|t>X<w}{|t}>{|b}").mark().is("{|X}{|b}").keeps({0, 5, 13});
}

} // namespace Zem::CollaborationSession

#include "Sharing/CS_FitCase.h"

namespace Zem::CollaborationSession
{

TEST(FitRestoring, WhatFitsComesBackAsItIs)
{
    FitCase("{|he<[ll]>o}").restore().isAsAsked().is("{|hello}");
    FitCase("{|one<[}{]>|two}").restore().isAsAsked().is("{|one}{|two}");
    FitCase("<[{|one}]>{|two}").restore().isAsAsked().is("{|one}{|two}");
    // Redo of a setting brings its tags back, in front of what lives.
    FitCase("{|a<[*]>b<[|]>c}").restore().isAsAsked().is("{|a*b|c}");
    FitCase("{|a<[*]>b}").restore().isAsAsked().is("{|a*b}");
}

TEST(FitRestoring, TheTagOfTheRunComesBackWithItsBytes)
{
    FitCase("{[|hel<lo wor>ld]}").restore().is("{|lo wor}").bringsBack({1}).leavesOut("");
}

TEST(FitRestoring, AWholeParagraphComesBackAroundItsBytes)
{
    FitCase("{|a}[{|hel<lo wor>ld}]{|b}").restore().is("{|a}{|lo wor}{|b}").bringsBack({4, 5, 17});
}

TEST(FitRestoring, BytesOfSeveralParagraphsComeBackIntoOneIfNobodyBringsBackTheBreak)
{
    FitCase("[{|o<n>e}{|t<w>o}]").restore().is("{|nw}").bringsBack({0, 1, 11});
}

TEST(FitRestoring, ASecondTagOfAParagraphStaysDead)
{
    FitCase("{|a[}]<[{|b]>c}").restore().is("{|a|bc}").leavesDead({4}).leavesOut("");
}

TEST(FitRestoring, AnOpenParagraphGetsItsMark)
{
    FitCase("<[{|ab]>[c}]{|d}").restore().is("{|ab}{|d}").bringsBack({5});
}

TEST(FitRestoring, ALineBreakBringsBackTheTagOfTheRunBehindIt)
{
    FitCase("{|a<[}{]>[*]b}").restore().is("{|a}{*b}").bringsBack({5});
}

TEST(FitRestoring, ALineBreakInAParagraphThatIsGoneComesBackAsAnEmptyOne)
{
    FitCase("[{|ab<}{>|cd}]{}").restore().is("{}{}").bringsBack({0}).leavesDead({5});
}

TEST(FitRestoring, ABlockPartsTheParagraphItComesBackIn)
{
    FitCase("{|a[}]<[#]>[{*]b}").restore().is("{|a}#{*b}").bringsBack({3, 5, 6});
}

TEST(FitRestoring, WhatNeedsAnUnknownTagIsLeftOut)
{
    FitCase text("{[|hel<lo wor>ld]}");
    text.restore({1}).is("{}").leavesOut("5-11");
    EXPECT_TRUE(text._restoring._isChanged);
    EXPECT_EQ(nullptr, text._restoring._operation);
    FitCase("{|x[a<b>c]}[{|d<e>f}]").restore({7}).is("{|xb}").leavesOut("10-11");
}

TEST(FitRestoring, ATagOfARunOfWhichNothingComesBackStaysDead)
{
    FitCase("{|a<[*]>[b]|c}").restore().is("{|a|c}").leavesDead({3});
    FitCase("{|a<[*]>[b]|c}").restore().leavesOut("");
}

TEST(FitRestoring, BytesThatLiveKeepTheirLook)
{
    FitCase("{|a<[*b]>[|c]d}").restore().is("{|a*b|d}").bringsBack({5});
    FitCase("{|a<[*b]>[|c]d}").restore({5}).is("{|abd}").leavesDead({3});
    FitCase("{|a<[|b]>[|c]d}").restore().isAsAsked().is("{|a|bd}");
}

TEST(FitRestoring, TheNextTagOfSeveralIsTaken)
{
    FitCase("{[|a*b<c>]}").restore().is("{*c}").bringsBack({3});
}

TEST(FitRestoring, TheTagThatWasStillThereIsTakenRatherThanTheNext)
{
    // Somebody had taken a setting back before.
    FitCase("{[|ab*<c>]}").restore({}, {1}).is("{|c}").bringsBack({1});
    FitCase("[{|a{*<c>}}]{}").restore({}, {0, 1, 7}).is("{|c}{}").bringsBack({0, 1, 7});
}

TEST(FitRestoring, BytesThatWouldJoinARunOfAnotherLookGetTheTagBackThatTheyStoodBehind)
{
    FitCase("{|a[*<b>c]}").restore({}, {3}).is("{|a*b}").bringsBack({3});
    FitCase("{|a[*<b>c]}").restore().isAsAsked().is("{|ab}");
    FitCase("{|a[|<b>c]}").restore({}, {3}).isAsAsked().is("{|ab}");
    FitCase("{|a[*<b>_<c>]|d}").restore({}, {3, 5}).is("{|a*b_c|d}").bringsBack({3, 5});
}

TEST(FitRestoring, EachGapIsFittedForItself)
{
    FitCase("{[|a<b>]}{*x<[y]>z}[{|<q>}]").restore().is("{|b}{*xyz}{|q}").bringsBack({1, 11, 12, 14});
}

TEST(FitRestoring, WhatIsDeadOfSomebodyElseStaysDead)
{
    FitCase("{|a<[b]>[c]<[d]>e}").restore().isAsAsked().is("{|abde}");
}

} // namespace Zem::CollaborationSession

#include "Sharing/CS_RemovedParagraphs.h"

#include "Sharing/CS_FitCase.h"

namespace Zem::CollaborationSession
{

namespace
{

/// What is brought back for a letter that was typed at `^` behind the slot in front of `@`. Slots of `deadBefore` were
/// dead before the latter.
std::string findRemoved(std::string_view notation, const std::vector<unsigned long>& deadBefore = {})
{
    FitCase text(notation);
    Typing typing;
    typing._anchor = text._looked._anchor;
    const auto insertion = FitCase::makeInsertion(text._looked._gap, LookedText::makeElements("x"));
    const auto findDead = [&](unsigned long slot, unsigned long seenFrom)
    {
        EXPECT_EQ(seenFrom, *text._looked._anchor);
        const bool wasLive = std::count(deadBefore.begin(), deadBefore.end(), slot) == 0;
        return boost::make_optional(DeadElement{text._looked._slots[slot]._element, wasLive});
    };
    const auto restoring = findRemovedParagraphs(text._edited.getText(), *insertion, {typing}, findDead);
    return restoring ? TestSupport::print(*restoring) : "nothing";
}

TEST(RemovedParagraphs, TheTagAndTheMarkAroundWhatIsTypedComeBack)
{
    EXPECT_EQ(findRemoved("[{|a@^b}]{}"), "restore 4:} 0:{");
    EXPECT_EQ(findRemoved("{}[{|cd}{|a@^b}{|ef}]{}"), "restore 11:} 7:{");
    EXPECT_EQ(findRemoved("[{|a@^b}]#"), "restore 4:} 0:{");
}

TEST(RemovedParagraphs, WhatLivesNeedsNothing)
{
    EXPECT_EQ(findRemoved("{[|a@^b]}"), "nothing");
    EXPECT_EQ(findRemoved("{|a@^[b]}"), "nothing");
}

TEST(RemovedParagraphs, BehindTheLastParagraphWhatIsTypedJoinsThat)
{
    EXPECT_EQ(findRemoved("{|c}[{|a@^b}]"), "nothing");
    EXPECT_EQ(findRemoved("{|c}[{|a@^b}]#"), "nothing");
}

TEST(RemovedParagraphs, WhatWasDeadWhenItWasTypedDoesntCount)
{
    EXPECT_EQ(findRemoved("[{|c}{|a@^b}]{}", {3, 4}), "restore 8:} 0:{");
    EXPECT_EQ(findRemoved("[{|a@^b}]{}", {0}), "nothing");
}

TEST(RemovedParagraphs, AreMarkedAgainAsTheyAre)
{
    FitCase text("<[{]>[a]<[}]>{}");
    EXPECT_EQ(TestSupport::print(*makeMarkingOf(*FitCase::makeRestoring(text._looked))), "mark 2:. 0:.");
}

} // namespace

} // namespace Zem::CollaborationSession

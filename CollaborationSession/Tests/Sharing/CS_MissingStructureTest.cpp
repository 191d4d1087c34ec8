#include "Sharing/CS_MissingStructure.h"

#include "Sharing/CS_FitCase.h"

#include "DClb_DocumentOperationTransformer.h"

namespace Zem::CollaborationSession
{

namespace
{

boost::optional<DeadElement> knowNothing(unsigned long)
{
    return boost::none;
}

/// What the text is once the slots inside of `<...>`, one element or neighbouring bytes, are back with what they lack.
std::string bringBack(std::string_view notation, FindDead findDead = knowNothing)
{
    FitCase text(notation);
    const auto single = FitCase::makeRestoring(text._looked);
    const MissingStructure missing = findMissingStructure(text._edited.getText(), *single, findDead);
    if (!missing._insertion)
    {
        return "nothing is missing";
    }
    text.execute(CollaborationEngine::cloneOperation(*missing._insertion));
    if (!missing._isInstead)
    {
        text.execute(DOMCollaboration::DocumentOperationTransformer().include(
            *single, *missing._insertion, CollaborationEngine::TieResolveCondition::FirstWins));
    }
    if (missing._removal)
    {
        text.execute(CollaborationEngine::cloneOperation(*missing._removal));
    }
    return printWithDead(text._edited.getText());
}

TEST(MissingStructure, BytesGetARun)
{
    EXPECT_EQ(bringBack("{|wo}{<[rd]>}"), "{|wo}{|.rd}");
    EXPECT_EQ(bringBack("{}<[rd]>{}"), "{}{|.rd}{}");
    EXPECT_EQ(bringBack("#<[rd]>"), "#{|.rd}");
}

TEST(MissingStructure, TheRunLooksLikeTheOneThatTheyStoodIn)
{
    const auto findBold = [](unsigned long slot) -> boost::optional<DeadElement> {
        return boost::make_optional(slot == 1, DeadElement{LookedText::makeElement('*'), true});
    };
    EXPECT_EQ(bringBack("{[*]<[rd]>}", findBold), "{.*.rd}");
}

TEST(MissingStructure, AnAtomicRunGetsAParagraph)
{
    EXPECT_EQ(bringBack("{}<[~]>{}"), "{}{~}{}");
    EXPECT_EQ(bringBack("{<[~]>}"), "nothing is missing");
}

TEST(MissingStructure, ABlockPartsTheParagraphThatItComesBackIn)
{
    EXPECT_EQ(bringBack("{|a<[#]>*b}"), "{|a}#{*b}");
    EXPECT_EQ(bringBack("{|a<[#]>b}"), "{|a}#{|b}");
    EXPECT_EQ(bringBack("{<[#]>}"), "{}#{}");
    EXPECT_EQ(bringBack("{}<[#]>{}"), "nothing is missing");
}

TEST(MissingStructure, ANewLineBreakStandsForADeadOne)
{
    EXPECT_EQ(bringBack("{|a<[}]>b}"), "{|a}.{|b}");
    EXPECT_EQ(bringBack("{|a}<[}]>{|b}"), "{|a}{}.{|b}");
}

TEST(MissingStructure, ATagAndItsFirstByteAreNotParted)
{
    EXPECT_EQ(bringBack("{|<[~]>a}"), "nothing is missing");
}

TEST(MissingStructure, WhatIsLeftOutIsTakenApartIntoElementsAndBytes)
{
    FitCase text("<[{|ab}#cd]>{}");
    const auto restoring = FitCase::makeRestoring(text._looked);
    std::string printed;
    for (const auto& single : takeSingles(*restoring, {{2, 6}, {7, 8}}))
    {
        printed += TestSupport::print(*single) + "; ";
    }
    EXPECT_EQ(printed, "restore 2:ab; restore 4:}; restore 5:#; restore 7:d; ");
}

} // namespace

} // namespace Zem::CollaborationSession

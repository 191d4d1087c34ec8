#include "Text/DClb_TextBusinessRules.h"

#include "TS_Assertions.h"
#include "TS_TextNotation.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration::TextBusinessRules
{

namespace
{

constexpr const char* elementNames[] = {"SectionTag", "ParaTag", "ParaMark",  "AtomicBlock", "TextRunTag",
                                        "AtomicRun",  "Char",    "TextBegin", "TextEnd"};

/// What is called for two neighbours: what is added, in the order of the calls, in the notation; "drop"; "." for
/// nothing.
std::string process(ElementType prev, ElementType next)
{
    std::string calls;
    const bool isChanged = processElement(
        prev, next, [&](const TextWithTombstonesElement& element) { calls += TestSupport::printElement(element); },
        [&] { calls += "drop"; });
    EXPECT_EQ(isChanged, !calls.empty());
    return isChanged ? calls : ".";
}

/// The repair of elements put in at a plane index of a text; " <" behind it if the insertion moved back.
std::string repair(std::string_view notation, unsigned long index, std::string_view elements)
{
    const DOM::TextWithTombstones text = TestSupport::makeText(notation);
    PlaneAnchor anchor{IndexExcludingTombstones(index)};
    TextWithTombstonesElementVector repaired = TestSupport::makeElements(elements);
    IndexExcludingTombstones startIndex(index);
    const bool isChanged =
        fixBusinessLogicForInsertion(repaired, startIndex, TextSurroundings(text.getBlocks(), anchor));
    const std::string printed = TestSupport::print(repaired);
    const bool isMoved = startIndex.get() != index;
    EXPECT_EQ(isChanged, isMoved || printed != elements);
    return printed + (isMoved ? " <" : "");
}

BusinessLogicValidationResult judgeRemoval(std::string_view notation, unsigned long begin, unsigned long end)
{
    const DOM::TextWithTombstones text = TestSupport::makeText(notation);
    PlaneAnchor anchor{IndexExcludingTombstones(begin)};
    return fixBusinessLogicForRemoving(IndexExcludingTombstones(begin), IndexExcludingTombstones(end),
                                       TextSurroundings(text.getBlocks(), anchor));
}

BusinessLogicValidationResult judgeRestoring(std::string_view notation, unsigned long index, std::string_view elements)
{
    const DOM::TextWithTombstones text = TestSupport::makeText(notation);
    PlaneAnchor anchor{IndexExcludingTombstones(index)};
    return fixBusinessLogicForRestoring(TestSupport::makeElements(elements), IndexExcludingTombstones(index),
                                        TextSurroundings(text.getBlocks(), anchor));
}

constexpr auto Valid = BusinessLogicValidationResult::Valid;
constexpr auto Invalid = BusinessLogicValidationResult::Invalid;

} // namespace

/// The whole table: a row for each `prev`, a column for each `next`. `|{` is the adding of a run, then of a paragraph.
TEST(ProcessElement, DecidesForEveryPairOfNeighbours)
{
    const char* const fault = "Invlalid elements position";
    const std::vector<std::vector<std::string>> table{
        // SectionTag, ParaTag, ParaMark, AtomicBlock, TextRunTag, AtomicRun, Char, TextBegin, TextEnd
        {".", ".", "{", ".", "{", "{", "|{", fault, "."},
        {"}", "}", ".", "}", ".", ".", "|", fault, "}"},
        {".", ".", "{", ".", "{", "{", "|{", fault, "."},
        {".", ".", "{", ".", "{", "{", "|{", fault, "."},
        {"drop", "drop", "drop", "drop", "drop", "drop", ".", fault, "drop"},
        {"}", "}", ".", ".", ".", ".", "|", fault, "}"},
        {"}", "}", ".", "}", ".", ".", ".", fault, "}"},
        {".", ".", "{", ".", "{", "{", "|{", fault, "."},
        {fault, fault, fault, fault, fault, fault, fault, fault, fault},
    };
    for (unsigned int prev = 0; prev < elementTypesCount; ++prev)
    {
        for (unsigned int next = 0; next < elementTypesCount; ++next)
        {
            SCOPED_TRACE(std::string(elementNames[prev]) + " before " + elementNames[next]);
            const auto decide = [&] { return process(static_cast<ElementType>(prev), static_cast<ElementType>(next)); };
            if (table[prev][next] == fault)
            {
                EXPECT_ASSERTION(decide(), fault);
                continue;
            }
            EXPECT_EQ(table[prev][next], decide());
        }
    }
}

TEST(ElementTypes, OfASectionTagDifferInAnOperationAndInTheDocument)
{
    const DOM::TextWithTombstones text = TestSupport::makeText("$");
    PlaneAnchor anchor{IndexExcludingTombstones(0)};
    EXPECT_EQ(ElementType::AtomicBlock,
              TextSurroundings(text.getBlocks(), anchor).getElementType(IndexExcludingTombstones(0)));
    EXPECT_EQ(ElementType::SectionTag, getElementType(TestSupport::makeElements("$").front()));
}

TEST(ElementTypes, OfTheDocumentCoverEveryPlace)
{
    const DOM::TextWithTombstones text = TestSupport::makeText("#{~|a}");
    PlaneAnchor anchor{IndexExcludingTombstones(0)};
    const TextSurroundings surroundings(text.getBlocks(), anchor);
    const ElementType expected[] = {ElementType::AtomicBlock, ElementType::ParaTag, ElementType::AtomicRun,
                                    ElementType::TextRunTag,  ElementType::Char,    ElementType::ParaMark,
                                    ElementType::TextEnd};
    EXPECT_EQ(ElementType::TextBegin, surroundings.getElementTypeBefore(IndexExcludingTombstones(0)));
    for (unsigned long index = 0; index < std::size(expected); ++index)
    {
        EXPECT_EQ(expected[index], surroundings.getElementType(IndexExcludingTombstones(index)));
    }
    EXPECT_ASSERTION(surroundings.getElementType(IndexExcludingTombstones(7)), "Unexpected type in the source variant");
}

TEST(InsertionRules, AByteIntoAnEmptyTextGetsAParagraphARunAndAMark)
{
    EXPECT_EQ("{|x}", repair("", 0, "x"));
}

TEST(InsertionRules, AByteBetweenParagraphsGetsThemToo)
{
    EXPECT_EQ("{|x}", repair("{|a}{|b}", 4, "x"));
}

TEST(InsertionRules, AMarkInsideARunGetsAParagraphWithARunForTheRest)
{
    EXPECT_EQ("}{|", repair("{|ab}", 3, "}"));
}

TEST(InsertionRules, ARunAloneInFrontOfAMarkIsDropped)
{
    EXPECT_EQ("", repair("{|a}", 3, "|"));
}

TEST(InsertionRules, WhatWouldPartATagFromItsFirstByteMovesInFrontOfTheTag)
{
    EXPECT_EQ("}#{ <", repair("{|ab}", 2, "#"));
    EXPECT_EQ("~ <", repair("{|ab}", 2, "~"));
    EXPECT_EQ("x", repair("{|ab}", 2, "x"));
}

TEST(InsertionRules, MovingInFrontOfATagWalksNoFurtherThanThat)
{
    DOM::TextWithTombstones text = TestSupport::makeText("{|a}{|bc}");
    PlaneAnchor anchor{IndexExcludingTombstones(6)};
    const TextSurroundings surroundings(text.getBlocks(), anchor);
    EXPECT_EQ(ElementType::Char, surroundings.getElementType(IndexExcludingTombstones(6)));
    // Any walk from the beginning would stumble over a missing block.
    text.getBlocks()[0].reset();
    TextWithTombstonesElementVector elements = TestSupport::makeElements("#");
    IndexExcludingTombstones startIndex(6);
    EXPECT_TRUE(fixBusinessLogicForInsertion(elements, startIndex, surroundings));
    EXPECT_EQ(5u, startIndex.get());
    EXPECT_EQ("}#{", TestSupport::print(elements));
}

TEST(InsertionRules, ABlockBehindAnAtomicRunLeavesTheParagraphOpen)
{
    EXPECT_EQ("#{", repair("{|a~}", 4, "#"));
    EXPECT_EQ("}{}{", repair("{|a~}", 4, "{}"));
}

TEST(InsertionRules, NestedTagsAndStrayMarksAreRepairedOneByOne)
{
    EXPECT_EQ("{}{|x}{}", repair("", 0, "{{x}}"));
    EXPECT_EQ("{|x~}", repair("", 0, "{|x|~|"));
}

TEST(InsertionRules, TheNeighboursOfADroppedElementAreNotCheckedAgain)
{
    EXPECT_EQ("{}", repair("", 0, "{|"));
    EXPECT_EQ("{{}", repair("", 0, "{|{}"));
}

TEST(InsertionRules, NoElementsFail)
{
    EXPECT_ASSERTION(repair("", 0, ""), "!_data.empty()");
}

TEST(InsertionRules, AnElementOfTheDocumentIsNeverDropped)
{
    EXPECT_ASSERTION(repair("{|||a}", 3, "~"), "It's not supposed to remove element before insertion position");
}

TEST(RemovalRules, TheLastMarkAloneStays)
{
    EXPECT_EQ(Invalid, judgeRemoval("{|a}", 3, 4));
}

TEST(RemovalRules, AMarkAloneInFrontOfAParagraphStays)
{
    EXPECT_EQ(Invalid, judgeRemoval("{|a}{|b}", 3, 4));
}

TEST(RemovalRules, AMarkAndATagWithARunBehindThemGo)
{
    EXPECT_EQ(Valid, judgeRemoval("{|a}{|b}", 3, 5));
}

TEST(RemovalRules, AllBytesWithoutTheTagStay)
{
    EXPECT_EQ(Invalid, judgeRemoval("{|ab}", 2, 4));
}

/// The same exception as for an insertion.
TEST(RemovalRules, AMarkBetweenAnAtomicRunAndABlockGoes)
{
    EXPECT_EQ(Valid, judgeRemoval("{~}#", 2, 3));
    EXPECT_EQ(Invalid, judgeRemoval("{~}{}", 2, 3));
    EXPECT_EQ(Invalid, judgeRemoval("{|a}#", 3, 4));
}

TEST(RemovalRules, AWholeParagraphBehindAnotherGoes)
{
    EXPECT_EQ(Valid, judgeRemoval("{|a}{|b}{|c}", 4, 8));
}

TEST(RemovalRules, TheOnlyParagraphGoes)
{
    EXPECT_EQ(Valid, judgeRemoval("{|a}", 0, 4));
}

TEST(RemovalRules, AnEmptyRangeIsValidAndABackwardOneFails)
{
    EXPECT_EQ(Valid, judgeRemoval("{|a}", 3, 3));
    EXPECT_ASSERTION(judgeRemoval("{|a}", 3, 2), "rangeBegin <= rangeEnd");
}

TEST(Judgement, OutsideTheEnumerationFails)
{
    EXPECT_FALSE(isInvalid(Valid));
    EXPECT_TRUE(isInvalid(Invalid));
    EXPECT_ASSERTION(isInvalid(static_cast<BusinessLogicValidationResult>(2)),
                     "Unexpected BusinessLogicValidationResult value");
}

TEST(RestoringRules, ElementsMustFitTheirNeighboursAndEachOther)
{
    EXPECT_EQ(Valid, judgeRestoring("{|ab}", 3, "}{|"));
    EXPECT_EQ(Valid, judgeRestoring("", 0, "{|a}"));
    EXPECT_EQ(Invalid, judgeRestoring("", 0, "a"));
    EXPECT_EQ(Invalid, judgeRestoring("{|ab}", 3, "}{"));
    EXPECT_EQ(Invalid, judgeRestoring("{|ab}", 3, "|}{|"));
    EXPECT_ASSERTION(judgeRestoring("", 0, ""), "!_data.empty()");
}

} // namespace Zem::DOMCollaboration::TextBusinessRules

#include "Text/DClb_TextRanges.h"

#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;
using CollaborationUtils::TombstonesStorage;
using TestSupport::makeElements;
using TestSupport::makeText;
using TestSupport::Piece;

using Insertion = ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;
using Marking = ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>;
using Lines = std::vector<std::string>;

constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();

/// An operation of a case, as its class.
template<class T>
T take(OperationUPtr operation)
{
    return std::move(cast<T>(*operation));
}

/// Each range as one line: its plane indices, its data, and the slots of its operations.
Lines describe(const RangeInfos& ranges)
{
    Lines lines;
    for (const RangeInfo& range : ranges)
    {
        std::string line = std::to_string(range.getStartIndex().get()) + '-' +
                           std::to_string(range.getEndIndex().get()) + ' ' + TestSupport::print(range._data);
        for (const ListOperation* operation : range.getOperations())
        {
            line += ' ' + std::to_string(operation->getRange().getBegin());
        }
        lines.push_back(line);
    }
    return lines;
}

Lines describeFilled(std::string_view notation, std::initializer_list<Piece> pieces)
{
    const DOM::TextWithTombstones text = makeText(notation);
    Insertion insertion = take<Insertion>(TestSupport::insert(pieces));
    return describe(makeRangesToFill(insertion, text.getTombstones()));
}

Lines describeEmptied(std::string_view notation, std::initializer_list<TestSupport::Stretch> stretches)
{
    const DOM::TextWithTombstones text = makeText(notation);
    Marking marking = take<Marking>(TestSupport::mark(stretches));
    return describe(makeRangesToEmpty(marking, text.getTombstones()));
}

} // namespace

TEST(TextRanges, ToFillJoinWhereTheyShareAGapBetweenLiveElements)
{
    EXPECT_EQ((Lines{"3-6 xyz 3 4 5"}), describeFilled("{|a[bc]d}", {{5, "z"}, {4, "y"}, {3, "x"}}));
    EXPECT_EQ((Lines{"4-5 y 6", "3-4 x 3"}), describeFilled("{|a[bc]d}", {{6, "y"}, {3, "x"}}));
    EXPECT_EQ((Lines{"4-6 wz 6 6", "3-5 xy 3 5"}),
              describeFilled("{|a[bc]d}", {{6, "z"}, {6, "w"}, {5, "y"}, {3, "x"}}));
}

TEST(TextRanges, ToEmptyJoinWhereTheyAreNeighboursAmongTheLive)
{
    EXPECT_EQ((Lines{"2-5  2 5 6"}), describeEmptied("{|a[bc]def}", {{6, 7}, {5, 6}, {2, 3}}));
    EXPECT_EQ((Lines{"4-5  6", "2-3  2"}), describeEmptied("{|a[bc]def}", {{6, 7}, {2, 3}}));
}

TEST(TextRanges, OfAMarkingMustNotOverlap)
{
    EXPECT_ASSERTION(describeEmptied("{|abcd}", {{3, 5}, {2, 4}}), "isDescending");
    EXPECT_ASSERTION(describeEmptied("{|abcd}", {{2, 3}, {3, 4}}), "isDescending");
}

TEST(TextRanges, ShiftedThereAndBackAreAsTheyWere)
{
    Insertion insertion = take<Insertion>(TestSupport::insert({{5, "xyz"}, {5, "ab"}, {0, "q"}}));
    shiftNestedRanges(insertion, true);
    EXPECT_EQ("insert 8:xyz 6:ab 0:q", TestSupport::print(insertion));
    shiftNestedRanges(insertion, false);
    EXPECT_EQ("insert 5:xyz 5:ab 0:q", TestSupport::print(insertion));
}

TEST(TextRanges, CanNotBeShiftedInFrontOfTheFirstSlot)
{
    Insertion insertion = take<Insertion>(TestSupport::insert({{1, "x"}, {0, "ab"}}));
    EXPECT_ASSERTION(shiftNestedRanges(insertion, false), "newBegin >= nextRangesTotal");
}

TEST(TextRanges, CanNotBeShiftedBeyondAllCountingAndStayAsTheyWere)
{
    for (const unsigned long begin : {highest - 1, highest - 3})
    {
        Insertion insertion = take<Insertion>(TestSupport::insert({{begin, "x"}, {4, "ab"}, {0, "c"}}));
        EXPECT_ASSERTION(shiftNestedRanges(insertion, true), "isCountable");
        EXPECT_EQ("insert " + std::to_string(begin) + ":x 4:ab 0:c", TestSupport::print(insertion));
    }
    Insertion insertion = take<Insertion>(TestSupport::insert({{highest - 4, "x"}, {4, "ab"}, {0, "c"}}));
    shiftNestedRanges(insertion, true);
    EXPECT_EQ(highest - 1, insertion.getNestedOperations().front().getRange().getBegin());
}

TEST(TextRanges, GiveEachOperationAsManyElementsAsItHasSlots)
{
    Marking marking = take<Marking>(TestSupport::mark({{5, 7}, {2, 3}}));
    RangeInfos ranges = makeRangesToEmpty(marking, makeText("{|a[bc]def}").getTombstones());
    ranges.front()._data = makeElements("ade");
    giveDataBack<MarkAsRemovedTag>(std::move(ranges));
    EXPECT_EQ("mark 5:de 2:a", TestSupport::print(marking));
}

TEST(TextRanges, GiveBackNeitherLessNorMoreThanWasTakenOut)
{
    Marking marking = take<Marking>(TestSupport::mark(2, 4));
    const auto giveBack = [&](std::string_view elements)
    {
        RangeInfos ranges = makeRangesToEmpty(marking, TombstonesStorage());
        ranges.front()._data = makeElements(elements);
        giveDataBack<MarkAsRemovedTag>(std::move(ranges));
    };
    EXPECT_ASSERTION(giveBack(""), "!_data.empty()");
    EXPECT_ASSERTION(giveBack("abc"), "textElements.empty()");
    EXPECT_ASSERTION(giveBack("a"), "count <= textElements.size()");
}

TEST(TextRanges, GiveDataBackToOperationsOfTheirOwnKindAlone)
{
    Marking marking = take<Marking>(TestSupport::mark(2, 3));
    RangeInfos ranges = makeRangesToEmpty(marking, TombstonesStorage());
    ranges.front()._data = makeElements("a");
    EXPECT_THROW(giveDataBack<InsertTag>(std::move(ranges)), std::bad_cast);
}

TEST(TextRanges, FindTheirPlacesInOneWalk)
{
    DOM::TextWithTombstones text = makeText("{|ab}{|cd}{|ef}");
    Marking marking = take<Marking>(TestSupport::mark({{12, 13}, {7, 8}, {2, 3}}));
    RangeInfos ranges = makeRangesToEmpty(marking, text.getTombstones());
    findPlaces(ranges, text.getBlocks());
    // Had the highest not found its place, a walk from the beginning would stumble over a missing block.
    text.getBlocks()[0].reset();
    text.getBlocks()[1].reset();
    RangeInfo& range = ranges.front();
    EXPECT_TRUE((PlanePlace{PlaceKind::Char, 2, 0, 0}) ==
                range.getAnchor().find(text.getBlocks(), range.getStartIndex()));
}

} // namespace Zem::DOMCollaboration

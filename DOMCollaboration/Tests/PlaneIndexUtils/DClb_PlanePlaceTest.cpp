#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "TS_Assertions.h"
#include "TS_TextNotation.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using TestSupport::makeText;

constexpr const char* notations[] = {"", "{}", "{|ab}{~|c||de~}#${}{|f}", "#", "{||}{~~}"};

/// The places of a text, from its first element to its end.
std::vector<PlanePlace> findAll(const DOM::Blocks& blocks)
{
    std::vector<PlanePlace> places;
    while (const auto place = PlaneWalk::find(blocks, IndexExcludingTombstones(places.size())))
    {
        places.push_back(*place);
    }
    return places;
}

PlaneAnchor makeAnchor(unsigned long index)
{
    return PlaneAnchor(IndexExcludingTombstones(index));
}

} // namespace

TEST(PlaneWalk, FromAnyPlaceReachesWhatAWalkFromTheBeginningReaches)
{
    for (const char* notation : notations)
    {
        const DOM::TextWithTombstones text = makeText(notation);
        const std::vector<PlanePlace> places = findAll(text.getBlocks());
        for (unsigned long from = 0; from < places.size(); ++from)
        {
            for (unsigned long to = from; to < places.size() + 2; ++to)
            {
                EXPECT_TRUE(PlaneWalk::find(text.getBlocks(), IndexExcludingTombstones(to)) ==
                            PlaneWalk::findFrom(text.getBlocks(), places[from], to - from))
                    << notation << " from " << from << " to " << to;
            }
        }
    }
}

TEST(PlaneWalk, OneStepBackIsThePlaceInFront)
{
    for (const char* notation : notations)
    {
        const DOM::TextWithTombstones text = makeText(notation);
        const std::vector<PlanePlace> places = findAll(text.getBlocks());
        for (unsigned long index = 1; index < places.size(); ++index)
        {
            EXPECT_TRUE(places[index - 1] == PlaneWalk::getPlaceBefore(text.getBlocks(), places[index]))
                << notation << " in front of " << index;
        }
        EXPECT_ASSERTION(PlaneWalk::getPlaceBefore(text.getBlocks(), places[0]), "blockIndex > 0");
    }
}

TEST(PlaneWalk, AKindOutsideTheEnumerationFails)
{
    const DOM::TextWithTombstones text = makeText("{}");
    const PlanePlace place{static_cast<PlaceKind>(99), 0, 0, 0};
    EXPECT_ASSERTION(PlaneWalk::findFrom(text.getBlocks(), place, 1), "Invalid enum value");
    EXPECT_ASSERTION(PlaneWalk::getPlaceBefore(text.getBlocks(), place), "Invalid enum value");
}

TEST(PlaneAnchor, FindsPlacesInFrontOfItselfToo)
{
    const DOM::TextWithTombstones text = makeText("{|ab}{|c}");
    PlaneAnchor anchor = makeAnchor(6);
    for (const unsigned long index : {6ul, 5ul, 8ul, 9ul, 0ul, 3ul, 7ul})
    {
        EXPECT_TRUE(PlaneWalk::find(text.getBlocks(), IndexExcludingTombstones(index)) ==
                    anchor.find(text.getBlocks(), IndexExcludingTombstones(index)));
    }
    EXPECT_ASSERTION(anchor.find(text.getBlocks(), IndexExcludingTombstones(10)),
                     "Unexpected type in the source variant");
}

TEST(PlaneAnchor, SettlesBehindAnyOtherAndStepsBackToWhereAWalkLeads)
{
    const DOM::TextWithTombstones text = makeText("{|ab}{~|c||de~}#${}{|f}");
    const std::vector<PlanePlace> places = findAll(text.getBlocks());
    for (unsigned long lower = 0; lower < places.size(); ++lower)
    {
        for (unsigned long higher = lower; higher < places.size(); ++higher)
        {
            PlaneAnchor lowerAnchor = makeAnchor(lower);
            PlaneAnchor anchor = makeAnchor(higher);
            anchor.settleBehind(text.getBlocks(), lowerAnchor);
            EXPECT_TRUE(places[higher] == anchor.find(text.getBlocks(), IndexExcludingTombstones(higher)));
            if (higher > 0)
            {
                anchor.stepBack(text.getBlocks());
                const IndexExcludingTombstones before(higher - 1);
                EXPECT_TRUE(places[before.get()] == anchor.find(text.getBlocks(), before));
            }
        }
    }
}

TEST(PlaneAnchor, NeverWalksInFrontOfThePlaceThatItSettledOn)
{
    DOM::TextWithTombstones text = makeText("{|a}{|b}{|c}{|d}");
    PlaneAnchor lower = makeAnchor(6);
    PlaneAnchor higher = makeAnchor(14);
    lower.find(text.getBlocks(), IndexExcludingTombstones(6));
    // Any walk from the beginning would stumble over a missing block.
    text.getBlocks()[0].reset();
    higher.settleBehind(text.getBlocks(), lower);
    text.getBlocks()[1].reset();
    text.getBlocks()[2].reset();
    EXPECT_TRUE((PlanePlace{PlaceKind::Char, 3, 0, 0}) == higher.find(text.getBlocks(), IndexExcludingTombstones(14)));
    EXPECT_TRUE((PlanePlace{PlaceKind::ParaTag, 3, 0, 0}) ==
                higher.find(text.getBlocks(), IndexExcludingTombstones(12)))
        << "two in front of its index";
    higher.stepBack(text.getBlocks());
    EXPECT_EQ(13u, higher.getIndex().get());
    EXPECT_TRUE((PlanePlace{PlaceKind::TextRunTag, 3, 0, 0}) ==
                higher.find(text.getBlocks(), IndexExcludingTombstones(13)));
}

TEST(PlaneAnchor, SettlesBehindWhatStandsInFrontOfItAlone)
{
    const DOM::TextWithTombstones text = makeText("{|a}");
    PlaneAnchor other = makeAnchor(2);
    EXPECT_ASSERTION(makeAnchor(1).settleBehind(text.getBlocks(), other), "other._index <= _index");
    EXPECT_ASSERTION(makeAnchor(9).settleBehind(text.getBlocks(), other), "Unexpected type in the source variant");
    EXPECT_ASSERTION(makeAnchor(0).stepBack(text.getBlocks()), "_index.get() > 0");
}

} // namespace Zem::DOMCollaboration

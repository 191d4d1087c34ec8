#include "Text/DClb_OpenParagraphs.h"

#include "TS_TextNotation.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration::TextBusinessRules
{

namespace
{

/// A text, and what elements or a removal at a place of its plane would leave.
class Place
{
public:
    Place(std::string_view text, unsigned long index)
        : _text(TestSupport::makeText(text))
        , _index(index)
        , _anchor(_index)
    {
    }

    bool staysOpenBehind(std::string_view elements) const
    {
        return leavesParagraphOpen(TestSupport::makeElements(elements), _index, _surroundings);
    }

    bool staysOpenWithout(unsigned long count) const
    {
        return leavesParagraphOpen(_index, _index + count, _surroundings);
    }

    /// The elements with the marks that they need.
    std::string close(std::string_view elements) const
    {
        TextWithTombstonesElementVector closed = TestSupport::makeElements(elements);
        const bool isOpen = staysOpenBehind(elements);
        EXPECT_EQ(isOpen, closeOpenParagraphs(closed, _index, _surroundings));
        return TestSupport::print(closed);
    }

private:
    DOM::TextWithTombstones _text;
    IndexExcludingTombstones _index;
    PlaneAnchor _anchor;
    TextSurroundings _surroundings{_text.getBlocks(), _anchor};
};

} // namespace

TEST(OpenParagraphs, WhatFitsStaysAsItIs)
{
    EXPECT_EQ("{|x}", Place("", 0).close("{|x}"));
    EXPECT_EQ("x", Place("{|ab}", 3).close("x"));
    EXPECT_EQ("}#{", Place("{~}", 2).close("}#{"));
    EXPECT_EQ("~", Place("{~}", 2).close("~"));
    EXPECT_EQ("", Place("{~}", 2).close(""));
}

TEST(OpenParagraphs, AreClosedInFrontOfWhateverEndsThem)
{
    EXPECT_EQ("{}{}#{|x}${~}", Place("", 0).close("{{}#{|x${~"));
    EXPECT_EQ("}#{", Place("{~}", 2).close("#{"));
    EXPECT_EQ("{~}", Place("#", 0).close("{~"));
    EXPECT_EQ("{~}", Place("{}$", 2).close("{~"));
}

TEST(OpenParagraphs, AreSeenAroundARemoval)
{
    EXPECT_TRUE(Place("{~}#", 2).staysOpenWithout(1));
    EXPECT_TRUE(Place("{~|a}$", 2).staysOpenWithout(3));
    EXPECT_FALSE(Place("{~}#", 2).staysOpenWithout(0));
    EXPECT_FALSE(Place("{~}#", 1).staysOpenWithout(1));
    EXPECT_FALSE(Place("{~}#{}", 2).staysOpenWithout(3));
}

} // namespace Zem::DOMCollaboration::TextBusinessRules

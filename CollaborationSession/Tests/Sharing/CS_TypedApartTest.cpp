#include "Sharing/CS_TypedApart.h"

#include "Editing/CS_Stretch.h"
#include "Sharing/CS_FitCase.h"

namespace Zem::CollaborationSession
{

namespace
{

Typing typedBehind(unsigned long slot)
{
    Typing typing;
    typing._anchor = slot;
    return typing;
}

Stretch apart(unsigned long anchor, unsigned long typed)
{
    return makeStretch(TestSupport::getTextAddress(), anchor, typed);
}

std::unique_ptr<TextInsertion> insertAt(unsigned long slot)
{
    return FitCase::makeInsertion(slot, LookedText::makeElements("xy"));
}

TEST(TypedApart, WhatStandsDirectlyBehindItsAnchorIsNot)
{
    EXPECT_TRUE(findTypedApart(*insertAt(5), {typedBehind(4)}).empty());
    EXPECT_TRUE(findTypedApart(*insertAt(5), {Typing()}).empty());
}

TEST(TypedApart, IsRememberedFromTheAnchorToTheFirstElement)
{
    const auto found = findTypedApart(*insertAt(7), {typedBehind(4)});
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(readStretch(found.front())._firstSlot, 4u);
    EXPECT_EQ(readStretch(found.front())._lastSlot, 7u);
    EXPECT_EQ(findAnchorApart(*insertAt(7), 0, found), std::optional(4ul));
    EXPECT_EQ(findAnchorApart(*insertAt(8), 0, found), std::nullopt);
}

TEST(TypedApart, WhatWasTypedBehindALaterElementGoesInFront)
{
    // 3 is what both knew, and somebody else's text from 5 on was typed behind it; 4 is the author's own.
    const auto moved = moveInFrontOfOthers(*insertAt(7), {typedBehind(4)}, {apart(3, 5)});
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->getNestedOperations().front().getRange().getBegin(), 5u);
}

TEST(TypedApart, WhatWasTypedBehindTheSameElementStaysBehind)
{
    EXPECT_FALSE(moveInFrontOfOthers(*insertAt(7), {typedBehind(4)}, {apart(4, 6)}));
    EXPECT_FALSE(moveInFrontOfOthers(*insertAt(7), {typedBehind(4)}, {apart(3, 7)}));
    EXPECT_FALSE(moveInFrontOfOthers(*insertAt(7), {Typing()}, {apart(3, 5)}));
    EXPECT_FALSE(moveInFrontOfOthers(*insertAt(7), {typedBehind(4)}, {}));
}

} // namespace

} // namespace Zem::CollaborationSession

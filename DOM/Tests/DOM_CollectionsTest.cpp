#include "DOM_Comment.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_Note.h"
#include "DOM_NumberedList.h"
#include "DOM_Scripts.h"
#include "DOM_ValueTypeTest.h"

#include "TS_Assertions.h"

namespace Zem::DOM::Tests
{

using CollectionTypes =
    ::testing::Types<Comment, Note, PageNumber, HeaderFooterPair, NumberingLevel, NumberedList, Scripts>;
INSTANTIATE_TYPED_TEST_SUITE_P(Collections, ValueType, CollectionTypes);

TEST(Comment, IsCopiedWithItsBlocks)
{
    Comment comment;
    comment.getBlocks().push_back(std::make_unique<Paragraph>());
    const Comment copy = comment;
    comment.getBlocks().clear();
    EXPECT_EQ(1u, copy.getBlocks().size());
    EXPECT_EQ(comment.getUUID(), copy.getUUID());
}

TEST(HeaderFooterType, HasFixedNumbers)
{
    EXPECT_EQ(0, static_cast<int>(HeaderFooterType::Header));
    EXPECT_EQ(1, static_cast<int>(HeaderFooterType::Footer));
}

TEST(Scripts, HasNoTextForAnUnknownName)
{
    EXPECT_FALSE(Scripts().getScript("a").is_initialized());
}

TEST(Scripts, FindsWhatWasInserted)
{
    Scripts scripts;
    scripts.insertScript("a", "print(1)");
    scripts.insertScript("b", "");
    EXPECT_EQ("print(1)", *scripts.getScript("a"));
    EXPECT_EQ("", *scripts.getScript("b"));
    scripts.removeScript("a");
    EXPECT_FALSE(scripts.getScript("a"));
    EXPECT_EQ(1u, scripts.getScripts().size());
}

TEST(Scripts, DoesNotUpdateAScriptByInsertion)
{
    Scripts scripts;
    scripts.insertScript("a", "1");
    EXPECT_ASSERTION(scripts.insertScript("a", "2"), "isInserted");
    EXPECT_EQ("1", *scripts.getScript("a"));
}

TEST(Scripts, AssertsThatARemovedScriptIsThere)
{
    Scripts scripts;
    EXPECT_ASSERTION(scripts.removeScript("a"), "removedCount == 1");
}

} // namespace Zem::DOM::Tests

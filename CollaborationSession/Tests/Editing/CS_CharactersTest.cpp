#include "Editing/CS_Characters.h"

#include "TS_TextNotation.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationSession
{

namespace
{

TEST(Characters, ContinuationBytesBeginNoCharacter)
{
    EXPECT_EQ(0U, countContinuationBytes(""));
    EXPECT_EQ(0U, countContinuationBytes("abc"));
    EXPECT_EQ(6U, countContinuationBytes("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"));
}

TEST(Characters, CharacterIsFoundByItsFirstByte)
{
    const std::string_view bytes = "a\xC3\xA9\xE2\x82\xAC"
                                   "b";
    EXPECT_EQ(0U, findCharacter(bytes, 0));
    EXPECT_EQ(1U, findCharacter(bytes, 1));
    EXPECT_EQ(3U, findCharacter(bytes, 2));
    EXPECT_EQ(6U, findCharacter(bytes, 3));
    EXPECT_EQ(7U, findCharacter(bytes, 4));
}

TEST(Characters, StrayBytesInFrontBelongToTheFirstCharacter)
{
    EXPECT_EQ(0U, findCharacter("\xA9\xA9"
                                "ab",
                                0));
    EXPECT_EQ(3U, findCharacter("\xA9\xA9"
                                "ab",
                                1));
}

TEST(Characters, ValidUtf8IsAccepted)
{
    for (const std::string_view bytes : {"", "abc", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
                                         "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
    {
        EXPECT_EQ(bytes.size(), findInvalidUtf8(bytes)) << bytes;
    }
    EXPECT_EQ(3U, findInvalidUtf8(std::string_view("a\0b", 3)));
}

TEST(Characters, InvalidUtf8IsFound)
{
    for (const std::string_view bytes :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3(", "\xE0\x9F\xBF", "\xE2\x82", "\xE2(\xAC", "\xE2\x82(",
          "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF0\x9F\x98", "\xF0\x9F\x98(", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
          "\xFF"})
    {
        EXPECT_EQ(2U, findInvalidUtf8("ab" + std::string(bytes))) << bytes;
    }
}

TEST(Characters, LastParagraphHasNoLineBreak)
{
    EXPECT_EQ("", getCharacters(TestSupport::makeText("")));
    EXPECT_EQ("", getCharacters(TestSupport::makeText("{}")));
    EXPECT_EQ("ab\n\nc", getCharacters(TestSupport::makeText("{|a|b}{}{|c}")));
}

TEST(Characters, AtomicRunsAndBlocksAreOneCharacterEach)
{
    EXPECT_EQ("a\xEF\xBF\xBC\n\xEF\xBF\xBC\xEF\xBF\xBC"
              "b",
              getCharacters(TestSupport::makeText("{|a~}#${|b}")));
}

TEST(Characters, TombstonesAreNone)
{
    EXPECT_EQ("ab", getCharacters(TestSupport::makeText("[xx]{|a[xx]b}[x]")));
}

} // namespace

} // namespace Zem::CollaborationSession

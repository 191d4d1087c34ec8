#include "Playing.h"

#include "Spoiling.h"

#include <gtest/gtest.h>

namespace ZemFarm
{

namespace
{

TEST(Failures, AreThoseOfTheScriptThatIsPlayed)
{
    addSpoilingGenerator();
    EXPECT_FALSE(findFailure(parseScript("kind text\nclient 1 join 1\nclient 1 do type 1")));
    const auto failure = findFailure(parseScript("kind text\nclient 1 join 1\nclient 1 do spoil 1"));
    ASSERT_TRUE(failure);
    EXPECT_EQ("documents differ", failure->getKind());
}

TEST(Notes, TellWhatEachStepDid)
{
    const std::string text = annotate(parseScript("kind text\ndocument 1 0\nclient 1 join 1\nclient 1 do script 3\n"));
    EXPECT_EQ(R"(kind text
document 1 0
checkpoint 16
client 1 join 1
client 1 do script 3  #  client 1:  [n25] insert key
settle  #  client 1:  gets 1.1 [n25] insert key
# 
# all documents agreed
)",
              text);
}

TEST(Notes, EndWithTheFailureAndAreStillAScript)
{
    addFailingGenerator();
    const Script script = parseScript("kind text\nclient 1 join 1\nclient 1 do refuse 3\nclient 1 send\n");
    const std::string text = annotate(script);
    const std::string end = "client 1 do refuse 3\n# \"client 1 do refuse 3\" failed: it fits no document\n";
    EXPECT_EQ(text.size() - end.size(), text.find(end)) << text;
    EXPECT_EQ(2U, parseScript(text)._steps.size());
}

} // namespace

} // namespace ZemFarm

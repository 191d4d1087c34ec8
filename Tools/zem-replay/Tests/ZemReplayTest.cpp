// Runs the program, whose path is in ZEM_REPLAY, as a user would.

#include "TS_RunProgram.h"

#include <zlib.h>

#include <fstream>

namespace
{

using Outcome = Zem::TestSupport::ProgramOutcome;

class ZemReplay : public Zem::TestSupport::ProgramTest
{
protected:
    ZemReplay()
        : ProgramTest(ZEM_REPLAY)
    {
    }

    std::string writeCompressed(const std::string& name, const std::string& content) const
    {
        gzFile file = gzopen(getPath(name).c_str(), "wb");
        gzwrite(file, content.data(), static_cast<unsigned>(content.size()));
        gzclose(file);
        return getPath(name);
    }

    /// Expects that the file is refused with its name and `message`.
    void expectBad(const std::string& path, const std::string& message) const
    {
        expectRefusal(path, path + ": " + message);
    }

    void expectBadContent(const std::string& content, const std::string& message) const
    {
        SCOPED_TRACE(content.substr(0, 200));
        expectBad(write("bad.json", content), message);
    }
};

const char* const goodTrace = R"({"startContent": "", "endContent": "axd\n\u00e9!",
 "txns": [{"time": "2021-04-19T06:06:58.219Z", "patches": [[0, 0, "abcd"]]},
          {"time": 5, "other": {"nested": [1, -2, 3.5, null, true, "text"]}, "patches": [[1, 2, ""], [1, 0, "x"]]},
          {"patches": []},
          {"patches": [[3, 0, "\n\u00e9?"], [5, 1, "!"]]}],
 "unknown": [[]]})";

std::string makeTrace(const std::string& patches, const std::string& end = "")
{
    return R"({"startContent": "", "endContent": ")" + end + R"(", "txns": [{"patches": [)" + patches + "]}]}";
}

TEST_F(ZemReplay, PlaysAFile)
{
    const Outcome outcome = run(write("good.json", goodTrace));
    EXPECT_EQ(0, outcome._exitCode);
    EXPECT_NE(std::string::npos, outcome._output.find("good.json")) << outcome._output;
    EXPECT_NE(std::string::npos, outcome._output.find("op/s"));
    EXPECT_NE(std::string::npos, outcome._output.find("peak memory"));
    EXPECT_NE(std::string::npos, outcome._output.find("every comparison held"));
}

TEST_F(ZemReplay, PlaysACompressedFile)
{
    const Outcome outcome = run(writeCompressed("good.json.gz", goodTrace));
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
}

TEST_F(ZemReplay, PlaysWithEveryOption)
{
    const std::string file = write("good.json", goodTrace);
    const Outcome outcome = run("--reverse --check 1 --repeat 3 " + file + " " + file);
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_NE(std::string::npos, outcome._output.find("back op/s"));
    EXPECT_NE(std::string::npos, outcome._output.find("again op/s"));
}

TEST_F(ZemReplay, PlaysWhatItMakesUp)
{
    const Outcome outcome = run("--reverse --check 100 --patches 3000 --seed 7");
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_NE(std::string::npos, outcome._output.find("seed 7"));
    EXPECT_EQ(0, run("--patches 0")._exitCode);
}

TEST_F(ZemReplay, BeginsWithTheStartContent)
{
    const Outcome outcome = run(
        "--reverse --check 1 " +
        write("start.json", R"({"txns": [{"patches": [[2, 1, ""]]}], "endContent": "a\nc", "startContent": "a\nbc"})"));
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
}

TEST_F(ZemReplay, SaysWhereATextDiffers)
{
    const std::string file = write("other.json", makeTrace(R"([0, 0, "ab\u00e9c"])", "ab\\u00e9d"));
    const Outcome outcome = run(file);
    EXPECT_EQ(1, outcome._exitCode);
    EXPECT_EQ("zem-replay: " + file +
                  ": at the end: the text isn't what it is to be: it has 4 characters, not 4, and differs from "
                  "character 3 on\n",
              outcome._errors);
    EXPECT_EQ("", outcome._output);
}

TEST_F(ZemReplay, ShowsHelp)
{
    const Outcome outcome = run("--help");
    EXPECT_EQ(0, outcome._exitCode);
    for (const char* option : {"--reverse", "--check N", "--repeat N", "--seed S", "--patches N", "exit code"})
    {
        EXPECT_NE(std::string::npos, outcome._output.find(option)) << option;
    }
}

TEST_F(ZemReplay, RefusesOptionsThatItDoesntKnow)
{
    expectRefusal("--revers", "there is no option \"--revers\"; --help shows those that there are");
    expectRefusal("--check", "--check needs a number");
    expectRefusal("--check 0", "--check needs a number from 1 on, not \"0\"");
    expectRefusal("--repeat -1", "--repeat needs a number from 1 on, not \"-1\"");
    expectRefusal("--seed 1x", "--seed needs a number from 0 on, not \"1x\"");
    expectRefusal("--seed ''", "--seed needs a number from 0 on, not \"\"");
    expectRefusal("--patches 99999999999999999999", "--patches needs a number from 0 on, not \"99999999999999999999\"");
}

TEST_F(ZemReplay, RefusesFilesThatItCantRead)
{
    expectBad(getPath("missing.json"), "can't be opened: No such file or directory");
    expectBad(getPath(""), "can't be read: Is a directory");
}

TEST_F(ZemReplay, RefusesDamagedCompression)
{
    const std::string whole = writeCompressed("whole.json.gz", goodTrace);
    std::ifstream file(whole, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    expectBad(write("short.json.gz", bytes.substr(0, bytes.size() / 2)), "is cut short");
    bytes[bytes.size() - 6] = static_cast<char>(bytes[bytes.size() - 6] ^ 1);
    expectBad(write("damaged.json.gz", bytes), "is damaged: incorrect data check");
    expectBad(write("plain.json.gz", goodTrace), "isn't compressed with gzip, though its name says so");
    expectBad(write("empty.json.gz", ""), "isn't compressed with gzip, though its name says so");
}

TEST_F(ZemReplay, RefusesWhatIsntJson)
{
    expectBadContent("", "byte 0: isn't JSON: The document is empty.");
    expectBadContent("{\"txns\": [}", "byte 10: isn't JSON: Invalid value.");
    expectBadContent("{\"txns\"", "byte 7: isn't JSON: Missing a colon after a name of object member.");
    expectBadContent(goodTrace + std::string(" 1"),
                     "byte " + std::to_string(std::string(goodTrace).size() + 1) +
                         ": isn't JSON: The document root must not be followed by other values.");
    expectBadContent(goodTrace + std::string("\0x", 2),
                     "byte " + std::to_string(std::string(goodTrace).size()) + ": isn't JSON: a zero byte");
    expectBadContent("{\"startContent\": \"\xFF\"}", "byte 18: isn't JSON: Invalid encoding in string.");
    expectBadContent("{\"startContent\": \"\\ud800\"}",
                     "byte 18: isn't JSON: The surrogate pair in string is invalid.");
}

TEST_F(ZemReplay, RefusesOtherJson)
{
    expectBadContent("[]", "byte 0: the file is an array");
    expectBadContent("5", "byte 0: the file is a number");
    expectBadContent("{}", "byte 1: the file has no \"startContent\"");
    expectBadContent(R"({"startContent": ""})", "byte 19: the file has no \"endContent\"");
    expectBadContent(R"({"startContent": "", "endContent": ""})", "byte 37: the file has no \"txns\"");
    expectBadContent(R"({"startContent": 5})", "byte 17: startContent is a number");
    expectBadContent(R"({"startContent": "", "startContent": ""})", "byte 39: startContent stands there twice");
    expectBadContent(R"({"endContent": "", "endContent": ""})", "byte 35: endContent stands there twice");
    expectBadContent(R"({"txns": {}})", "byte 9: txns is an object");
    expectBadContent(R"({"txns": "text"})", "byte 15: txns is a string");
    expectBadContent(R"({"txns": [], "txns": []})", "byte 21: txns stands there twice");
    expectBadContent(R"({"txns": [5]})", "byte 10: txns[0] is a number");
    expectBadContent(R"({"txns": [{}]})", "byte 11: txns[0] has no \"patches\"");
    expectBadContent(R"({"txns": [{"patches": [], "patches": []}]})", "byte 37: txns[0].patches stands there twice");
    expectBadContent(R"({"txns": [{"patches": null}]})", "byte 26: txns[0].patches is null");
}

TEST_F(ZemReplay, RefusesOtherPatches)
{
    expectBadContent(makeTrace("5"), "byte 61: txns[0].patches[0] is a number");
    expectBadContent(makeTrace("[]"),
                     "byte 62: txns[0].patches[0][0] is missing; a patch is a position, a count and a text");
    expectBadContent(makeTrace("[0, 0]"),
                     "byte 66: txns[0].patches[0][2] is missing; a patch is a position, a count and a text");
    expectBadContent(makeTrace("[0, 0, \"\", 1]"), "byte 72: txns[0].patches[0][3] is a number");
    expectBadContent(makeTrace("[\"0\", 0, \"\"]"), "byte 65: txns[0].patches[0][0] is a string");
    expectBadContent(makeTrace("[0, -1, \"\"]"), "byte 65: txns[0].patches[0][1] is a negative number");
    expectBadContent(makeTrace("[0, -9999999999, \"\"]"), "byte 65: txns[0].patches[0][1] is a negative number");
    expectBadContent(makeTrace("[0.5, 0, \"\"]"),
                     "byte 62: txns[0].patches[0][0] is no whole number, or too big a one");
    expectBadContent(makeTrace("[0, 0, true]"), "byte 72: txns[0].patches[0][2] is a truth value");
    expectBadContent(makeTrace("[0, 0, {}]"), "byte 68: txns[0].patches[0][2] is an object");
    expectBadContent(makeTrace("[0, 0, []]"), "byte 68: txns[0].patches[0][2] is an array");
}

TEST_F(ZemReplay, RefusesPositionsOutsideOfTheText)
{
    expectBadContent(makeTrace("[1, 0, \"x\"]"),
                     "txns[0].patches[0]: [1, 0, ...] lies outside of the text, which has 0 characters there");
    expectBadContent(makeTrace("[0, 0, \"\\u00e9\"], [0, 2, \"x\"]"),
                     "txns[0].patches[1]: [0, 2, ...] lies outside of the text, which has 1 characters there");
    expectBadContent(makeTrace("[18446744073709551615, 18446744073709551615, \"x\"]"),
                     "txns[0].patches[0]: [18446744073709551615, 18446744073709551615, ...] lies outside of the text, "
                     "which has 0 characters there");
}

TEST_F(ZemReplay, RefusesWhatIsNestedTooDeeply)
{
    expectBadContent("{\"deep\": " + std::string(1000000, '['), "byte 72: the file is nested too deeply");
}

/// Two users: both begin with "ab", the second types "y" behind it while the first types "x" in front, deletes "a" and
/// breaks the line; then the second goes on with all of that.
const char* const concurrentTrace = R"({"kind": "concurrent", "endContent": "x\nbyz\u00e9", "numAgents": 2, "txns": [
 {"parents": [], "numChildren": 2, "agent": 0, "time": "1970", "patches": [[0, 0, "ab"]]},
 {"parents": [0], "agent": 1, "patches": [[2, 0, "y"]]},
 {"parents": [0], "agent": 0, "patches": [[0, 0, "x"]]},
 {"parents": [2], "agent": 0, "patches": [[1, 1, "\n"]]},
 {"parents": [1, 3], "agent": 1, "patches": [[4, 0, "z"], [5, 0, "\u00e9"]]}]})";

TEST_F(ZemReplay, PlaysAConcurrentHistory)
{
    const Outcome outcome = run("--check 1 --repeat 2 --reverse " + write("two.json", concurrentTrace));
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_NE(std::string::npos, outcome._output.find("op/s over all")) << outcome._output;
    EXPECT_NE(std::string::npos, outcome._output.find("every comparison held"));
}

TEST_F(ZemReplay, PlaysSequentialAndConcurrentHistoriesTogether)
{
    const Outcome outcome = run(write("two.json", concurrentTrace) + " " + write("one.json", goodTrace));
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_NE(std::string::npos, outcome._output.find("median op/s")) << outcome._output;
    EXPECT_NE(std::string::npos, outcome._output.find("op/s over all"));
}

TEST_F(ZemReplay, SaysWhereATextOfSeveralUsersDiffers)
{
    std::string content = concurrentTrace;
    content.replace(content.find("byz"), 3, "bzy");
    const std::string file = write("differs.json", content);
    const Outcome outcome = run(file);
    EXPECT_EQ(1, outcome._exitCode);
    EXPECT_EQ("zem-replay: " + file +
                  ": at the end: the text isn't what it is to be: it has 6 characters, not 6, and differs from "
                  "character 3 on\n",
              outcome._errors);
    EXPECT_EQ("", outcome._output);
}

TEST_F(ZemReplay, PlaysTwoDivergedUsers)
{
    const std::string streams =
        R"("base": "ab\ncd\nef", "b": [[3, 0, "y"], [5, 1, ""]], "a": [[0, 1, ""], [6, 0, "x"]]})";
    for (const char* kind : {"spread", "hot"})
    {
        const Outcome outcome = run(write("streams.json", std::string(R"({"kind": ")") + kind + "\", " + streams));
        EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    }
    const std::string wrong = R"({"kind": "spread", "base": "ab\ncd", "a": [[4, 0, "x"]], "b": []})";
    EXPECT_EQ(1, run(write("wrong.json", wrong))._exitCode);
}

TEST_F(ZemReplay, RefusesOtherConcurrentHistories)
{
    const auto make = [](const std::string& transactions, const std::string& agentsCount = "2")
    {
        return R"({"kind": "concurrent", "endContent": "", "numAgents": )" + agentsCount + R"(, "txns": [)" +
               transactions + "]}";
    };
    const auto expectBadHistory = [&](const std::string& content, const std::string& message)
    {
        const std::string file = write("bad.json", content);
        const Outcome outcome = run(file);
        EXPECT_EQ(2, outcome._exitCode) << content;
        EXPECT_NE(std::string::npos, outcome._errors.find("zem-replay: " + file + ": ")) << outcome._errors;
        EXPECT_NE(std::string::npos, outcome._errors.find(message + "\n")) << outcome._errors;
    };
    const std::string first = R"({"parents": [], "agent": 0, "patches": [[0, 0, "a"]]})";
    expectBadHistory(R"({"kind": "other"})", "byte 16: kind is none that can be played");
    expectBadHistory(R"({"kind": "hot", "kind": "hot"})", "byte 29: kind stands there twice");
    expectBadHistory(R"({"kind": "hot", "base": "", "a": []})", "the file has no \"b\"");
    expectBadHistory(R"({"kind": "hot", "a": [], "b": []})", "the file has no \"base\"");
    expectBadHistory(R"({"kind": "concurrent", "txns": []})", "the file has no \"endContent\"");
    expectBadHistory(R"({"kind": "concurrent", "endContent": "", "txns": []})", "the file has no \"numAgents\"");
    expectBadHistory(R"({"kind": "concurrent", "endContent": "", "numAgents": 2})", "the file has no \"txns\"");
    expectBadHistory(make(R"({"patches": []})"), "the file has transactions without \"parents\" or \"agent\"");
    expectBadHistory(make(R"({"parents": [0], "agent": 0, "patches": []})"),
                     "txns[0].parents[0] isn't the number of an earlier transaction");
    expectBadHistory(make(R"({"parents": ["0"], "agent": 0, "patches": []})"), "txns[0].parents[0] is a string");
    expectBadHistory(make(R"({"parents": [], "agent": 2, "patches": []})"), "txns[0] is by agent 2, which there isn't");
    expectBadHistory(make(first + R"(, {"parents": [], "agent": 0, "patches": []})"),
                     "txns[1] doesn't know all that its agent made before");
    expectBadHistory(make(first, "3"), "numAgents is 3; no more than 2 users can be played");
    expectBadHistory(make(R"({"parents": [], "agent": 0, "agent": 0, "patches": []})"),
                     "txns[0].agent stands there twice");
    expectBadHistory(make(R"({"parents": [], "parents": [], "patches": []})"), "txns[0].parents stands there twice");
    expectBadHistory(make(R"({"parents": [], "agent": 0, "patches": [[1, 0, "a"]]})"),
                     "txns[0].patches[0]: The stretch [1, 1) isn't inside the text, which has 0 characters");
    expectBadHistory(R"({"kind": "hot", "base": "", "a": [[1, 0, "x"]], "b": []})",
                     "a[0]: [1, 0, ...] lies outside of the text, which has 0 characters there");
    expectBadHistory(R"({"kind": "hot", "base": "", "a": [[0, 0, "x"]], "b": [[0, 1, ""]]})",
                     "b[0]: [0, 1, ...] lies outside of the text, which has 0 characters there");
    expectBadHistory(R"({"kind": "hot", "base": "", "a": [], "a": []})", "a stands there twice");
}

} // namespace

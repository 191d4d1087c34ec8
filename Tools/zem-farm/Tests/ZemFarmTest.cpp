// Runs the program, whose path is in ZEM_FARM, as a user would.

#include "TS_RunProgram.h"

namespace
{

using Outcome = Zem::TestSupport::ProgramOutcome;

class TheProgram : public Zem::TestSupport::ProgramTest
{
protected:
    TheProgram()
        : ProgramTest(ZEM_FARM)
    {
    }

    /// The count of a line of the table; empty if there is none.
    static std::string findCount(const std::string& table, const std::string& name)
    {
        const std::size_t begin = ("\n" + table).find("\n" + name + "  ");
        const std::size_t end = table.find('\n', begin);
        const std::string line = begin == std::string::npos ? "" : table.substr(begin, end - begin);
        return line.substr(line.find_last_of(' ') + 1);
    }

    /// The output but for how long it took.
    static std::string dropSpeed(const std::string& output)
    {
        return output.substr(0, output.find("operations per second"));
    }
};

TEST_F(TheProgram, ShowsHelp)
{
    const Outcome outcome = run("--help");
    EXPECT_EQ(0, outcome._exitCode);
    EXPECT_EQ("", outcome._errors);
    for (const char* option : {"--kind KIND", "--clients N", "--operations M", "--minutes T", "--seed S", "--shrink",
                               "--script FILE", "--help", "exit code"})
    {
        EXPECT_NE(std::string::npos, outcome._output.find(option)) << option;
    }
}

TEST_F(TheProgram, RefusesOptionsThatItDoesntKnow)
{
    expectRefusal("--shrunk", "there is no option \"--shrunk\"; --help shows those that there are");
    expectRefusal("text", "there is no option \"text\"; --help shows those that there are");
    expectRefusal("''", "there is no option \"\"; --help shows those that there are");
    expectRefusal("--seed", "--seed needs an argument");
    expectRefusal("--script", "--script needs an argument");
}

TEST_F(TheProgram, RefusesArgumentsThatDontFit)
{
    expectRefusal("--kind book", "--kind needs text, workbook, presentation or all, not \"book\"");
    expectRefusal("--clients 1", "--clients needs a number from 2 to 32, not \"1\"");
    expectRefusal("--clients 33", "--clients needs a number from 2 to 32, not \"33\"");
    expectRefusal("--clients two", "--clients needs a number from 2 to 32, not \"two\"");
    expectRefusal("--operations 0", "--operations needs a number from 1 on, not \"0\"");
    expectRefusal("--operations -5", "--operations needs a number from 1 on, not \"-5\"");
    expectRefusal("--seed 1x", "--seed needs a number from 0 on, not \"1x\"");
    expectRefusal("--seed 99999999999999999999", "--seed needs a number from 0 on, not \"99999999999999999999\"");
    expectRefusal("--minutes 0", "--minutes needs a number above 0, up to 1000000, not \"0\"");
    expectRefusal("--minutes -1", "--minutes needs a number above 0, up to 1000000, not \"-1\"");
    expectRefusal("--minutes 1.2.3", "--minutes needs a number above 0, up to 1000000, not \"1.2.3\"");
    expectRefusal("--minutes .", "--minutes needs a number above 0, up to 1000000, not \".\"");
    expectRefusal("--minutes 1000001", "--minutes needs a number above 0, up to 1000000, not \"1000001\"");
}

TEST_F(TheProgram, RefusesOptionsThatDontGoTogether)
{
    expectRefusal("--operations 5 --minutes 1", "--operations and --minutes don't go together");
    expectRefusal("--script x --seed 1", "--script goes with --shrink alone");
}

TEST_F(TheProgram, PlaysAScript)
{
    const Outcome outcome = run("--script " + write("script", R"(kind text   # with comments
document 12 3
client 1 join 1
client 2 join 0
client 1 do type 5
client 2 do paste 6
client 2 send
client 1 disconnect
)"));
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_EQ("all documents agreed\n", outcome._output);
    EXPECT_EQ("", outcome._errors);
}

TEST_F(TheProgram, RefusesAScriptNamingTheLine)
{
    const std::string file = write("bad", "kind text\nclient 1 join 1\nclient 1 do sing 5\n");
    expectRefusal("--script " + file, file + ": line 3: nothing makes operations by the name \"sing\"");
    expectRefusal("--shrink --script " + file, file + ": line 3: nothing makes operations by the name \"sing\"");
}

TEST_F(TheProgram, RefusesFilesThatItCantRead)
{
    expectRefusal("--script " + getPath("missing"), getPath("missing") + ": it can't be opened");
    expectRefusal("--script " + getPath(""), getPath("") + ": it can't be read");
    const std::string empty = write("empty", "");
    expectRefusal("--script " + empty, empty + ": no line tells the kind of document");
    const std::string bytes = write("bytes", std::string("\x01\x02", 2));
    expectRefusal("--script " + bytes, bytes + ": line 1: there is no step \"  \"");
}

TEST_F(TheProgram, DoesAShortRunOfEachKind)
{
    for (const char* kind : {"text", "workbook", "presentation"})
    {
        const Outcome outcome = run(std::string("--clients 6 --operations 700 --seed 4 --kind ") + kind);
        EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
        EXPECT_EQ("", outcome._errors);
        EXPECT_NE(std::string::npos, outcome._output.find("\nall documents agreed\n")) << outcome._output;
        EXPECT_EQ("2", findCount(outcome._output, "sessions")) << outcome._output;
    }
}

TEST_F(TheProgram, DoesAllKindsInTurnAndShowsWhatTheyCameTo)
{
    const Outcome outcome = run("--clients 12 --operations 3000 --seed 3 --kind all");
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_GE(std::stoul("0" + findCount(outcome._output, "operations")), 3000U) << outcome._output;
    for (const char* name : {"transformed at the server", "changed at the server", "shadowed at the server",
                             "  joined late", "reconnects", "  undo-any", "  redo", "  insert-cell-value",
                             "  insert-atomic-run", "  mark-blocks", "selections", "bad on purpose, and rejected"})
    {
        EXPECT_GT(std::stoul("0" + findCount(outcome._output, name)), 0U) << name << '\n' << outcome._output;
    }
    EXPECT_NE(std::string::npos, outcome._output.find("\nleft out:\n  texts of comments and notes: "))
        << outcome._output;
    for (const char* name : {"refused at the server", "refused, as authors learnt"})
    {
        EXPECT_NE("", findCount(outcome._output, name)) << name << '\n' << outcome._output;
    }
}

TEST_F(TheProgram, PrintsTheSameCountsForTheSameSeed)
{
    const std::string options = "--clients 5 --operations 800 --seed ";
    const Outcome first = run(options + "6");
    EXPECT_EQ(0, first._exitCode) << first._errors;
    EXPECT_EQ(dropSpeed(first._output), dropSpeed(run(options + "6")._output));
    EXPECT_NE(dropSpeed(first._output), dropSpeed(run(options + "7")._output));
}

TEST_F(TheProgram, GoesOnForAsLongAsItIsTold)
{
    const Outcome outcome = run("--minutes 0.01 --clients 3 --seed 3");
    EXPECT_EQ(0, outcome._exitCode) << outcome._errors;
    EXPECT_GE(std::stoul("0" + findCount(outcome._output, "sessions")), 1U);
}

} // namespace

#include "TS_RunProgram.h"

#include <gtest/gtest-spi.h>

namespace Zem::TestSupport::Testing
{

namespace
{

class RunProgram : public ProgramTest
{
protected:
    RunProgram()
        : ProgramTest("/bin/sh")
    {
    }
};

} // namespace

TEST_F(RunProgram, TellsTheExitCodeAndBothStreams)
{
    const ProgramOutcome outcome = run("-c 'echo out; echo bad >&2; exit 3'");
    EXPECT_EQ(3, outcome._exitCode);
    EXPECT_EQ("out\n", outcome._output);
    EXPECT_EQ("bad\n", outcome._errors);
}

TEST_F(RunProgram, TellsACrash)
{
    EXPECT_EQ(-1, run("-c 'kill -KILL $$'")._exitCode);
}

TEST_F(RunProgram, GivesNothingToRead)
{
    EXPECT_EQ("", run("-c cat")._output);
}

TEST_F(RunProgram, RunsWithTheFilesThatTheTestWrites)
{
    EXPECT_EQ("two\nlines", run("-c 'cat \"$0\"' " + write("file", "two\nlines"))._output);
}

TEST_F(RunProgram, ExpectsARefusalToTheLetter)
{
    const auto refuse = [&](const std::string& script) { expectRefusal("-c '" + script + "'", "no"); };
    refuse("echo sh: no >&2; exit 2");
    EXPECT_NONFATAL_FAILURE(refuse("echo sh: no >&2; exit 1"), "outcome._exitCode");
    EXPECT_NONFATAL_FAILURE(refuse("echo sh: yes >&2; exit 2"), "outcome._errors");
    EXPECT_NONFATAL_FAILURE(refuse("echo more; echo sh: no >&2; exit 2"), "outcome._output");
}

} // namespace Zem::TestSupport::Testing

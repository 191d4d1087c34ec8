#pragma once

/// Tests that run a program as a user would.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace Zem::TestSupport
{

struct ProgramOutcome
{
    /// -1 if the program crashed.
    int _exitCode;
    std::string _output;
    std::string _errors;
};

/// A test of one program, with a folder of its own for the files, which goes with it.
class ProgramTest : public testing::Test
{
protected:
    /// `program` is the path of the program.
    explicit ProgramTest(std::filesystem::path program);
    ~ProgramTest() override;

    /// The path of a file in the folder.
    std::string getPath(const std::string& name) const;

    /// Writes a file into the folder and returns its path.
    std::string write(const std::string& name, const std::string& content) const;

    /// Runs the program to its end, with nothing to read. The arguments are as in a shell.
    ProgramOutcome run(const std::string& arguments) const;

    /// Expects exit code 2, no output, and of errors one line: the program's name and `message`.
    void expectRefusal(const std::string& arguments, const std::string& message) const;

private:
    std::filesystem::path _program;
    std::filesystem::path _folder;
};

} // namespace Zem::TestSupport

#include "TS_RunProgram.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace Zem::TestSupport
{

namespace
{

std::string read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string quote(const std::string& path)
{
    return "\"" + path + "\"";
}

} // namespace

ProgramTest::ProgramTest(std::filesystem::path program)
    : _program(std::move(program))
    , _folder(std::filesystem::temp_directory_path() / (_program.filename().string() + "-" + std::to_string(getpid())))
{
    std::filesystem::create_directories(_folder);
}

ProgramTest::~ProgramTest()
{
    std::filesystem::remove_all(_folder);
}

std::string ProgramTest::getPath(const std::string& name) const
{
    return (_folder / name).string();
}

std::string ProgramTest::write(const std::string& name, const std::string& content) const
{
    std::ofstream(getPath(name), std::ios::binary) << content;
    return getPath(name);
}

ProgramOutcome ProgramTest::run(const std::string& arguments) const
{
    const std::string output = getPath(".output");
    const std::string errors = getPath(".errors");
    // The shell makes way for the program, so that it is the program's status which is returned.
    const std::string command = "exec " + quote(_program.string()) + " " + arguments + " >" + quote(output) + " 2>" +
                                quote(errors) + " </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(output), read(errors)};
}

void ProgramTest::expectRefusal(const std::string& arguments, const std::string& message) const
{
    const ProgramOutcome outcome = run(arguments);
    EXPECT_EQ(2, outcome._exitCode) << arguments << '\n' << message;
    EXPECT_EQ(_program.filename().string() + ": " + message + "\n", outcome._errors);
    EXPECT_EQ("", outcome._output);
}

} // namespace Zem::TestSupport

#include "Program.h"

#include "Farm.h"
#include "OneLine.h"
#include "Options.h"

#include "Util_Assert.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>

namespace ZemFarm
{

namespace
{

constexpr int disagreement = 1;
constexpr int badInput = 2;

int printError(const std::string& message, int exitCode)
{
    std::fprintf(stderr, "zem-farm: %s\n", makeOneLine(message).c_str());
    return exitCode;
}

std::string readFile(const std::string& fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
    {
        throw BadScript(fileName + ": it can't be opened");
    }
    try
    {
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    catch (const std::ios_base::failure&)
    {
        throw BadScript(fileName + ": it can't be read");
    }
}

Script readScript(const std::string& fileName)
{
    const std::string text = readFile(fileName);
    try
    {
        return parseScript(text);
    }
    catch (const BadScript& error)
    {
        throw BadScript(fileName + ": " + error.what());
    }
}

int run(const Options& options)
{
    const bool haveAgreed =
        options._scriptName ? runScript(readScript(*options._scriptName), options._shrinks) : runSessions(options);
    return haveAgreed ? 0 : disagreement;
}

} // namespace

int runProgram(int argumentsCount, const char* const* arguments)
{
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    try
    {
        const Options options = readOptions(argumentsCount, arguments);
        if (options._wantsHelp)
        {
            std::fputs(helpText, stdout);
            return 0;
        }
        return run(options);
    }
    catch (const BadOptions& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const BadScript& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const std::exception& error)
    {
        return printError(error.what(), disagreement);
    }
}

} // namespace ZemFarm

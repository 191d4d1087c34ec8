#include "Farm.h"
#include "Options.h"

#include "Util_Assert.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <sstream>

namespace
{

constexpr int disagreement = 1;
constexpr int badInput = 2;

int printError(const std::string& message, int exitCode)
{
    std::fprintf(stderr, "zem-farm: %s\n", message.c_str());
    return exitCode;
}

ZemFarm::Script readScript(const std::string& fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
    {
        throw ZemFarm::BadScript(fileName + ": it can't be opened");
    }
    std::ostringstream text;
    text << file.rdbuf();
    try
    {
        return ZemFarm::parseScript(text.str());
    }
    catch (const ZemFarm::BadScript& error)
    {
        throw ZemFarm::BadScript(fileName + ": " + error.what());
    }
}

int run(const ZemFarm::Options& options)
{
    const bool haveAgreed = options._scriptName ? ZemFarm::runScript(readScript(*options._scriptName), options._shrinks)
                                                : ZemFarm::runSessions(options);
    return haveAgreed ? 0 : disagreement;
}

} // namespace

int main(int argumentsCount, char** arguments)
{
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    try
    {
        const ZemFarm::Options options = ZemFarm::readOptions(argumentsCount, arguments);
        if (options._wantsHelp)
        {
            std::fputs(ZemFarm::helpText, stdout);
            return 0;
        }
        return run(options);
    }
    catch (const ZemFarm::BadOptions& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const ZemFarm::BadScript& error)
    {
        return printError(error.what(), badInput);
    }
    catch (const std::exception& error)
    {
        return printError(error.what(), disagreement);
    }
}

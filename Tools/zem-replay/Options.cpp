#include "Options.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace ZemReplay
{

const char* const helpText =
    R"(zem-replay [--reverse] [--check N] [--repeat N] [TRACE.json[.gz]...]
zem-replay [--reverse] [--check N] [--repeat N] [--seed S] [--patches N]

Plays a history of edits as operations on a document, compares the text at the end with what it is to be, and tells
how fast that went. Without a file, it makes up a history of typing.

  --reverse    takes every operation back again, newest first, down to the empty document, and does them all again;
               histories of several users are played forward only
  --check N    compares the text with a plain string, and checks the document, after every N edits and at the end
  --repeat N   plays each history N times; the table shows the best time and the median
  --seed S     makes up another history (default: 1)
  --patches N  makes up a history of N edits (default: 200000)
  --help       shows this

A history is a JSON object, compressed with gzip if the name ends with .gz:
  { "startContent": "", "endContent": "...", "txns": [ { "patches": [ [position, deleteCount, "text"], ... ] }, ... ] }
Positions and counts are in Unicode code points.

Histories of up to two users at once are played by a client for each and a server. They have a "kind": "concurrent",
with "numAgents" and with "agent" and "parents" in each transaction, or "spread" or "hot", with "base", "a" and "b".

The exit code is 0 if every comparison held, 1 if one didn't, 2 if a file or an option is wrong.
)";

namespace
{

unsigned long readNumber(const std::string& option, const char* argument, unsigned long minimum)
{
    if (!argument)
    {
        throw BadOptions(option + " needs a number");
    }
    const std::string_view digits = argument;
    errno = 0;
    const unsigned long number = std::strtoul(argument, nullptr, 10);
    const bool isNumber = !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
    if (!isNumber || errno == ERANGE || number < minimum)
    {
        throw BadOptions(option + " needs a number from " + std::to_string(minimum) + " on, not \"" + argument + "\"");
    }
    return number;
}

} // namespace

Options readOptions(int argumentsCount, const char* const* arguments)
{
    Options options;
    for (int index = 1; index < argumentsCount; ++index)
    {
        const std::string argument = arguments[index];
        const auto takeNumber = [&](unsigned long minimum)
        {
            ++index;
            return readNumber(argument, index < argumentsCount ? arguments[index] : nullptr, minimum);
        };
        if (argument == "--help")
        {
            options._wantsHelp = true;
        }
        else if (argument == "--reverse")
        {
            options._reverses = true;
        }
        else if (argument == "--check")
        {
            options._checkInterval = takeNumber(1);
        }
        else if (argument == "--repeat")
        {
            options._repeatCount = takeNumber(1);
        }
        else if (argument == "--seed")
        {
            options._seed = takeNumber(0);
        }
        else if (argument == "--patches")
        {
            options._generatedCount = takeNumber(0);
        }
        else if (argument.size() > 1 && argument.front() == '-')
        {
            throw BadOptions("there is no option \"" + argument + "\"; --help shows those that there are");
        }
        else
        {
            options._fileNames.push_back(argument);
        }
    }
    return options;
}

} // namespace ZemReplay

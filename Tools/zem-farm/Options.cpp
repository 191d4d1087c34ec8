#include "Options.h"

#include "Generators.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace ZemFarm
{

using Zem::CollaborationSession::DocumentKind;

const char* const helpText =
    R"(zem-farm [--kind KIND] [--clients N] [--operations M | --minutes T] [--seed S] [--hostile N]
         [--judge] [--without NAME]... [--shrink]
zem-farm --script FILE [--shrink]

Lets clients of a shared document do random things at once, with messages that travel late and connections that break,
and requires that all documents are equal whenever everybody has heard of everything.

  --kind KIND     text, workbook, presentation, or all (default: all, in turn)
  --clients N     at most N clients in a session, 2 to 32, or 1 with --judge (default: 8)
  --operations M  sessions of M operations altogether (default: 10000)
  --minutes T     sessions until T minutes are over
  --hostile N     sessions in which strangers send anything, until they have sent N batches; sessions then have
                  as many operations as M says, up to 500
  --seed S        other sessions (default: 1)
  --judge         texts alone, edited as people do, and compared with what they meant
  --without NAME  without what is called so in the table, such as paste
  --shrink        makes the session that failed as short as it gets, and prints it as a script
  --script FILE   plays a script
  --help          shows this

The first session has exactly N clients, and the seed S; with M up to 500 it is the only one. So a line that tells of a
failure ends with the options that do just that session again.

The exit code is 0 if all documents agreed, 1 if two didn't or something failed, 2 if an option or a script is wrong.
)";

namespace
{

constexpr std::array<std::pair<const char*, DocumentKind>, 3> kindNames = {
    {{"text", DocumentKind::Text}, {"workbook", DocumentKind::Workbook}, {"presentation", DocumentKind::Presentation}}};

constexpr unsigned long minClientsCount = 2;
constexpr unsigned long maxClientsCount = 32;

unsigned long readNumber(const std::string& option, const std::string& argument, unsigned long minimum,
                         unsigned long maximum)
{
    errno = 0;
    const unsigned long number = std::strtoul(argument.c_str(), nullptr, 10);
    const bool isNumber = !argument.empty() && argument.find_first_not_of("0123456789") == std::string::npos;
    if (!isNumber || errno == ERANGE || number < minimum || number > maximum)
    {
        const std::string range = maximum == ~0UL ? std::to_string(minimum) + " on"
                                                  : std::to_string(minimum) + " to " + std::to_string(maximum);
        throw BadOptions(option + " needs a number from " + range + ", not \"" + argument + "\"");
    }
    return number;
}

double readMinutes(const std::string& argument)
{
    constexpr double maxMinutes = 1000000;
    char* end = nullptr;
    const double minutes = std::strtod(argument.c_str(), &end);
    const bool isNumber = !argument.empty() && argument.find_first_not_of("0123456789.") == std::string::npos;
    if (!isNumber || *end != '\0' || minutes <= 0 || minutes > maxMinutes)
    {
        throw BadOptions("--minutes needs a number above 0, up to 1000000, not \"" + argument + "\"");
    }
    return minutes;
}

/// Reads the options from the left to the right.
class Reader
{
public:
    Reader(int argumentsCount, const char* const* arguments)
        : _argumentsCount(argumentsCount)
        , _arguments(arguments)
    {
    }

    Options read()
    {
        for (_index = 1; _index < _argumentsCount; ++_index)
        {
            readOne(_arguments[_index]);
        }
        if (_options._scriptName && _isOfRandomSessions)
        {
            throw BadOptions("--script goes with --shrink alone");
        }
        if (_options._minutes && _hasOperations)
        {
            throw BadOptions("--operations and --minutes don't go together");
        }
        requireClients();
        requireKindToJudge();
        return _options;
    }

private:
    void readOne(const std::string& option)
    {
        if (option == "--help")
        {
            _options._wantsHelp = true;
        }
        else if (option == "--shrink")
        {
            _options._shrinks = true;
        }
        else if (option == "--script")
        {
            _options._scriptName = takeArgument(option);
        }
        else
        {
            readOneOfRandomSessions(option);
            _isOfRandomSessions = true;
        }
    }

    void readOneOfRandomSessions(const std::string& option)
    {
        if (option == "--kind")
        {
            readKind(takeArgument(option));
        }
        else if (option == "--judge")
        {
            _options._isJudged = true;
        }
        else if (option == "--without")
        {
            readWithout(takeArgument(option));
        }
        else if (option == "--clients")
        {
            readClients(takeArgument(option));
        }
        else if (option == "--operations")
        {
            _options._operationsCount = readNumber(option, takeArgument(option), 1, ~0UL);
            _hasOperations = true;
        }
        else if (option == "--seed")
        {
            _options._seed = readNumber(option, takeArgument(option), 0, ~0UL);
        }
        else if (option == "--hostile")
        {
            _options._hostileCount = readNumber(option, takeArgument(option), 1, ~0UL);
        }
        else if (option == "--minutes")
        {
            _options._minutes = readMinutes(takeArgument(option));
        }
        else
        {
            throw BadOptions("there is no option \"" + option + "\"; --help shows those that there are");
        }
    }

    void readClients(const std::string& argument)
    {
        _options._clientsCount =
            argument == "1" ? 1 : readNumber("--clients", argument, minClientsCount, maxClientsCount);
    }

    void readWithout(const std::string& name)
    {
        if (!findGenerator(name))
        {
            throw BadOptions("--without needs a name of the table, not \"" + name + "\"");
        }
        _options._without.push_back(name);
    }

    /// One alone has nobody to agree with.
    void requireClients() const
    {
        if (_options._clientsCount < minClientsCount && !_options._isJudged)
        {
            readNumber("--clients", std::to_string(_options._clientsCount), minClientsCount, maxClientsCount);
        }
    }

    void requireKindToJudge()
    {
        if (_options._isJudged && _options._kind.value_or(DocumentKind::Text) != DocumentKind::Text)
        {
            throw BadOptions("--judge goes with texts alone");
        }
        if (_options._isJudged)
        {
            _options._kind = DocumentKind::Text;
        }
    }

    void readKind(const std::string& name)
    {
        _options._kind = findKind(name);
        if (!_options._kind && name != "all")
        {
            throw BadOptions("--kind needs text, workbook, presentation or all, not \"" + name + "\"");
        }
    }

    std::string takeArgument(const std::string& option)
    {
        if (++_index == _argumentsCount)
        {
            throw BadOptions(option + " needs an argument");
        }
        return _arguments[_index];
    }

    int _argumentsCount;
    const char* const* _arguments;
    int _index = 0;
    Options _options;
    bool _isOfRandomSessions = false;
    bool _hasOperations = false;
};

} // namespace

const char* getName(DocumentKind kind)
{
    for (const auto& [name, namedKind] : kindNames)
    {
        if (namedKind == kind)
        {
            return name;
        }
    }
    throw std::logic_error("a kind of document without a name");
}

std::optional<DocumentKind> findKind(const std::string& name)
{
    for (const auto& [kindName, kind] : kindNames)
    {
        if (name == kindName)
        {
            return kind;
        }
    }
    return std::nullopt;
}

Options readOptions(int argumentsCount, const char* const* arguments)
{
    return Reader(argumentsCount, arguments).read();
}

} // namespace ZemFarm

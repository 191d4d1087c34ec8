#include "Script.h"

#include "Generators.h"
#include "Options.h"

#include <array>
#include <sstream>

namespace ZemFarm
{

namespace
{

struct StepForm
{
    StepKind _kind;
    const char* _name;
    bool _hasClient;
    bool _hasNumber;
};

constexpr std::array<StepForm, 12> stepForms = {{{StepKind::Join, "join", true, true},
                                                 {StepKind::Do, "do", true, true},
                                                 {StepKind::Select, "select", true, true},
                                                 {StepKind::Send, "send", true, false},
                                                 {StepKind::ToServer, "to-server", true, true},
                                                 {StepKind::ToClient, "to-client", true, true},
                                                 {StepKind::Disconnect, "disconnect", true, false},
                                                 {StepKind::Reconnect, "reconnect", true, false},
                                                 {StepKind::Leave, "leave", true, false},
                                                 {StepKind::Bad, "bad", false, true},
                                                 {StepKind::Hostile, "hostile", false, true},
                                                 {StepKind::Settle, "settle", false, false}}};

const StepForm& findForm(StepKind kind)
{
    for (const StepForm& form : stepForms)
    {
        if (form._kind == kind)
        {
            return form;
        }
    }
    throw std::logic_error("a step without a form");
}

/// The words of one line.
class Words
{
public:
    Words(std::string line, unsigned long lineNumber)
        : _line(line.substr(0, line.find('#')))
        , _lineNumber(lineNumber)
        , _stream(_line)
    {
    }

    /// Empty at the end.
    std::string take()
    {
        std::string word;
        _stream >> word;
        return word;
    }

    unsigned long takeNumber()
    {
        const std::string word = take();
        constexpr std::size_t maxDigits = 19;
        if (word.empty() || word.size() > maxDigits || word.find_first_not_of("0123456789") != std::string::npos)
        {
            fail("a number was expected, not \"" + word + "\"");
        }
        return std::stoul(word);
    }

    void require(bool isRight, const std::string& rule) const
    {
        if (!isRight)
        {
            fail(rule);
        }
    }

    void requireEnd()
    {
        const std::string word = take();
        if (!word.empty())
        {
            fail("nothing was expected behind the step, not \"" + word + "\"");
        }
    }

    [[noreturn]] void fail(const std::string& what) const
    {
        throw BadScript("line " + std::to_string(_lineNumber) + ": " + what);
    }

private:
    std::string _line;
    unsigned long _lineNumber;
    std::istringstream _stream;
};

Step parseStep(const std::string& firstWord, Words& words)
{
    Step step;
    const bool hasClient = firstWord == "client";
    if (hasClient)
    {
        step._client = words.takeNumber();
        words.require(step._client > 0, "clients are counted from 1 on");
    }
    const std::string name = hasClient ? words.take() : firstWord;
    for (const StepForm& form : stepForms)
    {
        if (name != form._name || form._hasClient != hasClient)
        {
            continue;
        }
        step._kind = form._kind;
        if (form._kind == StepKind::Do)
        {
            step._generator = words.take();
            if (!findGenerator(step._generator))
            {
                words.fail("nothing makes operations by the name \"" + step._generator + "\"");
            }
        }
        step._number = form._hasNumber ? words.takeNumber() : 0;
        return step;
    }
    words.fail("there is no step \"" + name + "\"");
}

void parseKind(Setup& setup, Words& words)
{
    const std::string name = words.take();
    const auto kind = findKind(name);
    if (!kind)
    {
        words.fail("there is no kind of document \"" + name + "\"");
    }
    setup._kind = *kind;
}

/// Whether the line that begins with the word is one of the setup.
bool parseSetup(Setup& setup, const std::string& word, Words& words)
{
    if (word == "kind")
    {
        parseKind(setup, words);
        return true;
    }
    if (word == "document")
    {
        setup._documentSeed = words.takeNumber();
        setup._documentSize = words.takeNumber();
        words.require(setup._documentSize <= Setup::maxDocumentSize, "a document begins with 1000 blocks at most");
        return true;
    }
    if (word == "checkpoint")
    {
        setup._checkpointInterval = words.takeNumber();
        return true;
    }
    if (word == "judged")
    {
        setup._isJudged = true;
        return true;
    }
    return false;
}

/// Reads the lines of a script one by one.
class Parser
{
public:
    void parseLine(Words& words)
    {
        const std::string word = words.take();
        if (word.empty())
        {
            return;
        }
        if (parseSetup(_script._setup, word, words))
        {
            words.require(_script._steps.empty(), "\"" + word + "\" must stand in front of all steps");
            _hasKind = _hasKind || word == "kind";
        }
        else
        {
            _script._steps.push_back(parseStep(word, words));
        }
        words.requireEnd();
    }

    Script takeScript()
    {
        if (!_hasKind)
        {
            throw BadScript("no line tells the kind of document");
        }
        return std::move(_script);
    }

private:
    Script _script;
    bool _hasKind = false;
};

} // namespace

std::string print(const Setup& setup)
{
    return std::string("kind ") + getName(setup._kind) + "\ndocument " + std::to_string(setup._documentSeed) + ' ' +
           std::to_string(setup._documentSize) + "\ncheckpoint " + std::to_string(setup._checkpointInterval) + '\n' +
           (setup._isJudged ? "judged\n" : "");
}

std::string print(const Step& step)
{
    const StepForm& form = findForm(step._kind);
    std::string line = form._hasClient ? "client " + std::to_string(step._client) + ' ' : "";
    line += form._name;
    line += step._kind == StepKind::Do ? ' ' + step._generator : "";
    line += form._hasNumber ? ' ' + std::to_string(step._number) : "";
    return line;
}

std::string print(const Script& script)
{
    std::string text = print(script._setup);
    for (const Step& step : script._steps)
    {
        text += print(step) + '\n';
    }
    return text;
}

Script parseScript(std::string_view text)
{
    Parser parser;
    std::istringstream lines{std::string(text)};
    std::string line;
    for (unsigned long number = 1; std::getline(lines, line); ++number)
    {
        Words words(line, number);
        parser.parseLine(words);
    }
    return parser.takeScript();
}

} // namespace ZemFarm

#include "InflatingStream.h"
#include "PlainText.h"
#include "Trace.h"

#include "CS_Characters.h"

// A namespace of its own: the serialization library brings the same templates, set up in another way.
#define RAPIDJSON_NAMESPACE zemReplayJson
#define RAPIDJSON_NAMESPACE_BEGIN                                                                                      \
    namespace zemReplayJson                                                                                            \
    {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <optional>
#include <utility>

namespace ZemReplay
{

namespace
{

using zemReplayJson::SizeType;

constexpr std::size_t maximalDepth = 64;

/// What the reader is inside of.
enum class Level
{
    File,
    History,
    Transactions,
    Transaction,
    Patches,
    Patch,
    Skipped
};

/// Takes the reader's events, and builds the history. An event that doesn't fit leaves a message and ends the reading.
class TraceHandler
{
public:
    Trace takeTrace()
    {
        return std::move(_trace);
    }

    const std::string& getError() const
    {
        return _error;
    }

    bool Null()
    {
        return takeOther("null");
    }

    bool Bool(bool)
    {
        return takeOther("a truth value");
    }

    bool Int(int)
    {
        return takeOther("a negative number");
    }

    bool Uint(unsigned number)
    {
        return takeNumber(number);
    }

    bool Int64(std::int64_t)
    {
        return takeOther("a negative number");
    }

    bool Uint64(std::uint64_t number)
    {
        return takeNumber(number);
    }

    bool Double(double)
    {
        return takeOther("no whole number, or too big a one");
    }

    bool RawNumber(const char*, SizeType, bool)
    {
        return takeOther("a number");
    }

    bool String(const char* bytes, SizeType size, bool);
    bool Key(const char* bytes, SizeType size, bool);
    bool StartObject();
    bool EndObject(SizeType);
    bool StartArray();
    bool EndArray(SizeType);

private:
    Level getLevel() const
    {
        return _levels.back();
    }

    bool isKey(Level level, const char* key) const
    {
        return getLevel() == level && _key == key;
    }

    bool isSkipped() const;
    bool enter(Level level);
    bool takeOther(const char* what);
    bool takeNumber(std::uint64_t number);
    bool fail(const std::string& message);
    std::string getPlace() const;

    std::vector<Level> _levels{Level::File};
    /// The last key of the history, or of a transaction.
    std::string _key;
    Trace _trace;
    Patch _patch;
    unsigned _patchFields = 0;
    unsigned long _transactionsCount = 0;
    unsigned long _patchesCount = 0;
    bool _hasStart = false;
    bool _hasEnd = false;
    bool _hasTransactions = false;
    bool _hasPatches = false;
    std::string _error;
};

bool TraceHandler::fail(const std::string& message)
{
    const std::string place = getPlace();
    _error = (place.empty() ? "the file" : place) + " " + message;
    return false;
}

std::string TraceHandler::getPlace() const
{
    std::string place;
    for (const Level level : _levels)
    {
        switch (level)
        {
        case Level::Transactions:
            place += "txns[" + std::to_string(_transactionsCount) + "]";
            break;
        case Level::Patches:
            place += ".patches[" + std::to_string(_patchesCount) + "]";
            break;
        case Level::Patch:
            place += "[" + std::to_string(_patchFields) + "]";
            break;
        case Level::File:
        case Level::History:
        case Level::Transaction:
        case Level::Skipped:
            break;
        }
    }
    const bool isAtField = getLevel() == Level::History || getLevel() == Level::Transaction;
    return isAtField && !_key.empty() ? place + (place.empty() ? "" : ".") + _key : place;
}

/// Whether a value here is none of ours: fields that the format has beside those that are played.
bool TraceHandler::isSkipped() const
{
    switch (getLevel())
    {
    case Level::History:
        return _key != "startContent" && _key != "endContent" && _key != "txns" && _key != "kind";
    case Level::Transaction:
        return _key != "patches";
    case Level::Skipped:
        return true;
    default:
        return false;
    }
}

bool TraceHandler::enter(Level level)
{
    if (_levels.size() > maximalDepth)
    {
        return fail("is nested too deeply");
    }
    _levels.push_back(level);
    return true;
}

bool TraceHandler::takeOther(const char* what)
{
    return isSkipped() || fail(std::string("is ") + what);
}

bool TraceHandler::takeNumber(std::uint64_t number)
{
    if (getLevel() != Level::Patch || _patchFields > 1)
    {
        return takeOther("a number");
    }
    (_patchFields == 0 ? _patch._position : _patch._deleteCount) = number;
    ++_patchFields;
    return true;
}

bool TraceHandler::String(const char* bytes, SizeType size, bool)
{
    if (isKey(Level::History, "kind"))
    {
        _key.clear();
        return fail("is a concurrent history (\"" + std::string(bytes, size) +
                    "\"); only sequential ones can be played");
    }
    if (isKey(Level::History, "startContent"))
    {
        _trace._startContent.assign(bytes, size);
        return !std::exchange(_hasStart, true) || fail("stands there twice");
    }
    if (isKey(Level::History, "endContent"))
    {
        _trace._endContent.assign(bytes, size);
        return !std::exchange(_hasEnd, true) || fail("stands there twice");
    }
    if (getLevel() != Level::Patch || _patchFields != 2)
    {
        return takeOther("a string");
    }
    _patch._textBegin = _trace._texts.size();
    _patch._textSize = size;
    _trace._texts.append(bytes, size);
    ++_patchFields;
    return true;
}

bool TraceHandler::Key(const char* bytes, SizeType size, bool)
{
    if (getLevel() == Level::History || getLevel() == Level::Transaction)
    {
        _key.assign(bytes, size);
    }
    if (isKey(Level::Transaction, "parents"))
    {
        _key.clear();
        return fail("is part of a concurrent history; only sequential ones can be played");
    }
    return true;
}

bool TraceHandler::StartObject()
{
    switch (getLevel())
    {
    case Level::File:
        return enter(Level::History);
    case Level::Transactions:
        _hasPatches = false;
        _key.clear();
        return enter(Level::Transaction);
    default:
        return isSkipped() ? enter(Level::Skipped) : fail("is an object");
    }
}

bool TraceHandler::EndObject(SizeType)
{
    const Level level = getLevel();
    _levels.pop_back();
    if (level == Level::Transaction)
    {
        if (!_hasPatches)
        {
            return fail("has no \"patches\"");
        }
        ++_transactionsCount;
    }
    if (level == Level::History)
    {
        const char* missing = !_hasStart          ? "startContent"
                              : !_hasEnd          ? "endContent"
                              : !_hasTransactions ? "txns"
                                                  : nullptr;
        return !missing || fail("has no \"" + std::string(missing) + "\"");
    }
    return true;
}

bool TraceHandler::StartArray()
{
    if (isKey(Level::History, "txns"))
    {
        return std::exchange(_hasTransactions, true) ? fail("stands there twice") : enter(Level::Transactions);
    }
    if (isKey(Level::Transaction, "patches"))
    {
        _patchesCount = 0;
        return std::exchange(_hasPatches, true) ? fail("stands there twice") : enter(Level::Patches);
    }
    if (getLevel() == Level::Patches)
    {
        _patch = Patch();
        _patchFields = 0;
        return enter(Level::Patch);
    }
    return isSkipped() ? enter(Level::Skipped) : fail("is an array");
}

bool TraceHandler::EndArray(SizeType)
{
    if (getLevel() == Level::Patch)
    {
        if (_patchFields != 3)
        {
            return fail("is missing; a patch is a position, a count and a text");
        }
        _patch._transaction = _transactionsCount;
        _patch._number = _patchesCount++;
        _trace._patches.push_back(_patch);
    }
    _levels.pop_back();
    return true;
}

void requireUtf8(const Trace& trace, std::string_view text, const std::string& place)
{
    if (Zem::CollaborationSession::findInvalidUtf8(text) < text.size())
    {
        throw BadTrace(trace._name + ": " + place + ": the text isn't UTF-8");
    }
}

/// Requires that every patch lies inside the text that it finds.
void checkPatches(const Trace& trace)
{
    requireUtf8(trace, trace._startContent, "startContent");
    unsigned long length = countCharacters(trace._startContent);
    for (const Patch& patch : trace._patches)
    {
        if (patch._position > length || patch._deleteCount > length - patch._position)
        {
            throw BadTrace(trace._name + ": " + getName(patch) + ": [" + std::to_string(patch._position) + ", " +
                           std::to_string(patch._deleteCount) + ", ...] lies outside of the text, which has " +
                           std::to_string(length) + " characters there");
        }
        requireUtf8(trace, trace.getText(patch), getName(patch));
        length += countCharacters(trace.getText(patch)) - patch._deleteCount;
    }
}

/// What to say when the reading ended early; the cause that lies deepest first.
std::string describeError(const InflatingStream& stream, const TraceHandler& handler,
                          const zemReplayJson::ParseResult& result)
{
    if (!stream.getError().empty())
    {
        return stream.getError();
    }
    const std::string place = "byte " + std::to_string(result.IsError() ? result.Offset() : stream.Tell()) + ": ";
    if (!handler.getError().empty())
    {
        return place + handler.getError();
    }
    if (result.IsError())
    {
        return place + "isn't JSON: " + zemReplayJson::GetParseError_En(result.Code());
    }
    return place + "isn't JSON: a zero byte";
}

} // namespace

std::string getName(const Patch& patch)
{
    return "txns[" + std::to_string(patch._transaction) + "].patches[" + std::to_string(patch._number) + "]";
}

Trace readTrace(const std::string& fileName)
{
    constexpr unsigned flags = zemReplayJson::kParseIterativeFlag | zemReplayJson::kParseValidateEncodingFlag;
    InflatingStream stream(fileName);
    TraceHandler handler;
    zemReplayJson::ParseResult result;
    if (stream.getError().empty())
    {
        zemReplayJson::Reader reader;
        result = reader.Parse<flags>(stream, handler);
    }
    if (result.IsError() || !stream.isAtEnd() || !stream.getError().empty())
    {
        throw BadTrace(fileName + ": " + describeError(stream, handler, result));
    }
    Trace trace = handler.takeTrace();
    trace._name = fileName;
    checkPatches(trace);
    return trace;
}

} // namespace ZemReplay

#include "InflatingStream.h"
#include "Trace.h"

// A namespace of its own: the serialization library brings the same templates, set up in another way.
#define RAPIDJSON_NAMESPACE zemReplayJson
#define RAPIDJSON_NAMESPACE_BEGIN                                                                                      \
    namespace zemReplayJson                                                                                            \
    {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace ZemReplay
{

namespace
{

using zemReplayJson::SizeType;

constexpr std::size_t maximalDepth = 64;

constexpr std::string_view historyKeys[] = {"kind", "startContent", "endContent", "numAgents",
                                            "txns", "base",         "a",          "b"};
constexpr std::pair<std::string_view, TraceKind> kinds[] = {
    {"concurrent", TraceKind::Concurrent}, {"spread", TraceKind::Spread}, {"hot", TraceKind::Hot}};

/// What the reader is inside of.
enum class Level
{
    File,
    History,
    Transactions,
    Transaction,
    Parents,
    Patches,
    Patch,
    Skipped
};

/// The fields that a kind of history must have, in the order in which one that is missing is told.
struct Fields
{
    bool _start = false;
    bool _end = false;
    bool _transactions = false;
    bool _agentsCount = false;
    bool _base = false;
    bool _streams[2] = {false, false};
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
    bool isStream() const;
    bool enter(Level level);
    bool enterOnce(bool& isThere, Level level);
    bool assignOnce(bool& isThere, std::string& content, const char* bytes, SizeType size);
    bool takeKind(std::string_view kind);
    bool endTransaction();
    void appendToStream();
    bool endHistory();
    const char* findMissing() const;
    bool takeOther(const char* what);
    bool takeNumber(std::uint64_t number);
    bool fail(const std::string& message);
    std::string getPlace() const;

    std::vector<Level> _levels{Level::File};
    /// The last key of the history, or of a transaction.
    std::string _key;
    Trace _trace;
    Transaction _transaction;
    Patch _patch;
    unsigned _patchFields = 0;
    unsigned long _patchesCount = 0;
    Fields _fields;
    unsigned long _concurrentCount = 0;
    bool _hasKind = false;
    bool _hasPatches = false;
    bool _hasParents = false;
    bool _hasAgent = false;
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
            place += "txns[" + std::to_string(_trace._transactions.size()) + "]";
            break;
        case Level::Parents:
            place += ".parents[" + std::to_string(_transaction._parents.size()) + "]";
            break;
        case Level::Patches:
            place += (isStream() ? _key : ".patches") + "[" + std::to_string(_patchesCount) + "]";
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
        return std::find(std::begin(historyKeys), std::end(historyKeys), _key) == std::end(historyKeys);
    case Level::Transaction:
        return _key != "patches" && _key != "parents" && _key != "agent";
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
    if (getLevel() == Level::Patch && _patchFields <= 1)
    {
        (_patchFields == 0 ? _patch._position : _patch._deleteCount) = number;
        ++_patchFields;
        return true;
    }
    if (isKey(Level::History, "numAgents"))
    {
        _trace._agentsCount = number;
        return !std::exchange(_fields._agentsCount, true) || fail("stands there twice");
    }
    if (isKey(Level::Transaction, "agent"))
    {
        _transaction._agent = number;
        return !std::exchange(_hasAgent, true) || fail("stands there twice");
    }
    if (getLevel() == Level::Parents)
    {
        if (number >= _trace._transactions.size())
        {
            return fail("isn't the number of an earlier transaction");
        }
        _transaction._parents.push_back(number);
        return true;
    }
    return takeOther("a number");
}

bool TraceHandler::assignOnce(bool& isThere, std::string& content, const char* bytes, SizeType size)
{
    content.assign(bytes, size);
    return !std::exchange(isThere, true) || fail("stands there twice");
}

bool TraceHandler::takeKind(std::string_view kind)
{
    for (const auto& [name, value] : kinds)
    {
        if (kind == name)
        {
            _trace._kind = value;
            return !std::exchange(_hasKind, true) || fail("stands there twice");
        }
    }
    return fail("is none that can be played");
}

bool TraceHandler::String(const char* bytes, SizeType size, bool)
{
    if (isKey(Level::History, "kind"))
    {
        return takeKind(std::string_view(bytes, size));
    }
    if (isKey(Level::History, "startContent"))
    {
        return assignOnce(_fields._start, _trace._startContent, bytes, size);
    }
    if (isKey(Level::History, "base"))
    {
        return assignOnce(_fields._base, _trace._startContent, bytes, size);
    }
    if (isKey(Level::History, "endContent"))
    {
        return assignOnce(_fields._end, _trace._endContent, bytes, size);
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
        _hasParents = false;
        _hasAgent = false;
        _transaction = Transaction();
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
    return level == Level::Transaction ? endTransaction() : level != Level::History || endHistory();
}

bool TraceHandler::endTransaction()
{
    if (!_hasPatches)
    {
        return fail("has no \"patches\"");
    }
    _transaction._patchesEnd = _trace._patches.size();
    _transaction._patchesBegin = _transaction._patchesEnd - _patchesCount;
    _trace._transactions.push_back(std::move(_transaction));
    _concurrentCount += _hasParents && _hasAgent ? 1 : 0;
    return true;
}

bool TraceHandler::endHistory()
{
    _key.clear();
    if (const char* missing = findMissing())
    {
        return fail("has no \"" + std::string(missing) + "\"");
    }
    if (_trace._kind == TraceKind::Concurrent && _concurrentCount < _trace._transactions.size())
    {
        return fail("has transactions without \"parents\" or \"agent\"");
    }
    return true;
}

/// The first field that a history of its kind must have, and this one hasn't.
const char* TraceHandler::findMissing() const
{
    switch (_trace._kind)
    {
    case TraceKind::Sequential:
        return !_fields._start          ? "startContent"
               : !_fields._end          ? "endContent"
               : !_fields._transactions ? "txns"
                                        : nullptr;
    case TraceKind::Concurrent:
        return !_fields._end            ? "endContent"
               : !_fields._agentsCount  ? "numAgents"
               : !_fields._transactions ? "txns"
                                        : nullptr;
    case TraceKind::Spread:
    case TraceKind::Hot:
        return !_fields._base ? "base" : !_fields._streams[0] ? "a" : !_fields._streams[1] ? "b" : nullptr;
    }
    return nullptr;
}

/// Whether this is inside of one of the two streams.
bool TraceHandler::isStream() const
{
    return _levels.size() > 2 && _levels[2] == Level::Patches;
}

bool TraceHandler::enterOnce(bool& isThere, Level level)
{
    return std::exchange(isThere, true) ? fail("stands there twice") : enter(level);
}

bool TraceHandler::StartArray()
{
    if (isKey(Level::History, "txns"))
    {
        return enterOnce(_fields._transactions, Level::Transactions);
    }
    if (isKey(Level::History, "a") || isKey(Level::History, "b"))
    {
        _patchesCount = 0;
        return enterOnce(_fields._streams[_key == "a" ? 0 : 1], Level::Patches);
    }
    if (isKey(Level::Transaction, "patches"))
    {
        _patchesCount = 0;
        return enterOnce(_hasPatches, Level::Patches);
    }
    if (isKey(Level::Transaction, "parents"))
    {
        return enterOnce(_hasParents, Level::Parents);
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
        _patch._transaction = _trace._transactions.size();
        _patch._number = _patchesCount++;
        _trace._patches.push_back(_patch);
        if (isStream())
        {
            appendToStream();
        }
    }
    _levels.pop_back();
    return true;
}

/// In a stream, each patch is a transaction that knows those before it.
void TraceHandler::appendToStream()
{
    Transaction transaction;
    transaction._patchesBegin = _trace._patches.size() - 1;
    transaction._patchesEnd = _trace._patches.size();
    transaction._agent = _key == "a" ? 0 : 1;
    if (_patch._number > 0)
    {
        transaction._parents.push_back(_trace._transactions.size() - 1);
    }
    _trace._transactions.push_back(std::move(transaction));
    _trace._agentsCount = 2;
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
    checkTrace(trace);
    return trace;
}

} // namespace ZemReplay

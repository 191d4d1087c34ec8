#pragma once

/// The assertion facility of the whole family. A broken invariant is reported here, in every kind of build.
///
/// `doFailAssert` prints file, line and message, calls the installed handler and aborts the process if that returns.
/// A handler may throw: tests and servers install `throwAssertionFailure`, so that one bad operation costs one
/// rejected operation and the process goes on.

#include "Util_Export.h"

#include <stdexcept>
#include <string>

namespace Zem
{

/// What `throwAssertionFailure` throws. `what()` is the message alone: the condition's text, or the message given.
class ZEM_EXPORT AssertionFailure : public std::logic_error
{
public:
    AssertionFailure(const char* file, int line, const char* message);

    const std::string& getFile() const
    {
        return _file;
    }

    int getLine() const
    {
        return _line;
    }

private:
    std::string _file;
    int _line;
};

/// Called with the place and the message of a failed assertion. It may throw; if it returns, the process aborts.
using AssertionHandler = void (*)(const char* file, int line, const char* message);

/// Installs `handler` for the whole process and returns the one before it; null means that there is none.
/// Threads: may be called at any time; the handler is read atomically.
ZEM_EXPORT AssertionHandler setAssertionHandler(AssertionHandler handler);

/// The handler that is installed; null if there is none.
ZEM_EXPORT AssertionHandler getAssertionHandler();

/// A handler that throws `AssertionFailure`.
[[noreturn]] ZEM_EXPORT void throwAssertionFailure(const char* file, int line, const char* message);

/// Reports a failed assertion; `condition` is the condition's text, or the message where no condition is tested.
[[noreturn]] ZEM_EXPORT void doFailAssert(const char* file, int line, const char* condition);

/// The form with a message, which is what the handler is given; the condition is printed beside it.
[[noreturn]] ZEM_EXPORT void doFailAssert(const char* file, int line, const char* condition, const char* message);

/// Whether failed assertions are also printed to the standard error stream (on by default). Returns what held before.
/// Programs that provoke thousands of failures on purpose, such as tests, turn the printing off.
ZEM_EXPORT bool setAssertionPrinting(bool isOn);

/// A pointer that must not be null; returns it. Fails: "plainPtr".
template<class Pointer>
decltype(auto) derefPtr(Pointer&& pointer, const char* file = __builtin_FILE(), int line = __builtin_LINE())
{
    if (!static_cast<bool>(pointer))
    {
        doFailAssert(file, line, "plainPtr");
    }
    return *pointer;
}

} // namespace Zem

/// Requires a condition; its text is the message.
#define ZEM_ASSERT(...)                                                                                                \
    (static_cast<bool>(__VA_ARGS__) ? void(0) : ::Zem::doFailAssert(__FILE__, __LINE__, #__VA_ARGS__))

/// Requires a condition, with a message of its own.
#define ZEM_ASSERT_MESSAGE(condition, message)                                                                         \
    (static_cast<bool>(condition) ? void(0) : ::Zem::doFailAssert(__FILE__, __LINE__, #condition, message))

/// Marks a place that must not be reached.
#define ZEM_FAIL(message) ::Zem::doFailAssert(__FILE__, __LINE__, message)

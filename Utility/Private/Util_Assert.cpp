#include "Util_Assert.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace Zem
{

namespace
{

std::atomic<AssertionHandler> installedHandler{nullptr};
std::atomic<bool> isPrintingOn{true};

[[noreturn]] void report(const char* file, int line, const char* message)
{
    if (const AssertionHandler handler = installedHandler.load())
    {
        handler(file, line, message);
    }
    std::abort();
}

} // namespace

AssertionFailure::AssertionFailure(const char* file, int line, const char* message)
    : std::logic_error(message)
    , _file(file)
    , _line(line)
{
}

AssertionHandler setAssertionHandler(AssertionHandler handler)
{
    return installedHandler.exchange(handler);
}

AssertionHandler getAssertionHandler()
{
    return installedHandler.load();
}

void throwAssertionFailure(const char* file, int line, const char* message)
{
    throw AssertionFailure(file, line, message);
}

bool setAssertionPrinting(bool isOn)
{
    return isPrintingOn.exchange(isOn);
}

void doFailAssert(const char* file, int line, const char* condition)
{
    if (isPrintingOn.load())
    {
        std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    }
    report(file, line, condition);
}

void doFailAssert(const char* file, int line, const char* condition, const char* message)
{
    if (isPrintingOn.load())
    {
        std::fprintf(stderr, "%s:%d: assertion failed: %s (%s)\n", file, line, message, condition);
    }
    report(file, line, message);
}

} // namespace Zem

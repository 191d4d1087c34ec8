#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace ZemReplay
{

Progress::Progress(std::string what, unsigned long total)
    : _what(std::move(what))
    , _total(total)
    , _isTerminal(isatty(STDERR_FILENO) != 0)
    , _lastShown(std::chrono::steady_clock::now())
{
}

Progress::~Progress()
{
    if (_isTerminal)
    {
        std::fputs("\r\033[K", stderr);
    }
}

void Progress::show()
{
    const auto now = std::chrono::steady_clock::now();
    if (now - _lastShown < std::chrono::milliseconds(100))
    {
        return;
    }
    _lastShown = now;
    std::fprintf(stderr, "\r\033[K%s: %lu of %lu", _what.c_str(), _done, _total);
}

} // namespace ZemReplay

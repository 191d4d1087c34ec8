#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace ZemFarm
{

Progress::Progress()
    : _isTerminal(isatty(STDERR_FILENO) != 0)
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

void Progress::show(const std::string& line)
{
    const auto now = std::chrono::steady_clock::now();
    const auto interval = _isTerminal ? std::chrono::milliseconds(100) : std::chrono::minutes(1);
    if (now - _lastShown < interval)
    {
        return;
    }
    _lastShown = now;
    std::fprintf(stderr, _isTerminal ? "\r\033[K%s" : "%s\n", line.c_str());
}

} // namespace ZemFarm

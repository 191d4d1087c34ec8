#include "Progress.h"

#include <unistd.h>

#include <cstdio>

namespace ZemFarm
{

Progress::Progress()
    : _isTerminal(isatty(STDERR_FILENO) != 0)
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
    if (!_isTerminal || now - _lastShown < std::chrono::milliseconds(100))
    {
        return;
    }
    _lastShown = now;
    std::fprintf(stderr, "\r\033[K%s", line.c_str());
}

} // namespace ZemFarm

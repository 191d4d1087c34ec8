#pragma once

#include <chrono>
#include <string>

namespace ZemReplay
{

/// A line on the terminal that says how far something is. It shows nothing when the error stream is no terminal, and
/// looks at the clock only now and then.
class Progress
{
public:
    Progress(std::string what, unsigned long total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Wipes the line.
    ~Progress();

    void advance()
    {
        if ((++_done & 0xFFFU) == 0 && _isTerminal)
        {
            show();
        }
    }

private:
    void show();

    std::string _what;
    unsigned long _total;
    unsigned long _done = 0;
    bool _isTerminal;
    std::chrono::steady_clock::time_point _lastShown;
};

} // namespace ZemReplay

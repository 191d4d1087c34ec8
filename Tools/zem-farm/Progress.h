#pragma once

#include <chrono>
#include <string>

namespace ZemFarm
{

/// A line on the terminal that says how far something is. It shows nothing when the error stream is no terminal.
class Progress
{
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Wipes the line.
    ~Progress();

    /// Ten times a second at most.
    void show(const std::string& line);

private:
    bool _isTerminal;
    std::chrono::steady_clock::time_point _lastShown;
};

} // namespace ZemFarm

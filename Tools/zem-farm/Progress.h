#pragma once

#include <chrono>
#include <string>

namespace ZemFarm
{

/// A line that says how far something is: on a terminal one that is overwritten ten times a second at most, and in
/// other error streams a new one each minute.
class Progress
{
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Wipes the line on a terminal.
    ~Progress();

    void show(const std::string& line);

private:
    bool _isTerminal;
    std::chrono::steady_clock::time_point _lastShown;
};

} // namespace ZemFarm

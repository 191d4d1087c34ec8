#pragma once

#include <chrono>

namespace Zem::CollaborationSession
{

/// Adds the seconds of its life to a sum.
class Stopwatch
{
public:
    explicit Stopwatch(double& seconds)
        : _seconds(seconds)
        , _begin(std::chrono::steady_clock::now())
    {
    }

    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

    ~Stopwatch()
    {
        _seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - _begin).count();
    }

private:
    double& _seconds;
    std::chrono::steady_clock::time_point _begin;
};

} // namespace Zem::CollaborationSession

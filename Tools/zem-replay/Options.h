#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace ZemReplay
{

/// What the command line asks for.
struct Options
{
    bool _wantsHelp = false;
    bool _reverses = false;
    /// After how many patches everything is checked; 0 for never.
    unsigned long _checkInterval = 0;
    unsigned long _repeatCount = 1;
    unsigned long _seed = 1;
    unsigned long _generatedCount = 200000;
    std::vector<std::string> _fileNames;
};

class BadOptions : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

extern const char* const helpText;

/// Fails: `BadOptions`.
Options readOptions(int argumentsCount, const char* const* arguments);

} // namespace ZemReplay

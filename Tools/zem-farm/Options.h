#pragma once

#include "Sharing/CS_DocumentKind.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZemFarm
{

/// What the command line asks for.
struct Options
{
    bool _wantsHelp = false;
    bool _shrinks = false;
    /// What comes of a text is compared with what was meant.
    bool _isJudged = false;
    /// Names of the generators that take no part.
    std::vector<std::string> _without;
    /// All kinds in turn if there is none.
    std::optional<Zem::CollaborationSession::DocumentKind> _kind;
    unsigned long _clientsCount = 8;
    unsigned long _operationsCount = 10000;
    unsigned long _seed = 1;
    /// How many batches strangers are to send; then sessions go on until they have.
    unsigned long _hostileCount = 0;
    /// How long to go on, in place of a number of operations.
    std::optional<double> _minutes;
    /// The script to play, in place of random sessions.
    std::optional<std::string> _scriptName;
};

class BadOptions : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

extern const char* const helpText;

/// How a kind of document is called on the command line and in scripts.
const char* getName(Zem::CollaborationSession::DocumentKind kind);

/// Empty for a name that no kind has.
std::optional<Zem::CollaborationSession::DocumentKind> findKind(const std::string& name);

/// Fails: `BadOptions`.
Options readOptions(int argumentsCount, const char* const* arguments);

} // namespace ZemFarm

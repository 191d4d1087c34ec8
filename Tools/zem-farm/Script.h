#pragma once

/// A session as a script: what it starts from, and what happens, step by step. Each step stands for itself. What a
/// client does in one comes from the step's own seed and the document as the client has it then, and a step that can't
/// be done is passed over. So every part of a script is a script.
///
///     kind text
///     document 4711 3          the seed and the number of blocks
///     checkpoint 16            the interval at which the server copies the document
///     judged                   what comes of it is compared with what was meant
///     client 1 join 1          1 for a client that composes keystrokes
///     client 1 do type 815     the generator, and its seed
///     client 1 select 4
///     client 1 send
///     client 1 to-server 1     so many batches arrive
///     client 1 to-client 3     so many messages arrive
///     client 1 disconnect      what is under way is lost
///     client 1 reconnect
///     client 1 leave
///     bad 5                    somebody sends what the server must reject
///     hostile 6                somebody sends anything
///     settle                   everything arrives, and all documents must be equal
///
/// What stands behind a # is a comment. The first four lines come before all steps, in any order; but for the kind,
/// they may be missing.

#include "Sharing/CS_DocumentKind.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZemFarm
{

/// What a session starts from.
struct Setup
{
    static constexpr unsigned long maxDocumentSize = 1000;

    Zem::CollaborationSession::DocumentKind _kind = Zem::CollaborationSession::DocumentKind::Text;
    unsigned long _documentSeed = 0;
    /// In blocks, or worksheets; `maxDocumentSize` at most.
    unsigned long _documentSize = 1;
    unsigned long _checkpointInterval = 16;
    /// The document is a text of paragraphs, in which no two characters are alike, and a judge compares it with what
    /// was meant.
    bool _isJudged = false;

    friend bool operator==(const Setup&, const Setup&) = default;
};

enum class StepKind : unsigned char
{
    Join,
    Do,
    Select,
    Send,
    ToServer,
    ToClient,
    Disconnect,
    Reconnect,
    Leave,
    Bad,
    Hostile,
    Settle
};

struct Step
{
    StepKind _kind = StepKind::Settle;
    /// From 1 on; 0 for what no client does.
    unsigned long _client = 0;
    /// The name of what makes the action, for `StepKind::Do`.
    std::string _generator;
    /// A seed or a count, where the kind has one.
    unsigned long _number = 0;

    friend bool operator==(const Step&, const Step&) = default;
};

struct Script
{
    Setup _setup;
    std::vector<Step> _steps;

    friend bool operator==(const Script&, const Script&) = default;
};

/// A text that isn't a script. The message names the line, if there is one to name.
class BadScript : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

std::string print(const Setup& setup);

/// One line, without its end.
std::string print(const Step& step);
std::string print(const Script& script);

/// Fails: `BadScript`.
Script parseScript(std::string_view text);

} // namespace ZemFarm

#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZemReplay
{

/// One edit: at a position, characters go, and then others come. Positions and counts are in Unicode code points of the
/// text as the edits before left it: in a concurrent history, those that its author knew.
struct Patch
{
    unsigned long _position = 0;
    unsigned long _deleteCount = 0;
    /// Where the text to insert stands in `Trace::_texts`, in bytes.
    unsigned long _textBegin = 0;
    unsigned long _textSize = 0;
    /// What the patch is called in messages: `txns[_transaction].patches[_number]`.
    unsigned long _transaction = 0;
    unsigned long _number = 0;
};

/// The edits that a user made at once.
struct Transaction
{
    /// Where its edits stand in `Trace::_patches`.
    unsigned long _patchesBegin = 0;
    unsigned long _patchesEnd = 0;
    /// Who made it, and what that user knew then: these transactions with all that they knew.
    unsigned long _agent = 0;
    std::vector<unsigned long> _parents;
};

enum class TraceKind
{
    /// One user after the other.
    Sequential,
    /// Several users at once.
    Concurrent,
    /// Two users, neither of whom has seen anything of the other, in different lines.
    Spread,
    /// The same, in the same lines: what the text is in the end depends on who goes first.
    Hot
};

/// A history of edits of a plain text.
struct Trace
{
    std::string_view getText(const Patch& patch) const
    {
        return std::string_view(_texts).substr(patch._textBegin, patch._textSize);
    }

    std::string _name;
    TraceKind _kind = TraceKind::Sequential;
    std::string _startContent;
    /// Without meaning for `Spread` and `Hot`.
    std::string _endContent;
    /// All inserted texts, one behind the other.
    std::string _texts;
    std::vector<Patch> _patches;
    /// In an order in which every one comes behind what it knows.
    std::vector<Transaction> _transactions;
    unsigned long _agentsCount = 1;
};

/// How many users a concurrent history may have here.
constexpr unsigned long maximalAgentsCount = 2;

/// A file that isn't such a history, or can't be read. The message names the file and the place.
class BadTrace : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// "txns[3].patches[0]", or "a[3]" for one of the two streams of a history of two diverged users.
std::string getName(const Trace& trace, const Patch& patch);

/// How many transactions of each user are known.
using KnownCounts = std::array<unsigned long, maximalAgentsCount>;

/// For each transaction what its author knew, itself included.
/// Fails: `BadTrace` for too many users, one that there isn't, and one who doesn't know all that he made before.
std::vector<KnownCounts> countKnown(const Trace& trace);

/// Requires UTF-8, positions inside the text where that is known before it is played, and what `countKnown` requires.
/// Fails: `BadTrace`.
void checkTrace(const Trace& trace);

/// Reads a history from a JSON file, compressed with gzip if its name ends with ".gz". Everything in it is checked: its
/// form, its UTF-8, that transactions know earlier ones only, and, where one user is at work alone, that every position
/// lies inside the text of that moment. Fails: `BadTrace`.
///
///     { "startContent": "", "endContent": "...",
///       "txns": [ { "patches": [ [position, deleteCount, "inserted text"], ... ] }, ... ] }
///
///     { "kind": "concurrent", "endContent": "...", "numAgents": 2,
///       "txns": [ { "parents": [number, ...], "agent": 0, "patches": [ ... ] }, ... ] }
///
///     { "kind": "spread" or "hot", "base": "...", "a": [ [position, deleteCount, "inserted text"], ... ], "b": [ ... ]
///     }
Trace readTrace(const std::string& fileName);

/// Makes up a history of typing: words, paragraphs, corrections, pasted lines, characters of several bytes. The same
/// seed gives the same history.
Trace generateTrace(unsigned long seed, unsigned long patchesCount);

} // namespace ZemReplay

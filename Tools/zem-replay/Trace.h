#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZemReplay
{

/// One edit: at a position, characters go, and then others come. Positions and counts are in Unicode code points of the
/// text as the edits before left it.
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

/// A history of edits of a plain text by one user after the other.
struct Trace
{
    std::string_view getText(const Patch& patch) const
    {
        return std::string_view(_texts).substr(patch._textBegin, patch._textSize);
    }

    std::string _name;
    std::string _startContent;
    std::string _endContent;
    /// All inserted texts, one behind the other.
    std::string _texts;
    std::vector<Patch> _patches;
};

/// "txns[3].patches[0]".
std::string getName(const Patch& patch);

/// A file that isn't such a history, or can't be read. The message names the file and the place.
class BadTrace : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads a history from a JSON file, compressed with gzip if its name ends with ".gz". Everything in it is checked: its
/// form, its UTF-8, and that every position lies inside the text of that moment. Fails: `BadTrace`.
///
///     { "startContent": "", "endContent": "...",
///       "txns": [ { "patches": [ [position, deleteCount, "inserted text"], ... ] }, ... ] }
Trace readTrace(const std::string& fileName);

/// Makes up a history of typing: words, paragraphs, corrections, pasted lines, characters of several bytes. The same
/// seed gives the same history.
Trace generateTrace(unsigned long seed, unsigned long patchesCount);

} // namespace ZemReplay

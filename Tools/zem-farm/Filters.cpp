#include "Filters.h"

#include "Generators.h"

#include <array>

namespace ZemFarm
{

namespace
{

struct Filter
{
    const char* _leftOut;
    const char* _reason;
};

/// What a generator leaves out stands here, or it isn't left out.
constexpr std::array<Filter, 5> filters = {
    {{"texts of comments and notes", "they are values, not lists of slots that operations speak of"},
     {"start documents with text in cells that a merge captures",
      "a marking in such a cell is done, but can't be taken back"},
     {"values in cells that have something", "a cell takes a value only as long as it is empty"},
     {"ranges that cut a character", "a text has whole characters, and so has what users mark"},
     {"texts more than two deep in others", "each level multiplies the size of the document"}}};

/// What no judged session has.
constexpr std::array<Filter, 4> notJudged = {
    {{"blocks and runs that are no text", "their characters can't be told from each other"},
     {"texts without a paragraph", "what is typed in them by two makes two paragraphs, and nobody said in which order"},
     {"the looks of what a client sees before all has arrived", "only its characters are compared then"},
     {"selections", "the judge doesn't hear of them"}}};

} // namespace

std::string formatFilters(const Options& options)
{
    std::string text = "left out:\n";
    const auto add = [&](const std::string& leftOut, const char* reason)
    { text += "  " + leftOut + ": " + reason + '\n'; };
    for (const Filter& filter : filters)
    {
        add(filter._leftOut, filter._reason);
    }
    for (const std::string& name : options._without)
    {
        add(name, "on request");
    }
    if (!options._isJudged)
    {
        return text;
    }
    text += "not judged:\n";
    for (const Filter& filter : notJudged)
    {
        add(filter._leftOut, filter._reason);
    }
    for (const Generator& generator : getGenerators())
    {
        if (!isJudged(generator))
        {
            add(generator._name, "no command of an editor, which alone says what is meant");
        }
    }
    return text;
}

} // namespace ZemFarm

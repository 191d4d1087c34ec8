#include "Filters.h"

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

} // namespace

std::string formatFilters()
{
    std::string text = "left out:\n";
    for (const Filter& filter : filters)
    {
        text += std::string("  ") + filter._leftOut + ": " + filter._reason + '\n';
    }
    return text;
}

} // namespace ZemFarm

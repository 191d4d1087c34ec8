#include "DOM_StyleName.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"

#include "Util_Assert.h"
#include "Util_Visitor.h"

#include <array>
#include <cstddef>

namespace Zem::DOM
{

namespace
{

constexpr std::size_t predefinedNamesCount = static_cast<std::size_t>(getLastEnumerator(PredefinedStyleName())) + 1;

/// In the order of the enumeration. The texts are what documents call these styles: they never change.
constexpr std::array<const char*, predefinedNamesCount> predefinedNames{
    "Normal",           "Title",       "Subtitle",           "Heading 1",          "Heading 2",    "Heading 3",
    "Heading 4",        "Heading 5",   "Heading 6",          "Heading 7",          "Heading 8",    "Heading 9",
    "Body Text",        "Quote",       "Intense Quote",      "List Paragraph",     "Caption",      "Header",
    "Footer",           "Page Number", "Footnote Text",      "Footnote Reference", "Endnote Text", "Endnote Reference",
    "Comment Text",     "Hyperlink",   "Followed Hyperlink", "Emphasis",           "Strong",       "Code",
    "Contents Heading", "Contents 1",  "Contents 2",         "Contents 3",         "Contents 4",   "Contents 5",
    "Contents 6",       "Contents 7",  "Contents 8",         "Contents 9",         "Normal Table", "Table Grid",
};

static_assert(predefinedNames.back() != nullptr);

} // namespace

const char* getText(PredefinedStyleName name)
{
    const auto index = static_cast<std::size_t>(name);
    ZEM_ASSERT(index < predefinedNames.size());
    return predefinedNames[index];
}

boost::optional<std::string> resolveStyleName(const StyleName& name)
{
    using Result = boost::optional<std::string>;
    return boost::apply_visitor(Overloads{[](boost::blank) { return Result(); },
                                          [](PredefinedStyleName predefined) { return Result(getText(predefined)); },
                                          [](const std::string& text) { return Result(text); }},
                                name);
}

boost::optional<std::string> resolveNamedStyleName(const NamedTextStyle& style)
{
    return resolveStyleName(style.getName());
}

boost::optional<std::string> resolveNamedStyleName(const NamedTableStyle& style)
{
    return resolveStyleName(style.getName());
}

} // namespace Zem::DOM

#include "DClb_Utils.h"

#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Table.h"
#include "DOM_UUIDContainer.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <boost/regex.hpp>

#include <algorithm>
#include <optional>

namespace Zem::DOMCollaboration::Utils
{

namespace
{

constexpr const char* conflictInfix = "_conflict_";
constexpr const char* metacharacters = R"([.^$|()\[\]{}*+?\\])";
constexpr const char* escapedMetacharacter = R"(\\&)";
constexpr const char* numberAtEnd = "[1-9]{1}[0-9]*$";

template<class Style>
std::string getName(const Style& style)
{
    const auto opt = DOM::resolveNamedStyleName(style);
    ZEM_ASSERT(opt);
    return *opt;
}

const std::string& getName(const DOM::Block& block)
{
    return cast<DOM::Table>(block).getName();
}

unsigned long getNextNumber(const std::vector<unsigned long>& numbers)
{
    return numbers.empty() ? 1 : numbers.back() + 1;
}

} // namespace

template<class Container>
std::vector<unsigned long> collectNameIndices(const Container& container, const std::string& prefix,
                                              const std::string& suffix)
{
    const std::string escapedPrefix =
        boost::regex_replace(prefix, boost::regex(metacharacters), escapedMetacharacter, boost::format_sed);
    const boost::regex fullPattern("^" + escapedPrefix + suffix + numberAtEnd);
    const boost::regex numberPattern(numberAtEnd);

    std::vector<unsigned long> numbers;
    for (const auto& element : container)
    {
        const std::string name = getName(element);
        if (!boost::regex_search(name, fullPattern))
        {
            continue;
        }
        boost::smatch match;
        boost::regex_search(name, match, numberPattern);
        ZEM_ASSERT(match.size() == 1);
        if (const std::optional<long> number = strToLong(match.str(), nullptr, 10))
        {
            numbers.push_back(numCast<unsigned long>(*number));
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

template<class Container>
bool getNewUniqueNameIfNeeded(const Container& container, const std::string& name, std::string& newName)
{
    ZEM_ASSERT(!name.empty());
    const bool isTaken =
        std::any_of(container.begin(), container.end(), [&](const auto& element) { return getName(element) == name; });
    if (isTaken)
    {
        newName = getUniqueName(container, name + conflictInfix, "");
    }
    return isTaken;
}

template<class Container>
std::string getUniqueName(const Container& container, const std::string& prefix, const std::string& suffix)
{
    return prefix + suffix + std::to_string(getNextNumber(collectNameIndices(container, prefix, suffix)));
}

#define ZEM_INSTANTIATE_UNIQUE_NAMES(...)                                                                              \
    template ZEM_EXPORT std::vector<unsigned long> collectNameIndices(const __VA_ARGS__&, const std::string&,          \
                                                                      const std::string&);                             \
    template ZEM_EXPORT bool getNewUniqueNameIfNeeded(const __VA_ARGS__&, const std::string&, std::string&);           \
    template ZEM_EXPORT std::string getUniqueName(const __VA_ARGS__&, const std::string&, const std::string&);

ZEM_INSTANTIATE_UNIQUE_NAMES(DOM::UUIDContainer<DOM::NamedTextStyle>)
ZEM_INSTANTIATE_UNIQUE_NAMES(DOM::UUIDContainer<DOM::NamedTableStyle>)
ZEM_INSTANTIATE_UNIQUE_NAMES(ReadonlyVector<DOM::Blocks>)

#undef ZEM_INSTANTIATE_UNIQUE_NAMES

} // namespace Zem::DOMCollaboration::Utils

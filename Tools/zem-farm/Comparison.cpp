#include "Comparison.h"

#include "Describe.h"
#include "SpelledJson.h"
#include "Texts.h"

#include "DOM_CheckInvariants.h"
#include "DOM_DocumentJson.h"

#include <algorithm>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;
namespace DOM = Zem::DOM;

namespace
{

std::string findTextDifference(DocumentKind kind, const DOM::Document& expected, const DOM::Document& actual)
{
    // The same cells are taken at random in both.
    Random expectedRandom(0);
    Random actualRandom(0);
    const Places expectedPlaces = findPlaces(kind, expected, expectedRandom);
    const Places actualPlaces = findPlaces(kind, actual, actualRandom);
    const std::size_t count = std::min(expectedPlaces._texts.size(), actualPlaces._texts.size());
    for (std::size_t index = 0; index < count; ++index)
    {
        const TextPlace& expectedPlace = expectedPlaces._texts[index];
        const TextPlace& actualPlace = actualPlaces._texts[index];
        const std::string expectedText = print(*expectedPlace._text);
        const std::string actualText = print(*actualPlace._text);
        if (!(expectedPlace._address == actualPlace._address))
        {
            return "a text at " + describe(actualPlace._address) + " in place of " + describe(expectedPlace._address);
        }
        if (expectedText != actualText)
        {
            return "text " + describe(expectedPlace._address) + ": " + actualText + " in place of " + expectedText;
        }
    }
    return expectedPlaces._texts.size() == actualPlaces._texts.size() ? "" : "another number of texts";
}

/// Some of the text around the first place where two differ.
std::string findJsonDifference(const std::string& expected, const std::string& actual)
{
    const auto place = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end()).first;
    const auto begin = static_cast<std::size_t>(place - expected.begin());
    constexpr std::size_t before = 60;
    constexpr std::size_t length = 100;
    const std::size_t from = begin > before ? begin - before : 0;
    return "JSON at byte " + std::to_string(begin) + ": ..." + actual.substr(std::min(from, actual.size()), length) +
           "... in place of ..." + expected.substr(from, length) + "...";
}

std::string describeSelection(const Selection* selection)
{
    return selection ? describe(selection->getSelectionBegin().getAddress()) + " to " +
                           describe(selection->getSelectionEnd().getAddress())
                     : "none";
}

} // namespace

std::string findDifference(DocumentKind kind, const DOM::Document& expected, const DOM::Document& actual)
{
    if (!(expected == actual))
    {
        const std::string difference = findTextDifference(kind, expected, actual);
        return difference.empty() ? "something beside the slots of its texts" : difference;
    }
    const std::string expectedJson = DOM::toJson(expected);
    const std::string actualJson = DOM::toJson(actual);
    if (expectedJson == actualJson)
    {
        return "";
    }
    const std::string spelledExpectedJson = spellOut(expectedJson);
    const std::string spelledActualJson = spellOut(actualJson);
    return spelledExpectedJson == spelledActualJson ? "" : findJsonDifference(spelledExpectedJson, spelledActualJson);
}

std::string findFault(const DOM::Document& document)
{
    const std::vector<std::string> faults = DOM::checkInvariants(document);
    return faults.empty() ? "" : faults.front();
}

std::string findDifference(const Selections& expected, const Selections& actual, ClientID except)
{
    const auto find = [](const Selections& selections, ClientID client)
    {
        const auto found = selections.find(client);
        return found == selections.end() ? nullptr : &found->second;
    };
    Selections all = expected;
    all.insert(actual.begin(), actual.end());
    for (const auto& [client, selection] : all)
    {
        const Selection* expectedOne = find(expected, client);
        const Selection* actualOne = find(actual, client);
        const bool areEqual = expectedOne && actualOne ? *expectedOne == *actualOne : expectedOne == actualOne;
        if (client != except && !areEqual)
        {
            return "the selection of client " + std::to_string(client) + " (" + describeSelection(actualOne) +
                   " in place of " + describeSelection(expectedOne) + ")";
        }
    }
    return "";
}

} // namespace ZemFarm

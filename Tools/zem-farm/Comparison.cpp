#include "Comparison.h"

#include "Describe.h"
#include "Texts.h"

#include "DOM_CheckInvariants.h"
#include "DOM_DocumentJson.h"
#include "Editing/CS_Characters.h"

#include <algorithm>
#include <exception>

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

/// What stands around a byte, in whole characters.
std::string quoteAround(const std::string& text, std::size_t place)
{
    constexpr std::size_t before = 60;
    constexpr std::size_t behind = 40;
    const auto findCharacter = [&](std::size_t index)
    {
        while (index > 0 && index < text.size() && isContinuationByte(text[index]))
        {
            --index;
        }
        return std::min(index, text.size());
    };
    const std::size_t begin = findCharacter(place > before ? place - before : 0);
    return "..." + text.substr(begin, findCharacter(place + behind) - begin) + "...";
}

std::string describeJsonDifference(const std::string& expected, const std::string& actual)
{
    const auto place = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end()).first;
    const auto byte = static_cast<std::size_t>(place - expected.begin());
    return "JSON at byte " + std::to_string(byte) + ": " + quoteAround(actual, byte) + " in place of " +
           quoteAround(expected, byte);
}

std::string findJsonDifference(const DOM::Document& expected, const DOM::Document& actual)
{
    const std::string expectedJson = DOM::toJson(expected);
    const std::string actualJson = DOM::toJson(actual);
    return expectedJson == actualJson ? "" : describeJsonDifference(expectedJson, actualJson);
}

/// An end that sticks to what stands in front of it is marked.
std::string describePosition(const Selection::SelectionPosition& position)
{
    return describe(position.getAddress()) + (position.sticksToPrevious() ? "<" : "");
}

std::string describeSelection(const Selection* selection)
{
    return selection ? describePosition(selection->getSelectionBegin()) + " to " +
                           describePosition(selection->getSelectionEnd()) + " in mode " +
                           std::to_string(static_cast<unsigned int>(selection->getSelectionMode()))
                     : "none";
}

} // namespace

std::string findDifference(DocumentKind kind, const DOM::Document& expected, const DOM::Document& actual)
{
    const bool areEqual = expected == actual;
    const std::string inTexts = areEqual ? "" : findTextDifference(kind, expected, actual);
    const std::string inJson = inTexts.empty() ? findJsonDifference(expected, actual) : "";
    const std::string difference = inTexts + inJson;
    return areEqual || !difference.empty() ? difference : "something that stands in no JSON";
}

std::string findFault(const DOM::Document& document)
{
    const std::vector<std::string> faults = DOM::checkInvariants(document);
    return faults.empty() ? "" : faults.front();
}

std::string findFaultOfJson(const DOM::Document& document)
{
    try
    {
        const std::string json = DOM::toJson(document);
        const DOM::Document read = DOM::fromJson(json);
        const std::string readJson = DOM::toJson(read);
        if (readJson != json)
        {
            return "read from its JSON it differs: " + describeJsonDifference(json, readJson);
        }
        return read == document ? "" : "read from its JSON it differs in something that stands in no JSON";
    }
    catch (const std::exception& error)
    {
        return std::string("its JSON can't be written and read: ") + error.what();
    }
}

std::string findDifference(const Selections& expected, const Selections& actual)
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
        if (!areEqual)
        {
            return "the selection of the server's client " + std::to_string(client) + " (" +
                   describeSelection(actualOne) + " in place of " + describeSelection(expectedOne) + ")";
        }
    }
    return "";
}

} // namespace ZemFarm

#include "Util_JsonText.h"

#include <cctype>

namespace Zem
{

namespace
{

/// Calls `callable` with each character of a JSON text, and whether it belongs to a string, quotes included.
template<class Callable>
void forEachCharacter(std::string_view text, Callable&& callable)
{
    bool isInString = false;
    bool isEscaped = false;
    for (const char character : text)
    {
        const bool isQuote = character == '"' && !isEscaped;
        callable(character, isInString || isQuote);
        isEscaped = isInString && character == '\\' && !isEscaped;
        isInString = isInString != isQuote;
    }
}

bool isOpening(char character)
{
    return character == '{' || character == '[';
}

bool isClosing(char character)
{
    return character == '}' || character == ']';
}

} // namespace

void requireBoundedJsonNesting(std::string_view text)
{
    unsigned long depth = 0;
    forEachCharacter(text,
                     [&](char character, bool isInString)
                     {
                         if (isInString)
                         {
                             return;
                         }
                         depth += isOpening(character) ? 1 : 0;
                         depth -= isClosing(character) && depth > 0 ? 1 : 0;
                         if (depth > maximalJsonNesting)
                         {
                             throw cereal::Exception("The JSON text is nested deeper than " +
                                                     std::to_string(maximalJsonNesting) + " levels");
                         }
                     });
}

std::string dropSignsOfZeros(std::string_view text)
{
    constexpr std::string_view zero = "-0.0";
    std::string result;
    result.reserve(text.size());
    // Behind a value; a string would end in its quote.
    const auto dropSign = [&]
    {
        if (result.ends_with(zero))
        {
            result.erase(result.size() - zero.size(), 1);
        }
    };
    forEachCharacter(text,
                     [&](char character, bool isInString)
                     {
                         if (!isInString && (character == ',' || isClosing(character)))
                         {
                             dropSign();
                         }
                         result.push_back(character);
                     });
    dropSign();
    return result;
}

std::string JsonDetails::takeOnlyMember(std::string_view archiveText)
{
    std::string text;
    text.reserve(archiveText.size());
    forEachCharacter(archiveText,
                     [&](char character, bool isInString)
                     {
                         if (isInString || !std::isspace(static_cast<unsigned char>(character)))
                         {
                             text.push_back(character);
                         }
                     });
    const std::size_t begin = text.find(':') + 1;
    text = text.substr(begin, text.size() - begin - 1);
    requireBoundedJsonNesting(text);
    return text;
}

std::string JsonDetails::makeOnlyMember(std::string_view text)
{
    requireBoundedJsonNesting(text);
    unsigned long depth = 0;
    bool isOneValue = true;
    forEachCharacter(text,
                     [&](char character, bool isInString)
                     {
                         if (isInString)
                         {
                             return;
                         }
                         isOneValue = isOneValue && !(depth == 0 && (isClosing(character) || character == ','));
                         depth += isOpening(character) ? 1 : 0;
                         depth -= isClosing(character) && depth > 0 ? 1 : 0;
                     });
    if (!isOneValue)
    {
        throw cereal::Exception("The JSON text isn't one value");
    }
    return "{\"value0\":" + std::string(text) + "}";
}

} // namespace Zem

#include "PlainText.h"

#include <algorithm>

namespace ZemReplay
{

namespace
{

bool goesOn(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::u32string decode(std::string_view utf8)
{
    std::u32string characters;
    for (const char byte : utf8)
    {
        const auto value = static_cast<unsigned char>(byte);
        if (goesOn(byte))
        {
            characters.back() = (characters.back() << 6U) | (value & 0x3FU);
        }
        else
        {
            characters.push_back(value < 0x80U   ? value
                                 : value < 0xE0U ? value & 0x1FU
                                 : value < 0xF0U ? value & 0x0FU
                                                 : value & 0x07U);
        }
    }
    return characters;
}

void appendUtf8(std::string& utf8, char32_t character)
{
    const auto append = [&](char32_t value) { utf8.push_back(static_cast<char>(static_cast<unsigned char>(value))); };
    const auto appendRest = [&](unsigned shift) { append(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80U)
    {
        append(character);
        return;
    }
    const unsigned restCount = character < 0x800U ? 1 : character < 0x10000U ? 2 : 3;
    constexpr unsigned char firstBits[] = {0, 0xC0, 0xE0, 0xF0};
    append(firstBits[restCount] | (character >> (6U * restCount)));
    for (unsigned rest = restCount; rest > 0; --rest)
    {
        appendRest(6U * (rest - 1));
    }
}

} // namespace

unsigned long countCharacters(std::string_view utf8)
{
    return static_cast<unsigned long>(std::count_if(utf8.begin(), utf8.end(), [](char byte) { return !goesOn(byte); }));
}

void PlainText::replace(unsigned long position, unsigned long count, std::string_view replacement)
{
    _characters.replace(position, count, decode(replacement));
}

std::string PlainText::getUtf8() const
{
    std::string utf8;
    utf8.reserve(_characters.size());
    for (const char32_t character : _characters)
    {
        appendUtf8(utf8, character);
    }
    return utf8;
}

} // namespace ZemReplay

#include "Util_UUID.h"

#include <boost/functional/hash.hpp>

#include <algorithm>
#include <random>

namespace Zem
{

namespace
{

constexpr char hexadecimalDigits[] = "0123456789abcdef";

/// The length of the text, and whether a position of it holds a dash.
constexpr std::size_t textLength = 36;

constexpr bool isDash(std::size_t position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::mt19937_64 makeSeededGenerator()
{
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
}

std::optional<unsigned> readDigit(char character)
{
    const char lowerCase = 'A' <= character && character <= 'F' ? static_cast<char>(character - 'A' + 'a') : character;
    const std::string_view digits(hexadecimalDigits);
    const std::size_t value = digits.find(lowerCase);
    return value == std::string_view::npos ? std::nullopt : std::optional<unsigned>(static_cast<unsigned>(value));
}

} // namespace

UUID UUID::generate()
{
    thread_local std::mt19937_64 generator = makeSeededGenerator();
    Bytes bytes;
    std::uint64_t random = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        random = i % sizeof(random) == 0 ? generator() : random >> 8;
        bytes[i] = static_cast<std::uint8_t>(random & 0xFF);
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    return UUID(bytes);
}

std::optional<UUID> UUID::fromString(std::string_view text)
{
    if (text.size() != textLength)
    {
        return std::nullopt;
    }
    Bytes bytes{};
    std::size_t digitsCount = 0;
    for (std::size_t position = 0; position < textLength; ++position)
    {
        if (isDash(position))
        {
            if (text[position] != '-')
            {
                return std::nullopt;
            }
            continue;
        }
        const std::optional<unsigned> digit = readDigit(text[position]);
        if (!digit)
        {
            return std::nullopt;
        }
        std::uint8_t& byte = bytes[digitsCount / 2];
        byte = static_cast<std::uint8_t>(byte * 16U + *digit);
        ++digitsCount;
    }
    return UUID(bytes);
}

std::string UUID::toString() const
{
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : _bytes)
    {
        if (isDash(text.size()))
        {
            text.push_back('-');
        }
        text.push_back(hexadecimalDigits[byte >> 4]);
        text.push_back(hexadecimalDigits[byte & 0x0F]);
    }
    return text;
}

bool UUID::isNil() const
{
    return *this == UUID();
}

std::size_t hash_value(const UUID& uuid)
{
    return boost::hash_range(uuid.getBytes().begin(), uuid.getBytes().end());
}

} // namespace Zem

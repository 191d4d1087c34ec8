#pragma once

#include <algorithm>
#include <string>

namespace ZemFarm
{

/// The text without line ends and other control characters, each of which becomes a space.
inline std::string makeOneLine(std::string text)
{
    const auto isControl = [](char character) { return static_cast<unsigned char>(character) < ' '; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

} // namespace ZemFarm

#pragma once

#include <string>
#include <string_view>

namespace ZemReplay
{

/// How many characters there are in UTF-8.
unsigned long countCharacters(std::string_view utf8);

/// A text as a plain string of code points, which knows nothing of documents: what the document is compared with.
class PlainText
{
public:
    /// Requires: the stretch lies inside the text, `replacement` is UTF-8.
    void replace(unsigned long position, unsigned long count, std::string_view replacement);

    std::string getUtf8() const;

private:
    std::u32string _characters;
};

} // namespace ZemReplay

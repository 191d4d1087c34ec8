#pragma once

/// How the letters of a text look, whatever runs they stand in.

#include "Editing/CS_TextEditor.h"

#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Zem::CollaborationSession
{

/// A byte of a text run, or '~' for an atomic run. '#' for an atomic block and '\n' for a paragraph's end have no look.
struct Letter
{
    char _character = '\n';
    DOM::RunStyle _style{};

    friend bool operator==(const Letter& left, const Letter& right)
    {
        return left._character == right._character && areDeeplyEqual(left._style, right._style);
    }
};

/// The letters of a text. The end of a paragraph that ends the text isn't one.
inline std::vector<Letter> readLetters(const DOM::TextWithTombstones& text)
{
    std::vector<Letter> letters;
    for (const auto& block : text.getBlocks())
    {
        const auto* paragraph = cast<DOM::Paragraph>(block.get());
        if (!paragraph)
        {
            letters.push_back(Letter{'#'});
            continue;
        }
        for (const auto& run : paragraph->getRuns())
        {
            const auto* textRun = cast<DOM::TextRun>(run.get());
            for (const char character : textRun ? textRun->getText() : std::string("~"))
            {
                letters.push_back(Letter{character, DOM::derefSharedStyle(run->getSharedStyle())});
            }
        }
        letters.push_back(Letter());
    }
    if (!letters.empty() && letters.back()._character == '\n')
    {
        letters.pop_back();
    }
    return letters;
}

/// An id that prints as one letter.
inline UUID makeComment(char name)
{
    UUID::Bytes bytes{};
    bytes.front() = static_cast<std::uint8_t>(name);
    return UUID(bytes);
}

inline DOM::HyperlinkConstPtr makeLink(const char* target)
{
    return std::make_shared<const DOM::Hyperlink>(target);
}

/// "b" for bold, "i" for italic, "@there" for a link, and "c" with the names of the comments.
inline std::string printLook(const DOM::RunStyle& style)
{
    const DOM::RunProps none;
    const DOM::RunProps& props = style.getRunProps() ? *style.getRunProps() : none;
    std::string printed = props._weight == DOM::FontWeight::Bold ? "b" : "";
    printed += props._slant == DOM::FontSlant::Italic ? "i" : "";
    printed += style.getHyperlink() ? "@" + style.getHyperlink()->getURL() : "";
    printed += style.getCommentUUIDs().empty() ? "" : "c";
    for (const UUID& uuid : style.getCommentUUIDs())
    {
        printed += static_cast<char>(uuid.getBytes().front());
    }
    return printed;
}

/// The letters of a text, with a slash between paragraphs. Where the look changes it stands in parentheses; a paragraph
/// begins without any.
inline std::string printLooks(const DOM::TextWithTombstones& text)
{
    std::string printed;
    std::string look;
    for (const Letter& letter : readLetters(text))
    {
        if (letter._character == '\n')
        {
            look.clear();
            printed += '/';
            continue;
        }
        const std::string next = printLook(letter._style);
        printed += next == look ? "" : "(" + next + ")";
        printed += letter._character;
        look = next;
    }
    return printed;
}

inline LookChange makeBold()
{
    return LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold);
}

inline LookChange makeItalic()
{
    return LookChange::setField(&DOM::RunProps::_slant, DOM::FontSlant::Italic);
}

} // namespace Zem::CollaborationSession

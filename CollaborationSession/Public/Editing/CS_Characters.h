#pragma once

/// What a character of a text is. Users, and the callers of commands, count characters; operations count slots, and
/// the tree holds bytes. This is the one place that says how they meet.
///
/// A text reads as a sequence of characters:
///
///     a Unicode code point of a text run            itself; in the tree it is 1 to 4 bytes of UTF-8
///     an atomic run (tabulator, break, drawing...)  one character, read as U+FFFC
///     an atomic block (table, shape, section tag...) one character, read as U+FFFC
///     the end of a paragraph                        one line break, "\n", unless the paragraph ends the text
///
/// The tags of paragraphs and text runs are no characters. A byte begins a character unless it is a UTF-8 continuation
/// byte (0x80 to 0xBF), so that counts are additive over any pieces of text, and half a character that a concurrent
/// edit left is counted once or not at all, but never breaks a count. Bytes that stand in front of the first character
/// of their run belong to that character.
///
///     tree         {|ab}#{|é}          two paragraphs with a table between them
///     characters   a  b  \n #  é       5 of them
///     offsets     0  1  2  3  4  5
///
/// An offset names a gap between characters: 0 is in front of the first, the number of characters behind the last. An
/// offset in front of an atomic block that no open paragraph ends at, as 3 above, lies in no paragraph.

#include "DOM_TextWithTombstones.h"

#include "Util_Export.h"

#include <string>
#include <string_view>

namespace Zem::CollaborationSession
{

/// Whether a byte goes on with a character that another byte began.
constexpr bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// How many bytes of `bytes` go on with a character.
ZEM_EXPORT unsigned long countContinuationBytes(std::string_view bytes);

/// Where character `index` of `bytes` begins, as a number of bytes; the size behind the last one. Character 0 begins
/// at 0, whatever stands there. Linear. Requires: `index` is at most the number of characters.
ZEM_EXPORT unsigned long findCharacter(std::string_view bytes, unsigned long index);

/// The number of bytes in front of the first one that breaks the rules of UTF-8 (a byte out of place, a surrogate, an
/// overlong form, a number above U+10FFFF, a sequence cut short); the size if none does.
ZEM_EXPORT unsigned long findInvalidUtf8(std::string_view bytes);

/// How atomic runs and blocks read: U+FFFC as UTF-8.
inline constexpr std::string_view objectCharacter = "\xEF\xBF\xBC";

/// A text as its characters, in UTF-8. Linear.
ZEM_EXPORT std::string getCharacters(const DOM::TextWithTombstones& text);

} // namespace Zem::CollaborationSession

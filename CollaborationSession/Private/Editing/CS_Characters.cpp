#include "Editing/CS_Characters.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

namespace
{

/// What the first byte of a sequence says of it: its length, and the range that its second byte must lie in.
struct Sequence
{
    unsigned long _length;
    unsigned char _secondFrom;
    unsigned char _secondTo;
};

/// A length of 0 for a byte that begins no character. The bounds of the second byte keep out overlong forms,
/// surrogates and numbers above U+10FFFF.
Sequence getSequence(unsigned char first)
{
    if (first < 0x80U)
    {
        return {1, 0x80U, 0xBFU};
    }
    if (first < 0xC2U || first > 0xF4U)
    {
        return {0, 0x80U, 0xBFU};
    }
    if (first < 0xE0U)
    {
        return {2, 0x80U, 0xBFU};
    }
    if (first < 0xF0U)
    {
        return {3, static_cast<unsigned char>(first == 0xE0U ? 0xA0U : 0x80U),
                static_cast<unsigned char>(first == 0xEDU ? 0x9FU : 0xBFU)};
    }
    return {4, static_cast<unsigned char>(first == 0xF0U ? 0x90U : 0x80U),
            static_cast<unsigned char>(first == 0xF4U ? 0x8FU : 0xBFU)};
}

/// The length of the character at the beginning of `bytes`; 0 if there is no whole one.
unsigned long getCharacterLength(std::string_view bytes)
{
    const Sequence sequence = getSequence(static_cast<unsigned char>(bytes.front()));
    if (sequence._length > bytes.size())
    {
        return 0;
    }
    if (sequence._length > 1)
    {
        const auto second = static_cast<unsigned char>(bytes[1]);
        const bool isInBounds = sequence._secondFrom <= second && second <= sequence._secondTo;
        const std::string_view rest = bytes.substr(2, sequence._length - 2);
        return isInBounds && std::all_of(rest.begin(), rest.end(), isContinuationByte) ? sequence._length : 0;
    }
    return sequence._length;
}

void appendRuns(std::string& characters, const DOM::Runs& runs)
{
    for (const auto& run : runs)
    {
        const bool isText = derefPtr(run).getKind() == DOM::RunKind::TextRun;
        characters += isText ? std::string_view(static_cast<const DOM::TextRun&>(*run).getText()) : objectCharacter;
    }
}

} // namespace

unsigned long countContinuationBytes(std::string_view bytes)
{
    unsigned long count = 0;
    for (const char byte : bytes)
    {
        count += isContinuationByte(byte) ? 1 : 0;
    }
    return count;
}

unsigned long findCharacter(std::string_view bytes, unsigned long index)
{
    if (index == 0)
    {
        return 0;
    }
    unsigned long begun = 0;
    for (unsigned long position = 0; position < bytes.size(); ++position)
    {
        if (!isContinuationByte(bytes[position]) && begun++ == index)
        {
            return position;
        }
    }
    return bytes.size();
}

unsigned long findInvalidUtf8(std::string_view bytes)
{
    unsigned long position = 0;
    while (position < bytes.size())
    {
        const unsigned long length = getCharacterLength(bytes.substr(position));
        if (length == 0)
        {
            return position;
        }
        position += length;
    }
    return position;
}

std::string getCharacters(const DOM::TextWithTombstones& text)
{
    std::string characters;
    const DOM::Block* lastBlock = text.getBlocks().empty() ? nullptr : text.getBlocks().back().get();
    for (const auto& block : text.getBlocks())
    {
        if (derefPtr(block).getKind() != DOM::BlockKind::Paragraph)
        {
            characters += objectCharacter;
            continue;
        }
        appendRuns(characters, static_cast<const DOM::Paragraph&>(*block).getRuns());
        if (block.get() != lastBlock)
        {
            characters += '\n';
        }
    }
    return characters;
}

} // namespace Zem::CollaborationSession

#include "Editing/CS_TextCommands.h"

#include "Editing/CS_Characters.h"
#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_Deletion.h"
#include "Editing/CS_Insertion.h"
#include "Editing/CS_InvalidEditError.h"

namespace Zem::CollaborationSession::TextCommands
{

namespace
{

void requireUtf8(std::string_view characters)
{
    const unsigned long position = findInvalidUtf8(characters);
    if (position < characters.size())
    {
        throw InvalidEditError("The text to insert isn't UTF-8 at byte " + std::to_string(position));
    }
}

} // namespace

Operations replaceCharacters(const CharacterIndex& index, unsigned long begin, unsigned long end,
                             std::string_view replacement)
{
    requireStretch(index, begin, end);
    requireUtf8(replacement);

    Operations operations;
    Deletion deletion;
    if (begin < end)
    {
        deletion = planDeletion(index, begin, end);
        if (!deletion._stretches.empty())
        {
            operations.push_back(makeMarking(index, deletion));
        }
    }
    if (deletion._keepsLineBreak && !replacement.empty() && replacement.back() == '\n')
    {
        // The line break that stays is the one that would be typed.
        replacement.remove_suffix(1);
    }
    if (auto insertion = planInsertion(index, deletion, begin, replacement))
    {
        operations.push_back(std::move(insertion));
    }
    return operations;
}

} // namespace Zem::CollaborationSession::TextCommands

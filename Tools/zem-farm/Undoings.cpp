// Taking back what one did before, with all that happened since left standing.

#include "Generators.h"

namespace ZemFarm
{

namespace
{

void undoLast(Participant& author, Random&)
{
    author.undo();
}

/// An action, which may be an undo itself.
void undoAny(Participant& author, Random& random)
{
    if (!author.getRememberedActions().empty())
    {
        author.undo(random.pickFrom(author.getRememberedActions()));
    }
}

void redo(Participant& author, Random&)
{
    author.redo();
}

} // namespace

Generators makeUndoings()
{
    return {{"undo-last", 4, isForAll, undoLast}, {"undo-any", 6, isForAll, undoAny}, {"redo", 3, isForAll, redo}};
}

} // namespace ZemFarm

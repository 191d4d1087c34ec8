// Taking back what one did before, with all that happened since left standing.

#include "Generators.h"

namespace ZemFarm
{

using Zem::CollaborationEngine::OperationUPtr;

namespace
{

void undo(Participant& author, Participant::Operation::Id id)
{
    if (const OperationUPtr undoing = author.getClient().makeUndo(id))
    {
        author.execute(*undoing);
    }
}

/// The last operation, which may be an undoing itself.
void undoLast(Participant& author, Random&)
{
    if (!author.getRememberedOperations().empty())
    {
        undo(author, author.getRememberedOperations().back());
    }
}

void undoAny(Participant& author, Random& random)
{
    if (!author.getRememberedOperations().empty())
    {
        undo(author, random.pickFrom(author.getRememberedOperations()));
    }
}

} // namespace

Generators makeUndoings()
{
    return {{"undo-last", 4, isForAll, undoLast}, {"undo-any", 6, isForAll, undoAny}};
}

} // namespace ZemFarm

#pragma once

#include "Sharing/CS_Messages.h"
#include "Sharing/CS_Replica.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace Zem::CollaborationSession
{

/// A document of some revision, and what happened since: where a client begins again when an operation fails. A newer
/// document takes its place now and then, so that what is kept doesn't grow with the history.
class Checkpoint
{
public:
    /// `entries` are what happened to `document`. A newer one is due when `interval` entries have come in.
    Checkpoint(DocumentKind kind, std::shared_ptr<const DOM::Document> document, std::vector<HistoryEntryPtr> entries,
               Revision interval);

    /// What happened since, the oldest first.
    const std::vector<HistoryEntryPtr>& getEntries() const
    {
        return _entries;
    }

    void append(HistoryEntryPtr entry);

    /// Puts the document behind all entries, and behind `pending` then, into `replica`.
    /// Fails: as `Replica::replaceDocument`; the document is as it was then.
    void restore(Replica& replica, std::span<const CollaborationEngine::Operation* const> pending) const;

    /// Takes a newer document if one is due, and forgets the entries that led to it; says whether it did. `current` is
    /// the document behind all entries, which is copied; or null where nobody has that one by itself, because something
    /// is pending all the time. The old entries are then executed on the document that is here, so that never more
    /// than twice the interval are kept.
    bool renewIfDue(const DOM::Document* current);

private:
    std::vector<const CollaborationEngine::Operation*> getOldestOperations(std::size_t count) const;
    void renew(DOM::Document document, std::size_t passedCount);

    DocumentKind _kind;
    std::shared_ptr<const DOM::Document> _document;
    std::vector<HistoryEntryPtr> _entries;
    Revision _interval;
};

} // namespace Zem::CollaborationSession

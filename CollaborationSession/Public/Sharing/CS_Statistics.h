#pragma once

namespace Zem::CollaborationSession
{

/// What a client or a server did, in numbers.
struct Statistics
{
    /// Operations of the history that were executed, at a client those that came from the server.
    unsigned long _executedCount = 0;
    /// Own operations of a client whose place in the history was merely confirmed.
    unsigned long _confirmedCount = 0;
    /// Operations of the history that a client executed beside its pending ones, without taking these back.
    unsigned long _besidePendingCount = 0;
    /// Pending operations of a client that were brought past others and executed again.
    unsigned long _rebasedCount = 0;
    /// Operations that the document made something else of, once they had been brought past others.
    unsigned long _changedCount = 0;
    /// Operations that were brought past others and do nothing for now.
    unsigned long _shadowedCount = 0;
    /// Operations that failed.
    unsigned long _rejectedCount = 0;
    /// Operations of the history that were executed again to make a document whose operation had failed.
    unsigned long _replayedCount = 0;
    /// Seconds.
    double _transformingTime = 0;
    double _reversingTime = 0;
    double _executingTime = 0;
};

} // namespace Zem::CollaborationSession
